#include "retrieved/windows/VistaRegistros.h"

#include <QAction>
#include <QCloseEvent>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <QWhatsThis>
#include <array>

#include "retrieved/windows/frmItemLista.h"
#include "widgets/Ayuda.h"
#include "widgets/CampoFecha.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/PanelAviso.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

struct CaraComando {
  Comando comando;
  const char* clave;  // key of the toolbar button; null: never on the toolbar
  const char* icono;
  const char* ayuda;
  QKeySequence::StandardKey tecla;
  bool con_lista;  // only while a result is listed
};
constexpr std::array kCaras{
    CaraComando{Comando::kMarco0, nullptr, nullptr, nullptr, QKeySequence::UnknownKey, false},
    CaraComando{Comando::kMarco1, nullptr, nullptr, nullptr, QKeySequence::UnknownKey, false},
    CaraComando{Comando::kAbrir, "Open", "abrir", "Abrir el registro elegido", QKeySequence::Open, true},
    CaraComando{Comando::kGuardar, "Save", "guardar", "Guardar la lista como texto", QKeySequence::Save, true},
    CaraComando{Comando::kExportar, "Export", "exportar", "Exportar para inserción manual", QKeySequence::UnknownKey,
                true},
    CaraComando{Comando::kConfigurarImpresora, nullptr, nullptr, nullptr, QKeySequence::UnknownKey, false},
    CaraComando{Comando::kImprimir, "Print", "imprimir", "Imprimir la lista", QKeySequence::Print, true},
    CaraComando{Comando::kSalir, nullptr, "salir", nullptr, QKeySequence::UnknownKey, false},
    CaraComando{Comando::kAscendente, "Sort Ascending", "orden-ascendente", "Orden ascendente",
                QKeySequence::UnknownKey, false},
    CaraComando{Comando::kDescendente, "Sort Descending", "orden-descendente", "Orden descendente",
                QKeySequence::UnknownKey, false},
    CaraComando{Comando::kAyuda, "Help", "ayuda", "Ayuda", QKeySequence::HelpContents, false},
    CaraComando{Comando::kQueEsEsto, "Help What's This", "que-es-esto", "¿Qué es esto?", QKeySequence::WhatsThis,
                false},
};

// A rule stands ahead of these in the menu.
bool AbreGrupoDelMenu(Comando comando) {
  return comando == Comando::kGuardar || comando == Comando::kConfigurarImpresora || comando == Comando::kSalir;
}

// And ahead of these on the toolbar.
bool AbreGrupoDeLaBarra(Comando comando) {
  return comando == Comando::kAscendente || comando == Comando::kAyuda;
}

QAction* NuevaAccion(const CaraComando& cara, QObject* dueno) {
  auto* accion = new QAction(dueno);
  if (cara.icono != nullptr) accion->setIcon(IconoDe(cara.icono));
  if (cara.ayuda != nullptr) {
    accion->setText(QString::fromUtf8(cara.ayuda));
    accion->setToolTip(QString::fromUtf8(cara.ayuda));
  }
  if (cara.tecla != QKeySequence::UnknownKey) accion->setShortcut(cara.tecla);
  accion->setEnabled(!cara.con_lista);
  return accion;
}

// An empty label takes no room.
void Decir(QLabel* etiqueta, const QString& texto) {
  etiqueta->setText(texto);
  etiqueta->setVisible(!texto.isEmpty());
}

}  // namespace

