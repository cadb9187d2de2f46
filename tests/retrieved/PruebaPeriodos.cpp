#include <gtest/gtest.h>

#include "retrieved/Periodos.h"

namespace utr {
namespace {

constexpr FechaHora kAhora{2026, 3, 1, 10, 30, 15};
constexpr FechaHora kFin{2026, 3, 1, 23, 59, 0};
constexpr FechaHora kVisita{2026, 2, 10, 17, 5, 0};

TEST(Periodos, CadaUnoVaDeSuComienzoAlFinDeHoy) {
  const std::pair<Periodo, FechaHora> casos[] = {
      {Periodo::kHoy, {2026, 3, 1, 0, 0, 0}},
      {Periodo::kUltimas24Horas, {2026, 2, 28, 10, 30, 15}},
      {Periodo::kUltimos7Dias, {2026, 2, 22, 10, 30, 15}},
      {Periodo::kTodo, {2000, 1, 1, 0, 0, 0}},
      {Periodo::kDesdeLaVisita, kVisita},
  };
  for (const auto& [periodo, desde] : casos)
    EXPECT_EQ(LapsoDe(periodo, kAhora, kVisita), (Lapso{desde, kFin})) << static_cast<int>(periodo);
  EXPECT_FALSE(LapsoDe(Periodo::kDesdeLaVisita, kAhora, std::nullopt));
  EXPECT_FALSE(LapsoDe(Periodo::kDesdeLaVisita, kAhora, FechaHora{2026, 3, 1, 10, 30, 16}));
}

}  // namespace
}  // namespace utr
