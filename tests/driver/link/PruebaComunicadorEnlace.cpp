#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "base/Error.h"
#include "driver/TablasRegistros.h"
#include "driver/link/BancoEnlace.h"
#include "driver/link/Operaciones.h"
#include "support/NumeroDeError.h"

// What the driver over a wire does beyond its contract: where the line ends in the middle of something, where the unit
// changes while it is read, and what its reads cost.
namespace utr::prueba {
namespace {

using protocolo::Bytes;
using protocolo::VistaBytes;

constexpr const char* kLento = "[linea]\nlatencia_ms = 50\n";  // so that every answer is waited for

std::vector<std::string> Filas(const TablaPtr& tabla) {
  std::vector<std::string> filas;
  for (const TablaPtr clon = tabla->Clone(); !clon->Eof(); clon->MoveNext()) {
    std::string fila;
    for (std::size_t c = 0; c < clon->FieldCount(); ++c) fila += clon->Texto(c) + "|";
    filas.push_back(std::move(fila));
  }
  return filas;
}

class Enlace : public testing::Test {
 protected:
  Comunicador& Driver() { return banco.Driver(); }
  simulada::Estacion& Unidad() { return banco.Viva().Unidad(); }
  std::uint64_t Pedidos() { return banco.Enlace().Cuenta().pedidos; }
  void PorTcp() {
    Driver().PorIP(true);
    Driver().DireccionIP(banco.direccion);
    Driver().PuertoIP(banco.puerto_ip);
    Driver().IdEquipo(banco.identificador);
  }
  // What a channel's records of some days are, straight from the memory.
  std::vector<std::string> Datos(int canal, const std::string& desde, const std::string& hasta) {
    paginas::FilasMuestras filas;
    Unidad().memoria.RecorrerPila(Unidad().canales.PilaDe(canal), [&](auto pagina, const auto& cabecera) {
      if (cabecera.canal == canal) filas.Agregar(pagina, cabecera, paginas::LeerRango(desde, hasta), {});
    });
    return Filas(filas.Terminar());
  }
  std::string Hace(int dias) { return TextoFecha(FechaDeDias(DiasDesde1970(banco.Ahora()) - dias)); }

  // A channel's ring gone round.
  void LlenarAnillos() {
    banco.Escenario("[historia]\ndias = 200\n");
    banco.Conectar();
  }

