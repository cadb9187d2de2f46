#include "widgets/CampoNumero.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <algorithm>
#include <memory>

#include "widgets/Iconos.h"

namespace utr {

CampoNumero::CampoNumero(const QString& nombre, bool decimal, QWidget* parent)
    : QLineEdit(parent), decimal_(decimal), marca_(new QAction(IconoDe("aviso"), QString(), this)) {
  setObjectName(nombre);
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
  if (evento->matches(QKeySequence::Paste)) {
    Pegar();
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

void CampoNumero::inputMethodEvent(QInputMethodEvent* evento) {
  const QString texto = Admitido(evento->commitString());
  if (texto == evento->commitString()) return QLineEdit::inputMethodEvent(evento);
  QApplication::beep();
  QInputMethodEvent filtrado(evento->preeditString(), evento->attributes());
  filtrado.setCommitString(texto, evento->replacementStart(), evento->replacementLength());
  QLineEdit::inputMethodEvent(&filtrado);
}

void CampoNumero::contextMenuEvent(QContextMenuEvent* evento) {
  const std::unique_ptr<QMenu> menu(createStandardContextMenu());
  if (auto* pegar = menu->findChild<QAction*>(QStringLiteral("edit-paste"))) {
    pegar->disconnect(this);
    disconnect(pegar, &QAction::triggered, nullptr, nullptr);
    connect(pegar, &QAction::triggered, this, &CampoNumero::Pegar);
  }
  menu->exec(evento->globalPos());
}

// The middle button pastes what is selected elsewhere.
void CampoNumero::mouseReleaseEvent(QMouseEvent* evento) {
  const QClipboard* portapapeles = QApplication::clipboard();
  if (evento->button() != Qt::MiddleButton || !portapapeles->supportsSelection() || isReadOnly()) {
    return QLineEdit::mouseReleaseEvent(evento);
  }
  deselect();
  setCursorPosition(cursorPositionAt(evento->position().toPoint()));
  Insertar(portapapeles->text(QClipboard::Selection));
}

void CampoNumero::dropEvent(QDropEvent* evento) {
  if (isReadOnly() || !evento->mimeData()->hasText()) return;
  deselect();
  setCursorPosition(cursorPositionAt(evento->position().toPoint()));
  Insertar(evento->mimeData()->text());
  evento->setDropAction(Qt::CopyAction);
  evento->accept();
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

void CampoNumero::Insertar(const QString& texto) {
  // Control characters are keys, nothing to stand in a text.
  QString queda = Admitido(texto);
  queda.removeIf([](QChar letra) { return letra < QChar(32) || letra == QChar(127); });
  if (queda != texto) QApplication::beep();
  if (!queda.isEmpty()) insert(queda);
}

void CampoNumero::Pegar() {
  if (!isReadOnly()) Insertar(QApplication::clipboard()->text());
}

}  // namespace utr
