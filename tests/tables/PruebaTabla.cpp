#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "support/NumeroDeError.h"
#include "support/Tablas.h"
#include "tables/Comun.h"

namespace utr {
namespace {

using prueba::NumeroDeError;
using prueba::Recorrido;

TEST(Tabla, UnCampoRespondeSinMirarElCaso) {
  const auto t = TablaDeTextos({"Canal", "Año"}, {{"7", "x"}});
  EXPECT_EQ(t->Texto("canal"), "7");
  EXPECT_EQ(t->Texto("CANAL"), "7");
  EXPECT_EQ(t->Texto("AÑO"), "x");
  EXPECT_EQ(t->BuscarCampo("Canales"), -1);
  EXPECT_EQ(t->Field(1).nombre, "Año");
}

TEST(Tabla, CadaFallaTieneSuNumero) {
  Tabla cerrada;
  EXPECT_EQ(NumeroDeError([&] { cerrada.MoveFirst(); }), error::kTablaCerrada);
  EXPECT_EQ(NumeroDeError([&] { cerrada.AddNew(); }), error::kTablaCerrada);
  cerrada.Append("A", TipoCampo::kVarChar, 5);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Append("a", TipoCampo::kVarChar, 5); }), error::kLlamada);
  cerrada.Open();
  EXPECT_EQ(NumeroDeError([&] { cerrada.Open(); }), error::kTablaAbierta);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Append("B", TipoCampo::kVarChar, 5); }), error::kTablaAbierta);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Texto("A"); }), error::kSinRegistro);
  EXPECT_EQ(NumeroDeError([&] { cerrada.MoveNext(); }), error::kSinRegistro);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Texto("B"); }), error::kCampo);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Value(std::size_t{1}); }), error::kCampo);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Filter("B='1'"); }), error::kCampo);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Sort("B ASC"); }), error::kCampo);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Filter("sin igual"); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { cerrada.Filter("A='abierta"); }), error::kLlamada);
  cerrada.Close();
  EXPECT_EQ(cerrada.State(), Tabla::Estado::kCerrada);
  EXPECT_EQ(NumeroDeError([&] { cerrada.RecordCount(); }), error::kTablaCerrada);
}

TEST(Tabla, LosValoresSeConviertenAlTipoDelCampo) {
  Tabla t;
  t.Append("doble", TipoCampo::kDoble);
  t.Append("entero", TipoCampo::kEntero);
  t.Append("logico", TipoCampo::kLogico);
  t.Append("texto", TipoCampo::kVarChar, 2);
  t.Open();
  t.AddNew();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_TRUE(t.EsNulo(i));
  t.Set("doble", "1,000.5");
  t.Set("entero", "2.5");
  t.Set("logico", "true");
  t.Set("texto", Valor{12.5});
  EXPECT_EQ(std::get<double>(t.Value("doble")), 1000.5);
  EXPECT_EQ(std::get<std::int64_t>(t.Value("entero")), 2);
  EXPECT_TRUE(std::get<bool>(t.Value("logico")));
  EXPECT_EQ(t.Texto("texto"), "12.5") << "a value longer than its field is kept whole";
  EXPECT_EQ(NumeroDeError([&] { t.Set("doble", "abc"); }), error::kTipos);
  EXPECT_EQ(NumeroDeError([&] { t.Set("entero", ""); }), error::kTipos);
  EXPECT_EQ(NumeroDeError([&] { t.Set("logico", "Si"); }), error::kTipos);
  EXPECT_EQ(NumeroDeError([&] { t.Set("entero", "3000000000"); }), error::kDesborde);
  EXPECT_EQ(t.Texto("doble"), "1000.5") << "a refused value changes nothing";
  EXPECT_EQ(t.Texto("entero"), "2");
  t.Set("texto", Valor{});
  EXPECT_TRUE(t.EsNulo("texto"));
  t.Set("texto", "");
  EXPECT_FALSE(t.EsNulo("texto")) << "an empty text is no null";
}

