#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "retrieved/series/CurvasInstantaneas.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsNan;

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
  EXPECT_THAT(Valores(curvas, 1), ElementsAre(0.4, IsNan(), 0.8));
  curvas.Agregar(*Lectura("10:30:01", {{"15", "1"}, {"1", "4"}, {"2", "N/D"}}));
  EXPECT_THAT(Valores(curvas, 0), ElementsAre(IsNan(), 0.8, 1)) << "in the order of the last read";
  EXPECT_THAT(Valores(curvas, 1), ElementsAre(2, 3, 4));
  EXPECT_THAT(Valores(curvas, 2), ElementsAre(IsNan())) << "what is shown is that there is none, not the one before";
  curvas.Agregar(*Lectura("10:30:02", {{"1", "5"}}));
  EXPECT_EQ(curvas.Curvas().size(), 1U);
  curvas.Agregar(*Lectura("09:00:00", {{"1", "6"}}));
  EXPECT_THAT(Valores(curvas, 0), ElementsAre(6)) << "the clock of the machine was set back";
}

// Whether a line leads to each point from the one before.
std::vector<bool> Lineas(const CurvasInstantaneas& curvas) {
  std::vector<bool> lineas;
  for (const auto& punto : curvas.Curvas().at(0).puntos) lineas.push_back(punto.sigue);
  return lineas;
}

TEST(PruebaCurvasInstantaneas, NingunaLineaPasaPorDondeFaltaUnValorOUnaLectura) {
  CurvasInstantaneas curvas;
  const auto agregar = [&](const char* hora, const char* valor) { curvas.Agregar(*Lectura(hora, {{"1", valor}})); };
  agregar("10:00:00", "1");
  agregar("10:00:10", "2");
  agregar("10:00:20", "N/D");
  agregar("10:00:30", "3");
  agregar("10:00:40", "4");
  curvas.Interrumpir();
  agregar("10:05:00", "5");
  agregar("10:05:10", "6");
  EXPECT_THAT(Lineas(curvas), ElementsAre(false, true, false, false, true, false, true));
}

}  // namespace
}  // namespace utr
