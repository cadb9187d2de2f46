#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>

#include "session/OperacionesEnlace.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

using testing::ElementsAre;

class Operaciones : public prueba::ModPrueba, public testing::Test {
 protected:
  static constexpr std::array<std::int32_t, 3> kVelocidades{1200, 9600, 19200};
  static constexpr const char* kAvisoComandos = "Debe especificar los comandos de inicialización del modem";
  static constexpr const char* kErrorTelefono = "Error al comunicarse por teléfono";

  EntradaEnlace ConTelefono(const char* comandos) {
    EntradaEnlace entrada;
    entrada.puerto = 2;
    entrada.velocidad = 1200;
    entrada.telefono = true;
    entrada.numero_telefono = "4112233";
    entrada.comandos = comandos;
    return entrada;
  }

  // The unit answers the probe only while the link was last opened at that speed.
  void ResponderA(const std::string& velocidad) {
    comunicador.Devuelve("LeerPagina", [this, velocidad](const std::string&) {
      return comunicador.De("Conectar").back().starts_with("Conectar(" + velocidad + ",") ? "1,0,0" : "";
    });
  }
};

TEST_F(Operaciones, LaVelocidadSeBuscaDesdeLaSegunda) {
  ResponderA("19200");
  EXPECT_EQ(BuscarVelocidad(mod, {.puerto = 3, .velocidades = kVelocidades}), 19200);
  EXPECT_THAT(comunicador.llamadas, ElementsAre("Conectar(9600,n,8,1,3)", "LeerPagina(35,si)",
                                                "Conectar(19200,n,8,1,3)", "LeerPagina(35,si)"));
  Propiedades guardadas(propiedades.Archivo());
  guardadas.CargarPropiedades();
  EXPECT_EQ(guardadas.LeerEntero(clave::kPuerto, 1), 3);
  EXPECT_EQ(guardadas.LeerEntero(clave::kVelocidad, 9600), 19200);
}

TEST_F(Operaciones, LaPrimeraQueRespondeTermina) {
  ResponderA("9600");
  EXPECT_EQ(BuscarVelocidad(mod, {.puerto = 1, .velocidades = kVelocidades}), 9600);
  EXPECT_EQ(comunicador.Cuantas("Conectar"), 1U);
}

TEST_F(Operaciones, UnEquipoA1200NoSeEncuentraYQuedaLaUltima) {
  ResponderA("1200");
  EXPECT_EQ(BuscarVelocidad(mod, {.puerto = 1, .velocidades = kVelocidades}), std::nullopt);
  EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, 9600), 19200);
}

TEST_F(Operaciones, UnPuertoQueFallaEsUnaVelocidadQueNoResponde) {
  comunicador.Falla("Conectar", Error(8005, "x", "y"), 1);
  comunicador.Devuelve("LeerPagina", "1");
  EXPECT_EQ(BuscarVelocidad(mod, {.puerto = 1, .velocidades = kVelocidades}), 19200);
  comunicador.Falla("LeerPagina", Error(9, "x", "y"));
  EXPECT_EQ(BuscarVelocidad(mod, {.puerto = 1, .velocidades = kVelocidades}), std::nullopt);
}

TEST_F(Operaciones, LaBusquedaCanceladaTerminaConSuIntentoYReponeLosAjustes) {
  EscribirPuerto(propiedades, "2", "4800");
  propiedades.GrabarArchivoPropiedades();
  const Propiedades::Bolsa antes = propiedades.Contenido();
  std::vector<std::int32_t> probadas;
  bool cancelada = false;
  comunicador.Devuelve("LeerPagina", "1,0,0");  // even a speed that answers counts no more
  comunicador.al_llamar = [&](const std::string&) { cancelada = true; };
  EXPECT_EQ(BuscarVelocidad(mod, {.puerto = 1,
                                  .velocidades = kVelocidades,
                                  .probando = [&](std::int32_t velocidad) { probadas.push_back(velocidad); },
                                  .cancelada = [&] { return cancelada; }}),
            std::nullopt);
  EXPECT_THAT(probadas, ElementsAre(9600));
  EXPECT_EQ(propiedades.Contenido(), antes);
  Propiedades guardadas(propiedades.Archivo());
  guardadas.CargarPropiedades();
  EXPECT_EQ(guardadas.Contenido(), antes);
}

