#include "retrieved/windows/frmDescarga.h"

#include <fmt/format.h>

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "retrieved/windows/BarraPeriodos.h"
#include "session/windows/EsperaDeUnidad.h"
#include "session/windows/Visitas.h"
#include "widgets/Campos.h"
#include "widgets/CarpetaDelOperador.h"
#include "widgets/ControlesRecordados.h"
#include "widgets/DialogoCsv.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/PanelAviso.h"
#include "widgets/SinDormir.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr const char* kDescargarTodo = "Descargar todo";
constexpr const char* kElegirCarpeta = "Carpeta de las descargas ...";
constexpr QSize kTamano(900, 700);
constexpr int kEntreControles = 6;
constexpr int kEntreColumnas = 24;

DescripcionLista Descripcion() {
  return {.titulo = kDescargarTodo,
          .palabras = {.modulo = "frmDescarga",
                       .titulo_ventana = kDescargarTodo,
                       .titulo_guardar = "Guardar como ...",
                       .procedimiento_imprimir = "ImprimirDescarga"}};
}

Columnas ColumnasDescarga() {
  return {{"Qué", "Que"},
          {"Estado", "Estado"},
          {"Registros", "Registros", Presentacion::kTalCual, ClaseOrden::kNumero},
          {"Archivo", "Archivo"}};
}

template <typename Control>
Control* Nuevo(const char* nombre, const char* texto, bool marcado) {
  auto* control = new Control(QString::fromUtf8(texto));
  control->setObjectName(QString::fromLatin1(nombre));
  control->setChecked(marcado);
  return control;
}

template <typename Control>
void Apilar(QBoxLayout& pila, const QList<Control*>& controles) {
  for (Control* control : controles) pila.addWidget(control, 0, Qt::AlignLeft);
}

}  // namespace

// The bar and the list of the window, which follow the download; a click on Cancelar ends it.
class frmDescarga::Avance : public Progreso {
 public:
  Avance(frmDescarga& ventana, const EsperaDeUnidad& espera) : ventana_(ventana), espera_(espera) {}

  void Texto(std::string_view texto) override {
    ventana_.barra_->setFormat(QStringLiteral("%v de %m: ") + Q(texto));
    Atender();
  }
  void Rango(std::int64_t pasos) override { ventana_.barra_->setRange(0, static_cast<int>(pasos)); }
  void Posicion(std::int64_t hechos) override {
    ventana_.barra_->setValue(static_cast<int>(hechos));
    ventana_.Listar();
    Atender();
  }
  bool Cancelado() override { return espera_.Cancelada(); }
  void Descartado(std::string_view, std::string_view) override {}  // the list tells it

 private:
  void Atender() const {
    if (ventana_.mod_.atender) ventana_.mod_.atender();
  }

  frmDescarga& ventana_;
  const EsperaDeUnidad& espera_;
};

