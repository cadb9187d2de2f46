#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/Error.h"
#include "base/Texto.h"
#include "lists/ListaTabla.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using P = Presentacion;
using O = ClaseOrden;
using Textos = std::vector<std::string>;

std::string Corchetes(std::string_view valor) {
  return "[" + std::string(valor) + "]";
}

// The texts of one column in display order.
Textos Columna(const ListaTabla& lista, std::size_t columna) {
  Textos textos;
  for (std::size_t i = 0; i < lista.Cantidad(); ++i) textos.push_back(lista.Texto(i, columna));
  return textos;
}

std::vector<Celdas> EnFilas(const std::vector<const char*>& valores) {
  std::vector<Celdas> filas;
  for (const char* valor : valores) filas.push_back({valor});
  return filas;
}

ListaTabla ListaDe(const ColumnaLista& columna, const std::vector<const char*>& valores) {
  ListaTabla lista({columna});
  lista.Mostrar(TablaDeTextos({columna.campo.c_str()}, EnFilas(valores)));
  return lista;
}

TEST(ListaTabla, ComoSeMuestraCadaValor) {
  struct Caso {
    ColumnaLista columna;
    Textos textos;
  };
  const std::vector<const char*> valores = {"0", "1", nullptr, "", " 0.0 ", "abc"};
  const Caso casos[] = {{{"t", "a"}, {"0", "1", "", "", " 0.0 ", "abc"}},
                        {{"t", "A", P::kGuionSiNulo}, {"0", "1", "-", "", " 0.0 ", "abc"}},
                        {{"t", "a", P::kNoSi}, {"No", "Si", "Si", "Si", "No", "Si"}},
                        {{"t", "a", P::kFuncion, O::kTexto, Corchetes}, {"[0]", "[1]", "[]", "[]", "[ 0.0 ]", "[abc]"}},
                        {{"t", "", P::kGuion}, {"-", "-", "-", "-", "-", "-"}}};
  for (const Caso& caso : casos) {
    ListaTabla lista({caso.columna});
    lista.Mostrar(TablaDeTextos({"a"}, EnFilas(valores)));
    EXPECT_EQ(Columna(lista, 0), caso.textos);
  }
}

TEST(ListaTabla, CamposDeOtrosTipos) {
  const auto tabla =
      TablaCon({{"n", TipoCampo::kEntero, 4}, {"d", TipoCampo::kDoble, 8}, {"b", TipoCampo::kLogico, 2}},
               {{"10", "0.5", "True"}, {nullptr, nullptr, nullptr}, {"9", "-3", "False"}, {"10", "0", "True"}});
  ListaTabla lista(
      {{"N", "n", P::kTalCual, O::kNumero}, {"D", "d", P::kGuionSiNulo, O::kNumero}, {"B", "b", P::kNoSi}});
  lista.Mostrar(tabla);
  EXPECT_EQ(Columna(lista, 0), (Textos{"10", "", "9", "10"}));
  EXPECT_EQ(Columna(lista, 1), (Textos{"0.5", "-", "-3", "0"}));
  lista.Ordenar({0});
  EXPECT_EQ(Columna(lista, 1), (Textos{"-", "-3", "0.5", "0"}));
  auto distintos = lista.TextosDistintos(0);
  std::sort(distintos.begin(), distintos.end());
  EXPECT_EQ(distintos, (std::vector<std::string_view>{"", "10", "9"}));
  lista.Filtrar("0.5");
  EXPECT_EQ(Columna(lista, 0), Textos{"10"});
}

TEST(ListaTabla, OrdenPorClase) {
  struct Caso {
    O clase;
    std::vector<const char*> valores;
    Textos ascendente;
    Textos descendente;
  };
  const Caso casos[] = {
      {O::kTexto,
       {"b", "A", nullptr, "a", "C", "Ñ", "ñ"},
       {"", "A", "a", "b", "C", "Ñ", "ñ"},
       {"Ñ", "ñ", "C", "b", "A", "a", ""}},
      {O::kNumero,
       {"10", "9.5", "N/D", " 2", "n/d", "-1", "9.50", "Canal:  5", "1e1", nullptr, "-1e300", "Canal:  2"},
       {"", "Canal:  2", "Canal:  5", "N/D", "n/d", "-1e300", "-1", " 2", "9.5", "9.50", "10", "1e1"},
       {"10", "1e1", "9.5", "9.50", " 2", "-1", "-1e300", "N/D", "n/d", "Canal:  5", "Canal:  2", ""}},
      {O::kNumero,
       {"9007199254740993", "9007199254740992.0", "9007199254740993.0", "9007199254740992"},
       {"9007199254740992.0", "9007199254740992", "9007199254740993", "9007199254740993.0"},
       {"9007199254740993", "9007199254740993.0", "9007199254740992.0", "9007199254740992"}},
      {O::kNumero,
       {"9007199254740993", "9007199254740992"},
       {"9007199254740992", "9007199254740993"},
       {"9007199254740993", "9007199254740992"}},
      {O::kFecha,
       {"02/01/2005", "01/02/2005", "31/12/1999", "x", "02/01/2005 00:00:01"},
       {"x", "31/12/1999", "02/01/2005", "02/01/2005 00:00:01", "01/02/2005"},
       {"01/02/2005", "02/01/2005 00:00:01", "02/01/2005", "31/12/1999", "x"}},
      {O::kHora,
       {"10:00", "9:59:59", "", "00:00:00"},
       {"", "00:00:00", "9:59:59", "10:00"},
       {"10:00", "9:59:59", "00:00:00", ""}}};
  for (const Caso& caso : casos) {
    ListaTabla lista = ListaDe({"t", "a", P::kTalCual, caso.clase}, caso.valores);
    lista.Ordenar({0, false});
    EXPECT_EQ(Columna(lista, 0), caso.ascendente);
    lista.Ordenar({0, true});
    EXPECT_EQ(Columna(lista, 0), caso.descendente);
  }
}

