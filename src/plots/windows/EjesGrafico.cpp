#include "plots/windows/EjesGrafico.h"

#include <QFontMetricsF>
#include <algorithm>

namespace utr {
namespace {

constexpr double kLetrasBajoElEje = 2.3;   // two lines of a date and the marks above them
constexpr double kLetrasSobreElEje = 0.6;  // the upper half of a number at the top, and a rim
constexpr double kLetrasPorMarca = 1.15;
constexpr double kASiguiente = 1.6;  // from one of 1, 2, 2.5, 5 and 10 to the next one
constexpr double kFechasPorMarca = 1.7;
constexpr int kMarcasALoSumo = 5;

}  // namespace

double AltoDeValores(int alto, const QFont& letra) {
  return std::max(1.0, alto - (kLetrasBajoElEje + kLetrasSobreElEje) * QFontMetricsF(letra).height());
}

// Reckoned with the canvas: while the marks are reckoned, the place of the curves still has the size of the last time.
double MarcasDeValores::getTickStep(const QCPRange& rango) {
  const QFont letra = eje_->tickLabelFont();
  const double alto = AltoDeValores(eje_->parentPlot()->viewport().height(), letra);
  const double minimo = rango.size() * kLetrasPorMarca * QFontMetricsF(letra).height() / alto;
  double paso = QCPAxisTicker::getTickStep(rango);
  while (paso < minimo) paso = cleanMantissa(paso * kASiguiente);
  return paso;
}

double MarcasDeTiempo::getTickStep(const QCPRange& rango) {
  double fecha = 1;
  for (QString renglon : dateTimeFormat().split('\n')) {
    for (QChar& letra : renglon) letra = letra.isLetter() ? QChar('0') : letra;
    fecha = std::max(fecha, QFontMetricsF(eje_->tickLabelFont()).horizontalAdvance(renglon));
  }
  setTickCount(std::clamp(static_cast<int>(eje_->axisRect()->width() / (kFechasPorMarca * fecha)), 1, kMarcasALoSumo));
  return QCPAxisTickerDateTime::getTickStep(rango);
}

QString RotuloQueCabe(const QStringList& rotulos, const QFont& letra, double espacio) {
  const QFontMetricsF medida(letra);
  const auto cabe = [&](const QString& rotulo) { return medida.horizontalAdvance(rotulo) <= espacio; };
  const auto cual = std::find_if(rotulos.begin(), rotulos.end(), cabe);
  return cual == rotulos.end() ? rotulos.value(rotulos.size() - 1) : *cual;
}

}  // namespace utr
