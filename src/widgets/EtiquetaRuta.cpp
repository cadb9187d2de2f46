#include "widgets/EtiquetaRuta.h"

#include <QPainter>

namespace utr {

EtiquetaRuta::EtiquetaRuta(const char* nombre, QWidget* parent) : QLabel(parent) {
  setObjectName(QString::fromLatin1(nombre));
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void EtiquetaRuta::Poner(const QString& ruta) {
  setText(ruta);
  setToolTip(ruta);
}

void EtiquetaRuta::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  pintor.setPen(palette().color(foregroundRole()));
  pintor.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter,
                  fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()));
}

}  // namespace utr
