#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>

#include "widgets/EtiquetaCopiable.h"

namespace utr {
namespace {

// Between two fields, in a window that has a Ctrl+C of its own.
class PruebaEtiquetaCopiable : public testing::Test {
 protected:
  PruebaEtiquetaCopiable() {
    auto* columna = new QVBoxLayout(&ventana_);
    for (QWidget* control : std::initializer_list<QWidget*>{antes_, etiqueta_, despues_}) columna->addWidget(control);
    QObject::connect(copiar_, &QShortcut::activated, &ventana_, [this] { ++copias_de_la_ventana_; });
    etiqueta_->Poner("EA01: 35,2 mm");
    ventana_.show();
    QApplication::setActiveWindow(&ventana_);
    antes_->setFocus();
    QApplication::clipboard()->clear();
  }
  static QString Copiado() { return QApplication::clipboard()->text(); }
  static void Tecla(int tecla, Qt::KeyboardModifiers con = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(tecla), con);
  }

  QWidget ventana_;
  QLineEdit* antes_ = new QLineEdit;
  EtiquetaCopiable* etiqueta_ = new EtiquetaCopiable("lblPrueba");
  QLineEdit* despues_ = new QLineEdit;
  QShortcut* copiar_ = new QShortcut(QKeySequence::Copy, &ventana_);
  int copias_de_la_ventana_ = 0;
};

TEST_F(PruebaEtiquetaCopiable, TabLaMarcaEnteraYCopiaLoMarcado) {
  Tecla(Qt::Key_Tab);
  ASSERT_TRUE(etiqueta_->hasFocus());
  Tecla(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Copiado(), "EA01: 35,2 mm");
  Tecla(Qt::Key_Home);
  for (int letra = 0; letra < 4; ++letra) Tecla(Qt::Key_Right, Qt::ShiftModifier);
  Tecla(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Copiado(), "EA01");
  EXPECT_EQ(copias_de_la_ventana_, 0);
}

TEST_F(PruebaEtiquetaCopiable, SinNadaMarcadoCopiaLaVentana) {
  Tecla(Qt::Key_Tab);
  Tecla(Qt::Key_Home);
  Tecla(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(copias_de_la_ventana_, 1);
  EXPECT_EQ(Copiado(), "");
}

TEST_F(PruebaEtiquetaCopiable, TabLaPasaPorAltoMientrasNoTieneTexto) {
  etiqueta_->Poner({});
  Tecla(Qt::Key_Tab);
  EXPECT_TRUE(despues_->hasFocus());
  etiqueta_->Poner("otra vez");
  Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(etiqueta_->selectedText(), "otra vez");
}

}  // namespace
}  // namespace utr