VistaRegistros::VistaRegistros(ModRTU& mod, const DescripcionVista& descripcion, Columnas columnas, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      lista_(new VistaLista(std::move(columnas))),
      servicios_(mod.Listas(), *lista_, descripcion.palabras),
      columna_titulo_(descripcion.columna_titulo),
      menu_(new QMenuBar(this)),
      barra_(new QToolBar(this)),
      zona_(new ZonaLista(lista_, this)),
      picInfo_(
          zona_->Agregar("picInfo", QStringLiteral("Esta operación demorará unos instantes. Por favor espere..."))),
      lblCantRegistros_(new QLabel(this)),
      lblFiltradas_(new QLabel(this)),
      lblPeriodo_(new QLabel(this)) {
  setObjectName(Q(descripcion.palabras.modulo));
  setWindowTitle(QString::fromUtf8(descripcion.titulo));
  setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                 Qt::WindowCloseButtonHint);
  lblCantRegistros_->setObjectName("lblCantRegistros");
  lblFiltradas_->setObjectName("lblFiltradas");
  lblPeriodo_->setObjectName("lblPeriodo");
  for (QLabel* etiqueta : {lblCantRegistros_, lblFiltradas_, lblPeriodo_}) Decir(etiqueta, {});
  for (const CaraComando& cara : kCaras) {
    QAction* accion = NuevaAccion(cara, this);
    acciones_.emplace(cara.comando, accion);
    connect(accion, &QAction::triggered, this, [this, comando = cara.comando] { Ejecutar(comando); });
  }
  ArmarMenu(descripcion);
  ArmarBarra(descripcion);
  connect(lista_, &VistaLista::Activada, this, &VistaRegistros::VerDetalle);
  connect(lista_, &VistaLista::Filtrada, this, &VistaRegistros::ContarFiltradas);
}

void VistaRegistros::ArmarMenu(const DescripcionVista& descripcion) {
  QMenu* menu = menu_->addMenu(QString::fromUtf8(descripcion.texto_menu));
  menu->setObjectName(QString::fromLatin1(descripcion.menu));
  QMenu* de_marcos = menu;
  if (descripcion.submenu != nullptr) {
    de_marcos = menu->addMenu(QString::fromUtf8(descripcion.texto_submenu));
    de_marcos->setObjectName(QString::fromLatin1(descripcion.submenu));
  }
  for (const EntradaVista& entrada : descripcion.entradas) {
    QAction* accion = AccionDe(entrada.comando);
    accion->setObjectName(QString::fromLatin1(entrada.nombre));
    accion->setText(QString::fromUtf8(entrada.texto));
    const bool es_marco = entrada.comando == Comando::kMarco0 || entrada.comando == Comando::kMarco1;
    if (AbreGrupoDelMenu(entrada.comando)) menu->addSeparator();
    (es_marco ? de_marcos : menu)->addAction(accion);
  }
}

void VistaRegistros::ArmarBarra(const DescripcionVista& descripcion) {
  barra_->setObjectName("BarraHerramientas");
  barra_->setIconSize(QSize(22, 22));
  for (const Comando comando : descripcion.barra) {
    if (AbreGrupoDeLaBarra(comando)) barra_->addSeparator();
    QAction* accion = AccionDe(comando);
    barra_->addAction(accion);
    QWidget* boton = barra_->widgetForAction(accion);
    const auto cara =
        std::find_if(kCaras.begin(), kCaras.end(), [comando](const CaraComando& c) { return c.comando == comando; });
    boton->setObjectName(QString::fromLatin1(cara->clave));
    boton->setAccessibleName(QString::fromUtf8(cara->ayuda));
  }
}

void VistaRegistros::Armar(QWidget* marcos, QPushButton* cerrar) {
  marcos_ = marcos;
  cerrar_ = cerrar;
  connect(cerrar_, &QPushButton::clicked, this, &VistaRegistros::reject);
  auto* pie = new QHBoxLayout;
  pie->setSpacing(20);
  pie->addWidget(lblCantRegistros_);
  pie->addWidget(lblFiltradas_);
  pie->addWidget(lblPeriodo_);
  pie->addStretch(1);
  pie->addWidget(cerrar_);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->setContentsMargins(12, 8, 12, 12);
  cuerpo->setSpacing(10);
  cuerpo->addWidget(marcos_);
  cuerpo->addWidget(zona_, 1);
  cuerpo->addLayout(pie);
  auto* todo = new QVBoxLayout(this);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->setSpacing(0);
  todo->setMenuBar(menu_);
  todo->addWidget(barra_);
  todo->addLayout(cuerpo, 1);
  OrdenarTab();
  resize(std::max(sizeHint().width(), 960), 620);
  RecordarTamano(this);
}

