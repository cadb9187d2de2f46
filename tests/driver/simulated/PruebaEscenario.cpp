#include <gtest/gtest.h>

#include "base/Error.h"
#include "base/Texto.h"
#include "driver/BancoSimulado.h"
#include "driver/simulated/scenario/Escenario.h"

namespace utr::simulada {
namespace {

using prueba::BancoSimulado;
using prueba::LeerTodo;

// The description of the mistake in a scenario, "" when there is none.
std::string Reparo(const std::string& texto) {
  try {
    LeerEscenarioDeTexto(texto);
    return {};
  } catch (const Error& error) {
    EXPECT_EQ(error.Numero(), error::kArchivo);
    return error.Descripcion();
  }
}

TEST(Escenario, VacioEsElDeFabrica) {
  const Escenario e = LeerEscenarioDeTexto("");
  EXPECT_EQ(e.estado, Escenario{}.estado);
  EXPECT_TRUE(e.fallas.empty());
}

TEST(Escenario, ElQueSeEntregaSeEntiendeYEsElDeFabrica) {
  const Escenario e =
      LeerEscenarioDeTexto(LeerTextoEscenario(std::filesystem::path(CARPETA_DATOS) / "UTRSimulada.toml"));
  EXPECT_EQ(e.estado, Escenario{}.estado) << "the file shows what holds without it";
  EXPECT_TRUE(e.fallas.empty());
  EXPECT_EQ(e.tiempos.factor, 1);
  EXPECT_EQ(e.cable, FallasDelCable{});
}

TEST(Escenario, ElArchivoDeConfiguracionDeEjemploSeAbre) {
  BancoSimulado banco;
  const TablaPtr t =
      banco.Driver().LeerArchivoConfiguracion((std::filesystem::path(CARPETA_DATOS) / "EstacionEjemplo.icf").string());
  EXPECT_EQ(t->RecordCount(), 23U);
  EXPECT_EQ(t->Texto("Descripcion"), "Nivel de la laguna");
  banco.Conectar();
  EXPECT_TRUE(banco.Driver().GrabarConfiguracion(*t)) << "and the unit takes all of it";
}

// The examples that a trainer finds commented out must be right too.
TEST(Escenario, LosEjemplosDelQueSeEntregaSeEntienden) {
  std::istringstream entrada(LeerTodo(std::filesystem::path(CARPETA_DATOS) / "UTRSimulada.toml"));
  std::string texto;
  for (std::string linea; std::getline(entrada, linea);) {
    if (linea.starts_with("#~ ")) linea.erase(0, 3);
    texto += linea + "\n";
  }
  const Escenario e = LeerEscenarioDeTexto(texto);
  EXPECT_GT(e.fallas.size(), 8U);
  EXPECT_FALSE(e.vida.hidrologia.fijos.empty());
  EXPECT_EQ(e.estado.count("paginas.34"), 1U);
}

TEST(Escenario, CadaErrorTieneSuLineaYSuMotivo) {
  const struct {
    const char* texto;
    const char* reparo;
  } casos[] = {
      {"[equipo]\nvelocida = 9600", "línea 2: 'equipo.velocida' no es una clave conocida"},
      {"[equipos]", "línea 1: 'equipos' no es una clave conocida"},
      {"equipo = 3", "línea 1: 'equipo' debe ser una tabla"},
      {"[equipo]\n\nvelocidad = 9601", "línea 3: 'equipo.velocidad' debe ser 300, 1200, 2400, 4800, 9600 o 19200"},
      {"[equipo]\nvelocidad = \"9600\"", "línea 2: 'equipo.velocidad' debe ser un número entero"},
      {"[equipo]\nidentificador = 65536", "línea 2: 'equipo.identificador' debe estar entre 0 y 65535"},
      {"[equipo]\nmuda = 1", "línea 2: 'equipo.muda' debe ser true o false"},
      {"[equipo]\nestado = [\"TxNada\"]", "línea 2: 'equipo.estado' no conoce el indicador \"TxNada\""},
      {"[tiempos]\nfactor = -1", "línea 2: 'tiempos.factor' debe estar entre 0 y 100"},
      {"[linea]\nruido = 1.5", "línea 2: 'linea.ruido' debe estar entre 0 y 1"},
      {"[linea]\ntarde = 1", "línea 2: 'linea.tarde' no es una clave conocida"},
      {"[enlace]\npuertos = 1", "línea 2: 'enlace.puertos' debe ser una lista entre corchetes"},
      {"[ip]\ndirecciones = [\"1.2.3\"]", "línea 2: 'ip.direcciones' no admite la dirección \"1.2.3\""},
      {"[paginas]\n0 = \"1\"", "línea 2: 'paginas.0' debe ser un número de 1 a 65535"},
      {"[paginas]\n35 = \"1,2,3,4\"", "línea 2: 'paginas.35' no es un texto de bytes que quepa en esa página"},
      {"[canal.24]\nFlags = \"1\"", "'canal.24' debe ser un número de 1 a 23"},
      {"[canal.4]\nFlag = \"1\"", "línea 2: 'canal.4.Flag' no es una columna de la tabla de canales"},
      {"[agenda]\nentradas = [{ hora = \"25:00\" }]", "'agenda.entradas' tiene una entrada que no se entiende"},
      {"[[falla]]\noperacion = \"LeerPagina\"", "'falla' necesita operacion y tipo"},
      {"[[falla]]\noperacion = \"Leer\"\ntipo = \"vacio\"", "línea 2: 'falla.operacion' no es una operación: \"Leer\""},
      {"[[falla]]\noperacion = \"LeerPagina\"\ntipo = \"x\"", "línea 3: 'falla.tipo' no es un tipo de falla: \"x\""},
      {"[[falla]]\noperacion = \"Conectar\"\ntipo = \"falso\"", "la operación Conectar no admite \"falso\""},
      {"[[falla]]\noperacion = \"EscribirLog\"\ntipo = \"error\"", "la operación EscribirLog no admite \"error\""},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"campo_ausente\"", "'falla' necesita campo"},
      {"[[falla]]\noperacion = \"LeerPagina\"\ntipo = \"vacio\"\npista = 3", "una condición que LeerPagina no tiene"},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"ninguna\"\ncuando = 0", "'falla.cuando' debe estar entre 1"},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"ninguna\"\ncuando = \"a veces\"",
       "'falla.cuando' debe ser \"siempre\""},
      {"[[falla]]\noperacion = \"LeerDatos\"\ntipo = \"no_numero\"\ncampo = \"Valr\"",
       "'falla' tiene un campo que LeerDatos no trae: \"Valr\""},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"fecha_invalida\"",
       "un campo que LeerAgenda no trae: \"Fecha\""},
      {"[[falla]]\noperacion = \"LeerFechaHora\"\ntipo = \"fecha_invalida\"\nfila = 2", "no viene una tabla"},
      {"[[falla]]\noperacion = \"LeerDatos\"\ntipo = \"numero_como_texto\"\ncampo = \"Valor\"",
       "tiene un campo que ya es de texto: Valor"},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"texto_como_numero\"\ncampo = \"HorarioInteger\"",
       "tiene un campo que no es de texto: HorarioInteger"},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"ninguna\"\nsegundos = 3",
       "'falla' tiene una clave que \"ninguna\" no usa: segundos"},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"sin_filas\"\nrespuesta_perdida = true",
       "una clave que \"sin_filas\" no usa: respuesta_perdida"},
      {"[[falla]]\noperacion = \"LeerPaginaFlash\"\ntipo = \"vacio\"\nhasta_pagina = 3", "hasta_pagina sin pagina"},
      {"[[falla]]\noperacion = \"LeerPaginaFlash\"\ntipo = \"vacio\"\npagina = 4\nhasta_pagina = 3", "antes de pagina"},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"fila_repetida\"", "'falla' necesita fila"},
      {"[[falla]]\noperacion = \"LeerPagina\"\ntipo = \"texto\"", "'falla' necesita texto"},
      {"[[falla]]\noperacion = \"LeerColaTx\"\ntipo = \"marca_con_hora\"", "LeerColaTx no admite \"marca_con_hora\""},
      {"[[falla]]\noperacion = \"LeerDatos\"\ntipo = \"atraso\"", "LeerDatos no admite \"atraso\""},
      {"[[falla]]\noperacion = \"LeerAgenda\"\ntipo = \"ninguna\"\ndespues_de = 0",
       "'falla.despues_de' debe estar entre 1"},
      {"[equipo\n", "línea 1: no se entiende: [equipo"},
      {"\nvelocidad 9600\n", "línea 2: no se entiende: velocidad 9600"},
      {"[equipo]\nmuda = true\nmuda = false", "línea 3: repite una clave o una sección: muda = false"},
      {"[equipo]\n[equipo]", "línea 2: repite una clave o una sección: [equipo]"},
      {"# \xF1", "hay un carácter que no está en UTF-8"},
      // Far enough behind the mistake that the reader hasn't met it yet.
      {"muda\x01 =                                                                 \xF1",
       "línea 1: no se entiende: muda"},
  };
  for (const auto& caso : casos) {
    const std::string reparo = Reparo(caso.texto);
    EXPECT_NE(reparo.find(caso.reparo), std::string::npos) << caso.texto << "\n" << reparo;
    EXPECT_TRUE(EsUtf8(reparo)) << "it is shown";
  }
}

