#pragma once

#include <vector>

#include "retrieved/series/Serie.h"

namespace utr {

// A span of time in seconds, its ends included.
struct VentanaTiempo {
  double desde = 0;
  double hasta = 0;
};

// What falls on one column of pixels of a drawing.
struct PasoReducido {
  double momento = 0;  // of the point; of the middle of the column where there are several
  double primero = 0;  // values: the first and the last one, the lowest and the highest
  double ultimo = 0;
  double abajo = 0;
  double arriba = 0;
  double banda_abajo = 0;  // of the extremes of the intervals and the values; not a number without extremes
  double banda_arriba = 0;
  double no_validado = 0;  // the first value that wasn't validated; not a number without any
  bool sigue = false;      // a line joins it with the one before
};

// What there is to draw of a series in a span of time on so many columns of pixels: no value that would stand out is
// lost, whatever the number of points, and no gap of a column or more is bridged. Points just outside the span are
// there where a line leads to them.
std::vector<PasoReducido> Reducir(const Serie& serie, const VentanaTiempo& ventana, int columnas);

// The stretches of points that lie in the span.
std::vector<TramoSerie> TramosEn(const Serie& serie, const VentanaTiempo& ventana);

}  // namespace utr
