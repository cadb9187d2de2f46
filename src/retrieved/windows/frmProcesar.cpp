#include "retrieved/windows/frmProcesar.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "base/Progreso.h"
#include "retrieved/Eventos.h"
#include "retrieved/recovery/AnticipoMapa.h"
#include "retrieved/recovery/Procesamiento.h"
#include "retrieved/windows/VistaMapa.h"
#include "widgets/Campos.h"
#include "widgets/CarpetaDelOperador.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr QSize kTamano(820, 720);
constexpr int kEntrePartes = 12;
constexpr int kRenglonesLista = 2;
constexpr int kLadoIcono = 16;
constexpr int kAltoMinimoMapa = 96;  // it scrolls: the buttons below it have to be seen on any screen
constexpr qsizetype kReparosVistos = 2;
constexpr std::int64_t kEntreVistazos = 60;  // milliseconds: more often nobody could read it, and it costs
constexpr const char* kModulo = "frmProcesar";

QLineEdit* CampoDeRuta(const char* nombre) {
  auto* campo = new QLineEdit;
  campo->setObjectName(QString::fromLatin1(nombre));
  SinSaltosDeLinea(*campo);
  return campo;
}

bool EsElMismo(const std::filesystem::path& a, const std::filesystem::path& b) {
  std::error_code nada;
  return a == b || std::filesystem::equivalent(a, b, nada);
}

}  // namespace

std::string ConfiguracionAplicada::EnPalabras() const {
  return descripcion + (anterior ? " (la que estaba de antes: la elección se canceló o falló)" : "");
}

// What the run tells, put on the screen as often as somebody can look.
class frmProcesar::Avance : public Progreso {
 public:
  explicit Avance(frmProcesar& dialogo) : dialogo_(dialogo), visto_(dialogo.mod_.reloj.Milisegundos()) {}
  ~Avance() override { Ver(); }
  Avance(const Avance&) = delete;
  Avance& operator=(const Avance&) = delete;

  void Texto(std::string_view texto) override {
    texto_ = texto;
    Mirar();
  }
  void Rango(std::int64_t pasos) override {
    pasos_ = pasos;
    hechos_ = 0;
    Ver();
  }
  void Posicion(std::int64_t hechos) override {
    hechos_ = hechos;
    Mirar();
  }
  bool Cancelado() override { return false; }
  void Descartado(std::string_view, std::string_view) override {}  // the report tells it

 private:
  void Mirar() {
    if (dialogo_.mod_.reloj.Milisegundos() - visto_ >= kEntreVistazos) Ver();
  }

  void Ver() {
    dialogo_.LblInfo_->setText(Q(texto_));
    // The bar counts in 32 bits.
    const bool cabe = pasos_ <= std::numeric_limits<int>::max();
    dialogo_.Progreso_->setRange(0, cabe ? static_cast<int>(pasos_) : 0);
    dialogo_.Progreso_->setValue(cabe ? static_cast<int>(hechos_) : 0);
    dialogo_.vista_mapa_->Actualizar();
    if (dialogo_.mod_.atender) dialogo_.mod_.atender();
    visto_ = dialogo_.mod_.reloj.Milisegundos();
  }

  frmProcesar& dialogo_;
  std::int64_t visto_;
  std::string texto_;
  std::int64_t pasos_ = 0;
  std::int64_t hechos_ = 0;
};

