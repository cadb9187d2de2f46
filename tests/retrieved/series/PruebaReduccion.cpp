#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/Fechas.h"
#include "retrieved/series/Reduccion.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;

constexpr std::int64_t kComienzo = 1773532800;  // 15/03/2026

// Values at seconds from the start; not a number is "N/D". With a band of one around each when told.
Serie SerieDe(const std::vector<std::pair<std::int64_t, double>>& puntos, bool banda = false) {
  const auto tabla = TablaDeTextos({"Fecha", "Canal", "Valor"});
  TablaPtr con_banda = TablaDeTextos({"Fecha", "Canal", "Valor", "Minimo", "Maximo"});
  Tabla& destino = banda ? *con_banda : *tabla;
  for (const auto& [momento, valor] : puntos) {
    destino.AddNew();
    destino.Set(0, TextoFechaHora(FechaDeSegundos(kComienzo + momento)));
    destino.Set(1, "EA01");
    destino.Set(2, std::isnan(valor) ? "N/D" : std::to_string(valor));
    if (banda) destino.Set(3, std::to_string(valor - 1));
    if (banda) destino.Set(4, std::to_string(valor + 1));
  }
  destino.UpdateBatch();
  return Serie(destino, {.canal = {}, .minutos = 1});
}

VentanaTiempo Ventana(double desde, double hasta) {
  return {static_cast<double>(kComienzo) + desde, static_cast<double>(kComienzo) + hasta};
}

std::vector<double> Momentos(const std::vector<PasoReducido>& pasos) {
  std::vector<double> momentos;
  for (const PasoReducido& paso : pasos) momentos.push_back(paso.momento - static_cast<double>(kComienzo));
  return momentos;
}

// Where a new line begins.
std::vector<std::size_t> Comienzos(const std::vector<PasoReducido>& pasos) {
  std::vector<std::size_t> comienzos;
  for (std::size_t i = 0; i < pasos.size(); ++i) {
    if (!pasos[i].sigue) comienzos.push_back(i);
  }
  return comienzos;
}

TEST(PruebaReduccion, NingunExtremoSePierde) {
  std::vector<std::pair<std::int64_t, double>> puntos;
  for (std::int64_t i = 0; i < 5000; ++i) puntos.emplace_back(i * 60, std::sin(static_cast<double>(i) / 700));
  puntos[1234].second = 50;
  puntos[4321].second = -50;
  const Serie serie = SerieDe(puntos, true);
  const auto pasos = Reducir(serie, Ventana(0, 4999 * 60), 100);
  EXPECT_LE(pasos.size(), 101U);
  EXPECT_EQ(Comienzos(pasos), std::vector<std::size_t>{0});
  for (std::size_t i = 0; i < serie.Cantidad(); ++i) {
    const auto cual =
        static_cast<std::size_t>((static_cast<double>(serie.Tiempos()[i]) - Ventana(0, 0).desde) / (4999 * 0.6));
    ASSERT_GE(serie.Valores()[i], pasos[cual].abajo) << i;
    ASSERT_LE(serie.Valores()[i], pasos[cual].arriba) << i;
    ASSERT_LE(pasos[cual].banda_abajo, serie.Minimos()[i]) << i;
    ASSERT_GE(pasos[cual].banda_arriba, serie.Maximos()[i]) << i;
  }
  const auto mayor =
      std::max_element(pasos.begin(), pasos.end(), [](const auto& a, const auto& b) { return a.arriba < b.arriba; });
  EXPECT_EQ(mayor->arriba, 50);
  EXPECT_EQ(mayor->banda_arriba, 51);
}

TEST(PruebaReduccion, CadaPuntoConSuMomentoDondeHayLugar) {
  const Serie serie = SerieDe({{0, 1}, {60, 2}, {120, 3}, {180, 4}, {240, 5}});
  // The neighbours outside the window are there for the lines that lead to them.
  EXPECT_THAT(Momentos(Reducir(serie, Ventana(50, 130), 800)), ElementsAre(0, 60, 120, 180));
  EXPECT_THAT(Momentos(Reducir(serie, Ventana(70, 80), 800)), ElementsAre(60, 120));
  EXPECT_TRUE(Reducir(serie, Ventana(300, 400), 800).empty());
  EXPECT_EQ(Reducir(serie, Ventana(120, 120), 800).size(), 3U);
  EXPECT_THAT(TramosEn(serie, Ventana(50, 130)), ElementsAre(TramoSerie{1, 3}));
}

TEST(PruebaReduccion, NadaSeUneSobreUnHuecoNiUnRetroceso) {
  const double nada = std::nan("");
  const Serie hueco = SerieDe({{0, 1}, {60, 2}, {600, 3}, {660, nada}, {720, 5}, {780, 6}});
  EXPECT_THAT(Comienzos(Reducir(hueco, Ventana(0, 800), 800)), ElementsAre(0, 2, 3));
  const Serie retroceso = SerieDe({{0, 1}, {60, 2}, {120, 3}, {30, 7}, {90, 8}});
  const auto pasos = Reducir(retroceso, Ventana(0, 120), 800);
  EXPECT_THAT(Momentos(pasos), ElementsAre(0, 60, 120, 30, 90));
  EXPECT_THAT(Comienzos(pasos), ElementsAre(0, 3));
}

TEST(PruebaReduccion, TramosDeUnPuntoEnUnaColumnaSeVenComoUno) {
  std::vector<std::pair<std::int64_t, double>> puntos;
  for (std::int64_t i = 0; i < 1000; ++i)
    puntos.emplace_back(i * 60, i % 2 == 0 ? std::nan("") : static_cast<double>(i));
  const Serie serie = SerieDe(puntos);
  ASSERT_EQ(serie.Tramos().size(), 500U);
  const auto pasos = Reducir(serie, Ventana(0, 1000 * 60), 10);
  ASSERT_EQ(pasos.size(), 10U);
  EXPECT_EQ(pasos.front().abajo, 1);
  EXPECT_EQ(pasos.front().arriba, 99);
  EXPECT_EQ(pasos.back().arriba, 999);
}

}  // namespace
}  // namespace utr
