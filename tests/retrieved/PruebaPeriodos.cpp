#include <gtest/gtest.h>

#include "retrieved/Periodos.h"

namespace utr {
namespace {

constexpr FechaHora kAhora{2026, 3, 1, 10, 30, 15};
constexpr FechaHora kVisita{2026, 2, 10, 17, 5, 0};

TEST(Periodos, CadaUnoVaDeSuComienzoAlRegistroMasNuevoQuePuedeHaber) {
  constexpr FechaHora kFinDeHoy{2026, 3, 1, 23, 59, 59};
  struct Caso {
    Periodo periodo;
    std::optional<FechaHora> unidad;
    Lapso lapso;
  };
  const Caso casos[] = {
      {Periodo::kHoy, {}, {{2026, 3, 1, 0, 0, 0}, kFinDeHoy}},
      {Periodo::kUltimas24Horas, {}, {{2026, 2, 28, 10, 30, 0}, kFinDeHoy}},
      {Periodo::kUltimos7Dias, {}, {{2026, 2, 22, 10, 30, 0}, kFinDeHoy}},
      {Periodo::kTodo, {}, {{2000, 1, 1, 0, 0, 0}, kFinDeHoy}},
      {Periodo::kDesdeLaVisita, {}, {kVisita, kFinDeHoy}},
      // A unit whose clock is known tells where its last hours began, and what it has stamped ahead of now is in them.
      {Periodo::kUltimas24Horas, kAhora, {{2026, 2, 28, 10, 30, 0}, kFinDeHoy}},
      {Periodo::kUltimas24Horas, FechaHora{2026, 3, 2, 0, 4, 1}, {{2026, 3, 1, 0, 4, 0}, {2026, 3, 2, 23, 59, 59}}},
      {Periodo::kUltimos7Dias, FechaHora{2026, 2, 28, 22, 0, 59}, {{2026, 2, 21, 22, 0, 0}, kFinDeHoy}},
      {Periodo::kHoy, FechaHora{2026, 3, 2, 0, 4, 1}, {{2026, 3, 1, 0, 0, 0}, {2026, 3, 2, 23, 59, 59}}},
      {Periodo::kTodo, FechaHora{2026, 2, 28, 22, 0, 59}, {{2000, 1, 1, 0, 0, 0}, kFinDeHoy}},
  };
  for (const Caso& caso : casos)
    EXPECT_EQ(LapsoDe(caso.periodo, kAhora, kVisita, caso.unidad), caso.lapso) << static_cast<int>(caso.periodo);
  EXPECT_FALSE(LapsoDe(Periodo::kDesdeLaVisita, kAhora, std::nullopt));
  EXPECT_FALSE(LapsoDe(Periodo::kDesdeLaVisita, kAhora, FechaHora{2026, 3, 1, 10, 30, 16}));
}

}  // namespace
}  // namespace utr
