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
    : QStatusBar(parent), progreso_(Panel("Panel1")), puerto_(Panel("PUERTO")), velocidad_(Panel("Velocidad")) {
  setObjectName("BarraEstado");
  addWidget(progreso_, 1);
  addPermanentWidget(puerto_);
  addPermanentWidget(velocidad_);
}

void BarraEstado::Progreso(const QString& texto) {
  progreso_->setText(texto);
}

void BarraEstado::Mostrar(const TextosPanel& textos) {
  puerto_->setText(Q(textos.puerto));
  velocidad_->setText(Q(textos.velocidad));
  puerto_->setEnabled(textos.habilitados);
  velocidad_->setEnabled(textos.habilitados);
}

}  // namespace utr
