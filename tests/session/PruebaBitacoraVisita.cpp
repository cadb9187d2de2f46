#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "services/ComunicadorConDiario.h"
#include "session/ArchivoBitacora.h"
#include "session/BitacoraVisita.h"
#include "session/Respaldos.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/DispositivoLleno.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"

namespace utr {
namespace {

namespace fs = std::filesystem;
using prueba::EscribirTodo;
using prueba::LeerTodo;
using prueba::NumeroDeError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kCabecera =
    "\"N.º (bitácora 1)\",\"Momento\",\"Estación\",\"Unidad\",\"Qué\",\"Antes\",\"Después\",\"Resultado\"\r\n";

class BitacoraEnCarpeta : public testing::Test {
 protected:
  BitacoraEnCarpeta() {
    Identificar(70);
    diario.AlPreguntarUnidad([this] { return unidad; });
  }
  void Identificar(std::int64_t identificador) {
    propiedades.Escribir(clave::kIdentificador, Propiedad{identificador}, Propiedad{std::int64_t{0}});
  }
  void Anotar(const std::string& que, const std::string& antes = "-") {
    diario.Anotar({reloj.Ahora(), que, antes, "b", "hecho"});
  }
  // A run of the program of its own.
  void EnOtraCorrida(const std::string& que) {
    Diario otro(propiedades, reloj);
    const BitacoraVisita la_suya(carpeta.Ruta(), otro, registro);
    otro.Anotar({reloj.Ahora(), que, "-", "b", "hecho"});
    EXPECT_THAT(la_suya.Pendientes(), IsEmpty()) << la_suya.Falla();
  }
  fs::path Archivo(const char* nombre = "Bitacora-2026-03-15.csv", const char* estacion = "70") const {
    return carpeta.Ruta() / "Respaldos" / estacion / nombre;
  }
  static std::vector<std::string> Que(const fs::path& archivo) {
    std::vector<std::string> textos;
    for (const Asiento& asiento : LeerBitacora(archivo).asientos) textos.push_back(asiento.comando);
    return textos;
  }

