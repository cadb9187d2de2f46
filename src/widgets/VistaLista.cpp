#include "widgets/VistaLista.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <set>
#include <utility>

#include "widgets/AnchoTexto.h"
#include "widgets/Campos.h"
#include "widgets/ModeloLista.h"
#include "widgets/TextoQt.h"
#include "widgets/TitulosLista.h"
#include "widgets/frmColumnas.h"

namespace utr {
namespace {

constexpr int kLetrasALaVista = 60;  // of a cell at first; a double click on the border of the column shows all
constexpr int kMargenCelda = 20;
constexpr int kMargenRenglon = 6;
constexpr int kEntreIconos = 2;
constexpr int kAnchoMaximo = 4000;  // of a column

int LetrasQueCaben(int ancho, const QWidget& lista) {
  const int letra = lista.fontMetrics().averageCharWidth();
  return std::max((ancho - kMargenCelda + letra / 2) / letra, 1);
}

// The number of one of so many columns that a text tells; -1 where it tells none.
int NumeroDeColumna(const QString& texto, int columnas) {
  bool es_numero = false;
  const int columna = texto.toInt(&es_numero);
  return es_numero && columna >= 0 && columna < columnas ? columna : -1;
}

// Columns by their places, with the widths that they were given (0: none), as Disposicion writes them; nothing where a
// text tells something else.
std::vector<std::pair<int, int>> LeerColumnas(const QStringList& disposicion, int columnas) {
  std::vector<std::pair<int, int>> leidas;
  std::set<int> vistas;
  if (disposicion.size() < columnas || disposicion.size() > columnas + 1) return {};
  for (const QString& texto : disposicion.first(columnas)) {
    const QStringList partes = texto.split(':');
    const int columna = NumeroDeColumna(partes.first(), columnas);
    if (partes.size() != 2 || columna < 0 || !vistas.insert(columna).second) return {};
    leidas.emplace_back(columna, std::clamp(partes.last().toInt(), 0, kAnchoMaximo));
  }
  return leidas;
}

// Cells with air around them.
class Renglon : public QStyledItemDelegate {
 public:
  explicit Renglon(QTreeView& arbol, const TitulosLista& titulos) : QStyledItemDelegate(&arbol), titulos_(titulos) {}

  // The last column may be wider than its texts want: its numbers stand where its title does, on a ground of all of it.
  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override {
    const int ancho = titulos_.AnchoDicho(indice.column());
    QStyleOptionViewItem celda = opcion;
    if (ancho < opcion.rect.width() && AlineadaADerecha(indice)) {
      QStyleOptionViewItem fondo = opcion;
      initStyleOption(&fondo, indice);
      fondo.text.clear();
      opcion.widget->style()->drawControl(QStyle::CE_ItemViewItem, &fondo, pintor, opcion.widget);
      celda.rect.setWidth(ancho);
    }
    QStyledItemDelegate::paint(pintor, celda, indice);
  }

  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override {
    QSize tamano = QStyledItemDelegate::sizeHint(opcion, indice) + QSize(0, kMargenRenglon);
    // Styles keep icons apart by these pixels; here the air does, and a marked row is as high as the others.
    if (indice.data(Qt::DecorationRole).isValid()) tamano.rheight() -= kEntreIconos;
    return tamano;
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* opcion, const QModelIndex& indice) const override {
    QStyledItemDelegate::initStyleOption(opcion, indice);
    // Numbers stand clear of the column on their right.
    if (opcion->displayAlignment & Qt::AlignRight) opcion->text += QStringLiteral("  ");
  }

 private:
  static bool AlineadaADerecha(const QModelIndex& indice) {
    return (indice.data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight) != 0;
  }

