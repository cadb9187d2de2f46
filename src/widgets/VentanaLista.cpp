#include "widgets/VentanaLista.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <QWhatsThis>
#include <algorithm>
#include <cmath>

#include "widgets/Ayuda.h"
#include "widgets/Campos.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/Iconos.h"
#include "widgets/PanelAviso.h"
#include "widgets/Recuerdos.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"
#include "widgets/frmItemLista.h"

namespace utr {
namespace {

constexpr int kBajoLaBarra = 8;
constexpr int kEntrePartes = 10;
constexpr int kEntreLineas = 20;
constexpr int kAnchoALado = 420;
constexpr int kLetrasPorVenir = 250;         // of what is said of the rows once there are some
constexpr int kRenglonesDeAire = 2;          // rather a body that may scroll than one that is cut off
constexpr QLatin1String kAlLado("al lado");  // what is remembered of the part beside the list
constexpr QLatin1String kDivision("division");

bool EsDePestanias(const QWidget* control) {
  return qobject_cast<const QTabBar*>(control) != nullptr;
}

// A line that stands in one row where there is room for it, and wraps where there isn't: what was read makes no window
// wider than its screen.
class LineaDicha : public QLabel {
 public:
  explicit LineaDicha(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
  }
  QSize sizeHint() const override { return {fontMetrics().horizontalAdvance(text()) + 2, QLabel::sizeHint().height()}; }
};

// How many rows it takes on the screen.
int RenglonesPorVenir(const QWidget& ventana) {
  const int sitio = SitioEnPantalla(ventana).width() - 2 * kMargenVentana;
  return kLetrasPorVenir * ventana.fontMetrics().averageCharWidth() / std::max(sitio, 1) + 1;
}

// One over the other, with a bar between them that the operator moves; the upper one takes what is left over.
QWidget* Dividir(QWidget* arriba, QWidget* abajo) {
  auto* partes = new QSplitter(Qt::Vertical);
  partes->setChildrenCollapsible(false);
  partes->addWidget(arriba);
  partes->addWidget(abajo);
  partes->setStretchFactor(0, 1);
  partes->setStretchFactor(1, 0);
  return partes;
}

}  // namespace

VentanaLista::VentanaLista(const ContextoListas& contexto, std::filesystem::path archivo_ayuda,
                           const DescripcionLista& descripcion, Columnas columnas, QWidget* parent)
    : QDialog(parent),
      operador_(contexto.operador),
      archivo_ayuda_(std::move(archivo_ayuda)),
      lista_(new VistaLista(std::move(columnas))),
      servicios_(contexto, *lista_, descripcion.palabras),
      columna_titulo_(descripcion.columna_titulo),
      menu_(new QMenuBar(this)),
      barra_(new QToolBar(this)),
      zona_(new ZonaLista(lista_, this)),
      picInfo_(Panel("picInfo", "Esta operación demorará unos instantes. Por favor espere...")),
      lineas_(new QHBoxLayout),
      lblFiltradas_(new LineaDicha(this)) {
  setObjectName(Q(descripcion.palabras.modulo));
  setWindowTitle(QString::fromUtf8(descripcion.titulo));
  setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                 Qt::WindowCloseButtonHint);
  lblFiltradas_->setObjectName("lblFiltradas");
  barra_->setObjectName("BarraHerramientas");
  barra_->setAccessibleName("Barra de herramientas");
  NombrarBotonesDeQt(*barra_);
  lineas_->setSpacing(kEntreLineas);
  connect(lista_, &VistaLista::Activada, this, &VentanaLista::Activar);
  connect(lista_, &VistaLista::SeleccionCambiada, this, &VentanaLista::Habilitar);
  connect(lista_->Arbol()->model(), &QAbstractItemModel::modelReset, this, &VentanaLista::Contar);
  Contar();
  servicios_.Proponer([this] { return NombreDeArchivo(Encabezado(false)); });
  servicios_.Enmarcar([this](const TrabajoDePaginas& trabajo) { ConPanel(trabajo); });
}

// --- Commands --------------------------------------------------------------------------------------------------------

QMenu* VentanaLista::NuevoMenu(const MenuVentana& menu, QMenu* madre) {
  const QString texto = QString::fromUtf8(menu.texto);
  QMenu* nuevo = madre == nullptr ? menu_->addMenu(texto) : madre->addMenu(texto);
  nuevo->setObjectName(QString::fromLatin1(menu.nombre));
  return nuevo;
}

