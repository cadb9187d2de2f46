#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <random>
#include <sstream>

#include "base/Texto.h"
#include "driver/link/protocol/Imagenes.h"
#include "driver/link/protocol/Tramas.h"

namespace utr::protocolo {
namespace {

Bytes Hex(std::string_view texto) {
  Bytes bytes;
  for (const std::string_view par : Separar(texto, ' ')) {
    unsigned byte = 0;
    std::from_chars(par.data(), par.data() + par.size(), byte, 16);
    bytes.push_back(static_cast<std::uint8_t>(byte));
  }
  return bytes;
}

constexpr std::uint8_t kUnidad = 120;
const Bytes kOrden = Hex("78 10 00 00 00 0A 14 00 78 12 34 56 78 00 01 00 69 00 02 00 02 00 01 F5 C3 C4 B1 86 39");

// The examples of docs/protocol.md, by which somebody else builds the other end.
TEST(Protocolo, TramasDelDocumento) {
  EXPECT_EQ(TramaRtu(kUnidad, PedidoDeTramo(4, {0, 3})), Hex("78 04 00 00 00 03 BB A2"));
  EXPECT_EQ(TramaRtu(kUnidad, RespuestaDeRegistros(std::vector<std::uint16_t>{120, 1, 1})),
            Hex("78 04 06 00 78 00 01 00 01 5F 0B"));
  EXPECT_EQ(TramaRtu(kUnidad, PduDeExcepcion(4, Excepcion::kDireccion)), Hex("78 84 02 13 18"));
  const PedidoDeArchivo paginas[] = {{archivo::kFlash, 5, 96}, {archivo::kEco, 7, 1}};
  EXPECT_EQ(TramaRtu(kUnidad, PedidoDeArchivos(paginas)),
            Hex("78 14 0E 06 01 00 00 05 00 60 06 00 01 00 07 00 01 6A 1C"));
  EXPECT_EQ(CuentaDeRespuesta(paginas) + 5, 203U);
  const Orden orden{120, 0x12345678, 1, Codigo::kSalida, {2, 1}};
  const Bytes pdu = PedidoDeEscritura(0, BloqueDe(orden));
  EXPECT_EQ(TramaRtu(kUnidad, pdu), kOrden);
  EXPECT_EQ(TramaRtu(kUnidad, AcuseDe(pdu)), Hex("78 10 00 00 00 0A 4B A7"));
  EXPECT_EQ(TramaTcp(1, kUnidad, pdu),
            Hex("00 01 00 00 00 1B 78 10 00 00 00 0A 14 00 78 12 34 56 78 00 01 00 69 00 02 00 02 00 01 F5 C3 C4 B1"));
  const std::vector<ResultadoDeOrden> hecha{{0x12345678, 1, EstadoDeOrden::kHecha, Motivo::kNinguno}};
  const Bytes partes[] = {BytesDe(RegistrosDeResultados(hecha)), {0, 8}};
  EXPECT_EQ(TramaRtu(kUnidad, RespuestaDeArchivos(partes)),
            Hex("78 14 10 0B 06 12 34 56 78 00 01 00 02 00 00 03 06 00 08 CF 56"));
  const std::vector<EntradaAgenda> agenda{{.minuto = 480, .obligatoria = true, .ventana = true}};
  EXPECT_EQ(ImagenDe(agenda), Hex("00 01 01 E0 03 02 4F 4B"));
  EXPECT_EQ(Crc32(*ImagenDe(agenda)), 0xA70370F5U);
}

TEST(Protocolo, DireccionesDeCadaIdentificador) {
  const struct {
    std::int32_t unidad;
    std::uint8_t direccion;
    bool en_serie, por_ip;
  } casos[] = {{120, 120, true, true}, {120, 121, false, false}, {120, 255, true, true},  {120, 0, false, true},
               {247, 247, true, true}, {248, 1, true, true},     {65535, 80, true, true}, {0, 1, true, true},
               {0, 247, true, true},   {0, 248, false, false},   {120, 254, false, false}};
  for (const auto& caso : casos) {
    EXPECT_EQ(Atiende(caso.unidad, caso.direccion, false), caso.en_serie) << caso.unidad << " " << +caso.direccion;
    EXPECT_EQ(Atiende(caso.unidad, caso.direccion, true), caso.por_ip) << caso.unidad << " " << +caso.direccion;
  }
}

TEST(Protocolo, UnaTramaEnPedazosYEntreBasura) {
  for (std::size_t corte = 0; corte <= kOrden.size(); ++corte) {
    ReceptorRtu receptor(Sentido::kPedido);
    receptor.Recibir(VistaBytes{kOrden}.first(corte));
    EXPECT_EQ(receptor.Proxima().has_value(), corte == kOrden.size()) << corte;
    if (corte == kOrden.size()) break;
    receptor.Recibir(VistaBytes{kOrden}.subspan(corte));
    const auto trama = receptor.Proxima();
    ASSERT_TRUE(trama) << corte;
    EXPECT_EQ(trama->pdu.size() + 3, kOrden.size());
    EXPECT_TRUE(receptor.Vacio());
  }
  // Garbage that looks like the beginning of a longer frame holds the real one back until the line is silent.
  Bytes sucia = Hex("01 10 00");
  sucia.insert(sucia.end(), kOrden.begin(), kOrden.end());
  ReceptorRtu receptor(Sentido::kPedido);
  receptor.Recibir(sucia);
  std::optional<Trama> trama = receptor.Proxima();
  for (int cortes = 0; !trama && !receptor.Vacio() && cortes < 10; ++cortes) {
    receptor.Cortar();
    trama = receptor.Proxima();
  }
  ASSERT_TRUE(trama);
  EXPECT_EQ(trama->direccion, kUnidad);
  EXPECT_EQ(receptor.Descartados(), 3U);
}

TEST(Protocolo, NingunBitCambiadoPasaPorUnaOrden) {
  for (std::size_t bit = 0; bit < kOrden.size() * 8; ++bit) {
    Bytes rota = kOrden;
    rota[bit / 8] = static_cast<std::uint8_t>(rota[bit / 8] ^ (1U << (bit % 8)));
    ReceptorRtu receptor(Sentido::kPedido);
    receptor.Recibir(rota);
    EXPECT_FALSE(receptor.Proxima()) << bit;
    // Nor does it where the frame around it carries a right check.
    const auto escritura = LeerPedidoDeEscritura(VistaBytes{rota}.subspan(1, rota.size() - 3));
    if (escritura && escritura->desde == 0) {
      const bool en_el_marco = bit / 8 < 1 || bit / 8 >= kOrden.size() - 2;
      EXPECT_EQ(LeerBloque(escritura->registros).has_value(), en_el_marco) << bit;
    }
  }
}

TEST(Protocolo, UnaCabeceraTcpSinSentidoRompeLaConexion) {
  for (const char* mala : {"00 01 00 01 00 06 78", "00 01 00 00 00 01 78", "00 01 00 00 01 00 78"}) {
    ReceptorTcp receptor;
    receptor.Recibir(Hex(mala));
    EXPECT_FALSE(receptor.Proxima());
    EXPECT_TRUE(receptor.Roto()) << mala;
  }
  ReceptorTcp receptor;
  for (const std::uint8_t byte : TramaTcp(7, kUnidad, PedidoDeTramo(4, {0, 3}))) receptor.Recibir({&byte, 1});
  const auto trama = receptor.Proxima();
  ASSERT_TRUE(trama);
  EXPECT_EQ(trama->transaccion, 7);
  EXPECT_TRUE(receptor.Vacio());
}

TEST(Protocolo, ImagenDeCanalesIdaYVuelta) {
  FilasDeCanales filas;
  filas.presentes.assign(ColumnasDeUnidad().size(), true);
  filas.presentes[3] = false;
  for (const char* texto : {"1", "1", "", "áé", " 12.5"}) {
    std::vector<std::string> fila(filas.presentes.size(), texto);
    fila[3].clear();
    fila[33] = std::string(300, 'x');
    filas.filas.push_back(std::move(fila));
  }
  const auto imagen = ImagenDe(filas);
  ASSERT_TRUE(imagen);
  const auto leida = LeerImagenDeCanales(*imagen);
  ASSERT_TRUE(leida);
  EXPECT_EQ(leida->presentes, filas.presentes);
  EXPECT_EQ(leida->filas, filas.filas);
  // Cut anywhere it is no image, and neither with anything behind it.
  for (std::size_t largo = 0; largo < imagen->size(); ++largo) {
    EXPECT_FALSE(LeerImagenDeCanales(VistaBytes{*imagen}.first(largo))) << largo;
  }
  Bytes larga = *imagen;
  larga.push_back(0);
  EXPECT_FALSE(LeerImagenDeCanales(larga));
  filas.filas.resize(kMayorFilas + 1, filas.filas[0]);
  EXPECT_FALSE(ImagenDe(filas));
}

// The last value that goes and the first one that doesn't.
TEST(Protocolo, LosLimitesEntranYLoQueLosPasaNo) {
  const auto agenda = [](std::string_view bytes) { return LeerImagenDeAgenda(Hex(bytes)).has_value(); };
  const auto salidas = [](std::string_view bytes) { return LeerPedidoDeSalidas(Hex(bytes)).has_value(); };
  const auto archivos = [](std::size_t partes) {
    return LeerPedidoDeArchivos(PedidoDeArchivos(std::vector<PedidoDeArchivo>(partes))).has_value();
  };
  const auto tcp = [](std::size_t largo) {
    ReceptorTcp receptor;
    receptor.Recibir(TramaTcp(1, kUnidad, Bytes(largo, 3)));
    return receptor.Proxima().has_value();
  };
  const struct {
    const char* que;
    bool entra;
    bool esperado;
  } casos[] = {{"the last minute of a day", agenda("00 01 05 9F 00 00"), true},
               {"one behind it", agenda("00 01 05 A0 00 00"), false},
               {"no minute", agenda("00 01 FF FF 00 00"), true},
               {"all kinds", agenda("00 01 00 00 07 00"), true},
               {"another kind", agenda("00 01 00 00 08 00"), false},
               {"no output", salidas("0F 00 00 00 00 00"), false},
               {"eight outputs in a byte", salidas("0F 00 00 00 08 01 FF"), true},
               {"nine outputs in a byte", salidas("0F 00 00 00 09 01 FF"), false},
               {"on", salidas("05 00 00 FF 00"), true},
               {"neither on nor off", salidas("05 00 00 FF 01"), false},
               {"35 parts of files", archivos(35), true},
               {"36 parts of files", archivos(36), false},
               {"the longest PDU", tcp(kMayorPdu), true},
               {"a longer one", tcp(kMayorPdu + 1), false}};
  for (const auto& caso : casos) EXPECT_EQ(caso.entra, caso.esperado) << caso.que;
  for (const std::size_t largo : {253UL, 254UL, 255UL, 256UL, 65535UL}) {
    FilasDeCanales filas;
    filas.presentes.assign(ColumnasDeUnidad().size(), false);
    filas.presentes[0] = true;
    filas.filas.emplace_back(ColumnasDeUnidad().size())[0] = std::string(largo, 'x');
    const auto imagen = ImagenDe(filas);
    const auto leida = imagen ? LeerImagenDeCanales(*imagen) : std::nullopt;
    EXPECT_TRUE(leida && leida->filas == filas.filas) << largo;
  }
}

TEST(Protocolo, LectoresAnteBytesCualesquiera) {
  std::mt19937 azar(7);  // NOLINT(bugprone-random-generator-seed): the same bytes in each run
  for (int vuelta = 0; vuelta < 20000; ++vuelta) {
    Bytes bytes(azar() % 60);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(azar() % (vuelta % 3 == 0 ? 24 : 256));
    if (const auto partes = LeerPedidoDeArchivos(bytes)) {
      EXPECT_EQ(PedidoDeArchivos(*partes), bytes);
    }
    if (const auto partes = LeerPedidoDeEscrituraDeArchivos(bytes)) {
      EXPECT_EQ(PedidoDeEscrituraDeArchivos(*partes), bytes);
    }
    if (const auto agenda = LeerImagenDeAgenda(bytes)) {
      EXPECT_EQ(ImagenDe(*agenda), bytes);
    }
    (void)LeerPedidoDeSalidas(bytes);
    (void)LeerImagenDeCanales(bytes);
    (void)LeerRecordDePaginaUTR(bytes);
  }
}

}  // namespace
}  // namespace utr::protocolo
