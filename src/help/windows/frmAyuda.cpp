#include "help/windows/frmAyuda.h"

#include <QEvent>
#include <QHelpContentModel>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/Tamanos.h"

namespace utr {
namespace {

constexpr QSize kTamano(900, 620);
constexpr int kLetrasIndice = 44;  // room for the contents
constexpr int kMargen = 6;
constexpr int kMargenPagina = 12;
constexpr int kMasHallados = 200;

QVBoxLayout* Columna(QWidget* hoja) {
  auto* columna = new QVBoxLayout(hoja);
  columna->setContentsMargins(kMargen, kMargen, kMargen, kMargen);
  return columna;
}

}  // namespace

// --- The page --------------------------------------------------------------------------------------------------------

PaginaAyuda::PaginaAyuda(const LibroAyuda& libro, QWidget* parent) : QTextBrowser(parent), libro_(libro) {
  setObjectName("Pagina");
  setAccessibleName("Página de la ayuda");
  setOpenExternalLinks(false);
  Vestir();
}

QVariant PaginaAyuda::loadResource(int tipo, const QUrl& direccion) {
  if (tipo != QTextDocument::HtmlResource || direccion.scheme() != QLatin1String("qthelp")) return {};
  const QByteArray pagina = libro_.Leer(direccion);
  return pagina.isEmpty() ? QStringLiteral("<h1>Esta página no está en la ayuda</h1>") : QString::fromUtf8(pagina);
}

// The colour of links goes into a document when it is read.
void PaginaAyuda::changeEvent(QEvent* evento) {
  QTextBrowser::changeEvent(evento);
  if (evento->type() != QEvent::PaletteChange || vistiendo_) return;
  const QScopedValueRollback una_vez(vistiendo_, true);
  Vestir();
  reload();
}

void PaginaAyuda::Vestir() {
  document()->setDocumentMargin(kMargenPagina);
  document()->setDefaultStyleSheet(
      QStringLiteral("table { margin-top: 6px; margin-bottom: 10px; border-collapse: collapse; } "
                     "td, th { border: 1px solid %1; } th { text-align: left; background-color: %2; }")
          .arg(palette().color(QPalette::Mid).name(), palette().color(QPalette::AlternateBase).name()));
}

// --- The window ------------------------------------------------------------------------------------------------------

frmAyuda::frmAyuda(const LibroAyuda& libro, QWidget* parent)
    : QWidget(parent, Qt::Window),
      libro_(libro),
      pagina_(new PaginaAyuda(libro)),
      hojas_(new QTabWidget),
      txtBuscar_(new CampoTexto("txtBuscar")),
      hallados_(new QListWidget),
      lblHallados_(new QLabel) {
  setObjectName("frmAyuda");
  hojas_->setObjectName("Hojas");
  hojas_->addTab(ArmarContenido(), "&Contenido");
  hojas_->addTab(ArmarIndice(), "Índ&ice");
  hojas_->addTab(ArmarBusqueda(), "&Buscar");
  hojas_->setUsesScrollButtons(false);  // as wide as its captions, whatever the size of text
  auto* partes = new QSplitter;
  partes->setChildrenCollapsible(false);
  partes->addWidget(hojas_);
  partes->addWidget(pagina_);
  partes->setStretchFactor(1, 1);
  const int ancho = fontMetrics().averageCharWidth() * kLetrasIndice;
  partes->setSizes({ancho, std::max(kTamano.width() - ancho, ancho)});
  auto* todo = new QVBoxLayout(this);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->setSpacing(0);
  todo->addWidget(ArmarBarra());
  todo->addWidget(partes, 1);
  connect(pagina_, &QTextBrowser::sourceChanged, this, &frmAyuda::Titular);
  // The key of a sheet leads to its first field; whoever walks the captions with the arrows stays there.
  connect(hojas_, &QTabWidget::currentChanged, this, [this] {
    if (!hojas_->tabBar()->hasFocus()) hojas_->currentWidget()->setFocus();
  });
  new QShortcut(QKeySequence(Qt::Key_Escape), this, this, &QWidget::close);
  new QShortcut(QKeySequence::Find, this, this, &frmAyuda::IrABuscar);
  resize((kTamano * EscalaDelTexto()).boundedTo(SitioEnPantalla(*this)));
  RecordarTamano(this);
  Titular();
}

QWidget* frmAyuda::ArmarBarra() {
  auto* barra = new QToolBar("Barra de herramientas");
  const auto agregar = [&](const char* nombre, const char* texto, const QKeySequence& tecla,
                           void (QTextBrowser::*hacer)()) {
    QAction* accion = barra->addAction(texto);
    accion->setObjectName(QString::fromLatin1(nombre));
    accion->setShortcut(tecla);
    connect(accion, &QAction::triggered, pagina_, hacer);
    return accion;
  };
  QAction* atras = agregar("Atras", "A&trás", QKeySequence::Back, &QTextBrowser::backward);
  QAction* adelante = agregar("Adelante", "A&delante", QKeySequence::Forward, &QTextBrowser::forward);
  connect(pagina_, &QTextBrowser::backwardAvailable, atras, &QAction::setEnabled);
  connect(pagina_, &QTextBrowser::forwardAvailable, adelante, &QAction::setEnabled);
  for (QAction* accion : {atras, adelante}) accion->setEnabled(false);
  QAction* portada = barra->addAction("&Portada");
  portada->setObjectName("Portada");
  portada->setShortcut(QKeySequence("Alt+Home"));
  connect(portada, &QAction::triggered, this, [this] { IrA(libro_.Portada()); });
  NombrarBotonesDeQt(*barra);
  return barra;
}

QWidget* frmAyuda::ArmarContenido() {
  QHelpContentWidget* contenido = libro_.Motor().contentWidget();
  contenido->setObjectName("Contenido");
  contenido->setAccessibleName("Contenido");
  contenido->setHeaderHidden(true);
  const auto abrir = [this, contenido](const QModelIndex& lugar) {
    const auto* modelo = qobject_cast<QHelpContentModel*>(contenido->model());
    if (const QHelpContentItem* item = modelo->contentItemAt(lugar)) pagina_->setSource(item->url());
  };
  connect(contenido, &QHelpContentWidget::clicked, this, abrir);
  connect(contenido, &QHelpContentWidget::activated, this, abrir);
  // The page on show is the current one of the contents, which come when Qt has read them.
  const auto seguir = [contenido](const QUrl& pagina) {
    const QModelIndex lugar = contenido->indexOf(pagina);
    if (lugar.isValid()) contenido->setCurrentIndex(lugar);
  };
  connect(pagina_, &QTextBrowser::sourceChanged, contenido, seguir);
  connect(libro_.Motor().contentModel(), &QHelpContentModel::contentsCreated, contenido, [this, contenido, seguir] {
    contenido->expandAll();
    seguir(pagina_->source());
  });
  contenido->expandAll();
  return contenido;
}

QWidget* frmAyuda::ArmarIndice() {
  auto* hoja = new QWidget;
  auto* filtro = new CampoTexto("txtIndice");
  filtro->setAccessibleName("Palabra del índice");
  filtro->setPlaceholderText("Palabra del índice");
  QHelpIndexWidget* indice = libro_.Motor().indexWidget();
  indice->setObjectName("Indice");
  indice->setAccessibleName("Índice");
  connect(filtro, &QLineEdit::textChanged, indice, [indice](const QString& texto) { indice->filterIndices(texto); });
  connect(filtro, &QLineEdit::returnPressed, indice, &QHelpIndexWidget::activateCurrentItem);
  connect(indice, &QHelpIndexWidget::clicked, indice, &QHelpIndexWidget::activateCurrentItem);
  connect(indice, &QHelpIndexWidget::documentActivated, this,
          [this](const QHelpLink& enlace) { pagina_->setSource(enlace.url); });
  // A word with several pages: they are offered where words that were searched are.
  connect(indice, &QHelpIndexWidget::documentsActivated, this,
          [this](const QList<QHelpLink>& enlaces, const QString& palabra) {
            txtBuscar_->setText(palabra);
            hallados_->clear();
            for (const QHelpLink& enlace : enlaces) AgregarHallado(enlace.title, enlace.url);
            DecirHallados();
            hojas_->setCurrentIndex(hojas_->count() - 1);
            hallados_->setCurrentRow(0);
            hallados_->setFocus();
          });
  QVBoxLayout* columna = Columna(hoja);
  columna->addWidget(filtro);
  hoja->setFocusProxy(filtro);
  columna->addWidget(indice, 1);
  return hoja;
}

QWidget* frmAyuda::ArmarBusqueda() {
  auto* hoja = new QWidget;
  txtBuscar_->setAccessibleName("Palabras que se buscan");
  txtBuscar_->setPlaceholderText("Palabras que se buscan");
  txtBuscar_->setClearButtonEnabled(true);
  NombrarBotonesDeQt(*txtBuscar_);
  hallados_->setObjectName("Hallados");
  hallados_->setWordWrap(true);
  hallados_->setAccessibleName("Páginas halladas");
  lblHallados_->setObjectName("lblHallados");
  lblHallados_->setWordWrap(true);
  auto* cmdBuscar = Boton("cmdBuscar", "B&uscar");
  connect(cmdBuscar, &QPushButton::clicked, this, &frmAyuda::Buscar);
  connect(txtBuscar_, &QLineEdit::returnPressed, this, &frmAyuda::Buscar);
  connect(&libro_.Buscador(), &QHelpSearchEngine::searchingFinished, this, &frmAyuda::MostrarHallados);
  // What was asked for while the words were still being gathered.
  connect(&libro_.Buscador(), &QHelpSearchEngine::indexingFinished, this, &frmAyuda::Buscar);
  connect(hallados_, &QListWidget::itemClicked, this, &frmAyuda::AbrirHallado);
  connect(hallados_, &QListWidget::itemActivated, this, &frmAyuda::AbrirHallado);
  QVBoxLayout* columna = Columna(hoja);
  columna->addWidget(txtBuscar_);
  hoja->setFocusProxy(txtBuscar_);
  columna->addWidget(cmdBuscar, 0, Qt::AlignRight);
  columna->addWidget(lblHallados_);
  columna->addWidget(hallados_, 1);
  return hoja;
}

void frmAyuda::Buscar() {
  hallados_->clear();
  lblHallados_->clear();
  const QString consulta = ConsultaDe(txtBuscar_->text());
  if (consulta.isEmpty()) return;
  lblHallados_->setText("Buscando...");
  if (libro_.PalabrasReunidas()) libro_.Buscador().search(consulta);
}

void frmAyuda::MostrarHallados() {
  hallados_->clear();
  const QList<QHelpSearchResult> halladas = libro_.Buscador().searchResults(0, kMasHallados);
  for (const QHelpSearchResult& una : halladas) AgregarHallado(una.title(), una.url());
  DecirHallados();
  emit Buscado();
}

void frmAyuda::AgregarHallado(const QString& titulo, const QUrl& pagina) {
  auto* renglon = new QListWidgetItem(titulo, hallados_);
  renglon->setData(Qt::UserRole, pagina);
}

void frmAyuda::DecirHallados() {
  const int cuantas = hallados_->count();
  lblHallados_->setText(cuantas == 0   ? QStringLiteral("Ninguna página tiene esas palabras.")
                        : cuantas == 1 ? QStringLiteral("Una página")
                                       : QStringLiteral("%1 páginas").arg(cuantas));
}

void frmAyuda::AbrirHallado(const QListWidgetItem* hallado) {
  pagina_->setSource(hallado->data(Qt::UserRole).toUrl());
}

void frmAyuda::IrA(const QUrl& pagina) {
  hojas_->setCurrentIndex(0);
  pagina_->setSource(pagina);
  pagina_->setFocus();
}

void frmAyuda::IrABuscar() {
  if (pagina_->source().isEmpty()) pagina_->setSource(libro_.Portada());
  hojas_->setCurrentIndex(hojas_->count() - 1);
  txtBuscar_->setFocus();
  txtBuscar_->selectAll();
}

void frmAyuda::Titular() {
  const QString titulo = pagina_->documentTitle();
  setWindowTitle(titulo.isEmpty() ? QStringLiteral("Ayuda de AdminUTR")
                                  : QStringLiteral("%1 - Ayuda de AdminUTR").arg(titulo));
}

}  // namespace utr