  BancoEnlace banco{false};
};

}  // namespace

TEST_F(Enlace, LaEstacionMuereEnMedioDeCadaOperacionYLaSiguienteSigue) {
  for (const bool por_tcp : {false, true}) {
    for (const Operacion& operacion : Operaciones()) {
      BancoEnlace otro{true, true};
      otro.Escenario(kLento);
      otro.por_ip = por_tcp;
      otro.Conectar();
      ASSERT_NE(otro.Driver().LeerFechaHora(), "");
      bool murio = false;
      otro.AlEsperar([&] {
        murio = true;
        otro.MatarEstacion();
      });
      bool fallo = false;
      const std::int32_t numero = NumeroDeError([&] { fallo = operacion.fallo(otro.Driver()); });
      EXPECT_TRUE(murio) << operacion.nombre;
      if (!por_tcp) {
        EXPECT_EQ(numero, error_enlace::kLineaPerdida) << operacion.nombre;
        EXPECT_FALSE(otro.Driver().EstadoPuerto());
        EXPECT_FALSE(otro.Driver().EstadoEnlace());
      } else {
        EXPECT_EQ(numero, 0) << operacion.nombre << ": a connection is opened again without a word";
        EXPECT_FALSE(fallo && EsLectura(operacion)) << operacion.nombre;
      }
      EXPECT_NE(otro.Driver().LeerFechaHora(), "") << operacion.nombre;
      EXPECT_EQ(otro.Driver().EstadoPuerto(), !por_tcp);
      EXPECT_TRUE(otro.Driver().EstadoEnlace());
      EXPECT_EQ(otro.puertos, por_tcp ? std::vector<bool>{} : std::vector<bool>({true, false, true}));
      EXPECT_THAT(otro.quien, testing::MatchesRegex("p([?]p)+")) << operacion.nombre;
    }
  }
}

// A name may lead to somebody else by the time when the port is opened again.
TEST_F(Enlace, UnPuertoPerdidoSeReabreSoloSiSigueSiendoElMismo) {
  BancoEnlace otro{true};
  otro.Conectar();
  ASSERT_NE(otro.Driver().LeerFechaHora(), "");
  otro.MatarEstacion();
  EXPECT_EQ(NumeroDeError([&] { otro.Driver().LeerFechaHora(); }), error_enlace::kLineaPerdida);
  const std::string numero = std::exchange(otro.puerto, "ninguno");
  EXPECT_EQ(NumeroDeError([&] { otro.Driver().LeerFechaHora(); }), error_enlace::kPuertoInexistente);
  otro.puerto = numero;
  EXPECT_NE(otro.Driver().LeerFechaHora(), "");
}

TEST_F(Enlace, CancelarTerminaLoQueCorreYNadaMas) {
  banco.Escenario(kLento);
  banco.Conectar();
  Driver().Cancelar(false);  // nothing runs
  for (const Operacion& operacion : Operaciones()) {
    ASSERT_NE(Driver().LeerFechaHora(), "") << operacion.nombre;
    std::int64_t cancelada = 0;
    banco.AlEsperar([&] {
      cancelada = banco.reloj.Milisegundos();
      Driver().Cancelar(false);
    });
    bool fallo = false;
    const std::int32_t numero = NumeroDeError([&] { fallo = operacion.fallo(Driver()); });
    ASSERT_NE(cancelada, 0) << operacion.nombre;
    if (EsLectura(operacion)) {
      EXPECT_EQ(numero, error_enlace::kCancelada) << operacion.nombre;
      EXPECT_LE(banco.reloj.Milisegundos() - cancelada, 100) << operacion.nombre;
    } else {
      EXPECT_TRUE(numero == error_enlace::kCancelada || (numero == 0 && !fallo)) << operacion.nombre << numero;
    }
    banco.Pasar(10);  // of a restart
    EXPECT_NE(Driver().LeerFechaHora(), "") << operacion.nombre;
  }
}

TEST_F(Enlace, UnaOrdenEnviadaEsperaSuResultado) {
  banco.Escenario(kLento);
  banco.Conectar();
  ASSERT_NE(Driver().LeerFechaHora(), "");
  banco.AlEsperar([&] { Driver().Cancelar(false); });
  EXPECT_TRUE(Driver().GrabarSalidaDigital(1, true));
  EXPECT_TRUE(Unidad().salidas[0]);
}

// What holds it up ahead of its first byte: a line that must be silent first, a connection that is opened again.
TEST_F(Enlace, UnaOrdenDeLaQueNadaSalioSeCancela) {
  const auto tras_negativa = [](BancoEnlace& b) { EXPECT_EQ(b.Driver().LeerDatosCartucho("", "", 0), nullptr); };
  const auto tras_caida = [](BancoEnlace& b) { b.MatarEstacion(); };
  const std::pair<bool, std::function<void(BancoEnlace&)>> demoras[] = {{false, tras_negativa}, {true, tras_caida}};
  for (const auto& [por_tcp, demorar] : demoras) {
    for (const Operacion& operacion : Operaciones()) {
      if (EsLectura(operacion)) continue;
      BancoEnlace otro{true, true};
      otro.Escenario("[cartucho]\npresente = false\n[linea]\nlatencia_ms = 50\n");
      otro.por_ip = por_tcp;
      otro.Conectar();
      ASSERT_NE(otro.Driver().LeerFechaHora(), "");
      demorar(otro);
      const std::string antes = LeerTodo(otro.carpeta / "Estacion.estado");
      std::int64_t cancelada = 0;
      otro.AlEsperar([&] {
        cancelada = otro.reloj.Milisegundos();
        otro.Driver().Cancelar(false);
      });
      EXPECT_EQ(NumeroDeError([&] { operacion.fallo(otro.Driver()); }), error_enlace::kCancelada) << operacion.nombre;
      EXPECT_LE(otro.reloj.Milisegundos() - cancelada, 100) << operacion.nombre;
      EXPECT_EQ(LeerTodo(otro.carpeta / "Estacion.estado"), antes) << operacion.nombre;
    }
  }
}

TEST_F(Enlace, UnaPausaSeCancela) {
  std::int64_t cancelada = 0;
  banco.AlEsperar([&] {
    cancelada = banco.reloj.Milisegundos();
    Driver().Cancelar(false);
  });
  EXPECT_EQ(NumeroDeError([&] { Driver().Pausa(20); }), error_enlace::kCancelada);
  EXPECT_LE(banco.reloj.Milisegundos() - cancelada, 100);
}

// Hanging up takes seconds; whoever doesn't wait for it has the port closed, which ends the call as well.
TEST_F(Enlace, ColgarTambienSeCancela) {
  const auto cancelada_en = [&](auto hacer) {
    std::int64_t cancelada = 0;
    banco.AlEsperar([&] {
      cancelada = banco.reloj.Milisegundos();
      Driver().Cancelar(false);
    });
    hacer();
    EXPECT_NE(cancelada, 0);
    return banco.reloj.Milisegundos() - cancelada;
  };
  const auto llamar = [&] {
    Driver().Conectar(banco.enlace, banco.puerto_modem);
    ASSERT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
    ASSERT_NE(Driver().LeerFechaHora(), "");
  };
  llamar();
  EXPECT_LE(cancelada_en([&] { Driver().Desconectar(); }), 100);
  EXPECT_FALSE(Driver().EstadoPuerto());
  llamar();
  std::int32_t numero = 0;
  EXPECT_LE(cancelada_en([&] { numero = NumeroDeError([&] { Driver().Conectar(banco.enlace, banco.puerto); }); }), 100);
  EXPECT_EQ(numero, error_enlace::kCancelada);
  EXPECT_FALSE(Driver().EstadoPuerto());
  llamar();
  bool llamada = true;
  EXPECT_LE(cancelada_en([&] { llamada = Driver().LlamarTelefono("4801", "ATZ"); }), 100);
  EXPECT_FALSE(llamada);
  llamar();
}

TEST_F(Enlace, OtraLlamadaMientrasUnaCorreSeRechaza) {
  banco.Escenario(kLento);
  banco.Conectar();
  for (const Operacion& otra : Operaciones()) {
    std::int32_t numero = 0;
    banco.AlEsperar([&] { numero = NumeroDeError([&] { otra.fallo(Driver()); }); });
    EXPECT_NE(Driver().LeerFechaHora(), "") << otra.nombre;
    EXPECT_EQ(numero, error_enlace::kOcupado) << otra.nombre;
  }
  EXPECT_FALSE(Unidad().salidas[0]);
}

TEST_F(Enlace, LaLlamadaQueSeCortaSeDiceYNoSeMarcaDeNuevo) {
  Driver().Conectar(banco.enlace, banco.puerto_modem);
  ASSERT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
  ASSERT_NE(Driver().LeerFechaHora(), "");
  banco.Escenario("[linea]\ncorta_despues = 1\n");
  EXPECT_EQ(NumeroDeError([&] { Driver().LeerDatos("", "", 0); }), error_enlace::kLineaPerdida);
  EXPECT_FALSE(Driver().EstadoEnlace());
  EXPECT_TRUE(Driver().EstadoPuerto());
  EXPECT_EQ(banco.fines_de_llamada, 1);
  banco.Escenario("");
  const std::uint64_t antes = Pedidos();
  EXPECT_EQ(Driver().LeerFechaHora(), "") << "nobody dials but the operator";
  EXPECT_EQ(Pedidos(), antes) << "behind the port there is a modem, which would take it for commands";
  EXPECT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
  EXPECT_NE(Driver().LeerFechaHora(), "");
}

// What is sent to a modem without a call would be commands to it, until a cable has taken its place.
TEST_F(Enlace, SinLlamadaNadaSaleHaciaElModem) {
  const std::function<void()> casos[] = {[&] { EXPECT_FALSE(Driver().LlamarTelefono("1", "ATZ")); },
                                         [&] {
                                           banco.AlEsperar([&] { Driver().Cancelar(false); });
                                           EXPECT_FALSE(Driver().LlamarTelefono("4800", "ATZ"));
                                         },
                                         [&] {  // while the call that stood is hung up
                                           ASSERT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
                                           banco.AlEsperar([&] { Driver().Cancelar(false); });
                                           EXPECT_FALSE(Driver().LlamarTelefono("4801", "ATZ"));
                                         },
                                         [&] {
                                           ASSERT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
                                           Driver().Desconectar();
                                           Driver().Conectar(banco.enlace, banco.puerto_modem);
                                         }};
  banco.Escenario("[modem]\ntelefonos = [\"4800\", \"4801\"]\n");
  for (const auto& hacer : casos) {
    Driver().Conectar(banco.enlace, banco.puerto_modem);
    hacer();
    const std::uint64_t antes = Pedidos();
    EXPECT_EQ(Driver().LeerFechaHora(), "");
    EXPECT_FALSE(Driver().GrabarSalidaDigital(1, true));
    EXPECT_EQ(Pedidos(), antes);
    EXPECT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
    EXPECT_NE(Driver().LeerFechaHora(), "");
  }
  banco.puerto = std::exchange(banco.puerto_modem, "ninguno");
  banco.Conectar();
  EXPECT_NE(Driver().LeerFechaHora(), "");
}

TEST_F(Enlace, CadaOperacionDiceSiLaUnidadContesto) {
  using Dicho = std::vector<bool>;
  PorTcp();
  const struct {
    const char* que;
    std::function<void()> hacer;
    Dicho dicho;
  } casos[] = {
      {"what asks nobody", [&] { Driver().IdEquipo(banco.identificador); }, {}},
      {"a read", [&] { Driver().LeerFechaHora(); }, {true}},
      {"an order", [&] { Driver().GrabarFechaHora(); }, {true}},
      {"a refusal", [&] { Driver().GrabarPilaCanal("7", "1$1"); }, {true}},
      {"many requests", [&] { Driver().ConfiguracionAlmacenada(true); }, {true}},
      {"silence",
       [&] {
         banco.Enmudecer(true);
         Driver().LeerFechaHora();
         Driver().GrabarSalidaDigital(1, true);
         banco.Enmudecer(false);
       },
       {false, false}},
      {"another unit",
       [&] {
         Driver().IdEquipo(banco.identificador + 1);
         Driver().LeerEstado();
         Driver().IdEquipo(banco.identificador);
       },
       {false}},
      {"an address where nobody is",
       [&] {
         Driver().PuertoIP("1503");
         Driver().LeerEstado();
         Driver().PuertoIP(banco.puerto_ip);
       },
       {false}},
      {"given up",
       [&] {
         banco.Escenario(kLento);
         banco.AlEsperar([&] { Driver().Cancelar(false); });
         EXPECT_EQ(NumeroDeError([&] { Driver().LeerFechaHora(); }), error_enlace::kCancelada);
         banco.Escenario("");
       },
       {}},
      {"a connection that is opened again",
       [&] {
         Driver().LeerEstado();
         banco.MatarEstacion();
         Driver().LeerEstado();
       },
       {true, true}},
      {"a restart leaves it away", [&] { EXPECT_TRUE(Driver().ReiniciarUTR("14")); }, {}},
  };
  for (const auto& caso : casos) {
    banco.contestadas.clear();
    caso.hacer();
    EXPECT_EQ(banco.contestadas, caso.dicho) << caso.que;
  }
}

TEST_F(Enlace, UnaConexionQueNoSaleSeVuelveAIntentar) {
  PorTcp();
  banco.aperturas_mudas = 2;
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_EQ(banco.aperturas, 3);
  Driver().DireccionIP(banco.direccion_muda);
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  EXPECT_EQ(banco.aperturas, 6);
  EXPECT_EQ(Driver().LeerPagina("35", true), "");
  EXPECT_EQ(banco.aperturas, 7) << "silence is the ordinary case there";
  banco.aperturas_mudas = 2;
  Driver().Conectar(banco.direccion + ",n,8,1", banco.puerto_ip);
  EXPECT_EQ(banco.aperturas, 10);
}

// Whoever opens a device again may find there what it still had to say.
TEST_F(Enlace, ElSilencioTrasUnaFaltaRigeAunqueSeConecteDeNuevo) {
  banco.Conectar();
  ASSERT_NE(Driver().LeerFechaHora(), "");
  banco.Escenario("[equipo]\nmuda = true\n");
  ASSERT_EQ(Driver().LeerPagina("35", true), "");
  const std::int64_t falto = banco.reloj.Milisegundos();
  banco.Escenario("");
  banco.Conectar();
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_GE(banco.reloj.Milisegundos() - falto, banco.plazos.silencio);
}

TEST_F(Enlace, LaUnidadQueNoEsLaLlamadaNoSeToca) {
  PorTcp();
  Driver().IdEquipo(120 + 247);  // the same address, another unit
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  EXPECT_FALSE(Driver().GrabarSalidaDigital(1, true));
  EXPECT_FALSE(Unidad().salidas[0]);
  Driver().IdEquipo(120);
  EXPECT_TRUE(Driver().GrabarSalidaDigital(1, true));
}

// Behind the same address there may be a gateway, and behind that another unit than the one that was on show.
TEST_F(Enlace, LoDecididoAnteUnaDePracticaNoVaAUnaReal) {
  int escritas = 0;
  bool real = false;
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    const bool escribe =
        pdu.front() == protocolo::funcion::kEscribirRegistros || pdu.front() == protocolo::funcion::kEscribirArchivos;
    escritas += escribe && real ? 1 : 0;
    const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
    if (!real || !partes || partes->front() != protocolo::PedidoDeArchivo{protocolo::archivo::kRegistros, 0, 3})
      return std::nullopt;
    auto respuesta = banco.ContestarDeVeras(pdu);
    respuesta->at(9) = 0;
    return respuesta;
  };
  banco.consiente = [](bool de_practica) { return de_practica; };
  for (const Operacion& operacion : Operaciones()) {
    if (EsLectura(operacion)) continue;
    real = false;
    PorTcp();
    ASSERT_NE(Driver().LeerFechaHora(), "");
    banco.quien.clear();
    real = true;
    Driver().IdEquipo(banco.identificador);
    EXPECT_EQ(NumeroDeError([&] { operacion.fallo(Driver()); }), error_enlace::kOtraUnidad) << operacion.nombre;
    EXPECT_EQ(banco.quien, "?r") << operacion.nombre;
    EXPECT_NE(Driver().LeerFechaHora(), "") << "it may be read";
  }
  EXPECT_EQ(escritas, 0);
  banco.consiente = nullptr;
  EXPECT_TRUE(Driver().GrabarSalidaDigital(1, true));
}