// The list goes after this window has; what it still tells then finds nobody.
VentanaLista::~VentanaLista() {
  lista_->disconnect(this);
}

QAction* VentanaLista::NuevaAccion(const ComandoVentana& comando) {
  auto* accion = new QAction(this);
  if (comando.icono != nullptr) accion->setIcon(IconoDe(comando.icono));
  const char* texto = comando.texto != nullptr ? comando.texto : comando.ayuda;
  accion->setText(QString::fromUtf8(texto));
  if (comando.ayuda != nullptr) accion->setToolTip(QString::fromUtf8(comando.ayuda));
  accion->setShortcut(comando.tecla);
  for (const char* nombre : {comando.nombre, comando.clave}) {
    if (nombre != nullptr) acciones_[nombre] = {accion, comando.si};
  }
  connect(accion, &QAction::triggered, this, [this, hacer = comando.hacer] {
    if (!Ocupacion::Ocupada(*this)) hacer();
  });
  return accion;
}

void VentanaLista::Comandos(const std::vector<MenuVentana>& menus, const std::vector<ComandoVentana>& comandos,
                            const std::vector<const char*>& barra) {
  std::map<std::string_view, QMenu*> puestos;
  const std::function<QMenu*(std::string_view)> menu_de = [&](std::string_view nombre) {
    QMenu*& puesto = puestos[nombre];
    const auto menu = std::find_if(menus.begin(), menus.end(), [&](const auto& uno) { return uno.nombre == nombre; });
    if (puesto == nullptr) puesto = NuevoMenu(*menu, menu->dentro_de == nullptr ? nullptr : menu_de(menu->dentro_de));
    return puesto;
  };
  std::map<std::string_view, const ComandoVentana*> con_boton;
  for (const ComandoVentana& comando : comandos) {
    QAction* accion = NuevaAccion(comando);
    if (comando.clave != nullptr) con_boton[comando.clave] = &comando;
    if (comando.nombre == nullptr) continue;
    accion->setObjectName(QString::fromLatin1(comando.nombre));
    QMenu* menu = menu_de(comando.menu != nullptr ? comando.menu : menus.front().nombre);
    if (comando.abre_grupo) menu->addSeparator();
    menu->addAction(accion);
  }
  for (const char* clave : barra) {
    if (clave == nullptr) {
      barra_->addSeparator();
      continue;
    }
    barra_->addAction(Accion(clave));
    QWidget* boton = barra_->widgetForAction(Accion(clave));
    boton->setObjectName(QString::fromLatin1(clave));
    boton->setAccessibleName(QString::fromUtf8(con_boton.at(clave)->ayuda));
  }
  if (al_lado_ != nullptr) AgregarVer();
  Habilitar();
}

// A click on a button that is at work already would print twice.
std::function<void()> VentanaLista::UnaVez(std::function<void()> hacer) {
  return [this, hacer = std::move(hacer)] {
    {
      const Ocupacion ocupacion(*this);
      hacer();
    }
    Habilitar();  // what the work turned off while the window was kept
  };
}

ComandoVentana VentanaLista::ComandoAbrir(const char* nombre) {
  return {.nombre = nombre,
          .texto = "&Abrir",
          .clave = "Open",
          .icono = "abrir",
          .ayuda = "Abrir el registro elegido",
          .tecla = QKeySequence::Open,
          .si = [this] { return HayFilas(); },
          .hacer = [this] { Activar(); }};
}

ComandoVentana VentanaLista::ComandoGuardar(const char* nombre) {
  return {.nombre = nombre,
          .texto = "&Guardar como...",
          .abre_grupo = true,
          .clave = "Save",
          .icono = "guardar",
          .ayuda = "Guardar la lista como texto",
          .tecla = QKeySequence::Save,
          .si = [this] { return HayFilas(); },
          .hacer = UnaVez([this] { servicios_.GuardarComo([this] { return Encabezado(false); }); })};
}

ComandoVentana VentanaLista::ComandoGuardarCsv() {
  return {.nombre = "mnuGuardarCsv",
          .texto = "G&uardar como CSV...",
          .tecla = Qt::CTRL | Qt::SHIFT | Qt::Key_S,
          .si = [this] { return HayFilas(); },
          .hacer = UnaVez([this] { servicios_.GuardarComoCsv(); })};
}

