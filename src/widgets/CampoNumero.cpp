#include "widgets/CampoNumero.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <iterator>

#include "widgets/Iconos.h"

namespace utr {

CampoNumero::CampoNumero(const QString& nombre, bool decimal, QWidget* parent)
    : QLineEdit(parent), decimal_(decimal), marca_(new QAction(IconoDe("aviso"), QString(), this)) {
  setObjectName(nombre);
  connect(this, &QLineEdit::textEdited, this, &CampoNumero::Limpiar);
  connect(this, &QLineEdit::textChanged, this, [this] { antes_ = text(); });
}

void CampoNumero::Marcar(const QString& lineas) {
  // Added and taken out: a hidden one still shows, faded.
  if (lineas.isEmpty()) {
    removeAction(marca_);
  } else if (!Marcado()) {
    addAction(marca_, QLineEdit::TrailingPosition);
  }
  marca_->setToolTip(lineas);
  setToolTip(lineas);
  setAccessibleDescription(lineas);
}

bool CampoNumero::Marcado() const {
  return actions().contains(marca_);
}

void CampoNumero::focusInEvent(QFocusEvent* evento) {
  QLineEdit::focusInEvent(evento);
  // Later than the press of the mouse that may have brought the focus, which would take the selection off.
  if (evento->reason() != Qt::PopupFocusReason) {
    QMetaObject::invokeMethod(this, &QLineEdit::selectAll, Qt::QueuedConnection);
  }
}

void CampoNumero::keyPressEvent(QKeyEvent* evento) {
  if (evento->matches(QKeySequence::Undo) || evento->matches(QKeySequence::Redo)) {
    deshace_ = true;
    QLineEdit::keyPressEvent(evento);
    deshace_ = false;
    return;
  }
  if (evento->modifiers() == Qt::NoModifier || evento->modifiers() == Qt::KeypadModifier) {
    if (evento->key() == Qt::Key_Up || evento->key() == Qt::Key_Down) {
      emit Paso(evento->key() == Qt::Key_Up ? 1 : -1);
      return;
    }
  }
  const QString texto = evento->text();
  const bool orden =
      evento->modifiers() == Qt::ControlModifier || evento->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
  if (!orden && Admitido(texto) != texto) {
    QApplication::beep();
    evento->accept();
    return;
  }
  QLineEdit::keyPressEvent(evento);
}

bool CampoNumero::Admite(QChar letra) const {
  if (letra < QChar(32) || letra == QChar(127)) return true;
  if (letra >= QChar('0') && letra <= QChar('9')) return true;
  return decimal_ && (letra == QChar('-') || letra == QChar('.') || letra == QChar(','));
}

QString CampoNumero::Admitido(const QString& texto) const {
  QString queda;
  std::copy_if(texto.begin(), texto.end(), std::back_inserter(queda), [this](QChar letra) { return Admite(letra); });
  return queda;
}

// Whatever way a text came in (pasted by key or menu, dropped, composed), the part that is new keeps what can be typed.
void CampoNumero::Limpiar(const QString& texto) {
  if (deshace_) return;
  const auto [viejo, nuevo] = std::mismatch(antes_.begin(), antes_.end(), texto.begin(), texto.end());
  const qsizetype inicio = nuevo - texto.begin();
  const auto [cola_vieja, cola] = std::mismatch(antes_.rbegin(), std::make_reverse_iterator(viejo), texto.rbegin(),
                                                std::make_reverse_iterator(nuevo));
  const qsizetype final = cola - texto.rbegin();
  const QString puesto = texto.mid(inicio, texto.size() - inicio - final);
  // Control characters are keys, nothing to stand in a text.
  QString queda = Admitido(puesto);
  queda.removeIf([](QChar letra) { return letra < QChar(32) || letra == QChar(127); });
  if (queda == puesto) return;
  QApplication::beep();
  setText(texto.left(inicio) + queda + texto.right(final));
  setCursorPosition(static_cast<int>(inicio + queda.size()));
}

}  // namespace utr
