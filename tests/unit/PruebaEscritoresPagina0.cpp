#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "driver/PaginaCero.h"
#include "driver/Textos.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/RelojFalso.h"
#include "unit/EscritoresPagina0.h"
#include "unit/PaginaUnidad.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class EscritoresPagina0 : public testing::Test {
 protected:
  EscritoresPagina0() {
    const std::function<std::string(const std::string&)> par = [](const std::string& llamada) {
      return TextoPar(static_cast<std::uint16_t>(std::stoi(llamada.substr(llamada.find('(') + 1))));
    };
    comunicador.Devuelve("ConvertirDe", par);
  }
  std::string Errores() { return prueba::LeerTodo(carpeta / "utr.err"); }

  prueba::Carpeta carpeta;
  RelojFalso reloj;
  ComunicadorFalso comunicador;
  RegistroErrores registro{carpeta / "utr.err", reloj};
  ContextoUnidad contexto{comunicador, registro};
};

struct CasoEscritor {
  const char* procedimiento;  // in the error log
  std::function<bool(const ContextoUnidad&)> grabar;
  const char* escrita;  // for a page of 4,7,3,120,0,1,10,0,9, 007
};
const CasoEscritor kCasos[] = {
    {"Grabando Hora", [](const auto& c) { return GrabarVentanaAgenda(c, 1440); }, "4,7,3,120,0,1,160,5,9, 007"},
    {"Grabando Hora", [](const auto& c) { return GrabarVentanaAgenda(c, 1); }, "4,7,3,120,0,1,1,0,9, 007"},
    {"GrabarDilei", [](const auto& c) { return GrabarDilei(c, 100, 25); }, "4,100,25,120,0,1,10,0,9, 007"},
    {"GrabarIdUTR", [](const auto& c) { return GrabarIdUTR(c, 300); }, "4,7,3,44,1,1,10,0,9, 007"},
    {"GrabarIdUTR", [](const auto& c) { return GrabarIdUTR(c, -1); }, "4,7,3,255,255,1,10,0,9, 007"},
    {"GrabarVelocidad", [](const auto& c) { return GrabarVelocidad(c, 5); }, "5,7,3,120,0,1,10,0,9, 007"},
};

TEST_F(EscritoresPagina0, CambianSusPosicionesYDejanLasDemasComoVinieron) {
  comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0,9, 007");
  for (const CasoEscritor& caso : kCasos) {
    EXPECT_TRUE(caso.grabar(contexto));
    EXPECT_EQ(comunicador.llamadas.back(), std::string("EscribirPagina(0,") + caso.escrita + ")");
  }
  EXPECT_EQ(comunicador.De("LeerPagina").front(), "LeerPagina(0,no)");
  comunicador.Devuelve("EscribirPagina", false);
  EXPECT_FALSE(GrabarVelocidad(contexto, 1));
  EXPECT_EQ(Errores(), "") << "a page that the unit refuses is no error";
}

// 64 and 300 items: as many come back as went out.
TEST_F(EscritoresPagina0, ElLargoDeLaPaginaNoCambia) {
  for (const int cuantos : {8, 64, 300}) {
    std::string resto;
    for (int i = 8; i < cuantos; ++i) resto += ',' + std::to_string(i % 256);
    comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0" + resto);
    EXPECT_TRUE(GrabarVentanaAgenda(contexto, 300));
    EXPECT_EQ(comunicador.llamadas.back(), "EscribirPagina(0,4,7,3,120,0,1,44,1" + resto + ")");
  }
}

// Also a page that is long enough, when one of its items is no byte: nobody knows what the others are.
TEST_F(EscritoresPagina0, UnaPaginaQueNoSeLeyoNoSeEscribe) {
  for (const CasoEscritor& caso : kCasos) {
    for (const char* pagina : {"", "x", "4", "4,7,3,-1,0,1,10,0", "4,7,3,120,0,1,10,0,256", "4,7,3,120,0,1,10,0,"}) {
      if (caso.procedimiento == std::string("GrabarVelocidad") && pagina == std::string("4")) continue;
      comunicador.Devuelve("LeerPagina", pagina);
      const auto falla = FallaDe([&] { caso.grabar(contexto); });
      ASSERT_TRUE(falla) << caso.procedimiento << pagina;
      EXPECT_EQ(falla->Numero(), error::kSubindice);
      EXPECT_EQ(falla->Descripcion(), "La página 0 no pudo leerse");
      EXPECT_THAT(Errores(), HasSubstr(std::string("\"Comunicador\",\"") + caso.procedimiento + "\""));
    }
  }
  EXPECT_EQ(comunicador.Cuantas("EscribirPagina"), 0U);
}