// Somebody moves the cable, or a gateway changes its mind, in the middle of something: pages of two units are no table,
// and an order whose answer was lost goes to no other one.
TEST_F(Enlace, UnaOperacionEsDeUnaSolaUnidad) {
  int corte = 0;  // requests until the unit is another one, whose answer to that one is lost
  int ordenes = 0;
  bool otra = false;
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    const bool orden = pdu.front() == protocolo::funcion::kEscribirRegistros;
    ordenes += orden ? 1 : 0;
    const bool corta = corte > 0 ? --corte == 0 : corte < 0 && orden && !otra;
    if (corta) {
      banco.ContestarDeVeras(pdu);
      otra = true;
      return protocolo::PduDeExcepcion(pdu.front(), protocolo::Excepcion::kUnidadMuda);
    }
    const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
    if (!otra || !partes || partes->front() != protocolo::PedidoDeArchivo{protocolo::archivo::kRegistros, 0, 3})
      return std::nullopt;
    auto respuesta = banco.ContestarDeVeras(pdu);
    respuesta->at(5) ^= 1;  // its identifier
    return respuesta;
  };
  PorTcp();
  Driver().IdEquipo(0);
  for (const int cuando : {2, 3, 5}) {
    otra = false;
    Driver().IdEquipo(0);
    corte = cuando + 1;  // behind the one that asks who it is
    EXPECT_EQ(NumeroDeError([&] { Driver().LeerDatos("", "", 0); }), error::kSinRespuesta) << cuando;
    EXPECT_TRUE(otra);
    EXPECT_NE(Driver().LeerFechaHora(), "") << "the next operation is of the unit that is there";
  }
  otra = false;
  Driver().IdEquipo(0);
  corte = -1;
  EXPECT_FALSE(Driver().GrabarSalidaDigital(1, true));
  EXPECT_TRUE(otra);
  EXPECT_EQ(ordenes, 1);
}

