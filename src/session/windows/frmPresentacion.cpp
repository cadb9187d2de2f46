#include "session/windows/frmPresentacion.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "session/LecturaConfiguracion.h"
#include "session/OperacionesEnlace.h"
#include "session/Puertos.h"
#include "session/windows/ParteElegible.h"
#include "session/windows/frmLibroEstaciones.h"
#include "session/windows/modCOM.h"
#include "widgets/Ayuda.h"
#include "widgets/AyudaCombos.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::array<std::int32_t, 3> kVelocidades{1200, 9600, 19200};
constexpr int kCifrasIdentificador = 9;
constexpr int kCifrasPuerto = 5;

QRadioButton* Opcion(const char* nombre, const QString& texto) {
  auto* opcion = new QRadioButton(texto);
  opcion->setObjectName(QString::fromLatin1(nombre));
  return opcion;
}

QComboBox* Combo(const char* nombre) {
  auto* combo = new QComboBox;
  combo->setObjectName(QString::fromLatin1(nombre));
  return combo;
}

}  // namespace

frmPresentacion::frmPresentacion(ModRTU& mod, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      OptionRTU_(Opcion("OptionRTU", "Desde la UTR")),
      OptionXML_(Opcion("OptionXML", "Desde un archivo de configuración")),
      txtIdentificador_(new CampoDigitos("txtIdentificador", kCifrasIdentificador)),
      lblIdentificador_(Rotulo("lblIdentificador", "&Identificador del Equipo:", txtIdentificador_)),
      optSerie_(Opcion("optSerie", "Puerto &Serie")),
      cboPuertos_(Combo("cboPuertos")),
      lblPuertos_(Rotulo("lblPuertos", "Puerto de &comunicaciones", cboPuertos_)),
      CVelocidad_(Combo("CVelocidad")),
      lblVelocidad_(Rotulo("lblVelocidad", "&Velocidad:", CVelocidad_)),
      CVerifVelocidad_(Boton("CVerifVelocidad", "Verificar Velocidad")),
      CParar_(Boton("CParar", "Parar")),
      chkTel_(new QCheckBox("&Teléfono")),
      txtTelefono_(new CampoTexto("txtTelefono")),
      cmdTelefono_(Boton("cmdTelefono", "Llamar")),
      txtComandos_(new QLineEdit),
      lblComandos_(Rotulo("lblComandos", "Comandos &MODEM", txtComandos_)),
      optIP_(Opcion("optIP", "&Dirección IP")),
      DireccionIP_(new QLineEdit),
      PuertoIP_(new CampoDigitos("PuertoIP", kCifrasPuerto)),
      lblPuertoIP_(Rotulo("lblPuertoIP", "&Puerto:", PuertoIP_)),
      picInfo_(new PanelAviso("picInfo", "Esta operación demorará unos instantes. Por favor espere...", this)),
      AceptarLecturaCFG_(Boton("AceptarLecturaCFG", "Aceptar")),
      CancelarLecturaCFG_(Boton("CancelarLecturaCFG", "Cancelar")),
      cmdAyuda_(Boton("cmdAyuda", "A&yuda")),
      cmdEstaciones_(Boton("cmdEstaciones", "&Estaciones...")),
      cuerpo_(new QWidget) {
  setObjectName("frmPresentacion");
  setWindowTitle("Configuración");
  Armar();
  Llenar();
  ConectarControles();
  ActivarDesactivarControles();
  AjustarTamano(*this);
}

void frmPresentacion::Armar() {
  auto* partes = new QVBoxLayout(cuerpo_);
  partes->setContentsMargins(0, 0, 0, 0);
  partes->addWidget(ArmarFuente());
  partes->addWidget(ArmarEquipo());
  partes->addWidget(ArmarEnlace());
  partes->addStretch(1);

  // It stands over the dialog, which keeps no room for it.
  picInfo_->ReservarDetalle();
  picInfo_->Flotar();

  auto* cuerpo = new QVBoxLayout;
  cuerpo->addWidget(cuerpo_);
  ArmarDialogo(
      *this, cuerpo, {.aceptar = AceptarLecturaCFG_, .cancelar = CancelarLecturaCFG_, .ayuda = cmdAyuda_},
      {OptionRTU_, OptionXML_, txtIdentificador_, cmdEstaciones_, optSerie_, cboPuertos_, CVelocidad_, CVerifVelocidad_,
       CParar_, chkTel_, txtTelefono_, cmdTelefono_, txtComandos_, optIP_, DireccionIP_, PuertoIP_});
  AceptarLecturaCFG_->setFocus();
}

QGroupBox* frmPresentacion::ArmarFuente() {
  auto* marco = new QGroupBox("Origen de la configuración");
  marco->setObjectName("fraFuente");
  auto* grupo = new QButtonGroup(this);
  grupo->addButton(OptionRTU_);
  grupo->addButton(OptionXML_);
  OptionRTU_->setChecked(true);
  auto* columna = new QVBoxLayout(marco);
  columna->addWidget(OptionRTU_);
  columna->addWidget(OptionXML_);
  return marco;
}

QGroupBox* frmPresentacion::ArmarEquipo() {
  auto* marco = new QGroupBox("Equipo");
  marco->setObjectName("fraEquipo");
  reja_equipo_ = RejaDeParte(marco);
  reja_equipo_->addWidget(lblIdentificador_, 0, ParteElegible::kRotulos);
  txtIdentificador_->setMaximumWidth(txtIdentificador_->fontMetrics().horizontalAdvance("0") *
                                     (kCifrasIdentificador + 9));
  reja_equipo_->addWidget(txtIdentificador_, 0, ParteElegible::kCampos, Qt::AlignLeft);
  cmdEstaciones_->setToolTip("Tomar el enlace y el identificador del libro de estaciones");
  reja_equipo_->addWidget(cmdEstaciones_, 0, ParteElegible::kAlLado);
  return marco;
}

QGroupBox* frmPresentacion::ArmarEnlace() {
  auto* marco = new QGroupBox("Conexión");
  marco->setObjectName("fraEnlace");
  auto* grupo = new QButtonGroup(this);
  grupo->addButton(optSerie_);
  grupo->addButton(optIP_);
  auto* columna = new QVBoxLayout(marco);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->addWidget(ArmarSerie());
  columna->addWidget(ArmarIP());
  AlinearRotulos({reja_equipo_, serie_->Reja(), ip_->Reja()});
  return marco;
}

QWidget* frmPresentacion::ArmarSerie() {
  chkTel_->setObjectName("chkTel");
  txtTelefono_->setAccessibleName("Teléfono");
  txtComandos_->setObjectName("txtComandos");
  SinSaltosDeLinea(*txtComandos_);
  CVerifVelocidad_->setToolTip("Verificar velocidad de conexión");
  // Both stand in the dialog without an action.
  CParar_->setEnabled(false);
  cmdTelefono_->setEnabled(false);

  serie_ = new ParteElegible("fraSerie", optSerie_, 4);
  QGridLayout* reja = serie_->Reja();
  const auto fila = [reja](int cual, QWidget* rotulo, QWidget* campo, int ancho) {
    reja->addWidget(rotulo, cual, ParteElegible::kRotulos);
    reja->addWidget(campo, cual, ParteElegible::kCampos, 1, ancho);
  };
  fila(1, lblPuertos_, cboPuertos_, 3);
  fila(2, lblVelocidad_, CVelocidad_, 1);
  reja->addWidget(CVerifVelocidad_, 2, ParteElegible::kAlLado);
  reja->addWidget(CParar_, 2, ParteElegible::kAlLado + 1);
  fila(3, chkTel_, txtTelefono_, 2);
  reja->addWidget(cmdTelefono_, 3, ParteElegible::kAlLado + 1);
  fila(4, lblComandos_, txtComandos_, 3);
  return serie_;
}

QWidget* frmPresentacion::ArmarIP() {
  DireccionIP_->setObjectName("DireccionIP");
  SinSaltosDeLinea(*DireccionIP_);
  DireccionIP_->setAccessibleName("Dirección IP");
  DireccionIP_->setMinimumWidth(DireccionIP_->fontMetrics().horizontalAdvance("255.255.255.255") + 24);
  ip_ = new ParteElegible("fraIP", optIP_, 2);
  ip_->Reja()->addWidget(DireccionIP_, 0, ParteElegible::kCampos);
  ip_->Reja()->addWidget(lblPuertoIP_, 1, ParteElegible::kRotulos);
  ip_->Reja()->addWidget(PuertoIP_, 1, ParteElegible::kCampos);
  return ip_;
}

void frmPresentacion::Llenar() {
  CargarPuertos(*cboPuertos_, PuertosOfrecidos(mod_.puertos));
  for (const std::int32_t velocidad : kVelocidades) AgregarEntrada(*CVelocidad_, QString::number(velocidad), velocidad);
  const EntradaEnlace entrada = LeerEntrada(mod_.propiedades);
  ElegirEnlace(*cboPuertos_, *CVelocidad_, entrada);
  (entrada.por_ip ? optIP_ : optSerie_)->setChecked(true);
  chkTel_->setChecked(entrada.telefono);
  txtTelefono_->setText(Q(entrada.numero_telefono));
  txtComandos_->setText(Q(entrada.comandos));
  PuertoIP_->setText(Q(entrada.puerto_ip));
  DireccionIP_->setText(Q(entrada.direccion));
  txtIdentificador_->setText(Q(entrada.identificador));
  mod_.conexion.OlvidarLlamada();
}

void frmPresentacion::ConectarControles() {
  connect(optIP_, &QRadioButton::toggled, this, &frmPresentacion::CambioDeMedio);
  for (QRadioButton* opcion : {OptionRTU_, OptionXML_, optSerie_, optIP_}) {
    connect(opcion, &QRadioButton::toggled, this, &frmPresentacion::ActivarDesactivarControles);
  }
  connect(chkTel_, &QCheckBox::toggled, this, [this] {
    CambioTelefono();
    if (txtTelefono_->isEnabled() && chkTel_->hasFocus()) txtTelefono_->setFocus();
  });
  connect(cmdEstaciones_, &QPushButton::clicked, this, &frmPresentacion::TomarDelLibro);
  connect(CVerifVelocidad_, &QPushButton::clicked, this, &frmPresentacion::VerificarVelocidad);
  connect(AceptarLecturaCFG_, &QPushButton::clicked, this, &frmPresentacion::Aceptar);
  connect(CancelarLecturaCFG_, &QPushButton::clicked, this, &frmPresentacion::reject);
  ServirAyuda(*cmdAyuda_, mod_.archivo_ayuda);
}

void frmPresentacion::TomarDelLibro() {
  if (const auto estacion = ElegirEstacion(mod_, this)) Tomar(EntradaDe(*estacion));
}

void frmPresentacion::Tomar(const EntradaEnlace& entrada) {
  (entrada.por_ip ? optIP_ : optSerie_)->setChecked(true);
  if (entrada.por_ip) {
    DireccionIP_->setText(Q(entrada.direccion));
    PuertoIP_->setText(Q(entrada.puerto_ip));
  } else {
    ElegirEnlace(*cboPuertos_, *CVelocidad_, entrada);
    chkTel_->setChecked(entrada.telefono);
    txtTelefono_->setText(Q(entrada.numero_telefono));
    txtComandos_->setText(Q(entrada.comandos));
  }
  txtIdentificador_->setText(Q(entrada.identificador));
}

void frmPresentacion::FijarFuente(bool desde_utr_only) {
  OptionRTU_->setChecked(true);
  OptionXML_->setEnabled(!desde_utr_only);
}

void frmPresentacion::ActivarDesactivarControles() {
  const bool utr = OptionRTU_->isChecked();
  const bool serie = utr && optSerie_->isChecked();
  const bool ip = utr && optIP_->isChecked();
  for (QWidget* control : std::initializer_list<QWidget*>{optIP_, optSerie_, txtIdentificador_, lblIdentificador_,
                                                          cmdEstaciones_, lblPuertos_, lblVelocidad_, lblPuertoIP_}) {
    control->setEnabled(utr);
  }
  for (QWidget* control : std::initializer_list<QWidget*>{CVelocidad_, cboPuertos_, CVerifVelocidad_, chkTel_}) {
    control->setEnabled(serie);
  }
  DireccionIP_->setEnabled(ip);
  PuertoIP_->setEnabled(ip);
  serie_->Elegir(serie);
  ip_->Elegir(ip);
  if (!utr) txtIdentificador_->setText("0");
  CambioTelefono();
}

void frmPresentacion::CambioTelefono() {
  const bool llama = OptionRTU_->isChecked() && chkTel_->isChecked();
  txtTelefono_->setEnabled(llama);
  lblComandos_->setEnabled(llama);
  txtComandos_->setEnabled(llama);
  if (!chkTel_->isChecked()) txtTelefono_->clear();
}

// An address isn't called: the tick steps back with its number, and both come back with the serial port.
void frmPresentacion::CambioDeMedio(bool por_ip) {
  if (por_ip) {
    telefono_de_serie_ = chkTel_->isChecked() ? std::optional(txtTelefono_->text()) : std::nullopt;
    chkTel_->setChecked(false);
  } else if (telefono_de_serie_) {
    chkTel_->setChecked(true);
    txtTelefono_->setText(*telefono_de_serie_);
  }
}

EntradaEnlace frmPresentacion::Entrada() const {
  EntradaEnlace entrada;
  entrada.por_ip = optIP_->isChecked();
  entrada.puerto = ValorElegido(*cboPuertos_);
  entrada.velocidad = ValorElegido(*CVelocidad_);
  entrada.telefono = chkTel_->isChecked();
  entrada.numero_telefono = U(txtTelefono_->text());
  entrada.comandos = U(txtComandos_->text());
  entrada.direccion = Direccion();
  entrada.puerto_ip = Puerto();
  entrada.identificador = U(txtIdentificador_->text());
  return entrada;
}

std::string frmPresentacion::Direccion() const {
  return U(DireccionIP_->text());
}
std::string frmPresentacion::Puerto() const {
  return U(PuertoIP_->text());
}

void frmPresentacion::Aceptar() {
  if (Ocupacion::Ocupada(*this)) return;
  cancelado_ = false;
  if (OptionXML_->isChecked()) {
    ElegirArchivo();
  } else if (!AceptarUTR()) {
    return;
  }
  Acepto = !fuente_.empty();
  done(Acepto ? Accepted : Rejected);
}

void frmPresentacion::ElegirArchivo() {
  const Ocupacion ocupacion(*this, AlTrabajar(nullptr));
  PedidoArchivo pedido;
  pedido.titulo = "Abrir configuración...";
  pedido.filtro = bShowUCG ? "Configuración exportada (*.ucg)|*.ucg" : "Archivos de configuración (*.icf)|*.icf";
  const auto ruta = mod_.operador.ElegirAbrir(pedido);
  fuente_ = ruta ? ruta->string() : std::string();
}

// False: the dialog goes on, free again.
bool frmPresentacion::AceptarUTR() {
  fuente_ = kFuenteUTR;
  const EntradaEnlace entrada = Entrada();
  const std::vector<Reparo> reparos = ValidarDatos(entrada);
  if (!reparos.empty()) {
    MostrarReparos(reparos);
    return false;
  }
  mod_.conexion.FijarPorIP(entrada.por_ip);
  if (entrada.telefono && !Llamar(entrada)) return false;
  EscribirEntrada(mod_.propiedades, entrada);
  GuardarAjustes(mod_, "frmPresentacion", "AceptarLecturaCFG_Click", U(windowTitle()));
  return true;
}

// All in one box; the operator finds himself at the first field that is wrong.
void frmPresentacion::MostrarReparos(const std::vector<Reparo>& reparos) {
  std::vector<std::string> lineas;
  lineas.reserve(reparos.size());
  for (const Reparo& reparo : reparos) lineas.push_back(reparo.texto);
  mod_.operador.Mostrar({"Debe completar lo siguiente:\n" + Unir(lineas, "\n"), U(windowTitle()), Icono::kInformacion,
                         Botones::kAceptar});
  CampoDe(reparos.front().campo)->setFocus();
}

QWidget* frmPresentacion::CampoDe(CampoEnlace campo) const {
  switch (campo) {
    case CampoEnlace::kTelefono:
      return txtTelefono_;
    case CampoEnlace::kDireccion:
      return DireccionIP_;
    case CampoEnlace::kPuertoIP:
      return PuertoIP_;
    case CampoEnlace::kIdentificador:
      return txtIdentificador_;
    case CampoEnlace::kPuerto:
      return cboPuertos_;
    case CampoEnlace::kVelocidad:
      break;
  }
  return CVelocidad_;
}

// A call can be abandoned; it then counts as none, even when the unit answered meanwhile.
bool frmPresentacion::Llamar(const EntradaEnlace& entrada) {
  bool atendida = false;
  {
    const Ocupacion ocupacion(*this, AlTrabajar(picInfo_, {CancelarLecturaCFG_}));
    atendida = LlamarPorTelefono(mod_, entrada, U(windowTitle()), [this] { return cancelado_; });
  }
  if (cancelado_) mod_.conexion.OlvidarLlamada();
  return atendida && !cancelado_;
}

OpcionesOcupacion frmPresentacion::AlTrabajar(PanelAviso* panel, std::vector<QWidget*> siguen) {
  OpcionesOcupacion opciones{.operador = &mod_.operador,
                             .panel = panel,
                             .apagados = {cuerpo_, AceptarLecturaCFG_, CancelarLecturaCFG_, cmdAyuda_}};
  if (!siguen.empty()) opciones.al_cancelar = [this] { reject(); };
  opciones.siguen = std::move(siguen);
  return opciones;
}

void frmPresentacion::reject() {
  if (!std::exchange(cancelado_, true)) {  // hiding a busy dialog cancels it once more
    if (mod_.atender) mod_.atender();
    IgnorandoErrores([&] { mod_.comunicador.Cancelar(false); });
  }
  Acepto = false;
  if (verificando_) return CancelarLecturaCFG_->setEnabled(false);  // the try ends first; the check closes the dialog
  QDialog::reject();
}

void frmPresentacion::VerificarVelocidad() {
  if (ValorElegido(*cboPuertos_) == 0) return MostrarReparos({{CampoEnlace::kPuerto, std::string(kFaltaPuerto)}});
  cancelado_ = false;
  {
    const QScopedValueRollback verificando(verificando_, true);
    OpcionesOcupacion opciones = AlTrabajar(picInfo_, {CancelarLecturaCFG_});
    opciones.operador = nullptr;  // the search alone brings the hourglass, not the box behind it
    const Ocupacion ocupacion(*this, opciones);
    if (mod_.atender) mod_.atender();
    if (const std::optional<std::int32_t> velocidad = BuscarSuVelocidad()) {
      mod_.operador.Mostrar({"La velocidad es de " + std::to_string(*velocidad) + " bps", "Atención", Icono::kNinguno,
                             Botones::kAceptar});
      SeleccionarValor(*CVelocidad_, *velocidad);
    }
    picInfo_->Detallar({});
  }
  CancelarLecturaCFG_->setEnabled(true);
  if (cancelado_) QDialog::reject();
}

std::optional<std::int32_t> frmPresentacion::BuscarSuVelocidad() {
  const PunteroDeEspera espera(mod_.operador);
  BusquedaVelocidad busqueda;
  busqueda.puerto = ValorElegido(*cboPuertos_);
  busqueda.velocidades = kVelocidades;
  busqueda.cancelada = [this] { return cancelado_; };
  busqueda.probando = [this](std::int32_t velocidad) {
    picInfo_->Detallar(QStringLiteral("Probando a %1 bps").arg(velocidad));
    picInfo_->repaint();
  };
  return BuscarVelocidad(mod_, busqueda);
}

void frmPresentacion::MostrarLectura() {
  setModal(false);
  if (Acepto) move(pos());  // where the operator had it, instead of wherever a new window goes
  show();
  if (mod_.atender) mod_.atender();
}

OpcionesOcupacion frmPresentacion::AlLeer() {
  return AlTrabajar(picInfo_);
}

}  // namespace utr
