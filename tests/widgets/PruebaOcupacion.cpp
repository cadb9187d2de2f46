#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <optional>
#include <stdexcept>

#include "support/GuionVentanas.h"
#include "support/OperadorGuion.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Ocupacion.h"
#include "widgets/PanelAviso.h"

namespace utr {
namespace {

// A dialog with a field, two buttons, a menu and a shortcut, which counts what gets through to it.
class PruebaOcupacion : public testing::Test {
 protected:
  PruebaOcupacion() {
    auto* caja = new QVBoxLayout(cuerpo);
    for (QWidget* control : std::initializer_list<QWidget*>{campo, leer, apagado}) caja->addWidget(control);
    auto* todo = new QVBoxLayout(dialogo.get());
    for (QWidget* parte : std::initializer_list<QWidget*>{cuerpo, panel, cancelar}) todo->addWidget(parte);
    apagado->setEnabled(false);
    panel->hide();
    leer->setDefault(true);
    atajo->setShortcut(Qt::CTRL | Qt::Key_S);
    dialogo->addAction(atajo);
    QObject::connect(leer, &QPushButton::clicked, [this] { ++leidas; });
    QObject::connect(cancelar, &QPushButton::clicked, [this] { ++canceladas; });
    QObject::connect(atajo, &QAction::triggered, [this] { ++atajos; });
    dialogo->show();
    dialogo->activateWindow();
    campo->setFocus();
  }

  OpcionesOcupacion Todo() {
    OpcionesOcupacion opciones;
    opciones.operador = &operador;
    opciones.panel = panel;
    opciones.apagados = {cuerpo, cancelar};
    return opciones;
  }

