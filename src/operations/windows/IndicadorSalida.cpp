#include "operations/windows/IndicadorSalida.h"

#include <QPainter>

namespace utr {
namespace {

constexpr int kGrosor = 2;
constexpr QColor kLuz(0x2b, 0x8f, 0xd6);

}  // namespace

IndicadorSalida::IndicadorSalida(QWidget* parent) : QWidget(parent) {
  const int lado = fontMetrics().height() + 2 * kGrosor;
  setFixedSize(lado, lado);
}

void IndicadorSalida::Mostrar(Senal senal) {
  senal_ = senal;
  update();
}

void IndicadorSalida::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  pintor.setRenderHint(QPainter::Antialiasing);
  const QColor tinta = palette().color(QPalette::WindowText);
  const bool desconocida = senal_ == Senal::kDesconocida;
  pintor.setPen(QPen(tinta, kGrosor, desconocida ? Qt::DotLine : Qt::SolidLine));
  if (senal_ == Senal::kEncendida) pintor.setBrush(kLuz);
  pintor.drawEllipse(rect().adjusted(kGrosor, kGrosor, -kGrosor, -kGrosor));
  if (desconocida) pintor.drawText(rect(), Qt::AlignCenter, QStringLiteral("?"));
}

}  // namespace utr