TEST(Tabla, LosNumerosNoPierdenCifrasNiFinitud) {
  Tabla t;
  t.Append("i8", TipoCampo::kEntero64);
  t.Append("ui8", TipoCampo::kEntero64SinSigno);
  t.Append("moneda", TipoCampo::kMoneda);
  t.Append("r4", TipoCampo::kSimple);
  t.Append("r8", TipoCampo::kDoble);
  t.Open();
  t.AddNew();
  const std::pair<const char*, const char*> casos[] = {{"i8", "-9007199254740993"},
                                                       {"i8", "9223372036854775807"},
                                                       {"i8", "-9223372036854775808"},
                                                       {"ui8", "18446744073709551615"},
                                                       {"moneda", "922337203685477.5807"}};
  for (const auto& [campo, texto] : casos) {
    t.Set(campo, texto);
    EXPECT_EQ(t.Texto(campo), texto);
  }
  EXPECT_EQ(NumeroDeError([&] { t.Set("i8", "9223372036854775808"); }), error::kDesborde);
  EXPECT_EQ(NumeroDeError([&] { t.Set("moneda", "mucho"); }), error::kTipos);
  EXPECT_EQ(NumeroDeError([&] { t.Set("r4", "1e39"); }), error::kDesborde);
  const double infinito = std::numeric_limits<double>::infinity();
  for (const double numero : {infinito, -infinito, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(NumeroDeError([&] { t.Set("r8", Valor{numero}); }), error::kDesborde);
    EXPECT_EQ(NumeroDeError([&] { t.Set("r4", Valor{numero}); }), error::kDesborde);
  }
  EXPECT_TRUE(t.EsNulo("r8"));
}

TEST(Tabla, LosDecimalesSeComparanComoNumeros) {
  Tabla t;
  t.Append("n", TipoCampo::kDecimal);
  t.Open();
  for (const char* n : {"10", "2", "-.5", "2.00", "9.5"}) {
    t.AddNew();
    t.Set("n", n);
  }
  t.AddNew();
  t.Sort("n DESC");
  EXPECT_EQ(Recorrido(t, "n"), "10 9.5 2 2.00 -.5 ");
  for (const auto& [filtro, filas] : std::initializer_list<std::pair<const char*, std::size_t>>{
           {"n=2", 2}, {"n='-0.50'", 1}, {"n=", 0}, {"n=x", 0}}) {
    t.Filter(filtro);
    EXPECT_EQ(t.RecordCount(), filas) << filtro;
  }
  t.Filter("");
  t.Sort("");
  t.Find("n=09.50");
  EXPECT_EQ(t.Texto("n"), "9.5");
}

TEST(Tabla, LosNumerosGrandesSeComparanEnTodasSusCifras) {
  for (const TipoCampo tipo : {TipoCampo::kEntero64, TipoCampo::kEntero64SinSigno, TipoCampo::kDecimal}) {
    Tabla t;
    t.Append("n", tipo);
    t.Open();
    for (const char* n : {"9007199254740993", "9007199254740992", "9007199254740994.0", "2", "9007199254740993"}) {
      t.AddNew();
      t.Set("n", n);
    }
    const auto filas = [&] {
      std::string vistas;
      for (std::size_t i = 0; i < t.RecordCount(); ++i) vistas += std::to_string(t.Filas().EnVista(i));
      return vistas;
    };
    t.Sort("n ASC");
    EXPECT_EQ(filas(), "31042");
    t.Sort("n DESC");
    EXPECT_EQ(filas(), "20413");
    t.Sort("");
    for (const auto& [filtro, quedan] :
         std::initializer_list<std::pair<const char*, const char*>>{{"n=9007199254740993", "04"},
                                                                    {"n='9,007,199,254,740,992.0'", "1"},
                                                                    {"n=9007199254740993.5", ""},
                                                                    {"n=2e0", "3"},
                                                                    {"n=1e400", ""}}) {
      t.Filter(filtro);
      EXPECT_EQ(filas(), quedan) << filtro;
    }
    t.Filter("");
    t.Find("n=9007199254740994");
    EXPECT_EQ(t.Filas().Actual(), 2U);
  }
}

TEST(Tabla, UnClonCompartaFilasYTieneCursorPropio) {
  const auto t = TablaDeTextos({"Canal"}, {{"1"}, {"2"}, {"3"}});
  t->Filter("Canal='2'");
  const auto clon = t->Clone();
  EXPECT_EQ(clon->RecordCount(), 3U);
  clon->MoveLast();
  EXPECT_EQ(t->Texto("Canal"), "2");
  clon->Set("Canal", "9");
  t->Filter("");
  EXPECT_EQ(Recorrido(*t, "Canal"), "1 2 9");
  t->Close();
  EXPECT_EQ(Recorrido(*clon, "Canal"), "1 2 9") << "closing one leaves the other";
}

TEST(Tabla, LosTextosNoSeMuevenCuandoSeAgregaMas) {
  const auto t = TablaDeTextos({"A"}, {{"primero"}});
  const auto texto = std::get<std::string_view>(t->Value("A"));
  for (int i = 0; i < 20000; ++i) {
    t->AddNew();
    t->Set("A", "texto numero " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 40), 'x'));
  }
  t->AddNew();
  t->Set("A", std::string(100000, 'y'));
  EXPECT_EQ(texto, "primero");
  EXPECT_EQ(t->Filas().Texto(20001, 0).size(), 100000U);
  const std::size_t memoria = t->Memoria();
  for (int i = 0; i < 100000; ++i) {
    t->AddNew();
    t->Set("A", "primero");
  }
  EXPECT_GE(t->Memoria(), memoria + 4 * 80000) << "rows count, also those of a text that is there";
  EXPECT_EQ(t->Filas().Texto(12345, 0), "texto numero 12344" + std::string(12344 % 40, 'x'));
}