// Frames from left to right, the list, the button that closes.
void VistaRegistros::OrdenarTab() {
  QList<QWidget*> orden;
  for (QWidget* control : marcos_->findChildren<QWidget*>()) {
    const bool alcanzable = (control->focusPolicy() & Qt::TabFocus) != 0 && control->focusProxy() == nullptr;
    if (alcanzable && control->window() == this) orden.append(control);  // not what pops up
  }
  orden.append({lista_->CampoFiltro(), lista_->Arbol(), cerrar_});
  for (qsizetype i = 1; i < orden.size(); ++i) setTabOrder(orden[i - 1], orden[i]);
  orden.front()->setFocus();
}

PanelAviso* VistaRegistros::Panel(const char* nombre, const char* texto) {
  return zona_->Agregar(nombre, QString::fromUtf8(texto));
}

VistaRegistros::Fechas VistaRegistros::AgregarFechas(QFormLayout& caja, const char* formato) {
  const FechaHora hoy = mod_.reloj.Ahora();
  caja.setSpacing(kEntreControles);
  const auto nuevo = [&](const char* nombre, const char* rotulo, const char* texto) {
    auto* campo = new CampoFecha;
    campo->setTimeSpec(Qt::UTC);  // no hour of the day is missing or doubled there
    campo->setDateTime(QDateTime(QDate(hoy.anio, hoy.mes, hoy.dia), QTime(0, 0), Qt::UTC));
    campo->setObjectName(QString::fromLatin1(nombre));
    campo->setDisplayFormat(QString::fromLatin1(formato));
    campo->setCalendarPopup(true);
    campo->setWhatsThis(QStringLiteral("Límite del período que se lee; los dos extremos están incluidos."));
    campo->setLocale(QLocale(QLocale::Spanish));
    caja.addRow(Rotulo(rotulo, QString::fromUtf8(texto), campo), campo);
    return campo;
  };
  Fechas fechas{};
  fechas.inicio = nuevo("FechaInicio", "lblFechaInicio", "Fecha de &Inicio:");
  fechas.fin = nuevo("FechaFin", "lblFechaFin", "Fecha de &Fin:");
  return fechas;
}

void VistaRegistros::Ejecutar(Comando comando) {
  if (ocupada_) return;
  switch (comando) {
    case Comando::kMarco0:
    case Comando::kMarco1:
      return Marco(comando == Comando::kMarco0 ? 0 : 1);
    case Comando::kAbrir:
      return VerDetalle();
    case Comando::kGuardar:
      return servicios_.GuardarComo([this] { return Encabezado(false); });
    case Comando::kExportar:
      return servicios_.ExportarImp(Lector().Resultado());
    case Comando::kConfigurarImpresora:
      servicios_.ConfigurarImpresora();
      return;
    case Comando::kImprimir:
      return servicios_.Imprimir([this] { return Encabezado(true); });
    case Comando::kSalir:
      return reject();
    case Comando::kAscendente:
    case Comando::kDescendente:
      return lista_->OrdenarComoTexto(0, comando == Comando::kAscendente);
    case Comando::kAyuda:
      return AbrirAyuda(mod_.archivo_ayuda);
    case Comando::kQueEsEsto:
      return QWhatsThis::enterWhatsThisMode();
  }
}

void VistaRegistros::VerDetalle() {
  const std::optional<std::size_t> fila = lista_->FilaActual();
  if (!fila) return;
  frmItemLista detalle(this);
  detalle.ItemToShow(lista_->Lista(), *fila, columna_titulo_);
  detalle.exec();
}

void VistaRegistros::Leer(const PedidoLectura& pedido) {
  if (ocupada_) return;
  if (!pedido.conservar) Limpiar();
  FinLectura fin = FinLectura::kSinDatos;
  const bool bien = RegistrandoSalvoCampo(mod_.registro, mod_.operador, U(objectName()), pedido.procedimiento,
                                          U(windowTitle()), Redaccion::kCompletarse, [&] {
                                            const PunteroDeEspera puntero(mod_.operador);
                                            fin = LeerOcupada(pedido.leer);
                                            Listar(fin, pedido);
                                          });
  if (!bien) Limpiar();
  Habilitar();
  if (bien && fin == FinLectura::kFechasAlReves) mod_.operador.Mostrar(pedido.al_reves);
}

