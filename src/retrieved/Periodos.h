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

// From when to when such a span goes, both ends included; it ends with the last minute of today, so that nothing is
// missed of a unit whose clock is ahead. Whoever knows only days takes those that it touches. Nothing for the span
// since a visit that isn't known, or lies in the future.
std::optional<Lapso> LapsoDe(Periodo periodo, const FechaHora& ahora, const std::optional<FechaHora>& visita);

}  // namespace utr
