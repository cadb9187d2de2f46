#include <gtest/gtest.h>

#include "base/Error.h"
#include "lists/DocumentoLista.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/Tablas.h"

namespace utr {
namespace {

ListaTabla Lista(const std::vector<Celdas>& filas) {
  ListaTabla lista({{"Fecha", "f"}, {"Valor ", "v", Presentacion::kTalCual, ClaseOrden::kNumero}, {"Señal", "s"}});
  lista.Mostrar(TablaDeTextos({"f", "v", "s"}, filas));
  return lista;
}

const EncabezadoLista kEncabezado = {"Eventos de la UTR", {"Desde: 01/02/2005 00:00:00", "Hasta: 02/02/2005 23:59:00"}};

TEST(DocumentoLista, TituloFechasTitulosYFilas) {
  EXPECT_EQ(ArmarDocumento(Lista({{"01/02/2005", " 1.4", "\"ñ\"\t;"}}), kEncabezado),
            "Eventos de la UTR\r\nDesde: 01/02/2005 00:00:00\r\nHasta: 02/02/2005 23:59:00\r\n"
            "Fecha\tValor \tSeñal\r\n01/02/2005\t 1.4\t\"ñ\"\t;");
}

TEST(DocumentoLista, EnElOrdenQueSeVeYSoloLoQueSeVe) {
  ListaTabla lista = Lista({{"a", "10", nullptr}, {"b", "9", "x"}, {"a", "", ""}, {"c", "2", ""}});
  lista.Ordenar({1, true});
  lista.Filtrar("A");
  EXPECT_EQ(ArmarDocumento(lista, {"T", {}}), "T\r\nFecha\tValor \tSeñal\r\na\t10\t\r\na\t\t");
}

TEST(NombreDeArchivo, TituloONombreYElPeriodo) {
  const std::pair<EncabezadoLista, const char*> casos[] = {
      {kEncabezado, "Eventos de la UTR 01-02-2005 00.00.00 a 02-02-2005 23.59.00"},
      {{"Datos", {"Desde: 01/02/2005", "Hasta: 02/02/2005"}, "Datos EA01"}, "Datos EA01 01-02-2005 a 02-02-2005"},
      {{"Agenda", {"Fecha: 15/03/2026"}}, "Agenda 15-03-2026"},
      {{"Bitácora", {"Estación: 70, Río", "Día: 15/03/2026"}}, "Bitácora 70, Río 15-03-2026"},
      {{"Descarga", {"Carpeta: /home/ana/UTR-70"}}, "Descarga"},
      {{"Canales/Pilas", {"Desde: ", "nota"}}, "Canales-Pilas"}};
  for (const auto& [encabezado, nombre] : casos) EXPECT_EQ(NombreDeArchivo(encabezado), nombre);
}

TEST(ExportarLista, VaciaNoHaceNada) {
  const prueba::Carpeta carpeta;
  EXPECT_FALSE(ExportarLista(Lista({}), kEncabezado, carpeta / "a.txt"));
  EXPECT_EQ(carpeta.Cuantos(), 0U);
}

TEST(ExportarLista, EscribeElDocumentoEntero) {
  const prueba::Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "a.txt", std::string(10000, 'x'));
  const ListaTabla lista = Lista({{"a", "1", "ñ"}});
  EXPECT_TRUE(ExportarLista(lista, kEncabezado, carpeta / "a.txt"));
  EXPECT_EQ(prueba::LeerTodo(carpeta / "a.txt"), ArmarDocumento(lista, kEncabezado));
  EXPECT_EQ(carpeta.Cuantos(), 1U);
}

TEST(ExportarLista, UnaFallaALaMitadLoDiceYDejaElAnterior) {
  const prueba::Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "a.txt", "anterior");
  const ListaTabla lista = Lista(std::vector<Celdas>(5000, Celdas{"01/02/2005", "1", "x"}));
  {
    const DispositivoLleno lleno(4096);
    EXPECT_THROW(ExportarLista(lista, kEncabezado, carpeta / "a.txt"), Error);
  }
  EXPECT_EQ(prueba::LeerTodo(carpeta / "a.txt"), "anterior");
  EXPECT_EQ(carpeta.Cuantos(), 1U);
  EXPECT_THROW(ExportarLista(lista, kEncabezado, carpeta / "no/a.txt"), Error);
}

}  // namespace
}  // namespace utr
