#include <gtest/gtest.h>

#include <QVBoxLayout>
#include <QWidget>

#include "widgets/DisposicionEnFilas.h"
#include "widgets/HojasJustas.h"

namespace utr {
namespace {

// A sheet of parts of 100 by 30 in rows.
QWidget* Hoja(int partes) {
  auto* hoja = new QWidget;
  auto* filas = new DisposicionEnFilas(0, hoja);
  filas->setContentsMargins(0, 0, 0, 0);
  for (int i = 0; i < partes; ++i) {
    auto* parte = new QWidget;
    parte->setFixedSize(100, 30);
    filas->Agregar(parte);
  }
  return hoja;
}

TEST(HojasJustas, SonTanAltasComoLaHojaALaVista) {
  QWidget ventana;
  auto* pila = new QVBoxLayout(&ventana);
  pila->setContentsMargins(0, 0, 0, 0);
  auto* hojas = new HojasJustas;
  hojas->addTab(Hoja(8), QStringLiteral("Alta"));
  hojas->addTab(Hoja(1), QStringLiteral("Baja"));
  hojas->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  auto* lista = new QWidget;
  pila->addWidget(hojas);
  pila->addWidget(lista, 1);
  ventana.resize(250, 400);  // two parts a row
  ventana.show();
  pila->activate();
  const int lista_con_la_alta = lista->height();
  EXPECT_GE(hojas->currentWidget()->height(), 4 * 30);
  hojas->setCurrentIndex(1);
  pila->activate();
  EXPECT_LT(hojas->currentWidget()->height(), 2 * 30);
  EXPECT_EQ(lista->height(), lista_con_la_alta + 3 * 30);
  hojas->setCurrentIndex(0);
  pila->activate();
  EXPECT_EQ(lista->height(), lista_con_la_alta);
}

}  // namespace
}  // namespace utr
