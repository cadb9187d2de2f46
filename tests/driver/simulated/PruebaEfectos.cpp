#include <gtest/gtest.h>

#include "base/Error.h"
#include "driver/BancoSimulado.h"
#include "driver/simulated/unit/Estacion.h"
#include "support/NumeroDeError.h"

// What orders change in the life of the unit, what the line costs, and when the log is written.
namespace utr::simulada {
namespace {

using prueba::BancoSimulado;

const std::int64_t kAhora = Segundos({2026, 3, 15, 10, 0, 0});
constexpr std::int64_t kDia = 86400;

struct Cuentas {
  int transmisiones = 0;
  int encolados = 0;   // at the obligatory time
  int pendientes = 0;  // events
  bool operator==(const Cuentas&) const = default;
};

Cuentas Contar(const Memoria& memoria, int minuto) {
  Cuentas cuentas;
  memoria.RecorrerSucesos([&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      const Suceso s = LeerSuceso(pagina, i);
      cuentas.transmisiones += s.codigo == suceso::kTransmision ? 1 : 0;
      cuentas.pendientes += (s.marcas & marca::kPendiente) != 0 ? 1 : 0;
    }
  });
  memoria.RecorrerCola([&](VistaPagina pagina, const Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.cuenta; ++i) {
      cuentas.encolados += LeerMuestra(pagina, cabecera, i).minuto == minuto ? 1 : 0;
    }
  });
  return cuentas;
}

// A unit with an empty memory whose central station answers; an obligatory time at 10:30, a window at 11:00.
Estacion ConCentral(unsigned banderas) {
  Estacion e;
  Vida vida;
  vida.transmite = true;
  vida.dias = 0;
  vida.pendiente_horas = 0;
  vida.hidrologia.crecidas = 0;
  e.Vivir(vida);
  e.RehacerHistoria(kAhora);
  e.banderas = banderas;
  e.agenda.LeerTexto("10:30 O-- OK;11:00 -V- OK");
  e.ReiniciarAgenda();
  e.AnotarSuceso(kAhora, 200);  // something to send
  return e;
}

TEST(Efectos, LosIndicadoresDecidenQueSeTransmite) {
  using namespace bandera;
  const struct {
    unsigned banderas;
    Cuentas a_las_1035, a_las_1105;
  } casos[] = {
      {kTxHora | kTxObligatoria, {1, 9, 0}, {1, 9, 0}},
      {kTxHora | kTxVentana, {0, 0, 1}, {0, 0, 0}},
      {kTxObligatoria | kTxVentana, {0, 0, 1}, {0, 0, 1}},
      {kTxHora, {0, 0, 1}, {0, 0, 1}},
      {0, {0, 0, 1}, {0, 0, 1}},
  };
  for (const auto& caso : casos) {
    Estacion e = ConCentral(caso.banderas);
    e.Avanzar(kAhora + 35 * 60);
    EXPECT_EQ(Contar(e.memoria, 630), caso.a_las_1035) << caso.banderas;
    e.Avanzar(kAhora + 65 * 60);
    EXPECT_EQ(Contar(e.memoria, 630), caso.a_las_1105) << caso.banderas;
    const bool abre = caso.banderas == (kTxHora | kTxVentana);
    EXPECT_EQ(e.Instantaneos(kAhora + 65 * 60)[35], abre ? 0 : 1) << "SD1 reads inverted";
  }
}

TEST(Efectos, UnSucesoSeTransmiteEnSeguidaSoloConSuIndicador) {
  for (const bool en_seguida : {false, true}) {
    Estacion e = ConCentral(en_seguida ? bandera::kTxSuceso : 0);
    Vida vida;
    vida.transmite = true;
    vida.hidrologia.crecidas = 0;
    vida.hidrologia.fijos = {{16, 1}};
    e.Avanzar(kAhora + 15 * 60);
    e.Vivir(vida);
    e.Avanzar(kAhora + 25 * 60);
    const Cuentas cuentas = Contar(e.memoria, 0);
    EXPECT_EQ(cuentas.transmisiones > 0, en_seguida);
    EXPECT_EQ(cuentas.pendientes == 0, en_seguida);
  }
}

