#include "shell/windows/BarraEstado.h"

#include <QLabel>

#include "widgets/TextoQt.h"

namespace utr {
namespace {

QLabel* Panel(const char* nombre) {
  auto* panel = new QLabel;
  panel->setObjectName(QString::fromLatin1(nombre));
  panel->setTextFormat(Qt::PlainText);
  return panel;
}

}  // namespace

BarraEstado::BarraEstado(QWidget* parent)
    : QStatusBar(parent), puerto_(Panel("PUERTO")), velocidad_(Panel("Velocidad")) {
  setObjectName("BarraEstado");
  addWidget(Panel("Panel1"), 1);
  addPermanentWidget(puerto_);
  addPermanentWidget(velocidad_);
  puerto_->setWhatsThis("El puerto por el que se habla con la UTR, o que no hay ninguno abierto.");
  velocidad_->setWhatsThis("La velocidad del puerto serie, o la dirección IP de la UTR.");
}

void BarraEstado::Mostrar(const TextosPanel& textos) {
  puerto_->setText(Q(textos.puerto));
  velocidad_->setText(Q(textos.velocidad));
  puerto_->setEnabled(textos.habilitados);
  velocidad_->setEnabled(textos.habilitados);
}

}  // namespace utr
