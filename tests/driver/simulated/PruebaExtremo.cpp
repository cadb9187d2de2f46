#include <gtest/gtest.h>

#include "driver/link/protocol/Imagenes.h"
#include "driver/simulated/station/Extremo.h"
#include "driver/simulated/station/Modem.h"
#include "support/RelojFalso.h"

namespace utr::simulada {
namespace {

using namespace protocolo;

const Bytes kPedido = TramaRtu(120, PedidoDeTramo(4, {0, 3}));
const Bytes kRespuesta = TramaRtu(120, RespuestaDeRegistros(std::vector<std::uint16_t>{120, 1, 1}));

struct Banco {
  explicit Banco(const std::string& escenario = "") { viva.Escenificar(escenario); }

  // All that an end gives within so many milliseconds, at the moments that it names itself.
  template <class Fin>
  Bytes Oir(Fin& fin, std::int64_t milisegundos) {
    Bytes oidos;
    const std::int64_t hasta = reloj.Milisegundos() + milisegundos;
    for (auto cuando = fin.Proximo(); cuando && *cuando <= hasta; cuando = fin.Proximo()) {
      reloj.Adelantar(static_cast<double>(std::max<std::int64_t>(*cuando - reloj.Milisegundos(), 0)) / 1000);
      const Bytes bytes = fin.Entregar(reloj.Milisegundos());
      oidos.insert(oidos.end(), bytes.begin(), bytes.end());
    }
    reloj.Adelantar(static_cast<double>(hasta - reloj.Milisegundos()) / 1000);
    return oidos;
  }
  template <class Fin>
  Bytes Hablar(Fin& fin, VistaBytes bytes, std::int64_t milisegundos) {
    fin.Recibir(bytes, reloj.Milisegundos());
    return Oir(fin, milisegundos);
  }
  std::string Decir(Modem& modem, std::string_view texto, std::int64_t milisegundos) {
    const Bytes bytes =
        Hablar(modem, VistaBytes{reinterpret_cast<const std::uint8_t*>(texto.data()), texto.size()}, milisegundos);
    return {bytes.begin(), bytes.end()};
  }

