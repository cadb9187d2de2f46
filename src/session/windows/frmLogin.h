#pragma once

#include <QDialog>

#include "session/Acceso.h"
#include "session/ModRTU.h"

class QLineEdit;

namespace utr {

// "Contraseña": asks for a password, three times at most. Esc and the close button cancel.
class frmLogin : public QDialog {
  Q_OBJECT

 public:
  // `clave`: the password to compare with. Show it with exec() and read LoginSucceeded.
  frmLogin(ModRTU& mod, std::string clave, QWidget* parent = nullptr);

  bool LoginSucceeded = false;

  void reject() override;

 private:
  void Aceptar();
  void Terminar(bool aceptada);

  ModRTU& mod_;
  Acceso acceso_;
  QLineEdit* txtPassword_;
};

// The password in the settings, or the default one.
std::string ClaveActual(const ModRTU& mod);

// Asks for the password in force. True: it was given.
bool PedirClave(ModRTU& mod, QWidget* parent = nullptr);

}  // namespace utr
