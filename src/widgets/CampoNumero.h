#pragma once

#include <QLineEdit>

class QAction;

namespace utr {

// A field for a number as text. What is loaded stands as it is, whatever it holds and however long; what is typed,
// pasted or dropped in loses, with a beep, every character that isn't a digit or, in a field for decimals, "-", "." or
// ",". Those may stand anywhere: whether the whole is a number is for its rules to say. Selects its text on focus.
class CampoNumero : public QLineEdit {
  Q_OBJECT

 public:
  CampoNumero(const QString& nombre, bool decimal, QWidget* parent = nullptr);

  // Marks the field as wrong, with an icon inside it; the lines that say why are its tip and accessible description.
  // Empty: the field is right.
  void Marcar(const QString& lineas);
  bool Marcado() const;

 signals:
  // The arrow keys: 1 up, -1 down.
  void Paso(int hacia);

 protected:
  void focusInEvent(QFocusEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  bool Admite(QChar letra) const;
  QString Admitido(const QString& texto) const;
  void Limpiar(const QString& texto);

  bool decimal_;
  bool deshace_ = false;  // what comes back was there before
  QString antes_;
  QAction* marca_;
};

}  // namespace utr
