#include "configuration/windows/frmParamCfg.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <algorithm>
#include <utility>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"
#include "configuration/Catalogo.h"
#include "configuration/Predefinidas.h"
#include "configuration/windows/ControlesSensor.h"
#include "configuration/windows/frmPredefinidas.h"
#include "widgets/Ayuda.h"
#include "widgets/AyudaCombos.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

using C = CampoSensor;

constexpr const char* kModulo = "frmParamCfg";
constexpr std::string_view kConAceptar = "\"Aceptar\"";

// The options by the bit of Flags that each stands for.
constexpr std::uint8_t kBitAlarma = 2;
constexpr std::array<std::uint8_t, 4> kBitsDeFlags{1, 4, 8, 16};

std::size_t Indice(C campo) {
  return static_cast<std::size_t>(campo);
}

bool Activa(Celda celda) {
  return celda == Celda::kActiva || celda == Celda::kReiniciada;
}

bool EsDe(std::span<const C> campos, C campo) {
  return std::ranges::find(campos, campo) != campos.end();
}

// The fixed first entry and the rows of a catalogue; without its file the former alone.
void LlenarLista(QComboBox& lista, const char* fija, const TablaPtr& tabla, const char* orden) {
  AgregarEntrada(lista, fija, 0);
  if (!tabla) return;
  IgnorandoErrores([&] { tabla->Sort(orden); });
  IgnorandoErrores([&] {
    tabla->Filter("");
    if (tabla->RecordCount() == 0) return;
    for (tabla->MoveFirst(); !tabla->Eof(); tabla->MoveNext()) {
      const auto id = EnteroExacto(tabla->Texto(std::size_t{0}));
      if (id) AgregarEntrada(lista, Q(tabla->Texto(std::size_t{1})), static_cast<std::int32_t>(*id));
    }
  });
}

std::optional<std::int32_t> Elegido(const QComboBox& lista) {
  return lista.currentIndex() < 0 ? std::nullopt : std::optional(ValorElegido(lista));
}

void Elegir(QComboBox& lista, std::optional<std::int32_t> valor) {
  lista.setCurrentIndex(valor ? lista.findData(*valor) : -1);
}

// While the program fills fields, what they tell isn't what the operator does.
class Llenado {
 public:
  explicit Llenado(bool& bandera) : bandera_(bandera), antes_(std::exchange(bandera, true)) {}
  ~Llenado() { bandera_ = antes_; }
  Llenado(const Llenado&) = delete;
  Llenado& operator=(const Llenado&) = delete;

 private:
  bool& bandera_;
  bool antes_;
};

}  // namespace

frmParamCfg::frmParamCfg(ModRTU& mod, QWidget* parent) : QDialog(parent), mod_(mod) {
  setObjectName(kModulo);
  setWindowTitle("Configuración del Sensor");
  c_ = std::make_unique<ControlesSensor>(*this);
  copiar_ = new QMenu(c_->cmdCopiar->text(), this);
  c_->cmdCopiar->setMenu(copiar_);
  LlenarListas();
  Conectar();
  VaciarCeldas();
  AplicarCeldas();
  MostrarReparos();
  AjustarTamano(*this);
}

// A field that has the focus tells that it is left while the window goes, when this object is no more.
frmParamCfg::~frmParamCfg() {
  for (const CampoDeSensor& uno : c_->textos) uno.campo->disconnect(this);
}