TEST_F(Enlace, UnaConexionCerradaEnElOcioSeReabreSinGastarIntentos) {
  PorTcp();
  banco.Escenario("[linea]\ncorta_despues = 2\n");
  for (int i = 0; i < 6; ++i) EXPECT_NE(Driver().LeerPagina("35", true), "") << i << ": it is tried once";
}

// The second copy is still coming in when the next request goes out, and has the same form as its answer.
TEST_F(Enlace, UnaRespuestaDobleNoEsLaDelPedidoSiguiente) {
  banco.Escenario("[linea]\nrespuesta_doble = 1\n[tiempos]\nlinea = 1\n");
  banco.Conectar();
  for (std::int16_t pagina = 0; pagina < 60; ++pagina) {
    EXPECT_EQ(Driver().LeerPaginaFlash(0, pagina), Unidad().memoria.TextoDePagina(0, pagina)) << pagina;
  }
}

// An exception is the same whatever it answers, and so is its second copy.
TEST_F(Enlace, UnaNegativaDobleNoEsLaDelPedidoSiguiente) {
  banco.Escenario("[linea]\nrespuesta_doble = 1\n[cartucho]\npresente = false\n[tiempos]\nlinea = 1\n");
  banco.Conectar();
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(Driver().LeerDatosCartucho("", "", 0), nullptr);
    EXPECT_NE(Driver().LeerFechaHora(), "") << i;
  }
}