  prueba::Carpeta carpeta;
  RelojFalso reloj;
  RegistroErrores registro{carpeta / "AdminUTR.err", reloj};
  Propiedades propiedades{carpeta / "AdminUTR.dll"};
  std::string unidad = "real";
  Diario diario{propiedades, reloj};
  BitacoraVisita bitacora{carpeta.Ruta(), diario, registro};
};

}  // namespace

TEST_F(BitacoraEnCarpeta, CadaAsientoEsUnRenglonQueVuelveIgual) {
  const std::string dificil = "dijo \"hola\", y\r\notra línea\n; N/D ñ ";
  Anotar("Uno", dificil);
  EXPECT_EQ(LeerTodo(Archivo()),
            kCabecera +
                "1,2026-03-15 10:00:00,70,\"real\",\"Uno\",\"dijo \"\"hola\"\", y\r\notra línea\n; N/D ñ "
                "\",\"b\",\"hecho\"\r\n")
      << "on the disk as soon as it is noted";
  reloj.Adelantar(61);
  Anotar("Dos");
  const BitacoraLeida leida = LeerBitacora(Archivo());
  EXPECT_EQ(leida.reparo, "");
  ASSERT_EQ(leida.asientos.size(), 2U);
  EXPECT_EQ(leida.asientos[0].antes, dificil);
  EXPECT_EQ(leida.asientos[1].momento, reloj.Ahora());
  EXPECT_EQ(leida.asientos[1].estacion, 70);
  EXPECT_EQ(leida.asientos[1].unidad, "real");
  EXPECT_EQ(leida.ultimo, 2U);
}

TEST_F(BitacoraEnCarpeta, CadaDiaYCadaEstacionTieneLaSuya) {
  Anotar("Uno");
  EnOtraCorrida("Dos");
  Identificar(0);
  Anotar("Tres");
  Identificar(70);
  reloj.Poner({2026, 3, 16, 0, 0, 0});
  Anotar("Cuatro");
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Dos")) << "the day goes on in another run";
  EXPECT_THAT(LeerTodo(Archivo()), HasSubstr("\r\n2,2026-03-15 10:00:00,70,\"\",\"Dos\""));
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-15.csv", "sin-identificador")), ElementsAre("Tres"));
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-16.csv")), ElementsAre("Cuatro"));

  for (const char* ajeno : {"Bitacora-2026-03-14-001.csv", "Bitacora-2026-3-14.csv", "Bitacora-2026-02-30.csv",
                            "Bitacora-.csv", "bitacora-2026-03-14.csv", "Bitacora-2026-03-14.txt"})
    EscribirTodo(Archivo(ajeno), "");
  EscribirTodo(Archivo("Bitacora-2026-03-15-002.csv"), "");
  const auto dias = DiasDeBitacora(bitacora.Carpeta(70));
  ASSERT_EQ(dias.size(), 2U);
  EXPECT_EQ(TextoFecha(dias[0].dia), "16/03/2026");
  EXPECT_THAT(dias[1].archivos, ElementsAre(Archivo(), Archivo("Bitacora-2026-03-15-002.csv")));
  EXPECT_THAT(DiasDeBitacora(bitacora.Carpeta(99)), IsEmpty());
  fs::create_directories(carpeta / "Respaldos/007");
  fs::create_directories(carpeta / "Respaldos/otra");
  EXPECT_THAT(Respaldos::Estaciones(carpeta.Ruta()), ElementsAre(0, 70));
}

TEST_F(BitacoraEnCarpeta, LoQueNoPuedeSeguirQuedaComoEsta) {
  const std::string uno = kCabecera + "1,2026-03-15 10:00:00,70,\"real\",\"Uno\",\"-\",\"b\",\"hecho\"\r\n";
  const struct {
    std::string texto;
    const char* reparo;  // what reading says; empty: it can go on
    bool se_lee;
  } casos[] = {
      {"\"N.º (bitácora 2)\",\"Otra\"\r\n1,2\r\n", "es de otra versión (2)", false},
      {"\"N.º (bitácora 1)\",\"Otra\"\r\n", "línea 1: no se entiende", false},
      {"Momento;Qué\n", "no es una bitácora", false},
      {uno + "2,2026-03-15 10:0", "línea 3: no se entiende", true},
      {uno + "2,2026-03-15 10:00:00,70,\"real\",\"Do\"\"", "línea 3: no se entiende", true},
      {uno + "2,ayer,70,\"real\",\"a\",\"-\",\"b\",\"c\"\r\n", "línea 3: no se entiende", true},
      {uno + "2,2026-03-15 10:00:00,70,\"real\",\"a\",\"-\",\"b\"\r\n", "línea 3: no se entiende", true},
      {uno.substr(0, uno.size() - 2) + "\n", "", true},
      {kCabecera, "", true},
      {"", "", true},
  };
  for (const auto& caso : casos) {
    fs::remove_all(carpeta / "Respaldos");
    fs::create_directories(Archivo().parent_path());
    EscribirTodo(Archivo(), caso.texto);
    std::string reparo;
    const auto falla = FallaDe([&] { reparo = LeerBitacora(Archivo()).reparo; });
    EXPECT_EQ(!falla, caso.se_lee) << caso.texto;
    EXPECT_THAT(falla ? falla->Descripcion() : reparo, HasSubstr(caso.reparo));
    EnOtraCorrida("Nuevo");
    const bool sigue = *caso.reparo == '\0';
    EXPECT_EQ(fs::exists(Archivo("Bitacora-2026-03-15-002.csv")), !sigue) << caso.texto;
    EXPECT_EQ(Que(Archivo(sigue ? "Bitacora-2026-03-15.csv" : "Bitacora-2026-03-15-002.csv")).back(), "Nuevo");
    if (!sigue) {
      EXPECT_EQ(LeerTodo(Archivo()), caso.texto);
    }
  }
  EXPECT_EQ(NumeroDeError([&] { LeerBitacora(carpeta.Ruta()); }), error::kArchivo);
}

TEST_F(BitacoraEnCarpeta, LoQueOtroCambiaSeMiraDeNuevo) {
  Anotar("Uno");
  EscribirTodo(Archivo(), "la abrieron con otra cosa");
  Anotar("Dos");
  EXPECT_EQ(LeerTodo(Archivo()), "la abrieron con otra cosa");
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-15-002.csv")), ElementsAre("Dos"));
  fs::remove_all(carpeta / "Respaldos");
  Anotar("Tres");
  EXPECT_THAT(Que(Archivo()), ElementsAre("Tres"));
}

TEST_F(BitacoraEnCarpeta, UnDiscoLlenoNoPierdeNiRepiteNada) {
  int avisos = 0;
  bitacora.AlCambiar([&] { ++avisos; });
  Anotar("Uno");
  EXPECT_EQ(avisos, 0);
  const std::uint64_t largo = fs::file_size(Archivo());
  for (const std::uint64_t cabe : {largo, largo + 20}) {  // full ahead of an entry, and in the middle of it
    const DispositivoLleno lleno(cabe);
    Anotar("Sin lugar");
    EXPECT_NE(bitacora.Falla(), "");
  }
  EXPECT_EQ(bitacora.Pendientes().size(), 2U);
  EXPECT_EQ(avisos, 2);
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno"));
  Anotar("Otra vez");
  EXPECT_THAT(bitacora.Pendientes(), IsEmpty());
  EXPECT_EQ(bitacora.Falla(), "");
  EXPECT_EQ(avisos, 3) << "that it is well again is told too";
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Sin lugar", "Sin lugar", "Otra vez"));
  {
    const DispositivoLleno lleno(0);
    Identificar(80);
    Anotar("Otra estación");
  }
  EXPECT_EQ(bitacora.Pendientes().size(), 1U);
  bitacora.Reintentar();
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-15.csv", "80")), ElementsAre("Otra estación"));
}

TEST_F(BitacoraEnCarpeta, LoPendientePuedeIrAOtroLado) {
  EscribirTodo(carpeta / "Respaldos", "un archivo en lugar de la carpeta");
  Anotar("Uno");
  Anotar("Dos");
  EXPECT_EQ(bitacora.Pendientes().size(), 2U);
  EXPECT_THAT(bitacora.Falla(), HasSubstr("No se puede crear la carpeta"));
  EXPECT_EQ(NumeroDeError([&] { bitacora.GuardarPendientes(70, carpeta / "no_hay/a.csv"); }), error::kArchivo);
  EXPECT_EQ(bitacora.Pendientes().size(), 2U);
  bitacora.GuardarPendientes(70, carpeta / "a.csv");
  EXPECT_THAT(bitacora.Pendientes(), IsEmpty());
  EXPECT_EQ(bitacora.Falla(), "") << "nothing is missing any more";
  EXPECT_THAT(Que(carpeta / "a.csv"), ElementsAre("Uno", "Dos"));
  const std::string errores = LeerTodo(carpeta / "AdminUTR.err");
  EXPECT_EQ(std::count(errores.begin(), errores.end(), '\n'), 1) << "once, not at each entry";
}

// What a program that is cut off at that moment leaves behind.
TEST_F(BitacoraEnCarpeta, LoQueUnProcedimientoHaceEstaEnElDiscoAntesDeQueTermine) {
  ComunicadorFalso equipo;
  ComunicadorConDiario driver(equipo, diario, reloj);
  std::vector<std::string> durante;
  equipo.al_llamar = [&](const std::string&) {
    for (const Asiento& a : LeerBitacora(Archivo()).asientos) durante.push_back(a.comando + ": " + a.resultado);
  };
  equipo.Devuelve("EscribirPagina", true);
  Anotar("Uno");
  {
    Diario::Tarea tarea(diario);
    driver.EscribirPagina("34", "0");
    EXPECT_THAT(durante, ElementsAre("Uno: hecho", "Grabar página 34: sin terminar; no confirmado"));
    EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Grabar página 34"));
    diario.Anotar({reloj.Ahora(), "Respaldo", "-", "b", "hecho"});
    equipo.al_llamar = {};
    driver.EscribirPagina("35", "0");
    EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Grabar página 34", "Respaldo", "Grabar página 35"));
    tarea.Anotar({reloj.Ahora(), "Grabar identificador", "-", "b", "hecho"});
    EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Respaldo", "Grabar identificador")) << "its words take their place";
    EXPECT_EQ(LeerBitacora(Archivo()).ultimo, 3U);
    driver.EscribirPagina("36", "0");
  }
  Anotar("Dos");
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Respaldo", "Grabar identificador", "Grabar página 36", "Dos"));
  EXPECT_EQ(LeerTodo(Archivo()).find("sin terminar"), std::string::npos);
  driver.LeerPaginaFlash(0, 0);
  driver.LeerPaginaFlash(0, 1);
  EXPECT_EQ(LeerBitacora(Archivo()).asientos.back().resultado, "sin terminar");
  diario.Completar();
  EXPECT_EQ(LeerBitacora(Archivo()).asientos.back().resultado, "0 páginas leídas, 2 sin respuesta");
  EXPECT_EQ(LeerBitacora(Archivo()).ultimo, 6U);
}

TEST_F(BitacoraEnCarpeta, LoProvisionalDeOtroArchivoTambienSeVa) {
  ComunicadorFalso equipo;
  ComunicadorConDiario driver(equipo, diario, reloj);
  Diario::Tarea tarea(diario);
  driver.BorrarFlash();
  Identificar(80);
  driver.ReiniciarUTR("14");
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-15.csv", "80")), ElementsAre("Reinicio UTR"));
  tarea.Anotar({reloj.Ahora(), "Todo", "-", "b", "hecho"});
  EXPECT_THAT(Que(Archivo()), ElementsAre("Todo"));
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-15.csv", "80")), IsEmpty());
}

TEST_F(BitacoraEnCarpeta, LoProvisionalSeVaAunqueOtroHayaEscritoEnMedio) {
  ComunicadorFalso equipo;
  ComunicadorConDiario driver(equipo, diario, reloj);
  equipo.Devuelve("BorrarFlash", true);
  equipo.Devuelve("ReiniciarUTR", true);
  equipo.al_llamar = [&](const std::string& llamada) { EnOtraCorrida("Otro, durante " + llamada.substr(0, 3)); };
  driver.BorrarFlash();
  {
    Diario::Tarea tarea(diario);
    driver.ReiniciarUTR("14");
    tarea.Anotar({reloj.Ahora(), "Todo", "-", "b", "hecho"});
  }
  EXPECT_THAT(Que(Archivo()), ElementsAre("Otro, durante Bor", "Borrar Flash", "Otro, durante Rei", "Todo"));
  EXPECT_EQ(LeerTodo(Archivo()).find("sin terminar"), std::string::npos);
}

// Two calls of one procedure, and a foreign entry ahead of, between and behind them.
TEST_F(BitacoraEnCarpeta, LoProvisionalDeVariasLlamadasSeVaConLoAjenoEnMedio) {
  ComunicadorFalso equipo;
  ComunicadorConDiario driver(equipo, diario, reloj);
  equipo.Devuelve("EscribirPagina", true);
  Anotar("Uno");
  {
    Diario::Tarea tarea(diario);
    driver.EscribirPagina("34", "0");
    EnOtraCorrida("Ajeno");
    driver.EscribirPagina("35", "0");
    driver.EscribirPagina("36", "0");
    tarea.Anotar({reloj.Ahora(), "Todo", "-", "b", "hecho"});
    EnOtraCorrida("Ajeno");
    driver.EscribirPagina("37", "0");
    EnOtraCorrida("Ajeno");
    Identificar(80);
    tarea.Anotar({reloj.Ahora(), "Resto", "-", "b", "hecho"});
  }
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Ajeno", "Todo", "Ajeno", "Ajeno", "Resto"));
  Identificar(70);
  Anotar("Dos");
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Ajeno", "Todo", "Ajeno", "Ajeno", "Resto", "Dos"));
  EXPECT_EQ(LeerBitacora(Archivo()).reparo, "");
}

// What took its place is of another day: the file of the day before is put in order all the same.
TEST_F(BitacoraEnCarpeta, LoProvisionalDeAyerSeVaConLoAjenoDetras) {
  ComunicadorFalso equipo;
  ComunicadorConDiario driver(equipo, diario, reloj);
  Diario::Tarea tarea(diario);
  driver.BorrarFlash();
  EnOtraCorrida("Ajeno");
  reloj.Poner({2026, 3, 16, 0, 0, 1});
  tarea.Anotar({reloj.Ahora(), "Todo", "-", "b", "hecho"});
  EXPECT_THAT(Que(Archivo()), ElementsAre("Ajeno"));
  EXPECT_THAT(Que(Archivo("Bitacora-2026-03-16.csv")), ElementsAre("Todo"));
}

TEST_F(BitacoraEnCarpeta, UnDiscoLlenoEnMedioDeUnProcedimientoNoPierdeNada) {
  ComunicadorFalso equipo;
  ComunicadorConDiario driver(equipo, diario, reloj);
  Anotar("Uno");
  const std::uint64_t largo = fs::file_size(Archivo());
  Diario::Tarea tarea(diario);
  driver.BorrarFlash();
  {
    const DispositivoLleno lleno(largo);
    tarea.Anotar({reloj.Ahora(), "Sin lugar", "-", "b", "hecho"});
    EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Borrar Flash")) << "the call stays until its place is taken";
    EXPECT_EQ(bitacora.Pendientes().size(), 1U);
    driver.BorrarCartucho();
  }
  EXPECT_EQ(bitacora.Pendientes().size(), 2U) << "a call that ended waits once";
  bitacora.Reintentar();
  EXPECT_THAT(bitacora.Pendientes(), IsEmpty());
  EXPECT_THAT(Que(Archivo()), ElementsAre("Uno", "Sin lugar", "Borrar Cartucho"));
}

}  // namespace utr
