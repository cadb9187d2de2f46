#pragma once

#include <qcustomplot.h>

#include <QStringList>

// What stands at the axes of a plot, as far as it has room. Plots are as low as the operator's screen makes them, and
// letters as large as he needs them.
namespace utr {

// Pixels that the values have from top to bottom in a canvas so high, whose dates are written in that letter.
double AltoDeValores(int alto, const QFont& letra);

// Numbers at an axis of values: round ones, never so many that one stands on another.
class MarcasDeValores : public QCPAxisTicker {
 public:
  // The axis whose numbers they are, which must outlive them.
  explicit MarcasDeValores(const QCPAxis* eje) : eje_(eje) {}

 protected:
  double getTickStep(const QCPRange& rango) override;

 private:
  const QCPAxis* eje_;
};

// Dates at an axis of time, in two lines, never so many that one touches another.
class MarcasDeTiempo : public QCPAxisTickerDateTime {
 public:
  // The axis whose dates they are, which must outlive them.
  explicit MarcasDeTiempo(const QCPAxis* eje) : eje_(eje) {}

 protected:
  double getTickStep(const QCPRange& rango) override;

 private:
  const QCPAxis* eje_;
};

// The first of those captions, longest first, that has room in so many pixels; the last one where none has.
QString RotuloQueCabe(const QStringList& rotulos, const QFont& letra, double espacio);

}  // namespace utr
