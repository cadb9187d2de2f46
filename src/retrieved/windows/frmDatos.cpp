#include "retrieved/windows/frmDatos.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>
#include <array>

#include "retrieved/ColumnasRegistros.h"
#include "retrieved/windows/GraficoDeDatos.h"
#include "retrieved/windows/frmDescarga.h"
#include "widgets/Campos.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/HojasJustas.h"
#include "widgets/Recuerdos.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr std::size_t kColumnaCanal = 2;

DescripcionLista Descripcion() {
  return {.titulo = "Datos de la UTR",
          .columna_titulo = kColumnaCanal,
          .palabras = {.modulo = "frmDatos",
                       .titulo_ventana = "Datos de la UTR",
                       .titulo_guardar = "Guardar como ...",
                       .procedimiento_imprimir = "ImprimirDatos",
                       .procedimiento_imp = "mnuExportData_Click"}};
}

// The entries of the menu that go to the two frames.
constexpr std::array kMarcos{"mnuDatHistoricos", "mnuDatosInst"};

// Seconds between two turns of the present values.
constexpr int kCadaMinimo = 10;
constexpr int kCadaMaximo = 3600;
constexpr int kCadaComun = 60;
constexpr double kVecesPausa = 1.5;  // as long a pause is a turn that was missed
constexpr int kOtroIntento = 1000;   // milliseconds until a turn that had to wait is tried again
constexpr QLatin1String kCada("actualizar cada");

constexpr int kLetrasDeCanal = 10;  // of a channel, which are in sight at least

constexpr const char* kContador = "Cantidad de Registros Cargados: ";

template <typename Control>
Control* Nuevo(const char* nombre, const char* texto, bool marcado = false) {
  auto* control = new Control(QString::fromUtf8(texto));
  control->setObjectName(QString::fromLatin1(nombre));
  control->setChecked(marcado);
  return control;
}

QVBoxLayout* Arriba(QLayout* partes) {
  auto* pila = new QVBoxLayout;
  pila->addLayout(partes);
  pila->addStretch(1);
  return pila;
}

QVBoxLayout* Apilar(std::initializer_list<QWidget*> controles) {
  auto* pila = new QVBoxLayout;
  pila->setSpacing(kEntreControles);
  for (QWidget* control : controles) pila->addWidget(control, 0, Qt::AlignLeft);
  pila->addStretch(1);
  return pila;
}

}  // namespace

