#include "shell/windows/EtiquetaEstado.h"

#include <QPainter>
#include <algorithm>

namespace utr {
namespace {

constexpr int kTrasElPunto = 3;

std::optional<Matiz> MatizDe(Tono tono) {
  switch (tono) {
    case Tono::kBien:
      return Matiz::kBien;
    case Tono::kMal:
      return Matiz::kMal;
    case Tono::kAviso:
      return Matiz::kAviso;
    case Tono::kNeutro:
      break;
  }
  return {};
}

}  // namespace

EtiquetaEstado::EtiquetaEstado(const char* nombre, QWidget* parent) : QLabel(parent) {
  setObjectName(QString::fromLatin1(nombre));
  setTextFormat(Qt::PlainText);
}

void EtiquetaEstado::Poner(const QString& texto, std::optional<Matiz> punto, bool hueco) {
  punto_ = punto;
  hueco_ = hueco;
  setText(texto);
  setToolTip(texto.trimmed());
  updateGeometry();
  update();
}

void EtiquetaEstado::Poner(const QString& texto, Tono tono) {
  Poner(texto, MatizDe(tono), tono == Tono::kMal);
}

int EtiquetaEstado::AnchoDelPunto() const {
  return punto_ ? fontMetrics().ascent() + kTrasElPunto : 0;
}

QSize EtiquetaEstado::sizeHint() const {
  const QMargins margen = contentsMargins();
  return {fontMetrics().horizontalAdvance(text()) + AnchoDelPunto() + 2 + margen.left() + margen.right(),
          fontMetrics().height() + margen.top() + margen.bottom()};
}

QSize EtiquetaEstado::minimumSizeHint() const {
  return {std::min(sizeHint().width(), AnchoDelPunto() + fontMetrics().averageCharWidth() * 6), sizeHint().height()};
}

void EtiquetaEstado::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  QRect sitio = contentsRect();
  if (punto_) {
    const QColor color = ColorDe(*punto_, palette());
    const double lado = fontMetrics().ascent() * 0.72;
    const QRectF punto(sitio.left() + 1, sitio.center().y() - lado / 2 + 0.5, lado, lado);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(QPen(color, 2));
    pintor.setBrush(hueco_ ? QBrush(Qt::NoBrush) : QBrush(color));
    pintor.drawEllipse(punto);
    sitio.setLeft(sitio.left() + AnchoDelPunto());
  }
  pintor.setPen(palette().color(QPalette::Active, QPalette::WindowText));
  pintor.drawText(sitio, Qt::AlignLeft | Qt::AlignVCenter,
                  fontMetrics().elidedText(text(), Qt::ElideRight, sitio.width()));
}

}  // namespace utr