  OperadorGuion operador;
  std::unique_ptr<QDialog> dialogo = std::make_unique<QDialog>();
  QWidget* cuerpo = new QWidget;
  QLineEdit* campo = new QLineEdit;
  QPushButton* leer = new QPushButton("Leer");
  QPushButton* apagado = new QPushButton("Parar");
  QPushButton* cancelar = new QPushButton("Cancelar");
  PanelAviso* panel = new PanelAviso("picInfo", "Espere...");
  QAction* atajo = new QAction("Guardar", dialogo.get());
  int leidas = 0;
  int canceladas = 0;
  int atajos = 0;
};

TEST_F(PruebaOcupacion, NadaPasaYAlFinTodoEsComoAntes) {
  {
    const Ocupacion ocupacion(*dialogo, Todo());
    EXPECT_TRUE(Ocupacion::Ocupada(*dialogo));
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(operador.ocupado, 1);
    for (QWidget* control : std::initializer_list<QWidget*>{campo, leer, apagado, cancelar}) {
      EXPECT_FALSE(control->isEnabled());
    }
    QTest::mouseClick(leer, Qt::LeftButton);
    QTest::keyClicks(campo, "12");
    QTest::keyClick(dialogo.get(), Qt::Key_Return);
    QTest::keyClick(dialogo.get(), Qt::Key_Escape);
    QTest::keyClick(dialogo.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(dialogo->close());
  }
  EXPECT_FALSE(Ocupacion::Ocupada(*dialogo));
  EXPECT_TRUE(dialogo->isVisible());
  EXPECT_FALSE(panel->isVisible());
  EXPECT_EQ(operador.ocupado, 0);
  EXPECT_EQ(leidas + atajos, 0);
  EXPECT_EQ(campo->text().toStdString(), "");
  EXPECT_TRUE(leer->isEnabled() && cancelar->isEnabled());
  EXPECT_FALSE(apagado->isEnabled()) << "it was off before";
  EXPECT_EQ(dialogo->focusWidget(), campo);
  QTest::keyClick(dialogo.get(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(atajos, 1);
  EXPECT_TRUE(dialogo->close());
}

TEST_F(PruebaOcupacion, LoTecleadoConElProgramaDetenidoSePierdeAlFin) {
  bool soltado = false;
  {
    const Ocupacion ocupacion(*dialogo, Todo());
    EncolarClic(leer);
    EncolarTecla(dialogo.get(), Qt::Key_Return);
    EncolarTecla(campo, Qt::Key_5, "5");
    EncolarTecla(dialogo.get(), Qt::Key_Escape);
    QMetaObject::invokeMethod(
        dialogo.get(), [&soltado] { soltado = true; }, Qt::QueuedConnection);
  }
  EXPECT_TRUE(soltado) << "events that no operator caused are delivered";
  QCoreApplication::processEvents();
  EXPECT_EQ(leidas, 0);
  EXPECT_EQ(campo->text().toStdString(), "");
  EXPECT_TRUE(dialogo->isVisible());
  EncolarClic(leer);
  QCoreApplication::processEvents();
  EXPECT_EQ(leidas, 1) << "the same click counts once the window has opened up";
}

TEST_F(PruebaOcupacion, UnControlQueSigueRecibeYEscYCerrarHacenLoIndicado) {
  OpcionesOcupacion opciones = Todo();
  opciones.apagados = {dialogo->findChild<QWidget*>(), cuerpo, cancelar};
  opciones.siguen = {cancelar};
  int pedidas = 0;
  opciones.al_cancelar = [&pedidas] { ++pedidas; };
  {
    const Ocupacion ocupacion(*dialogo, opciones);
    EXPECT_FALSE(leer->isEnabled());
    EXPECT_TRUE(cancelar->isEnabled());
    EXPECT_EQ(dialogo->focusWidget(), cancelar);
    QTest::mouseClick(cancelar, Qt::LeftButton);
    QTest::keyClick(cancelar, Qt::Key_Space);
    EXPECT_EQ(canceladas, 2);
    QTest::keyClick(cancelar, Qt::Key_Escape);
    EXPECT_FALSE(dialogo->close());
    EXPECT_EQ(pedidas, 2);
    EXPECT_TRUE(dialogo->isVisible());
  }
  EXPECT_EQ(dialogo->focusWidget(), campo);
}

TEST_F(PruebaOcupacion, UnControlDeUnGrupoSigue) {
  OpcionesOcupacion opciones;
  opciones.apagados = {cuerpo};
  opciones.siguen = {leer};
  const Ocupacion ocupacion(*dialogo, opciones);
  EXPECT_FALSE(campo->isEnabled());
  QTest::mouseClick(leer, Qt::LeftButton);
  EXPECT_EQ(leidas, 1);
}

TEST_F(PruebaOcupacion, AnidadaSeAbreConLaUltima) {
  {
    const Ocupacion afuera(*dialogo, Todo());
    {
      OpcionesOcupacion opciones;
      opciones.apagados = {cuerpo};
      const Ocupacion adentro(*dialogo, opciones);
    }
    EXPECT_TRUE(Ocupacion::Ocupada(*dialogo));
    EXPECT_FALSE(leer->isEnabled());
    EXPECT_TRUE(panel->isVisible());
    EXPECT_FALSE(dialogo->close());
  }
  EXPECT_TRUE(leer->isEnabled());
}

TEST_F(PruebaOcupacion, UnaFallaTambienAbre) {
  try {
    const Ocupacion ocupacion(*dialogo, Todo());
    throw std::runtime_error("falla");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(operador.ocupado, 0) << "the message comes without the hourglass";
  }
  EXPECT_FALSE(Ocupacion::Ocupada(*dialogo));
  EXPECT_TRUE(leer->isEnabled());
}

TEST_F(PruebaOcupacion, UnaVentanaQueMuereNoArrastraNada) {
  std::optional<Ocupacion> ocupacion(std::in_place, *dialogo, Todo());
  dialogo.reset();
  ocupacion.reset();
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(PruebaOcupacion, UnControlQueMuereSeOlvida) {
  {
    const Ocupacion ocupacion(*dialogo, Todo());
    delete cuerpo;
    delete panel;
  }
  EXPECT_TRUE(cancelar->isEnabled());
}

TEST_F(PruebaOcupacion, LoQueSeDespliegaEsDeLaVentanaYUnaCajaNo) {
  const Ocupacion ocupacion(*dialogo, Todo());
  QMenu menu(dialogo.get());
  int elegidas = 0;
  menu.addAction("Abrir", [&elegidas] { ++elegidas; });
  menu.popup(QPoint(0, 0));
  menu.setActiveAction(menu.actions().front());
  QTest::keyClick(&menu, Qt::Key_Return);
  EXPECT_EQ(elegidas, 0);
  menu.close();
  QDialog otro(dialogo.get());
  auto* boton = new QPushButton("Aceptar", &otro);
  QObject::connect(boton, &QPushButton::clicked, &otro, &QDialog::accept);
  otro.show();
  QTest::mouseClick(boton, Qt::LeftButton);
  EXPECT_EQ(otro.result(), QDialog::Accepted);
}

struct CasoPie {
  bool con_aceptar;
  bool con_ayuda;
  bool por_defecto;
  const char* principal;  // the default button; null: none
  std::vector<const char*> tab;
};

TEST(PruebaMarcoDialogo, CadaDialogoTieneSusMargenesSuBotonYSuOrdenDeTab) {
  const CasoPie casos[] = {
      {true, true, true, "CmdOK", {"campo", "CmdOK", "CmdCancel", "cmdAyuda"}},
      {true, false, false, nullptr, {"campo", "CmdOK", "CmdCancel"}},
      {false, false, true, "CmdCancel", {"campo", "CmdCancel"}},
  };
  for (const CasoPie& caso : casos) {
    QDialog dialogo;
    dialogo.setObjectName("frmMarco");
    const auto boton = [](bool hay, const char* nombre) { return hay ? Boton(nombre, nombre) : nullptr; };
    PieDialogo pie;
    pie.ayuda = boton(caso.con_ayuda, "cmdAyuda");
    pie.cancelar = boton(true, "CmdCancel");
    pie.aceptar = boton(caso.con_aceptar, "CmdOK");
    pie.por_defecto = caso.por_defecto;
    auto* cuerpo = new QVBoxLayout;
    auto* campo = new QLineEdit;
    campo->setObjectName("campo");
    cuerpo->addWidget(campo);
    ArmarDialogo(dialogo, cuerpo, pie, {campo});
    AjustarTamano(dialogo, QSize(400, 300));
    dialogo.show();
    EXPECT_EQ(dialogo.size(), QSize(400, 300));
    EXPECT_EQ(campo->geometry().topLeft(), QPoint(kMargenVentana, kMargenVentana));
    EXPECT_EQ(pie.cancelar->geometry().bottomRight(), QPoint(399 - kMargenVentana, 299 - kMargenVentana));
    if (pie.ayuda != nullptr) {
      EXPECT_EQ(pie.ayuda->x(), kMargenVentana);
    }
    const QWidget* paso = campo;
    for (const char* nombre : caso.tab) {
      EXPECT_EQ(paso->objectName().toStdString(), nombre);
      paso = paso->nextInFocusChain();
    }
    for (const QPushButton* uno : dialogo.findChildren<QPushButton*>()) {
      EXPECT_EQ(uno->isDefault(), caso.principal != nullptr && uno->objectName() == caso.principal);
    }
  }
}

}  // namespace
}  // namespace utr
