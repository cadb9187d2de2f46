#include "driver/Contrato.h"
#include "support/DispositivoLleno.h"

// The link: ports, speeds, sockets, the modem, and what a unit that doesn't answer does to every operation.
namespace utr::prueba {

namespace {

// The call says that the unit doesn't answer, in words that reach the operator as they are.
bool Muda(const std::function<void()>& llamada) {
  try {
    llamada();
  } catch (const Error& error) {
    return error.Numero() == error::kSinRespuesta && error.Descripcion() == "La UTR no responde";
  }
  return false;
}

}  // namespace

TEST_P(Contrato, SinPuertoNoHayAjustesNiEnlace) {
  EXPECT_EQ(Driver().ObtenerPuertos(), "");
  EXPECT_FALSE(Driver().EstadoPuerto());
  EXPECT_FALSE(Driver().EstadoEnlace());
  EXPECT_FALSE(Driver().ModoConexion(true));
}

TEST_P(Contrato, ConectarEntiendeLasFormasDelEnlace) {
  const struct {
    const char* enlace;
    const char* velocidad;
  } casos[] = {{"9600,n,8,1", "9600"}, {"9600n,8,1", "9600"}, {"1200,n,8,1", "1200"}};
  for (const auto& caso : casos) {
    Driver().Conectar(caso.enlace, banco->puerto);
    EXPECT_TRUE(Driver().EstadoPuerto()) << caso.enlace;
    EXPECT_TRUE(Driver().EstadoEnlace()) << caso.enlace;
    EXPECT_EQ(Driver().ModoConexion(true), banco->con_rts) << caso.enlace;
    EXPECT_EQ(Separar(Driver().ObtenerPuertos(), ',').front(), caso.velocidad) << caso.enlace;
  }
}

TEST_P(Contrato, ConectarFallaConSuNumero) {
  banco->Conectar();
  EXPECT_EQ(NumeroDeError([&] { Driver().Conectar(banco->enlace, banco->puerto_tomado); }), error::kPuertoEnUso);
  EXPECT_FALSE(Driver().EstadoPuerto()) << "a second Conectar replaces the first, even when it fails";
  const std::pair<std::string, std::string> otros[] = {{banco->enlace, banco->puerto_inexistente},
                                                       {"nada", banco->puerto},
                                                       {"", banco->puerto},
                                                       {banco->enlace, ""},
                                                       {banco->direccion_muda + ",n,8,1", banco->puerto_ip}};
  for (const auto& [enlace, puerto] : otros) {
    const std::int32_t numero = NumeroDeError([&, e = enlace, p = puerto] { Driver().Conectar(e, p); });
    EXPECT_NE(numero, 0) << enlace << " " << puerto;
    EXPECT_NE(numero, error::kPuertoEnUso) << enlace << " " << puerto;
  }
  banco->Conectar();
  banco->Conectar();  // the own open port is no hindrance
  EXPECT_NE(Driver().LeerFechaHora(), "");
}

TEST_P(Contrato, UnaVelocidadEquivocadaEsSilencio) {
  Driver().Conectar(banco->otro_enlace, banco->puerto);
  EXPECT_TRUE(Driver().EstadoPuerto());
  EXPECT_EQ(Driver().LeerPagina("35", true), "");
  Driver().Conectar(banco->enlace, banco->puerto);
  EXPECT_NE(Driver().LeerPagina("35", true), "");
}

TEST_P(Contrato, ElIdentificadorDebeSerElDeLaUnidad) {
  banco->Conectar();
  const struct {
    std::int32_t identificador;
    bool responde;
  } casos[] = {{banco->identificador + 1, false}, {0, true}, {65535, false}, {banco->identificador, true}};
  for (const auto& caso : casos) {
    Driver().IdEquipo(caso.identificador);
    EXPECT_EQ(!Driver().LeerFechaHora().empty(), caso.responde) << caso.identificador;
  }
}

TEST_P(Contrato, UnaUnidadSinIdentificadorContestaATodos) {
  banco->Conectar();
  auto cero = Pagina("0");
  cero[3] = cero[4] = 0;
  std::string texto;
  for (const int byte : cero) texto += (texto.empty() ? "" : ",") + std::to_string(byte);
  ASSERT_TRUE(Driver().EscribirPagina("0", texto));
  ASSERT_TRUE(Driver().ReiniciarUTR("14"));
  banco->Pasar(20);
  for (const std::int32_t identificador : {0, 1, 65535}) {
    Driver().IdEquipo(identificador);
    EXPECT_NE(Driver().LeerFechaHora(), "") << identificador;
  }
}

TEST_P(Contrato, PorIP) {
  Driver().PorIP(true);
  Driver().DireccionIP(banco->direccion);
  Driver().PuertoIP(banco->puerto_ip);
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_TRUE(Driver().EstadoEnlace());
  EXPECT_FALSE(Driver().EstadoPuerto()) << "the serial port stays closed";
  Driver().DireccionIP(banco->direccion_muda);
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  Driver().PorIP(false);
  EXPECT_EQ(Driver().LeerFechaHora(), "") << "no serial port is open";
  Driver().Conectar(banco->direccion + ",n,8,1", banco->puerto_ip);
  EXPECT_NE(Driver().LeerFechaHora(), "");
  Driver().PorIP(false);  // the later one wins
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  banco->Conectar();
  EXPECT_NE(Driver().LeerFechaHora(), "");
}

// Nobody answers yet: what is asked later goes the way that was asked for.
TEST_P(Contrato, TrasUnaConexionQueNoSaleSeSigueIntentando) {
  EXPECT_NE(NumeroDeError([&] { Driver().Conectar(banco->direccion + ",n,8,1", "1"); }), 0);
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  Driver().PuertoIP(banco->puerto_ip);
  EXPECT_NE(Driver().LeerFechaHora(), "");
}

TEST_P(Contrato, DesconectarCierraYGuardaLosAjustes) {
  Driver().Conectar(banco->enlace, banco->puerto);
  Driver().Desconectar();
  EXPECT_FALSE(Driver().EstadoPuerto());
  EXPECT_FALSE(Driver().EstadoEnlace());
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  EXPECT_EQ(Driver().ObtenerPuertos(), banco->enlace);
  Driver().Desconectar();
}

TEST_P(Contrato, LlamadaPorTelefono) {
  Driver().Cancelar(true);
  EXPECT_FALSE(Driver().LlamarTelefono("48001234", "ATZ")) << "no port is open";
  Driver().Conectar(banco->otro_enlace, banco->puerto_modem);
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  EXPECT_TRUE(Driver().LlamarTelefono("48001234", "ATZ"));
  EXPECT_NE(Driver().LeerFechaHora(), "");
  Driver().Desconectar();
  Driver().Conectar(banco->otro_enlace, banco->puerto_modem);
  EXPECT_EQ(Driver().LeerFechaHora(), "") << "the call ended with the link";
}

TEST_P(Contrato, UnaLlamadaSeAbandonaMientrasMarca) {
  Driver().Conectar(banco->enlace, banco->puerto_modem);
  Driver().Cancelar(true);
  bool estuvo = false;
  banco->AlEsperar([&] {
    estuvo = true;
    Driver().Cancelar(false);
  });
  EXPECT_FALSE(Driver().LlamarTelefono("48001234", "ATZ"));
  EXPECT_TRUE(estuvo);
  Driver().Cancelar(true);
  EXPECT_TRUE(Driver().LlamarTelefono("48001234", "ATZ"));
}

TEST_P(Contrato, PausaDejaPasarElTiempoYLosSucesos) {
  bool estuvo = false;
  banco->AlEsperar([&] { estuvo = true; });
  const std::int64_t antes = Segundos(banco->Ahora());
  Driver().Pausa(3);
  EXPECT_TRUE(estuvo);
  EXPECT_EQ(Segundos(banco->Ahora()) - antes, 3);
}

// Each operation that needs the unit, and how it says that nobody answered.
TEST_P(Contrato, SinRespuesta) {
  banco->Conectar();
  Tabla agenda = std::move(*Driver().LeerAgenda());
  Tabla canales = std::move(*Driver().ConfiguracionAlmacenada(true));
  const std::string antes = TextoFecha(banco->Ahora());
  const struct {
    const char* operacion;
    std::function<bool(Comunicador&)> falla;
  } casos[] = {
      {"BorrarFlash", [](Comunicador& c) { return !c.BorrarFlash(); }},
      {"BorrarCartucho", [](Comunicador& c) { return !c.BorrarCartucho(); }},
      {"ReiniciarAgenda", [](Comunicador& c) { return !c.ReiniciarAgenda("41"); }},
      {"ReiniciarUTR", [](Comunicador& c) { return !c.ReiniciarUTR("14"); }},
      {"LeerInstantaneos", [](Comunicador& c) { return Muda([&] { c.LeerInstantaneos(); }); }},
      {"LeerAgenda", [](Comunicador& c) { return c.LeerAgenda() == nullptr; }},
      {"LeerPaginaFlash", [](Comunicador& c) { return c.LeerPaginaFlash(0, 0).empty(); }},
      {"GrabarAgenda", [&](Comunicador& c) { return !c.GrabarAgenda(agenda); }},
      {"ConfiguracionAlmacenada", [](Comunicador& c) { return Muda([&] { c.ConfiguracionAlmacenada(true); }); }},
      {"GrabarParametrizacion", [&](Comunicador& c) { return !c.GrabarParametrizacion(canales); }},
      {"GrabarConfiguracion", [&](Comunicador& c) { return !c.GrabarConfiguracion(canales); }},
      {"LeerEventos", [&](Comunicador& c) { return Muda([&] { c.LeerEventos(antes, antes); }); }},
      {"LeerEventos pendientes", [](Comunicador& c) { return Muda([&] { c.LeerEventos("", ""); }); }},
      {"LeerDatos", [&](Comunicador& c) { return Muda([&] { c.LeerDatos(antes, antes, 0); }); }},
      {"LeerColaTx", [](Comunicador& c) { return Muda([&] { c.LeerColaTx("", ""); }); }},
      {"LeerDatosCartucho", [&](Comunicador& c) { return Muda([&] { c.LeerDatosCartucho(antes, antes, 0); }); }},
      {"LeerEventosCartucho", [&](Comunicador& c) { return Muda([&] { c.LeerEventosCartucho(antes, antes); }); }},
      {"LeerColaTxCartucho", [&](Comunicador& c) { return Muda([&] { c.LeerColaTxCartucho(antes, antes); }); }},
      {"LeerFechaHora", [](Comunicador& c) { return c.LeerFechaHora().empty(); }},
      {"LeerEstado", [](Comunicador& c) { return c.LeerEstado() < 0; }},
      {"GrabarFechaHora", [](Comunicador& c) { return !c.GrabarFechaHora(); }},
      {"GrabarEstado", [](Comunicador& c) { return !c.GrabarEstado("4/0"); }},
      {"LeerPagina", [](Comunicador& c) { return c.LeerPagina("0", false).empty(); }},
      {"EscribirPagina", [](Comunicador& c) { return !c.EscribirPagina("34", "0,0,0"); }},
      {"GrabarEvento", [](Comunicador& c) { return !c.GrabarEvento("1", "128/0/40/0"); }},
      {"GrabarPilaCanal", [](Comunicador& c) { return !c.GrabarPilaCanal("7", ""); }},
      {"GrabarCanalesModificar", [](Comunicador& c) { return !c.GrabarCanalesModificar("33", ""); }},
      {"GrabarSalidaDigital", [](Comunicador& c) { return !c.GrabarSalidaDigital(1, true); }},
  };
  banco->Enmudecer(true);
  for (const auto& caso : casos) {
    EXPECT_TRUE(caso.falla(Driver())) << caso.operacion;
    EXPECT_FALSE(Driver().EstadoEnlace()) << caso.operacion;
  }
  banco->Enmudecer(false);
  EXPECT_EQ(CodigosDeHoy(), CodigosDeHoy());
  EXPECT_EQ(Driver().EstadoPuerto(), !banco->por_ip);
  EXPECT_TRUE(Driver().EstadoEnlace());
  EXPECT_EQ(Pagina("34"), (std::vector<int>{0, 0, 0}));
}

TEST_P(Contrato, SinLaUnidadSiguenLasCuentasDeFechasYPares) {
  const std::pair<int, const char*> pares[] = {
      {0, "0/0"}, {1440, "160/5"}, {300, "44/1"}, {132, "132/0"}, {-1, "255/255"}};
  for (const auto& [valor, texto] : pares) EXPECT_EQ(Driver().ConvertirDe(static_cast<std::int16_t>(valor)), texto);
  const std::pair<const char*, const char*> visperas[] = {{"15/03/2005", "14/03/2005"},
                                                          {"01/01/2000", "31/12/1999"},
                                                          {"01/03/2024", "29/02/2024"},
                                                          {"01/01/2001", "31/12/2000"}};
  for (const auto& [dia, vispera] : visperas) {
    const auto numero = static_cast<std::int16_t>(Driver().DescribirCodigo(dia));
    EXPECT_EQ(Driver().ConvertirA(numero), dia);
    EXPECT_EQ(Driver().ConvertirA(static_cast<std::int16_t>(numero - 1)), vispera);
  }
  EXPECT_EQ(NumeroDeError([&] { Driver().DescribirCodigo("no es fecha"); }), error::kTipos);
}

// Its lines follow each other as they came. Where none can be written they are lost, and nothing else is.
TEST_P(Contrato, EscribirLogAgregaLineasYNuncaEstorba) {
  banco->Conectar();
  for (const char* linea : {"15/03/2026 10:00:00 Escalando Error el span=0", "", "ñandú"}) {
    Driver().EscribirLog(linea);
  }
  {
    const DispositivoLleno lleno(0);
    Driver().EscribirLog("sin lugar");
  }
  EXPECT_NE(Driver().LeerFechaHora(), "");
  Driver().EscribirLog("otra");
  if (const auto log = banco->TextoLog()) {
    EXPECT_NE(log->find("15/03/2026 10:00:00 Escalando Error el span=0\n\nñandú\n"), std::string::npos) << *log;
    EXPECT_NE(log->find("\notra\n"), std::string::npos) << *log;
  }
}

}  // namespace utr::prueba