void frmParamCfg::Conectar() {
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    const auto campo = static_cast<C>(i);
    const CampoDeSensor& uno = c_->De(campo);
    connect(uno.campo, &QLineEdit::textChanged, this, &frmParamCfg::Revisar);
    connect(uno.campo, &QLineEdit::editingFinished, this, [this, campo] { Dejar(campo); });
    if (uno.pasos.todo == nullptr) continue;
    connect(uno.campo, &CampoNumero::Paso, this, [this, campo](int hacia) { Paso(campo, hacia); });
    connect(uno.pasos.sube, &QToolButton::clicked, this, [this, campo] { Paso(campo, 1); });
    connect(uno.pasos.baja, &QToolButton::clicked, this, [this, campo] { Paso(campo, -1); });
  }
  connect(c_->cboTiposSensores, &QComboBox::currentIndexChanged, this, &frmParamCfg::CambiarTipo);
  connect(c_->cboResol, &QComboBox::currentIndexChanged, this, &frmParamCfg::CambiarResolucion);
  connect(c_->cboParametros, &QComboBox::currentIndexChanged, this, &frmParamCfg::MostrarParametro);
  connect(c_->chkFlagRegis_Dif, &QCheckBox::toggled, this, &frmParamCfg::CambiarDiferencial);
  for (std::size_t i = 0; i < c_->optEstadoNormal.size(); ++i) {
    connect(c_->optEstadoNormal[i], &QRadioButton::clicked, this, [this, i] { c_->FlagsParam[1]->setChecked(i == 1); });
  }
  connect(c_->LeerParam, &QPushButton::clicked, this, &frmParamCfg::LeerParam);
  connect(c_->cmdOtroArchivo, &QPushButton::clicked, this, [this] {
    mod_.ruta_predefinida.clear();
    LeerParam();
  });
  connect(c_->cmdReparo, &QPushButton::clicked, this, &frmParamCfg::IrAlPrimero);
  connect(c_->cmdAceptar, &QPushButton::clicked, this, &frmParamCfg::Aceptar);
  connect(c_->cmdCancelar, &QPushButton::clicked, this, &frmParamCfg::reject);
  connect(c_->cmdDejarRestantes, &QPushButton::clicked, this, [this] {
    DejarRestantes = true;
    reject();
  });
  ServirAyuda(*c_->cmdAyuda, mod_.archivo_ayuda);
}

void frmParamCfg::LlenarListas() {
  const Llenado llenado(llenando_);
  LlenarLista(*c_->cboParametros, "(ninguno)", mod_.catalogo.Parametros(), "Parametro ASC");
  LlenarLista(*c_->cboUnidades, "-", mod_.catalogo.Unidades(), "Id ASC");
  for (const Resolucion& resolucion : Resoluciones()) {
    AgregarEntrada(*c_->cboResol, resolucion.texto, resolucion.codigo);
  }
}

// --- Filling ---------------------------------------------------------------------------------------------------------

void frmParamCfg::FijarConfiguracion(ConfigPtr config) {
  config_ = std::move(config);
  if (!config_) return;
  {
    const Llenado llenado(llenando_);
    const EdicionSensor edicion = EdicionDe(*config_);
    canal_ = edicion.canal;
    CargarComboTiposSensores(edicion);
    c_->Canal->setText(Q(config_->Canal));
    c_->txtCanal->setText(Q(NombreCanal(canal_)));
    c_->lblDescEntrada->setText(Q("Tipo de Entrada: " + TipoEntrada(canal_)));
    c_->Pila->setText(Q(config_->Pila));
    VaciarCeldas();
    MostrarTipo(TipoDe(*config_));
    Elegir(*c_->cboParametros, edicion.parametro);
    Elegir(*c_->cboUnidades, edicion.unidad);
    Elegir(*c_->cboResol, edicion.resolucion);
    c_->lblParametro->setText(Q(mod_.catalogo.DescripcionParametro(config_->Parametro, tipo_)));
    MostrarFlags(edicion.flags);
    cargados_ = edicion.valores;
    for (std::size_t i = 0; i < kCamposDeTexto; ++i) PonerTexto(static_cast<C>(i), cargados_[static_cast<C>(i)]);
  }
  LlenarCopiar();
  Revisar();
}

void frmParamCfg::FijarColeccion(const ConfigColl* coleccion) {
  coleccion_ = coleccion;
  LlenarCopiar();
}

void frmParamCfg::FijarRonda(std::size_t lugar, std::size_t cuantos) {
  c_->lblRonda->setText(QStringLiteral("Canal %1 de %2").arg(lugar).arg(cuantos));
  c_->cmdCancelar->setToolTip("Este canal queda con los valores que tiene, y sigue el próximo");
  c_->fraRonda->show();
}

void frmParamCfg::CargarComboTiposSensores(const EdicionSensor& edicion) {
  c_->cboTiposSensores->clear();
  for (const TipoOfrecido& ofrecido : TiposDeCanal(edicion.canal)) {
    AgregarEntrada(*c_->cboTiposSensores, Q(ofrecido.texto), ofrecido.tipo);
  }
  Elegir(*c_->cboTiposSensores, edicion.tipo);
}

// What holds until a kind says otherwise: all is shown and nothing can be edited but the kind itself.
void frmParamCfg::VaciarCeldas() {
  celdas_.fill(Celda::kInactiva);
  for (const C campo : {C::kRegisDif, C::kTipos}) celdas_[Indice(campo)] = Celda::kActiva;
}

