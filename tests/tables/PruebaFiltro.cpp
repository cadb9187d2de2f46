#include <gtest/gtest.h>

#include <map>
#include <random>
#include <tuple>

#include "support/Tablas.h"
#include "tables/Comun.h"

namespace utr {
namespace {

using prueba::Recorrido;

TEST(Filtro, FormasDeComparacion) {
  Tabla t;
  t.Append("Id", TipoCampo::kEntero);
  t.Append("Fecha", TipoCampo::kVarChar, 20);
  t.Append("TDirV", TipoCampo::kVarChar, 3);
  t.Append("Hab", TipoCampo::kLogico);
  t.Open();
  const struct {
    int id;
    const char* fecha;
    const char* dir;
    bool hab;
  } filas[] = {{1, "01/01/2001", "Si", true}, {2, "02/01/2001", "No", false}, {4, "O'Higgins", "si", true}};
  for (const auto& f : filas) {
    t.AddNew();
    t.Set("Id", Valor{std::int64_t{f.id}});
    t.Set("Fecha", f.fecha);
    t.Set("TDirV", f.dir);
    t.Set("Hab", Valor{f.hab});
  }
  t.AddNew();
  t.UpdateBatch();
  const struct {
    const char* filtro;
    const char* ids;
  } casos[] = {
      {"TDirV='Si'", "1 4"},
      {"Fecha=01/01/2001", "1"},
      {"Id= 4", "4"},
      {"id='2'", "2"},
      {"Id= abc", ""},
      {"Id=", ""},
      {"Fecha='O''Higgins'", "4"},
      {"TDirV=''", ""},
      {"Hab=True", "1 4"},
      {"Hab=0", "2"},
      {"Fecha='no está'", ""},
      {"Id= 4.0", "4"},
  };
  for (const auto& c : casos) {
    t.Filter(c.filtro);
    EXPECT_EQ(Recorrido(t, "Id"), c.ids) << c.filtro;
    t.MoveFirst();
    EXPECT_EQ(t.Eof(), std::string_view(c.ids).empty());
  }
  t.Filter("");
  EXPECT_EQ(t.RecordCount(), 4U) << "an empty filter shows all rows again";
}

TEST(Filtro, CambiarElCampoFiltradoNoSalteaVecinos) {
  std::vector<Celdas> filas;
  for (int i = 0; i < 1000; ++i) filas.push_back({i % 3 == 0 ? "x" : "01/01/2001"});
  for (const bool contando : {false, true}) {
    const auto t = TablaDeTextos({"Fecha"}, filas);
    t->Filter("Fecha=01/01/2001");
    std::size_t quedan = t->RecordCount();
    std::size_t cambiadas = 0;
    for (t->MoveFirst(); !t->Eof(); t->MoveNext()) {
      t->Set("Fecha", "hoy");
      ++cambiadas;
      if (contando) {
        ASSERT_EQ(t->RecordCount(), --quedan);
      }
    }
    EXPECT_EQ(cambiadas, 666U);
    EXPECT_EQ(t->RecordCount(), 0U);
    t->Filter("Fecha='hoy'");
    EXPECT_EQ(t->RecordCount(), 666U);
  }
}

TEST(Filtro, SigueLosCambiosQueVienenDeUnClon) {
  const auto t = TablaDeTextos({"C"}, {{"1"}, {"2"}, {"1"}, {"2"}});
  t->Filter("C='1'");
  const auto clon = t->Clone();
  clon->IrAFila(1);
  clon->Set("C", "1");
  EXPECT_EQ(t->RecordCount(), 3U);
  EXPECT_EQ(t->Filas().EnVista(1), 1U);
  clon->AddNew();
  clon->Set("C", "1");
  EXPECT_EQ(t->RecordCount(), 4U);
  t->MoveLast();
  EXPECT_EQ(t->Filas().Actual(), 4U);
  clon->IrAFila(0);
  clon->Set("C", Valor{});
  EXPECT_EQ(Recorrido(*t, "C"), "1 1 1");
}

TEST(Filtro, BofVeLosCambiosDeUnClonSinQueNadieCuente) {
  const auto t = TablaDeTextos({"C"}, {{"1"}, {"2"}});
  t->Filter("C='1'");
  const auto clon = t->Clone();
  for (const bool vacia : {true, false}) {
    clon->Set("C", vacia ? "2" : "1");
    EXPECT_EQ(t->Bof(), vacia);
  }
  t->Filter("C='3'");
  EXPECT_TRUE(t->Bof());
  clon->AddNew();
  clon->Set("C", "3");
  EXPECT_FALSE(t->Bof());
}

TEST(Filtro, UnTextoQueSoloCambiaDeCasoSigueEnElFiltro) {
  const auto t = TablaDeTextos({"C"}, {{"Si"}, {"Si"}, {"Si"}});
  t->Filter("C='Si'");
  const auto clon = t->Clone();
  for (const char* texto : {"SI", "sI"}) {
    clon->MoveNext();
    clon->Set("C", texto);
  }
  std::string visto;
  for (; !t->Eof(); t->MoveNext()) visto += t->Texto("C");
  EXPECT_EQ(visto, "SiSIsI");
}

TEST(Filtro, UnaFilaQueSaleYVuelveNoHaceRetroceder) {
  for (const char* orden : {"", "A ASC", "n ASC", "n DESC"}) {
    const auto t = TablaDeTextos({"A", "n"}, {{"x", "0"}, {"x", "1"}, {"x", "2"}, {"x", "3"}});
    t->Filter("A='x'");
    t->Sort(orden);
    const auto clon = t->Clone();
    t->MoveNext();
    clon->IrAFila(t->Filas().Actual());
    t->MoveNext();
    const std::size_t ultima = t->Filas().EnVista(3);
    clon->Set("A", "y");
    t->Set("A", "y");
    EXPECT_EQ(t->RecordCount(), 2U) << orden;
    clon->Set("A", "x");
    EXPECT_EQ(t->RecordCount(), 3U) << orden;
    t->MoveNext();
    EXPECT_EQ(t->Filas().Actual(), ultima) << orden;
  }
}

// The walk meets what other clones did since the filter was set, though nobody counted the rows.
TEST(Filtro, ElRecorridoVeLoQueOtroHizoDelante) {
  const struct {
    std::vector<std::size_t> salen;  // rows that leave the filter once the walk stands on row 0
    const char* agregada;            // a row that comes in then
    const char* visto;
  } casos[] = {{{}, nullptr, "0123"},     {{1}, nullptr, "023"},    {{1, 2}, nullptr, "03"}, {{3}, nullptr, "012"},
               {{1, 2, 3}, nullptr, "0"}, {{}, "x", "01234"},       {{}, "y", "0123"},       {{3}, "x", "0124"},
               {{1, 2, 3}, "x", "04"},    {{0, 1, 2, 3}, "x", "04"}};
  for (const auto& caso : casos) {
    const auto t = TablaDeTextos({"A", "n"}, {{"x", "0"}, {"x", "1"}, {"x", "2"}, {"x", "3"}});
    t->Filter("A='x'");
    const auto clon = t->Clone();
    for (const std::size_t fila : caso.salen) {
      clon->IrAFila(fila);
      clon->Set("A", "y");
    }
    if (caso.agregada != nullptr) {
      clon->AddNew();
      clon->Set("A", caso.agregada);
      clon->Set("n", "4");
    }
    std::string visto;
    for (; !t->Eof(); t->MoveNext()) visto += t->Texto("n");
    EXPECT_EQ(visto, caso.visto);
  }
}

TEST(Filtro, IrAFilaSigueDesdeAhi) {
  const auto t = TablaDeTextos({"A", "n"}, {{"x", "0"}, {"y", "1"}, {"x", "2"}, {"x", "3"}});
  for (const auto& [filtro, fila, sigue] : std::initializer_list<std::tuple<const char*, std::size_t, const char*>>{
           {"A='x'", 0, "2"}, {"A='x'", 2, "3"}, {"A='x'", 3, "fin"}, {"A='x'", 1, "fin"}, {"", 1, "2"}}) {
    t->Filter(filtro);
    t->IrAFila(fila);
    EXPECT_EQ(t->Filas().Actual(), fila);
    t->MoveNext();
    EXPECT_EQ(t->Eof() ? "fin" : t->Texto("n"), sigue) << filtro << fila;
  }
}

TEST(Filtro, FindBuscaHaciaAdelanteDesdeLaFilaActual) {
  Tabla t;
  t.Append("Id", TipoCampo::kEntero);
  t.Append("Nombre", TipoCampo::kVarChar, 10);
  t.Open();
  for (int i : {3, 5, 3, 8}) {
    t.AddNew();
    t.Set("Id", Valor{std::int64_t{i}});
    t.Set("Nombre", "n" + std::to_string(i));
  }
  t.MoveFirst();
  t.Find("Id=5");
  EXPECT_EQ(t.Filas().Actual(), 1U);
  t.Find("Id=3");
  EXPECT_EQ(t.Filas().Actual(), 2U);
  t.Find("Id=5");
  EXPECT_TRUE(t.Eof()) << "only forward";
  for (const char* nada : {"Id=", "Id=abc", "Id=99", "Nombre=n9"}) {
    t.MoveFirst();
    t.Find(nada);
    EXPECT_TRUE(t.Eof()) << nada;
  }
  t.MoveFirst();
  t.Find("Nombre=N8");
  EXPECT_EQ(t.Filas().Actual(), 3U);
}

// Random changes, additions, filters and sorts against a plain model.
TEST(Filtro, CoincideConUnModeloLlano) {
  std::mt19937 azar(20261122);
  const auto t = TablaDeTextos({"A", "B"}, {});
  std::vector<std::pair<std::string, std::string>> modelo;
  const auto texto = [&] { return std::to_string(azar() % 5); };
  std::string filtro;
  for (int paso = 0; paso < 4000; ++paso) {
    const auto accion = azar() % 10;
    if (accion < 5 || modelo.empty()) {
      modelo.emplace_back(texto(), texto());
      t->AddNew();
      t->Set("A", modelo.back().first);
      t->Set("B", modelo.back().second);
    } else if (accion < 8) {
      const std::size_t i = azar() % modelo.size();
      modelo[i].first = texto();
      t->IrAFila(i);
      t->Set("A", modelo[i].first);
    } else {
      filtro = azar() % 4 == 0 ? "" : texto();
      t->Filter(filtro.empty() ? "" : "A='" + filtro + "'");
    }
    if (paso % 7 != 0) continue;
    std::string esperado;
    for (const auto& [a, b] : modelo) {
      if (filtro.empty() || a == filtro) esperado += (esperado.empty() ? "" : " ") + b;
    }
    ASSERT_EQ(Recorrido(*t, "B"), esperado) << "step " << paso;
  }
}

}  // namespace
}  // namespace utr
