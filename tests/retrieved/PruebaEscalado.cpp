#include "retrieved/Banco.h"
#include "retrieved/Escalado.h"

namespace utr {
namespace {

using prueba::NumeroDeError;

using PruebaEscalado = Banco;

// What each of the four functions makes of a raw value on one channel row.
struct CasoTipo {
  const char* tipo;
  const char* historico;
  const char* instantaneo;
  const char* instantaneo_con_nivel;
  const char* evento;
  const char* diferencia;
};

TEST_F(PruebaEscalado, CadaFuncionPorTipo) {
  const CasoTipo casos[] = {
      {"0", "111.250", "11.250", "111.250", "111.250", "5.000"},
      {"1", "111.250", "11.250", "111.250", "111.250", "5.000"},
      {"2", "11.250", "11.250", "111.250", "11.250", "5.000"},
      {"3", "11.250", "11.250", "111.250", "11.250", "5.000"},
      {"4", "2148", "11.250", "111.250", "11.250", "5.000"},
      {"5", " 429.6", " 429.6", " 429.6", "2.250", "1.000"},
      {"6", "2148", "2148", "2148", "11.250", "5.000"},
      {"7", "2148", "2148", "2148", "11.250", "5.000"},
      {"-1", "2148", "2148", "2148", "11.250", "5.000"},
  };
  for (const CasoTipo& caso : casos) {
    // (2148 - 100) * 10 / 4096 + 6.25 = 11.25, and 2048 * 10 / 4096 = 5 for the difference.
    const auto tabla = TablaDeCanales({{{"Canal", "3"},
                                        {"Tipo", caso.tipo},
                                        {"Cero", "100"},
                                        {"RangoMin", "6.25"},
                                        {"RangoMax", "16.25"},
                                        {"CtePluvi", "0.2"},
                                        {"NivRefLmn", "100"}}});
    EXPECT_EQ(EscalarValor("2148", "3", tabla.get(), contexto_), caso.historico) << caso.tipo;
    EXPECT_EQ(EscalarValorInstantaneo("2148", "3", tabla.get(), false, contexto_), caso.instantaneo) << caso.tipo;
    EXPECT_EQ(EscalarValorInstantaneo("2148", "3", tabla.get(), true, contexto_), caso.instantaneo_con_nivel)
        << caso.tipo;
    EXPECT_EQ(EscalarValorEvento("2148", "3", tabla.get()), caso.evento) << caso.tipo;
    EXPECT_EQ(EscalarDiferenciaEvento("2048", "3", tabla.get()), caso.diferencia) << caso.tipo;
  }
  EXPECT_TRUE(comunicador_.log.empty());
}

TEST_F(PruebaEscalado, EjemplosDeUso) {
  const auto nivel = TablaDeCanales({{{"Canal", "1"}, {"Tipo", "0"}, {"NivRefLmn", "100"}}});
  EXPECT_EQ(EscalarValor("2048", "1", nivel.get(), contexto_), "105.000");
  const auto lluvia = TablaDeCanales({{{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.2"}}});
  EXPECT_EQ(EscalarValor("7", "15", lluvia.get(), contexto_), " 1.4");
  EXPECT_EQ(EscalarValor("abc", "1", nivel.get(), contexto_), "100.000");
  const auto invertido = TablaDeCanales({{{"Canal", "1"}, {"RangoMin", "10"}, {"RangoMax", "-10"}}});
  EXPECT_EQ(EscalarValor("4096", "1", invertido.get(), contexto_), "-10.000");
  EXPECT_EQ(EscalarValor("2048", "1", invertido.get(), contexto_), "0.000");
}

TEST_F(PruebaEscalado, SpanCeroONegativo) {
  for (const char* span : {"0", "-5", "", "abc"}) {
    comunicador_.log.clear();
    const auto tabla = TablaDeCanales({{{"Canal", "1"}, {"Span", span}}});
    EXPECT_EQ(EscalarValor("40", "1", tabla.get(), contexto_), "40");
    EXPECT_EQ(EscalarValorInstantaneo("40", "1", tabla.get(), false, contexto_), "40");
    EXPECT_EQ(comunicador_.log, std::vector<std::string>(2, "15/03/2026 10:00:00 Escalando Error el span=0")) << span;
  }
  comunicador_.log.clear();
  const auto cero = TablaDeCanales({{{"Canal", "1"}, {"Span", "0"}}});
  EXPECT_EQ(EscalarValorEvento("4", "1", cero.get()), "40.000");
  EXPECT_EQ(EscalarDiferenciaEvento("4", "1", cero.get()), "40.000");
  const auto negativo = TablaDeCanales({{{"Canal", "1"}, {"Span", "-5"}}});
  EXPECT_EQ(EscalarValorEvento("4", "1", negativo.get()), "-8.000");
  const auto lluvia = TablaDeCanales({{{"Canal", "1"}, {"Tipo", "5"}, {"Span", "0"}, {"CtePluvi", "0.5"}}});
  EXPECT_EQ(EscalarValor("3", "1", lluvia.get(), contexto_), " 1.5");
  EXPECT_TRUE(comunicador_.log.empty());
}

TEST_F(PruebaEscalado, SinTablaOSinFila) {
  const auto tabla = TablaDeCanales({{{"Canal", "1"}}});
  for (Tabla* configuracion : {static_cast<Tabla*>(nullptr), tabla.get()}) {
    EXPECT_EQ(EscalarValor(" 7", "9", configuracion, contexto_), " 7");
    EXPECT_EQ(EscalarValorEvento(" 7", "9", configuracion), " 7");
    EXPECT_EQ(EscalarDiferenciaEvento(" 7", "9", configuracion), " 7");
  }
  EXPECT_EQ(EscalarValorInstantaneo(" 7", "1", nullptr, true, contexto_), " 7");
  EXPECT_EQ(EscalarValorInstantaneo(" 7", "1", TablaDeCanales({}).get(), true, contexto_), " 7");
}

TEST_F(PruebaEscalado, ElFiltroQuedaPuestoMenosEnElInstantaneo) {
  const auto tabla = TablaDeCanales({{{"Canal", "1"}}, {{"Canal", "2"}, {"RangoMax", "20"}}});
  EXPECT_EQ(EscalarValor("2048", " 2 ", tabla.get(), contexto_), "10.000");
  EXPECT_EQ(tabla->Filter(), "Canal='2'");
  EXPECT_EQ(EscalarValorInstantaneo("2048", "1", tabla.get(), false, contexto_), "10.000") << "the row it stands on";
  EXPECT_EQ(tabla->Filter(), "Canal='2'");
  EXPECT_EQ(EscalarValorEvento("2048", "O'Higgins", tabla.get()), "2048");
}

struct CasoEstricto {
  const char* columna;
  const char* texto;
  int historico, instantaneo, evento, diferencia;  // error numbers
};

TEST_F(PruebaEscalado, LecturasEstrictas) {
  const CasoEstricto casos[] = {
      {"Cero", "", 0, 0, 13, 13},      {"Span", "ancho", 0, 0, 13, 13}, {"Rango", "", 0, 0, 13, 13},
      {"Tipo", "x", 0, 0, 13, 13},     {"Tipo", "40000", 0, 0, 6, 6},   {"NivRefLmn", "", 0, 13, 0, 13},
      {"RangoMin", "abc", 0, 0, 0, 0}, {"CtePluvi", "0", 0, 0, 0, 0},
  };
  for (const CasoEstricto& caso : casos) {
    const auto tabla = TablaDeCanales({{{"Canal", "1"}, {caso.columna, caso.texto}}});
    EXPECT_EQ(NumeroDeError([&] { EscalarValor("1", "1", tabla.get(), contexto_); }), caso.historico) << caso.columna;
    EXPECT_EQ(NumeroDeError([&] { EscalarValorInstantaneo("1", "1", tabla.get(), true, contexto_); }), caso.instantaneo)
        << caso.columna;
    EXPECT_EQ(NumeroDeError([&] { EscalarValorEvento("1", "1", tabla.get()); }), caso.evento) << caso.columna;
    EXPECT_EQ(NumeroDeError([&] { EscalarDiferenciaEvento("1", "1", tabla.get()); }), caso.diferencia) << caso.columna;
  }
  const auto sin_nivel = TablaDeCanales({{{"Canal", "1"}, {"NivRefLmn", ""}}});
  EXPECT_EQ(EscalarValorInstantaneo("4096", "1", sin_nivel.get(), false, contexto_), "10.000");
}

TEST_F(PruebaEscalado, DesbordesYColumnasQueFaltanSuben) {
  const auto enorme = TablaDeCanales({{{"Canal", "1"}, {"RangoMax", "1e308"}, {"CtePluvi", "1e308"}}});
  EXPECT_EQ(NumeroDeError([&] { EscalarValor("1e10", "1", enorme.get(), contexto_); }), error::kDesborde);
  enorme->Filter("");
  enorme->Set("Tipo", "5");
  EXPECT_EQ(NumeroDeError([&] { EscalarValor("1e10", "1", enorme.get(), contexto_); }), error::kDesborde);
  const auto sin_span = TablaDeTextos({"Canal", "Tipo", "Cero"}, {{"1", "1", "0"}});
  EXPECT_EQ(NumeroDeError([&] { EscalarValor("1", "1", sin_span.get(), contexto_); }), error::kCampo);
  EXPECT_EQ(NumeroDeError([&] { EscalarValorEvento("1", "1", sin_span.get()); }), error::kCampo);
}

}  // namespace
}  // namespace utr