// What each part of a table takes: no less than its values, and no more than growing in steps leaves unused.
TEST(Tabla, LaMemoriaCuentaTodoLoQueHayYNadaDosVeces) {
  constexpr std::size_t kFilas = 10000;
  Tabla t;
  t.Append("texto", TipoCampo::kVarChar, 20);
  for (const auto& [nombre, tipo] :
       {std::pair{"doble", TipoCampo::kDoble}, {"entero", TipoCampo::kEntero}, {"logico", TipoCampo::kLogico}})
    t.Append(nombre, tipo);
  t.Open();
  const auto poner = [&](const char* campo, const std::function<std::string(std::size_t)>& texto) {
    for (std::size_t fila = 0; fila < kFilas; ++fila) {
      t.IrAFila(fila);
      t.Set(campo, texto(fila));
    }
  };
  const auto uno = [](std::size_t) { return std::string("1"); };
  const struct {
    const char* que;
    std::function<void()> hacer;
    double al_menos;  // bytes a row
    double a_lo_mas;
  } casos[] = {
      {"rows of nulls",
       [&] {
         for (std::size_t i = 0; i < kFilas; ++i) t.AddNew();
       },
       0, 0},
      {"the number of one text", [&] { poner("texto", uno); }, 4, 8.2},
      {"doubles", [&] { poner("doble", uno); }, 8.1, 16.3},
      {"integers", [&] { poner("entero", uno); }, 8.1, 16.3},
      {"truth values", [&] { poner("logico", uno); }, 1.1, 2.3},
      {"texts of 20 bytes, their entries and slots",
       [&] { poner("texto", [](std::size_t fila) { return std::to_string(100000 + fila) + std::string(14, 'x'); }); },
       20 + 16 + 24, 22 + 32 + 48},
      {"the index of a filter", [&] { t.Filter("texto='100000" + std::string(14, 'x') + "'"), t.Filter(""); },
       8 + 8 + 4 + 8, 36},
      {"the rows of a view", [&] { t.Sort("doble"); }, 4, 8},
      {"no view", [&] { t.Sort(""); }, -8, -4},
  };
  for (const auto& caso : casos) {
    const auto antes = static_cast<double>(t.Memoria());
    caso.hacer();
    const double por_fila = (static_cast<double>(t.Memoria()) - antes) / kFilas;
    EXPECT_GE(por_fila, caso.al_menos) << caso.que;
    EXPECT_LE(por_fila, caso.a_lo_mas) << caso.que;
  }
}