TEST_F(Operaciones, TrasCadaIntentoCorrenLosEventos) {
  int vueltas = 0;
  mod.atender = [&] { ++vueltas; };
  BuscarVelocidad(mod, {.puerto = 1, .velocidades = kVelocidades});
  EXPECT_EQ(vueltas, 2);
}

TEST_F(Operaciones, LaLlamadaConSusComandos) {
  EXPECT_TRUE(LlamarPorTelefono(mod, ConTelefono("ATZ"), "Configuración"));
  EXPECT_TRUE(conexion.EnLlamada());
  EXPECT_THAT(comunicador.llamadas,
              ElementsAre("Conectar(1200,n,8,1,2)", "Cancelar(si)", "LlamarTelefono(4112233,ATZ)"));
}

TEST_F(Operaciones, SinComandosVanLosDelArchivo) {
  prueba::EscribirTodo(carpeta / "comandosAT.dat", "AT&F\rATE0\r\n");
  EXPECT_TRUE(LlamarPorTelefono(mod, ConTelefono(""), "Configuración"));
  EXPECT_EQ(comunicador.llamadas.back(), "LlamarTelefono(4112233,AT&F\rATE0\r\n)");
}

TEST_F(Operaciones, SinComandosNiArchivoSeAvisaYSeLlamaIgual) {
  for (const bool vacio : {false, true}) {
    if (vacio) prueba::EscribirTodo(carpeta / "comandosAT.dat", "");
    operador.Espera(Mensaje{kAvisoComandos, "Atención", Icono::kExclamacion, Botones::kAceptar});
    EXPECT_TRUE(LlamarPorTelefono(mod, ConTelefono(""), "Configuración"));
    EXPECT_EQ(comunicador.llamadas.back(), "LlamarTelefono(4112233,)");
  }
}

TEST_F(Operaciones, UnaLlamadaQueNoSaleSeDice) {
  comunicador.Devuelve("LlamarTelefono", false);
  conexion.Llamar("1", "");
  operador.Espera(Mensaje{kErrorTelefono, "Configuración", Icono::kCritico, Botones::kAceptar});
  EXPECT_FALSE(LlamarPorTelefono(mod, ConTelefono("ATZ"), "Configuración"));
  EXPECT_FALSE(conexion.EnLlamada());
  EXPECT_EQ(Errores(), "") << "a plain false is no error";
}

TEST_F(Operaciones, UnPuertoQueFallaEnLaLlamadaSeRegistraYSeDice) {
  comunicador.Falla("Conectar", Error(8005, "x", "en uso"));
  operador.Espera(kErrorTelefono);
  EXPECT_FALSE(LlamarPorTelefono(mod, ConTelefono("ATZ"), "Configuración"));
  EXPECT_NE(Errores().find("\"LlamarPorTelefono\""), std::string::npos);
  EXPECT_EQ(comunicador.Cuantas("LlamarTelefono"), 0U);
}

TEST_F(Operaciones, AbrirUnPuertoElegidoAMano) {
  EXPECT_EQ(AbrirPuerto(mod, "9600,n,8,1", "2"), "");
  EXPECT_EQ(comunicador.llamadas.back(), "Conectar(9600,n,8,1,2)");
  comunicador.Falla("Conectar", Error(8005, "x", "y"));
  EXPECT_EQ(AbrirPuerto(mod, "9600,n,8,1", "2"), "El puerto requerido se encuentra abierto");
  comunicador.Falla("Conectar", Error(8006, "x", "y"));
  EXPECT_EQ(AbrirPuerto(mod, "9600,n,8,1", "2"), "Error en el puerto de comunicación");
  comunicador.Falla("Conectar", Error(8005, "x", "Otro programa tiene el puerto /dev/ttyUSB0", EBUSY));
  EXPECT_EQ(AbrirPuerto(mod, "9600,n,8,1", "2"),
            "El puerto requerido se encuentra abierto. Otro programa tiene el puerto /dev/ttyUSB0");
  conexion.FijarPorIP(true);
  EXPECT_EQ(AbrirPuerto(mod, "10.0.0.1,n,8,1", "1000"), "") << "over IP the failure is dropped";
}

