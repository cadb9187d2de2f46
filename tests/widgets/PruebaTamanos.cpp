#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "widgets/MarcoDialogo.h"
#include "widgets/Tamanos.h"

namespace utr {
namespace {

// A dialog whose body wants that room.
struct Dialogo {
  explicit Dialogo(const QSize& cuerpo) {
    dialogo.setObjectName("frmDeMedida");
    grande->setMinimumSize(cuerpo);
    auto* disposicion = new QVBoxLayout;
    disposicion->addWidget(grande);
    ArmarDialogo(dialogo, disposicion, {.aceptar = boton});
    AjustarTamano(dialogo);
  }
  QDialog dialogo;
  QLabel* grande = new QLabel("cuerpo");
  QPushButton* boton = new QPushButton("Aceptar");
};

TEST(Tamanos, NingunDialogoEsMayorQueLaPantallaYNadaQuedaFueraDeAlcance) {
  const QSize pantalla = QDialog().screen()->availableSize();
  const std::pair<QSize, bool> casos[] = {{pantalla / 2, false},
                                          {{pantalla.width() / 2, pantalla.height() * 2}, true},
                                          {{pantalla.width() * 2, pantalla.height() / 2}, true},
                                          {pantalla * 3, true}};
  for (const auto& [tamano, desplaza] : casos) {
    Dialogo uno(tamano);
    uno.dialogo.show();
    const QSize sitio = SitioEnPantalla(uno.dialogo);
    EXPECT_LE(uno.dialogo.width(), sitio.width());
    EXPECT_LE(uno.dialogo.height(), sitio.height());
    auto* area = uno.dialogo.findChild<QScrollArea*>();
    EXPECT_EQ(area != nullptr, desplaza);
    EXPECT_GE(uno.grande->width(), tamano.width()) << "whole, behind its scroll bars";
    EXPECT_TRUE(uno.dialogo.rect().contains(uno.boton->geometry())) << "the row of buttons never scrolls away";
    if (area != nullptr) {
      EXPECT_EQ(area->widget(), uno.grande->parentWidget());
    }
  }
}

TEST(Tamanos, UnMarcoAnchoSeDesplazaALoAnchoYConservaSuAlto) {
  QDialog dialogo;
  auto* angosto = new QLabel("cabe");
  EXPECT_EQ(ALoAncho(angosto, dialogo), angosto);
  auto* ancho = new QLabel("no cabe");
  ancho->setMinimumSize(dialogo.screen()->availableSize().width() * 2, 50);
  QWidget* puesto = ALoAncho(ancho, dialogo);
  auto* columna = new QVBoxLayout(&dialogo);
  columna->addWidget(angosto);
  columna->addWidget(puesto);
  EXPECT_NE(puesto, ancho);
  EXPECT_LT(puesto->minimumSizeHint().width(), 50);
  EXPECT_GE(puesto->minimumSizeHint().height(), 50);
}

// A size for some letters would hide what larger ones need, and the other way round waste the screen.
TEST(Tamanos, CadaTamanoDeLetraTieneElSuyo) {
  const QFont comun = QApplication::font();
  const auto abrir = [](const QSize& dejado) {
    QWidget ventana;
    ventana.setObjectName("frmDeLetra");
    ventana.resize(200, 100);
    RecordarTamano(&ventana);
    ventana.show();
    const QSize hallado = ventana.size();
    if (!dejado.isEmpty()) ventana.resize(dejado);
    ventana.hide();
    return hallado;
  };
  abrir({300, 150});
  EXPECT_EQ(abrir({}), QSize(300, 150));
  QFont grande = comun;
  grande.setPointSizeF(comun.pointSizeF() * 2);
  QApplication::setFont(grande);
  EXPECT_EQ(abrir({500, 400}), QSize(200, 100));
  EXPECT_EQ(abrir({}), QSize(500, 400));
  QApplication::setFont(comun);
  EXPECT_EQ(abrir({}), QSize(300, 150));
}

TEST(Tamanos, ElRotuloDeUnCampoAltoQuedaASuMitad) {
  QDialog dialogo;
  dialogo.setObjectName("frmDePares");
  auto* pares = new QFormLayout(&dialogo);
  auto* campo = new QLineEdit;
  campo->setFixedHeight(60);
  auto* rotulo = new QLabel("Identificador:");
  pares->addRow(rotulo, campo);
  AjustarTamano(dialogo);
  dialogo.show();
  EXPECT_NEAR(rotulo->geometry().center().y(), campo->geometry().center().y(), 2);
}

}  // namespace
}  // namespace utr
