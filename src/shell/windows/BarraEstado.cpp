#include "shell/windows/BarraEstado.h"

#include <QLabel>
#include <algorithm>

#include "shell/windows/EtiquetaEstado.h"
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
    : QStatusBar(parent),
      panel1_(Panel("Panel1")),
      verificacion_(Panel("Verificacion")),
      bitacora_(Panel("Bitacora")),
      trafico_(Panel("Trafico")),
      puerto_(new EtiquetaEstado("PUERTO")),
      velocidad_(new EtiquetaEstado("Velocidad")) {
  setObjectName("BarraEstado");
  addWidget(panel1_, 1);
  panel1_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // a long text makes no window wider
  addPermanentWidget(verificacion_);
  addPermanentWidget(bitacora_);
  addPermanentWidget(trafico_);
  addPermanentWidget(puerto_);
  addPermanentWidget(velocidad_);
  puerto_->setWhatsThis("El puerto por el que se habla con la UTR, o que no hay ninguno abierto.");
  verificacion_->setWhatsThis("Cuántos valores de la última grabación se releyeron iguales de la UTR.");
  trafico_->setWhatsThis(
      "Lo que fue y vino por la línea desde que comenzó el programa, y cuántos pedidos hubo que repetir.");
  Verificacion({});
  bitacora_->setWhatsThis("Los asientos de la bitácora que el disco no tomó. Se vuelve a intentar con cada asiento.");
  Bitacora({}, {});
  Trafico({});
  velocidad_->setWhatsThis("La velocidad del puerto serie, o la dirección IP de la UTR.");
}

void BarraEstado::Mostrar(const TextosPanel& textos) {
  puerto_->Poner(Q(textos.puerto), textos.tono);
  velocidad_->Poner(Q(textos.velocidad));
  puerto_->setEnabled(textos.habilitados);
  velocidad_->setEnabled(textos.habilitados);
}

void BarraEstado::Verificacion(std::string_view texto, std::string_view detalle) {
  verificacion_->setText(Q(texto));
  verificacion_->setToolTip(Q(detalle));
  verificacion_->setAccessibleDescription(Q(detalle));
  verificacion_->setVisible(!texto.empty());
}

void BarraEstado::Bitacora(std::string_view texto, std::string_view detalle) {
  bitacora_->setText(Q(texto));
  bitacora_->setToolTip(Q(detalle));
  bitacora_->setAccessibleDescription(Q(detalle));
  bitacora_->setVisible(!texto.empty());
  bitacora_->repaint();
}

void BarraEstado::Trafico(std::string_view texto) {
  trafico_->setText(Q(texto));
  trafico_->setVisible(!texto.empty());
  trafico_->repaint();
}

void BarraEstado::Texto(std::string_view texto) {
  texto_ = Q(texto);
  pasos_ = hechos_ = 0;
  MostrarProgreso();
}

void BarraEstado::Rango(std::int64_t pasos) {
  pasos_ = pasos;
  MostrarProgreso();
}

void BarraEstado::Posicion(std::int64_t hechos) {
  hechos_ = hechos;
  MostrarProgreso();
}

void BarraEstado::Descartado(std::string_view que, std::string_view porque) {
  texto_ = Q(que) + ": " + Q(porque);
  MostrarProgreso();
}

// The panel gives way to a narrow window, and then the whole text is in its tip. Painted at once: the work that tells
// it may not let events run.
void BarraEstado::MostrarProgreso() {
  const QString parte =
      pasos_ > 0 && hechos_ > 0 ? QStringLiteral(" %1 %").arg(100 * std::min(hechos_, pasos_) / pasos_) : QString();
  if (panel1_->text() == texto_ + parte) return;
  panel1_->setText(texto_ + parte);
  panel1_->setToolTip(texto_ + parte);
  panel1_->repaint();
}

}  // namespace utr
