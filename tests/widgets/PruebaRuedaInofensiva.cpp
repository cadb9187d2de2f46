#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QSpinBox>
#include <QWheelEvent>

#include "widgets/CampoFecha.h"
#include "widgets/RuedaInofensiva.h"

namespace utr {
namespace {

void Girar(QWidget& control) {
  QWheelEvent giro({4, 4}, control.mapToGlobal(QPointF(4, 4)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&control, &giro);
}

TEST(RuedaInofensiva, LaRuedaNoCambiaValores) {
  QWidget ventana;
  QComboBox lista(&ventana);
  lista.addItems({"Analógico", "Meteorológico"});
  QSpinBox copias(&ventana);
  copias.setValue(3);
  CampoFecha fecha(&ventana);
  fecha.setDateTime(QDateTime(QDate(2026, 3, 15), QTime(0, 0), Qt::UTC));
  ventana.show();
  lista.setFocus();
  for (QWidget* control : std::initializer_list<QWidget*>{&lista, &copias, &fecha}) Girar(*control);
  EXPECT_NE(lista.currentIndex(), 0) << "as it is without the guard";
  lista.setCurrentIndex(0);
  copias.setValue(3);
  fecha.setDate(QDate(2026, 3, 15));

  RuedaInofensiva rueda;
  qApp->installEventFilter(&rueda);
  for (QWidget* control : std::initializer_list<QWidget*>{&lista, &copias, &fecha}) Girar(*control);
  EXPECT_EQ(lista.currentIndex(), 0);
  EXPECT_EQ(copias.value(), 3);
  EXPECT_EQ(fecha.date(), QDate(2026, 3, 15));
}

}  // namespace
}  // namespace utr
