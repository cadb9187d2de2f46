#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/Fechas.h"

namespace utr {

// The spans that an operator asks for with one click.
enum class Periodo : std::uint8_t { kHoy, kUltimas24Horas, kUltimos7Dias, kTodo, kDesdeLaVisita };

struct PeriodoConNombre {
  Periodo periodo;
  const char* nombre;
};
inline constexpr std::array kPeriodos{
    PeriodoConNombre{Periodo::kHoy, "Hoy"}, PeriodoConNombre{Periodo::kUltimas24Horas, "Últimas 24 h"},
    PeriodoConNombre{Periodo::kUltimos7Dias, "Últimos 7 días"}, PeriodoConNombre{Periodo::kTodo, "Todo"},
    PeriodoConNombre{Periodo::kDesdeLaVisita, "Desde la última visita"}};

struct Lapso {
  FechaHora desde;
  FechaHora hasta;
  bool operator==(const Lapso&) const = default;
};

// From when to when such a span goes, both ends included. `unidad`: what the clock of the unit shows at that moment,
// where it is known: records bear its times. The last hours and days are counted back to the minute, from that clock
// where it is known. All end with the last second of today, or of the unit's today where that is later: what a clock
// stamped that was ahead until a moment ago isn't missed. Whoever knows only days takes those that a span touches.
// Nothing for the span since a visit that isn't known, or lies in the future.
std::optional<Lapso> LapsoDe(Periodo periodo, const FechaHora& ahora, const std::optional<FechaHora>& visita,
                             const std::optional<FechaHora>& unidad = std::nullopt);

}  // namespace utr
