#pragma once

#include <QString>
#include <functional>
#include <utility>
#include <vector>

class QPainter;
class QRectF;

namespace utr {

// A plot as it was last on show, for whoever prints it again.
struct GraficoVisto {
  QString titulo;   // "Datos históricos de la UTR: EA01 Nivel del río"
  QString fuente;   // where its records are from: the station, or the file, which may be of any; empty: not known
  QString periodo;  // the span that was asked for, and what of it was in sight
  // Paints the plot (curves and axes, without title) into that rectangle, in the colours of paper. May be called at any
  // time while the program runs: it holds its own data. The painter is left as it was.
  std::function<void(QPainter& pintor, const QRectF& lugar)> pintar;
};

// The plots last on show in this run of the program, one for each window that shows them, the newest at the end. Made
// once beside ModRTU, which hands it down.
class GraficosALaVista {
 public:
  // Puts the plot of a window in the place of the former one.
  void Poner(const QString& ventana, GraficoVisto grafico);
  // The plots are of that unit from now on: those of another one go.
  void SonDe(const QString& unidad);
  // The window shows none any more.
  void Quitar(const QString& ventana);

  const std::vector<std::pair<QString, GraficoVisto>>& Todos() const noexcept { return graficos_; }

 private:
  QString unidad_;
  std::vector<std::pair<QString, GraficoVisto>> graficos_;
};

}  // namespace utr
