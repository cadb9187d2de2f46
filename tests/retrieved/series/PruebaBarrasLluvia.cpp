#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Fechas.h"
#include "retrieved/series/BarrasLluvia.h"
#include "support/Tablas.h"

namespace utr {
namespace {

constexpr std::int64_t kDia = 86400;
constexpr std::int64_t kComienzo = 1773532800;  // 15/03/2026

struct Registro {
  std::int64_t momento;  // seconds from 15/03/2026
  const char* valor;
  const char* validacion = "1";
};

Serie LluviaDe(const std::vector<Registro>& registros, double minutos) {
  const auto tabla = TablaDeTextos({"Fecha", "Canal", "Valor", "Validacion", "Unidad", "Descripcion"});
  for (const Registro& registro : registros) {
    tabla->AddNew();
    const std::string fecha = TextoFechaHora(FechaDeSegundos(kComienzo + registro.momento));
    std::size_t campo = 0;
    for (const char* texto : {fecha.c_str(), "PLV", registro.valor, registro.validacion, "mm", "Lluvia"})
      tabla->Set(campo++, texto);
  }
  tabla->UpdateBatch();
  return Serie(*tabla, {.canal = {}, .minutos = minutos});
}

// One record every so many minutes, each of 0.2 mm.
Serie Pareja(int cuantos, int minutos) {
  std::vector<Registro> registros;
  for (int i = 1; i <= cuantos; ++i) registros.push_back({std::int64_t{i} * minutos * 60, "0.2"});
  return LluviaDe(registros, minutos);
}

VentanaTiempo Ventana(double desde, double hasta) {
  return {static_cast<double>(kComienzo) + desde, static_cast<double>(kComienzo) + hasta};
}

TEST(BarrasLluvia, ElLapsoEsRedondoYEnteroEnRegistros) {
  struct Caso {
    int minutos;
    double en_vista;
    std::optional<std::int64_t> segundos;
    const char* dicho;
  };
  const Caso casos[] = {
      {10, 150 * 600.0, std::nullopt, ""},
      {10, 150 * 600.0 + 1, 1800, "30 min"},
      {1, 86400 * 1.04, 600, "10 min"},
      {7, 86400, 600, "10 min"},
      {25, 4.0 * kDia, 3600, "1 h"},
      {10, 30.0 * kDia, 6 * 3600, "6 h"},
      {10, 365.0 * kDia, 5 * kDia, "5 días"},
      {10, 90.0 * kDia, kDia, "1 día"},
      {10, 200000.0 * kDia, 365 * kDia, "365 días"},
  };
  for (const Caso& caso : casos) {
    const auto segundos = SegundosPorBarra(Pareja(2, caso.minutos), Ventana(0, caso.en_vista));
    EXPECT_EQ(segundos, caso.segundos) << caso.minutos << ", " << caso.en_vista;
    if (segundos) {
      EXPECT_EQ(TextoLapsoDeBarra(*segundos), caso.dicho);
    }
  }
  EXPECT_EQ(SegundosPorBarra(Pareja(2000, 1), Ventana(0, kDia)), 600);
  EXPECT_TRUE(SegundosPorBarra(LluviaDe(std::vector<Registro>(301, {60, "1"}), 600), Ventana(0, kDia)))
      << "records that come closer than they should still get no bar each";
}

TEST(BarrasLluvia, UnaBarraEsLaSumaDeSusRegistrosYNingunoSePierde) {
  const Serie serie = Pareja(6 * 24 * 30, 10);  // a month
  for (const std::int64_t segundos : {std::int64_t{1800}, std::int64_t{6 * 3600}, kDia, 30 * kDia}) {
    const auto barras = BarrasDe(serie, Ventana(0, 30.0 * kDia), segundos);
    double suma = 0;
    for (const BarraLluvia& barra : barras) suma += barra.suma;
    EXPECT_NEAR(suma, *serie.Cifras().lluvia, 1e-6) << segundos;
  }
  const auto dias = BarrasDe(serie, Ventana(0, 30.0 * kDia), kDia);
  ASSERT_EQ(dias.size(), 30U);
  EXPECT_EQ(dias[1].desde, kComienzo + kDia);
  EXPECT_EQ(dias[1].registros, 144U) << "midnight's own record is of the day that ends";
  EXPECT_NEAR(dias[1].suma, 28.8, 1e-9);
  const auto orilla = BarrasDe(serie, Ventana(kDia + 40000.0, kDia + 40001.0), kDia);
  ASSERT_EQ(orilla.size(), 1U);
  EXPECT_EQ(orilla[0].registros, 144U) << "whole, though little of it is in sight";
}

TEST(BarrasLluvia, HuecosYUnRelojQueRetrocedeNoLaFalsean) {
  const Serie serie =
      LluviaDe({{600, "1"}, {1200, "N/D"}, {1800, "2", "0"}, {7200, "4"}, {600, "8"}, {1200, "16"}}, 10);
  const auto barras = BarrasDe(serie, Ventana(0, 7200), 3600);
  ASSERT_EQ(barras.size(), 2U);
  EXPECT_EQ(barras[0].suma, 27);
  EXPECT_EQ(barras[0].registros, 4U);
  EXPECT_TRUE(barras[0].no_validados);
  EXPECT_EQ(barras[1].suma, 4);
  EXPECT_FALSE(barras[1].no_validados);
  const auto una = BarraEn(serie, static_cast<double>(kComienzo) + 100, 3600);
  ASSERT_TRUE(una);
  EXPECT_EQ(TextoBarra(serie, *una),
            "PLV Lluvia: 15/03/2026 00:00:00 a 15/03/2026 01:00:00, 27.000 mm en 4 registros, alguno no validado");
  EXPECT_FALSE(BarraEn(serie, static_cast<double>(kComienzo) - 100, 3600)) << "no record lies there";
  EXPECT_TRUE(BarrasDe(LluviaDe({{600, "N/D"}}, 10), Ventana(0, 7200), 3600).empty());
}

}  // namespace
}  // namespace utr