frmDescarga::frmDescarga(ModRTU& mod, TablaPtr configuracion, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, Descripcion(), ColumnasDescarga(), parent),
      mod_(mod),
      configuracion_(std::move(configuracion)),
      FechaInicio_(NuevoCampoFecha(mod, "FechaInicio", "dd/MM/yyyy HH:mm:ss")),
      FechaFin_(NuevoCampoFecha(mod, "FechaFin", "dd/MM/yyyy HH:mm:ss")),
      recordar_(new ControlesRecordados(objectName())),
      que_{Nuevo<QCheckBox>("chkConfiguracion", "C&onfiguración", true),
           Nuevo<QCheckBox>("chkDatos", "Da&tos de todos los canales", true),
           Nuevo<QCheckBox>("chkEventos", "&Eventos", true), Nuevo<QCheckBox>("chkCola", "Co&la de transmisión", true)},
      CheckEscalados_(Nuevo<QCheckBox>("CheckEscalados", "Datos Escalados", true)),
      chkCartucho_(Nuevo<QCheckBox>("chkCartucho", "Del Cartucho", false)),
      formatos_{Nuevo<QRadioButton>("optCsv", "CSV, un archivo por ca&nal", true),
                Nuevo<QRadioButton>("optPorTiempo", "CSV, los canales en una ta&bla por tiempo", false),
                Nuevo<QRadioButton>("optTablas", "XML del &visualizador, un archivo por canal", false)},
      csv_(new CamposCsv(this)),
      carpeta_(new QLineEdit(Q((CarpetaDelOperador(mod.carpeta) / "Descargas").string()))),
      picAvance_(new PanelAviso("picAvance", QStringLiteral("Descargando. Por favor espere..."))),
      barra_(new QProgressBar),
      lblFinal_(new EtiquetaCopiable(QStringLiteral("lblFinal"))),
      cmdDescargar_(Boton("cmdDescargar", QStringLiteral("Desca&rgar"))),
      cmdSeguir_(Boton("cmdSeguir", QStringLiteral("Seguir con lo que &falta"))) {
  FechaFin_->setTime(QTime(23, 59, 59));
  connect(cmdDescargar_, &QPushButton::clicked, this, &frmDescarga::Descargar);
  connect(cmdSeguir_, &QPushButton::clicked, this, &frmDescarga::Seguir);
  ArmarComandos();
  Armar(ArmarPedido(), {.aceptar = cmdDescargar_, .cancelar = Boton("cmd", QStringLiteral("&Cerrar"))}, kTamano,
        ArmarPie());
  Explicar();
  QList<QWidget*> recordados{CheckEscalados_, chkCartucho_, FechaInicio_, FechaFin_, carpeta_};
  for (QCheckBox* una : que_) recordados.append(una);
  for (QRadioButton* uno : formatos_) recordados.append(uno);
  recordar_->Reponer(recordados, &Lista());
}

frmDescarga::~frmDescarga() = default;

void frmDescarga::ArmarComandos() {
  Comandos({{.nombre = "mnuDescarga", .texto = "&Descarga"}},
           {{.nombre = "mnuDescargar", .texto = "&Descargar", .hacer = [this] { Descargar(); }},
            {.nombre = "mnuSeguir",
             .texto = "Seguir con lo que &falta",
             .si = [this] { return descarga_ && !descarga_->Completa(); },
             .hacer = [this] { Seguir(); }},
            ComandoGuardar("mnuGuardarComo"),
            ComandoGuardarCsv(),
            ComandoConfigurarImpresora("mnuCfgImpresora"),
            ComandoImprimir("mnuImprimir"),
            ComandoSalir("mnuSalir"),
            ComandoOrdenar(true),
            ComandoOrdenar(false),
            ComandoAyuda(),
            ComandoQueEsEsto()},
           {"Print", "Save", nullptr, "Sort Ascending", "Sort Descending", nullptr, "Help", "Help What's This"});
}

QWidget* frmDescarga::ArmarPedido() {
  auto* pedido = new QWidget;
  auto* todo = new QVBoxLayout(pedido);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->addWidget(ArmarPeriodo());
  auto* fila = new DisposicionEnFilas(kEntreControles);
  fila->Agregar(ArmarQue());
  fila->Agregar(ArmarComo(), 1);
  todo->addLayout(fila);
  carpeta_->setObjectName("txtCarpeta");
  carpeta_->setReadOnly(true);
  QPushButton* elegir = Boton("cmdCarpeta", QStringLiteral("Ele&gir..."));
  connect(elegir, &QPushButton::clicked, this, &frmDescarga::ElegirCarpeta);
  auto* destino = new QHBoxLayout;
  destino->addWidget(Rotulo("lblCarpeta", QStringLiteral("Car&peta:"), carpeta_));
  destino->addWidget(carpeta_, 1);
  destino->addWidget(elegir);
  todo->addLayout(destino);
  return pedido;
}