TEST(Tabla, OrdenarEsEstableYVuelveAlOrdenDeIngreso) {
  Tabla t;
  t.Append("texto", TipoCampo::kVarChar, 10);
  t.Append("numero", TipoCampo::kEntero);
  t.Open();
  const struct {
    const char* texto;
    int numero;
  } filas[] = {{"b", 10}, {"A", 9}, {"a", 100}, {"B", -1}};
  for (const auto& f : filas) {
    t.AddNew();
    t.Set("texto", f.texto);
    t.Set("numero", Valor{std::int64_t{f.numero}});
  }
  t.AddNew();  // nulls
  t.UpdateBatch();
  const struct {
    const char* orden;
    const char* recorrido;
  } casos[] = {{"numero ASC", "-BAba"}, {"numero DESC", "abAB-"}, {"texto ASC", "-AabB"},
               {"texto desc", "bBAa-"}, {"[numero]", "-BAba"},    {"", "bAaB-"}};
  for (const auto& c : casos) {
    t.Sort(c.orden);
    std::string visto;
    for (; !t.Eof(); t.MoveNext()) visto += t.EsNulo("texto") ? "-" : t.Texto("texto");
    EXPECT_EQ(visto, c.recorrido) << c.orden;
    EXPECT_EQ(t.RecordCount(), 5U);
  }
}

TEST(Tabla, SetIndiceEscribeUnTextoQueLaColumnaYaTuvo) {
  const auto t = TablaDeTextos({"Canal"}, {{"1"}, {"2"}});
  t->Filter("Canal='2'");
  t->SetIndice(0, t->Textos(0).De(0));
  t->Filter("Canal='1'");
  EXPECT_EQ(t->RecordCount(), 2U) << "the filter sees it";
  t->SetIndice(0, 0);
  EXPECT_TRUE(t->EsNulo(0));
  EXPECT_EQ(NumeroDeError([&] { t->SetIndice(0, 3); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { t->SetIndice(1, 0); }), error::kCampo);
  Tabla numeros;
  numeros.Append("n", TipoCampo::kEntero);
  numeros.Open();
  numeros.AddNew();
  EXPECT_EQ(NumeroDeError([&] { numeros.SetIndice(0, 0); }), error::kLlamada);
}

TEST(Tabla, CopiarRecordset) {
  const auto t = TablaDeTextos({"Canal", "Valor"}, {{"1", "a"}, {"2", "b"}, {"1", "c"}});
  t->Filter("Canal='1'");
  const auto copia = CopiarRecordset(*t, true);
  EXPECT_EQ(Recorrido(*copia, "Valor"), "a c");
  copia->MoveFirst();
  copia->Set("Valor", "z");
  t->MoveFirst();
  EXPECT_EQ(t->Texto("Valor"), "a") << "the copy is independent";
  EXPECT_EQ(copia->Field("valor").tamano, 50U);
  EXPECT_EQ(copia->Pendientes(), 0U);
  EXPECT_EQ(CopiarRecordset(*t, false)->RecordCount(), 0U);

  Tabla vacia;
  vacia.Append("texto", TipoCampo::kVarChar, 5);
  vacia.Append("logico", TipoCampo::kLogico);
  vacia.Open();
  const auto blanca = CopiarRecordset(vacia, true);
  ASSERT_EQ(blanca->RecordCount(), 1U);
  EXPECT_TRUE(blanca->EsNulo("texto"));
  EXPECT_FALSE(std::get<bool>(blanca->Value("logico")));
}

}  // namespace
}  // namespace utr
