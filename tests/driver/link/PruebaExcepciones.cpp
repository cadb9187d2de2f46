#include <gtest/gtest.h>

#include "base/Error.h"
#include "driver/link/BancoEnlace.h"
#include "support/NumeroDeError.h"

// What a unit, or a gateway on the way to it, refuses: what each exception means wherever it comes.
namespace utr::prueba {
namespace {

using protocolo::Bytes;
using protocolo::VistaBytes;
namespace archivo = protocolo::archivo;
namespace registro = protocolo::registro;

constexpr std::int32_t kSinFalla = 0;

class Excepciones : public testing::Test {
 protected:
  Excepciones() {
    banco.Driver().PorIP(true);
    banco.Driver().DireccionIP(banco.direccion);
    banco.Driver().PuertoIP(banco.puerto_ip);
    banco.Driver().IdEquipo(banco.identificador);
  }
  Comunicador& Driver() { return banco.Driver(); }

  // From now on what asks for that record of that file is answered so.
  void Negar(std::uint16_t cual, std::uint16_t record, int excepcion) {
    banco.en_lugar = [=](VistaBytes pdu) -> std::optional<Bytes> {
      const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
      if (!partes) return std::nullopt;
      for (const auto& parte : *partes) {
        if (parte.archivo == cual && parte.record == record) return Excepcion(pdu, excepcion);
      }
      return std::nullopt;
    };
  }
  static Bytes Excepcion(VistaBytes pdu, int excepcion) {
    return protocolo::PduDeExcepcion(pdu.front(), static_cast<protocolo::Excepcion>(excepcion));
  }
  // How a read ended: what it raised, or whether it gave a table.
  template <class Leer>
  std::pair<std::int32_t, bool> Leida(Leer leer) {
    TablaPtr tabla;
    const std::int32_t numero = NumeroDeError([&] { tabla = leer(Driver()); });
    return {numero, tabla != nullptr};
  }
  int Conmutaciones() {
    int cuantas = 0;
    banco.Viva().Unidad().memoria.RecorrerSucesos([&](auto pagina, const auto& cabecera) {
      for (unsigned i = 0; i < cabecera.cuenta; ++i) {
        cuantas += paginas::LeerSuceso(pagina, i).codigo == simulada::suceso::kSalidaConmutada ? 1 : 0;
      }
    });
    return cuantas;
  }