TEST_F(Enlace, UnaUnidadOcupadaAlPreguntarleQuienEsSeVuelveAPreguntar) {
  int ocupada = 3;
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    if (ocupada == 0) return std::nullopt;
    --ocupada;
    return protocolo::PduDeExcepcion(pdu.front(), protocolo::Excepcion::kOcupada);
  };
  PorTcp();
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_EQ(ocupada, 0);
  ocupada = 1000;
  Driver().IdEquipo(banco.identificador);
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  EXPECT_EQ(NumeroDeError([&] { Driver().ConfiguracionAlmacenada(true); }), error::kSinRespuesta);
}

TEST_F(Enlace, UnaFlashEnteraConUnoPorCientoDePerdidasEsLaFlash) {
  banco.Escenario("[linea]\npedido_perdido = 0.004\nrespuesta_perdida = 0.003\nruido = 0.003\n");
  banco.Conectar();
  int distintas = 0;
  for (std::int16_t pista = 0; pista < 32; ++pista) {
    for (std::int16_t pagina = 0; pagina < 1024; ++pagina) {
      distintas += Driver().LeerPaginaFlash(pista, pagina) == Unidad().memoria.TextoDePagina(pista, pagina) ? 0 : 1;
    }
  }
  EXPECT_EQ(distintas, 0);
  EXPECT_GT(banco.Enlace().Cuenta().reintentos, 50U);
  EXPECT_EQ(banco.Enlace().Cuenta().paginas, 32U * 1024U);
}

