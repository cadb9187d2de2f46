#pragma once

#include <QDialog>
#include <array>
#include <string>

#include "session/ModRTU.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace utr {

// "Modificar contraseña": the new password can be typed once the present one stands, and taken once it was repeated.
class frmConfirmPass : public QDialog {
  Q_OBJECT

 public:
  // `ClaveOri`: the present password. Show it with exec(), then read `Aceptar` and `ClaveNueva`.
  frmConfirmPass(ModRTU& mod, std::string ClaveOri, QWidget* parent = nullptr);

  bool Aceptar = false;
  std::string ClaveNueva() const;

 private:
  void CambioActual();
  void CambioNueva();

  ModRTU& mod_;
  std::string ClaveOri_;
  std::array<QLineEdit*, 3> txtPassword_{};
  std::array<QLabel*, 3> lblLabels_{};
  QPushButton* CmdOK_;
};

// Asks for a new password and saves it; one that couldn't be saved isn't in force. Shows its failures, under the title
// of `principal`.
void CambiarContrasena(ModRTU& mod, QWidget& principal);

}  // namespace utr