ComandoVentana VentanaLista::ComandoExportar(const char* nombre) {
  return {.nombre = nombre,
          .texto = "E&xportar...",
          .clave = "Export",
          .icono = "exportar",
          .ayuda = "Exportar para inserción manual",
          .si = [this] { return HayResultado(); },
          .hacer = UnaVez([this] { servicios_.ExportarImp(TablaDeImp()); })};
}

ComandoVentana VentanaLista::ComandoConfigurarImpresora(const char* nombre) {
  return {.nombre = nombre, .texto = "&Configurar Impresora", .abre_grupo = true, .hacer = [this] {
            servicios_.ConfigurarImpresora();
          }};
}

ComandoVentana VentanaLista::ComandoImprimir(const char* nombre) {
  return {.nombre = nombre,
          .texto = "&Imprimir",
          .clave = "Print",
          .icono = "imprimir",
          .ayuda = "Imprimir la lista",
          .tecla = QKeySequence::Print,
          .si = [this] { return HayFilas(); },
          .hacer = UnaVez([this] { servicios_.Imprimir([this] { return Encabezado(true); }); })};
}

ComandoVentana VentanaLista::ComandoVistaPrevia() {
  return {.nombre = "mnuVistaPrevia",
          .texto = "&Vista previa...",
          .icono = "vista-previa",
          .si = [this] { return HayFilas(); },
          .hacer = UnaVez([this] { servicios_.VistaPrevia([this] { return Encabezado(true); }, this); })};
}

ComandoVentana VentanaLista::ComandoSalir(const char* nombre) {
  return {.nombre = nombre, .texto = "&Salir", .abre_grupo = true, .icono = "salir", .hacer = [this] { reject(); }};
}

ComandoVentana VentanaLista::ComandoOrdenar(bool ascendente) {
  return {.clave = ascendente ? "Sort Ascending" : "Sort Descending",
          .icono = ascendente ? "orden-ascendente" : "orden-descendente",
          .ayuda = ascendente ? "Orden ascendente" : "Orden descendente",
          .tecla = QKeySequence(ascendente ? "F8" : "Shift+F8"),
          .hacer = [this, ascendente] { lista_->OrdenarComoTexto(0, ascendente); }};
}

ComandoVentana VentanaLista::ComandoAyuda() {
  return {.clave = "Help",
          .icono = "ayuda",
          .ayuda = "Ayuda",
          .tecla = QKeySequence::HelpContents,
          .si = [this] { return HayAyuda(archivo_ayuda_); },
          .hacer = [this] { AbrirAyuda(archivo_ayuda_, *this); }};
}

ComandoVentana VentanaLista::ComandoQueEsEsto() {
  return {.clave = "Help What's This",
          .icono = "que-es-esto",
          .ayuda = "¿Qué es esto?",
          .tecla = QKeySequence::WhatsThis,
          .hacer = [] { QWhatsThis::enterWhatsThisMode(); }};
}

void VentanaLista::Habilitar() {
  const bool libre = !Ocupacion::Ocupada(*this);
  for (const auto& [nombre, una] : acciones_) una.accion->setEnabled(libre && (!una.si || una.si()));
}

// --- Parts -----------------------------------------------------------------------------------------------------------

PanelAviso* VentanaLista::Panel(const char* nombre, const char* texto) {
  return zona_->Agregar(nombre, QString::fromUtf8(texto));
}

QLabel* VentanaLista::Linea(const char* nombre) {
  auto* linea = new LineaDicha(this);
  linea->setObjectName(QString::fromLatin1(nombre));
  lineas_->addWidget(linea);
  Decir(linea, {});
  return linea;
}

void VentanaLista::Decir(QLabel* linea, const QString& texto) {
  linea->setText(texto);
  linea->setVisible(!texto.isEmpty());
}

void VentanaLista::Decir(EtiquetaCopiable* linea, const QString& texto) {
  linea->Poner(texto);
  linea->setVisible(!texto.isEmpty());
}

void VentanaLista::Titular(const QString& titulo) {
  setWindowTitle(titulo);
  servicios_.Titular(U(titulo));
}

