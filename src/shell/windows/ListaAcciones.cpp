#include "shell/windows/ListaAcciones.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QListView>
#include <QStackedLayout>
#include <QStandardItemModel>
#include <QTreeView>

namespace utr {
namespace {

constexpr int kIndice = Qt::UserRole + 1;

// How the icon view looks in each of its three forms.
struct Aspecto {
  QListView::ViewMode modo;
  QListView::Flow flujo;
  QSize icono;
  QSize celda;
};
Aspecto AspectoDe(Vista vista) {
  switch (vista) {
    case Vista::kIconosGrandes:
      return {QListView::IconMode, QListView::LeftToRight, QSize(48, 48), QSize(150, 100)};
    case Vista::kIconosPequenos:
      return {QListView::ListMode, QListView::LeftToRight, QSize(20, 20), QSize(230, 34)};
    case Vista::kLista:
    case Vista::kDetalles:
      break;
  }
  return {QListView::ListMode, QListView::TopToBottom, QSize(20, 20), QSize(230, 34)};
}

}  // namespace

ListaAcciones::ListaAcciones(QWidget* parent)
    : QWidget(parent),
      modelo_(new QStandardItemModel(this)),
      detalles_(new QTreeView),
      iconos_(new QListView),
      pila_(new QStackedLayout(this)) {
  setObjectName("Lista");
  modelo_->setHorizontalHeaderLabels({"Acciones"});
  detalles_->setRootIsDecorated(false);
  detalles_->setUniformRowHeights(true);
  detalles_->setIconSize(QSize(24, 24));
  detalles_->setStyleSheet("QTreeView::item { padding: 5px 2px; }");
  detalles_->header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  iconos_->setWrapping(true);
  iconos_->setResizeMode(QListView::Adjust);
  iconos_->setMovement(QListView::Static);
  iconos_->setWordWrap(true);
  for (QAbstractItemView* vista : std::initializer_list<QAbstractItemView*>{detalles_, iconos_}) {
    vista->setModel(modelo_);
    vista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vista->setSelectionMode(QAbstractItemView::SingleSelection);
    vista->setAccessibleName("Acciones");
    vista->installEventFilter(this);
    connect(vista, &QAbstractItemView::doubleClicked, this, &ListaAcciones::EjecutarFila);
    pila_->addWidget(vista);
  }
  iconos_->setSelectionModel(detalles_->selectionModel());
  setFocusProxy(detalles_);
}

void ListaAcciones::Agregar(const QString& texto, const QIcon& icono, int indice, bool activa) {
  auto* fila = new QStandardItem(icono, texto);
  fila->setData(indice, kIndice);
  fila->setEnabled(activa);
  modelo_->appendRow(fila);
}

void ListaAcciones::FijarVista(Vista vista) {
  const bool con_foco = focusProxy() != nullptr && focusProxy()->hasFocus();
  if (vista == Vista::kDetalles) {
    pila_->setCurrentWidget(detalles_);
  } else {
    const Aspecto aspecto = AspectoDe(vista);
    iconos_->setViewMode(aspecto.modo);
    iconos_->setFlow(aspecto.flujo);
    iconos_->setWrapping(true);
    iconos_->setMovement(QListView::Static);
    iconos_->setIconSize(aspecto.icono);
    iconos_->setGridSize(aspecto.celda);
    pila_->setCurrentWidget(iconos_);
  }
  setFocusProxy(pila_->currentWidget());
  if (con_foco) setFocus();
}

void ListaAcciones::Ordenar(bool ascendente) {
  modelo_->sort(0, ascendente ? Qt::AscendingOrder : Qt::DescendingOrder);
}

QStringList ListaAcciones::Textos() const {
  QStringList textos;
  for (int fila = 0; fila < modelo_->rowCount(); ++fila) textos << modelo_->item(fila)->text();
  return textos;
}

int ListaAcciones::Indice(int fila) const {
  return modelo_->item(fila)->data(kIndice).toInt();
}

void ListaAcciones::Elegir(int fila) {
  detalles_->setCurrentIndex(modelo_->index(fila, 0));
}

bool ListaAcciones::eventFilter(QObject* vigilado, QEvent* evento) {
  if (evento->type() == QEvent::KeyPress) {
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
      EjecutarFila(detalles_->currentIndex());
      return true;
    }
  }
  return QWidget::eventFilter(vigilado, evento);
}

void ListaAcciones::EjecutarFila(const QModelIndex& fila) {
  if (fila.isValid() && (fila.flags() & Qt::ItemIsEnabled)) emit Ejecutar(fila.data(kIndice).toInt());
}

}  // namespace utr
