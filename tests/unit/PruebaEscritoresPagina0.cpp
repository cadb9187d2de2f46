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

// The speed is the first item, so that even an empty page has it: its writer alone would go on.
TEST_F(EscritoresPagina0, UnaPaginaQueNoSeLeyoNoSeEscribe) {
  for (const CasoEscritor& caso : kCasos) {
    if (caso.procedimiento == std::string("GrabarVelocidad")) continue;
    for (const char* corta : {"", "4"}) {
      comunicador.Devuelve("LeerPagina", corta);
      const auto falla = FallaDe([&] { caso.grabar(contexto); });
      ASSERT_TRUE(falla) << caso.procedimiento;
      EXPECT_EQ(falla->Numero(), error::kSubindice);
      EXPECT_THAT(Errores(), HasSubstr(std::string("\"Comunicador\",\"") + caso.procedimiento + "\""));
    }
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
  const PaginaUnidad pagina("4,7,x,44,1");
  EXPECT_EQ(pagina.Cuantos(), 5U);
  EXPECT_EQ(pagina.Numero(0), 4);
  EXPECT_EQ(pagina.Numero(2), 0);
  EXPECT_EQ(pagina.Par(3), 300);
  EXPECT_TRUE(FallaDe([&] { pagina.Par(4); })) << "half a pair";
  EXPECT_EQ(PaginaUnidad("").Cuantos(), 1U);
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
