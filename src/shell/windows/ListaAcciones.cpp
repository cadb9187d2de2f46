#include "shell/windows/ListaAcciones.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "widgets/Tamanos.h"
#include "widgets/Temas.h"

namespace utr {
namespace {

constexpr int kIndice = Qt::UserRole + 1;

constexpr int kQueHace = Qt::AccessibleDescriptionRole;

constexpr int kAire = 7;  // above and below the two lines of a row
constexpr double kLetraChica = 0.88;

constexpr QSize kIconoGrande(48, 48);
constexpr QSize kIconoPequeno(20, 20);
constexpr QSize kIconoDeDetalle(24, 24);

// How the icon view looks in each of its three forms. `texto`: the room that the widest caption takes.
struct Aspecto {
  QListView::ViewMode modo;
  QListView::Flow flujo;
  QSize icono;
  QSize celda;
};
Aspecto AspectoDe(Vista vista, const QSize& texto) {
  if (vista == Vista::kIconosGrandes) {
    const QSize icono = kIconoGrande * EscalaDelTexto();
    const QSize celda(texto.width() + 24, icono.height() + 2 * texto.height() + 16);
    return {QListView::IconMode, QListView::LeftToRight, icono, celda};
  }
  const QSize icono = kIconoPequeno * EscalaDelTexto();
  const QSize celda(texto.width() + icono.width() + 40, texto.height() + 16);
  return {QListView::ListMode, vista == Vista::kIconosPequenos ? QListView::LeftToRight : QListView::TopToBottom, icono,
          celda};
}

// The selection covers a cell whole, its icon too, which is drawn for that ground.
class PintorAcciones : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* opcion, const QModelIndex& fila) const override {
    QStyledItemDelegate::initStyleOption(opcion, fila);
    opcion->showDecorationSelected = true;
  }
};

QFont LetraChica(QFont letra) {
  letra.setPointSizeF(letra.pointSizeF() * kLetraChica);
  return letra;
}

// The same with what the action does beneath its caption.
class PintorDetalles : public PintorAcciones {
 public:
  using PintorAcciones::PintorAcciones;

  void paint(QPainter* pintor, const QStyleOptionViewItem& lugar, const QModelIndex& fila) const override {
    QStyleOptionViewItem opcion = lugar;
    initStyleOption(&opcion, fila);
    const QStyle& estilo = *opcion.widget->style();
    const QRect sitio =
        estilo.subElementRect(QStyle::SE_ItemViewItemText, &opcion, opcion.widget).adjusted(6, 0, -4, 0);
    const QString texto = std::exchange(opcion.text, QString());
    estilo.drawControl(QStyle::CE_ItemViewItem, &opcion, pintor, opcion.widget);
    const int renglon = opcion.fontMetrics.height();
    const int alto = renglon + QFontMetrics(LetraChica(opcion.font)).height();
    const QRect arriba(sitio.left(), sitio.center().y() - alto / 2, sitio.width(), renglon);
    const QRect abajo(sitio.left(), arriba.bottom() + 1, sitio.width(), alto - renglon);
    const bool elegida = opcion.state.testFlag(QStyle::State_Selected);
    const bool activa = opcion.state.testFlag(QStyle::State_Enabled);
    const auto grupo = activa ? QPalette::Active : QPalette::Disabled;
    opcion.font = LetraDe(activa, opcion.font, opcion.palette);
    pintor->save();
    Escribir(*pintor, arriba, opcion, texto,
             opcion.palette.color(grupo, elegida ? QPalette::HighlightedText : QPalette::Text));
    opcion.font = LetraChica(opcion.font);
    Escribir(*pintor, abajo, opcion, fila.data(kQueHace).toString(),
             opcion.palette.color(grupo, elegida ? QPalette::HighlightedText : QPalette::PlaceholderText));
    pintor->restore();
  }

  QSize sizeHint(const QStyleOptionViewItem& lugar, const QModelIndex& fila) const override {
    const QSize renglon = QStyledItemDelegate::sizeHint(lugar, fila);
    const QFontMetrics chica(LetraChica(lugar.font));
    return {std::max(renglon.width(), chica.horizontalAdvance(fila.data(kQueHace).toString()) + 48),
            lugar.fontMetrics.height() + chica.height() + 2 * kAire};
  }

