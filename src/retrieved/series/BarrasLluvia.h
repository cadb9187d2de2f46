#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "retrieved/series/Reduccion.h"
#include "retrieved/series/Serie.h"

// Rain as the bars of a drawing. A record says what fell since the one before; where too many are in sight for a bar
// each, a bar is the sum of those of a round lapse of time, and is said to be.
namespace utr {

// What fell in a lapse: the records behind `desde` up to `hasta`.
struct BarraLluvia {
  std::int64_t desde = 0;
  std::int64_t hasta = 0;
  double suma = 0;            // in the unit of the values
  std::size_t registros = 0;  // with a value
  bool no_validados = false;  // some of them weren't validated
};

// Seconds that each bar stands for while that span is in sight; nothing: each record has a bar of its own. It depends
// on the length of the span, on how often is recorded and on how many records are there, and on no number of pixels, so
// that screen and paper tell the same.
std::optional<std::int64_t> SegundosPorBarra(const Serie& serie, const VentanaTiempo& ventana);

// The bars that such a span touches, each with all of its records, in the order of time; none where no record has a
// value. Lapses are counted from midnight: those of days are days.
std::vector<BarraLluvia> BarrasDe(const Serie& serie, const VentanaTiempo& ventana, std::int64_t segundos);

// The one in which that moment lies; nothing without one.
std::optional<BarraLluvia> BarraEn(const Serie& serie, double momento, std::int64_t segundos);

// "10 min", "6 h", "1 día".
std::string TextoLapsoDeBarra(std::int64_t segundos);

// "PLV Lluvia: 15/03/2026 06:00:00 a 15/03/2026 12:00:00, 12.400 mm en 36 registros".
std::string TextoBarra(const Serie& serie, const BarraLluvia& barra);

}  // namespace utr