frmProcesar::frmProcesar(ModRTU& mod, ConfiguracionAplicada configuracion, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      configuracion_(std::move(configuracion)),
      descripciones_(CargarEventos(mod.carpeta)),
      mapa_(UsoMapa::kProceso),
      ArchivoAProcesar_(CampoDeRuta("ArchivoAProcesar")),
      AbrirArchivo_(Boton("AbrirArchivo", QStringLiteral("&Abrir..."))),
      AgregarArchivo_(Boton("AgregarArchivo", QStringLiteral("Agre&gar archivo..."))),
      lstArchivos_(new QListWidget),
      QuitarArchivo_(Boton("QuitarArchivo", QStringLiteral("&Quitar"))),
      lblAnticipo_(new EtiquetaCopiable(QStringLiteral("lblAnticipo"))),
      lblConfiguracion_(new EtiquetaCopiable(QStringLiteral("lblConfiguracion"))),
      lblResultadosEn_(CampoDeRuta("lblResultadosEn")),
      GuardarEn_(Boton("GuardarEn", QStringLiteral("Ca&mbiar..."))),
      vista_mapa_(new VistaMapa(mapa_)),
      picInfo_(new QWidget),
      LblInfo_(new QLabel),
      Progreso_(new QProgressBar),
      comenzar_(Boton("cmd(0)", QStringLiteral("C&omenzar"))),
      cancelar_(Boton("cmd(1)", QStringLiteral("&Cancelar"))),
      cuerpo_(new QWidget) {
  setObjectName(kModulo);
  setWindowTitle(QStringLiteral("Procesamiento de la información"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  mapa_.NombrarCanales(configuracion_.tabla.get());
  vista_mapa_->Renombrar();
  lblResultadosEn_->setReadOnly(true);
  lblResultadosEn_->setText(Q(CarpetaDelOperador(mod_.carpeta).string()));
  auto* partes = new QVBoxLayout(cuerpo_);
  partes->setContentsMargins(0, 0, 0, 0);
  partes->setSpacing(kEntrePartes);
  partes->addWidget(ArmarArchivos());
  partes->addWidget(ArmarConfiguracion());
  partes->addWidget(ArmarMapa(), 1);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addWidget(cuerpo_, 1);
  cuerpo->addWidget(ArmarAvance());
  const QList<QWidget*> mapa = vista_mapa_->Controles();
  ArmarDialogo(*this, cuerpo, {.aceptar = comenzar_, .cancelar = cancelar_},
               {ArchivoAProcesar_, AbrirArchivo_, AgregarArchivo_, lstArchivos_, QuitarArchivo_, lblAnticipo_,
                lblResultadosEn_, GuardarEn_, lblConfiguracion_, mapa[0], mapa[1], mapa[2]});
  Explicar();
  ConectarControles();
  VerArchivos();
  AbrirArchivo_->setFocus();
  AjustarTamano(*this, kTamano);
}

// The view tells the map that it goes, so it has to go first.
frmProcesar::~frmProcesar() {
  delete vista_mapa_;
}

QWidget* frmProcesar::ArmarArchivos() {
  lstArchivos_->setObjectName("lstArchivos");
  lstArchivos_->setFixedHeight(kRenglonesLista * lstArchivos_->fontMetrics().lineSpacing() + kEntrePartes);
  lblArchivos_ = Rotulo("lblArchivos", QStringLiteral("O&tros archivos de la misma UTR:"), lstArchivos_);
  lblAnticipo_->hide();
  auto* archivos = new QWidget;
  auto* reja = new QGridLayout(archivos);
  reja->setContentsMargins(0, 0, 0, 0);
  reja->setColumnStretch(0, 1);
  reja->addWidget(
      Rotulo("lblArchivoAProcesar", QStringLiteral("Archivo de &recuperación a procesar:"), ArchivoAProcesar_), 0, 0);
  reja->addWidget(ArchivoAProcesar_, 1, 0);
  reja->addWidget(AbrirArchivo_, 1, 1);
  reja->addWidget(AgregarArchivo_, 1, 2);
  reja->addWidget(lblArchivos_, 2, 0);
  reja->addWidget(lstArchivos_, 3, 0);
  reja->addWidget(QuitarArchivo_, 3, 1, Qt::AlignTop);
  reja->addWidget(lblAnticipo_, 4, 0, 1, 3);
  reja->addWidget(Rotulo("lblGuardarEn", QStringLiteral("Guardar resultados &en:"), lblResultadosEn_), 5, 0);
  reja->addWidget(lblResultadosEn_, 6, 0);
  reja->addWidget(GuardarEn_, 6, 1);
  return archivos;
}

QWidget* frmProcesar::ArmarConfiguracion() {
  auto* marco = new QWidget;
  auto* fila = new QHBoxLayout(marco);
  fila->setContentsMargins(0, 0, 0, 0);
  if (configuracion_.anterior) {
    auto* icono = new QLabel;
    icono->setPixmap(IconoDe("aviso").pixmap(kLadoIcono, kLadoIcono));
    icono->setAccessibleName(QStringLiteral("Aviso"));
    fila->addWidget(icono, 0, Qt::AlignTop);
  }
  lblConfiguracion_->Poner(QStringLiteral("Configuración que se aplica: ") + Q(configuracion_.EnPalabras()));
  fila->addWidget(lblConfiguracion_, 1);
  return marco;
}

QWidget* frmProcesar::ArmarMapa() {
  auto* marco = new QGroupBox(QStringLiteral("Mapa de la memoria"));
  marco->setObjectName("fraMapa");
  auto* caja = new QVBoxLayout(marco);
  caja->addWidget(vista_mapa_);
  vista_mapa_->Controles().first()->setMinimumHeight(kAltoMinimoMapa);
  return marco;
}

// It keeps its room between runs, so that nothing jumps when one begins.
QWidget* frmProcesar::ArmarAvance() {
  picInfo_->setObjectName("picInfo");
  LblInfo_->setObjectName("LblInfo");
  LblInfo_->setTextFormat(Qt::PlainText);
  Progreso_->setObjectName("Progreso");
  Progreso_->setAccessibleName(QStringLiteral("Avance del procesamiento"));
  auto* caja = new QVBoxLayout(picInfo_);
  caja->setContentsMargins(0, 0, 0, 0);
  caja->addWidget(LblInfo_);
  caja->addWidget(Progreso_);
  QSizePolicy sitio = picInfo_->sizePolicy();
  sitio.setRetainSizeWhenHidden(true);
  picInfo_->setSizePolicy(sitio);
  picInfo_->hide();
  return picInfo_;
}

void frmProcesar::Explicar() {
  const std::pair<QWidget*, const char*> textos[] = {
      {ArchivoAProcesar_, "Archivo que dejó la recuperación de la memoria de una UTR."},
      {AbrirArchivo_, "Elige el archivo de recuperación."},
      {AgregarArchivo_, "Agrega otro archivo de la misma UTR: las páginas repetidas cuentan una sola vez."},
      {lstArchivos_, "Archivos que se procesan junto con el primero."},
      {QuitarArchivo_, "Quita de la lista el archivo elegido; el archivo mismo queda donde está."},
      {lblResultadosEn_, "Carpeta en la que quedan los archivos de resultados y el informe."},
      {GuardarEn_, "Elige la carpeta de los resultados."},
      {comenzar_, "Procesa los archivos con la configuración que se aplica. Una vez comenzado no se puede cancelar."},
  };
  for (const auto& [control, texto] : textos) control->setWhatsThis(QString::fromUtf8(texto));
}

void frmProcesar::ConectarControles() {
  connect(AbrirArchivo_, &QPushButton::clicked, this, &frmProcesar::AbrirArchivo);
  connect(AgregarArchivo_, &QPushButton::clicked, this, &frmProcesar::AgregarArchivo);
  connect(QuitarArchivo_, &QPushButton::clicked, this, &frmProcesar::QuitarArchivo);
  connect(GuardarEn_, &QPushButton::clicked, this, &frmProcesar::GuardarEn);
  connect(ArchivoAProcesar_, &QLineEdit::editingFinished, this, &frmProcesar::Anticipar);
  connect(lstArchivos_, &QListWidget::currentRowChanged, this, &frmProcesar::Habilitar);
  connect(comenzar_, &QPushButton::clicked, this, &frmProcesar::Comenzar);
  connect(cancelar_, &QPushButton::clicked, this, &frmProcesar::reject);
}

// --- Files -----------------------------------------------------------------------------------------------------------

std::optional<std::filesystem::path> frmProcesar::ElegirRecuperacion() {
  PedidoArchivo pedido;
  pedido.titulo = "Seleccione el archivo de lectura...";
  pedido.filtro = "Archivos de recuperación (*.bkp)|*.bkp";
  return mod_.operador.ElegirAbrir(pedido);
}

void frmProcesar::AbrirArchivo() {
  const auto ruta = ElegirRecuperacion();
  if (!ruta) return;
  ArchivoAProcesar_->setText(Q(ruta->string()));
  Anticipar();
}

void frmProcesar::AgregarArchivo() {
  const auto ruta = ElegirRecuperacion();
  if (!ruta) return;
  const auto archivos = Archivos();
  if (std::any_of(archivos.begin(), archivos.end(), [&](const auto& otro) { return EsElMismo(otro, *ruta); }))
    return Informar(mod_.operador, U(windowTitle()), "Ese archivo ya está entre los que se van a procesar");
  if (ArchivoAProcesar_->text().isEmpty()) {
    ArchivoAProcesar_->setText(Q(ruta->string()));
  } else {
    lstArchivos_->addItem(Q(ruta->string()));
    lstArchivos_->setCurrentRow(lstArchivos_->count() - 1);
  }
  VerArchivos();
  Anticipar();
}

void frmProcesar::QuitarArchivo() {
  delete lstArchivos_->takeItem(lstArchivos_->currentRow());
  VerArchivos();
  Anticipar();
}

void frmProcesar::GuardarEn() {
  PedidoArchivo pedido;
  pedido.titulo = "Guardar en...";
  pedido.filtro = "Información procesada (*.xml)|*.xml";
  pedido.carpeta = Ruta(lblResultadosEn_->text());
  pedido.nombre = "Información resultante";
  if (const auto ruta = mod_.operador.ElegirGuardar(pedido)) lblResultadosEn_->setText(Q(ruta->parent_path().string()));
}

void frmProcesar::VerArchivos() {
  for (QWidget* control : std::initializer_list<QWidget*>{lblArchivos_, lstArchivos_, QuitarArchivo_})
    control->setVisible(lstArchivos_->count() > 0);
  Habilitar();
}

void frmProcesar::Habilitar() {
  QuitarArchivo_->setEnabled(lstArchivos_->currentRow() >= 0);
}

std::vector<std::filesystem::path> frmProcesar::Archivos() const {
  if (ArchivoAProcesar_->text().isEmpty()) return {};  // the first one names the results
  std::vector<std::filesystem::path> archivos{Ruta(ArchivoAProcesar_->text())};
  for (int i = 0; i < lstArchivos_->count(); ++i) archivos.push_back(Ruta(lstArchivos_->item(i)->text()));
  return archivos;
}

// Shows what the files hold, as far as that shows before they are processed. No event runs meanwhile: a click that
// took the focus from the field on its way to a button still gets there.
void frmProcesar::Anticipar() {
  const auto archivos = Archivos();
  if (archivos == anticipados_ || Ocupacion::Ocupada(*this)) return;
  anticipados_ = archivos;
  std::string reparos;
  const PunteroDeEspera puntero(mod_.operador);
  if (const auto falla = FallaDe([&] { reparos = AnticiparMapa(mapa_, archivos, configuracion_.tabla.get()); }))
    reparos = falla->Descripcion();
  MostrarReparos(Q(reparos));
  vista_mapa_->Actualizar();
}

// A line for each file that has something; of many the first, and all of them in the help at the pointer.
void frmProcesar::MostrarReparos(const QString& reparos) {
  QStringList renglones = reparos.split('\n', Qt::SkipEmptyParts);
  const qsizetype mas = renglones.size() - kReparosVistos;
  if (mas > 0) {
    renglones.resize(kReparosVistos);
    renglones.last() += QStringLiteral(" ... y %1 más").arg(mas);
  }
  lblAnticipo_->Poner(renglones.join('\n'));
  lblAnticipo_->setToolTip(mas > 0 ? reparos : QString());
  lblAnticipo_->setVisible(!renglones.isEmpty());
}

// --- The run ---------------------------------------------------------------------------------------------------------

OpcionesOcupacion frmProcesar::AlTrabajar() {
  OpcionesOcupacion opciones;
  opciones.operador = &mod_.operador;
  opciones.apagados = {cuerpo_, comenzar_, cancelar_};
  opciones.siguen = {vista_mapa_->findChild<QWidget*>("Mapa"), vista_mapa_};
  opciones.al_cambiar = [this] { picInfo_->setVisible(Ocupacion::Ocupada(*this)); };
  return opciones;
}

// The run itself; failures go up.
void frmProcesar::ProcesandoDatos() {
  Procesado = false;
  ArchivoResultado.clear();
  Informe.clear();
  anticipados_.clear();  // the map is the run's now
  for (int pista = 0; pista < kPistas; ++pista) mapa_.PonerPista(pista, EstadoPagina::kPendiente);
  PedidoProceso pedido{.configuracion = configuracion_.tabla,
                       .descripciones = descripciones_,
                       .archivos = Archivos(),
                       .carpeta = Ruta(lblResultadosEn_->text()),
                       .carpeta_programa = mod_.carpeta,
                       .configuracion_aplicada = configuracion_.EnPalabras(),
                       .mapa = &mapa_};
  ResultadoProceso resultado;
  {
    const Ocupacion ocupacion(*this, AlTrabajar());
    Avance avance(*this);
    resultado = utr::ProcesandoDatos(pedido, {mod_.comunicador, mod_.reloj, mod_.catalogo, mod_.registro}, avance, {});
  }
  if (std::optional<Mensaje> mensaje = MensajeDe(resultado)) {
    mensaje->titulo = U(windowTitle());
    mod_.operador.Mostrar(*mensaje);
    return;
  }
  ArchivoResultado = resultado.archivo;
  Informe = resultado.archivo_informe;
  Procesado = true;
}

void frmProcesar::Comenzar() {
  if (Ocupacion::Ocupada(*this)) return;
  const bool bien = RegistrandoYMostrando(
      mod_.registro, mod_.operador, kModulo, "cmd_Click", U(windowTitle()), Redaccion::kCompletada,
      [this] { RegistrandoYRelanzando(mod_.registro, kModulo, "ProcesandoDatos", [this] { ProcesandoDatos(); }); });
  if (bien && Procesado) hide();
}

}  // namespace utr