QWidget* frmDescarga::ArmarPeriodo() {
  auto* grupo = new QGroupBox(QStringLiteral("Período"));
  auto* fechas = new QFormLayout;
  fechas->setSpacing(kEntreControles);
  fechas->addRow(Rotulo("lblFechaInicio", QStringLiteral("Fecha de &Inicio:"), FechaInicio_), FechaInicio_);
  fechas->addRow(Rotulo("lblFechaFin", QStringLiteral("Fecha de &Fin:"), FechaFin_), FechaFin_);
  auto* opciones = new QVBoxLayout;
  opciones->setSpacing(kEntreControles);
  Apilar<QCheckBox>(*opciones, {CheckEscalados_, chkCartucho_});
  auto* fila = new DisposicionEnFilas(kEntreColumnas);
  fila->Agregar(fechas);
  fila->Agregar(opciones);
  auto* periodos = new BarraPeriodos(mod_, FechaInicio_, FechaFin_);
  periodos->Agregar(recordar_);
  auto* todo = new QVBoxLayout(grupo);
  todo->setSpacing(kEntreControles);
  todo->addLayout(fila);
  todo->addWidget(periodos);
  return grupo;
}

QWidget* frmDescarga::ArmarQue() {
  auto* grupo = new QGroupBox(QStringLiteral("Qué"));
  auto* pila = new QVBoxLayout(grupo);
  pila->setSpacing(kEntreControles);
  Apilar(*pila, que_);
  pila->addStretch(1);
  return grupo;
}

QWidget* frmDescarga::ArmarComo() {
  auto* grupo = new QGroupBox(QStringLiteral("Cómo"));
  auto* pila = new QVBoxLayout;
  pila->setSpacing(kEntreControles);
  Apilar(*pila, formatos_);
  pila->addStretch(1);
  auto* campos = new QFormLayout;
  campos->setSpacing(kEntreControles);
  csv_->Agregar(*campos);
  connect(formatos_.last(), &QRadioButton::toggled, csv_, [this](bool tablas) { csv_->Habilitar(!tablas); });
  auto* fila = new DisposicionEnFilas(kEntreColumnas, grupo);
  fila->Agregar(pila);
  fila->Agregar(campos);
  return grupo;
}

QWidget* frmDescarga::ArmarPie() {
  auto* pie = new QWidget;
  barra_->setObjectName("Progreso");
  barra_->hide();
  picAvance_->hide();
  cmdSeguir_->hide();
  auto* fila = new QHBoxLayout;
  fila->addWidget(lblFinal_, 1);
  fila->addWidget(cmdSeguir_);
  auto* todo = new QVBoxLayout(pie);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->addWidget(picAvance_);
  todo->addWidget(barra_);
  todo->addLayout(fila);
  return pie;
}

void frmDescarga::Explicar() {
  const std::pair<QWidget*, const char*> textos[] = {
      {que_[0], "La tabla de canales, tal como se leyó de la UTR."},
      {que_[1], "Los registros de cada canal habilitado que guarda historia."},
      {que_[2], "Los eventos del período."},
      {que_[3], "Los registros de la cola de transmisión de los días del período."},
      {CheckEscalados_, "Los valores de los canales en unidades de ingeniería; sin marcar, en cuentas."},
      {chkCartucho_, "Lee datos, eventos y cola del cartucho de la UTR en lugar de su memoria."},
      {carpeta_, "Dónde se crea la carpeta de esta descarga, que lleva el identificador y la fecha."},
      {cmdDescargar_, "Lee todo lo marcado y lo guarda en una carpeta nueva."},
      {cmdSeguir_, "Vuelve a pedir sólo lo que falta, en la misma carpeta."},
  };
  for (const auto& [control, texto] : textos) control->setWhatsThis(QString::fromUtf8(texto));
}

void frmDescarga::ElegirCarpeta() {
  const auto elegida = mod_.operador.ElegirAbrir({kElegirCarpeta, {}, Ruta(carpeta_->text()).parent_path(), {}});
  if (elegida) carpeta_->setText(Q(elegida->string()));
}