void frmParamCfg::MostrarTipo(std::int16_t tipo) {
  tipo_ = tipo;
  if (const auto cara = CaraDe(tipo, canal_)) {
    for (std::size_t i = 0; i < kCamposDeSensor; ++i) {
      const Celda celda = CeldaDe(static_cast<C>(i), *cara);
      if (celda != Celda::kSinCambio) celdas_[i] = celda;
      if (celda == Celda::kReiniciada) Poner({{static_cast<C>(i), "0"}});
    }
    CampoDeSensor& nivel = c_->De(C::kNivRefLmn);
    nivel.rotulo->setText(Q(RotuloNivel(*cara)));
    nivel.campo->setAccessibleName(nivel.rotulo->text());
  }
  AplicarCeldas();
}

void frmParamCfg::MostrarFlags(std::uint8_t flags) {
  c_->CAlarmaON->setChecked((flags & kBitAlarma) != 0);
  for (std::size_t i = 0; i < kBitsDeFlags.size(); ++i) c_->FlagsParam[i]->setChecked((flags & kBitsDeFlags[i]) != 0);
  const bool difiere = ClaseDeCanal(canal_) != ClaseCanal::kDigital && OpcionDiferencial(canal_ == 15)->isChecked();
  c_->chkFlagRegis_Dif->setChecked(difiere);
  MostrarEstadoNormal();
}

std::uint8_t frmParamCfg::CargarFlags() const {
  int flags = c_->CAlarmaON->isChecked() ? kBitAlarma : 0;
  for (std::size_t i = 0; i < kBitsDeFlags.size(); ++i) {
    if (c_->FlagsParam[i]->isChecked()) flags |= kBitsDeFlags[i];
  }
  return static_cast<std::uint8_t>(flags);
}

void frmParamCfg::MostrarEstadoNormal() {
  c_->optEstadoNormal[c_->FlagsParam[1]->isChecked() ? 1 : 0]->setChecked(true);
}

// The option that holds the differential recording: of a gauge another one than elsewhere.
QCheckBox* frmParamCfg::OpcionDiferencial(bool pluviometro) const {
  return c_->FlagsParam[pluviometro ? 3 : 2];
}

void frmParamCfg::MostrarParametro() {
  if (llenando_) return;
  const std::string parametro =
      c_->cboParametros->currentIndex() < 0 ? config_->Parametro : std::to_string(ValorElegido(*c_->cboParametros));
  c_->lblParametro->setText(Q(mod_.catalogo.DescripcionParametro(parametro, tipo_)));
}

// --- What can be edited ----------------------------------------------------------------------------------------------

// What the kind gives and the mode leaves: a disabled frame rules over the fields in it.
void frmParamCfg::AplicarCeldas() {
  const auto activa = [this](C campo) { return Activa(celdas_[Indice(campo)]); };
  const auto oculta = [this](C campo) { return celdas_[Indice(campo)] == Celda::kOculta; };
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    const auto campo = static_cast<C>(i);
    c_->De(campo).Habilitar(activa(campo));
    c_->De(campo).Mostrar(!oculta(campo));
  }
  for (const auto& [opcion, campo] :
       {std::pair(c_->FlagsParam[2], C::kTresHilos), std::pair(c_->FlagsParam[3], C::kFiltroOlas),
        std::pair(c_->chkFlagRegis_Dif, C::kRegisDif)}) {
    opcion->setEnabled(activa(campo));
    opcion->setVisible(!oculta(campo));
  }
  c_->cboTiposSensores->setEnabled(activa(C::kTipos));
  c_->cboParametros->setEnabled(activa(C::kParametros));
  const bool edita = Modo() != ModoEdicion::kSoloLectura;
  const bool todo = Modo() == ModoEdicion::kTodo;
  c_->FramePPal->setEnabled(todo);
  c_->FrameCFG->setEnabled(todo && activa(C::kFrameCFG));
  c_->Frame16->setEnabled(edita);
  c_->Frame7->setEnabled(todo);
  c_->fraOpcionesFlags->setEnabled(todo && activa(C::kOpciones));
  c_->CAlarmaON->setEnabled(todo && activa(C::kAlarmaOn));
  c_->FrameDig->setEnabled(todo && activa(C::kFrameDig));
  c_->LeerParam->setEnabled(edita);
  c_->cmdOtroArchivo->setEnabled(edita && !mod_.ruta_predefinida.empty());
  c_->cmdCopiar->setEnabled(edita && !copiar_->isEmpty());
}

