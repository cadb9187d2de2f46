#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "configuration/ListaCanales.h"
#include "lists/ListaTabla.h"
#include "support/Carpeta.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;

// The list as it is shown, without catalogues.
std::vector<std::string> Mostradas(const std::vector<FilaDeCanal>& canales) {
  const prueba::Carpeta carpeta;
  Catalogo catalogo(carpeta.Ruta());
  ListaTabla lista(ColumnasDeCanales());
  lista.Mostrar(TablaDeLista(*TablaDeCanales(canales), catalogo));
  std::vector<std::string> filas;
  for (std::size_t i = 0; i < lista.Cantidad(); ++i) {
    filas.push_back(lista.TextoDeFilas(std::vector<std::size_t>{i}));
    std::replace(filas.back().begin(), filas.back().end(), '\t', '|');
  }
  return filas;
}

TEST(PruebaListaCanales, UnaFilaDiceSuCanalEnPalabras) {
  EXPECT_THAT(Mostradas({{{"Canal", "1"}, {"Tipo", "0"}, {"Flags", "3"}},
                         {{"Canal", "07"}, {"Tipo", ""}, {"Parametro", ""}, {"Flags", "2"}},
                         {{"Canal", "15"}, {"Tipo", "5"}, {"Flags", "0"}},
                         {{"Canal", "23"}, {"Tipo", "6"}, {"Flags", "x"}},
                         {{"Canal", "27"}, {"Tipo", "99999"}, {"Flags", "1"}}}),
              ElementsAre("1|EA01|Entrada Analógica|Limnimetro|Analógico| - |Si|Si",
                          "7|EA07|Entrada Analógica| - | - | - |Si|No",
                          "15|PLV|Pluviométrico|Pluviómetro|Pluviómetro| - |No|No",
                          "23|EA16|Entrada Analógica||| - |No|No", "27|N/D|N/D||| - |No|Si"));
}

TEST(PruebaListaCanales, LasFilasSinNumeroDeCanalQuedanAfuera) {
  EXPECT_THAT(Mostradas({{{"Canal", "0"}}, {{"Canal", "EA01"}}, {{"Canal", "1.5"}}, {{"Canal", ""}}}), ElementsAre());
}

TEST(PruebaListaCanales, ChannelNumbersOrderAsNumbers) {
  const prueba::Carpeta carpeta;
  Catalogo catalogo(carpeta.Ruta());
  ListaTabla lista(ColumnasDeCanales());
  lista.Mostrar(TablaDeLista(*TablaDeCanales({{{"Canal", "10"}}, {{"Canal", "2"}}, {{"Canal", "1"}}}), catalogo));
  lista.Ordenar({0, false, false});
  EXPECT_EQ(lista.Texto(1, 0) + lista.Texto(2, 0), "210");
}

}  // namespace
}  // namespace utr
