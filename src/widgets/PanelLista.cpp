#include "widgets/PanelLista.h"

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
#include "widgets/PanelDePaginas.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr int kRenglones = 6;  // seen at once
constexpr int kAlrededor = 8;  // what a row adds to its text

QString Nombre(const char* comienzo, const char* nombre) {
  return QString::fromLatin1(comienzo) + QString::fromLatin1(nombre);
}

}  // namespace

PanelLista::PanelLista(const ContextoListas& contexto, const DescripcionPanel& descripcion, Columnas columnas,
                       QWidget* parent)
    : QWidget(parent),
      descripcion_(descripcion),
      lista_(new VistaLista(std::move(columnas))),
      servicios_(contexto, *lista_, descripcion.palabras),
      titulo_(new QToolButton) {
  setObjectName(Nombre("Panel", descripcion_.nombre));
  servicios_.Proponer([this] { return NombreDeArchivo(Encabezado()); });
  servicios_.Enmarcar([this](const TrabajoDePaginas& trabajo) { ConPanelDePaginas(*this, trabajo); });
  ArmarLista();
  ArmarTitulo();
  auto* renglon = new QHBoxLayout;
  renglon->addWidget(titulo_);
  renglon->addStretch(1);
  for (QPushButton* boton : {NuevoBoton("Copiar", "Copiar", nullptr, &PanelLista::Copiar),
                             NuevoBoton("Guardar", "Guardar...", "guardar", &PanelLista::Guardar),
                             NuevoBoton("Csv", "CSV...", nullptr, &PanelLista::GuardarCsv),
                             NuevoBoton("Imprimir", "Imprimir", "imprimir", &PanelLista::Imprimir)}) {
    renglon->addWidget(boton);
  }
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->addLayout(renglon);
  caja->addWidget(lista_);
  Mostrar(nullptr);
  Plegar(false);
}

void PanelLista::ArmarLista() {
  lista_->SinFiltro();
  lista_->CampoFiltro()->setObjectName(Nombre("txtFiltro", descripcion_.nombre));
  lista_->Arbol()->setObjectName(Nombre("Lista", descripcion_.nombre));
  lista_->Arbol()->setAccessibleName(QString::fromUtf8(descripcion_.titulo));
  lista_->setFixedHeight((kRenglones + 1) * (lista_->fontMetrics().lineSpacing() + kAlrededor));  // with the titles
}

void PanelLista::ArmarTitulo() {
  titulo_->setObjectName(QString::fromLatin1(descripcion_.nombre));
  titulo_->setCheckable(true);
  titulo_->setAutoRaise(true);
  titulo_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  titulo_->setWhatsThis(QString::fromUtf8(descripcion_.explicacion));
  connect(titulo_, &QToolButton::toggled, this, &PanelLista::Plegar);
}

QPushButton* PanelLista::NuevoBoton(const char* nombre, const char* texto, const char* icono,
                                    void (PanelLista::*hacer)()) {
  QPushButton* boton = Boton(nombre, QString::fromUtf8(texto));
  boton->setObjectName(Nombre(nombre, descripcion_.nombre));
  if (icono != nullptr) boton->setIcon(IconoDe(icono));
  boton->setAccessibleName(boton->text().remove('.') + QChar(' ') + QString::fromUtf8(descripcion_.de_que));
  connect(boton, &QPushButton::clicked, this, hacer);
  botones_.append(boton);
  return boton;
}

void PanelLista::Mostrar(TablaPtr tabla) {
  const bool habia = lista_->Lista().Total() > 0;
  lista_->Mostrar(std::move(tabla));
  const std::size_t filas = lista_->Lista().Total();
  const QString cuantas = filas == 0 ? QStringLiteral("ninguno") : QString::number(filas);
  titulo_->setText(QString::fromUtf8(descripcion_.titulo) + QStringLiteral(": ") + cuantas);
  for (QPushButton* boton : botones_) boton->setEnabled(filas > 0);
  if (descripcion_.al_final) lista_->Arbol()->scrollToBottom();
  if (descripcion_.se_despliega && !habia && filas > 0) titulo_->setChecked(true);
}

void PanelLista::Plegar(bool desplegado) {
  const int antes = sizeHint().height();
  titulo_->setArrowType(desplegado ? Qt::DownArrow : Qt::RightArrow);
  lista_->setVisible(desplegado);
  for (QPushButton* boton : botones_) boton->setVisible(desplegado);
  layout()->invalidate();
  emit Plegada(sizeHint().height() - antes);
}

// The selected rows, or all where none is selected.
void PanelLista::Copiar() {
  std::vector<std::size_t> filas = lista_->FilasElegidas();
  if (filas.empty()) {
    filas.resize(lista_->Lista().Cantidad());
    std::iota(filas.begin(), filas.end(), std::size_t{0});
  }
  QApplication::clipboard()->setText(Q(lista_->Lista().TextoConTitulos(filas)));
}

EncabezadoLista PanelLista::Encabezado() const {
  return {descripcion_.documento, {}, {}, descripcion_.origen};
}

void PanelLista::Guardar() {
  servicios_.GuardarComo([this] { return Encabezado(); });
}

void PanelLista::GuardarCsv() {
  servicios_.GuardarComoCsv();
}

void PanelLista::Imprimir() {
  servicios_.Imprimir([this] { return Encabezado(); });
}

}  // namespace utr