ModoEdicion frmParamCfg::Modo() const {
  if (SoloLectura) return ModoEdicion::kSoloLectura;
  return SoloParametros ? ModoEdicion::kSoloParametros : ModoEdicion::kTodo;
}

bool frmParamCfg::Habilitado(CampoSensor campo) const {
  return c_->De(campo).campo->isEnabled();
}

void frmParamCfg::showEvent(QShowEvent* evento) {
  // The modes may have been set behind the channel.
  MostrarArchivo();
  AplicarCeldas();
  Revisar();
  QDialog::showEvent(evento);
}

void frmParamCfg::CambiarTipo() {
  if (llenando_ || c_->cboTiposSensores->currentIndex() < 0) return;
  DejarTodos();
  MostrarTipo(static_cast<std::int16_t>(ValorElegido(*c_->cboTiposSensores)));
  MostrarParametro();
  LlenarCopiar();
  Revisar();
}

void frmParamCfg::CambiarDiferencial() {
  if (llenando_ || (tipo_ != 0 && tipo_ != 1 && tipo_ != 5)) return;
  OpcionDiferencial(tipo_ == 5)->setChecked(c_->chkFlagRegis_Dif->isChecked());
}

void frmParamCfg::CambiarResolucion() {
  if (!llenando_) RecalcularBits();
}

// --- Texts -----------------------------------------------------------------------------------------------------------

// The very text that was put there, if it is still that one: a line edit shows some characters otherwise.
std::string frmParamCfg::Texto(CampoSensor campo) const {
  const QString texto = c_->De(campo).campo->text();
  return texto == Q(recordados_[campo]) ? recordados_[campo] : U(texto);
}

ValoresSensor frmParamCfg::Valores() const {
  ValoresSensor valores;
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) valores[static_cast<C>(i)] = Texto(static_cast<C>(i));
  return valores;
}

EdicionSensor frmParamCfg::Edicion() const {
  EdicionSensor edicion;
  edicion.canal = canal_;
  if (const auto tipo = Elegido(*c_->cboTiposSensores)) edicion.tipo = static_cast<std::int16_t>(*tipo);
  edicion.valores = Valores();
  edicion.cargados = cargados_;
  edicion.flags = CargarFlags();
  edicion.parametro = Elegido(*c_->cboParametros);
  edicion.unidad = Elegido(*c_->cboUnidades);
  edicion.resolucion = Elegido(*c_->cboResol);
  return edicion;
}

// What the program puts is remembered, so that nothing follows it: follow-ups are for what was typed.
void frmParamCfg::PonerTexto(CampoSensor campo, const std::string& texto) {
  recordados_[campo] = texto;
  c_->De(campo).campo->setText(Q(texto));
}

void frmParamCfg::Poner(const std::vector<ValorForzado>& cambios) {
  {
    const Llenado llenado(llenando_);
    for (const ValorForzado& cambio : cambios) PonerTexto(cambio.campo, cambio.texto);
  }
  Revisar();
}

void frmParamCfg::Dejar(CampoSensor campo) {
  const std::string texto = Texto(campo);
  if (llenando_ || texto == recordados_[campo]) return;
  const std::string anterior = std::exchange(recordados_[campo], texto);
  if (campo == C::kRangoMin || campo == C::kRangoMax) Poner(SeguirRango(campo, Valores()));
  if (campo == C::kNivRefLmn) Poner(SeguirNivel(tipo_, anterior, Valores()));
  if (EsDe(SensorCFG(), campo)) RecalcularBits();
  if (campo == C::kTRead && DivideElDia(texto)) ReponerTiempos();
  if (campo == C::kPluviometro && Val(Reemplazar(texto, ",", ".")) == 0) {
    Poner({{campo, std::string(kConstanteDefecto)}});
  }
}

void frmParamCfg::DejarTodos() {
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) Dejar(static_cast<C>(i));
}

void frmParamCfg::RecalcularBits() {
  if (const auto bits = SeguirEscala(Valores(), U(c_->cboResol->currentText()))) Poner({*bits});
}