TEST(Efectos, LaAgendaRigeDesdeSuReinicio) {
  const struct {
    const char* como;
    bool (*reiniciar)(BancoSimulado&);
  } casos[] = {{"41", [](BancoSimulado& b) { return b.Driver().ReiniciarAgenda("41"); }},
               {"14", [](BancoSimulado& b) { return b.Driver().ReiniciarUTR("14"); }}};
  for (const auto& caso : casos) {
    BancoSimulado banco;
    const auto abierta = [&banco] {
      banco.Conectar();
      return banco.Driver().LeerInstantaneos()->Filas().Texto(35, 0) == "0";
    };
    banco.Conectar();
    Tabla agenda = std::move(*banco.Driver().LeerAgenda());
    agenda.Filter("Descripcion='OK'");
    const TablaPtr una = CopiarRecordset(agenda, false);
    una->AddNew();
    una->Set("HorarioInteger", Valor{std::int64_t{598}});
    una->Set("TWind", "Si");
    una->UpdateBatch();
    ASSERT_TRUE(banco.Driver().GrabarAgenda(*una));
    EXPECT_FALSE(abierta()) << "only written";
    banco.Reiniciar();
    EXPECT_FALSE(abierta()) << "a new run of the program isn't a restart of the schedule";
    EXPECT_EQ(banco.Driver().LeerAgenda()->Texto("HorarioInteger"), "598") << "what is read is what was written";
    ASSERT_TRUE(caso.reiniciar(banco));
    banco.Pasar(60);
    EXPECT_TRUE(abierta()) << caso.como;
    std::string cero = banco.Driver().LeerPagina("0", false);
    ASSERT_TRUE(cero.starts_with("4,7,3,120,0,1,10,0"));
    ASSERT_TRUE(banco.Driver().EscribirPagina("0", "4,7,3,120,0,1,1,0"));
    EXPECT_TRUE(abierta()) << "nor is the length of the window in force before the restart";
    ASSERT_TRUE(caso.reiniciar(banco));
    banco.Pasar(60);
    EXPECT_FALSE(abierta()) << caso.como;
  }
}

TEST(Efectos, LosSucesosDeUnaOrdenLleganAlCartucho) {
  BancoSimulado banco;
  banco.Conectar();
  const std::string hoy = TextoFecha(banco.Ahora());
  const auto ultimo = [&] {
    const TablaPtr t = banco.Driver().LeerEventosCartucho(hoy, hoy);
    t->MoveLast();
    return t->Texto("Codigo");
  };
  const struct {
    const char* codigo;
    bool (*ordenar)(Comunicador&);
  } casos[] = {{"128", [](Comunicador& c) { return c.GrabarEvento("1", "128/0/40/0"); }},
               {"40", [](Comunicador& c) { return c.GrabarSalidaDigital(1, true); }},
               {"2", [](Comunicador& c) { return c.GrabarFechaHora(); }},
               {"3", [](Comunicador& c) { return c.BorrarFlash(); }},
               {"1", [](Comunicador& c) { return c.ReiniciarUTR("14"); }}};
  for (const auto& caso : casos) {
    ASSERT_TRUE(caso.ordenar(banco.Driver())) << caso.codigo;
    banco.Pasar(10);
    banco.Conectar();
    EXPECT_EQ(ultimo(), caso.codigo);
  }
  banco.QuitarCartucho(true);
  ASSERT_TRUE(banco.Driver().GrabarEvento("1", "128/0/40/0"));
  banco.QuitarCartucho(false);
  EXPECT_EQ(ultimo(), "1") << "one that isn't there takes nothing";
}

// Seconds that a call takes.
template <class Llamada>
double Dura(BancoSimulado& banco, Llamada llamada) {
  const std::int64_t antes = banco.reloj.Milisegundos();
  llamada(banco.Driver());
  return static_cast<double>(banco.reloj.Milisegundos() - antes) / 1000;
}

TEST(Efectos, LaLineaTardaSegunSuVelocidad) {
  constexpr const char* kDatos = "[tiempos]\nfactor = 1\n[equipo]\nvelocidad = ";
  const auto datos = [](Comunicador& c) { c.LeerDatos("", "", 0); };
  BancoSimulado banco;
  for (const int velocidad : {300, 1200, 9600, 19200}) {
    banco.Escenario(kDatos + std::to_string(velocidad));
    banco.Driver().Conectar(std::to_string(velocidad) + ",n,8,1", "1");
    const double filas = static_cast<double>(banco.Driver().LeerDatos("", "", 0)->RecordCount());
    const double segundos = (filas * 11 + 28) * 10 / velocidad;
    EXPECT_NEAR(Dura(banco, datos), segundos, segundos / 100) << velocidad << ": some rows were recorded meanwhile";
    EXPECT_NEAR(Dura(banco, [](Comunicador& c) { c.LeerPaginaFlash(0, 0); }), 920.0 / velocidad, 0.01) << velocidad;
    EXPECT_NEAR(Dura(banco, [](Comunicador& c) { c.ConfiguracionAlmacenada(true); }), 21160.0 / velocidad, 0.01);
    EXPECT_EQ(Dura(banco, [](Comunicador& c) { c.EstadoPuerto(); }), 0) << "nothing is asked of the unit";
  }
  // The slower end of a call rules, and over IP the unit's own port.
  const auto pagina = [](Comunicador& c) { c.LeerPagina("0", false); };
  banco.Driver().Conectar("1200,n,8,1", "3");
  ASSERT_TRUE(banco.Driver().LlamarTelefono("1", ""));
  EXPECT_NEAR(Dura(banco, pagina), 920.0 / 1200, 0.01);
  banco.Driver().Conectar("192.168.0.1,n,8,1", "1000");
  EXPECT_NEAR(Dura(banco, pagina), 920.0 / 19200, 0.01);
  banco.Driver().Conectar("300,n,8,1", "1");
  EXPECT_NEAR(Dura(banco, pagina), 1, 0.01) << "silence takes its own time and no other";
}

