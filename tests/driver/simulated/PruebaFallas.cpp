#include <gtest/gtest.h>

#include "base/Error.h"
#include "base/Numeros.h"
#include "driver/BancoSimulado.h"
#include "driver/Pagina.h"
#include "driver/Textos.h"
#include "driver/simulated/scenario/Fallas.h"
#include "support/NumeroDeError.h"

namespace utr::simulada {
namespace {

using prueba::BancoSimulado;
using prueba::NumeroDeError;

std::string TextoFalla(const std::string& operacion, const std::string& tipo, const std::string& resto = {}) {
  return "[[falla]]\noperacion = \"" + operacion + "\"\ntipo = \"" + tipo + "\"\n" + resto + "\n";
}

class FallaDeEscenario : public testing::Test {
 protected:
  void Fallar(const std::string& operacion, const std::string& tipo, const std::string& resto = {}) {
    banco.Escenario(TextoFalla(operacion, tipo, resto));
  }
  Comunicador& Driver() { return banco.Driver(); }
  void SetUp() override { banco.Conectar(); }
  BancoSimulado banco;
};

TEST_F(FallaDeEscenario, CadaClaseDeRespuesta) {
  Fallar("GrabarFechaHora", "falso");
  banco.Pasar(7);
  EXPECT_FALSE(Driver().GrabarFechaHora());
  Fallar("LeerEstado", "falso");
  EXPECT_LT(Driver().LeerEstado(), 0);
  Fallar("LeerFechaHora", "vacio");
  EXPECT_EQ(Driver().LeerFechaHora(), "");
  Fallar("LeerEventos", "ninguna");
  EXPECT_EQ(Driver().LeerEventos("", ""), nullptr);
  Fallar("LeerDatos", "sin_filas");
  const TablaPtr vacia = Driver().LeerDatos("", "", 0);
  EXPECT_EQ(vacia->RecordCount(), 0U);
  EXPECT_EQ(vacia->FieldCount(), 8U);
  Fallar("ConfiguracionAlmacenada", "error", "numero = 31036\norigen = \"Lectura\"\ntexto = \"se perdió\"");
  try {
    Driver().ConfiguracionAlmacenada(true);
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Numero(), 31036);
    EXPECT_EQ(error.Origen(), "Lectura");
    EXPECT_EQ(error.Descripcion(), "se perdió");
  }
}

TEST_F(FallaDeEscenario, UnaOrdenQueFallaNoSeCumple) {
  Fallar("EscribirPagina", "falso");
  EXPECT_FALSE(Driver().EscribirPagina("34", "5,5,5"));
  EXPECT_EQ(Driver().LeerPagina("34", false), "0,0,0");
}

TEST_F(FallaDeEscenario, CuantasVeces) {
  const struct {
    const char* cuando;
    const char* respuestas;  // of five calls: "-" failed, "+" answered
  } casos[] = {{"cuando = \"siempre\"", "-----"},
               {"", "-----"},
               {"cuando = \"la_primera_vez\"", "-++++"},
               {"cuando = 3", "---++"},
               {"despues_de = 2", "++---"},
               {"despues_de = 1\ncuando = 2", "+--++"}};
  for (const auto& caso : casos) {
    Fallar("LeerPaginaFlash", "vacio", caso.cuando);
    std::string respuestas;
    for (int i = 0; i < 5; ++i) {
      Driver().EstadoPuerto();  // pages of a run look at the file now and then; any other call at once
      respuestas += Driver().LeerPaginaFlash(0, 0).empty() ? '-' : '+';
    }
    EXPECT_EQ(respuestas, caso.respuestas) << caso.cuando;
  }
}

TEST_F(FallaDeEscenario, SoloDondeSeCumpleLaCondicion) {
  banco.Escenario(TextoFalla("LeerPaginaFlash", "vacio", "pista = 3\npagina = 17") +
                  TextoFalla("LeerPagina", "vacio", "pagina = 35\nvelocidad = 9600") +
                  TextoFalla("EscribirPagina", "falso", "pagina = 35") +
                  TextoFalla("LeerDatos", "ninguna", "canal = 4") +
                  TextoFalla("Conectar", "error", "puerto = 3\nnumero = 8005"));
  Driver().EstadoPuerto();
  EXPECT_EQ(Driver().LeerPaginaFlash(3, 17), "");
  EXPECT_NE(Driver().LeerPaginaFlash(3, 18), "");
  EXPECT_NE(Driver().LeerPaginaFlash(4, 17), "");
  EXPECT_EQ(Driver().LeerPagina("35", true), "");
  EXPECT_NE(Driver().LeerPagina("34", true), "");
  EXPECT_TRUE(Driver().EscribirPagina("34", "0,0,0"));
  EXPECT_FALSE(Driver().EscribirPagina("35", "1,0,0"));
  EXPECT_EQ(Driver().LeerDatos("", "", 3), nullptr) << "channels count from 1 in a scenario";
  EXPECT_NE(Driver().LeerDatos("", "", 4), nullptr);
  EXPECT_EQ(NumeroDeError([&] { Driver().Conectar("9600,n,8,1", "3"); }), 8005);
  EXPECT_EQ(NumeroDeError([&] { Driver().Conectar("9600,n,8,1", "1"); }), 0);
}

TEST_F(FallaDeEscenario, LaDemoraNoImpideLaRespuesta) {
  Fallar("LeerFechaHora", "demora", "segundos = 2.5\ncuando = \"la_primera_vez\"");
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_NE(Driver().LeerFechaHora(), "");
  EXPECT_EQ(banco.reloj.esperas, std::vector<double>{2.5});
}

TEST_F(FallaDeEscenario, LasPrimerasBuenasSonLasQueCumplenLaCondicion) {
  Fallar("LeerPagina", "vacio", "pagina = 35\ndespues_de = 1");
  EXPECT_NE(Driver().LeerPagina("34", true), "");
  EXPECT_NE(Driver().LeerPagina("35", true), "");
  EXPECT_NE(Driver().LeerPagina("34", true), "");
  EXPECT_EQ(Driver().LeerPagina("35", true), "");
}

TEST_F(FallaDeEscenario, LaDemoraQueBloqueaNoDejaCorrerSucesos) {
  for (const bool bloquea : {false, true}) {
    int sucesos = 0;
    banco.AlEsperar([&] { ++sucesos; });
    banco.Escenario("[equipo]\nmuda = true\n" +
                    TextoFalla("LeerFechaHora", "demora", bloquea ? "segundos = 6\nbloquea = true" : "segundos = 6"));
    banco.reloj.esperas.clear();
    EXPECT_EQ(Driver().LeerFechaHora(), "");
    EXPECT_EQ(banco.reloj.esperas, (std::vector<double>{6, 1})) << "the delay, then the silence";
    EXPECT_EQ(sucesos, bloquea ? 0 : 1) << "not even in the silence that follows";
    Driver().Pausa(1);
    EXPECT_EQ(sucesos, 1) << "the next call lets them run again";
  }
}

TEST_F(FallaDeEscenario, UnaRespuestaPerdidaDejaLoHecho) {
  Fallar("EscribirPagina", "falso", "respuesta_perdida = true");
  EXPECT_FALSE(Driver().EscribirPagina("34", "5,5,5"));
  EXPECT_EQ(Driver().LeerPagina("34", false), "5,5,5");
  Fallar("EscribirPagina", "error", "respuesta_perdida = true\nnumero = 8020");
  EXPECT_EQ(NumeroDeError([&] { Driver().EscribirPagina("34", "6,6,6"); }), 8020);
  banco.Reiniciar();
  banco.Conectar();
  EXPECT_EQ(Driver().LeerPagina("34", false), "6,6,6") << "the unit keeps it, though nobody heard";
  banco.Enmudecer(true);
  Fallar("EscribirPagina", "falso", "respuesta_perdida = true");
  EXPECT_FALSE(Driver().EscribirPagina("34", "7,7,7"));
}

TEST_F(FallaDeEscenario, UnHuecoEntrePaginasConDatos) {
  Fallar("LeerPaginaFlash", "pagina_borrada", "pista = 0\npagina = 2\nhasta_pagina = 4");
  std::string paginas;
  for (std::int16_t pagina = 0; pagina < 7; ++pagina)
    paginas += Driver().LeerPaginaFlash(0, pagina).starts_with("255,255,255,255") ? '-' : '+';
  EXPECT_EQ(paginas, "++---++");
  EXPECT_EQ(Driver().LeerPaginaFlash(0, 3), Driver().LeerPaginaFlash(8, 1023)) << "as any other blank page";
}

TEST_F(FallaDeEscenario, OtroTextoEnLugarDeLaPagina) {
  for (const char* texto : {"6", "4,7,3", "no es una página"}) {
    Fallar("LeerPagina", "texto", "pagina = 0\ntexto = \"" + std::string(texto) + "\"");
    EXPECT_EQ(Driver().LeerPagina("0", false), texto);
    EXPECT_EQ(Driver().LeerPagina("34", false), "0,0,0");
  }
  banco.Escenario("[equipo]\nmuda = true\n" + TextoFalla("LeerPagina", "texto", "texto = \"6\""));
  EXPECT_EQ(Driver().LeerPagina("0", false), "") << "a silent unit gives no text at all";
}

TEST_F(FallaDeEscenario, UnaSolaFilaMalaEntreBuenas) {
  const TablaPtr buena = Driver().LeerDatos("", "", 0);
  const struct {
    const char* tipo;
    const char* resto;
    const char* campo;
    const char* esperado;
  } casos[] = {{"no_numero", "campo = \"Valor\"", "Valor", "abc"},
               {"fecha_invalida", "valor = \"ayer\"", "Fecha", "ayer"},
               {"marca_con_hora", "", "Hora", "00:00:00"}};
  for (const auto& caso : casos) {
    Fallar("LeerDatos", caso.tipo, std::string(caso.resto) + "\nfila = 5");
    const TablaPtr mala = Driver().LeerDatos("", "", 0);
    ASSERT_EQ(mala->RecordCount(), buena->RecordCount());
    for (std::size_t fila = 0; fila < mala->RecordCount(); ++fila) {
      for (std::size_t campo = 0; campo < mala->FieldCount(); ++campo) {
        const bool suya = fila == 4 && mala->Field(campo).nombre == caso.campo;
        ASSERT_EQ(mala->Filas().Texto(fila, campo), suya ? caso.esperado : buena->Filas().Texto(fila, campo))
            << caso.tipo << fila;
      }
    }
  }
}

TEST_F(FallaDeEscenario, UnaMarcaConHora) {
  Fallar("LeerDatos", "marca_con_hora");
  const TablaPtr t = Driver().LeerDatos("", "", 0);
  int marcas = 0;
  for (; !t->Eof(); t->MoveNext()) {
    if (t->Texto("Fecha").empty()) continue;
    EXPECT_EQ(t->Texto("Hora"), "00:00:00");
    ++marcas;
  }
  EXPECT_GT(marcas, 30);
}

TEST_F(FallaDeEscenario, UnCanalRepetidoYCanalesComoNumeros) {
  banco.Escenario(TextoFalla("ConfiguracionAlmacenada", "fila_repetida", "fila = 3") +
                  TextoFalla("ConfiguracionAlmacenada", "no_numero", "campo = \"AMax\"\nfila = 4\nvalor = \"77\""));
  const TablaPtr repetida = Driver().ConfiguracionAlmacenada(true);
  EXPECT_EQ(repetida->RecordCount(), 24U);
  repetida->Filter("Canal='3'");
  EXPECT_EQ(repetida->RecordCount(), 2U);
  EXPECT_EQ(repetida->Texto("AMax"), "360");
  repetida->MoveNext();
  EXPECT_EQ(repetida->Texto("AMax"), "77");

  banco.Escenario(TextoFalla("ConfiguracionAlmacenada", "texto_como_numero", "campo = \"Canal\"") +
                  TextoFalla("ConfiguracionAlmacenada", "texto_como_numero", "campo = \"MaxValid\""));
  const TablaPtr numerica = Driver().ConfiguracionAlmacenada(true);
  EXPECT_EQ(numerica->Field("Canal").tipo, TipoCampo::kEntero);
  EXPECT_EQ(numerica->Field("MaxValid").tipo, TipoCampo::kDoble);
  EXPECT_EQ(numerica->Texto("Canal"), "1");
  EXPECT_EQ(numerica->Texto("MaxValid"), "12.15");
}

// Values of a round ago, and then the present ones: a caller that reads but once shows old weather.
TEST_F(FallaDeEscenario, LosInstantaneosDeHaceUnRato) {
  const auto trama = [&] {
    std::vector<std::string> valores;
    for (const TablaPtr t = Driver().LeerInstantaneos(); !t->Eof(); t->MoveNext()) valores.push_back(t->Texto("Valor"));
    return valores;
  };
  const auto antes = trama();
  banco.Pasar(6 * 3600);
  const auto ahora = trama();
  ASSERT_NE(antes, ahora);
  Fallar("LeerInstantaneos", "atraso", "cuando = \"la_primera_vez\"");
  EXPECT_EQ(trama(), antes);
  EXPECT_EQ(trama(), ahora);
}

TEST_F(FallaDeEscenario, CampoAusente) {
  Fallar("LeerDatos", "campo_ausente", "campo = \"hora\"");
  const TablaPtr t = Driver().LeerDatos("", "", 0);
  EXPECT_EQ(NumeroDeError([&] { t->Texto("Hora"); }), error::kCampo);
  EXPECT_EQ(t->FieldCount(), 7U);
  EXPECT_GT(t->RecordCount(), 0U);
}

TEST_F(FallaDeEscenario, UnCampoNumericoComoTexto) {
  Fallar("ConfiguracionAlmacenada", "numero_como_texto", "campo = \"CtePluvi\"");
  const TablaPtr t = Driver().ConfiguracionAlmacenada(true);
  EXPECT_EQ(t->Field("CtePluvi").tipo, TipoCampo::kVarChar);
  t->Filter("Canal='15'");
  EXPECT_EQ(t->Texto("CtePluvi"), "0.2");
}

TEST_F(FallaDeEscenario, UnValorQueNoEsNumero) {
  banco.Escenario(TextoFalla("LeerDatos", "no_numero", "campo = \"Valor\"") +
                  TextoFalla("LeerAgenda", "no_numero", "campo = \"HorarioInteger\"\nvalor = \"ocho\""));
  int cambiados = 0;
  for (const TablaPtr t = Driver().LeerDatos("", "", 0); !t->Eof(); t->MoveNext()) {
    if (t->Texto("Hora").empty()) continue;
    EXPECT_FALSE(EsNumerico(t->Texto("Valor")));
    ++cambiados;
  }
  EXPECT_GT(cambiados, 100);
  EXPECT_EQ(Driver().LeerAgenda()->Texto("HorarioInteger"), "ocho");
}

TEST_F(FallaDeEscenario, TramaCortaYFechaQueNoEs) {
  banco.Escenario(TextoFalla("LeerInstantaneos", "trama_corta", "cuantos = 20") +
                  TextoFalla("LeerFechaHora", "fecha_invalida") + TextoFalla("LeerDatos", "fecha_invalida"));
  EXPECT_EQ(Driver().LeerInstantaneos()->RecordCount(), 20U);
  EXPECT_FALSE(EsFecha(Driver().LeerFechaHora()));
  const TablaPtr t = Driver().LeerDatos("", "", 0);
  EXPECT_FALSE(t->Texto("Fecha").empty());
  for (; !t->Eof(); t->MoveNext()) EXPECT_FALSE(EsFecha(t->Texto("Fecha")));
}

// Bytes of a page text as a reply frame.
std::vector<std::uint8_t> Respuesta(const std::string& texto) {
  const auto bytes = LeerTextoPagina(texto).value();
  std::vector<std::uint8_t> respuesta(13);
  respuesta.insert(respuesta.end(), bytes.begin(), bytes.begin() + 64);
  return respuesta;
}

TEST_F(FallaDeEscenario, PaginaConBitsCambiados) {
  banco.Escenario(TextoFalla("LeerPaginaFlash", "pagina_dañada", "pista = 0\npagina = 0\ncuantos = 3"));
  Driver().EstadoPuerto();
  const std::string texto = Driver().LeerPaginaFlash(0, 0);
  EXPECT_EQ(LeerTextoPagina(texto)->size(), 66U);
  EXPECT_EQ(Driver().LeerPaginaFlash(0, 0), texto);
  const TablaPtr t = Driver().DecodificarPagina(Respuesta(texto), "0#0#1024#0#64", "01/01/2001");
  EXPECT_TRUE(!t || t->RecordCount() == 0);
  EXPECT_NE(Driver().DecodificarPagina(Respuesta(Driver().LeerPaginaFlash(0, 1)), "0#0#1024#0#64", "01/01/2001"),
            nullptr);
}

TEST_F(FallaDeEscenario, UnaPaginaSinFechaPropiaTomaLaDada) {
  banco.Escenario(TextoFalla("LeerPaginaFlash", "pagina_sin_fecha"));
  Driver().EstadoPuerto();
  const struct {
    std::int16_t pista;
    bool cola;
  } casos[] = {{0, false}, {27, true}, {30, false}};
  for (const auto& caso : casos) {
    const auto respuesta = Respuesta(Driver().LeerPaginaFlash(caso.pista, 0));
    const TablaPtr t = caso.cola ? Driver().DecodificarPaginaCola(respuesta, "1#0#1024#0#64", "01/01/2001")
                                 : Driver().DecodificarPagina(respuesta, "1#0#1024#0#64", "01/01/2001");
    ASSERT_TRUE(t) << caso.pista;
    int marcas = 0;
    EXPECT_EQ(t->Texto("Fecha"), "01/01/2001") << caso.pista;
    EXPECT_EQ(t->Texto("Hora"), "") << "a row of its own, ahead of the samples";
    for (; !t->Eof(); t->MoveNext()) marcas += t->Texto("Fecha").empty() ? 0 : 1;
    EXPECT_EQ(marcas, 1) << caso.pista;
  }
}

}  // namespace
}  // namespace utr::simulada