TEST(ListaTabla, LasFechasVanConSuHora) {
  const auto tabla = TablaDeTextos(
      {"f", "h"},
      {{"02/01/2005", "9:00:00"}, {"01/01/2005", "10:00:00"}, {"02/01/2005", "10:00:00"}, {"01/01/2005", "9:00:00"}});
  const struct {
    ClaseOrden segunda;
    OrdenLista orden;
    Textos filas;
  } casos[] = {
      {O::kHora, {0}, {"01/01/2005 9:00:00", "01/01/2005 10:00:00", "02/01/2005 9:00:00", "02/01/2005 10:00:00"}},
      {O::kHora, {0, true}, {"02/01/2005 10:00:00", "02/01/2005 9:00:00", "01/01/2005 10:00:00", "01/01/2005 9:00:00"}},
      {O::kHora, {1}, {"02/01/2005 9:00:00", "01/01/2005 9:00:00", "01/01/2005 10:00:00", "02/01/2005 10:00:00"}},
      {O::kHora,
       {0, false, true},
       {"01/01/2005 10:00:00", "01/01/2005 9:00:00", "02/01/2005 9:00:00", "02/01/2005 10:00:00"}},
      {O::kTexto, {0}, {"01/01/2005 10:00:00", "01/01/2005 9:00:00", "02/01/2005 9:00:00", "02/01/2005 10:00:00"}}};
  for (const auto& caso : casos) {
    ListaTabla lista({{"F", "f", P::kTalCual, O::kFecha}, {"H", "h", P::kTalCual, caso.segunda}});
    lista.Mostrar(tabla);
    lista.Ordenar(caso.orden);
    Textos filas;
    for (std::size_t i = 0; i < 4; ++i) filas.push_back(lista.Texto(i, 0) + " " + lista.Texto(i, 1));
    EXPECT_EQ(filas, caso.filas);
  }
}

TEST(ListaTabla, ComoTextoAunqueSeanFechas) {
  ListaTabla lista = ListaDe({"t", "a", P::kTalCual, O::kFecha}, {"02/01/2005", "01/02/2006", "03/01/2004"});
  lista.Ordenar({0, false, true});
  EXPECT_EQ(Columna(lista, 0), (Textos{"01/02/2006", "02/01/2005", "03/01/2004"}));
  lista.QuitarOrden();
  EXPECT_EQ(Columna(lista, 0), (Textos{"02/01/2005", "01/02/2006", "03/01/2004"}));
}

// Against the standard sort, on many rows with few distinct values, in both directions and under a filter.
TEST(ListaTabla, OrdenEstableComoElEstandar) {
  std::mt19937 azar(11);
  auto tabla = TablaDeTextos({"valor", "fila"});
  std::vector<std::pair<double, std::string>> esperadas;
  for (int i = 0; i < 5000; ++i) {
    const std::string valor = std::to_string(static_cast<int>(azar() % 100) - 50);
    tabla->AddNew();
    tabla->Set("valor", valor);
    tabla->Set("fila", std::to_string(i));
    if (valor.find('7') != std::string::npos || std::to_string(i).find('7') != std::string::npos)
      esperadas.emplace_back(std::stod(valor), std::to_string(i));
  }
  ListaTabla lista({{"Valor", "valor", P::kTalCual, O::kNumero}, {"Fila", "fila"}});
  lista.Mostrar(tabla);
  lista.Filtrar("7");
  for (const bool descendente : {false, true}) {
    auto ordenadas = esperadas;
    std::stable_sort(ordenadas.begin(), ordenadas.end(),
                     [&](const auto& a, const auto& b) { return descendente ? b.first < a.first : a.first < b.first; });
    lista.Ordenar({0, descendente});
    Textos filas;
    for (const auto& [valor, fila] : ordenadas) filas.push_back(fila);
    EXPECT_EQ(Columna(lista, 1), filas);
  }
}

