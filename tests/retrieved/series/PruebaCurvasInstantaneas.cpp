#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "retrieved/series/CurvasInstantaneas.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<const char*> kCampos = {"Fecha", "Hora", "Canal", "Valor", "Descripcion", "Unidad"};

TablaPtr Lectura(const char* hora, const std::vector<std::pair<const char*, const char*>>& valores) {
  std::vector<Celdas> filas;
  for (const auto& [canal, valor] : valores) filas.push_back({"15/03/2026", hora, canal, valor, "Nivel", "m"});
  return TablaDeTextos(kCampos, filas);
}

std::vector<double> Valores(const CurvasInstantaneas& curvas, std::size_t cual) {
  std::vector<double> valores;
  for (const auto& punto : curvas.Curvas().at(cual).puntos) valores.push_back(punto.valor);
  return valores;
}

TEST(PruebaCurvasInstantaneas, UltimaMediaHoraDeCadaCanal) {
  CurvasInstantaneas curvas;
  curvas.Agregar(*Lectura("10:00:00", {{"1", " 1"}, {"15", " 0.4"}}));
  curvas.Agregar(*Lectura("10:00:01", {{"1", "2"}, {"15", "N/D"}}));
  curvas.Agregar(*Lectura("10:30:00", {{"1", "3"}, {"15", " 0.8"}}));
  EXPECT_EQ(curvas.Curvas()[1].canal, "PLV");
  EXPECT_THAT(Valores(curvas, 0), ElementsAre(1, 2, 3));
  EXPECT_THAT(Valores(curvas, 1), ElementsAre(0.4, 0.8));
  curvas.Agregar(*Lectura("10:30:01", {{"15", "1"}, {"1", "4"}, {"2", "N/D"}}));
  EXPECT_THAT(Valores(curvas, 0), ElementsAre(0.8, 1)) << "in the order of the last read";
  EXPECT_THAT(Valores(curvas, 1), ElementsAre(2, 3, 4));
  EXPECT_THAT(Valores(curvas, 2), IsEmpty());
  curvas.Agregar(*Lectura("10:30:02", {{"1", "5"}}));
  EXPECT_EQ(curvas.Curvas().size(), 1U);
  curvas.Agregar(*Lectura("09:00:00", {{"1", "6"}}));
  EXPECT_THAT(Valores(curvas, 0), ElementsAre(6)) << "the clock of the machine was set back";
}

}  // namespace
}  // namespace utr
