#include "widgets/PanelAviso.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "widgets/Accesibilidad.h"
#include "widgets/Campos.h"

namespace utr {
namespace {

constexpr int kAnchoFlotante = 64;  // characters in a line of a floating panel
constexpr int kAlrededor = 8;       // what is seen around one that was scrolled to

}  // namespace

PanelAviso::PanelAviso(const char* nombre, const QString& texto, QWidget* parent)
    : QFrame(parent), etiqueta_(new QLabel(texto, this)), detalle_(new QLabel(this)) {
  setObjectName(QString::fromLatin1(nombre));
  DarRol(*this, QAccessible::AlertMessage);
  setAccessibleName(texto);
  traer_.setSingleShot(true);
  connect(&traer_, &QTimer::timeout, this, &PanelAviso::TraerALaVista);
  setFrameShape(QFrame::StyledPanel);
  setBackgroundRole(QPalette::ToolTipBase);
  setAutoFillBackground(true);
  etiqueta_->setTextFormat(Qt::PlainText);
  etiqueta_->setAlignment(Qt::AlignCenter);
  etiqueta_->setWordWrap(true);
  etiqueta_->setForegroundRole(QPalette::ToolTipText);
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(24, 18, 24, 18);
  caja->addWidget(etiqueta_);
  detalle_->setObjectName("lblDetalle");
  detalle_->setTextFormat(Qt::PlainText);
  detalle_->setAlignment(Qt::AlignCenter);
  detalle_->setWordWrap(true);  // what is told meanwhile makes no window wider than its screen
  detalle_->setForegroundRole(QPalette::ToolTipText);
  detalle_->hide();
  caja->addWidget(detalle_);
}

QString PanelAviso::Texto() const {
  return etiqueta_->text();
}

void PanelAviso::ReservarDetalle() {
  QSizePolicy sitio = detalle_->sizePolicy();
  sitio.setRetainSizeWhenHidden(true);
  detalle_->setSizePolicy(sitio);
}

void PanelAviso::Detallar(const QString& texto) {
  detalle_->setText(texto);
  detalle_->setVisible(!texto.isEmpty());
  setAccessibleDescription(texto);
}

QPushButton* PanelAviso::Boton(const char* nombre, const QString& texto) {
  auto* boton = findChild<QPushButton*>(QString::fromLatin1(nombre));
  if (boton != nullptr) return boton;
  boton = utr::Boton(nombre, texto, this);
  boton->hide();
  static_cast<QVBoxLayout*>(layout())->addWidget(boton, 0, Qt::AlignHCenter);
  return boton;
}

void PanelAviso::Flotar() {
  flota_ = true;
  etiqueta_->setMinimumWidth(etiqueta_->fontMetrics().averageCharWidth() * kAnchoFlotante);
  hide();
}

// A panel in the place of a list, in a body that scrolls, may come up where nobody looks: what it says and its button
// are brought into sight, also when it grows. Where everything lies is known only when the layouts have settled,
// hence the timer: a queued call would come before the area knows how far it scrolls.
bool PanelAviso::event(QEvent* evento) {
  const bool hecho = QFrame::event(evento);
  const bool cambia = evento->type() == QEvent::Show || evento->type() == QEvent::Resize;
  if (zona_ != nullptr && cambia) traer_.start();
  return hecho;
}

void PanelAviso::TraerALaVista() {
  if (!isVisible()) return;
  for (QWidget* sobre = parentWidget(); sobre != nullptr; sobre = sobre->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(sobre)) area->ensureWidgetVisible(this, 0, kAlrededor);
  }
}

void PanelAviso::Ver(bool visto) {
  if (flota_ && visto) {
    adjustSize();
    move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
    raise();
  }
  if (zona_ == nullptr) {
    setVisible(visto);
    if (visto) Anunciar(*this);
    return;
  }
  if (visto) return zona_->Mostrar({this});
  if (!isHidden()) zona_->Mostrar({});
}

ZonaLista::ZonaLista(QWidget* lista, QWidget* parent)
    : QWidget(parent), pila_(new QStackedLayout(this)), lista_(lista), fondo_(new QWidget(this)) {
  auto* columna = new QVBoxLayout(fondo_);
  columna->addStretch(1);
  columna->addStretch(1);
  pila_->addWidget(lista_);
  pila_->addWidget(fondo_);
}

PanelAviso* ZonaLista::Agregar(const char* nombre, const QString& texto) {
  auto* panel = new PanelAviso(nombre, texto, fondo_);
  panel->zona_ = this;
  panel->setVisible(false);
  auto* columna = static_cast<QVBoxLayout*>(fondo_->layout());
  columna->insertWidget(columna->count() - 1, panel);
  paneles_.append(panel);
  return panel;
}

void ZonaLista::Mostrar(std::initializer_list<PanelAviso*> paneles) {
  for (PanelAviso* panel : paneles_) {
    panel->setVisible(std::find(paneles.begin(), paneles.end(), panel) != paneles.end());
  }
  pila_->setCurrentWidget(paneles.size() == 0 ? lista_ : fondo_);
  for (PanelAviso* panel : paneles) Anunciar(*panel);
}

}  // namespace utr
