#include "widgets/MarcoDialogo.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/Tamanos.h"

namespace utr {

QHBoxLayout* FilaDePie(const PieDialogo& pie, QLayout* a_la_izquierda) {
  auto* fila = new QHBoxLayout;
  if (pie.ayuda != nullptr) fila->addWidget(pie.ayuda);
  if (a_la_izquierda != nullptr) fila->addLayout(a_la_izquierda);
  fila->addStretch(1);
  for (QPushButton* boton : {pie.aceptar, pie.cancelar}) {
    if (boton != nullptr) fila->addWidget(boton);
  }
  QPushButton* principal = pie.aceptar != nullptr ? pie.aceptar : pie.cancelar;
  if (pie.por_defecto && principal != nullptr) principal->setDefault(true);
  return fila;
}

void ArmarDialogo(QDialog& dialogo, QLayout* cuerpo, const PieDialogo& pie, std::initializer_list<QWidget*> campos) {
  auto* todo = new QVBoxLayout(&dialogo);
  todo->setContentsMargins(kMargenVentana, kMargenVentana, kMargenVentana, kMargenVentana);
  const bool crece = cuerpo->expandingDirections().testFlag(Qt::Vertical);
  todo->addLayout(cuerpo, crece ? 1 : 0);
  if (!crece) todo->addStretch(1);
  todo->addSpacing(kSobreElPie);
  todo->addLayout(FilaDePie(pie));
  QList<QWidget*> orden(campos);
  for (QPushButton* boton : {pie.aceptar, pie.cancelar, pie.ayuda}) {
    if (boton != nullptr) orden.append(boton);
  }
  for (qsizetype i = 1; i < orden.size(); ++i) QWidget::setTabOrder(orden[i - 1], orden[i]);
}

void AjustarTamano(QDialog& dialogo, const QSize& minimo) {
  dialogo.resize(dialogo.sizeHint().expandedTo(minimo));
  RecordarTamano(&dialogo);
}

}  // namespace utr