  BancoEnlace banco{false};
};

// Every read that must never give "no data" for something else.
const struct {
  const char* nombre;
  std::function<TablaPtr(Comunicador&)> leer;
} kLecturas[] = {{"LeerDatos", [](Comunicador& c) { return c.LeerDatos("", "", 0); }},
                 {"LeerEventos", [](Comunicador& c) { return c.LeerEventos("", "31/12/2030"); }},
                 {"pendientes", [](Comunicador& c) { return c.LeerEventos("", ""); }},
                 {"LeerColaTx", [](Comunicador& c) { return c.LeerColaTx("", "31/12/2030"); }},
                 {"LeerInstantaneos", [](Comunicador& c) { return c.LeerInstantaneos(); }},
                 {"ConfiguracionAlmacenada", [](Comunicador& c) { return c.ConfiguracionAlmacenada(true); }}};

}  // namespace

TEST_F(Excepciones, AlPreguntarQuienEsSoloUnaRespuestaDiceLaVersion) {
  const std::pair<int, std::int32_t> casos[] = {{1, error_enlace::kOtraVersion},   {2, error_enlace::kOtraVersion},
                                                {3, error_enlace::kLecturaNegada}, {4, error_enlace::kLecturaNegada},
                                                {5, error_enlace::kLecturaNegada}, {6, error::kSinRespuesta},
                                                {0x0A, error::kSinRespuesta},      {0x0B, error::kSinRespuesta}};
  for (const auto& [excepcion, numero] : casos) {
    Negar(archivo::kRegistros, registro::kIdentificador, excepcion);
    for (const auto& lectura : kLecturas) {
      Driver().IdEquipo(banco.identificador);
      EXPECT_EQ(Leida(lectura.leer), std::pair(numero, false)) << excepcion << " " << lectura.nombre;
    }
    banco.en_lugar = nullptr;
    EXPECT_NE(Driver().LeerFechaHora(), "") << excepcion;
  }
}

// Each read, and what it begins with.
TEST_F(Excepciones, SoloLaQueDiceQueNoHayEsSinDatos) {
  const struct {
    std::size_t lectura;
    std::uint16_t archivo;
    std::uint16_t record;
    std::int32_t si_no_hay;
  } casos[] = {{0, archivo::kRegistros, registro::kAnillos, kSinFalla},
               {1, archivo::kRegistros, registro::kAnillos, kSinFalla},
               {2, archivo::kRegistros, registro::kAnillos, kSinFalla},
               {3, archivo::kRegistros, registro::kAnillos, kSinFalla},
               {4, archivo::kRegistros, registro::kTrama, kSinFalla},
               {5, archivo::kCanales, 0, kSinFalla},
               {0, archivo::kRegistros, registro::kPilas, error_enlace::kLecturaNegada},
               {5, archivo::kCanales, 1, error_enlace::kCambiante}};
  for (const auto& caso : casos) {
    for (const int excepcion : {1, 2, 3, 4, 5, 6, 0x0A, 0x0B}) {
      Negar(caso.archivo, caso.record, excepcion);
      const bool callada = excepcion == 6 || excepcion >= 0x0A;
      const std::int32_t numero = excepcion == 2 ? caso.si_no_hay
                                  : callada      ? error::kSinRespuesta
                                                 : error_enlace::kLecturaNegada;
      const auto& lectura = kLecturas[caso.lectura];
      EXPECT_EQ(Leida(lectura.leer), std::pair(numero, false)) << lectura.nombre << " " << excepcion;
    }
  }
}

// Events and queue need no table of channels, and a unit that refuses much in one request gives it piece by piece.
TEST_F(Excepciones, LoQueSeNiegaJuntoSePideSuelto) {
  Driver().ConfiguracionAlmacenada(true);
  for (const auto& lectura : kLecturas) {
    banco.en_lugar = nullptr;
    const TablaPtr entera = lectura.leer(Driver());
    banco.en_lugar = [](VistaBytes pdu) -> std::optional<Bytes> {
      const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
      return partes && partes->size() > 2 ? std::optional(Excepcion(pdu, 3)) : std::nullopt;
    };
    const TablaPtr suelta = lectura.leer(Driver());
    ASSERT_TRUE(entera && suelta) << lectura.nombre;
    EXPECT_EQ(suelta->RecordCount(), entera->RecordCount()) << lectura.nombre;
    EXPECT_GT(suelta->RecordCount(), 0U) << lectura.nombre;
  }
}

// Tables that came whole and make no sense are neither silence nor "no data".
TEST_F(Excepciones, UnaTablaQueNoSeEntiendeSeDice) {
  const Bytes entero = protocolo::ArchivoDe(Bytes(10, 0xEE));
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
    if (!partes) return std::nullopt;
    const protocolo::PedidoDeArchivo& parte = partes->front();
    if (parte.archivo != archivo::kAgenda && parte.archivo != archivo::kCanales) return std::nullopt;
    const VistaBytes trozo =
        VistaBytes(entero).subspan(parte.record * protocolo::kBytesPorPieza, 2 * std::size_t{parte.registros});
    const std::uint16_t eco = partes->back().record;
    std::vector<Bytes> respuesta;
    respuesta.emplace_back(trozo.begin(), trozo.end());
    respuesta.push_back({static_cast<std::uint8_t>(eco >> 8), static_cast<std::uint8_t>(eco)});
    return protocolo::RespuestaDeArchivos(respuesta);
  };
  EXPECT_EQ(NumeroDeError([&] { Driver().LeerAgenda(); }), error_enlace::kOtraVersion);
  EXPECT_EQ(NumeroDeError([&] { Driver().ConfiguracionAlmacenada(true); }), error_enlace::kOtraVersion);
}