TEST(Escenario, SeLeeOtraVezCuandoCambia) {
  BancoSimulado banco;
  banco.Conectar();
  EXPECT_NE(banco.Driver().LeerFechaHora(), "");
  banco.Escenario("[equipo]\nvelocidad = 4800\nidentificador = 7");
  EXPECT_EQ(banco.Driver().LeerFechaHora(), "");
  banco.Driver().Conectar("4800,n,8,1", "1");
  banco.Driver().IdEquipo(7);
  EXPECT_TRUE(banco.Driver().LeerPagina("0", false).starts_with("3,7,3,7,0,"));
  banco.Escenario("");
  banco.Conectar();
  EXPECT_NE(banco.Driver().LeerFechaHora(), "") << "where the file says nothing the factory's values hold again";
}

TEST(Escenario, UnErrorSeDiceUnaVezYSigueElAnterior) {
  BancoSimulado banco;
  banco.Escenario("[equipo]\nmuda = true");
  banco.Conectar();
  EXPECT_EQ(banco.Driver().LeerFechaHora(), "");
  banco.Escenario("[equipo]\nmuda = si");
  EXPECT_EQ(banco.Driver().LeerFechaHora(), "");
  EXPECT_EQ(banco.Driver().LeerFechaHora(), "");
  const std::string log = banco.Log();
  const std::string aviso = "sigue el escenario anterior";
  EXPECT_NE(log.find("UTRSimulada.toml, línea 2: "), std::string::npos) << log;
  EXPECT_EQ(log.find(aviso), log.rfind(aviso));
  banco.Enmudecer(false);
  EXPECT_NE(banco.Driver().LeerFechaHora(), "");
}