PedidoDescarga frmDescarga::Pedido() const {
  PedidoDescarga pedido{.desde = FechaDe(*FechaInicio_), .hasta = FechaDe(*FechaFin_)};
  pedido.configuracion = que_[0]->isChecked();
  pedido.datos = que_[1]->isChecked();
  pedido.eventos = que_[2]->isChecked();
  pedido.cola = que_[3]->isChecked();
  pedido.escalados = CheckEscalados_->isChecked();
  pedido.cartucho = chkCartucho_->isChecked();
  for (int i = 0; i < formatos_.size(); ++i) {
    if (formatos_[i]->isChecked()) pedido.formato = static_cast<FormatoDescarga>(i);
  }
  pedido.csv = csv_->Opciones();
  return pedido;
}

bool frmDescarga::SePuede(const PedidoDescarga& pedido) {
  std::string falta;
  if (pedido.hasta < pedido.desde) falta = "La fecha de inicio debe ser menor que la de finalización";
  if (!pedido.configuracion && !pedido.datos && !pedido.eventos && !pedido.cola)
    falta = "Marque al menos una cosa para descargar";
  if (!falta.empty()) mod_.operador.Mostrar({falta, kDescargarTodo, Icono::kExclamacion, Botones::kAceptar});
  return falta.empty();
}

void frmDescarga::Descargar() {
  const PedidoDescarga pedido = Pedido();
  if (Ocupacion::Ocupada(*this) || !SePuede(pedido) || !Abandonar()) return;
  csv_->Recordar();
  RegistrandoYMostrando(
      mod_.registro, mod_.operador, U(objectName()), "Descargar", kDescargarTodo, Redaccion::kCompletarse, [&] {
        const auto carpeta = NuevaCarpeta(Ruta(carpeta_->text()));
        const ContextoRegistros contexto{mod_.comunicador, mod_.reloj, mod_.catalogo, mod_.registro};
        descarga_ = std::make_unique<Descarga>(contexto, configuracion_, mod_.atender, mod_.carpeta, pedido, carpeta);
        Correr();
      });
}

std::filesystem::path frmDescarga::NuevaCarpeta(const std::filesystem::path& donde) const {
  return NuevaCarpetaDeDescarga(donde, mod_.propiedades.LeerEntero(clave::kIdentificador, 0), mod_.reloj.Ahora());
}

void frmDescarga::Seguir() {
  if (Ocupacion::Ocupada(*this) || !descarga_ || descarga_->Completa()) return;
  RegistrandoYMostrando(mod_.registro, mod_.operador, U(objectName()), "Seguir", kDescargarTodo,
                        Redaccion::kCompletarse, [this] { Correr(); });
}

// What came from the unit and no disk took goes with the window: true where there is none, or the operator gives it up.
bool frmDescarga::Abandonar() {
  if (!descarga_) return true;
  while (const std::size_t cuantas = descarga_->SinGuardar()) {
    const std::string partes = cuantas == 1
                                   ? "Se leyó de la UTR 1 parte que no se pudo guardar"
                                   : fmt::format("Se leyeron de la UTR {} partes que no se pudieron guardar", cuantas);
    const Respuesta respuesta = mod_.operador.Mostrar({.texto = partes + " y se perderá lo leído.\n¿Qué desea hacer?",
                                                       .titulo = kDescargarTodo,
                                                       .icono = Icono::kExclamacion,
                                                       .botones = Botones::kOpciones,
                                                       .opciones = {"Guardar en otra carpeta", "Perder lo leído"},
                                                       .defecto = Respuesta::kPrimera});
    if (respuesta == Respuesta::kSegunda) return true;
    if (respuesta != Respuesta::kPrimera) return false;
    GuardarEnOtra();
  }
  return true;
}

