#include "shell/windows/FranjaEstacion.h"

#include <QEvent>
#include <QVBoxLayout>
#include <string>

#include "shell/windows/EtiquetaEstado.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kLetraChica = 0.88;
constexpr int kEntreCeldas = 20;

QFont Letra(QFont letra, double parte, bool negrita) {
  letra.setPointSizeF(letra.pointSizeF() * parte);
  letra.setBold(negrita);
  return letra;
}

}  // namespace

FranjaEstacion::FranjaEstacion(QWidget* parent) : QFrame(parent), fila_(new DisposicionEnFilas(kEntreCeldas, this)) {
  setObjectName("FranjaEstacion");
  setAccessibleName("Estación, enlace y reloj");
  setFrameShape(QFrame::NoFrame);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  fila_->setContentsMargins(10, 6, 10, 8);
  celdas_ = {Agregar("Estacion", "Estación",
                     "La configuración con la que se trabaja: de quién es, de dónde vino y cuándo.", 5),
             Agregar("Enlace", "Enlace", "Si hay enlace con la UTR, y por dónde.", 3),
             Agregar("RelojUTR", "Reloj de la UTR",
                     "La hora de la UTR frente a la de esta PC, cuando se la leyó por última vez.", 4)};
  PonerLetras();
}

FranjaEstacion::Celda FranjaEstacion::Agregar(const char* nombre, const char* titulo, const char* que_es,
                                              int estirado) {
  const std::string prefijo = std::string("lbl") + nombre;
  auto* rotulo = new QLabel(titulo);
  rotulo->setObjectName(QString::fromStdString(prefijo + "Titulo"));
  rotulo->setForegroundRole(QPalette::PlaceholderText);
  const Celda celda{rotulo, new EtiquetaEstado(prefijo.c_str()), new EtiquetaEstado((prefijo + "Detalle").c_str())};
  celda.dato->setWhatsThis(que_es);
  celda.detalle->setWhatsThis(que_es);
  auto* columna = new QVBoxLayout;
  columna->setSpacing(1);
  for (QLabel* renglon : std::initializer_list<QLabel*>{rotulo, celda.dato, celda.detalle}) {
    renglon->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    columna->addWidget(renglon);
  }
  fila_->Agregar(columna, estirado);
  return celda;
}

void FranjaEstacion::PonerLetras() {
  for (const Celda& celda : celdas_) {
    if (celda.rotulo == nullptr) return;  // not made yet
    celda.rotulo->setFont(Letra(font(), kLetraChica, false));
    celda.dato->setFont(Letra(font(), 1, true));
    celda.detalle->setFont(Letra(font(), kLetraChica, false));
  }
}

void FranjaEstacion::changeEvent(QEvent* evento) {
  QFrame::changeEvent(evento);
  if (evento->type() == QEvent::FontChange) PonerLetras();
}

void FranjaEstacion::Mostrar(const Celda& celda, const Dato& dato) {
  celda.dato->Poner(Q(dato.texto), dato.tono);
  celda.detalle->Poner(Q(dato.detalle));
}

void FranjaEstacion::DecirUnidad(const QString& unidad) {
  setAccessibleName(unidad + QStringLiteral(": estación, enlace y reloj"));
}

void FranjaEstacion::Mostrar(const Encabezado& encabezado) {
  Mostrar(celdas_[0], encabezado.estacion);
  Mostrar(celdas_[1], encabezado.enlace);
  Mostrar(celdas_[2], encabezado.reloj);
}

}  // namespace utr
