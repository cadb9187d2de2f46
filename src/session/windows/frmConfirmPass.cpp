#include "session/windows/frmConfirmPass.h"

#include <QGridLayout>

#include "session/Acceso.h"
#include "session/windows/frmLogin.h"
#include "widgets/Ayuda.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {

frmConfirmPass::frmConfirmPass(ModRTU& mod, std::string ClaveOri, QWidget* parent)
    : QDialog(parent), mod_(mod), ClaveOri_(std::move(ClaveOri)), CmdOK_(Boton("CmdOK", "&Aceptar")) {
  setObjectName("frmConfirmPass");
  setWindowTitle("Modificar contraseña");
  const std::array<QString, 3> rotulos{"&Contraseña", "&Nueva contraseña", "&Repetir contraseña"};
  auto* campos = new QGridLayout;
  campos->setColumnStretch(1, 1);
  for (std::size_t i = 0; i < txtPassword_.size(); ++i) {
    txtPassword_[i] = new QLineEdit;
    txtPassword_[i]->setObjectName(QString("txtPassword(%1)").arg(i));
    txtPassword_[i]->setEchoMode(QLineEdit::Password);
    SinSaltosDeLinea(*txtPassword_[i]);
    lblLabels_[i] = Rotulo(qPrintable(QString("lblLabels(%1)").arg(i)), rotulos[i], txtPassword_[i]);
    campos->addWidget(lblLabels_[i], static_cast<int>(i), 0);
    campos->addWidget(txtPassword_[i], static_cast<int>(i), 1);
    connect(txtPassword_[i], &QLineEdit::textChanged, this,
            i == 0 ? &frmConfirmPass::CambioActual : &frmConfirmPass::CambioNueva);
  }

  auto* CmdCancel = Boton("CmdCancel", "&Cancelar");
  auto* cmdNav = Boton("cmdNav", "A&yuda");
  ArmarDialogo(*this, campos, {.aceptar = CmdOK_, .cancelar = CmdCancel, .ayuda = cmdNav},
               {txtPassword_[0], txtPassword_[1], txtPassword_[2]});
  connect(CmdOK_, &QPushButton::clicked, this, [this] {
    Aceptar = true;
    accept();
  });
  connect(CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  ServirAyuda(*cmdNav, mod_.archivo_ayuda);
  CambioActual();
  AjustarTamano(*this, QSize(420, 0));
}

std::string frmConfirmPass::ClaveNueva() const {
  return U(txtPassword_[1]->text());
}

void frmConfirmPass::CambioActual() {
  const bool puede = PuedeCambiarClave(U(txtPassword_[0]->text()), ClaveOri_);
  for (std::size_t i = 1; i < txtPassword_.size(); ++i) {
    txtPassword_[i]->setEnabled(puede);
    lblLabels_[i]->setEnabled(puede);
  }
  CambioNueva();
}

void frmConfirmPass::CambioNueva() {
  CmdOK_->setEnabled(PuedeCambiarClave(U(txtPassword_[0]->text()), ClaveOri_) &&
                     ClaveNuevaValida(U(txtPassword_[1]->text()), U(txtPassword_[2]->text())));
}

namespace {

void GrabarClave(ModRTU& mod, const std::string& nueva) {
  const Propiedad defecto{std::string(kClaveDefecto)};
  const std::string anterior = ClaveActual(mod);
  mod.propiedades.Escribir(clave::kClave, Propiedad{nueva}, defecto);
  AlFallar([&] { mod.propiedades.GrabarArchivoPropiedades(); },
           [&] { mod.propiedades.Escribir(clave::kClave, Propiedad{anterior}, defecto); });
}

}  // namespace

void CambiarContrasena(ModRTU& mod, QWidget& principal) {
  RegistrandoYMostrando(mod.registro, mod.operador, "frmPpal", "Contrasena", U(principal.windowTitle()),
                        Redaccion::kCompletada, [&] {
                          frmConfirmPass dialogo(mod, ClaveActual(mod), &principal);
                          dialogo.exec();
                          if (dialogo.Aceptar) GrabarClave(mod, dialogo.ClaveNueva());
                        });
}

}  // namespace utr