void frmDescarga::GuardarEnOtra() {
  const auto elegida = mod_.operador.ElegirAbrir({kElegirCarpeta, {}, Ruta(carpeta_->text()).parent_path(), {}});
  if (!elegida) return;
  RegistrandoYMostrando(mod_.registro, mod_.operador, U(objectName()), "GuardarEnOtra", kDescargarTodo,
                        Redaccion::kCompletarse, [&] {
                          {
                            const Ocupacion ocupacion(*this, AlTrabajar());
                            descarga_->GuardarLoLeido(NuevaCarpeta(*elegida));
                          }
                          Listar();
                          DecirFinal(true);
                        });
}

void frmDescarga::Correr() {
  {
    OpcionesOcupacion opciones = AlTrabajar();
    opciones.panel = picAvance_;
    EsperaDeUnidad espera(mod_, opciones, EsperaDeUnidad::Cancelable::kSiempre);
    lblFinal_->Poner({});
    cmdSeguir_->hide();
    barra_->show();
    const SinDormir despierto(QStringLiteral("Descarga de una UTR"));
    const Ocupacion ocupacion(*this, opciones);
    Avance avance(*this, espera);
    descarga_->Correr(avance);
    if (descarga_->Cuantas(EstadoPieza::kGuardada) > 0) Visitas(mod_).Anotar();
  }
  barra_->hide();
  Listar();
  DecirFinal(!descarga_->Cancelada());
}

void frmDescarga::Listar() {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : {"Que", "Estado", "Registros", "Archivo"}) tabla->Append(campo, TipoCampo::kVarChar, 255);
  tabla->Open();
  for (const Pieza& pieza : descarga_->Piezas()) {
    const bool guardada = pieza.estado == EstadoPieza::kGuardada;
    tabla->AddNew();
    tabla->Set("Que", pieza.que);
    tabla->Set("Estado", TextoEstado(pieza));
    tabla->Set("Registros", guardada && pieza.clase != ClasePieza::kResumen ? std::to_string(pieza.registros) : "");
    tabla->Set("Archivo", guardada ? descarga_->Donde(pieza) : "");
  }
  tabla->UpdateBatch();
  Lista().Mostrar(tabla);
  // What was done last stays in sight.
  const QAbstractItemModel* modelo = Lista().Arbol()->model();
  if (barra_->isVisible()) Lista().Arbol()->scrollTo(modelo->index(barra_->value(), 0));
}

void frmDescarga::DecirFinal(bool con_mensaje) {
  const bool completa = descarga_->Completa();
  const std::size_t faltan = descarga_->Cuantas(EstadoPieza::kFalta) + descarga_->Cuantas(EstadoPieza::kPendiente);
  QString texto = descarga_->Cancelada() ? QStringLiteral("La descarga fue cancelada.")
                  : completa             ? QStringLiteral("La descarga está completa.")
                                         : QStringLiteral("La descarga no está completa.");
  if (faltan > 0) {
    texto += faltan == 1 ? QStringLiteral(" Falta 1 parte, que se ve en la lista.")
                         : QStringLiteral(" Faltan %1 partes, que se ven en la lista.").arg(faltan);
  } else if (!completa) {
    texto += QStringLiteral(" No se pudo guardar el resumen.");
  }
  texto += QStringLiteral("\nCarpeta: ") + Q(descarga_->Carpeta().string());
  lblFinal_->Poner(texto);
  cmdSeguir_->setVisible(!completa);
  Habilitar();
  if (con_mensaje)
    mod_.operador.Mostrar(
        {U(texto), kDescargarTodo, completa ? Icono::kInformacion : Icono::kExclamacion, Botones::kAceptar});
}

EncabezadoLista frmDescarga::Encabezado(bool) const {
  EncabezadoLista encabezado{"Descarga de la UTR", {}};
  if (descarga_) encabezado.lineas.push_back("Carpeta: " + descarga_->Carpeta().string());
  return encabezado;
}

void frmDescarga::done(int resultado) {
  if (!Abandonar()) return;
  recordar_->Guardar();
  VentanaLista::done(resultado);
}

}  // namespace utr
