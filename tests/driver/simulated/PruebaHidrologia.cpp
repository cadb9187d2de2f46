#include <gtest/gtest.h>

#include "base/Fechas.h"
#include "driver/simulated/unit/Hidrologia.h"

namespace utr::simulada {
namespace {

constexpr std::int64_t kHora = 3600;
constexpr std::int64_t kDia = kSegundosDia;
const std::int64_t kAhora = Segundos({2026, 3, 15, 10, 0, 0});

// One look an hour back over so many days.
template <class Mirar>
void CadaHora(int dias, Mirar mirar) {
  for (std::int64_t t = kAhora - dias * kDia; t <= kAhora; t += kHora) mirar(t);
}

TEST(Hidrologia, DosCorridasCoincidenYDosSemillasNo) {
  const Hidrologia a({}), b({}), c({.semilla = 1, .fijos = {}});
  int distintos = 0;
  CadaHora(20, [&](std::int64_t t) {
    for (int canal = 1; canal <= 23; ++canal) {
      ASSERT_EQ(a.Valor(canal, t), b.Valor(canal, t));
      distintos += a.Valor(canal, t) != c.Valor(canal, t) ? 1 : 0;
    }
  });
  EXPECT_GT(distintos, 1000);
}

TEST(Hidrologia, ElPasadoNoDependeDeCuandoSeMira) {
  const Hidrologia ida({}), vuelta({});
  std::vector<double> valores;
  CadaHora(5, [&](std::int64_t t) { valores.push_back(ida.Valor(1, t)); });
  for (std::int64_t t = kAhora; !valores.empty(); t -= kHora, valores.pop_back())
    EXPECT_EQ(vuelta.Valor(1, t), valores.back());
}

TEST(Hidrologia, LosVuelcosDeTramosSeguidosSeSuman) {
  const Hidrologia h({});
  int sueltos = 0;
  int juntos = 0;
  for (std::int64_t t = kAhora - 40 * kDia; t < kAhora; t += kDia) {
    for (std::int64_t s = t; s < t + kDia; s += 600) {
      const int vuelcos = h.VuelcosEntre(s, s + 600, 0.2);
      ASSERT_GE(vuelcos, 0);
      sueltos += vuelcos;
    }
    juntos += h.VuelcosEntre(t, t + kDia, 0.2);
  }
  EXPECT_EQ(sueltos, juntos);
  EXPECT_GT(juntos * 0.2, 75) << "a month has a large storm";
}

TEST(Hidrologia, LaCrecidaVieneDespuesDeLaLluvia) {
  const Hidrologia h({});
  std::int64_t mas_lluvia = 0, mas_nivel = 0;
  double lluvia = 0, nivel = 0, bajo = 100;
  CadaHora(22, [&](std::int64_t t) {
    if (h.Valor(15, t) > lluvia) lluvia = h.Valor(15, mas_lluvia = t);
    if (h.Valor(1, t) > nivel) nivel = h.Valor(1, mas_nivel = t);
    bajo = std::min(bajo, h.Valor(1, t));
  });
  EXPECT_GT(nivel, bajo + 2) << "a flood wave";
  EXPECT_LT(nivel, 10) << "inside the range of the sensor";
  EXPECT_GT(mas_nivel, mas_lluvia - kDia);
  const Hidrologia seca({.crecidas = 0, .fijos = {}});
  CadaHora(22, [&](std::int64_t t) { EXPECT_LT(seca.Valor(1, t), 1.5); });
}

TEST(Hidrologia, CadaSensorQuedaEnLoCreible) {
  const Hidrologia h({});
  const struct {
    int canal;
    double menor, mayor;
  } limites[] = {{1, 0, 10},     {2, 0, 60},   {3, 0, 360}, {4, -20, 50}, {5, 0, 100},
                 {6, 850, 1100}, {7, 0, 1500}, {8, 0, 5},   {10, 9, 16}};
  for (const auto& l : limites) {
    CadaHora(60, [&](std::int64_t t) {
      const double v = h.Valor(l.canal, t);
      const auto extremos = h.ExtremosDe(l.canal, t);
      EXPECT_TRUE(v >= l.menor && v <= l.mayor) << l.canal << " " << v;
      EXPECT_TRUE(extremos.arriba >= 0 && extremos.abajo >= 0) << l.canal;
    });
  }
  const std::int64_t noche = kAhora - 8 * kHora, mediodia = kAhora + 3 * kHora;
  EXPECT_EQ(h.Valor(7, noche), 0);
  EXPECT_GT(h.Valor(7, mediodia), 0);
}

TEST(Hidrologia, UnSensorFallaYHayUnHueco) {
  const Hidrologia h({});
  int fallas = 0, huecos = 0;
  CadaHora(30, [&](std::int64_t t) {
    fallas += h.Falla(5, t) ? 1 : 0;
    huecos += h.Hueco(t) ? 1 : 0;
    EXPECT_FALSE(h.Falla(1, t));
  });
  EXPECT_GE(fallas, 14);
  EXPECT_GE(huecos, 5);
  const Hidrologia sana({.falla_de_sensor = false, .hueco = false, .fijos = {{1, 7.5}}});
  CadaHora(30, [&](std::int64_t t) { EXPECT_FALSE(sana.Falla(5, t) || sana.Hueco(t)); });
  EXPECT_EQ(sana.Valor(1, kAhora), 7.5);
}

}  // namespace
}  // namespace utr::simulada
