#include "retrieved/windows/frmDatos.h"

#include <QAction>
#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "retrieved/ColumnasRegistros.h"
#include "widgets/Campos.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

const DescripcionVista& Descripcion() {
  using C = Comando;
  static const DescripcionVista descripcion{
      "Datos de la UTR",
      "mnuDatos",
      "&Datos",
      nullptr,
      nullptr,
      {{C::kMarco0, "mnuDatHistoricos", "Datos &Históricos"},
       {C::kMarco1, "mnuDatosInst", "Datos i&nstantáneos"},
       {C::kAbrir, "mnuDatosAbrir", "&Abrir"},
       {C::kGuardar, "mnuDatosGuardarComo", "&Guardar como..."},
       {C::kExportar, "mnuExportData", "E&xportar..."},
       {C::kConfigurarImpresora, "mnuPrintConfig", "&Configurar Impresora"},
       {C::kImprimir, "mnudatosPrint", "&Imprimir"},
       {C::kSalir, "mnuDatosSalir", "&Salir"}},
      {C::kAbrir, C::kImprimir, C::kGuardar, C::kExportar, C::kAscendente, C::kDescendente, C::kAyuda, C::kQueEsEsto},
      2,
      {"frmDatos", "Datos de la UTR", "Guardar como ...", "ImprimirDatos", "mnuExportData_Click", 1,
       "La lista de datos ha sido exportada con éxito"}};
  return descripcion;
}

constexpr const char* kContador = "Cantidad de Registros Cargados: ";

template <typename Control>
Control* Nuevo(const char* nombre, const char* texto, bool marcado = false) {
  auto* control = new Control(QString::fromUtf8(texto));
  control->setObjectName(QString::fromLatin1(nombre));
  control->setChecked(marcado);
  return control;
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
      lector_(Contexto(), std::move(configuracion), mod.atender),
      picSinDatos_(Panel("picSinDatos", "Sin datos para el canal durante las fechas seleccionada")),
      PicSinDatosInst_(Panel("PicSinDatosInst", "Sin datos en la lectura instantánea. Por favor intente de nuevo...")),
      hojas_(new QTabWidget),
      Canales_(new QComboBox),
      CheckEscalados_(Nuevo<QCheckBox>("CheckEscalados", "Datos Escalados", true)),
      chkCartucho_(Nuevo<QCheckBox>("chkCartucho", "Datos del Cartucho")),
      traer_(Boton("cmd(0)", "&Traer Datos")),
      OpEscalados_(Nuevo<QRadioButton>("OpEscalados", "Escalados", true)),
      OpSinEscalar_(Nuevo<QRadioButton>("OpSinEscalar", "Cuentas")),
      chkNivelRef_(Nuevo<QCheckBox>("chkNivelRef", "Con Nivel Ref / Constante.")),
      DatosInst_(Boton("DatosInst", "&Mostrar...")) {
  QPushButton* cerrar = Boton("cmd(1)", "&Cerrar");
  Explicar();
  Armar(ArmarMarcos(), cerrar);
  CargarCanales();
  MarcoElegido(0);
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
      {DatosInst_, "Lee de la UTR el valor presente de todos los canales habilitados."},
  };
  for (const auto& [control, texto] : textos) control->setWhatsThis(QString::fromUtf8(texto));
}

QWidget* frmDatos::ArmarMarcos() {
  hojas_->setObjectName("fraDatos");
  hojas_->addTab(ArmarHistoricos(), QStringLiteral("Datos Históricos"));
  hojas_->addTab(ArmarInstantaneos(), QStringLiteral("Datos instantáneos"));
  hojas_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* grupo = new QActionGroup(this);
  for (const Comando comando : {Comando::kMarco0, Comando::kMarco1}) {
    AccionDe(comando)->setCheckable(true);
    grupo->addAction(AccionDe(comando));
  }
  connect(hojas_, &QTabWidget::currentChanged, this, &frmDatos::MarcoElegido);
  return hojas_;
}

QWidget* frmDatos::ArmarHistoricos() {
  Canales_->setObjectName("Canales");
  Canales_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  Canales_->setMinimumContentsLength(24);
  auto* canal = new QFormLayout;
  canal->addRow(Rotulo("lblCanal", QStringLiteral("Can&al:"), Canales_), Canales_);
  auto* fechas = new QFormLayout;
  fechas_ = AgregarFechas(*fechas, "dd/MM/yyyy");
  connect(traer_, &QPushButton::clicked, this, &frmDatos::TraerDatos);
  auto* hoja = new QWidget;
  auto* fila = new QHBoxLayout(hoja);
  fila->setSpacing(kEntreColumnas);
  for (QLayout* columna : {canal, fechas}) {
    auto* pila = new QVBoxLayout;
    pila->addLayout(columna);
    pila->addStretch(1);
    fila->addLayout(pila);
  }
  fila->addLayout(Apilar({CheckEscalados_, chkCartucho_}));
  fila->addLayout(Apilar({traer_}));
  fila->addStretch(1);
  return hoja;
}

QWidget* frmDatos::ArmarInstantaneos() {
  connect(DatosInst_, &QPushButton::clicked, this, &frmDatos::MostrarInstantaneos);
  auto* hoja = new QWidget;
  auto* fila = new QHBoxLayout(hoja);
  fila->setSpacing(kEntreColumnas);
  fila->addLayout(Apilar({OpEscalados_, OpSinEscalar_}));
  fila->addLayout(Apilar({chkNivelRef_}));
  fila->addLayout(Apilar({DatosInst_}));
  fila->addStretch(1);
  return hoja;
}

void frmDatos::CargarCanales() {
  for (const std::string& canal : lector_.CargarCanales()) Canales_->addItem(Q(canal));
}

void frmDatos::Marco(int cual) {
  hojas_->setCurrentIndex(cual);
}

void frmDatos::MarcoElegido(int cual) {
  AccionDe(cual == 0 ? Comando::kMarco0 : Comando::kMarco1)->setChecked(true);
  (cual == 0 ? traer_ : DatosInst_)->setDefault(true);
}

void frmDatos::TraerDatos() {
  PedidoLectura pedido;
  pedido.procedimiento = "cmd_Click";
  pedido.leer = [this] {
    instantaneos_ = false;
    Lista().Definir(ColumnasDatos());
    return lector_.TraerDatos({FechaDe(*fechas_.inicio), FechaDe(*fechas_.fin), U(Canales_->currentText()),
                               CheckEscalados_->isChecked(), chkCartucho_->isChecked()});
  };
  pedido.sin_datos = picSinDatos_;
  pedido.contador = kContador;
  pedido.periodo = [this] { return TextoPeriodo(fechas_); };
  pedido.al_reves = FechasAlReves();
  Leer(pedido);
}

void frmDatos::MostrarInstantaneos() {
  PedidoLectura pedido;
  pedido.procedimiento = "DatosInst_Click";
  pedido.leer = [this] {
    instantaneos_ = true;
    Lista().Definir(ColumnasInstantaneos());
    return lector_.MostrarInstantaneos(OpEscalados_->isChecked(), chkNivelRef_->isChecked());
  };
  pedido.sin_datos = PicSinDatosInst_;
  pedido.contador = kContador;
  pedido.periodo = [this] { return TextoMomento(); };
  Leer(pedido);
}

EncabezadoLista frmDatos::Encabezado(bool) const {
  if (instantaneos_) return {"Datos instantáneos de la UTR", {LineaFecha()}};
  return {"Datos históricos de la UTR", LineasDesdeHasta(fechas_)};
}

}  // namespace utr