// The last position of each is the first one that a page must not lack.
TEST_F(EscritoresPagina0, LaPaginaCortaSeEscribeMientrasTengaSusPosiciones) {
  const struct {
    std::size_t bytes;
    std::function<bool(const ContextoUnidad&)> grabar;
  } kJustas[] = {{1, [](const auto& c) { return GrabarVelocidad(c, 5); }},
                 {3, [](const auto& c) { return GrabarDilei(c, 1, 2); }},
                 {5, [](const auto& c) { return GrabarIdUTR(c, 300); }},
                 {8, [](const auto& c) { return GrabarVentanaAgenda(c, 7); }}};
  for (const auto& [bytes, grabar] : kJustas) {
    const std::vector<std::uint8_t> pagina(bytes, 9);
    comunicador.Devuelve("LeerPagina", TextoPagina(pagina));
    std::string antes;
    ContextoUnidad espiado = contexto;
    espiado.leida = [&](const PaginaUnidad& leida) { antes = leida.Texto(); };
    EXPECT_TRUE(grabar(espiado));
    EXPECT_EQ(antes, TextoPagina(pagina));
    comunicador.Devuelve("LeerPagina", TextoPagina(std::span(pagina).first(bytes - 1)));
    EXPECT_TRUE(FallaDe([&] { grabar(contexto); })) << bytes;
  }
  EXPECT_EQ(comunicador.Cuantas("EscribirPagina"), 4U);
}

TEST_F(EscritoresPagina0, LoQueNoEsUnByteNiUnParNoSeEscribe) {
  comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0");
  EXPECT_EQ(FallaDe([&] { GrabarDilei(contexto, 256, 0); })->Numero(), error::kDesborde);
  EXPECT_EQ(FallaDe([&] { GrabarVelocidad(contexto, -1); })->Numero(), error::kDesborde);
  for (const char* par : {"", "44", "x/1", "44/1/0", "300/1"}) {
    comunicador.Devuelve("ConvertirDe", par);
    EXPECT_EQ(FallaDe([&] { GrabarIdUTR(contexto, 300); })->Numero(), error::kTipos) << par;
  }
  EXPECT_EQ(comunicador.Cuantas("EscribirPagina"), 0U);
}

TEST_F(EscritoresPagina0, UnaFallaDelManejadorSigueConSuNumero) {
  comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0");
  for (const char* operacion : {"EscribirPagina", "ConvertirDe", "LeerPagina"}) {
    comunicador.Falla(operacion, Error(8020, "driver", "sin respuesta"));
    const auto falla = FallaDe([&] { GrabarIdUTR(contexto, 5); });
    ASSERT_TRUE(falla) << operacion;
    EXPECT_EQ(falla->Numero(), 8020);
  }
  EXPECT_THAT(Errores(), HasSubstr("8020,\"driver\",\"sin respuesta\""));
}

TEST(PaginaUnidad, LeeNumerosYPares) {
  PaginaUnidad pagina("0", "4,7, 007,44,1");
  EXPECT_EQ(pagina.Cuantos(), 5U);
  EXPECT_EQ(pagina.Numero(2), 7);
  EXPECT_EQ(pagina.Par(3), 300);
  EXPECT_TRUE(FallaDe([&] { pagina.Par(4); })) << "half a pair";
  EXPECT_TRUE(FallaDe([&] { pagina.PonerPar(4, "9/9"); }));
  EXPECT_EQ(pagina.Texto(), "4,7, 007,44,1") << "not half of it either";
}

TEST(Pagina0, CadaVelocidadTieneSuCodigo) {
  std::vector<std::int32_t> codigos;
  for (const std::int32_t velocidad : {300, 1200, 2400, 4800, 9600, 19200}) {
    codigos.push_back(pagina0::CodigoDeVelocidad(velocidad).value());
    EXPECT_EQ(pagina0::VelocidadDeCodigo(codigos.back()), velocidad);
  }
  EXPECT_THAT(codigos, ElementsAre(0, 1, 2, 3, 4, 5));
  EXPECT_FALSE(pagina0::CodigoDeVelocidad(600));
  EXPECT_FALSE(pagina0::VelocidadDeCodigo(6));
  EXPECT_FALSE(pagina0::VelocidadDeCodigo(-1));
}

}  // namespace
}  // namespace utr
