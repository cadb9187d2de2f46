#include "retrieved/windows/PanelSeleccion.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFrame>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

namespace utr {
namespace {

constexpr std::array<const char*, kGrupoCola> kPilas = {
    "Pila 0 (canal 1) (pistas 0,1,2) ",      "Pila 1 (canal 2) (pistas 3,4,5)",
    "Pila 2 (canal 3) (pistas 6,7,8)",       "Pila 3 (canal 4) (pistas 9,10,11)",
    "Pila 4 (canal 5) (pistas 12,13,14)",    "Pila 5 (canal 6) (pistas 15,16,17)",
    "Pila 6 (canal 7) (pistas 18,19,20)",    "Pila 7 (canal 8) (pistas 21,22,23)",
    "Pila 8 (pluviometro) (pistas 24,25,26)"};
constexpr int kSangria = 18;
constexpr int kEntreRenglones = 1;
constexpr int kAlrededor = 6;
constexpr int kEntreMarcos = 5;

template <class Boton>
Boton* Nuevo(const QString& nombre, const char* texto) {
  auto* boton = new Boton(QString::fromUtf8(texto));
  boton->setObjectName(nombre);
  return boton;
}

}  // namespace

PanelSeleccion::PanelSeleccion(QWidget* parent)
    : QWidget(parent),
      chkDatos_(Nuevo<QCheckBox>("chkDatos", "Datos")),
      fraPilas_(new QFrame),
      opciones_(new QButtonGroup(this)),
      optPilas_{Nuevo<QRadioButton>("optPilas(0)", "Todas las pilas"),
                Nuevo<QRadioButton>("optPilas(1)", "Solamente las siguientes pilas")},
      chkColaTX_(Nuevo<QCheckBox>("chkColaTX", "Cola de transmisión pendiente (pistas 27,28,29)")),
      chkEventos_(Nuevo<QCheckBox>("chkEventos", "Eventos de la UTR (pistas 30,31)")),
      chkFulllDownload_(Nuevo<QCheckBox>(
          "chkFulllDownload", "Obtener todas las pistas independientemente de la información presente en las mismas")),
      chkConfiguracion_(Nuevo<QCheckBox>("chkConfiguracion", "Exportar configuración del equipo")) {
  for (std::size_t pila = 0; pila < chkPilas_.size(); ++pila) {
    chkPilas_[pila] = Nuevo<QCheckBox>(QStringLiteral("chkPilas(%1)").arg(pila), kPilas[pila]);
    connect(chkPilas_[pila], &QCheckBox::toggled, this, &PanelSeleccion::chkPilas_Click);
  }
  Armar();
  chkDatos_->setChecked(true);
  optPilas_[0]->setChecked(true);
  optPilas_Click();
  connect(chkDatos_, &QCheckBox::toggled, this, &PanelSeleccion::chkDatos_Click);
  for (QRadioButton* opcion : optPilas_) connect(opcion, &QRadioButton::toggled, this, &PanelSeleccion::optPilas_Click);
  for (QCheckBox* otra : {chkColaTX_, chkEventos_, chkFulllDownload_})
    connect(otra, &QCheckBox::toggled, this, &PanelSeleccion::Cambiada);
}

void PanelSeleccion::Armar() {
  fraPilas_->setObjectName("fraPilas");
  fraPilas_->setFrameShape(QFrame::StyledPanel);
  auto* marco = new QVBoxLayout(fraPilas_);
  marco->setContentsMargins(kAlrededor, kAlrededor, kAlrededor, kAlrededor);
  marco->setSpacing(kEntreRenglones);
  for (QRadioButton* opcion : optPilas_) {
    opciones_->addButton(opcion);
    marco->addWidget(opcion);
  }
  auto* pilas = new QVBoxLayout;
  pilas->setContentsMargins(kSangria, 0, 0, 0);
  pilas->setSpacing(kEntreRenglones);
  for (QCheckBox* pila : chkPilas_) pilas->addWidget(pila);
  marco->addLayout(pilas);
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->setSpacing(kEntreMarcos);
  for (QWidget* control : {static_cast<QWidget*>(chkDatos_), static_cast<QWidget*>(fraPilas_),
                           static_cast<QWidget*>(chkColaTX_), static_cast<QWidget*>(chkEventos_)})
    caja->addWidget(control);
  caja->addStretch(1);
}

QList<QWidget*> PanelSeleccion::Controles() const {
  QList<QWidget*> controles{chkDatos_, optPilas_[0], optPilas_[1]};
  for (QCheckBox* pila : chkPilas_) controles.append(pila);
  return controles << chkColaTX_ << chkEventos_ << chkFulllDownload_ << chkConfiguracion_;
}

SeleccionFlash PanelSeleccion::Seleccion() const {
  SeleccionFlash seleccion{.datos = chkDatos_->isChecked(),
                           .todas_las_pilas = optPilas_[0]->isChecked(),
                           .cola = chkColaTX_->isChecked(),
                           .eventos = chkEventos_->isChecked(),
                           .completa = chkFulllDownload_->isChecked()};
  for (std::size_t pila = 0; pila < chkPilas_.size(); ++pila) seleccion.pilas[pila] = chkPilas_[pila]->isChecked();
  return seleccion;
}

bool PanelSeleccion::ConConfiguracion() const {
  return chkConfiguracion_->isChecked();
}

bool PanelSeleccion::AlgunaPila() const {
  return std::any_of(chkPilas_.begin(), chkPilas_.end(), [](const QCheckBox* pila) { return pila->isChecked(); });
}

void PanelSeleccion::chkDatos_Click(bool puesto) {
  fraPilas_->setEnabled(puesto);
  if (!puesto) {
    for (QCheckBox* pila : chkPilas_) pila->setChecked(false);
    optPilas_[0]->setChecked(true);
  }
  Q_EMIT Cambiada();
}

// With neither option set the boxes can be ticked, which sets the second.
void PanelSeleccion::optPilas_Click() {
  for (std::size_t pila = 0; pila < chkPilas_.size(); ++pila)
    chkPilas_[pila]->setEnabled(!optPilas_[0]->isChecked() && !fijos_[pila]);
  Q_EMIT Cambiada();
}

// Without any box ticked neither option is set.
void PanelSeleccion::chkPilas_Click() {
  if (AlgunaPila()) {
    optPilas_[1]->setChecked(true);
  } else {
    opciones_->setExclusive(false);
    optPilas_[1]->setChecked(false);
    opciones_->setExclusive(true);
  }
  optPilas_Click();
}

void PanelSeleccion::Fijar(const LecturaAnterior* anterior) {
  for (std::size_t grupo = 0; grupo < fijos_.size(); ++grupo)
    fijos_[grupo] = anterior != nullptr && anterior->Tiene(grupo);
  if (anterior != nullptr) {
    const SeleccionFlash de_archivo = anterior->Ampliar({.datos = false, .todas_las_pilas = false});
    chkDatos_->setChecked(de_archivo.datos);
    for (std::size_t pila = 0; pila < chkPilas_.size(); ++pila) chkPilas_[pila]->setChecked(de_archivo.pilas[pila]);
    chkColaTX_->setChecked(de_archivo.cola);
    chkEventos_->setChecked(de_archivo.eventos);
  }
  chkDatos_->setEnabled(std::none_of(fijos_.begin(), fijos_.begin() + kGrupoCola, [](bool fijo) { return fijo; }));
  chkColaTX_->setEnabled(!fijos_[kGrupoCola]);
  chkEventos_->setEnabled(!fijos_[kGrupoEventos]);
  optPilas_Click();
}

}  // namespace utr