// What a program that saves the file leaves there for a moment, or a trainer's mistake: none of it costs the station
// its port, its identifier, its memories or what was done to it, neither on the way nor at the start of the program.
TEST(Escenario, LoQueNoSeEntiendeNoCambiaNada) {
  const struct {
    const char* que;
    void (*estropear)(const std::filesystem::path&);
    const char* motivo;
  } casos[] = {
      {"empty", [](const std::filesystem::path& ruta) { prueba::EscribirTodo(ruta, ""); }, "no tiene nada escrito"},
      {"blank", [](const std::filesystem::path& ruta) { prueba::EscribirTodo(ruta, "\n \r\n"); }, "no tiene nada"},
      {"gone", [](const std::filesystem::path& ruta) { std::filesystem::remove(ruta); }, "no está"},
      {"broken", [](const std::filesystem::path& ruta) { prueba::EscribirTodo(ruta, "[equipo"); }, "línea 1"},
      {"no text", [](const std::filesystem::path& ruta) { prueba::EscribirTodo(ruta, "\xFF\xFE\x01"); }, "línea 1"},
      {"a folder",
       [](const std::filesystem::path& ruta) {
         std::filesystem::remove(ruta);
         std::filesystem::create_directory(ruta);
       },
       "no tiene nada"},
  };
  for (const auto& caso : casos) {
    for (const bool con_reinicio : {false, true}) {
      BancoSimulado banco;
      const auto leer = [&banco] {
        banco.Driver().Conectar("9600,n,8,1", "3");
        banco.Driver().IdEquipo(7);
        return banco.Driver().LeerPagina("0", false) + banco.Driver().LeerPagina("34", false) +
               std::to_string(banco.Driver().LeerDatos("", "", 0)->RecordCount()) +
               banco.Driver().LeerInstantaneos()->Filas().Texto(0, 0);
      };
      banco.Escenario("[enlace]\npuerto = 3\n[equipo]\nidentificador = 7\n[historia]\ndias = 2\n[valores]\n1 = 5");
      banco.Driver().Conectar("9600,n,8,1", "3");
      ASSERT_TRUE(banco.Driver().EscribirPagina("34", "7,8,9"));
      const std::string antes = leer();
      caso.estropear(banco.carpeta / "UTRSimulada.toml");
      if (con_reinicio) banco.Reiniciar();
      EXPECT_EQ(leer(), antes) << caso.que << con_reinicio;
      EXPECT_NE(banco.Log().find("UTRSimulada.toml, " + std::string(caso.motivo)), std::string::npos) << banco.Log();
      EXPECT_NE(banco.Log().find("sigue el escenario anterior"), std::string::npos) << caso.que << con_reinicio;
    }
  }
}