TEST_F(Enlace, UnDiaDeUnCanalCuestaSeisPedidosMasQueSusPaginas) {
  LlenarAnillos();
  for (int dias = 0; dias < 120; dias += 7) {
    Driver().IdEquipo(banco.identificador);  // so that nothing is known, not even who is there
    const std::string dia = Hace(dias);
    std::size_t paginas = 0;
    Unidad().memoria.RecorrerPila(Unidad().canales.PilaDe(1), [&](auto, const auto& cabecera) {
      paginas += TextoFecha(FechaDeDias(DiasDesde1970(FechaHora{2000, 1, 1}) + cabecera.dia)) == dia ? 1 : 0;
    });
    const std::uint64_t antes = Pedidos();
    const auto leidas = Filas(Driver().LeerDatos(dia, dia, 0));
    EXPECT_EQ(leidas, Datos(1, dia, dia));
    EXPECT_GT(paginas, 5U) << dia;
    EXPECT_LE(Pedidos() - antes, (paginas + 2) / 3 + 6) << dia;
  }
}

// A damaged page says anything of its day; what others say is found all the same.
TEST_F(Enlace, LasPaginasDaniadasNoEscondenLasOtras) {
  LlenarAnillos();
  std::mt19937 azar(7);
  auto bytes = Unidad().memoria.Bytes();
  for (int vuelta = 0; vuelta < 12; ++vuelta) {
    for (int i = 0; i < 60; ++i) {
      const std::size_t pagina = std::uniform_int_distribution<std::size_t>(0, 3071)(azar);
      const bool dia = i % 2 == 0;
      bytes[pagina * 64 + (dia ? 4 + azar() % 2 : azar() % 64)] = static_cast<std::uint8_t>(azar());
    }
    const std::string desde = Hace(static_cast<int>(azar() % 120));
    for (const std::string& hasta : {desde, Hace(static_cast<int>(azar() % 120)), std::string()}) {
      EXPECT_EQ(Filas(Driver().LeerDatos(desde, hasta, 0)), Datos(1, desde, hasta)) << desde << " " << hasta;
    }
  }
}