frmDatos::frmDatos(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VistaRegistros(mod, Descripcion(), ColumnasDatos(), parent),
      configuracion_(configuracion ? configuracion->Clone() : nullptr),
      lector_(Contexto(), std::move(configuracion), AtenderLectura()),
      picSinDatos_(Panel("picSinDatos", "Sin datos para el canal durante las fechas seleccionada")),
      PicSinDatosInst_(Panel("PicSinDatosInst", "Sin datos en la lectura instantánea. Por favor intente de nuevo...")),
      hojas_(new HojasJustas),
      Canales_(new QComboBox),
      CheckEscalados_(Nuevo<QCheckBox>("CheckEscalados", "Datos Escalados", true)),
      chkCartucho_(Nuevo<QCheckBox>("chkCartucho", "Datos del Cartucho")),
      traer_(Boton("cmd(0)", "&Traer Datos")),
      OpEscalados_(Nuevo<QRadioButton>("OpEscalados", "Escalados", true)),
      OpSinEscalar_(Nuevo<QRadioButton>("OpSinEscalar", "Cuentas")),
      chkNivelRef_(Nuevo<QCheckBox>("chkNivelRef", "Con Nivel Ref / Constante.")),
      DatosInst_(Boton("DatosInst", "&Mostrar...")),
      chkActualizar_(Nuevo<QCheckBox>("chkActualizar", "Act&ualizar cada")),
      ActualizarCada_(new QSpinBox),
      turno_(new QTimer(this)),
      grafico_(new GraficoDeDatos(mod, lector_.Configuracion(), {objectName(), windowTitle()},
                                  [this](const std::string& procedimiento, const std::function<void()>& leer) {
                                    return LeerAparte(procedimiento, leer);
                                  })) {
  Explicar();
  AlLado(grafico_, GraficoDeDatos::ComandoVer());
  grafico_->Enlazar(Lista());
  ArmarVista(ArmarMarcos(), Boton("cmd(1)", "&Cerrar"));
  ArmarComandos();
  CargarCanales();
  disposiciones_.fill(Lista().Disposicion());
  Recordar({Canales_, CheckEscalados_, chkCartucho_, OpEscalados_, OpSinEscalar_, chkNivelRef_});
  RecordarColumnas(QStringLiteral("columnas"), [this] { return DisposicionDe(0); });
  const QStringList instantaneos =
      RecordarColumnas(QStringLiteral("columnas instantáneos"), [this] { return DisposicionDe(1); });
  if (!instantaneos.isEmpty()) disposiciones_[1] = instantaneos;
  MarcoElegido(0);
}

void frmDatos::ArmarComandos() {
  const auto ir_a = [this](int cual) { return [this, cual] { hojas_->setCurrentIndex(cual); }; };
  ComandosDeVista({{.nombre = "mnuDatos", .texto = "&Datos"}},
                  {{.nombre = kMarcos[0], .texto = "Datos &Históricos", .hacer = ir_a(0)},
                   {.nombre = kMarcos[1], .texto = "Datos i&nstantáneos", .hacer = ir_a(1)},
                   {.nombre = "mnuDescargarTodo",
                    .texto = "Descargar &todo...",
                    .abre_grupo = true,
                    .si = [this] { return configuracion_ != nullptr; },
                    .hacer = [this] { frmDescarga(Mod(), configuracion_->Clone(), this).exec(); }}},
                  {.abrir = "mnuDatosAbrir",
                   .guardar = "mnuDatosGuardarComo",
                   .exportar = "mnuExportData",
                   .configurar_impresora = "mnuPrintConfig",
                   .imprimir = "mnudatosPrint",
                   .salir = "mnuDatosSalir"});
  auto* grupo = new QActionGroup(this);
  for (const char* marco : kMarcos) {
    Accion(marco)->setCheckable(true);
    grupo->addAction(Accion(marco));
  }
  connect(hojas_, &QTabWidget::currentChanged, this, &frmDatos::MarcoElegido);
}

void frmDatos::Explicar() {
  const std::pair<QWidget*, const char*> textos[] = {
      {Canales_, "Canales habilitados de la UTR que guardan historia."},
      {CheckEscalados_, "Muestra los valores en unidades de ingeniería; sin marcar, en cuentas."},
      {chkCartucho_, "Lee el período del cartucho de la UTR en lugar de su memoria."},
      {traer_, "Lee de la UTR los registros del canal en el período elegido."},
      {OpEscalados_, "Muestra los valores presentes en unidades de ingeniería."},
      {OpSinEscalar_, "Muestra los valores presentes en cuentas."},
      {chkNivelRef_, "Suma a los valores escalados el nivel de referencia o la constante del canal."},
      {chkActualizar_,
       "Repite la lectura de los valores presentes cada tantos segundos, hasta que se desmarque o falle."},
      {ActualizarCada_, "Segundos entre el fin de una lectura y el comienzo de la que sigue."},
      {DatosInst_, "Lee de la UTR el valor presente de todos los canales habilitados."},
  };
  for (const auto& [control, texto] : textos) control->setWhatsThis(QString::fromUtf8(texto));
}

QWidget* frmDatos::ArmarMarcos() {
  hojas_->setObjectName("fraDatos");
  hojas_->addTab(ArmarHistoricos(), QStringLiteral("Datos Históricos"));
  hojas_->addTab(ArmarInstantaneos(), QStringLiteral("Datos instantáneos"));
  hojas_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  return hojas_;
}

QWidget* frmDatos::ArmarHistoricos() {
  Canales_->setObjectName("Canales");
  Canales_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  Canales_->setMinimumContentsLength(kLetrasDeCanal);
  auto* canal = new QFormLayout;
  canal->addRow(Rotulo("lblCanal", QStringLiteral("Can&al:"), Canales_), Canales_);
  auto* fechas = new QFormLayout;
  AgregarFechas(*fechas, "dd/MM/yyyy");
  connect(traer_, &QPushButton::clicked, this, &frmDatos::TraerDatos);
  auto* hoja = new QWidget;
  auto* todo = new QVBoxLayout(hoja);
  todo->setSpacing(kEntreControles);
  auto* fila = new DisposicionEnFilas(kEntreColumnas);
  // The channel gives way so that the button stands in the same row where the letters are large.
  fila->AgregarFlexible(Arriba(canal));
  fila->Agregar(Arriba(fechas));
  fila->Agregar(Apilar({CheckEscalados_, chkCartucho_}));
  fila->Agregar(Apilar({traer_}));
  todo->addLayout(fila);
  todo->addWidget(NuevaBarraPeriodos());
  return hoja;
}

QWidget* frmDatos::ArmarInstantaneos() {
  connect(DatosInst_, &QPushButton::clicked, this, &frmDatos::MostrarInstantaneos);
  auto* hoja = new QWidget;
  auto* fila = new DisposicionEnFilas(kEntreColumnas, hoja);
  fila->Agregar(Apilar({OpEscalados_, OpSinEscalar_}));
  fila->Agregar(Apilar({chkNivelRef_}));
  fila->Agregar(Apilar({DatosInst_}));
  fila->Agregar(ArmarActualizar());
  return hoja;
}

QLayout* frmDatos::ArmarActualizar() {
  ActualizarCada_->setObjectName("ActualizarCada");
  ActualizarCada_->setAccessibleName(QStringLiteral("Actualizar cada, en segundos"));
  ActualizarCada_->setRange(kCadaMinimo, kCadaMaximo);
  ActualizarCada_->setSuffix(QStringLiteral(" s"));
  ActualizarCada_->setValue(Recuerdos(objectName()).Entero(kCada, kCadaComun, kCadaMinimo, kCadaMaximo));
  turno_->setObjectName("turno");
  turno_->setSingleShot(true);
  connect(turno_, &QTimer::timeout, this, &frmDatos::Turno);
  connect(chkActualizar_, &QCheckBox::toggled, this, &frmDatos::ActualizarSeguido);
  connect(ActualizarCada_, &QSpinBox::valueChanged, this, [this](int cada) {
    Recuerdos(objectName()).Guardar(kCada, cada);
    if (turno_->isActive()) turno_->start(cada * 1000);
  });
  auto* renglon = new QHBoxLayout;
  renglon->addWidget(chkActualizar_);
  renglon->addWidget(ActualizarCada_);
  auto* pila = new QVBoxLayout;
  pila->addLayout(renglon);
  pila->addStretch(1);
  return pila;
}

void frmDatos::CargarCanales() {
  for (const std::string& canal : lector_.CargarCanales()) Canales_->addItem(Q(canal));
}

void frmDatos::MarcoElegido(int cual) {
  Accion(kMarcos[static_cast<std::size_t>(cual)])->setChecked(true);
  (cual == 0 ? traer_ : DatosInst_)->setDefault(true);
  VerMarco(cual);
}

QStringList frmDatos::DisposicionDe(int marco) const {
  return marco == marco_ ? Lista().Disposicion() : disposiciones_[static_cast<std::size_t>(marco)];
}

// Each frame has a list of its own, with its columns and its plot.
void frmDatos::VerMarco(int cual) {
  if (cual == marco_) return;
  vistos_[static_cast<std::size_t>(marco_)] = LoVisto();
  quedaron_[static_cast<std::size_t>(marco_)] = ComoQuedo();
  disposiciones_[static_cast<std::size_t>(marco_)] = Lista().Disposicion();
  Ver({});
  marco_ = cual;
  Lista().QuitarOrden(false);
  Lista().Definir(marco_ == 0 ? ColumnasDatos() : ColumnasInstantaneos());
  Lista().Disponer(disposiciones_[static_cast<std::size_t>(marco_)]);
  grafico_->setCurrentIndex(marco_);
  Ver(vistos_[static_cast<std::size_t>(marco_)]);
  Dejar(quedaron_[static_cast<std::size_t>(marco_)]);
}

frmDatos::MarcoQuedo frmDatos::ComoQuedo() {
  MarcoQuedo quedo;
  const ListaTabla& lista = Lista().Lista();
  quedo.filtro = Lista().CampoFiltro()->text();
  if (const auto actual = Lista().FilaActual()) quedo.actual = lista.Fila(*actual);
  for (const std::size_t posicion : Lista().FilasElegidas()) quedo.elegidas.insert(lista.Fila(posicion));
  return quedo;
}

// Rows of the same table are known by their places in it.
void frmDatos::Dejar(const MarcoQuedo& quedo) {
  if (!HayResultado()) return;
  Lista().CampoFiltro()->setText(quedo.filtro);
  const ListaTabla& lista = Lista().Lista();
  for (std::size_t posicion = 0; quedo.actual && posicion < lista.Cantidad(); ++posicion) {
    if (lista.Fila(posicion) != *quedo.actual) continue;
    Lista().Elegir(posicion);
    break;
  }
  if (!quedo.elegidas.empty()) Lista().ElegirTodas([&](std::size_t fila) { return quedo.elegidas.contains(fila); });
}

void frmDatos::TraerDatos() {
  hojas_->setCurrentIndex(0);
  PedidoLectura pedido;
  pedido.procedimiento = "cmd_Click";
  chkActualizar_->setChecked(false);  // the list is of the records now
  pedido.leer = [this] {
    leido_ = {Desde(), Hasta(), U(Canales_->currentText()), CheckEscalados_->isChecked(), chkCartucho_->isChecked()};
    return lector_.TraerDatos(leido_);
  };
  pedido.sin_datos = picSinDatos_;
  pedido.contador = kContador;
  pedido.por_fechas = true;
  pedido.al_reves = FechasAlReves();
  Leer(pedido);
}

bool frmDatos::MostrarInstantaneos() {
  hojas_->setCurrentIndex(1);
  const std::int64_t pausa = Segundos(Mod().reloj.Ahora()) - fin_turno_;
  if (!turno_listado_ || static_cast<double>(pausa) > kVecesPausa * ActualizarCada_->value())
    grafico_->InterrumpirInstantaneos();
  turno_listado_ = false;
  PedidoLectura pedido;
  pedido.procedimiento = "DatosInst_Click";
  pedido.leer = [this] { return lector_.MostrarInstantaneos(OpEscalados_->isChecked(), chkNivelRef_->isChecked()); };
  pedido.sin_datos = PicSinDatosInst_;
  pedido.contador = kContador;
  return Leer(pedido);
}

// --- Again and again -------------------------------------------------------------------------------------------------

void frmDatos::ActualizarSeguido(bool seguido) {
  if (!seguido) return turno_->stop();
  hojas_->setCurrentIndex(1);
  Turno();
}

// The next turn is counted from the end of this one, so that none starts inside another. It waits while the operator is
// at something else: at the other frame, in a dialog over the window or in what popped up from it.
void frmDatos::Turno() {
  const QWidget* encima = QApplication::activeModalWidget();
  const bool libre = marco_ == 1 && !Ocupacion::Ocupada(*this) && (encima == nullptr || encima == this) &&
                     QApplication::activePopupWidget() == nullptr;
  if (libre) {
    const SitioEnLista sitio = DondeEsta();
    if (!MostrarInstantaneos()) return chkActualizar_->setChecked(false);
    Volver(sitio);
  }
  if (chkActualizar_->isChecked()) turno_->start(libre ? ActualizarCada_->value() * 1000 : kOtroIntento);
}

frmDatos::SitioEnLista frmDatos::DondeEsta() {
  SitioEnLista sitio;
  sitio.filtro = Lista().CampoFiltro()->text();
  if (const auto actual = Lista().FilaActual()) sitio.actual = CanalEn(*actual);
  for (const std::size_t posicion : Lista().FilasElegidas()) sitio.elegidos.insert(CanalEn(posicion));
  sitio.arriba = Lista().Arbol()->verticalScrollBar()->value();
  sitio.izquierda = Lista().Arbol()->horizontalScrollBar()->value();
  return sitio;
}

// Rows of another read are known by their channels.
void frmDatos::Volver(const SitioEnLista& sitio) {
  Lista().CampoFiltro()->setText(sitio.filtro);
  std::set<std::size_t> elegidas;
  for (std::size_t posicion = 0; posicion < Lista().Lista().Cantidad(); ++posicion) {
    const std::string canal = CanalEn(posicion);
    if (canal == sitio.actual) Lista().Elegir(posicion);
    if (sitio.elegidos.contains(canal)) elegidas.insert(Lista().Lista().Fila(posicion));
  }
  if (!elegidas.empty()) Lista().ElegirTodas([&](std::size_t fila) { return elegidas.contains(fila); });
  Lista().Arbol()->verticalScrollBar()->setValue(sitio.arriba);
  Lista().Arbol()->horizontalScrollBar()->setValue(sitio.izquierda);
}

std::string frmDatos::CanalEn(std::size_t posicion) const {
  return Lista().Lista().Texto(posicion, kColumnaCanal);
}

// --- Beside the list -------------------------------------------------------------------------------------------------

void frmDatos::Listado() {
  if (marco_ == 1) {
    grafico_->VerInstantaneos(*lector_.Resultado(), OpEscalados_->isChecked(), chkNivelRef_->isChecked());
    turno_listado_ = true;
    fin_turno_ = Segundos(Mod().reloj.Ahora());
  } else if (!LoVisto().series.empty()) {
    grafico_->VerRegistros(LoVisto().series.front(), leido_);
  }
}

// What the other frame plotted stays, as its list does.
void frmDatos::Vaciado() {
  if (marco_ == 0) grafico_->Vaciar();
}

EncabezadoLista frmDatos::Encabezado(bool) const {
  if (marco_ == 1) return {"Datos instantáneos de la UTR", {LineaFecha()}};
  return {"Datos históricos de la UTR", LineasDesdeHasta(),
          "Datos " + U(Q(leido_.canal).section(QLatin1Char('_'), 0, 0))};
}

}  // namespace utr