TEST(ListaTabla, FiltroEnCualquierColumnaSinMirarElCaso) {
  ListaTabla lista({{"Nombre", "n"}, {"Cola", "c", P::kNoSi}, {"Fijo", "", P::kGuion}});
  lista.Mostrar(TablaDeTextos({"n", "c"}, {{"Nivel del RÍO", "0"}, {"Viento", "1"}, {"Ñandú", "1"}, {nullptr, "0"}}));
  struct Caso {
    const char* filtro;
    Textos nombres;
  };
  const Caso casos[] = {{"río", {"Nivel del RÍO"}},
                        {"VI", {"Viento"}},
                        {"ñandÚ", {"Ñandú"}},
                        {"si", {"Viento", "Ñandú"}},
                        {"zzz", {}},
                        {"-", {"Nivel del RÍO", "Viento", "Ñandú", ""}},
                        {" ", {"Nivel del RÍO"}},
                        {"", {"Nivel del RÍO", "Viento", "Ñandú", ""}}};
  for (const Caso& caso : casos) {
    lista.Filtrar(caso.filtro);
    EXPECT_EQ(Columna(lista, 0), caso.nombres) << caso.filtro;
    EXPECT_EQ(lista.Total(), 4U);
  }
}

TEST(ListaTabla, FiltroYOrdenSeCombinanYSeQuitan) {
  ListaTabla lista = ListaDe({"t", "a", P::kTalCual, O::kNumero}, {"21", "3", "12", "2", "1"});
  lista.Ordenar({0, true});
  lista.Filtrar("1");
  EXPECT_EQ(Columna(lista, 0), (Textos{"21", "12", "1"}));
  lista.Filtrar("2");
  EXPECT_EQ(Columna(lista, 0), (Textos{"21", "12", "2"}));
  EXPECT_EQ(lista.Fila(0), 0U);
  lista.QuitarOrden();
  lista.Filtrar("");
  EXPECT_EQ(Columna(lista, 0), (Textos{"21", "3", "12", "2", "1"}));
}

TEST(ListaTabla, NoTocaLaTablaYSigueSuFiltroYOrden) {
  const auto tabla = TablaDeTextos({"a", "g"}, {{"3", "x"}, {"1", "x"}, {"2", "y"}, {"4", "x"}});
  tabla->Filter("g='x'");
  tabla->Sort("a DESC");
  tabla->MoveNext();
  const std::size_t actual = tabla->Filas().Actual();
  ListaTabla lista({{"A", "a", P::kTalCual, O::kNumero}});
  lista.Mostrar(tabla);
  EXPECT_EQ(Columna(lista, 0), (Textos{"4", "3", "1"}));
  lista.Filtrar("3");
  EXPECT_EQ(Columna(lista, 0), Textos{"3"});
  lista.Filtrar("");
  lista.Ordenar({0});
  EXPECT_EQ(Columna(lista, 0), (Textos{"1", "3", "4"}));
  EXPECT_EQ(tabla->Filas().Actual(), actual);
  EXPECT_EQ(tabla->Filter(), "g='x'");
  EXPECT_EQ(tabla->Sort(), "a DESC");
}

TEST(ListaTabla, TablasQueNoSeListan) {
  ListaTabla lista({{"A", "a"}, {"B", "b"}});
  lista.Mostrar(TablaDeTextos({"a", "b"}, {{"1", "2"}}));
  lista.Filtrar("nada");
  EXPECT_EQ(prueba::NumeroDeError([&] { lista.Mostrar(TablaDeTextos({"a"}, {{"1"}})); }), error::kCampo);
  EXPECT_EQ(lista.Cantidad(), 0U);
  EXPECT_TRUE(lista.TextosDistintos(0).empty());
  EXPECT_EQ(lista.Filtro(), "");
  lista.Mostrar(nullptr);
  lista.Mostrar(std::make_shared<Tabla>());
  lista.Ordenar({1, true});
  EXPECT_EQ(lista.Cantidad(), 0U);
  EXPECT_THROW(lista.Texto(0, 0), Error);
  EXPECT_THROW(lista.Ordenar({2}), Error);
}

TEST(ListaTabla, SinFilasSeOrdenaYFiltra) {
  ListaTabla lista = ListaDe({"t", "a", P::kNoSi, O::kNumero}, {});
  lista.Ordenar({0});
  lista.Filtrar("x");
  EXPECT_EQ(lista.Cantidad(), 0U);
}

TEST(ListaTabla, FilasCopiadas) {
  ListaTabla lista({{"A", "a"}, {"B", "b", P::kGuionSiNulo}, {"C", "c"}});
  lista.Mostrar(TablaDeTextos({"a", "b", "c"}, {{"1", nullptr, "x"}, {"", "", ""}, {"2", "y", ""}}));
  EXPECT_EQ(lista.TextoDeFilas(std::vector<std::size_t>{0, 1, 2}), "1\t-\tx\n\t\t\n2\ty\t");
  EXPECT_EQ(lista.TextoDeFilas(std::vector<std::size_t>{2}), "2\ty\t");
  EXPECT_EQ(lista.TextoDeFilas({}), "");
  EXPECT_EQ(lista.TextoConTitulos({}), "");
}

}  // namespace
}  // namespace utr
