#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "services/ComunicadorConDiario.h"
#include "services/Diario.h"
#include "services/RegistroErrores.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DiarioDePrueba : public testing::Test {
 protected:
  DiarioDePrueba() { Identificar(70); }
  void Identificar(std::int64_t identificador) {
    propiedades.Escribir(clave::kIdentificador, Propiedad{identificador}, Propiedad{std::int64_t{0}});
  }
  static std::string Texto(const Asiento& a) {
    return std::to_string(a.estacion) + "|" + a.comando + "|" + a.antes + "|" + a.escrito + "|" + a.resultado;
  }
  // The entries that stay for good, since the last time.
  std::vector<std::string> Nuevos() {
    std::vector<std::string> textos;
    for (const Asiento& asiento : diario.Asientos()) {
      if (!asiento.provisional && vistos.insert(asiento.orden).second) textos.push_back(Texto(asiento));
    }
    return textos;
  }

  prueba::Carpeta carpeta;
  RelojFalso reloj;
  Propiedades propiedades{carpeta / "utr.dll"};
  Diario diario{propiedades, reloj};
  ComunicadorFalso unidad;
  ComunicadorConDiario driver{unidad, diario, reloj};
  std::set<std::uint64_t> vistos;
  TablaPtr dos = TablaDeTextos({"A"}, {{"1"}, {"2"}});
};

// A call of the driver and the entry that tells of it where the unit says yes.
struct CasoLlamada {
  const char* operacion;
  std::function<void(Comunicador& driver, Tabla& tabla)> hacer;
  const char* asiento;  // without its end
  bool lee = false;
};
const CasoLlamada kLlamadas[] = {
    {"BorrarFlash", [](auto& d, auto&) { d.BorrarFlash(); }, "Borrar Flash|-|-"},
    {"BorrarCartucho", [](auto& d, auto&) { d.BorrarCartucho(); }, "Borrar Cartucho|-|-"},
    {"ReiniciarAgenda", [](auto& d, auto&) { d.ReiniciarAgenda("41"); }, "Reinicio Agenda|-|-"},
    {"ReiniciarUTR", [](auto& d, auto&) { d.ReiniciarUTR("14"); }, "Reinicio UTR|-|-"},
    {"GrabarAgenda", [](auto& d, auto& t) { d.GrabarAgenda(t); }, "Grabar agenda|sin leer|2 horarios"},
    {"GrabarParametrizacion", [](auto& d, auto& t) { d.GrabarParametrizacion(t); },
     "Grabar parametrización|sin leer|2 canales"},
    {"GrabarConfiguracion", [](auto& d, auto& t) { d.GrabarConfiguracion(t); },
     "Grabar configuración|sin leer|2 canales"},
    {"GrabarFechaHora", [](auto& d, auto&) { d.GrabarFechaHora(); },
     "Grabar fecha y hora|sin leer|15/03/2026 10:00:00"},
    {"GrabarEstado", [](auto& d, auto&) { d.GrabarEstado("4/1"); }, "Grabar estado|sin leer|4/1"},
    {"EscribirPagina", [](auto& d, auto&) { d.EscribirPagina("34", "0,0,0"); }, "Grabar página 34|sin leer|0,0,0"},
    {"GrabarEvento", [](auto& d, auto&) { d.GrabarEvento("1", "128/0/40/0"); }, "Grabar evento|-|1: 128/0/40/0"},
    {"GrabarPilaCanal", [](auto& d, auto&) { d.GrabarPilaCanal("7", "x"); },
     "Grabar relación pila-canales|sin leer|7: x"},
    {"GrabarCanalesModificar", [](auto& d, auto&) { d.GrabarCanalesModificar("33", "3#"); },
     "Grabar canales a modificar|-|33: 3#"},
    {"GrabarSalidaDigital", [](auto& d, auto&) { d.GrabarSalidaDigital(2, true); },
     "Grabar salida digital 2|sin leer|encendida"},
    {"ConfiguracionAlmacenada", [](auto& d, auto&) { d.ConfiguracionAlmacenada(true); },
     "Lectura de la configuración|-|-|2 canales", true},
    {"LeerAgenda", [](auto& d, auto&) { d.LeerAgenda(); }, "Lectura de la agenda|-|-|2 horarios", true},
    {"LeerEventos", [](auto& d, auto&) { d.LeerEventos("", ""); }, "Lectura de eventos, pendientes|-|-|2 registros",
     true},
    {"LeerDatos", [](auto& d, auto&) { d.LeerDatos("01/02/2026", "02/02/2026", 0); },
     "Lectura de datos, canal 1, del 01/02/2026 al 02/02/2026|-|-|2 registros", true},
    {"LeerColaTx", [](auto& d, auto&) { d.LeerColaTx("", ""); },
     "Lectura de la cola de transmisión, pendientes|-|-|2 registros", true},
    {"LeerDatosCartucho", [](auto& d, auto&) { d.LeerDatosCartucho("", "", 22); },
     "Lectura de datos del cartucho, canal 23, pendientes|-|-|2 registros", true},
    {"LeerEventosCartucho", [](auto& d, auto&) { d.LeerEventosCartucho("", ""); },
     "Lectura de eventos del cartucho, pendientes|-|-|2 registros", true},
    {"LeerColaTxCartucho", [](auto& d, auto&) { d.LeerColaTxCartucho("", ""); },
     "Lectura de la cola de transmisión del cartucho, pendientes|-|-|2 registros", true},
};

}  // namespace

