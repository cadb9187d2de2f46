#include "configuration/windows/PanelCambios.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <numeric>

#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr int kRenglones = 6;  // seen at once
constexpr int kAlrededor = 8;  // what a row adds to its text

Columnas ColumnasDeCambios() {
  return {{"NroCanal", "NroCanal", Presentacion::kTalCual, ClaseOrden::kNumero},
          {"Canal", "Canal"},
          {"Campo", "Campo"},
          {"En la UTR", "ValorUTR"},
          {"Nuevo", "ValorNuevo"}};
}

EncabezadoLista Encabezado() {
  return {"Cambios en los canales de la UTR", {}};
}

}  // namespace

PanelCambios::PanelCambios(const ContextoListas& contexto, const char* modulo, QWidget* parent)
    : QWidget(parent),
      lista_(new VistaLista(ColumnasDeCambios())),
      servicios_(contexto, *lista_, {.modulo = modulo, .procedimiento_imprimir = "ImprimirCambios"}),
      titulo_(new QToolButton) {
  setObjectName("PanelCambios");
  ArmarLista();
  titulo_->setObjectName("Cambios");
  titulo_->setCheckable(true);
  titulo_->setAutoRaise(true);
  titulo_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  titulo_->setWhatsThis(
      QStringLiteral("Lo que va a cambiar en la UTR si se acepta: cada campo que difiere de lo que se leyó de ella."));
  connect(titulo_, &QToolButton::toggled, this, &PanelCambios::Plegar);
  auto* renglon = new QHBoxLayout;
  renglon->addWidget(titulo_);
  renglon->addStretch(1);
  for (QPushButton* boton : {NuevoBoton("CopiarCambios", "Copiar", nullptr, &PanelCambios::Copiar),
                             NuevoBoton("GuardarCambios", "Guardar...", "guardar", &PanelCambios::Guardar),
                             NuevoBoton("ImprimirCambios", "Imprimir", "imprimir", &PanelCambios::Imprimir)}) {
    renglon->addWidget(boton);
  }
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->addLayout(renglon);
  caja->addWidget(lista_);
  Plegar(false);
  Mostrar({});
}

void PanelCambios::ArmarLista() {
  lista_->SinFiltro();
  lista_->CampoFiltro()->setObjectName("txtFiltroCambios");
  lista_->Arbol()->setObjectName("ListaCambios");
  lista_->Arbol()->setAccessibleName(QStringLiteral("Cambios"));
  lista_->setFixedHeight((kRenglones + 1) * (lista_->fontMetrics().lineSpacing() + kAlrededor));  // with the titles
}

QPushButton* PanelCambios::NuevoBoton(const char* nombre, const char* texto, const char* icono,
                                      void (PanelCambios::*hacer)()) {
  QPushButton* boton = Boton(nombre, QString::fromUtf8(texto));
  if (icono != nullptr) boton->setIcon(IconoDe(icono));
  boton->setAccessibleName(boton->text().remove('.') + QStringLiteral(" los cambios"));
  connect(boton, &QPushButton::clicked, this, hacer);
  botones_.append(boton);
  return boton;
}

void PanelCambios::Mostrar(const std::vector<CambioConfiguracion>& cambios) {
  const bool habia = lista_->Lista().Total() > 0;
  lista_->Mostrar(TablaDeCambios(cambios));
  titulo_->setText(cambios.empty() ? QStringLiteral("Cambios: ninguno")
                                   : QStringLiteral("Cambios: %1").arg(cambios.size()));
  for (QPushButton* boton : botones_) boton->setEnabled(!cambios.empty());
  if (!habia && !cambios.empty()) titulo_->setChecked(true);
}

void PanelCambios::Plegar(bool desplegado) {
  titulo_->setArrowType(desplegado ? Qt::DownArrow : Qt::RightArrow);
  lista_->setVisible(desplegado);
  for (QPushButton* boton : botones_) boton->setVisible(desplegado);
}

// The selected rows, or all where none is selected.
void PanelCambios::Copiar() {
  std::vector<std::size_t> filas = lista_->FilasElegidas();
  if (filas.empty()) {
    filas.resize(lista_->Lista().Cantidad());
    std::iota(filas.begin(), filas.end(), std::size_t{0});
  }
  QApplication::clipboard()->setText(Q(lista_->Lista().TextoDeFilas(filas)));
}

void PanelCambios::Guardar() {
  servicios_.GuardarComo(Encabezado);
}

void PanelCambios::Imprimir() {
  servicios_.Imprimir(Encabezado);
}

}  // namespace utr