TEST_F(Excepciones, LasQueFallanPorSuResultadoLoDicenAsi) {
  for (const int excepcion : {1, 2, 3, 4, 0x0B}) {
    banco.en_lugar = nullptr;
    ASSERT_NE(Driver().LeerFechaHora(), "");
    banco.en_lugar = [=](VistaBytes pdu) { return std::optional(Excepcion(pdu, excepcion)); };
    // Behind a missed answer it is asked who it is, which tells another version.
    EXPECT_EQ(Driver().LeerFechaHora(), "") << excepcion;
    EXPECT_EQ(Driver().LeerEstado(), -1) << excepcion;
    EXPECT_EQ(Driver().LeerPagina("0", false), "") << excepcion;
    EXPECT_EQ(Driver().LeerPaginaFlash(0, 0), "") << excepcion;
    EXPECT_EQ(Driver().LeerAgenda(), nullptr) << excepcion;
  }
}

// The exception stands in place of the acknowledgement, `veces` times; the unit did or didn't get the order.
TEST_F(Excepciones, UnaOrdenEsLoQueDiceSuResultado) {
  const struct {
    int excepcion;
    int veces;
    bool llega;
    bool hecha;
    int envios;
  } casos[] = {{4, 1, true, true, 1},     {5, 1, true, true, 1},     {4, 1, false, true, 2},
               {4, 9, false, false, 3},   {0x0A, 1, true, true, 2},  {0x0B, 1, true, true, 2},
               {0x0B, 1, false, true, 2}, {0x0B, 9, true, false, 3}, {0x0A, 9, false, false, 3},
               {1, 9, false, false, 1},   {2, 9, false, false, 1},   {3, 9, false, false, 1}};
  bool encendida = false;
  for (const auto& caso : casos) {
    const int antes = Conmutaciones();
    int envios = 0;
    banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
      if (pdu.front() != protocolo::funcion::kEscribirRegistros || ++envios > caso.veces) return std::nullopt;
      if (caso.llega) banco.ContestarDeVeras(pdu);
      return Excepcion(pdu, caso.excepcion);
    };
    EXPECT_EQ(Driver().GrabarSalidaDigital(1, !encendida), caso.hecha) << caso.excepcion << " " << caso.veces;
    EXPECT_EQ(envios, caso.envios) << caso.excepcion << " " << caso.veces;
    const bool llego = caso.llega || caso.hecha;
    EXPECT_EQ(Conmutaciones() - antes, llego ? 1 : 0) << caso.excepcion << " " << caso.veces;
    encendida = encendida != llego;
  }
}

TEST_F(Excepciones, LaHoraNoSeMandaDosVeces) {
  for (const bool llega : {true, false}) {
    for (const int excepcion : {4, 0x0B}) {
      banco.Desfasar(30);
      int envios = 0;
      banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
        if (pdu.front() != protocolo::funcion::kEscribirRegistros) return std::nullopt;
        ++envios;
        if (llega) banco.ContestarDeVeras(pdu);
        return Excepcion(pdu, excepcion);
      };
      EXPECT_EQ(Driver().GrabarFechaHora(), llega) << excepcion;
      EXPECT_EQ(envios, 1) << excepcion;
    }
  }
}

TEST_F(Excepciones, UnaOrdenQueLaUnidadOcupadaNoTomoSeAbandona) {
  ASSERT_NE(Driver().LeerFechaHora(), "");
  std::int64_t cancelada = 0;
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    if (pdu.front() != protocolo::funcion::kEscribirRegistros) return std::nullopt;
    if (cancelada == 0) {
      cancelada = banco.reloj.Milisegundos();
      Driver().Cancelar(false);
    }
    return Excepcion(pdu, 6);
  };
  EXPECT_EQ(NumeroDeError([&] { Driver().GrabarSalidaDigital(1, true); }), error_enlace::kCancelada);
  EXPECT_LE(banco.reloj.Milisegundos() - cancelada, 100);
  EXPECT_EQ(Conmutaciones(), 0);
}

}  // namespace utr::prueba
