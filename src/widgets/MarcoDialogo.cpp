#include "widgets/MarcoDialogo.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/Tamanos.h"

namespace utr {
namespace {

// Puts the body of a dialog, which the screen has no room for, into an area that scrolls; the row of buttons stays.
void HacerDesplazable(QDialog& dialogo) {
  auto* todo = qobject_cast<QVBoxLayout*>(dialogo.layout());
  QLayout* cuerpo = todo != nullptr && todo->count() > 0 ? todo->itemAt(0)->layout() : nullptr;
  if (cuerpo == nullptr) return;
  const QMargins margenes = cuerpo->contentsMargins();
  todo->takeAt(0);
  auto* hoja = new QWidget;
  hoja->setLayout(cuerpo);
  cuerpo->setContentsMargins(margenes);
  auto* area = new AreaDesplazable(hoja, &dialogo);
  area->setMinimumWidth(0);
  todo->insertWidget(0, area, 1);
}

bool Cabe(const QSize& tamano, const QSize& sitio) {
  return tamano.width() <= sitio.width() && tamano.height() <= sitio.height();
}

// What a style adds to the sizes of controls once they are seen.
constexpr int kHolgura = 8;

}  // namespace

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

AreaDesplazable::AreaDesplazable(QWidget* contenido, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // Tab goes from field to field, and the one it reaches scrolls into sight
  setWidgetResizable(true);
  setWidget(contenido);
  setMinimumWidth(contenido->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width());
}

QSize AreaDesplazable::sizeHint() const {
  const QSize ideal = widget()->sizeHint();
  return {ideal.width(), std::max(ideal.height(), widget()->heightForWidth(ideal.width())) + kHolgura};
}

void AjustarTamano(QDialog& dialogo, const QSize& minimo) {
  const QSize sitio = SitioEnPantalla(dialogo);
  if (!Cabe(dialogo.minimumSizeHint(), sitio)) HacerDesplazable(dialogo);
  dialogo.resize(dialogo.sizeHint().expandedTo(minimo).boundedTo(sitio));
  RecordarTamano(&dialogo);
}

}  // namespace utr
