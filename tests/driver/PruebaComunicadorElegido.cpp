#include <gtest/gtest.h>

#include "driver/Bitacora.h"
#include "driver/ComunicadorAnotado.h"
#include "driver/ComunicadorElegido.h"
#include "driver/ErroresDeEnlace.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"

namespace utr {
namespace {

using prueba::Carpeta;
using prueba::LeerTodo;
using prueba::NumeroDeError;

struct Eleccion {
  ComunicadorFalso simulado;
  ComunicadorFalso real;
  std::string direccion = "192.168.0.1";  // of the simulated station
  ComunicadorElegido elegido{simulado,
                             real,
                             {.puerto_simulado = [](int puerto) { return puerto <= 3; },
                              .direccion_simulada = [this](std::string_view otra) { return otra == direccion; }}};

  // Who answers now.
  std::string Quien() {
    simulado.llamadas.clear();
    real.llamadas.clear();
    elegido.LeerFechaHora();
    return simulado.Cuantas("LeerFechaHora") == 1 && real.llamadas.empty() ? "simulado" : "real";
  }
};

}  // namespace

TEST(ComunicadorElegido, ElPuertoOLaDireccionDicenQuien) {
  Eleccion e;
  EXPECT_EQ(e.Quien(), "simulado") << "until something else is asked for";
  const std::tuple<const char*, const char*, const char*> casos[] = {
      {"9600,n,8,1", "4", "real"},        {"9600,n,8,1", "3", "simulado"},
      {"10.0.0.5,n,8,1", "1502", "real"}, {"192.168.0.1,n,8,1", "3", "simulado"},
      {"192.168.0.2,n,8,1", "3", "real"}, {"9600,n,8,1", "1", "simulado"},
  };
  for (const auto& [enlace, puerto, quien] : casos) {
    e.elegido.Conectar(enlace, puerto);
    EXPECT_EQ(e.Quien(), quien) << enlace << " " << puerto;
    EXPECT_EQ(e.elegido.Simulado(), e.Quien() == "simulado");
  }
}

TEST(ComunicadorElegido, PorIPLaDireccionEligeSinConectar) {
  Eleccion e;
  e.elegido.Conectar("9600,n,8,1", "4");
  e.elegido.PorIP(true);
  e.elegido.DireccionIP("192.168.0.1");
  e.elegido.PuertoIP("1000");
  EXPECT_EQ(e.Quien(), "simulado");
  e.direccion = "";  // the scenario doesn't list it any more
  e.elegido.DireccionIP("192.168.0.1");
  EXPECT_EQ(e.Quien(), "real");
  e.elegido.PorIP(false);
  EXPECT_EQ(e.Quien(), "real") << "the serial port was last one of the machine";
  e.elegido.Conectar("9600,n,8,1", "1");
  e.elegido.PorIP(true);
  EXPECT_EQ(e.Quien(), "real");
  e.elegido.PorIP(false);
  EXPECT_EQ(e.Quien(), "simulado");
}

TEST(ComunicadorElegido, ElQueSeDejaSeCierraYLosDosOyenLoComun) {
  Eleccion e;
  e.elegido.Conectar("9600,n,8,1", "4");
  EXPECT_EQ(e.simulado.Cuantas("Desconectar"), 1U);
  EXPECT_EQ(e.real.llamadas.back(), "Conectar(9600,n,8,1,4)");
  e.elegido.IdEquipo(120);
  e.elegido.DireccionIP("10.0.0.5");
  e.elegido.PuertoIP("1502");
  e.elegido.PorIP(true);
  e.elegido.Cancelar(false);
  for (const char* llamada :
       {"IdEquipo(120)", "DireccionIP(10.0.0.5)", "PuertoIP(1502)", "PorIP(si)", "Cancelar(no)"}) {
    for (const ComunicadorFalso* cual : {&e.simulado, &e.real}) {
      EXPECT_EQ(std::count(cual->llamadas.begin(), cual->llamadas.end(), llamada), 1) << llamada;
    }
  }
  EXPECT_EQ(e.real.Cuantas("Desconectar"), 0U) << "it stays in use";
  e.real.Falla("Conectar", Error(8005, "x", "y"));
  EXPECT_EQ(NumeroDeError([&] { e.elegido.Conectar("9600,n,8,1", "5"); }), 8005);
  EXPECT_EQ(e.Quien(), "real") << "a port that doesn't open is never another one";
}

// The one in use is at something: what it refuses changes neither who is in use nor what the other one knows.
TEST(ComunicadorElegido, LoQueSeRechazaPorOcupadoNoCambiaNada) {
  const std::pair<const char*, std::function<void(Comunicador&)>> casos[] = {
      {"Conectar", [](Comunicador& c) { c.Conectar("9600,n,8,1", "5"); }},
      {"Conectar", [](Comunicador& c) { c.Conectar("192.168.0.7,n,8,1", "1000"); }},
      {"Desconectar", [](Comunicador& c) { c.Conectar("9600,n,8,1", "1"); }},
      {"Desconectar", [](Comunicador& c) { c.Conectar("192.168.0.1,n,8,1", "1000"); }},
      {"Desconectar", [](Comunicador& c) { c.Desconectar(); }},
      {"PorIP", [](Comunicador& c) { c.PorIP(true); }},
      {"DireccionIP", [](Comunicador& c) { c.DireccionIP("10.0.0.5"); }},
      {"PuertoIP", [](Comunicador& c) { c.PuertoIP("1502"); }},
      {"IdEquipo", [](Comunicador& c) { c.IdEquipo(7); }},
  };
  for (const auto& [refusa, hacer] : casos) {
    Eleccion e;
    e.elegido.DireccionIP("192.168.0.1");
    e.elegido.Conectar("9600,n,8,1", "4");
    int avisos = 0;
    e.elegido.AlElegir([&avisos] { ++avisos; });
    e.simulado.llamadas.clear();
    e.real.Falla(refusa, Error(error_enlace::kOcupado, "x", "y"));
    EXPECT_EQ(NumeroDeError([&] { hacer(e.elegido); }), error_enlace::kOcupado) << refusa;
    EXPECT_EQ(avisos, 0) << refusa;
    EXPECT_TRUE(e.simulado.llamadas.empty()) << refusa;
    EXPECT_EQ(e.Quien(), "real") << refusa;
    e.real.NoFalla(refusa);
    e.elegido.PorIP(false);
    EXPECT_EQ(e.Quien(), "real") << "the port is still the one that was open";
    e.elegido.PorIP(true);
    EXPECT_EQ(e.Quien(), "simulado") << "and so is the address";
  }
}

// Whoever shows who is at the other end forgets it when somebody else may be there, and only then: a unit that was told
// the same once more doesn't say again who it is.
TEST(ComunicadorElegido, AvisaCuandoPuedeHaberOtraUnidad) {
  Eleccion e;
  int avisos = 0;
  e.elegido.AlElegir([&avisos] { ++avisos; });
  const auto nuevos = [&](auto hacer) {
    avisos = 0;
    hacer(e.elegido);
    return avisos;
  };
  const auto por_red = [](Comunicador& c) {
    c.PorIP(true);
    c.DireccionIP("10.0.0.5");
    c.PuertoIP("1502");
  };
  EXPECT_GE(nuevos(por_red), 1);
  EXPECT_EQ(nuevos(por_red), 0);
  EXPECT_EQ(nuevos([](Comunicador& c) { c.PuertoIP("1503"); }), 1);
  EXPECT_EQ(nuevos([](Comunicador& c) { c.DireccionIP("10.0.0.6"); }), 1);
  EXPECT_EQ(nuevos([](Comunicador& c) { c.PorIP(false); }), 1);
  EXPECT_EQ(nuevos([](Comunicador& c) { c.Conectar("9600,n,8,1", "4"); }), 1);
  EXPECT_EQ(nuevos([](Comunicador& c) { c.Conectar("9600,n,8,1", "4"); }), 1);
  EXPECT_EQ(nuevos([](Comunicador& c) { c.PorIP(false); }), 0);
}

TEST(ComunicadorAnotado, CadaLlamadaDejaSuLinea) {
  const Carpeta carpeta;
  RelojFalso reloj;
  ComunicadorFalso destino;
  destino.Devuelve("LeerPagina", "1,0,0");
  destino.Falla("LeerDatos", Error(8020, "Comunicador", "La UTR no responde"));
  {
    Bitacora bitacora(carpeta.Ruta());
    ComunicadorAnotado anotado(destino, bitacora, reloj);
    anotado.Conectar("9600,n,8,1", "4");
    anotado.LeerPagina("35", true);
    EXPECT_EQ(NumeroDeError([&] { anotado.LeerDatos("", "15/03/2026", 3); }), 8020);
    anotado.LeerPaginaFlash(1, 2);
    anotado.GrabarSalidaDigital(1, false);
  }
  EXPECT_EQ(LeerTodo(carpeta / "Comunicador.log"),
            "15/03/2026 10:00:00 Conectar(\"9600,n,8,1\", \"4\") = hecho\n"
            "15/03/2026 10:00:00 LeerPagina(\"35\", si) = \"1,0,0\"\n"
            "15/03/2026 10:00:00 LeerDatos(\"\", \"15/03/2026\", 3) = error 8020 [Comunicador] La UTR no responde\n"
            "15/03/2026 10:00:00 LeerPaginaFlash(1, 2) = 0 caracteres\n"
            "15/03/2026 10:00:00 GrabarSalidaDigital(1, no) = si\n");
}

}  // namespace utr
