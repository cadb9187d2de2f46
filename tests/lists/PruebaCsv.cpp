#include <gtest/gtest.h>

#include <sstream>

#include "base/Error.h"
#include "lists/Csv.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using O = ClaseOrden;
using P = Presentacion;

ListaTabla Lista(const std::vector<Celdas>& filas) {
  ListaTabla lista({{"Fecha", "f", P::kTalCual, O::kFecha},
                    {"Valor ", "v", P::kTalCual, O::kNumero},
                    {"Señal", "s", P::kGuionSiNulo},
                    {"Cola TX", "q", P::kNoSi},
                    {"Máximo", "", P::kGuion, O::kNumero}});
  lista.Mostrar(TablaDeTextos({"f", "v", "s", "q"}, filas));
  return lista;
}

std::string Escrito(const ListaTabla& lista, const OpcionesCsv& opciones = {},
                    Renglones renglones = Renglones::kALaVista) {
  std::ostringstream salida;
  EXPECT_TRUE(EscribirCsv(salida, lista, opciones, renglones));
  return salida.str();
}

constexpr OpcionesCsv kPuntoYComa{.separador = ';', .decimal = ',', .marca = true};

TEST(Csv, CadaCampoEnLaFormaQueLosProgramasLeen) {
  struct Caso {
    const char* texto;
    ClaseOrden clase;
    const char* campo;         // "," and "."
    const char* punto_y_coma;  // ";" and ","
  };
  const Caso casos[] = {
      {" 1.4", O::kNumero, "1.4", "1,4"},
      {"-0.5 ", O::kNumero, "-0.5", "-0,5"},
      {"105.000", O::kNumero, "105.000", "105,000"},
      {" 1E+15", O::kNumero, "1E+15", "1E+15"},
      {"1.5d3", O::kNumero, "1.5E3", "1,5E3"},
      {"1,234,567.25", O::kNumero, "1234567.25", "1234567,25"},
      {"0,2", O::kNumero, "\"0,2\"", "0,2"},
      {"1234,567", O::kNumero, "\"1234,567\"", "1234,567"},
      {"0,234", O::kNumero, "\"0,234\"", "0,234"},
      {"-0,500", O::kNumero, "\"-0,500\"", "-0,500"},
      {"1,23,4", O::kNumero, "\"1,23,4\"", "1,23,4"},
      {"-1,234", O::kNumero, "-1234", "-1234"},
      {"N/D", O::kNumero, "", ""},
      {" N/D ", O::kTexto, "", ""},
      {"", O::kNumero, "", ""},
      {"Canal:  3", O::kNumero, "Canal:  3", "Canal:  3"},
      {"1.4", O::kTexto, "1.4", "1.4"},
      {"01/02/2005", O::kFecha, "2005-02-01", "2005-02-01"},
      {"1/2/05", O::kFecha, "2005-02-01", "2005-02-01"},
      {"29/02/2005", O::kFecha, "29/02/2005", "29/02/2005"},
      {"01/02/2005 9:05", O::kFecha, "2005-02-01T09:05:00", "2005-02-01T09:05:00"},
      {"01/02/2005 00:00:00", O::kFecha, "2005-02-01T00:00:00", "2005-02-01T00:00:00"},
      {"9:05:07", O::kHora, "09:05:07", "09:05:07"},
      {"25:00:00", O::kHora, "25:00:00", "25:00:00"},
      {"  dos  blancos ", O::kTexto, "dos  blancos ", "dos  blancos "},
      {"a,b", O::kTexto, "\"a,b\"", "a,b"},
      {"a;b", O::kTexto, "a;b", "\"a;b\""},
      {"el \"ñ\"", O::kTexto, "\"el \"\"ñ\"\"\"", "\"el \"\"ñ\"\"\""},
      {"dos\nlíneas", O::kTexto, "\"dos\nlíneas\"", "\"dos\nlíneas\""},
      {"-", O::kTexto, "-", "-"},
  };
  for (const Caso& caso : casos) {
    EXPECT_EQ(CampoCsv(caso.texto, caso.clase, {}), caso.campo) << caso.texto;
    EXPECT_EQ(CampoCsv(caso.texto, caso.clase, kPuntoYComa), caso.punto_y_coma) << caso.texto;
  }
  EXPECT_EQ(CampoCsv("1.4", O::kNumero, {.separador = ',', .decimal = ','}), "\"1,4\"");
  EXPECT_EQ(CampoCsv(" -", O::kTexto, {}, true), "");
}

