#include "widgets/MarcoDialogo.h"

#include <QDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/Tamanos.h"

namespace utr {
namespace {

// Content that scrolls sideways and is as high as it wants to be.
class AreaALoAncho : public QScrollArea {
 public:
  AreaALoAncho(QWidget* contenido, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setWidget(contenido);
  }
  QSize sizeHint() const override {
    return {widget()->sizeHint().width(), widget()->sizeHint().height() + horizontalScrollBar()->sizeHint().height()};
  }
  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }
};

// Passes the item at a place of a layout on to the end of another one.
void Pasar(QVBoxLayout& de, int lugar, QVBoxLayout& a) {
  const int estirado = de.stretch(lugar);
  QLayoutItem* item = de.takeAt(lugar);
  if (QLayout* partes = item->layout()) {
    a.addLayout(partes, estirado);
  } else if (QWidget* control = item->widget()) {
    a.addWidget(control, estirado, item->alignment());
    delete item;
  } else {
    a.addItem(item);
  }
}

// Puts the body of a dialog, which the screen has no room for, into an area that scrolls; a toolbar above it and the
// row of buttons below stay.
void HacerDesplazable(QDialog& dialogo) {
  auto* todo = qobject_cast<QVBoxLayout*>(dialogo.layout());
  if (todo == nullptr || todo->count() == 0) return;
  const int desde = qobject_cast<QToolBar*>(todo->itemAt(0)->widget()) != nullptr ? 1 : 0;
  auto* hoja = new QWidget;
  auto* columna = new QVBoxLayout(hoja);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->setSpacing(todo->spacing());
  for (int quedan = std::max(todo->count() - desde - 1, 1); quedan > 0; --quedan) Pasar(*todo, desde, *columna);
  auto* area = new AreaDesplazable(hoja, &dialogo);
  area->setMinimumWidth(0);
  todo->insertWidget(desde, area, 1);
}

// What a dialog can't do without when it is as wide as the screen; parts in rows are no higher there.
QSize Minimo(const QDialog& dialogo, const QSize& sitio) {
  QSize minimo = dialogo.minimumSizeHint();
  const QLayout* partes = dialogo.layout();
  if (partes != nullptr && partes->hasHeightForWidth())
    minimo.setHeight(std::max(minimo.height(), partes->totalMinimumHeightForWidth(sitio.width())));
  return minimo;
}

bool Cabe(const QSize& tamano, const QSize& sitio) {
  return tamano.width() <= sitio.width() && tamano.height() <= sitio.height();
}

// The words beside a field of one line stand at half its height, however high it is.
void AlinearRotulos(const QDialog& dialogo) {
  for (const QFormLayout* pares : dialogo.findChildren<QFormLayout*>()) {
    for (int fila = 0; fila < pares->rowCount(); ++fila) {
      const QLayoutItem* rotulo = pares->itemAt(fila, QFormLayout::LabelRole);
      const QLayoutItem* campo = pares->itemAt(fila, QFormLayout::FieldRole);
      if (rotulo == nullptr || campo == nullptr || rotulo->widget() == nullptr || campo->widget() == nullptr) continue;
      if (campo->widget()->sizePolicy().verticalPolicy() == QSizePolicy::Fixed)
        rotulo->widget()->setMinimumHeight(campo->sizeHint().height());
    }
  }
}

constexpr int kEntreBotones = 8;

// What a style adds to the sizes of controls once they are seen.
constexpr int kHolgura = 8;

}  // namespace

QHBoxLayout* FilaDePie(const PieDialogo& pie, QLayout* a_la_izquierda) {
  auto* fila = new QHBoxLayout;
  fila->setSpacing(kEntreBotones);
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
  // Asked before it belongs to the dialog, the body would remember itself as empty.
  todo->addLayout(cuerpo);
  const bool crece = cuerpo->expandingDirections().testFlag(Qt::Vertical);
  todo->setStretch(0, crece ? 1 : 0);
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
  const int barra = verticalScrollBar()->sizeHint().width();
  return {ideal.width() + barra, std::max(ideal.height(), widget()->heightForWidth(ideal.width())) + kHolgura};
}

QWidget* ALoAncho(QWidget* contenido, const QDialog& dialogo) {
  const int sitio = SitioEnPantalla(dialogo).width() - 2 * kMargenVentana;
  return contenido->minimumSizeHint().width() <= sitio ? contenido : new AreaALoAncho(contenido, nullptr);
}

void AjustarTamano(QDialog& dialogo, const QSize& minimo, const QSize& por_venir) {
  const QSize sitio = SitioEnPantalla(dialogo);
  AlinearRotulos(dialogo);
  if (!Cabe(Minimo(dialogo, sitio) + por_venir, sitio)) HacerDesplazable(dialogo);
  const QSize ideal = dialogo.sizeHint().expandedTo(minimo * EscalaDelTexto()).boundedTo(sitio);
  const int alto = Minimo(dialogo, ideal).height() + por_venir.height();
  dialogo.resize(ideal.expandedTo({0, alto}).boundedTo(sitio));
  RecordarTamano(&dialogo);
}

}  // namespace utr