void frmParamCfg::ReponerTiempos() {
  Poner(AjustarTiempos(Valores(), [this](C tiempo) { return Habilitado(tiempo); }));
}

void frmParamCfg::Paso(CampoSensor campo, int hacia) {
  if (!Habilitado(campo)) return;
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    if (static_cast<C>(i) != campo) Dejar(static_cast<C>(i));
  }
  c_->De(campo).campo->setFocus();
  const auto texto = Pasar(campo, hacia, Valores());
  if (!texto) return;
  Poner({{campo, *texto}});
  c_->De(campo).campo->selectAll();  // what is typed next replaces it
  if (campo == C::kTRead) ReponerTiempos();
}

// --- Rules at the fields ---------------------------------------------------------------------------------------------

void frmParamCfg::Revisar() {
  if (llenando_ || !config_) return;
  const ValoresSensor valores = Valores();
  vivos_ = ReparosVivos({tipo_, canal_, valores, cargados_, [this](C campo) { return Habilitado(campo); }});
  const bool otra_escala =
      valores[C::kRangoMin] != cargados_[C::kRangoMin] || valores[C::kRangoMax] != cargados_[C::kRangoMax];
  const std::string pendiente = otra_escala ? CodigoPendiente(valores) : config_->RangoNegativo;
  c_->lblRangoNegativo->setText(Val(pendiente) == 55 ? "PEND.NEG" : "PEND.POS");
  MostrarReparos();
}

void frmParamCfg::MostrarReparos() {
  std::array<QStringList, kCamposDeTexto> lineas;
  QStringList todas;
  for (const ReparoSensor& reparo : vivos_.reparos) {
    todas += Q(reparo.texto);
    for (const C campo : reparo.campos) lineas.at(Indice(campo)) += Q(reparo.texto);
  }
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) c_->textos[i].campo->Marcar(lineas[i].join('\n'));
  c_->marco_reparos->setVisible(!todas.isEmpty());
  c_->lblReparos->Poner(LineaDeReparos());
  c_->cmdReparo->setVisible(DondeSeRemedia() != nullptr);
  c_->lblReparos->setToolTip(todas.join('\n'));
}

QString frmParamCfg::LineaDeReparos() const {
  if (vivos_.reparos.empty()) return {};
  const std::size_t cuantos = vivos_.reparos.size();
  const C campo = vivos_.reparos.front().campos.front();
  QString rotulo = c_->De(campo).rotulo->text().trimmed();
  if (rotulo.endsWith(':')) rotulo.chop(1);
  QString cuenta = cuantos == 1 ? QStringLiteral("No se cumple 1 regla: %1.").arg(rotulo)
                                : QStringLiteral("No se cumplen %1 reglas. La primera: %2.").arg(cuantos).arg(rotulo);
  const std::string remedio = Habilitado(campo) ? std::string() : Remedio(campo);
  if (remedio.empty()) return cuenta;
  return cuenta + QStringLiteral(" El campo no se modifica aquí: use %1.").arg(Q(remedio));
}

std::string frmParamCfg::Remedio(CampoSensor campo) const {
  const bool forzado = std::ranges::any_of(vivos_.forzados, [=](const ValorForzado& f) { return f.campo == campo; });
  if (forzado && !SoloLectura) return std::string(kConAceptar);
  const auto cara = CaraDe(tipo_, canal_);
  return cara ? RemedioDe(campo, *cara, Modo()) : std::string();
}

// The first field of the first broken rule that can be edited, else the button that mends it; null without one.
QWidget* frmParamCfg::DondeSeRemedia() const {
  if (vivos_.reparos.empty()) return nullptr;
  const std::vector<C>& campos = vivos_.reparos.front().campos;
  const auto habilitado = std::ranges::find_if(campos, [this](C campo) { return Habilitado(campo); });
  if (habilitado != campos.end()) return c_->De(*habilitado).campo;
  const std::string remedio = Remedio(campos.front());
  if (remedio.starts_with("\"Leer\"")) return c_->LeerParam;
  return remedio == kConAceptar ? c_->cmdAceptar : nullptr;
}

void frmParamCfg::IrAlPrimero() {
  if (QWidget* destino = DondeSeRemedia()) destino->setFocus();
}

// --- Accepting -------------------------------------------------------------------------------------------------------

