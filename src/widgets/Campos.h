#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace utr {

// The field takes no line breaks, whatever is pasted or stored: within the text they become blanks, at its ends
// nothing.
void SinSaltosDeLinea(QLineEdit& campo);

// A text field of one line that selects its whole text when it gets the focus.
class CampoTexto : public QLineEdit {
  Q_OBJECT

 public:
  explicit CampoTexto(const char* nombre, QWidget* parent = nullptr);

 protected:
  void focusInEvent(QFocusEvent* evento) override;
};

// The same for whole numbers: any key that types something else than a digit is swallowed with a beep, and anything
// else is refused from the clipboard.
class CampoDigitos : public CampoTexto {
  Q_OBJECT

 public:
  CampoDigitos(const char* nombre, int cifras, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
};

// A label whose mnemonic leads to `campo`, which takes the caption as its accessible name.
QLabel* Rotulo(const char* nombre, const QString& texto, QWidget* campo);

// A button with that object name, which isn't taken for the default one. While it has the keyboard, Enter presses it.
QPushButton* Boton(const char* nombre, const QString& texto, QWidget* parent = nullptr);

// Names, for a screen reader, the buttons that Qt itself puts into a toolbar or a field: what shows the tools that have
// no room, what clears the text.
void NombrarBotonesDeQt(QWidget& control);

// The order in which Tab walks these controls.
void OrdenDeTab(std::initializer_list<QWidget*> controles);

}  // namespace utr
