#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "session/windows/frmConfirmPass.h"
#include "session/windows/frmLogin.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

class Acceso_ : public prueba::ModPrueba, public testing::Test {
 protected:
  static constexpr const char* kIncorrecta = "Contraseña incorrecta, Intentelo nuevamente";

  static void Probar(QDialog& dialogo, const char* intento) {
    Hallar<QLineEdit>(dialogo, "txtPassword").setText(intento);
    Hallar<QPushButton>(dialogo, "CmdOK").click();
  }

  GuionVentanas ventanas;
};

TEST_F(Acceso_, LaClaveExactaEntra) {
  frmLogin login(mod, "Pampas");
  operador.Espera(Mensaje{kIncorrecta, "Contraseña", Icono::kInformacion, Botones::kAceptar});
  ventanas.Espera("frmLogin", [](QDialog& dialogo) {
    Probar(dialogo, "pampas");
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "txtPassword").selectedText(), "pampas") << "ready to be typed over";
    EXPECT_TRUE(dialogo.isVisible());
    Probar(dialogo, "Pampas");
  });
  login.exec();
  EXPECT_TRUE(login.LoginSucceeded);
}

TEST_F(Acceso_, TresEquivocacionesCierran) {
  frmLogin login(mod, "Pampas");
  operador.Espera(kIncorrecta);
  operador.Espera(kIncorrecta);
  operador.Espera(
      Mensaje{"Ha superado el número de intentos válido\n"
              "Contacte con el administrador para buscar su clave",
              "Contraseña", Icono::kCritico, Botones::kAceptar});
  ventanas.Espera("frmLogin", [](QDialog& dialogo) {
    for (int vez = 0; vez < 3; ++vez) Probar(dialogo, "no");
  });
  login.exec();
  EXPECT_FALSE(login.LoginSucceeded);
}

TEST_F(Acceso_, CancelarYCerrarNoEntran) {
  for (const bool boton : {true, false}) {
    frmLogin login(mod, "Pampas");
    ventanas.Espera("frmLogin", [boton](QDialog& dialogo) {
      Hallar<QLineEdit>(dialogo, "txtPassword").setText("Pampas");
      boton ? Hallar<QPushButton>(dialogo, "CmdCancel").click() : static_cast<void>(dialogo.close());
    });
    login.exec();
    EXPECT_FALSE(login.LoginSucceeded);
  }
}

TEST_F(Acceso_, LaClaveNuevaSeHabilitaPasoAPaso) {
  frmConfirmPass dialogo(mod, "Pampas");
  auto& actual = Hallar<QLineEdit>(dialogo, "txtPassword(0)");
  auto& nueva = Hallar<QLineEdit>(dialogo, "txtPassword(1)");
  auto& repetida = Hallar<QLineEdit>(dialogo, "txtPassword(2)");
  auto& aceptar = Hallar<QPushButton>(dialogo, "CmdOK");
  auto& rotulo = Hallar<QLabel>(dialogo, "lblLabels(2)");
  const auto estado = [&] {
    return std::string(nueva.isEnabled() && repetida.isEnabled() && rotulo.isEnabled() ? "campos " : "") +
           (aceptar.isEnabled() ? "aceptar" : "");
  };
  EXPECT_EQ(estado(), "");
  actual.setText("pampas");
  EXPECT_EQ(estado(), "");
  actual.setText("Pampas");
  EXPECT_EQ(estado(), "campos ");
  nueva.setText("Delta");
  EXPECT_EQ(estado(), "campos ");
  repetida.setText("delta");
  EXPECT_EQ(estado(), "campos ");
  repetida.setText("Delta");
  EXPECT_EQ(estado(), "campos aceptar");
  actual.setText("Pampa");
  EXPECT_EQ(estado(), "");
  actual.setText("Pampas");
  aceptar.click();
  EXPECT_TRUE(dialogo.Aceptar);
  EXPECT_EQ(dialogo.ClaveNueva(), "Delta");
}

TEST_F(Acceso_, CadaCampoTieneRotuloConMnemonico) {
  frmConfirmPass dialogo(mod, "Pampas");
  for (QLineEdit* campo : dialogo.findChildren<QLineEdit*>()) EXPECT_FALSE(campo->accessibleName().isEmpty());
  for (QLabel* rotulo : dialogo.findChildren<QLabel*>()) {
    ASSERT_NE(rotulo->buddy(), nullptr) << rotulo->text().toStdString();
    EXPECT_TRUE(rotulo->text().contains('&'));
  }
}

}  // namespace
}  // namespace utr