TEST_F(Operaciones, MensajesDelBotonDeConexion) {
  const Mensaje en_uso = MensajeDePuerto(Error(8005, "", ""), "T");
  EXPECT_EQ(en_uso.texto, "El puerto requerido se encuentra en uso");
  EXPECT_EQ(en_uso.icono, Icono::kInformacion);
  EXPECT_EQ(MensajeDePuerto(Error(8002, "", "No hay permiso para abrir el puerto /dev/ttyS0", EACCES), "T").texto,
            "Error en el puerto de comunicación. No hay permiso para abrir el puerto /dev/ttyS0");
  const Mensaje otro = MensajeDePuerto(Error(8002, "", ""), "T");
  EXPECT_EQ(otro.texto, "Error en el puerto de comunicación");
  EXPECT_EQ(otro.icono, Icono::kCritico);
}

TEST_F(Operaciones, ElPanelDiceElPuertoDelEnlaceYNoElDeLosAjustes) {
  comunicador.Devuelve("ObtenerPuertos", "19200,n,8,1");
  EXPECT_EQ(InfoPanel(mod).puerto, " COM 1 ");
  conexion.Conectar("19200,n,8,1", "3");
  EXPECT_EQ(InfoPanel(mod).puerto, " COM 3 ");
  comunicador.Falla("Conectar", Error(8005, "x", "y"));
  EscribirPuerto(propiedades, "4", "9600");
  EXPECT_TRUE(FallaDe([&] { conexion.ConectarSegunAjustes(); }));
  EXPECT_EQ(InfoPanel(mod).puerto, " COM 3 ") << "the driver still has that one open";
}

TEST_F(Operaciones, PanelesDelEnlace) {
  const auto textos = [&] {
    const TextosPanel paneles = InfoPanel(mod);
    return paneles.puerto + '|' + paneles.velocidad + (paneles.habilitados ? "|si" : "|no");
  };
  propiedades.Escribir(clave::kPuerto, Propiedad{std::int64_t{4}}, Propiedad{std::int64_t{1}});
  comunicador.Devuelve("ObtenerPuertos", "19200,n,8,1");
  EXPECT_EQ(textos(), " COM 4 | Vel: 19200 bps |si");
  comunicador.Devuelve("ObtenerPuertos", "");
  EXPECT_EQ(textos(), " COM 4 | Vel:  bps |si");
  comunicador.Devuelve("EstadoPuerto", false);
  EXPECT_EQ(textos(), " Desconectado |  |no");
  conexion.FijarPorIP(true);
  EXPECT_EQ(textos(), "Puerto: 4 | IP: 192.168.0.1 |si") << "the flag alone decides";
}

struct CasoHora {
  const char* equipo;
  bool pregunta;
};

