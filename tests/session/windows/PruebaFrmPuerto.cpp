#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "session/AjustesEnlace.h"
#include "session/windows/frmPuerto.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

class Puerto : public prueba::ModPrueba, public testing::Test {
 protected:
  void Jugar(const std::function<void(QDialog&)>& paso) {
    dialogo = std::make_unique<frmPuerto>(mod);
    ventanas.Espera("frmPuerto", paso);
    dialogo->exec();
  }

  GuionVentanas ventanas;
  std::unique_ptr<frmPuerto> dialogo;
};

TEST_F(Puerto, EnSerie) {
  conexion.FijarPorIP(true);
  Jugar([](QDialog& ventana) {
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CPuerto").count(), 5);
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CVelocidad").count(), 6);
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CVelocidad").currentText(), "9600");
    EXPECT_EQ(Hallar<QLineEdit>(ventana, "PuertoIP").text(), "1000");
    EXPECT_FALSE(Hallar<QLineEdit>(ventana, "DireccionIP").isEnabled());
    Hallar<QComboBox>(ventana, "CPuerto").setCurrentText("COM 2");
    Hallar<QComboBox>(ventana, "CVelocidad").setCurrentText("300");
    Hallar<QPushButton>(ventana, "CmdOK").click();
  });
  EXPECT_TRUE(dialogo->Configuro);
  EXPECT_EQ(dialogo->PSettings(), "300,n,8,1");
  EXPECT_EQ(dialogo->PPuerto(), "2");
  EXPECT_FALSE(conexion.PorIP());
  EXPECT_EQ(propiedades.LeerEntero(clave::kPuerto, 1), 2);
}

TEST_F(Puerto, PorIP) {
  Jugar([](QDialog& ventana) {
    Hallar<QRadioButton>(ventana, "optIP").click();
    EXPECT_FALSE(Hallar<QComboBox>(ventana, "CPuerto").isEnabled());
    Hallar<QLineEdit>(ventana, "DireccionIP").setText("10.0.0.2");
    Hallar<QLineEdit>(ventana, "PuertoIP").setText("4000");
    Hallar<QPushButton>(ventana, "CmdOK").click();
  });
  EXPECT_TRUE(dialogo->Configuro);
  EXPECT_TRUE(conexion.PorIP());
  EXPECT_EQ(dialogo->PSettings(), "10.0.0.2,n,8,1");
  EXPECT_EQ(dialogo->PPuerto(), "4000");
  Jugar([](QDialog& ventana) {
    EXPECT_TRUE(Hallar<QRadioButton>(ventana, "optIP").isChecked());
    EXPECT_EQ(Hallar<QLineEdit>(ventana, "DireccionIP").text(), "10.0.0.2");
    EXPECT_EQ(Hallar<QLineEdit>(ventana, "PuertoIP").text(), "4000");
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CPuerto").currentText(), "COM 1");
    ventana.close();
  });
}

TEST_F(Puerto, LoGuardadoQueNoSeOfreceQuedaYSinEleccionNoSeAcepta) {
  EscribirPuerto(propiedades, "7", "2400");
  Jugar([](QDialog& ventana) {
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CPuerto").currentText(), "COM 7");
    Hallar<QPushButton>(ventana, "CmdOK").click();
  });
  EXPECT_EQ(dialogo->PPuerto(), "7");
  EXPECT_EQ(dialogo->PSettings(), "2400,n,8,1");
  EscribirPuerto(propiedades, "0", "9600");
  Jugar([](QDialog& ventana) {
    auto& aceptar = Hallar<QPushButton>(ventana, "CmdOK");
    EXPECT_FALSE(aceptar.isEnabled());
    Hallar<QRadioButton>(ventana, "optIP").setChecked(true);
    EXPECT_TRUE(aceptar.isEnabled());
    Hallar<QRadioButton>(ventana, "optSerie").setChecked(true);
    EXPECT_FALSE(aceptar.isEnabled());
    Hallar<QComboBox>(ventana, "CPuerto").setCurrentText("COM 2");
    EXPECT_TRUE(aceptar.isEnabled());
    ventana.close();
  });
}

TEST_F(Puerto, CancelarNoTocaLosAjustes) {
  EscribirPuerto(propiedades, "3", "1200");
  Jugar([](QDialog& ventana) {
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CPuerto").currentText(), "COM 3");
    EXPECT_EQ(Hallar<QComboBox>(ventana, "CVelocidad").currentText(), "1200");
    Hallar<QComboBox>(ventana, "CPuerto").setCurrentText("COM 5");
    Hallar<QPushButton>(ventana, "CmdCancel").click();
  });
  EXPECT_FALSE(dialogo->Configuro);
  EXPECT_EQ(dialogo->PSettings(), "9600,n,8,1");
  EXPECT_EQ(dialogo->PPuerto(), "1");
  EXPECT_EQ(propiedades.LeerEntero(clave::kPuerto, 1), 3);
  EXPECT_FALSE(std::filesystem::exists(propiedades.Archivo()));
}

}  // namespace
}  // namespace utr