TEST_F(DiarioDePrueba, CadaEscrituraYCadaLecturaLargaTieneSuAsiento) {
  for (const CasoLlamada& caso : kLlamadas) {
    const std::string comienzo = std::string("70|") + caso.asiento;
    unidad.Devuelve(caso.operacion, dos);
    caso.hacer(driver, *dos);
    EXPECT_THAT(Nuevos(), ElementsAre(comienzo + (caso.lee ? "" : "|hecho")));
    const std::string sin_fin = caso.lee ? comienzo.substr(0, comienzo.rfind('|')) : comienzo;
    unidad.Devuelve(caso.operacion, false);
    unidad.Devuelve(caso.operacion, TablaPtr());
    caso.hacer(driver, *dos);
    EXPECT_THAT(Nuevos(), ElementsAre(sin_fin + (caso.lee ? "|sin respuesta" : "|no aceptado; no confirmado")));
    unidad.Falla(caso.operacion, Error(8020, "driver", "la UTR no responde"));
    EXPECT_EQ(FallaDe([&] { caso.hacer(driver, *dos); })->Numero(), 8020) << "it goes on to the caller";
    EXPECT_THAT(Nuevos(), ElementsAre(sin_fin + "|[la UTR no responde]" + (caso.lee ? "" : "; no confirmado")));
  }
  EXPECT_EQ(unidad.llamadas.size(), 3 * std::size(kLlamadas)) << "no call of its own";
  EXPECT_EQ(diario.Asientos().size(), unidad.llamadas.size()) << "what told of a call underway has gone";
  EXPECT_EQ(unidad.Recibidas("GrabarAgenda").front()->RecordCount(), 2U);
}

TEST_F(DiarioDePrueba, LoQueSoloMiraNoSeAnota) {
  unidad.Devuelve("LeerInstantaneos", dos);
  driver.LeerInstantaneos();
  driver.LeerPagina("0", false);
  driver.LeerFechaHora();
  driver.LeerEstado();
  driver.Conectar("9600,n,8,1", "1");
  driver.LlamarTelefono("4912345", "ATZ");
  driver.ModoConexion(true);
  driver.LeerArchivoConfiguracion("a.icf");
  EXPECT_THAT(Nuevos(), IsEmpty());
}

TEST_F(DiarioDePrueba, LoDeAntesEsLoQueAcabaDeLeerse) {
  const auto antes = [&] {
    driver.EscribirPagina("0", "9");
    return diario.Asientos().back().antes;
  };
  unidad.Devuelve("LeerPagina", "4,1,2");
  driver.LeerPagina("0", false);
  driver.ConvertirDe(3);
  EXPECT_EQ(antes(), "4,1,2");
  EXPECT_EQ(antes(), "sin leer") << "it has been written since";
  driver.LeerPagina("34", false);
  EXPECT_EQ(antes(), "sin leer") << "another page";
  const std::function<void()> tras[] = {[&] { driver.IdEquipo(5); },      [&] { driver.Conectar("9600,n,8,1", "2"); },
                                        [&] { driver.PorIP(true); },      [&] { driver.DireccionIP("10.0.0.1"); },
                                        [&] { driver.PuertoIP("1000"); }, [&] { driver.LlamarTelefono("1", ""); },
                                        [&] { driver.Desconectar(); },    [&] { driver.BorrarFlash(); }};
  for (const auto& cambiar : tras) {
    driver.LeerPagina("0", false);
    cambiar();
    EXPECT_EQ(antes(), "sin leer") << "another unit may be there";
  }
  unidad.Devuelve("LeerFechaHora", "01/01/2026 00:00:00");
  driver.LeerFechaHora();
  driver.GrabarFechaHora();
  EXPECT_EQ(diario.Asientos().back().antes, "01/01/2026 00:00:00");
  driver.LeerFechaHora();
  reloj.Adelantar(3);
  driver.GrabarFechaHora();
  EXPECT_EQ(diario.Asientos().back().antes, "01/01/2026 00:00:00, leída el 15/03/2026 10:00:00");
}

