#include "widgets/Campos.h"

#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>

namespace utr {

CampoTexto::CampoTexto(const char* nombre, QWidget* parent) : QLineEdit(parent) {
  setObjectName(QString::fromLatin1(nombre));
}

void CampoTexto::focusInEvent(QFocusEvent* evento) {
  QLineEdit::focusInEvent(evento);
  // Later than the press of the mouse that may have brought the focus, which would take the selection off.
  QMetaObject::invokeMethod(this, &QLineEdit::selectAll, Qt::QueuedConnection);
}

CampoDigitos::CampoDigitos(const char* nombre, int cifras, QWidget* parent) : CampoTexto(nombre, parent) {
  setMaxLength(cifras);
  // What is pasted is held to the same rule as what is typed.
  setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this));
}

void CampoDigitos::keyPressEvent(QKeyEvent* evento) {
  const QString texto = evento->text();
  const bool con_letra = !texto.isEmpty() && texto.at(0) >= QChar(32) && texto.at(0) != QChar(127);
  const bool orden = evento->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (con_letra && !orden && (texto.at(0) < QChar('0') || texto.at(0) > QChar('9'))) {
    QApplication::beep();
    evento->accept();
    return;
  }
  CampoTexto::keyPressEvent(evento);
}

QLabel* Rotulo(const char* nombre, const QString& texto, QWidget* campo) {
  auto* rotulo = new QLabel(texto);
  rotulo->setObjectName(QString::fromLatin1(nombre));
  rotulo->setBuddy(campo);
  campo->setAccessibleName(QString(texto).remove('&'));
  return rotulo;
}

QPushButton* Boton(const char* nombre, const QString& texto, QWidget* parent) {
  auto* boton = new QPushButton(texto, parent);
  boton->setObjectName(QString::fromLatin1(nombre));
  boton->setAutoDefault(false);
  return boton;
}

void OrdenDeTab(std::initializer_list<QWidget*> controles) {
  QWidget* anterior = nullptr;
  for (QWidget* control : controles) {
    if (anterior != nullptr) QWidget::setTabOrder(anterior, control);
    anterior = control;
  }
}

}  // namespace utr