  RelojFalso reloj;
  EstacionViva viva{{}, {"", ""}, reloj, {}, [](const FechaHora&, std::string_view) {}};
  Despachador unidad{viva};
};

TEST(Extremo, LosBytesTardanLoQueTardan) {
  Banco b;
  Extremo linea(ClaseDeLinea::kSerie, b.viva, b.unidad);
  linea.Velocidad(9600);
  // 8 bytes there and 11 back, at ten bits each.
  EXPECT_EQ(b.Hablar(linea, kPedido, 19), Bytes(kRespuesta.begin(), kRespuesta.end() - 2));
  EXPECT_EQ(b.Oir(linea, 2), Bytes(kRespuesta.end() - 2, kRespuesta.end()));
  linea.Velocidad(4800);
  EXPECT_TRUE(b.Hablar(linea, kPedido, 1000).empty()) << "another speed than the unit's";
  Extremo red(ClaseDeLinea::kTcp, b.viva, b.unidad);
  EXPECT_EQ(b.Hablar(red, TramaTcp(9, 0, PedidoDeTramo(4, {0, 3})), 0),
            TramaTcp(9, 0, RespuestaDeRegistros(std::vector<std::uint16_t>{120, 1, 1})));
}

TEST(Extremo, UnHuecoLargoRompeLaTramaYUnoCortoNo) {
  Banco b;
  Extremo linea(ClaseDeLinea::kSerie, b.viva, b.unidad);
  const VistaBytes pedido{kPedido};
  EXPECT_TRUE(b.Hablar(linea, pedido.first(5), 250).empty());
  EXPECT_EQ(b.Hablar(linea, pedido.subspan(5), 100), kRespuesta);
  EXPECT_TRUE(b.Hablar(linea, pedido.first(5), 251).empty());
  EXPECT_EQ(b.Hablar(linea, pedido, 100), kRespuesta) << "what came before it is gone";
}

TEST(Extremo, CadaFallaDelCable) {
  const struct {
    const char* linea;
    Bytes oido;
  } casos[] = {{"pedido_perdido = 1.0", {}},
               {"respuesta_perdida = 1.0", {}},
               {"media_trama = 1.0", Bytes(kRespuesta.begin(), kRespuesta.begin() + 5)},
               {"respuesta_tarde = 1.0\ntarde_ms = 5000", {}},
               {"latencia_ms = 1000", {}},
               {"hueco = 1.0\nhueco_ms = 1000", Bytes(kRespuesta.begin(), kRespuesta.begin() + 5)},
               {"corta_despues = 1", kRespuesta},
               {"bits_por_segundo = 110", {}}};
  for (const auto& caso : casos) {
    Banco b("[linea]\n" + std::string(caso.linea) + "\n");
    Extremo linea(ClaseDeLinea::kSerie, b.viva, b.unidad);
    EXPECT_EQ(b.Hablar(linea, kPedido, 600), caso.oido) << caso.linea;
    EXPECT_FALSE(linea.Colgado());
  }
  Banco b("[linea]\nrespuesta_doble = 1.0\ncorta_despues = 1\n");
  Extremo linea(ClaseDeLinea::kSerie, b.viva, b.unidad);
  EXPECT_EQ(b.Hablar(linea, kPedido, 600).size(), 2 * kRespuesta.size());
  EXPECT_TRUE(b.Hablar(linea, kPedido, 600).empty());
  EXPECT_TRUE(linea.Colgado());
}

// With all faults at once a client that looks at checks never takes a wrong answer for the right one, and the same seed
// brings the same bytes.
TEST(Extremo, ElRuidoNuncaPasaPorRespuesta) {
  Bytes primera;
  for (int vez = 0; vez < 2; ++vez) {
    Banco b(
        "[linea]\nsemilla = 7\nruido = 0.3\npedido_perdido = 0.1\nrespuesta_perdida = 0.1\nmedia_trama = 0.1\n"
        "respuesta_doble = 0.1\nbasura = 0.2\nhueco = 0.1\nfluctuacion_ms = 50\n");
    Extremo linea(ClaseDeLinea::kSerie, b.viva, b.unidad);
    Bytes todo;
    int buenas = 0;
    for (int i = 0; i < 500; ++i) {
      ReceptorRtu receptor(Sentido::kRespuesta);
      const Bytes oidos = b.Hablar(linea, kPedido, 2000);
      todo.insert(todo.end(), oidos.begin(), oidos.end());
      receptor.Recibir(oidos);
      for (bool mas = true; mas; receptor.Cortar()) {
        while (const auto trama = receptor.Proxima()) {
          EXPECT_EQ(TramaRtu(trama->direccion, trama->pdu), kRespuesta) << i;
          ++buenas;
        }
        mas = !receptor.Vacio();
      }
    }
    EXPECT_GT(buenas, 100);
    EXPECT_LT(buenas, 400);
    if (vez == 0) primera = todo;
    EXPECT_EQ(todo, primera);
  }
}

TEST(ModemDeLaEstacion, UnaLlamadaDePuntaAPunta) {
  Banco b("[modem]\ntelefonos = [\"4512\"]\nocupados = [\"4999\"]\nexige_comandos = true\n");
  Modem modem(b.viva, b.unidad);
  EXPECT_EQ(b.Decir(modem, "AT\r", 100), "AT\r\r\nOK\r\n") << "it echoes";
  EXPECT_EQ(b.Decir(modem, "ATDT4512\r", 9000), "ATDT4512\r\r\nERROR\r\n") << "nobody prepared it";
  EXPECT_EQ(b.Decir(modem, "ATE0\r", 100), "ATE0\r\r\nOK\r\n");
  EXPECT_EQ(b.Decir(modem, "ATDT4999\r", 9000), "\r\nBUSY\r\n");
  EXPECT_EQ(b.Decir(modem, "ATDT1\r", 9000), "\r\nNO CARRIER\r\n");
  EXPECT_EQ(b.Decir(modem, "ATDT4512\r", 1000), "");
  EXPECT_EQ(b.Decir(modem, "\r", 9000), "\r\nNO CARRIER\r\n") << "a key gives it up";
  EXPECT_EQ(b.Decir(modem, "ATDT45-12\r", 4030), "\r\nCONNEC");
  EXPECT_EQ(b.Oir(modem, 1000).size(), 8U + 3U) << "noise right behind it";
  EXPECT_EQ(b.Hablar(modem, kPedido, 100), kRespuesta);
  b.Oir(modem, 1000);
  EXPECT_EQ(b.Decir(modem, "+++", 999), "");
  EXPECT_EQ(b.Oir(modem, 500).size(), 6U) << "OK, a second of silence before and behind";
  EXPECT_EQ(b.Decir(modem, "ATO\r", 100), "\r\nCONNECT\r\n");
  b.Oir(modem, 2000);
  EXPECT_EQ(b.Hablar(modem, kPedido, 100), kRespuesta);
  EXPECT_EQ(b.Decir(modem, "+++", 2000), "") << "no silence ahead of it";
  modem.Soltar();
  EXPECT_FALSE(modem.EnLlamada());
  EXPECT_TRUE(b.Hablar(modem, kPedido, 1000).empty());
}

TEST(ModemDeLaEstacion, UnaLlamadaQueSeCortaDiceNoCarrier) {
  Banco b("[linea]\ncorta_despues = 1\n");
  Modem modem(b.viva, b.unidad);
  b.Decir(modem, "ATDT1\r", 9000);
  EXPECT_EQ(b.Hablar(modem, kPedido, 100), kRespuesta);
  const Bytes oidos = b.Hablar(modem, kPedido, 1000);
  EXPECT_EQ(std::string(oidos.begin(), oidos.end()), "\r\nNO CARRIER\r\n");
  EXPECT_FALSE(modem.EnLlamada());
}

}  // namespace
}  // namespace utr::simulada
