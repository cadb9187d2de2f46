#include "widgets/Campos.h"

#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QToolButton>
#include <algorithm>

namespace utr {

namespace {

bool EsSalto(QChar letra) {
  return letra == '\n' || letra == '\r' || letra == QChar::LineSeparator || letra == QChar::ParagraphSeparator;
}

// Mends what comes in instead of refusing it.
class UnaLinea : public QRegularExpressionValidator {
 public:
  UnaLinea(const QString& permitido, QObject* dueno)
      : QRegularExpressionValidator(QRegularExpression(permitido), dueno) {}

  State validate(QString& texto, int& cursor) const override {
    if (std::any_of(texto.cbegin(), texto.cend(), EsSalto)) Mendar(texto, cursor);
    return QRegularExpressionValidator::validate(texto, cursor);
  }

 private:
  static void Mendar(QString& texto, int& cursor) {
    while (!texto.isEmpty() && EsSalto(texto.back())) texto.chop(1);
    qsizetype delante = 0;
    while (delante < texto.size() && EsSalto(texto.at(delante))) ++delante;
    texto.remove(0, delante);
    texto.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    std::replace_if(texto.begin(), texto.end(), EsSalto, QChar(' '));
    cursor = static_cast<int>(std::min<qsizetype>(cursor, texto.size()));
  }
};

// Left to itself, Enter on a button that isn't the default one presses the default one, and nothing where there is
// none.
class BotonPropio : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  void keyPressEvent(QKeyEvent* evento) override {
    const bool entrar = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
    if (!entrar) return QPushButton::keyPressEvent(evento);
    evento->accept();
    click();
  }
};

}  // namespace

void SinSaltosDeLinea(QLineEdit& campo) {
  campo.setValidator(new UnaLinea(QStringLiteral(".*"), &campo));
}

CampoTexto::CampoTexto(const char* nombre, QWidget* parent) : QLineEdit(parent) {
  setObjectName(QString::fromLatin1(nombre));
  SinSaltosDeLinea(*this);
}

void CampoTexto::focusInEvent(QFocusEvent* evento) {
  QLineEdit::focusInEvent(evento);
  // Later than the press of the mouse that may have brought the focus, which would take the selection off.
  QMetaObject::invokeMethod(this, &QLineEdit::selectAll, Qt::QueuedConnection);
}

CampoDigitos::CampoDigitos(const char* nombre, int cifras, QWidget* parent) : CampoTexto(nombre, parent) {
  // What is pasted is held to the same rule as what is typed. A length of the field's own would cut it, ahead of the
  // rule, into another number.
  setValidator(new UnaLinea(QStringLiteral("[0-9]{0,%1}").arg(cifras), this));
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
  auto* boton = new BotonPropio(texto, parent);
  boton->setObjectName(QString::fromLatin1(nombre));
  boton->setAutoDefault(false);
  return boton;
}

void NombrarBotonesDeQt(QWidget& control) {
  for (auto* boton : control.findChildren<QToolButton*>()) {
    if (boton->objectName() == QLatin1String("qt_toolbar_ext_button")) boton->setAccessibleName("Más botones");
    if (qobject_cast<QLineEdit*>(boton->parentWidget()) != nullptr) boton->setAccessibleName("Borrar el texto");
  }
}

void OrdenDeTab(std::initializer_list<QWidget*> controles) {
  QWidget* anterior = nullptr;
  for (QWidget* control : controles) {
    if (anterior != nullptr) QWidget::setTabOrder(anterior, control);
    anterior = control;
  }
}

}  // namespace utr