TEST(Efectos, ElFactorYElPesoDeLaLinea) {
  const struct {
    const char* tiempos;
    double segundos;
  } casos[] = {{"factor = 1", 920.0 / 300},
               {"factor = 0", 0},
               {"factor = 0.5", 460.0 / 300},
               {"linea = 0", 0},
               {"linea = 2", 1840.0 / 300}};
  for (const auto& caso : casos) {
    BancoSimulado banco;
    banco.Escenario("[equipo]\nvelocidad = 300\n[tiempos]\n" + std::string(caso.tiempos));
    banco.Driver().Conectar("300,n,8,1", "1");
    EXPECT_NEAR(Dura(banco, [](Comunicador& c) { c.LeerPagina("0", false); }), caso.segundos, 0.01) << caso.tiempos;
  }
}

TEST(Efectos, UnaLlamadaDemoradaSeAbandona) {
  for (const bool con_error : {false, true}) {
    BancoSimulado banco;
    std::string fallas = "[[falla]]\noperacion = \"LlamarTelefono\"\ntipo = \"demora\"\nsegundos = 600.0\n";
    if (con_error) fallas += "[[falla]]\noperacion = \"LlamarTelefono\"\ntipo = \"error\"\n";
    banco.Escenario(fallas);
    banco.Driver().Conectar("9600,n,8,1", "3");
    banco.Driver().Cancelar(true);
    banco.AlEsperar([&banco] { banco.Driver().Cancelar(false); });
    EXPECT_LT(Dura(banco, [](Comunicador& c) { EXPECT_FALSE(c.LlamarTelefono("1", "")); }), 1);
    banco.Driver().Cancelar(true);
    bool fallo = false;
    const double segundos = Dura(banco, [&fallo](Comunicador& c) {
      try {
        EXPECT_TRUE(c.LlamarTelefono("1", ""));
      } catch (const Error&) {
        fallo = true;
      }
    });
    EXPECT_GT(segundos, 599);
    EXPECT_EQ(fallo, con_error);
  }
}

TEST(Efectos, ElLogEstaEnElDiscoCadaSegundo) {
  BancoSimulado banco;
  banco.Conectar();
  const auto leidas = [&banco] {
    const std::string log = banco.Log();
    int cuenta = 0;
    for (std::size_t i = log.find("LeerPaginaFlash("); i != std::string::npos;
         i = log.find("LeerPaginaFlash(", i + 1)) {
      ++cuenta;
    }
    return cuenta;
  };
  for (std::int16_t pagina = 0; pagina < 5; ++pagina) banco.Driver().LeerPaginaFlash(0, pagina);
  banco.Pasar(1);
  banco.Driver().LeerPaginaFlash(0, 5);
  EXPECT_GE(leidas(), 5);
  banco.Simulado().VaciarBitacora();
  EXPECT_EQ(leidas(), 6);
}

// Two programs that save the same station would undo each other's work.
TEST(Efectos, LaEstacionEsDeUnProgramaPorVez) {
  BancoSimulado primero;
  primero.Escenario("[equipo]\nidentificador = 70\n");
  primero.Driver().Conectar("9600,n,8,1", "1");
  auto segundo = std::make_unique<ComunicadorSimulado>(primero.carpeta.Ruta(), primero.reloj, Atender{});
  EXPECT_EQ(segundo->Aviso(), "Otro programa tiene la estación simulada");
  EXPECT_FALSE(segundo->Puertos().empty());
  const auto conectar = [&] { segundo->Conectar("9600,n,8,1", "1"); };
  EXPECT_EQ(prueba::NumeroDeError(conectar), error::kPuertoEnUso);
  segundo->DireccionIP("192.168.0.1");
  segundo->PuertoIP("1000");
  segundo->PorIP(true);
  EXPECT_EQ(prueba::NumeroDeError([&] { segundo->LeerEstado(); }), error::kPuertoEnUso);
  EXPECT_EQ(prueba::NumeroDeError([&] { segundo->EscribirPagina("40", "1,2,3"); }), error::kPuertoEnUso);

  ASSERT_TRUE(primero.Driver().EscribirPagina("40", "7,7,7"));
  segundo.reset();
  primero.Reiniciar();
  primero.Driver().Conectar("9600,n,8,1", "1");
  EXPECT_TRUE(primero.Driver().LeerPagina("40", false).starts_with("7,7,7,"));
}

// Whoever waits for the station finds it as the other program has left it.
TEST(Efectos, LaEstacionQueSeDesocupaSeEncuentraComoQuedo) {
  prueba::Carpeta carpeta;
  RelojFalso reloj;
  auto primero = std::make_unique<ComunicadorSimulado>(carpeta.Ruta(), reloj, Atender{});
  ComunicadorSimulado segundo(carpeta.Ruta(), reloj, Atender{});
  primero->Conectar("9600,n,8,1", "1");
  ASSERT_TRUE(primero->EscribirPagina("40", "7,7,7"));
  primero.reset();
  segundo.Conectar("9600,n,8,1", "1");
  EXPECT_TRUE(segundo.LeerPagina("40", false).starts_with("7,7,7,"));
  EXPECT_TRUE(segundo.EscribirPagina("40", "8,8,8"));
}

}  // namespace
}  // namespace utr::simulada