TEST_F(DiarioDePrueba, QuienSabeMasAnotaEnLugarDeLasLlamadas) {
  {
    Diario::Tarea tarea(diario);
    driver.EscribirPagina("0", "1");
    driver.ReiniciarUTR("14");
    Identificar(71);
    EXPECT_THAT(Nuevos(), IsEmpty());
    tarea.Anotar({reloj.Ahora(), "Grabar identificador", "70", "71", "hecho"});
    diario.Anotar({reloj.Ahora(), "Respaldo", "-", "x.ucg", "hecho", ClaseAsiento::kRespaldo});
    EXPECT_THAT(Nuevos(), ElementsAre("70|Grabar identificador|70|71|hecho", "71|Respaldo|-|x.ucg|hecho"))
        << "a task belongs to the station with which it began";
    driver.BorrarFlash();
  }
  EXPECT_THAT(Nuevos(), ElementsAre("71|Borrar Flash|-|-|hecho")) << "nobody told of it";

  FallaDe([&] {
    Diario::Tarea tarea(diario);
    driver.BorrarFlash();
    {
      Diario::Tarea interior(diario);
      driver.ReiniciarUTR("14");
      interior.Anotar({reloj.Ahora(), "Interior", "", "", "hecho"});
      driver.BorrarCartucho();
    }
    EXPECT_THAT(Nuevos(), ElementsAre("71|Interior|||hecho")) << "the outer one may still tell of the rest";
    throw Error(5, "prueba", "se cortó");
  });
  EXPECT_THAT(Nuevos(), ElementsAre("71|Borrar Flash|-|-|hecho", "71|Borrar Cartucho|-|-|hecho"));
}

TEST_F(DiarioDePrueba, LasPaginasDeLaFlashSonUnSoloAsiento) {
  const auto leer = [&](int cuantas, const char* texto) {
    unidad.Devuelve("LeerPaginaFlash", texto);
    for (int i = 0; i < cuantas; ++i) driver.LeerPaginaFlash(0, static_cast<std::int16_t>(i));
  };
  leer(3, "1,2");
  EXPECT_EQ(diario.Asientos().size(), 1U) << "whatever their number, and ahead of their end";
  leer(1, "");
  unidad.Falla("LeerPaginaFlash", Error(8020, "driver", "nada"), 1);
  EXPECT_TRUE(FallaDe([&] { driver.LeerPaginaFlash(1, 1); }));
  driver.LeerEstado();
  leer(1, "1");
  EXPECT_THAT(Nuevos(), IsEmpty());
  driver.BorrarFlash();
  EXPECT_THAT(Nuevos(), ElementsAre("70|Lectura de la memoria flash|-|-|4 páginas leídas, 2 sin respuesta",
                                    "70|Borrar Flash|-|-|hecho"));
  leer(2, "1");
  driver.Desconectar();
  EXPECT_EQ(Nuevos().size(), 1U) << "nothing waits for ever";
  leer(2, "1");
  {
    Diario::Tarea tarea(diario);
    EXPECT_EQ(Nuevos().size(), 1U) << "those ahead of a task aren't its own";
    leer(5, "1");
    tarea.Anotar({reloj.Ahora(), "Recuperación", "-", "a.bkp", "5 páginas"});
  }
  EXPECT_THAT(Nuevos(), ElementsAre("70|Recuperación|-|a.bkp|5 páginas"));
  EXPECT_EQ(diario.Asientos().size(), 5U);
}

TEST_F(DiarioDePrueba, OtroIdentificadorDejaSenasEnLasDosBitacoras) {
  diario.AnotarOtroIdentificador(70, 70);
  EXPECT_THAT(Nuevos(), IsEmpty());
  diario.AnotarOtroIdentificador(70, 0);
  EXPECT_THAT(Nuevos(),
              ElementsAre("70|Cambio de identificador|70|0|sigue en la bitácora de la estación sin identificador",
                          "0|Cambio de identificador|70|0|lo anterior está en la bitácora de la estación 70"));
}

}  // namespace utr
