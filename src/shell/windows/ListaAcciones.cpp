#include "shell/windows/ListaAcciones.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QListView>
#include <QStackedLayout>
#include <QStandardItemModel>
#include <QTreeView>
#include <algorithm>

namespace utr {
namespace {

constexpr int kIndice = Qt::UserRole + 1;

constexpr QSize kIconoGrande(48, 48);
constexpr QSize kIconoPequeno(20, 20);

// How the icon view looks in each of its three forms. `texto`: the room that the widest caption takes.
struct Aspecto {
  QListView::ViewMode modo;
  QListView::Flow flujo;
  QSize icono;
  QSize celda;
};
Aspecto AspectoDe(Vista vista, const QSize& texto) {
  if (vista == Vista::kIconosGrandes) {
    const QSize celda(texto.width() + 24, kIconoGrande.height() + 2 * texto.height() + 16);
    return {QListView::IconMode, QListView::LeftToRight, kIconoGrande, celda};
  }
  const QSize celda(texto.width() + kIconoPequeno.width() + 40, texto.height() + 16);
  return {QListView::ListMode, vista == Vista::kIconosPequenos ? QListView::LeftToRight : QListView::TopToBottom,
          kIconoPequeno, celda};
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
    vista->setWhatsThis("Las acciones del programa. Un doble clic o Enter ejecuta la elegida.");
    vista->installEventFilter(this);
    connect(vista, &QAbstractItemView::doubleClicked, this, &ListaAcciones::EjecutarFila);
    pila_->addWidget(vista);
  }
  iconos_->setSelectionModel(detalles_->selectionModel());
  setFocusProxy(detalles_);
}

void ListaAcciones::Agregar(const QString& texto, const QIcon& icono, int indice) {
  auto* fila = new QStandardItem(icono, texto);
  fila->setData(indice, kIndice);
  modelo_->appendRow(fila);
}

void ListaAcciones::FijarVista(Vista vista) {
  const bool con_foco = focusProxy() != nullptr && focusProxy()->hasFocus();
  if (vista == Vista::kDetalles) {
    pila_->setCurrentWidget(detalles_);
  } else {
    const Aspecto aspecto = AspectoDe(vista, SitioDelTexto());
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

QSize ListaAcciones::SitioDelTexto() const {
  int ancho = 0;
  for (const QString& texto : Textos()) ancho = std::max(ancho, iconos_->fontMetrics().horizontalAdvance(texto));
  return {ancho, iconos_->fontMetrics().height()};
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
      // A row may be current without being seen as chosen; then Enter must not run it.
      const QModelIndexList elegidas = detalles_->selectionModel()->selectedIndexes();
      if (!elegidas.isEmpty()) EjecutarFila(elegidas.front());
      return true;
    }
  }
  return QWidget::eventFilter(vigilado, evento);
}

void ListaAcciones::EjecutarFila(const QModelIndex& fila) {
  if (fila.isValid()) emit Ejecutar(fila.data(kIndice).toInt());
}

}  // namespace utr
