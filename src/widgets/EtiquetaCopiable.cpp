#include "widgets/EtiquetaCopiable.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

#include "widgets/Temas.h"

namespace utr {
namespace {

constexpr int kGrueso = 2;
constexpr double kRedondeo = 2.5;

}  // namespace

EtiquetaCopiable::EtiquetaCopiable(const QString& nombre, QWidget* parent) : QLabel(parent) {
  setObjectName(nombre);
  setTextFormat(Qt::PlainText);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFocusPolicy(Qt::NoFocus);
  setWordWrap(true);
  setIndent(2 * kGrueso);  // the outline leaves the first letter clear
}

void EtiquetaCopiable::Poner(const QString& texto) {
  setText(texto);
  setFocusPolicy(texto.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
}

bool EtiquetaCopiable::event(QEvent* evento) {
  // Accepted, the key comes here ahead of what the window has for it.
  if (evento->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(evento)->matches(QKeySequence::Copy)) {
    evento->setAccepted(hasSelectedText());
    return true;
  }
  return QLabel::event(evento);
}

void EtiquetaCopiable::focusInEvent(QFocusEvent* evento) {
  QLabel::focusInEvent(evento);
  if (evento->reason() == Qt::TabFocusReason || evento->reason() == Qt::BacktabFocusReason)
    setSelection(0, static_cast<int>(text().size()));
  update();
}

void EtiquetaCopiable::paintEvent(QPaintEvent* evento) {
  QLabel::paintEvent(evento);
  if (!hasFocus()) return;
  QPainter pintor(this);
  pintor.setRenderHint(QPainter::Antialiasing);
  pintor.setPen(QPen(ColorDe(Matiz::kAcento, palette()), kGrueso));
  constexpr double kMedio = kGrueso / 2.0;
  pintor.drawRoundedRect(QRectF(rect()).adjusted(kMedio, kMedio, -kMedio, -kMedio), kRedondeo, kRedondeo);
}

}  // namespace utr