TEST(Escenario, UnaEstacionNuevaConElArchivoMalEsLaDeFabrica) {
  const prueba::Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "UTRSimulada.toml", "[equipo]\nmuda = si");
  RelojFalso reloj;
  ComunicadorSimulado driver(carpeta.Ruta(), reloj, {});
  driver.Conectar("9600,n,8,1", "1");
  EXPECT_NE(driver.LeerFechaHora(), "");
  const std::string log = LeerTodo(carpeta / "Comunicador.log");
  EXPECT_NE(log.find("rige el escenario de fábrica"), std::string::npos) << log;
}

TEST(Escenario, MedioArchivoNoBorraLasMemorias) {
  BancoSimulado banco;
  const std::string entero = "[equipo]\nidentificador = 7\n[historia]\ndias = 2\n";
  banco.Escenario(entero);
  banco.Driver().Conectar("9600,n,8,1", "1");
  const auto registros = banco.Driver().LeerDatos("", "", 0)->RecordCount();
  ASSERT_TRUE(banco.Driver().BorrarFlash());
  banco.Escenario("[equipo]\nidentificador = 8\n");
  banco.AlEsperar([&] { banco.Escenario("[equipo]\nidentificador = 8\n[historia]\ndias = 2\n"); });
  EXPECT_EQ(banco.Driver().LeerDatos("", "", 0)->RecordCount(), 0U);
  EXPECT_TRUE(banco.Driver().LeerPagina("0", false).starts_with("4,7,3,8,0,")) << "the whole file rules from the next";
  EXPECT_EQ(banco.Driver().LeerDatos("", "", 0)->RecordCount(), 0U);
  banco.Escenario("[historia]\ndias = 3\n");
  EXPECT_GT(banco.Driver().LeerDatos("", "", 0)->RecordCount(), registros);
}

TEST(Escenario, NoDeshaceLoHechoEnLaUnidad) {
  BancoSimulado banco;
  banco.Desfasar(90);
  banco.Conectar();
  ASSERT_TRUE(banco.Driver().GrabarFechaHora());
  const std::string en_hora = TextoFechaHora(banco.Ahora());
  EXPECT_EQ(banco.Driver().LeerFechaHora(), en_hora);
  banco.Reiniciar();
  banco.Conectar();
  EXPECT_EQ(banco.Driver().LeerFechaHora(), en_hora) << "the same scenario isn't applied again";
  banco.Desfasar(91);
  EXPECT_NE(banco.Driver().LeerFechaHora(), en_hora);
}

TEST(Escenario, ElRelojSaltaSinQuePaseElTiempo) {
  BancoSimulado banco;
  banco.Conectar();
  const auto registros = [&banco] { return banco.Driver().LeerDatos("", "", 0)->RecordCount(); };
  const auto antes = registros();
  for (const int minutos : {95, -95, 0}) {
    banco.Desfasar(minutos);
    EXPECT_EQ(registros(), antes) << minutos;
  }
}