// The panel is up and the window closed to the operator for the span of the read, whichever way it ends.
FinLectura VistaRegistros::LeerOcupada(const std::function<FinLectura()>& leer) {
  struct Fin {
    VistaRegistros& vista;
    ~Fin() { vista.Ocupar(false); }
  } const al_salir{*this};
  Ocupar(true);
  return leer();
}

void VistaRegistros::Listar(FinLectura fin, const PedidoLectura& pedido) {
  if (fin == FinLectura::kFechasAlReves) return;
  Limpiar();
  Decir(lblPeriodo_, pedido.periodo());
  if (fin == FinLectura::kSinDatos) {
    zona_->Mostrar({pedido.sin_datos});
    return;
  }
  lista_->Mostrar(Lector().Resultado());
  Decir(lblCantRegistros_, QString::fromUtf8(pedido.contador) + QString::number(lista_->Lista().Total()));
}

void VistaRegistros::Limpiar() {
  zona_->Mostrar({});
  lista_->Vaciar();
  for (QLabel* etiqueta : {lblCantRegistros_, lblFiltradas_, lblPeriodo_}) Decir(etiqueta, {});
}

void VistaRegistros::Ocupar(bool ocupada) {
  ocupada_ = ocupada;
  if (ocupada) con_foco_ = focusWidget();
  for (QWidget* parte : std::initializer_list<QWidget*>{menu_, barra_, marcos_, cerrar_}) parte->setEnabled(!ocupada);
  for (const auto& [comando, accion] : acciones_) accion->setEnabled(!ocupada);
  if (ocupada) {
    zona_->Mostrar({picInfo_});
    zona_->repaint();
  } else {
    zona_->Mostrar({});
    Habilitar();
    if (con_foco_ != nullptr) con_foco_->setFocus();
  }
}

void VistaRegistros::Habilitar() {
  const bool hay = lista_->Lista().Cantidad() > 0;
  for (const CaraComando& cara : kCaras) acciones_.at(cara.comando)->setEnabled(hay || !cara.con_lista);
}

void VistaRegistros::ContarFiltradas() {
  const ListaTabla& lista = lista_->Lista();
  Decir(lblFiltradas_,
        lista.Cantidad() == lista.Total() ? QString() : QStringLiteral("A la vista: %1").arg(lista.Cantidad()));
  Habilitar();
}

void VistaRegistros::closeEvent(QCloseEvent* evento) {
  if (ocupada_) {
    evento->ignore();
    return;
  }
  QDialog::closeEvent(evento);
}

void VistaRegistros::reject() {
  if (!ocupada_) QDialog::reject();
}

FechaHora FechaDe(const QDateTimeEdit& campo) {
  const QDate fecha = campo.date();
  const QTime hora = campo.time();
  return {fecha.year(), fecha.month(), fecha.day(), hora.hour(), hora.minute(), hora.second()};
}

std::vector<std::string> VistaRegistros::LineasDesdeHasta(const Fechas& fechas) {
  return {"Desde: " + U(fechas.inicio->text()), "Hasta: " + U(fechas.fin->text())};
}

std::string VistaRegistros::LineaFecha() const {
  return "Fecha: " + TextoFecha(mod_.reloj.Ahora());
}

QString VistaRegistros::TextoPeriodo(const Fechas& fechas) {
  return QStringLiteral("Desde: %1    Hasta: %2").arg(fechas.inicio->text(), fechas.fin->text());
}

QString VistaRegistros::TextoMomento() const {
  return QStringLiteral("Leído: %1").arg(Q(TextoFechaHora(mod_.reloj.Ahora())));
}

Mensaje VistaRegistros::FechasAlReves() const {
  return {"La fecha de inicio debe ser menor que la de finalización", U(windowTitle()), Icono::kInformacion,
          Botones::kAceptar};
}

}  // namespace utr
