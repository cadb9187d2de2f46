#include "retrieved/windows/VistaMapa.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include "retrieved/windows/RejaMapa.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr QSize kMuestra{13, 11};
constexpr int kEntreEntradas = 14;
constexpr int kEntreRenglones = 6;

QPixmap Muestra(EstadoPagina estado, const QWidget& donde) {
  const qreal puntos = donde.devicePixelRatioF();
  QPixmap imagen(kMuestra * puntos);
  imagen.setDevicePixelRatio(puntos);
  imagen.fill(donde.palette().color(QPalette::Base));
  QPainter pintor(&imagen);
  PintarEstado(pintor, QRect(QPoint(1, 1), kMuestra - QSize(2, 2)), estado, donde.palette());
  return imagen;
}

QHBoxLayout* EntradaDe(EstadoPagina estado, const QString& palabra, const QWidget& donde) {
  auto* dibujo = new QLabel;
  dibujo->setPixmap(Muestra(estado, donde));
  dibujo->setAccessibleName(palabra);
  auto* entrada = new QHBoxLayout;
  entrada->setSpacing(kEntreRenglones);
  entrada->addWidget(dibujo);
  entrada->addWidget(new QLabel(palabra));
  return entrada;
}

}  // namespace

VistaMapa::VistaMapa(MapaMemoria& mapa, QWidget* parent)
    : QWidget(parent),
      mapa_(mapa),
      reja_(new RejaMapa(mapa)),
      lugar_(new QLabel),
      cuenta_(new EtiquetaCopiable(QStringLiteral("lblCuentaMapa"))),
      cerca_(new QToolButton) {
  setObjectName("VistaMapa");
  lugar_->setObjectName("lblLugarMapa");
  lugar_->setMinimumWidth(1);  // long words don't push the window wider
  cerca_->setObjectName("AcercarMapa");
  cerca_->setText(QStringLiteral("De a una página"));
  cerca_->setToolTip(QStringLiteral("Una página en cada lugar del mapa, en vez de ocho (teclas + y -)"));
  cerca_->setCheckable(true);
  connect(cerca_, &QToolButton::toggled, this, &VistaMapa::Acercar);
  connect(reja_, &RejaMapa::ZoomCambiado, this, [this] { cerca_->setChecked(reja_->Cerca()); });
  connect(reja_, &RejaMapa::LugarCambiado, this, &VistaMapa::DecirLugar);
  mapa_.AlCambiar([this](const LugarPagina& lugar) { reja_->Repintar(lugar); });
  Armar();
  Actualizar();
}

VistaMapa::~VistaMapa() {
  mapa_.AlCambiar({});
}

void VistaMapa::Armar() {
  auto* leyenda = new DisposicionEnFilas(kEntreEntradas);
  for (const EstadoPagina estado : mapa_.Leyenda())
    leyenda->Agregar(EntradaDe(estado, Q(mapa_.Palabra(estado)), *this));
  auto* renglon = new QHBoxLayout;
  renglon->addWidget(lugar_, 1);
  renglon->addWidget(cerca_);
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->setSpacing(kEntreRenglones);
  caja->addWidget(reja_, 1);
  caja->addLayout(renglon);
  caja->addLayout(leyenda);
  caja->addWidget(cuenta_);
}

void VistaMapa::Actualizar() {
  const QString cuenta = Q(mapa_.Cuenta());
  cuenta_->Poner(cuenta);
  reja_->setAccessibleDescription(cuenta);
  DecirLugar();
}

void VistaMapa::Renombrar() {
  reja_->Medir();
  DecirLugar();
}

void VistaMapa::Acercar(bool cerca) {
  reja_->Acercar(cerca);
}

QList<QWidget*> VistaMapa::Controles() const {
  return {reja_, cerca_, cuenta_};
}

LugarPagina VistaMapa::Lugar() const {
  return reja_->Lugar();
}

void VistaMapa::DecirLugar() {
  lugar_->setText(Q(mapa_.Describir(reja_->Lugar(), reja_->PorCelda())));
}

}  // namespace utr