TEST(Csv, TitulosYRenglonesComoSeVen) {
  ListaTabla lista =
      Lista({{"01/02/2005", " 1.5", nullptr, "0"}, {"02/02/2005", "N/D", "-", "7"}, {"x", "9", "b", "1"}});
  EXPECT_EQ(Escrito(lista),
            "Fecha,Valor,Señal,Cola TX,Máximo\r\n2005-02-01,1.5,,No,\r\n2005-02-02,,,Si,\r\nx,9,b,Si,\r\n");
  lista.Ordenar({0, true});
  lista.Filtrar("2005");
  EXPECT_EQ(Escrito(lista, kPuntoYComa),
            "\xEF\xBB\xBF"
            "Fecha;Valor;Señal;Cola TX;Máximo\r\n2005-02-02;;;Si;\r\n2005-02-01;1,5;;No;\r\n");
  EXPECT_EQ(
      Escrito(lista, {.separador = '\t'}, Renglones::kTodos),
      "Fecha\tValor\tSeñal\tCola TX\tMáximo\r\n2005-02-02\t\t\tSi\t\r\n2005-02-01\t1.5\t\tNo\t\r\nx\t9\tb\tSi\t\r\n");
}

TEST(Csv, UnRenglonDeUnCampoVacioNoSePierde) {
  ListaTabla lista({{"Valor", "v", P::kTalCual, O::kNumero}});
  lista.Mostrar(TablaDeTextos({"v"}, {{"1"}, {"N/D"}, {nullptr}}));
  EXPECT_EQ(Escrito(lista), "Valor\r\n1\r\n\"\"\r\n\"\"\r\n");
}

TEST(Csv, MuchosRenglonesLleganTodos) {
  const ListaTabla lista = Lista(std::vector<Celdas>(20000, Celdas{"01/02/2005", "1", "x", "1"}));
  std::string esperado = "Fecha,Valor,Señal,Cola TX,Máximo\r\n";
  for (int i = 0; i < 20000; ++i) esperado += "2005-02-01,1,x,Si,\r\n";
  EXPECT_TRUE(Escrito(lista) == esperado);
}

TEST(ExportarCsv, VaciaNoHaceNadaYEntraEnteraONoEntra) {
  const prueba::Carpeta carpeta;
  EXPECT_FALSE(ExportarCsv(Lista({}), {}, carpeta / "a.csv"));
  EXPECT_EQ(carpeta.Cuantos(), 0U);
  prueba::EscribirTodo(carpeta / "a.csv", "anterior");
  const ListaTabla lista = Lista(std::vector<Celdas>(9000, Celdas{"01/02/2005", "1", "x", "1"}));
  for (const std::uint64_t bytes : {100U, 70000U}) {
    const DispositivoLleno lleno(bytes);
    EXPECT_THROW(ExportarCsv(lista, {}, carpeta / "a.csv"), Error);
  }
  EXPECT_EQ(prueba::LeerTodo(carpeta / "a.csv"), "anterior");
  EXPECT_EQ(carpeta.Cuantos(), 1U);
  EXPECT_TRUE(ExportarCsv(lista, {}, carpeta / "a.csv"));
  EXPECT_EQ(prueba::LeerTodo(carpeta / "a.csv"), Escrito(lista));
}

}  // namespace
}  // namespace utr
