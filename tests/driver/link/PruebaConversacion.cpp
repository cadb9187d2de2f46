#include <gtest/gtest.h>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/BancoEnlace.h"
#include "driver/link/client/Conversacion.h"
#include "driver/link/protocol/Pdu.h"
#include "support/NumeroDeError.h"

namespace utr::enlace {

using namespace prueba;

namespace {

// A line that answers a request of registers with what `contesta` holds.
class LineaGuion : public Linea {
 public:
  explicit LineaGuion(RelojFalso& reloj) : reloj_(reloj) {}

  Bytes espera;          // is heard before anything is asked
  Bytes contesta;        // is heard after a request
  bool derrama = false;  // and noise without end
  int pedidos = 0;

  bool Lista(int) override { return true; }
  std::size_t Enviar(std::span<const std::uint8_t> bytes, int) override {
    ++pedidos;
    espera.insert(espera.end(), contesta.begin(), contesta.end());
    return bytes.size();
  }
  std::size_t Recibir(Bytes& destino, int milisegundos) override {
    if (derrama) {
      reloj_.Adelantar(0.001);
      destino.insert(destino.end(), 512, 0x55);
      return 512;
    }
    if (espera.empty()) {
      reloj_.Adelantar(std::max(milisegundos, 1) / 1000.0);
      return 0;
    }
    destino.insert(destino.end(), espera.begin(), espera.end());
    return std::exchange(espera, {}).size();
  }
  bool Rts(bool) override { return false; }
  bool Dtr(bool) override { return false; }

 private:
  RelojFalso& reloj_;
};

Bytes De(std::string_view texto) {
  return {texto.begin(), texto.end()};
}

struct Charla {
  explicit Charla(Medio medio) {
    auto linea_propia = std::make_unique<LineaGuion>(reloj);
    linea = linea_propia.get();
    linea->contesta = protocolo::TramaRtu(120, Bytes{4, 2, 0, 7});
    conversacion = std::make_unique<Conversacion>(std::move(linea_propia), medio, 9600, espera, plazos, trafico);
  }
  std::optional<Bytes> Intentar(std::int64_t plazo = 0) {
    return conversacion->Intentar(
        {.direccion = 120, .pdu = Bytes(5, 4), .respuesta = 4, .plazo = plazo, .es_suya = [](VistaBytes pdu) {
           return pdu.size() == 4 || pdu.size() == 2;
         }});
  }