TEST(Escenario, LoQuitadoVuelveALoDeFabrica) {
  BancoSimulado banco;
  banco.Conectar();
  const auto historia = banco.Driver().LeerDatos("", "", 3)->RecordCount();
  banco.Escenario("[canal.4]\nTStorage = \"60\"\nAMax = 22.5\n[paginas]\n34 = \"1,2,3\"\n[salidas]\nsalida1 = true");
  const auto texto = [&](const char* campo) {
    const TablaPtr t = banco.Driver().ConfiguracionAlmacenada(true);
    t->Filter("Canal='4'");
    return t->Texto(campo);
  };
  EXPECT_EQ(texto("TStorage"), "60");
  EXPECT_EQ(texto("AMax"), "22.5");
  EXPECT_EQ(banco.Driver().LeerPagina("34", false), "1,2,3");
  EXPECT_EQ(banco.Driver().LeerInstantaneos()->Filas().Texto(36, 0), "1");
  banco.Escenario("");
  EXPECT_EQ(texto("TStorage"), "10");
  EXPECT_EQ(banco.Driver().LeerPagina("34", false), "0,0,0");
  EXPECT_EQ(banco.Driver().LeerInstantaneos()->Filas().Texto(36, 0), "0");
  EXPECT_EQ(banco.Driver().LeerDatos("", "", 3)->RecordCount(), historia) << "the records stay";
  banco.Escenario("[historia]\ndias = 2");
  EXPECT_LT(banco.Driver().LeerDatos("", "", 3)->RecordCount(), 400U) << "another history is made anew";
}

TEST(Escenario, UnValorFijoDejaSusEventosUnaVez) {
  BancoSimulado banco;
  banco.Conectar();
  const auto codigos = [&banco] {
    std::map<std::string, int> cuentas;
    for (const TablaPtr t = banco.Driver().LeerEventos("15/03/2026 10:00:00", ""); !t->Eof(); t->MoveNext()) {
      ++cuentas[t->Texto("Codigo")];
    }
    return cuentas;
  };
  EXPECT_EQ(codigos().count("10"), 0U);
  banco.Escenario("[valores]\n1 = 7.2\n10 = 11.0\n16 = 1");
  for (int i = 0; i < 3; ++i) {
    banco.Pasar(1200);
    for (const char* codigo : {"10", "20", "21"}) EXPECT_EQ(codigos()[codigo], 1) << codigo;
  }
  banco.Reiniciar();
  banco.Conectar();
  banco.Pasar(1200);
  EXPECT_EQ(codigos()["21"], 1) << "a new run of the program opens no door";
  banco.Escenario("");
  banco.Pasar(1200);
  EXPECT_EQ(codigos()["22"], 1);
}

// However a value comes to be nailed down, its alarm is raised, and once.
TEST(Escenario, UnValorFijoDaSuAlarmaSeaComoSea) {
  constexpr const char* kFijo = "[valores]\n1 = 7.2";
  constexpr double kDiaEntero = 86400;
  const struct {
    const char* como;
    void (*fijar)(BancoSimulado&);
  } casos[] = {
      {"seen by a running program", [](BancoSimulado& b) { b.Escenario(kFijo); }},
      {"with the program closed",
       [](BancoSimulado& b) {
         b.Escenario(kFijo);
         b.Reiniciar();
       }},
      {"a restart just after",
       [](BancoSimulado& b) {
         b.Escenario(kFijo);
         b.Driver().EstadoPuerto();
         b.Reiniciar();
       }},
      {"killed just after",
       [](BancoSimulado& b) {
         b.Escenario(kFijo);
         b.Driver().EstadoPuerto();
         b.Matar();
       }},
      {"saved twice",
       [](BancoSimulado& b) {
         b.Escenario(kFijo);
         b.Driver().EstadoPuerto();
         b.Pasar(70);
         b.Escenario(std::string(kFijo) + "\n10 = 12.4");
         b.Driver().EstadoPuerto();
       }},
      {"together with the clock",
       [](BancoSimulado& b) { b.Escenario(std::string(kFijo) + "\n[equipo]\ndesfase_minutos = -95"); }},
      {"after two months without the program",
       [](BancoSimulado& b) {
         b.Pasar(75 * kDiaEntero);
         b.Escenario(kFijo);
         b.Reiniciar();
       }},
      {"while the unit stands still",
       [](BancoSimulado& b) {
         const Hidrologia mundo({});
         while (!mundo.Hueco(Segundos(b.Ahora()))) b.Pasar(3600);
         b.Driver().EstadoPuerto();
         b.Escenario(kFijo);
         b.Driver().EstadoPuerto();
         b.Pasar(6 * 3600);
       }},
  };
  for (const auto& caso : casos) {
    BancoSimulado banco;
    const auto alarmas = [&banco] {
      banco.Conectar();
      int cuenta = 0;
      for (const TablaPtr t = banco.Driver().LeerEventos("", ""); !t->Eof(); t->MoveNext()) {
        cuenta += t->Texto("Codigo") == "10" && t->Texto("Valor1") == "0" && t->Texto("Valor2") == "3178" ? 1 : 0;
      }
      return cuenta;
    };
    EXPECT_EQ(alarmas(), 0);
    caso.fijar(banco);
    for (int i = 0; i < 3; ++i) {
      banco.Pasar(700);
      EXPECT_EQ(alarmas(), 1) << caso.como;
    }
  }
}