void VentanaLista::FijarImp(int tipo, const char* exito) {
  servicios_.FijarImp(tipo, exito);
}

void VentanaLista::ImprimirTexto(const std::string& texto, const std::string& origen) {
  UnaVez([&] { servicios_.ImprimirTexto(texto, origen); })();
}

void VentanaLista::ConPanel(const TrabajoDePaginas& trabajo) {
  ConPanelDePaginas(*this, AlTrabajar(), trabajo);
}

// --- Beside the list -------------------------------------------------------------------------------------------------

void VentanaLista::AlLado(QWidget* parte, const ComandoVentana& ver) {
  al_lado_ = parte;
  ver_ = NuevaAccion(ver);
  ver_->setObjectName(QString::fromLatin1(ver.nombre));
  ver_->setCheckable(true);
  ver_->setChecked(Recuerdos(objectName()).Marcado(kAlLado, true));
  connect(ver_, &QAction::toggled, this, [this](bool a_la_vista) {
    al_lado_->setVisible(a_la_vista);
    Recuerdos(objectName()).Guardar(kAlLado, a_la_vista);
  });
}

void VentanaLista::AgregarVer() {
  menu_->addMenu(QStringLiteral("&Ver"))->addAction(ver_);
  barra_->addSeparator();
  barra_->addAction(ver_);
  QWidget* boton = barra_->widgetForAction(ver_);
  boton->setObjectName(ver_->objectName() + QStringLiteral("Boton"));
  boton->setAccessibleName(ver_->toolTip());
}

// The list, what stands beside it, and the line below both.
QWidget* VentanaLista::Centro() {
  if (bajo_la_lista_ == nullptr) return ListaYLado();
  auto* centro = new QWidget;
  auto* pila = new QVBoxLayout(centro);
  pila->setContentsMargins(0, 0, 0, 0);
  pila->addWidget(ListaYLado(), 1);
  pila->addWidget(bajo_la_lista_);
  return centro;
}

QWidget* VentanaLista::ListaYLado() {
  if (al_lado_ == nullptr) return zona_;
  auto* partes = new QSplitter(Qt::Horizontal);
  partes->setObjectName("Division");
  partes->setChildrenCollapsible(false);
  partes->addWidget(zona_);
  partes->addWidget(al_lado_);
  for (int i = 0; i < partes->count(); ++i) partes->setStretchFactor(i, 1);
  const QByteArray division = Recuerdos(objectName()).Valor(kDivision).toByteArray();
  if (!partes->restoreState(division)) {
    partes->setSizes({kAnchoALado, kAnchoALado});
    por_si_sola_ = connect(lista_, &VistaLista::Ajustada, partes, [this, partes] { DarLugarALaLista(*partes); });
  }
  connect(partes, &QSplitter::splitterMoved, this, [this, partes] {
    disconnect(por_si_sola_);
    Recuerdos(objectName()).Guardar(kDivision, partes->saveState());
  });
  al_lado_->setVisible(ver_->isChecked());
  return partes;
}

// All columns are in sight as far as that leaves room for what stands beside, until the operator moves the bar.
void VentanaLista::DarLugarALaLista(QSplitter& partes) {
  if (!partes.isVisible() || !al_lado_->isVisible()) return;
  const int total = partes.width() - partes.handleWidth();
  const int al_lado = std::min(static_cast<int>(std::lround(kAnchoALado * EscalaDelTexto())), total / 2);
  const int ancho = std::min(lista_->AnchoDeseado(), total - al_lado);
  if (ancho > zona_->width()) partes.setSizes({ancho, total - ancho});
}