  const TitulosLista& titulos_;
};

}  // namespace

VistaLista::VistaLista(Columnas columnas, QWidget* parent)
    : QWidget(parent),
      modelo_(new ModeloLista(std::move(columnas), this)),
      filtro_(new QLineEdit(this)),
      arbol_(new QTreeView(this)),
      titulos_(new TitulosLista(arbol_)),
      sin_aciertos_(new QLabel(arbol_->viewport())) {
  ArmarFiltro();
  ArmarArbol();
  ArmarAcciones();
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->addWidget(filtro_);
  caja->addWidget(arbol_, 1);
  AjustarColumnas();
}

void VistaLista::ArmarFiltro() {
  filtro_->setObjectName(QStringLiteral("txtFiltro"));
  filtro_->setPlaceholderText(QStringLiteral("Filtrar (Ctrl+F)"));
  filtro_->setAccessibleName(QStringLiteral("Filtrar"));
  filtro_->setClearButtonEnabled(true);
  NombrarBotonesDeQt(*filtro_);
  filtro_->setWhatsThis(QStringLiteral("Deja a la vista los renglones que contienen el texto en alguna columna."));
  filtro_->installEventFilter(this);
  SinSaltosDeLinea(*filtro_);
  connect(filtro_, &QLineEdit::textChanged, this, [this](const QString& texto) {
    Cambiar([&texto](ListaTabla& lista) { lista.Filtrar(U(texto)); });
    emit Filtrada();
  });
}

void VistaLista::ArmarArbol() {
  arbol_->setObjectName(QStringLiteral("Lista"));
  arbol_->setAccessibleName(QStringLiteral("Lista"));
  arbol_->setWhatsThis(
      QStringLiteral("Un clic en el título de una columna ordena la lista por ella; otro clic invierte el orden. "
                     "Ctrl+C copia los renglones elegidos."));
  arbol_->setUniformRowHeights(true);
  arbol_->setRootIsDecorated(false);
  arbol_->setItemsExpandable(false);
  arbol_->setAllColumnsShowFocus(true);
  arbol_->setAlternatingRowColors(true);
  arbol_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  arbol_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  arbol_->setItemDelegate(new Renglon(*arbol_, *titulos_));
  arbol_->setHeader(titulos_);
  titulos_->setSectionsClickable(true);  // the view takes that away from a header that it is given
  arbol_->setModel(modelo_);
  arbol_->installEventFilter(this);
  sin_aciertos_->setObjectName(QStringLiteral("lblSinAciertos"));
  sin_aciertos_->setTextFormat(Qt::PlainText);
  sin_aciertos_->setAlignment(Qt::AlignCenter);
  sin_aciertos_->setWordWrap(true);
  sin_aciertos_->hide();
  auto* medio = new QVBoxLayout(arbol_->viewport());
  medio->addWidget(sin_aciertos_);
  connect(modelo_, &QAbstractItemModel::modelReset, this, &VistaLista::DecirSinAciertos);
  connect(titulos_, &QHeaderView::sectionClicked, this,
          [this](int columna) { ClicColumna(static_cast<std::size_t>(columna)); });
  connect(titulos_, &QHeaderView::sectionResized, this,
          [this](int columna, int, int ancho) { AnotarAncho(columna, ancho); });
  connect(arbol_, &QTreeView::doubleClicked, this,
          [this](const QModelIndex& indice) { emit Activada(static_cast<std::size_t>(indice.row())); });
  connect(arbol_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &VistaLista::SeleccionCambiada);
  connect(arbol_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &VistaLista::SeleccionCambiada);
}

void VistaLista::ArmarAcciones() {
  auto* copiar = new QAction(QStringLiteral("&Copiar"), arbol_);
  copiar->setShortcut(QKeySequence::Copy);
  copiar->setShortcutContext(Qt::WidgetShortcut);
  connect(copiar, &QAction::triggered, this, &VistaLista::Copiar);
  auto* todo = new QAction(QStringLiteral("&Seleccionar todo"), arbol_);
  todo->setShortcut(QKeySequence::SelectAll);
  todo->setShortcutContext(Qt::WidgetShortcut);
  connect(todo, &QAction::triggered, arbol_, &QTreeView::selectAll);
  auto* ordenar = new QAction(QStringLiteral("&Ordenar por la columna siguiente"), arbol_);
  ordenar->setShortcut(QKeySequence(Qt::Key_F7));
  connect(ordenar, &QAction::triggered, this, &VistaLista::OrdenarPorLaSiguiente);
  auto* invertir = new QAction(QStringLiteral("&Invertir el orden"), arbol_);
  invertir->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F7));
  connect(invertir, &QAction::triggered, this, &VistaLista::RepetirOrden);
  auto* columnas = new QAction(QStringLiteral("Col&umnas..."), arbol_);
  columnas->setObjectName("Columnas");
  columnas->setShortcut(QKeySequence(Qt::Key_F9));
  connect(columnas, &QAction::triggered, this, [this] { frmColumnas(*this).exec(); });
  for (QAction* accion : {ordenar, invertir, columnas}) accion->setShortcutContext(Qt::WidgetShortcut);
  arbol_->addActions({copiar, todo, ordenar, invertir, columnas});
  arbol_->setContextMenuPolicy(Qt::ActionsContextMenu);
  buscar_ = new QShortcut(QKeySequence::Find, this);
  buscar_->setWhatsThis(QStringLiteral("Ir al filtro de la lista"));
  connect(buscar_, &QShortcut::activated, filtro_, [this] {
    filtro_->setFocus(Qt::ShortcutFocusReason);
    filtro_->selectAll();
  });
}

