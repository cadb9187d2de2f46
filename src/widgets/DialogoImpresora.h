#pragma once

#include <QDialog>

#include "services/Operador.h"

class QComboBox;
class QRadioButton;
class QSpinBox;

namespace utr {

// Asks for one of the system's printers, a number of copies, and the paper. Without printers it says so, and what is
// chosen is the paper alone, for the preview.
class DialogoImpresora : public QDialog {
  Q_OBJECT

 public:
  // Starts with what was chosen last, else with the system's own choice; it says so where that printer is gone.
  DialogoImpresora(const QString& titulo, const EleccionImpresora& anterior, QWidget* parent = nullptr);

  // No name without printers.
  EleccionImpresora Eleccion() const;

 private:
  bool hay_ = false;  // printers
  QComboBox* impresoras_;
  QSpinBox* copias_;
  QComboBox* papel_;
  QRadioButton* vertical_;
  QRadioButton* apaisado_;
};

}  // namespace utr