 private:
  static void Escribir(QPainter& pintor, const QRect& sitio, const QStyleOptionViewItem& opcion, const QString& texto,
                       const QColor& color) {
    const QFontMetrics medidas(opcion.font);
    pintor.setFont(opcion.font);
    pintor.setPen(color);
    pintor.drawText(sitio, Qt::AlignLeft | Qt::AlignVCenter, medidas.elidedText(texto, Qt::ElideRight, sitio.width()));
  }
};

QAbstractItemView* VistaDeDetalles(const QSize& icono) {
  auto* vista = new QTreeView;
  vista->setRootIsDecorated(false);
  vista->setUniformRowHeights(true);
  vista->setIconSize(icono);
  vista->header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  vista->setItemDelegate(new PintorDetalles(vista));
  return vista;
}

QAbstractItemView* VistaDeIconos(const Aspecto& aspecto) {
  auto* vista = new QListView;
  vista->setViewMode(aspecto.modo);
  vista->setFlow(aspecto.flujo);
  vista->setWrapping(true);
  vista->setResizeMode(QListView::Adjust);
  vista->setMovement(QListView::Static);
  vista->setWordWrap(true);
  vista->setIconSize(aspecto.icono);
  vista->setGridSize(aspecto.celda);
  vista->setItemDelegate(new PintorAcciones(vista));
  return vista;
}

}  // namespace

ListaAcciones::ListaAcciones(QWidget* parent)
    : QWidget(parent), modelo_(new QStandardItemModel(this)), seleccion_(new QItemSelectionModel(modelo_, this)) {
  setObjectName("Lista");
  modelo_->setHorizontalHeaderLabels({"Acciones"});
  auto* sitio = new QVBoxLayout(this);
  sitio->setContentsMargins(0, 0, 0, 0);
  FijarVista(Vista::kDetalles);
}

void ListaAcciones::Agregar(const QString& texto, const QString& que_hace, const QIcon& icono, int indice) {
  auto* fila = new QStandardItem(icono, texto);
  fila->setData(indice, kIndice);
  fila->setData(que_hace, kQueHace);
  modelo_->appendRow(fila);
}

void ListaAcciones::FijarVista(Vista vista) {
  const bool con_foco = vista_ != nullptr && vista_->hasFocus();
  cual_ = vista;
  delete vista_;
  vista_ = NuevaVista(vista);
  vista_->setModel(modelo_);
  vista_->setSelectionModel(seleccion_);
  vista_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  vista_->setSelectionMode(QAbstractItemView::SingleSelection);
  vista_->setAccessibleName("Acciones");
  vista_->setWhatsThis("Las acciones del programa. Un doble clic o Enter ejecuta la elegida.");
  vista_->installEventFilter(this);
  connect(vista_, &QAbstractItemView::doubleClicked, this, &ListaAcciones::EjecutarFila);
  layout()->addWidget(vista_);
  setFocusProxy(vista_);
  if (con_foco) setFocus();
}

QAbstractItemView* ListaAcciones::NuevaVista(Vista vista) const {
  if (vista == Vista::kDetalles) return VistaDeDetalles(kIconoDeDetalle * EscalaDelTexto());
  return VistaDeIconos(AspectoDe(vista, SitioDelTexto()));
}

QSize ListaAcciones::SitioDelTexto() const {
  int ancho = 0;
  for (const QString& texto : Textos()) ancho = std::max(ancho, fontMetrics().horizontalAdvance(texto));
  return {ancho, fontMetrics().height()};
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
  vista_->setCurrentIndex(modelo_->index(fila, 0));
}

// The cells of the icon views have room for the captions in one size of letters.
void ListaAcciones::changeEvent(QEvent* evento) {
  QWidget::changeEvent(evento);
  if (evento->type() == QEvent::FontChange && vista_ != nullptr) FijarVista(cual_);
}

bool ListaAcciones::eventFilter(QObject* vigilado, QEvent* evento) {
  if (evento->type() == QEvent::KeyPress) {
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
      // A row may be current without being seen as chosen; then Enter must not run it.
      const QModelIndexList elegidas = seleccion_->selectedIndexes();
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