TEST_F(Operaciones, LaPreguntaPorLaHoraEmpiezaALos30Minutos) {
  reloj.Poner({2026, 3, 15, 10, 0, 0});
  const CasoHora casos[] = {
      {"15/03/2026 10:00:00", false}, {"15/03/2026 09:30:01", false}, {"15/03/2026 09:30:00", true},
      {"15/03/2026 10:29:59", false}, {"15/03/2026 10:30:00", true},  {"31/12/2025 23:59:59", true},
      {"01/01/1999 00:00:00", true},  {"22/02/2026 15:53:00", true},
  };
  for (const CasoHora& caso : casos) {
    comunicador.Devuelve("LeerFechaHora", caso.equipo);
    operador.mensajes.clear();
    if (caso.pregunta) {
      operador.Espera(
          Mensaje{"El Equipo posee una fecha cuya diferencia es mayor a 30 minutos con respecto a la de la PC. \n"
                  "Puede que el mismo se encuentre fuera de hora\n¿Desea poner en hora el Equipo?",
                  "Equipo fuera de hora", Icono::kInformacion, Botones::kSiNo},
          Respuesta::kNo);
      operador.Espera(
          Mensaje{"Tenga en cuenta que si la hora del equipo es incorrecta\n"
                  "los datos registrados tendran fechas erroneas.",
                  "Puesta en hora", Icono::kInformacion, Botones::kAceptar});
    }
    CompararHoras(mod);
    EXPECT_EQ(operador.mensajes.size(), caso.pregunta ? 2U : 0U) << caso.equipo;
  }
  EXPECT_EQ(comunicador.Cuantas("GrabarFechaHora"), 0U);
}

TEST_F(Operaciones, PonerEnHora) {
  comunicador.Devuelve("LeerFechaHora", "15/03/2026 08:00:00");
  for (const bool puesta : {true, false}) {
    comunicador.Devuelve("GrabarFechaHora", puesta);
    operador.Espera(
        "El Equipo posee una fecha cuya diferencia es mayor a 30 minutos con respecto a la de la PC. \n"
        "Puede que el mismo se encuentre fuera de hora\n¿Desea poner en hora el Equipo?",
        Respuesta::kSi);
    operador.Espera(
        Mensaje{puesta ? "Puesta en hora satisfactoria" : "Error en Puesta en hora. Compruebe el conexionado",
                "Puesta en hora", Icono::kInformacion, Botones::kAceptar});
    CompararHoras(mod);
  }
  EXPECT_EQ(comunicador.Cuantas("GrabarFechaHora"), 2U);
}

TEST_F(Operaciones, CerrarLaPreguntaNoPoneEnHora) {
  comunicador.Devuelve("LeerFechaHora", "15/03/2026 08:00:00");
  operador.Espera(
      "El Equipo posee una fecha cuya diferencia es mayor a 30 minutos con respecto a la de la PC. \n"
      "Puede que el mismo se encuentre fuera de hora\n¿Desea poner en hora el Equipo?",
      Respuesta::kCerrado);
  operador.Espera(
      "Tenga en cuenta que si la hora del equipo es incorrecta\nlos datos registrados tendran fechas erroneas.");
  CompararHoras(mod);
  EXPECT_EQ(comunicador.Cuantas("GrabarFechaHora"), 0U);
}

TEST_F(Operaciones, MinutosEnterosEnDieciseisBits) {
  const FechaHora ahora{2026, 12, 1, 0, 0, 0};
  EXPECT_EQ(MinutosDeDiferencia({2026, 12, 1, 0, 29, 59}, ahora), 29);
  EXPECT_EQ(MinutosDeDiferencia({2025, 12, 31, 23, 59, 59}, ahora), 1440) << "an earlier year counts as one day";
  EXPECT_EQ(MinutosDeDiferencia(FechaDeSegundos(Segundos(ahora) - 32767 * 60), ahora), 32767);
  EXPECT_EQ(FallaDe([&] { MinutosDeDiferencia(FechaDeSegundos(Segundos(ahora) - 32768 * 60), ahora); })->Numero(), 6);
  EXPECT_EQ(FallaDe([&] { MinutosDeDiferencia({2027, 12, 1, 0, 0, 0}, ahora); })->Numero(), 6);
}

TEST_F(Operaciones, SinRespuestaOSinFechaHayError) {
  for (const char* texto : {"", "sin fecha", "32/01/2026 10:00:00"}) {
    comunicador.Devuelve("LeerFechaHora", texto);
    const auto falla = FallaDe([&] { CompararHoras(mod); });
    ASSERT_TRUE(falla) << texto;
    EXPECT_EQ(falla->Numero(), error::kTipos);
  }
}

}  // namespace
}  // namespace utr
