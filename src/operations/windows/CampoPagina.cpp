#include "operations/windows/CampoPagina.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpression>

namespace utr {
namespace {

constexpr int kBordes = 12;

}  // namespace

CampoPagina::CampoPagina(const char* nombre, int renglones, QWidget* parent) : QPlainTextEdit(parent) {
  setObjectName(QString::fromLatin1(nombre));
  setTabChangesFocus(true);
  setWordWrapMode(QTextOption::WrapAnywhere);
  setFixedHeight(renglones * fontMetrics().lineSpacing() + kBordes);
}

void CampoPagina::keyPressEvent(QKeyEvent* evento) {
  const bool salto = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
  salto ? evento->ignore() : QPlainTextEdit::keyPressEvent(evento);
}

void CampoPagina::insertFromMimeData(const QMimeData* datos) {
  static const QRegularExpression kSaltos(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]+"));
  if (datos->hasText()) insertPlainText(datos->text().remove(kSaltos));
}

}  // namespace utr