void VistaLista::Definir(Columnas columnas) {
  if (orden_ && orden_->columna >= columnas.size()) QuitarOrden(ascendente_);
  if (columnas.size() != Lista().LasColumnas().size()) anchos_propios_.clear();
  pedido_ = mostrado_ = {};
  modelo_->Cambiar([&columnas](ListaTabla& lista) { lista.Definir(std::move(columnas)); });
  AjustarColumnas();
}

void VistaLista::Mostrar(TablaPtr tabla) {
  filtro_->clear();
  if (orden_ && orden_->como_texto) QuitarOrden(false);
  const auto ajuste = qScopeGuard([this] { AjustarColumnas(); });
  pedido_ = mostrado_ = {};
  modelo_->Cambiar([this, &tabla](ListaTabla& lista) {
    lista.Mostrar(std::move(tabla));
    if (orden_) lista.Ordenar(*orden_);
  });
}

void VistaLista::Vaciar() {
  Mostrar(nullptr);
}

const ListaTabla& VistaLista::Lista() const {
  return modelo_->Lista();
}

std::optional<std::size_t> VistaLista::FilaActual() const {
  const QModelIndex actual = arbol_->currentIndex();
  if (!actual.isValid()) return std::nullopt;
  return static_cast<std::size_t>(actual.row());
}

std::vector<std::size_t> VistaLista::FilasElegidas() const {
  std::vector<std::size_t> filas;
  const QItemSelection elegidas = arbol_->selectionModel()->selection();
  for (const QItemSelectionRange& tramo : elegidas) {
    for (int fila = tramo.top(); fila <= tramo.bottom(); ++fila) filas.push_back(static_cast<std::size_t>(fila));
  }
  std::sort(filas.begin(), filas.end());
  filas.erase(std::unique(filas.begin(), filas.end()), filas.end());
  return filas;
}

