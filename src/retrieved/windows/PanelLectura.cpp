#include "retrieved/windows/PanelLectura.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <utility>

#include "retrieved/windows/VistaMapa.h"
#include "widgets/Campos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::int64_t kEntreCifras = 250;  // milliseconds; nobody reads faster

QLabel* Etiqueta(const char* nombre, const QString& el_mas_ancho) {
  auto* etiqueta = new QLabel;
  etiqueta->setObjectName(nombre);
  etiqueta->setMinimumWidth(etiqueta->fontMetrics().horizontalAdvance(el_mas_ancho));
  return etiqueta;
}

QProgressBar* Barra(const char* nombre, const QString& que) {
  auto* barra = new QProgressBar;
  barra->setObjectName(nombre);
  barra->setAccessibleName(que);
  barra->setTextVisible(false);
  return barra;
}

}  // namespace

PanelLectura::PanelLectura(const Reloj& reloj, VistaMapa& mapa, QWidget* parent)
    : QWidget(parent),
      reloj_(reloj),
      mapa_(mapa),
      LblPista_(Etiqueta("LblPista", "Pista:31")),
      LblInfo_(Etiqueta("LblInfo", " Leyendo pagina:1024")),
      lblAvance_(Etiqueta("lblAvance", {})),
      Progreso_(Barra("Progreso", "Pistas leídas")),
      ProgresoPaginas_(Barra("ProgresoPaginas", "Páginas leídas de la pista")),
      Cancelar_(utr::Boton("Cancelar", "C&ancelar")) {
  setObjectName("picInfo");
  Armar();
  Ver(false);
}

void PanelLectura::Armar() {
  lblAvance_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* reja = new QGridLayout(this);
  reja->setContentsMargins(0, 0, 0, 0);
  reja->addWidget(LblPista_, 0, 0);
  reja->addWidget(Progreso_, 0, 1);
  reja->addWidget(LblInfo_, 1, 0);
  reja->addWidget(ProgresoPaginas_, 1, 1);
  reja->addWidget(Cancelar_, 0, 2, 2, 1);
  reja->addWidget(lblAvance_, 2, 0, 1, 3);
  reja->setColumnStretch(1, 1);
  QSizePolicy politica = sizePolicy();
  politica.setRetainSizeWhenHidden(true);
  politica.setVerticalPolicy(QSizePolicy::Fixed);
  setSizePolicy(politica);
  for (QWidget* control :
       {static_cast<QWidget*>(LblPista_), static_cast<QWidget*>(Progreso_), static_cast<QWidget*>(Cancelar_)}) {
    politica = control->sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    control->setSizePolicy(politica);
  }
}

void PanelLectura::Ver(bool visto) {
  for (QWidget* control :
       {static_cast<QWidget*>(LblPista_), static_cast<QWidget*>(Progreso_), static_cast<QWidget*>(Cancelar_)})
    control->setVisible(visto);
  if (visto) cancelado_ = false;
  setVisible(visto);
}

void PanelLectura::Seguir(const LectorFlash& lector, int primera_pista) {
  lector_ = &lector;
  lugar_ = {-1, -1};
  Progreso_->setRange(primera_pista, kPistas);
  ProgresoPaginas_->setRange(0, kPaginasPista - 1);
  Cifras();
}

void PanelLectura::ExportandoConfiguracion() {
  lector_ = nullptr;
  Progreso_->hide();
  LblPista_->hide();
  LblInfo_->setText(QStringLiteral("Exportando configuración"));
  lblAvance_->clear();
  ProgresoPaginas_->setRange(0, 2);
  ProgresoPaginas_->setValue(1);
}

void PanelLectura::Cancelar() {
  cancelado_ = true;
  Cancelar_->hide();
}

void PanelLectura::Texto(std::string_view texto) {
  LblPista_->setText(Q(texto));
}

void PanelLectura::Rango(std::int64_t) {}

void PanelLectura::Posicion(std::int64_t) {
  const LugarPagina& lugar = lector_->Avance().lugar;
  if (std::exchange(lugar_, lugar) == lugar) return ProgresoPaginas_->setValue(ProgresoPaginas_->maximum());
  Progreso_->setValue(lugar.pista);
  ProgresoPaginas_->setValue(lugar.pagina);
  LblInfo_->setText(QStringLiteral(" Leyendo pagina:%1").arg(lugar.pagina + 1));
  if (reloj_.Milisegundos() - mostrado_ >= kEntreCifras) Cifras();
}

// The list of what failed is the box at the end; meanwhile the map shows it.
void PanelLectura::Descartado(std::string_view, std::string_view) {
  Cifras();
}

void PanelLectura::Cifras() {
  mostrado_ = reloj_.Milisegundos();
  lblAvance_->setText(Q(EnPalabras(lector_->Avance())));
  mapa_.Actualizar();
}

}  // namespace utr