// While a ring is read the unit goes on: pages are begun, and in a full ring the oldest ones are overwritten.
TEST_F(Enlace, LoQueCambiaMientrasSeLeeEsLoQueHayAlFinal) {
  LlenarAnillos();
  for (const double dias : {0.2, 3.0}) {
    banco.Escenario(std::string("[historia]\ndias = 200\n") + kLento);
    for (const std::string& desde : {std::string(), Hace(400), Hace(120), Hace(2)}) {
      banco.AlEsperar([&] { banco.Pasar(dias * 86400); });
      const auto leidas = Filas(Driver().LeerDatos(desde, "", 0));
      EXPECT_EQ(leidas, Datos(1, desde, "")) << desde << " " << dias;
    }
    banco.AlEsperar([&] { Unidad().BorrarFlash(Segundos(banco.Ahora())); });
    const auto leidas = Filas(Driver().LeerDatos("", "", 0));
    EXPECT_EQ(leidas, Datos(1, "", ""));
    banco.Pasar(86400 * 50.0);
  }
}

TEST_F(Enlace, LasPaginasAdelantadasNoEnvejecen) {
  banco.Conectar();
  const auto leer = [&](int pagina) { return Driver().LeerPaginaFlash(0, static_cast<std::int16_t>(pagina)); };
  const auto cambiar = [&](std::size_t pagina) { Unidad().memoria.Bytes()[pagina * 64 + 9] ^= 1; };
  const auto es = [&](int pagina) { return leer(pagina) == Unidad().memoria.TextoDePagina(0, pagina); };
  leer(0);
  const std::uint64_t antes = Pedidos();
  EXPECT_TRUE(es(1));
  EXPECT_EQ(Pedidos(), antes) << "it came with the first one";
  cambiar(2);
  Driver().LeerFechaHora();
  EXPECT_TRUE(es(2)) << "another operation lies between";
  cambiar(3);
  banco.Pasar(6);
  EXPECT_TRUE(es(3)) << "it is too old";
}

// A unit that gives one page a request at most, and has one that it can't give at all.
TEST_F(Enlace, TresPaginasRechazadasSePidenUnaPorUna) {
  constexpr std::uint16_t kMala = 2;
  int rechazos = 0;
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
    const bool de_flash = partes && partes->front().archivo == protocolo::archivo::kFlash;
    const bool rechaza =
        de_flash && (partes->front().registros > protocolo::kRegistrosPorPagina || partes->front().record == kMala);
    if (!rechaza) return std::nullopt;
    ++rechazos;
    return protocolo::PduDeExcepcion(pdu.front(), protocolo::Excepcion::kValor);
  };
  PorTcp();
  for (std::int16_t pagina = 0; pagina < 7; ++pagina) {
    const std::string datos = Driver().LeerPaginaFlash(0, pagina);
    EXPECT_EQ(datos, pagina == kMala ? "" : Unidad().memoria.TextoDePagina(0, pagina)) << pagina;
  }
  EXPECT_GE(rechazos, 3);
  // Records without those of a refused page would be a table with a hole that nobody sees.
  EXPECT_EQ(FallaDe([&] { Driver().LeerDatos("", "", 0); })->Numero(), error_enlace::kPaginaNegada);
}

TEST_F(Enlace, LaUnidadDeOtraVersionNoSeToca) {
  banco.en_lugar = [&](VistaBytes pdu) -> std::optional<Bytes> {
    const auto partes = protocolo::LeerPedidoDeArchivos(pdu);
    if (!partes) return std::nullopt;
    EXPECT_EQ(partes->front(), (protocolo::PedidoDeArchivo{protocolo::archivo::kRegistros, 0, 3}));
    const std::uint16_t eco = partes->back().record;
    const Bytes identidad{0, 120, 0, protocolo::kVersionDelMapa + 1, 0, 1};
    return protocolo::RespuestaDeArchivos(
        std::vector<Bytes>{identidad, {static_cast<std::uint8_t>(eco >> 8), static_cast<std::uint8_t>(eco)}});
  };
  PorTcp();
  for (const Operacion& operacion : Operaciones()) {
    EXPECT_EQ(NumeroDeError([&] { operacion.fallo(Driver()); }), error_enlace::kOtraVersion) << operacion.nombre;
  }
  EXPECT_FALSE(Unidad().salidas[0]);
  banco.en_lugar = nullptr;
  EXPECT_NE(Driver().LeerFechaHora(), "") << "another unit answers at the same place";
}

}  // namespace utr::prueba