void frmParamCfg::Aceptar() {
  if (SoloLectura || !config_) {
    reject();
    return;
  }
  bool guardado = false;
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "cmd_Click", U(windowTitle()), Redaccion::kCompletada,
                        [&] { guardado = Guardar(); });
  if (!guardado) return;
  Acepto = true;
  accept();
}

bool frmParamCfg::Guardar() {
  DejarTodos();
  EdicionSensor edicion = Edicion();
  if (!edicion.tipo) {
    Advertir("Debe seleccionar un Tipo de Sensor para el Canal seleccionado");
    return false;
  }
  const ResultadoReglas resultado = AceptarEdicion(
      edicion, [this](C campo) { return Habilitado(campo); }, SoloParametros, *config_);
  Poner(resultado.forzados);
  if (resultado.reparos.empty()) return true;
  Advertir(Reemplazar(MensajeDeReparos(resultado.reparos), "\r\n", "\n"));
  IrAlPrimero();
  return false;
}

void frmParamCfg::reject() {
  Acepto = false;
  QDialog::reject();
}

void frmParamCfg::Advertir(const std::string& texto) {
  mod_.operador.Mostrar({texto, "Atención", Icono::kExclamacion, Botones::kAceptar});
}

// --- Values from elsewhere -------------------------------------------------------------------------------------------

void frmParamCfg::MostrarArchivo() {
  const std::string& ruta = mod_.ruta_predefinida;
  c_->lblArchivo->setText(ruta.empty() ? QStringLiteral("Sin archivo")
                                       : Q(std::filesystem::path(ruta).filename().string()));
  c_->lblArchivo->setToolTip(Q(ruta));
}

void frmParamCfg::LeerParam() {
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerParam", U(windowTitle()), Redaccion::kCompletada,
                        [this] { ElegirPredefinida(); });
  MostrarArchivo();
  AplicarCeldas();
}

void frmParamCfg::ElegirPredefinida() {
  DejarTodos();
  frmPredefinidas predefinidas(mod_, this);
  if (predefinidas.CargarParametrizaciones(FamiliaDeTipo(tipo_)) == 0) {
    Informar(mod_.operador, U(windowTitle()), "No hay parametrizaciones definidas para este tipo de sensor");
    return;
  }
  predefinidas.exec();
  if (predefinidas.Acepto && !predefinidas.Parametros.empty()) PonerPredefinida(predefinidas.Parametros);
}

void frmParamCfg::PonerPredefinida(const std::string& parametros) {
  const AplicacionPredefinida aplicacion = AplicarPredefinida(tipo_, parametros, Valores());
  if (aplicacion.alarma) c_->CAlarmaON->setChecked(*aplicacion.alarma);
  if (aplicacion.estado_normal) c_->FlagsParam[1]->setChecked(*aplicacion.estado_normal);
  MostrarEstadoNormal();
  Poner(aplicacion.valores);
  const std::string aviso = AvisoDePredefinida(aplicacion);
  if (!aviso.empty()) Informar(mod_.operador, U(windowTitle()), aviso);
}

// The other channels whose values fit the fields of this one.
void frmParamCfg::LlenarCopiar() {
  copiar_->clear();
  if (coleccion_ != nullptr) {
    for (const ConfigPtr& origen : *coleccion_) {
      if (origen == config_ || !MismaCara(*origen, tipo_, canal_)) continue;
      const std::string parametro = mod_.catalogo.DescripcionParametro(origen->Parametro, tipo_);
      const std::string texto = NombreCanal(CanalDe(*origen)) + " - " + parametro;
      copiar_->addAction(Q(Reemplazar(texto, "&", "&&")), this, [this, origen] { Copiar(*origen); });
    }
  }
  AplicarCeldas();
}

void frmParamCfg::Copiar(const Config& origen) {
  DejarTodos();
  if (c_->cboResol->isEnabled()) {
    // The bits that come along belong to it.
    const Llenado llenado(llenando_);
    const auto resolucion = EdicionDe(origen).resolucion;
    if (resolucion && c_->cboResol->findData(*resolucion) >= 0) Elegir(*c_->cboResol, resolucion);
  }
  Poner(CopiarValores(origen, [this](C campo) { return Habilitado(campo); }));
}

void frmParamCfg::contextMenuEvent(QContextMenuEvent* evento) {
  QMenu menu;
  QAction* copiar = menu.addMenu(copiar_);
  copiar->setEnabled(c_->cmdCopiar->isEnabled());
  menu.exec(evento->globalPos());
}

}  // namespace utr
