#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "services/Diario.h"
#include "session/DatosVisita.h"

class QPagedPaintDevice;
class QPainter;
class QRectF;

namespace utr {

// A plot that was on show, to be painted once more: into that rectangle, which it fills.
struct FiguraInforme {
  std::string titulo;
  std::string fuente;  // whose records it shows, and of when; stands beneath it
  std::function<void(QPainter& pintor, const QRectF& lugar)> pintar;
};

// What the report of a visit holds.
struct InformeVisita {
  std::string estacion;  // as it is called: "70, Río Grande"
  std::string dia;
  std::string impreso;  // when
  DatosVisita datos{};
  std::vector<Asiento> asientos{};
  std::vector<FiguraInforme> figuras{};
};

// Draws the report in black on as many pages as it takes: who, where and when, the notes, the entries as a table whose
// titles stand on each page, then the plots, two to a page; at the foot of each page station, day and page. Begins the
// painter and leaves it to the caller to end. Gives the number of pages; 0 when the device couldn't be opened or the
// work was cancelled. Tells the pages that are drawn.
int DibujarInforme(QPagedPaintDevice& dispositivo, QPainter& pintor, const InformeVisita& informe, Progreso& progreso);

// What the report calls itself: that entries are of a unit to practise with is part of it.
const char* TituloDeInforme(const InformeVisita& informe);

}  // namespace utr