  RelojFalso reloj;
  int cedidas = 0;
  Espera espera{reloj, [this] { ++cedidas; }};
  Plazos plazos;
  Trafico trafico;
  LineaGuion* linea = nullptr;
  std::unique_ptr<Conversacion> conversacion;
};

}  // namespace

// The modem hangs up while nobody speaks: what would be sent now would be typed into its command mode.
TEST(Conversacion, LaLlamadaQueSeCortoEnSilencioSeDiceAntesDePedir) {
  const struct {
    Medio medio;
    const char* ruido;
    bool cortada;
  } casos[] = {{Medio::kLlamada, "\r\nNO CARRIER\r\n", true},
               {Medio::kLlamada, "\x7E\xFF\r\nNO CARRIER\r\n", true},
               {Medio::kLlamada, "\x7E\xFF", false},
               {Medio::kSerie, "\r\nNO CARRIER\r\n", false}};
  for (const auto& caso : casos) {
    Charla c(caso.medio);
    ASSERT_TRUE(c.Intentar());
    c.linea->espera = De(caso.ruido);
    if (caso.cortada) {
      EXPECT_EQ(NumeroDeError([&] { c.Intentar(); }), error_enlace::kLineaPerdida) << caso.ruido;
      EXPECT_EQ(c.linea->pedidos, 1) << caso.ruido;
    } else {
      EXPECT_TRUE(c.Intentar()) << caso.ruido;
    }
  }
}

// The interface lives on meanwhile, and the operation ends in silence.
TEST(Conversacion, UnOtroQueNoCallaNuncaNoDetieneNada) {
  for (const Medio medio : {Medio::kSerie, Medio::kLlamada}) {
    Charla c(medio);
    c.linea->derrama = true;
    const std::int64_t antes = c.reloj.Milisegundos();
    EXPECT_FALSE(c.Intentar());
    EXPECT_FALSE(c.Intentar()) << "what was missed could still come";
    EXPECT_EQ(c.linea->pedidos, 2);
    EXPECT_LE(c.reloj.Milisegundos() - antes, 40000);
    EXPECT_GE(c.cedidas, (c.reloj.Milisegundos() - antes) / 100);
  }
}

// Over TCP the bytes of a copy that came late belong to its frame, whenever they come.
TEST(Conversacion, MediaTramaQueSobraNoDesacomodaLaConexion) {
  Charla c(Medio::kTcp);
  const auto respuesta = [](std::uint16_t transaccion) {
    return protocolo::TramaTcp(transaccion, 120, Bytes{4, 2, 0, 7});
  };
  const Bytes copia = respuesta(1);
  c.linea->contesta = respuesta(1);
  c.linea->contesta.insert(c.linea->contesta.end(), copia.begin(), copia.begin() + 9);
  ASSERT_TRUE(c.Intentar());
  c.linea->espera.assign(copia.begin() + 9, copia.end());
  c.linea->contesta = respuesta(2);
  EXPECT_TRUE(c.Intentar());
  c.linea->espera = De("lo que no es una trama");
  EXPECT_EQ(NumeroDeError([&] { c.Intentar(); }), error_enlace::kLineaPerdida) << "it is opened again";
  EXPECT_EQ(c.linea->pedidos, 2);
}

// It comes from the way to the unit, so that it says nothing of what there is; the unit's own answer may follow.
TEST(Conversacion, LoQueDiceUnaPasarelaNoEsUnaRespuesta) {
  const struct {
    std::uint8_t excepcion;
    bool de_la_unidad;
  } casos[] = {{1, true}, {2, true}, {3, true}, {4, true}, {6, true}, {0x0A, false}, {0x0B, false}};
  for (const Medio medio : {Medio::kSerie, Medio::kLlamada}) {
    for (const auto& caso : casos) {
      Charla c(medio);
      c.linea->contesta = protocolo::TramaRtu(120, Bytes{0x84, caso.excepcion});
      EXPECT_EQ(c.Intentar().has_value(), caso.de_la_unidad) << int{caso.excepcion};
      const std::int64_t antes = c.reloj.Milisegundos();
      c.conversacion->EsperarTurno();
      const std::int64_t silencio = medio == Medio::kLlamada ? c.plazos.silencio_en_llamada : c.plazos.silencio;
      EXPECT_EQ(c.reloj.Milisegundos() - antes >= silencio, !caso.de_la_unidad) << int{caso.excepcion};
    }
  }
}

TEST(Conversacion, UnPedidoConPlazoPropioNoEsperaElDeLaLinea) {
  for (const std::int64_t plazo : {std::int64_t{0}, std::int64_t{2000}}) {
    Charla c(Medio::kLlamada);
    c.linea->contesta.clear();
    const std::int64_t antes = c.reloj.Milisegundos();
    EXPECT_FALSE(c.Intentar(plazo));
    EXPECT_EQ(c.reloj.Milisegundos() - antes > 2100, plazo == 0);
  }
}

// Two modems may speak at 300 bits per second, whatever their ports do, and a long request has to get through first.
TEST(Conversacion, UnaLlamadaLentaTambienLlevaPedidosLargos) {
  BancoEnlace banco{false};
  banco.Escenario("[equipo]\nvelocidad = 300\n[tiempos]\nlinea = 1.0\nfactor = 1.0\n");
  banco.Driver().Conectar("9600,n,8,1", banco.puerto_modem);
  ASSERT_TRUE(banco.Driver().LlamarTelefono("4999", "ATZ"));
  EXPECT_TRUE(banco.Driver().GrabarParametrizacion(*banco.Driver().ConfiguracionAlmacenada(true)));
  EXPECT_NE(banco.Driver().LeerDatos("14/03/2026", "14/03/2026", 0), nullptr);
  EXPECT_EQ(banco.Enlace().Cuenta().reintentos, 0U);
}

// Whoever is told whom to call may be before another unit, though the number be the same.
TEST(Conversacion, TrasIdEquipoSePreguntaQuienEs) {
  BancoEnlace banco{false};
  banco.Conectar();
  banco.Driver().LeerEstado();
  const auto pedidos = [&](auto hacer) {
    const auto antes = banco.Enlace().Cuenta().pedidos;
    hacer();
    return banco.Enlace().Cuenta().pedidos - antes;
  };
  EXPECT_EQ(pedidos([&] { banco.Driver().LeerEstado(); }), 1U);
  banco.Driver().IdEquipo(banco.identificador);
  EXPECT_EQ(pedidos([&] { banco.Driver().LeerEstado(); }), 2U);
}

}  // namespace utr::enlace