void VistaLista::Elegir(std::size_t posicion) {
  const QModelIndex indice = modelo_->index(static_cast<int>(posicion), 0);
  arbol_->selectionModel()->setCurrentIndex(indice, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  arbol_->scrollTo(indice);
}

void VistaLista::ElegirTodas(const std::function<bool(std::size_t fila)>& elegida) {
  QItemSelection seleccion;
  const int ultima = modelo_->columnCount() - 1;
  const int filas = static_cast<int>(Lista().Cantidad());
  for (int desde = 0; desde < filas; ++desde) {
    int hasta = desde;
    while (hasta < filas && elegida(Lista().Fila(static_cast<std::size_t>(hasta)))) ++hasta;
    if (hasta == desde) continue;
    seleccion.append(QItemSelectionRange(modelo_->index(desde, 0), modelo_->index(hasta - 1, ultima)));
    desde = hasta;  // which isn't selected
  }
  arbol_->selectionModel()->select(seleccion, QItemSelectionModel::ClearAndSelect);
}

void VistaLista::Ordenar(std::size_t columna, bool ascendente) {
  if (std::find(ajenas_.begin(), ajenas_.end(), columna) == ajenas_.end()) {
    columna_ordenada_ = columna;
    return AplicarOrden({columna, !ascendente, false});
  }
  QuitarOrden(ascendente);
  columna_ordenada_ = columna;
  PonerIcono();
}

void VistaLista::OrdenarComoTexto(std::size_t columna, bool ascendente) {
  columna_ordenada_.reset();
  AplicarOrden({columna, !ascendente, true});
}

void VistaLista::AplicarOrden(const OrdenLista& orden) {
  ascendente_ = !orden.descendente;
  orden_ = orden;
  Cambiar([&orden](ListaTabla& lista) { lista.Ordenar(orden); });
  PonerIcono();
}

void VistaLista::QuitarOrden(bool ascendente) {
  columna_ordenada_.reset();
  orden_.reset();
  ascendente_ = ascendente;
  PonerIcono();
  Cambiar([](ListaTabla& lista) { lista.QuitarOrden(); });
}

void VistaLista::ClicColumna(std::size_t columna) {
  const bool ascendente = !ascendente_;
  Ordenar(columna, ascendente);
  emit Ordenada(columna, ascendente);
}

// By the columns as they stand; after the last one comes the first.
void VistaLista::OrdenarPorLaSiguiente() {
  const std::optional<std::size_t> ahora = orden_ ? std::optional(orden_->columna) : columna_ordenada_;
  const int lugar = ahora ? (titulos_->visualIndex(static_cast<int>(*ahora)) + 1) % titulos_->count() : 0;
  const auto columna = static_cast<std::size_t>(titulos_->logicalIndex(lugar));
  Ordenar(columna, true);
  emit Ordenada(columna, true);
}

void VistaLista::RepetirOrden() {
  if (columna_ordenada_) ClicColumna(*columna_ordenada_);
}

void VistaLista::PonerIcono() {
  const std::optional<std::size_t> cual = orden_ ? std::optional(orden_->columna) : columna_ordenada_;
  titulos_->setSortIndicatorShown(cual.has_value());
  titulos_->setSortIndicator(cual ? static_cast<int>(*cual) : -1,
                             ascendente_ ? Qt::AscendingOrder : Qt::DescendingOrder);
  const QScopedValueRollback<bool> ajustando(ajustando_, true);
  if (cual) titulos_->DarLugar(static_cast<int>(*cual));
}

void VistaLista::DecirSinAciertos() {
  const ListaTabla& lista = modelo_->Lista();
  const bool ninguno = lista.Cantidad() == 0 && lista.Total() > 0;
  sin_aciertos_->setVisible(ninguno);
  sin_aciertos_->setText(ninguno
                             ? QStringLiteral("Ningún renglón contiene \"%1\".\nEsc en el filtro los muestra todos.")
                                   .arg(Q(lista.Filtro()))
                             : QString());
}

VistaLista::Lugar VistaLista::LugarALaVista() const {
  const ListaTabla& lista = modelo_->Lista();
  Lugar lugar{.actual = {}, .elegidas = std::vector<bool>(lista.Total())};
  if (const std::optional<std::size_t> actual = FilaActual()) lugar.actual = lista.Fila(*actual);
  for (const std::size_t posicion : FilasElegidas()) lugar.elegidas[lista.Fila(posicion)] = true;
  return lugar;
}

// As much of a place as is shown now; where its current row is hidden, the first one, so that there is one to open.
void VistaLista::Volver(const Lugar& lugar) {
  const ListaTabla& lista = modelo_->Lista();
  if (lista.Cantidad() == 0) return;
  if (lugar.actual) {
    std::size_t posicion = 0;
    while (posicion < lista.Cantidad() && lista.Fila(posicion) != *lugar.actual) ++posicion;
    const bool oculta = posicion == lista.Cantidad();
    const QModelIndex nuevo = modelo_->index(oculta ? 0 : static_cast<int>(posicion), 0);
    arbol_->selectionModel()->setCurrentIndex(nuevo, QItemSelectionModel::NoUpdate);
    arbol_->scrollTo(nuevo);
  }
  const auto elegida = [&lugar](std::size_t fila) { return fila < lugar.elegidas.size() && lugar.elegidas[fila]; };
  if (std::find(lugar.elegidas.begin(), lugar.elegidas.end(), true) == lugar.elegidas.end()) return;
  ElegirTodas(elegida);
  if (lugar.actual && !arbol_->selectionModel()->hasSelection()) Elegir(*FilaActual());
}

// A place that the operator hasn't left since is the one that he had asked for, also what a filter hides of it.
void VistaLista::Cambiar(const std::function<void(ListaTabla&)>& cambio) {
  if (Lugar lugar = LugarALaVista(); lugar != mostrado_ || modelo_->Lista().Total() != pedido_.elegidas.size())
    pedido_ = std::move(lugar);
  modelo_->Cambiar(cambio);
  Volver(pedido_);
  mostrado_ = LugarALaVista();
}

int VistaLista::AnchoAjustado(std::size_t columna, const AnchoTexto& celda) const {
  const int margen = kMargenCelda + (columna == 0 ? ancho_marca_ : 0);
  int ancho = 0;
  for (const std::string_view texto : Lista().TextosDistintos(columna)) ancho = std::max(ancho, celda(texto) + margen);
  const auto letras = letras_.find(columna);
  const int tope =
      arbol_->fontMetrics().averageCharWidth() * (letras == letras_.end() ? kLetrasALaVista : letras->second);
  // The last column is what a long one ahead of it would push out of sight.
  return std::max(columna + 1 < Lista().LasColumnas().size() ? std::min(ancho, tope) : ancho,
                  titulos_->sectionSizeHint(static_cast<int>(columna)));
}

void VistaLista::AjustarColumnas() {
  const QScopedValueRollback<bool> ajustando(ajustando_, true);
  const AnchoTexto celda(arbol_->fontMetrics());
  QList<int> anchos;
  for (int columna = 0; columna < titulos_->count(); ++columna) {
    const auto propio = anchos_propios_.find(columna);
    const bool conservado = conservar_anchos_ && propio != anchos_propios_.end();
    anchos.append(conservado ? propio->second : AnchoAjustado(static_cast<std::size_t>(columna), celda));
  }
  titulos_->Decir(anchos);
  emit Ajustada();
}

int VistaLista::AnchoDeseado() const {
  int ancho = 2 * arbol_->frameWidth() + arbol_->verticalScrollBar()->sizeHint().width();
  for (int columna = 0; columna < titulos_->count(); ++columna) ancho += titulos_->AnchoDicho(columna);
  return ancho;
}

void VistaLista::LimitarLetras(std::map<std::size_t, int> letras) {
  letras_ = std::move(letras);
  AjustarColumnas();
}

// The last column takes the room that is left over, which is nobody's wish.
void VistaLista::AnotarAncho(int columna, int ancho) {
  if (!ajustando_ && !titulos_->Repartiendo() && ancho > 0) anchos_propios_[columna] = ancho;
}

void VistaLista::ConservarAnchos(bool si) {
  conservar_anchos_ = si;
  arbol_->header()->setSectionsMovable(true);
}

QStringList VistaLista::Disposicion() const {
  const QHeaderView* titulos = arbol_->header();
  QStringList columnas;
  for (int lugar = 0; lugar < titulos->count(); ++lugar) {
    const int columna = titulos->logicalIndex(lugar);
    const auto propio = anchos_propios_.find(columna);
    columnas.append(QStringLiteral("%1:%2").arg(columna).arg(propio == anchos_propios_.end() ? 0 : propio->second));
  }
  if (columna_ordenada_)
    columnas.append(QStringLiteral("%1%2").arg(*columna_ordenada_).arg(QChar(ascendente_ ? '+' : '-')));
  return columnas;
}

void VistaLista::Disponer(const QStringList& disposicion) {
  QHeaderView* titulos = arbol_->header();
  const auto columnas = LeerColumnas(disposicion, titulos->count());
  if (columnas.empty()) return;
  for (int lugar = 0; lugar < titulos->count(); ++lugar) {
    const auto [columna, ancho] = columnas[static_cast<std::size_t>(lugar)];
    titulos->moveSection(titulos->visualIndex(columna), lugar);
    anchos_propios_.erase(columna);
    if (ancho > 0) anchos_propios_[columna] = ancho;
  }
  AjustarColumnas();
  if (disposicion.size() == titulos->count()) return;
  const QString& orden = disposicion.last();
  const int columna = NumeroDeColumna(orden.chopped(1), titulos->count());
  if (columna >= 0) Ordenar(static_cast<std::size_t>(columna), orden.endsWith('+'));
}

std::vector<std::size_t> VistaLista::OrdenDeColumnas() const {
  std::vector<std::size_t> orden;
  orden.reserve(static_cast<std::size_t>(titulos_->count()));
  for (int lugar = 0; lugar < titulos_->count(); ++lugar)
    orden.push_back(static_cast<std::size_t>(titulos_->logicalIndex(lugar)));
  return orden;
}

bool VistaLista::ColumnasMovibles() const {
  return titulos_->sectionsMovable();
}

int VistaLista::LetrasDe(std::size_t columna) const {
  return LetrasQueCaben(titulos_->AnchoDicho(static_cast<int>(columna)), *arbol_);
}

int VistaLista::LetrasAjustadas(std::size_t columna) const {
  return LetrasQueCaben(AnchoAjustado(columna, AnchoTexto(arbol_->fontMetrics())), *arbol_);
}

void VistaLista::Colocar(const std::vector<std::size_t>& orden, const std::map<std::size_t, int>& letras) {
  QList<int> anchos;  // ahead of the moves, by which another column may be the last one
  for (int columna = 0; columna < titulos_->count(); ++columna) anchos.append(titulos_->AnchoDicho(columna));
  for (const auto& [columna, cuantas] : letras) {
    const int ancho = kMargenCelda + cuantas * arbol_->fontMetrics().averageCharWidth();
    anchos[static_cast<qsizetype>(columna)] = anchos_propios_[static_cast<int>(columna)] =
        std::clamp(ancho, titulos_->minimumSectionSize(), kAnchoMaximo);
  }
  for (std::size_t lugar = 0; lugar < orden.size(); ++lugar)
    titulos_->moveSection(titulos_->visualIndex(static_cast<int>(orden[lugar])), static_cast<int>(lugar));
  const QScopedValueRollback<bool> ajustando(ajustando_, true);
  titulos_->Decir(anchos);
}

void VistaLista::ColocarComoAlPrincipio() {
  anchos_propios_.clear();
  for (int columna = 0; columna < titulos_->count(); ++columna)
    titulos_->moveSection(titulos_->visualIndex(columna), columna);
  AjustarColumnas();
}

void VistaLista::Marcar(std::function<QString(std::size_t fila)> palabra, const QIcon& icono) {
  modelo_->Marcar(std::move(palabra), icono);
  const int lado = arbol_->fontMetrics().height();
  arbol_->setIconSize(QSize(lado, lado));
  ancho_marca_ = lado;
}

void VistaLista::SinFiltro() {
  filtro_->hide();
  buscar_->setEnabled(false);
}

std::string VistaLista::TextoElegido() const {
  return modelo_->Lista().TextoConTitulos(FilasElegidas());
}

void VistaLista::Copiar() const {
  if (FilasElegidas().empty()) return;  // what was copied before stays
  QApplication::clipboard()->setText(Q(TextoElegido()));
}

bool VistaLista::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() == QEvent::ShortcutOverride || evento->type() == QEvent::KeyPress) {
    auto* pulsacion = static_cast<QKeyEvent*>(evento);
    const bool solo_mirar = evento->type() == QEvent::ShortcutOverride;
    if (objeto == filtro_ && pulsacion->key() == Qt::Key_Escape && !filtro_->text().isEmpty() && solo_mirar) {
      evento->accept();  // Esc is the field's own while there is something to empty
      return true;
    }
    if (!solo_mirar) return objeto == filtro_ ? TeclaEnFiltro(pulsacion->key()) : TeclaEnLista(pulsacion->key());
  }
  return QWidget::eventFilter(objeto, evento);
}

bool VistaLista::TeclaEnFiltro(int tecla) {
  if (tecla == Qt::Key_Escape && !filtro_->text().isEmpty()) {
    filtro_->clear();
    return true;
  }
  if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter || tecla == Qt::Key_Down) {
    arbol_->setFocus(Qt::OtherFocusReason);
    if (!arbol_->currentIndex().isValid() && modelo_->rowCount() > 0) Elegir(0);
    return true;
  }
  return false;
}

// Enter opens the current row and never reaches the default button of the window.
bool VistaLista::TeclaEnLista(int tecla) {
  if (tecla != Qt::Key_Return && tecla != Qt::Key_Enter) return false;
  const std::optional<std::size_t> actual = FilaActual();
  if (!actual) return false;
  emit Activada(*actual);
  return true;
}

}  // namespace utr