void VentanaLista::Armar(QWidget* encima, const PieDialogo& pie, const QSize& tamano, QWidget* debajo, bool divisible) {
  encima_ = encima;
  debajo_ = debajo;
  pie_ = pie;
  if (pie_.cancelar != nullptr) connect(pie_.cancelar, &QPushButton::clicked, this, &VentanaLista::reject);
  lineas_->addWidget(lblFiltradas_);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->setContentsMargins(kMargenVentana, kBajoLaBarra, kMargenVentana, 0);
  cuerpo->setSpacing(kEntrePartes);
  if (encima_ != nullptr) cuerpo->addWidget(ALoAncho(encima_, *this));
  if (divisible) {
    cuerpo->addWidget(Dividir(Centro(), debajo_), 1);
  } else {
    cuerpo->addWidget(Centro(), 1);
    if (debajo_ != nullptr) cuerpo->addWidget(debajo_);
  }
  auto* fila = FilaDePie(pie_, lineas_);
  auto* pila = new QVBoxLayout;
  pila->setContentsMargins(kMargenVentana, kEntrePartes, kMargenVentana, kMargenVentana);
  pila->setSpacing(kEntrePartes);
  if (junto_al_pie_ != nullptr) pila->addWidget(junto_al_pie_);
  pila->addLayout(fila);
  auto* todo = new QVBoxLayout(this);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->setSpacing(0);
  todo->setMenuBar(menu_);
  todo->addWidget(barra_);
  todo->addLayout(cuerpo, 1);
  todo->addLayout(pila);
  OrdenarTab();
  const int renglones = (RenglonesPorVenir(*this) + kRenglonesDeAire) * fontMetrics().lineSpacing();
  AjustarTamano(*this, al_lado_ == nullptr ? tamano : tamano + QSize(kAnchoALado, 0), QSize(0, renglones));
}

// The controls of a part of the window that Tab reaches.
QList<QWidget*> VentanaLista::Alcanzables(QWidget* parte) {
  QList<QWidget*> controles;
  if (parte == nullptr) return controles;
  for (QWidget* control : parte->findChildren<QWidget*>()) {
    const bool alcanzable = (control->focusPolicy() & Qt::TabFocus) != 0 && control->focusProxy() == nullptr;
    if (alcanzable && control->window() == parte->window()) controles.append(control);  // not what pops up
  }
  // The tabs of sheets come ahead of what the sheets hold.
  std::stable_partition(controles.begin(), controles.end(), EsDePestanias);
  return controles;
}

// What stands over the list from left to right, the list, what stands below it, the buttons.
void VentanaLista::OrdenarTab() {
  QList<QWidget*> orden = Alcanzables(encima_);
  orden.append({lista_->CampoFiltro(), lista_->Arbol()});
  orden.append(Alcanzables(al_lado_));
  orden.append(Alcanzables(debajo_));
  for (QPushButton* boton : {pie_.aceptar, pie_.cancelar, pie_.ayuda}) {
    if (boton != nullptr) orden.append(boton);
  }
  for (qsizetype i = 1; i < orden.size(); ++i) setTabOrder(orden[i - 1], orden[i]);
  QWidget* primero = *std::find_if_not(orden.begin(), orden.end(), EsDePestanias);
  (primero == lista_->CampoFiltro() ? lista_->Arbol() : primero)->setFocus();
}

// --- The list --------------------------------------------------------------------------------------------------------

bool VentanaLista::HayFilas() const {
  return lista_->Lista().Cantidad() > 0;
}

bool VentanaLista::HayResultado() const {
  return lista_->Lista().Total() > 0;
}

void VentanaLista::Contar() {
  const ListaTabla& lista = lista_->Lista();
  QString texto;
  if (lista.Cantidad() != lista.Total()) {
    texto = QStringLiteral("A la vista: %1").arg(lista.Cantidad());
    const auto exportar = acciones_.find("Export");
    if (exportar != acciones_.end() && (!exportar->second.si || exportar->second.si()))
      texto += QStringLiteral(" (Exportar los lleva todos)");
  }
  Decir(lblFiltradas_, texto);
  Habilitar();
}

void VentanaLista::Activar() {
  const std::optional<std::size_t> fila = lista_->FilaActual();
  if (!fila) return;
  frmItemLista detalle(this);
  detalle.ItemToShow(lista_->Lista(), *fila, columna_titulo_);
  detalle.exec();
}

OpcionesOcupacion VentanaLista::AlTrabajar() {
  OpcionesOcupacion opciones;
  opciones.operador = &operador_;
  opciones.panel = picInfo_;
  for (QWidget* parte : std::initializer_list<QWidget*>{menu_, barra_, encima_, lista_, al_lado_, debajo_,
                                                        junto_al_pie_, pie_.aceptar, pie_.cancelar, pie_.ayuda}) {
    if (parte != nullptr) opciones.apagados.push_back(parte);
  }
  opciones.al_cambiar = [this] { Habilitar(); };
  return opciones;
}

}  // namespace utr
