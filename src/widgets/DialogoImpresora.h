#pragma once

#include <QDialog>

#include "services/Operador.h"

class QComboBox;
class QRadioButton;
class QSpinBox;

namespace utr {

// Asks for one of the system's printers, a number of copies, and the paper. Without printers it says so and can only be
// cancelled.
class DialogoImpresora : public QDialog {
  Q_OBJECT

 public:
  // Starts with what was chosen last, else with the system's own choice.
  DialogoImpresora(const QString& titulo, const EleccionImpresora& anterior, QWidget* parent = nullptr);

  EleccionImpresora Eleccion() const;

 private:
  QComboBox* impresoras_;
  QSpinBox* copias_;
  QComboBox* papel_;
  QRadioButton* vertical_;
  QRadioButton* apaisado_;
};

}  // namespace utr
