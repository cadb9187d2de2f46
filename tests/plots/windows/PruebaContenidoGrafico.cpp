#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plots/windows/BancoGraficos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr VentanaTiempo kSiempre{0, 1e12};

LimiteSerie Alarma(double valor) {
  return {ClaseLimite::kAlarma, "AMax", "Alarma de máxima", valor};
}

TEST(PruebaContenidoGrafico, ElEjeAcogeLosLimitesCercanosYNoLosLejanos) {
  struct Caso {
    const char* que;
    CanalGrafico canal;
    double abajo;
    double arriba;
  };
  const Muestras kDeUnoACinco = {{"10:00", "1"}, {"10:10", "5"}};
  const Caso casos[] = {
      {"values with room", CanalDe("EA01", kDeUnoACinco), 1 - 0.32, 5 + 0.32},
      {"a near limit", CanalDe("EA01", kDeUnoACinco, {Alarma(9)}), 1 - 0.64, 9 + 0.64},
      {"a far one", CanalDe("EA01", kDeUnoACinco, {Alarma(9.1), Alarma(-1000)}), 1 - 0.32, 5 + 0.32},
      {"one record", CanalDe("EA01", {{"10:00", "10"}}), 10 - 0.8, 10 + 0.8},
      {"zeros", CanalDe("EA01", {{"10:00", "0"}, {"10:10", "0"}}), -0.5, 0.5},
      {"nothing but N/D", CanalDe("EA01", {{"10:00", "N/D"}}), 0, 1},
      {"rain from the top, both records in one bar", CanalDe("PLV", {{"10:00", "9"}, {"10:10", "0.9"}}), 0, 22},
      {"no rain", CanalDe("PLV", {{"10:00", "0"}}), 0, 1},
  };
  for (const Caso& caso : casos) {
    const Extension extension = ExtensionDe(caso.canal, kSiempre);
    EXPECT_NEAR(extension.abajo, caso.abajo, 1e-9) << caso.que;
    EXPECT_NEAR(extension.arriba, caso.arriba, 1e-9) << caso.que;
  }
}

TEST(PruebaContenidoGrafico, LaBarraQueEntraPorElBordeCabeEnElEje) {
  const CanalGrafico lluvia = CanalDe("PLV", {{"10:00", "1"}, {"10:10", "9"}, {"10:20", "90"}});
  const auto desde = static_cast<double>(lluvia.serie->Tiempos()[0]);
  EXPECT_NEAR(ExtensionDe(lluvia, {desde, desde + 300}).arriba, 20, 1e-9);
}

TEST(PruebaContenidoGrafico, LosLimitesSonDeUnRegistroYNoDeLaSumaDeVarios) {
  const CanalGrafico lluvia = CanalDe("PLV", {{"10:00", "9"}, {"10:10", "1"}}, {Alarma(5)});
  const CanalGrafico nivel = CanalDe("EA01", {{"10:00", "9"}, {"10:10", "1"}}, {Alarma(5)});
  const auto desde = static_cast<double>(lluvia.serie->Tiempos()[0]);
  EXPECT_EQ(LimitesALaVista(lluvia, {desde, desde + 600}).size(), 1U);
  EXPECT_EQ(LimitesALaVista(lluvia, kSiempre).size(), 0U);
  EXPECT_EQ(LimitesALaVista(nivel, kSiempre).size(), 1U);
}

TEST(PruebaContenidoGrafico, DiceQueNoHayNadaYPorQue) {
  EXPECT_EQ(U(PorQueNada({})), "Sin datos que graficar");
  EXPECT_EQ(U(PorQueNada(ContenidoDe({CanalDe("EA01", {})}))), "Sin datos que graficar");
  EXPECT_EQ(U(PorQueNada(ContenidoDe({CanalDe("EA01", {{"10:00", "N/D"}})}))),
            "Ninguno de los registros tiene valor (N/D)");
  EXPECT_EQ(U(PorQueNada(ContenidoDe({CanalDe("EA01", {{"10:00", "N/D"}}), CanalDe("EA02", {{"10:00", "1"}})}))), "");
}

TEST(PruebaContenidoGrafico, LosEventosVanPorSuFecha) {
  const auto tabla = TablaDeTextos(
      {"Fecha", "Hora", "Codigo", "Descripcion"},
      {{"15/03/2026", "10:00", " 31", "Lluvia"}, {"ayer", "10:00", "7", "Otro"}, {"15/03/2026", "09:00", "4", "-"}});
  const auto eventos = EventosDeTabla(*tabla);
  ASSERT_EQ(eventos.size(), 2U);
  EXPECT_EQ(U(eventos[0].texto), "4");
  EXPECT_EQ(U(eventos[1].texto), "Lluvia (31)");
}

}  // namespace
}  // namespace utr
