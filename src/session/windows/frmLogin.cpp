#include "session/windows/frmLogin.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "widgets/Ayuda.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {

frmLogin::frmLogin(ModRTU& mod, std::string clave, QWidget* parent)
    : QDialog(parent), mod_(mod), acceso_(std::move(clave)), txtPassword_(new QLineEdit) {
  setObjectName("frmLogin");
  setWindowTitle("Contraseña");
  txtPassword_->setObjectName("txtPassword");
  txtPassword_->setEchoMode(QLineEdit::Password);
  SinSaltosDeLinea(*txtPassword_);
  auto* figura = new QLabel;
  figura->setPixmap(IconoDe("adminutr").pixmap(48, 48));
  figura->setAccessibleName("AdminUTR");
  auto* entrada = new QVBoxLayout;
  entrada->addWidget(Rotulo("lblLabels", "&Ingrese su contraseña", txtPassword_));
  entrada->addWidget(txtPassword_);
  auto* arriba = new QHBoxLayout;
  arriba->setSpacing(16);
  arriba->addWidget(figura, 0, Qt::AlignTop);
  arriba->addLayout(entrada, 1);

  auto* CmdOK = Boton("CmdOK", "&Aceptar");
  auto* CmdCancel = Boton("CmdCancel", "&Cancelar");
  auto* cmdAyuda = Boton("cmdAyuda", "A&yuda");
  ArmarDialogo(*this, arriba, {.aceptar = CmdOK, .cancelar = CmdCancel, .ayuda = cmdAyuda}, {txtPassword_});
  connect(CmdOK, &QPushButton::clicked, this, &frmLogin::Aceptar);
  connect(CmdCancel, &QPushButton::clicked, this, &frmLogin::reject);
  ServirAyuda(*cmdAyuda, mod_.archivo_ayuda);
  AjustarTamano(*this, QSize(400, 0));
}

void frmLogin::Aceptar() {
  switch (acceso_.Probar(U(txtPassword_->text()))) {
    case Acceso::Resultado::kAceptada:
      Terminar(true);
      return;
    case Acceso::Resultado::kReintentar:
      mod_.operador.Mostrar(
          {"Contraseña incorrecta, Intentelo nuevamente", U(windowTitle()), Icono::kInformacion, Botones::kAceptar});
      txtPassword_->selectAll();
      txtPassword_->setFocus();
      return;
    case Acceso::Resultado::kAgotada:
      mod_.operador.Mostrar(
          {"Ha superado el número de intentos válido\n"
           "Contacte con el administrador para buscar su clave",
           U(windowTitle()), Icono::kCritico, Botones::kAceptar});
      Terminar(false);
  }
}

void frmLogin::reject() {
  Terminar(false);
}

void frmLogin::Terminar(bool aceptada) {
  LoginSucceeded = aceptada;
  done(aceptada ? Accepted : Rejected);
}

std::string ClaveActual(const ModRTU& mod) {
  return mod.propiedades.LeerTexto(clave::kClave, kClaveDefecto);
}

bool PedirClave(ModRTU& mod, QWidget* parent) {
  frmLogin entrada(mod, ClaveActual(mod), parent);
  entrada.exec();
  return entrada.LoginSucceeded;
}

}  // namespace utr