TEST(Escenario, UnFinRepentinoNoCambiaLoRegistrado) {
  BancoSimulado banco;
  const auto registros = [&banco] {
    banco.Conectar();
    std::string todo;
    for (const TablaPtr t = banco.Driver().LeerDatos("", "15/03/2026 10:30:00", 0); !t->Eof(); t->MoveNext()) {
      todo += t->Texto("Hora") + " " + t->Texto("Valor") + "\n";
    }
    return todo;
  };
  registros();
  banco.Escenario("[valores]\n1 = 7.2");
  banco.Pasar(30 * 60);
  const std::string antes = registros();
  EXPECT_NE(antes.find("10:30:00 3178"), std::string::npos);
  banco.Escenario("[valores]\n1 = 2.5");
  banco.Matar();
  EXPECT_EQ(registros(), antes);
  // A change that was made while the program was closed doesn't reach back over the days in which it was.
  banco.Escenario("[valores]\n1 = 7.2");
  banco.Pasar(3 * 86400.0);
  banco.Reiniciar();
  banco.Conectar();
  int fijados = 0;
  for (const TablaPtr t = banco.Driver().LeerDatos("15/03/2026 11:00:00", "", 0); !t->Eof(); t->MoveNext()) {
    fijados += t->Texto("Valor") == "3178" ? 1 : 0;
  }
  EXPECT_EQ(fijados, 6) << "the last hour";
}

TEST(Escenario, LosPuertosSonLosDelEscenario) {
  BancoSimulado banco;
  banco.Escenario("[enlace]\npuertos = [7, 4]\ntomados = []\npuerto = 7");
  banco.Driver().Conectar("9600,n,8,1", "7");
  EXPECT_NE(banco.Driver().LeerFechaHora(), "");
  const auto puertos = banco.Simulado().Puertos();
  ASSERT_EQ(puertos.size(), 2U);
  EXPECT_EQ(puertos[0].first, 4);
  EXPECT_FALSE(puertos[0].second.empty());
}

TEST(Escenario, ElFactorAbreviaLasEsperas) {
  BancoSimulado banco;
  banco.Escenario("[tiempos]\nfactor = 0.5\nsin_respuesta = 8\n[equipo]\nmuda = true");
  banco.Conectar();
  banco.Driver().Pausa(20);
  EXPECT_EQ(banco.Driver().LeerFechaHora(), "");
  EXPECT_EQ(banco.reloj.esperas, (std::vector<double>{10, 4}));
}

TEST(Escenario, ElLogDiceCadaLlamada) {
  BancoSimulado banco;
  banco.Escenario("[bitacora]\ntablas_enteras = true");
  banco.Conectar();
  EXPECT_THROW(banco.Driver().Conectar("9600,n,8,1", "2"), Error);
  banco.Conectar();
  const TablaPtr t = banco.Driver().LeerAgenda();
  EXPECT_FALSE(banco.Driver().GrabarAgenda(*t)) << "a row without a minute isn't an entry";
  banco.Driver().LeerPaginaFlash(3, 17);
  banco.Driver().EscribirLog("línea propia");
  const std::string log = banco.Log();
  for (const char* linea : {"15/03/2026 10:00:00 Conectar(\"9600,n,8,1\", \"2\") = error 8005 [Comunicador] ",
                            "15/03/2026 10:00:00 IdEquipo(120) = hecho\n",
                            "15/03/2026 10:00:00 LeerAgenda() = tabla de 8 filas y 5 campos, 00001_LeerAgenda.xml\n",
                            "GrabarAgenda(tabla de 8 filas y 5 campos, 00002_GrabarAgenda.xml) = ",
                            "15/03/2026 10:00:00 LeerPaginaFlash(3, 17) = ", "\nlínea propia\n"}) {
    EXPECT_NE(log.find(linea), std::string::npos) << linea << "\n" << log;
  }
  Tabla guardada;
  guardada.Open(banco.carpeta.Ruta() / "Comunicador.tablas" / "00001_LeerAgenda.xml");
  EXPECT_EQ(guardada.RecordCount(), 8U);
}

}  // namespace
}  // namespace utr::simulada
