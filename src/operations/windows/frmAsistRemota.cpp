#include "operations/windows/frmAsistRemota.h"

#include <QGuiApplication>
#include <QLayout>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QTreeView>
#include <algorithm>

#include "base/Fechas.h"
#include "base/Texto.h"
#include "configuration/windows/frmParamCfg.h"
#include "operations/windows/ControlesAsistente.h"
#include "schedule/windows/frmAgendas.h"
#include "widgets/Ayuda.h"
#include "widgets/AyudaCombos.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Ocupacion.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

// The log has always named it so.
constexpr std::string_view kModulo = "FrmAsistRemotas";

constexpr int kCadaSegundo = 1000;
constexpr int kColumnaEstado = 1;  // of the list of steps
constexpr int kMargenEstado = 24;
constexpr int kRenglonesDeAlto = 47;  // of text: with the whole list of steps in sight

enum Boton : std::uint8_t { kAyuda, kCancelar, kAnterior, kSiguiente, kFinalizar };

constexpr const char* kFuenteElegida =
    "La configuración ya fue cargada. Para partir de otra, cancele y ejecute el asistente de nuevo";
constexpr const char* kSinAgenda =
    "No hay una agenda de la cual partir: la UTR no tiene ninguna, o no respondió. Si no la tiene, cancele, grabe una "
    "primera con la acción \"Agenda\" y ejecute el asistente de nuevo.";

// What the sequence says and counts, as the last step shows it. It is seen at once: the driver may block next.
class ProgresoFinal : public SinProgreso {
 public:
  explicit ProgresoFinal(ControlesAsistente& controles) : c_(controles) {}
  void Texto(std::string_view texto) override {
    c_.lblStep[3]->setText(Q(texto));
    c_.lblStep[3]->repaint();
  }
  void Rango(std::int64_t pasos) override { c_.pgbProgreso->setMaximum(static_cast<int>(pasos)); }
  void Posicion(std::int64_t hechos) override {
    c_.pgbProgreso->setValue(static_cast<int>(hechos));
    c_.pgbProgreso->repaint();
  }

 private:
  ControlesAsistente& c_;
};

}  // namespace

frmAsistRemota::frmAsistRemota(ModRTU& mod, LecturaConfiguracion& lectura, AlmacenAsistentes& almacen, QWidget* parent)
    : QDialog(parent), mod_(mod), lectura_(lectura), almacen_(almacen) {
  setObjectName("frmAsistRemota");
  c_ = std::make_unique<ControlesAsistente>(*this);
  c_->OptionUTR->setChecked(true);
  c_->TxtRadio->setText("0");
  Conectar();
  CambiarOpciones();
  CargarPreferencia();
  Mostrar();
  AjustarTamano(
      *this, {0, std::min(fontMetrics().height() * kRenglonesDeAlto, screen()->availableGeometry().height() * 9 / 10)});
}

// A field that has the focus tells that it is left while the window goes, when this object is no more.
frmAsistRemota::~frmAsistRemota() {
  c_->TxtRadio->disconnect(this);
}

void frmAsistRemota::Conectar() {
  for (std::size_t i = 0; i < c_->cmdNav.size(); ++i) {
    connect(c_->cmdNav[i], &QPushButton::clicked, this, [this, i] { Navegar(static_cast<int>(i)); });
  }
  auto* ayuda = new QShortcut(QKeySequence::HelpContents, this);
  c_->cmdNav[kAyuda]->setEnabled(HayAyuda(mod_.archivo_ayuda));
  connect(ayuda, &QShortcut::activated, this, [this] { Navegar(kAyuda); });
  connect(c_->chkShowIntro, &QCheckBox::toggled, this, [this](bool marcada) {
    almacen_.Guardar(almacen::kPuestaEnMarcha, almacen::kIntroduccion, marcada ? almacen::kSinIntroduccion : "");
  });
  connect(c_->CHKRadio, &QCheckBox::toggled, this, &frmAsistRemota::CambiarOpciones);
  connect(c_->chkBorrarDatos[1], &QCheckBox::toggled, this, &frmAsistRemota::CambiarOpciones);
  connect(c_->CVel, &QComboBox::currentIndexChanged, this, &frmAsistRemota::CambiarOpciones);
  connect(c_->TxtRadio, &QLineEdit::textChanged, this, &frmAsistRemota::CambiarOpciones);
  connect(c_->TxtRadio, &QLineEdit::editingFinished, this, &frmAsistRemota::DejarIdentificador);
  auto* segundero = new QTimer(this);
  const auto hora = [this] { c_->StatusBarFechaHora->setText(Q(TextoFechaHora(mod_.reloj.Ahora()))); };
  connect(segundero, &QTimer::timeout, this, hora);
  hora();
  segundero->start(kCadaSegundo);
}

void frmAsistRemota::CargarPreferencia() {
  if (almacen_.Leer(almacen::kPuestaEnMarcha, almacen::kIntroduccion) != almacen::kSinIntroduccion) return;
  c_->chkShowIntro->setChecked(true);
  utr::SetStep(estado_, kPrimerPaso, Direccion::kAdelante, {});
}

// --- Steps -----------------------------------------------------------------------------------------------------------

std::string frmAsistRemota::Titulo() const {
  return U(windowTitle());
}

void frmAsistRemota::Mostrar() {
  const auto paso = static_cast<std::size_t>(estado_.paso);
  setWindowTitle(Q(TituloDePaso(estado_.paso)));
  c_->pasos->setCurrentIndex(static_cast<int>(paso));
  c_->LabelP1->setText(Q(TextoDeConfiguracion(estado_)));
  c_->lblStep[2]->setText(Q(TextoDeAgenda(estado_)));
  for (QRadioButton* opcion : {c_->OptionUTR, c_->optcfgPrevia, c_->OptionXML}) {
    opcion->setEnabled(!estado_.configuracion_hecha);
    opcion->setToolTip(estado_.configuracion_hecha ? kFuenteElegida : "");
  }
  c_->cmdNav[kAnterior]->setEnabled(HayAnterior(estado_.paso));
  c_->cmdNav[kSiguiente]->setEnabled(HaySiguiente(estado_.paso));
  c_->cmdNav[kFinalizar]->setEnabled(estado_.fin_habilitado);
  // Enter goes on; it never finishes.
  c_->cmdNav[kSiguiente]->setDefault(HaySiguiente(estado_.paso));
  Enfocar();
}

void frmAsistRemota::Enfocar() {
  QWidget* primero = estado_.paso == kUltimoPaso ? static_cast<QWidget*>(c_->CHKRadio) : c_->cmdNav[kSiguiente];
  for (QRadioButton* opcion : {c_->OptionUTR, c_->optcfgPrevia, c_->OptionXML}) {
    if (estado_.paso == kPrimerPaso && opcion->isChecked() && opcion->isEnabled()) primero = opcion;
  }
  primero->setFocus();
}

void frmAsistRemota::Navegar(int boton) {
  if (Ocupacion::Ocupada(*this)) return;
  const std::int16_t paso = estado_.paso;
  switch (boton) {
    case kAyuda:
      return AbrirAyuda(mod_.archivo_ayuda, *this);
    case kCancelar:
      return reject();
    case kAnterior:
      return SetStep(static_cast<std::int16_t>(paso - 1), Direccion::kAtras);
    case kSiguiente:
      return SetStep(static_cast<std::int16_t>(paso + 1), Direccion::kAdelante);
    default:
      return Finalizar();
  }
}

void frmAsistRemota::SetStep(std::int16_t paso, Direccion direccion) {
  Intentar([&] {
    const Ocupacion ocupacion(*this);
    const LlegadasAsistente llegadas{.LeeryGuardarCFG = [this](bool hecho) { return LeeryGuardarCFG(hecho); },
                                     .ProcesarAgenda = [this](bool hecho) { return ProcesarAgenda(hecho); }};
    const bool llego = utr::SetStep(estado_, paso, direccion, llegadas);
    if (llego && direccion == Direccion::kAdelante && paso == kUltimoPaso) PrepararFinal();
  });
  Mostrar();
}

// The handler of the steps and of the sequence at their end.
void frmAsistRemota::Intentar(const std::function<void()>& accion) {
  const bool bien =
      RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "SetStep", Titulo(), Redaccion::kAsistente, [&] {
        const auto falla = FallaDe(accion);
        if (!falla) return;
        c_->lblStep[3]->setText(Q(falla->Descripcion()));
        // It may take lines from the list, whose failed one stays in sight.
        c_->fraStep[3]->layout()->activate();
        c_->lineas->Arbol()->scrollTo(c_->lineas->Arbol()->currentIndex());
        throw *falla;
      });
  if (!bien) c_->pgbProgreso->hide();
}

// --- Channels --------------------------------------------------------------------------------------------------------

FuenteAsistente frmAsistRemota::Fuente() const {
  if (c_->optcfgPrevia->isChecked()) return FuenteAsistente::kPrevia;
  return c_->OptionXML->isChecked() ? FuenteAsistente::kArchivo : FuenteAsistente::kUTR;
}

bool frmAsistRemota::LeeryGuardarCFG(bool hecho) {
  bool hecha = false;
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeeryGuardarCFG", Titulo(), Redaccion::kCompletada,
                        [&] {
                          if (!hecho && !CargarCanales()) return;
                          MostrarCanales();
                          AtenderViento();
                          GuardarRevisada();
                          hecha = true;
                        });
  return hecha;
}

// False: the operator chose no file.
bool frmAsistRemota::CargarCanales() {
  const FuenteAsistente fuente = Fuente();
  std::filesystem::path ruta;
  if (fuente != FuenteAsistente::kUTR) {
    const auto elegida = ElegirArchivo(fuente);
    if (!elegida) return false;
    ruta = *elegida;
  }
  CanalesAsistente canales;
  {
    const Ocupacion ocupacion(*this, {.operador = &mod_.operador, .panel = c_->picInfo});
    if (mod_.atender) mod_.atender();
    canales = CargarConfiguracion(mod_, lectura_, fuente, ruta);
  }
  veleta_forzada_ = false;
  estado_.ColeccionConfig = std::move(canales.ColeccionConfig);
  estado_.ColeccionConfigCompleta = std::move(canales.ColeccionConfigCompleta);
  const QString avisos = Q(Unir(canales.avisos, "\n"));
  c_->avisoCanales->Decir(avisos);
  c_->avisoCanalesLeidos->Decir(avisos);
  return true;
}

std::optional<std::filesystem::path> frmAsistRemota::ElegirArchivo(FuenteAsistente fuente) {
  PedidoArchivo pedido = PedidoDe(fuente);
  std::error_code nada;
  if (fuente == FuenteAsistente::kPrevia && std::filesystem::is_directory(lectura_.CarpetaDeRespaldos(), nada)) {
    pedido.carpeta = lectura_.CarpetaDeRespaldos();
  }
  return mod_.operador.ElegirAbrir(pedido);
}

// One after the other; a cancelled one keeps what it has.
void frmAsistRemota::MostrarCanales() {
  std::size_t lugar = 0;
  for (const ConfigPtr& config : estado_.ColeccionConfig) {
    frmParamCfg dialogo(mod_, this);
    dialogo.FijarColeccion(&estado_.ColeccionConfig);
    dialogo.FijarConfiguracion(config);
    dialogo.FijarRonda(++lugar, estado_.ColeccionConfig.Count());
    dialogo.exec();
    if (dialogo.DejarRestantes) return;
  }
}

void frmAsistRemota::AtenderViento() {
  const AjusteViento ajuste = AjustarViento(estado_.ColeccionConfigCompleta, veleta_forzada_);
  veleta_forzada_ = veleta_forzada_ || ajuste.forzado;
  c_->avisoVeleta->Decir(Q(TextoDeReparos(ajuste)));
  if (!ajuste.forzado) return;
  mod_.operador.Mostrar({std::string(kAvisoDeViento), "Atención   ", Icono::kNinguno, Botones::kAceptar});
}

void frmAsistRemota::GuardarRevisada() {
  const ResultadoRespaldo resultado =
      lectura_.RespaldarRevisada(*estado_.ColeccionConfigCompleta.GetRecMembers(mod_.registro));
  c_->avisoRespaldo->Decir(resultado.Guardado() ? QString()
                                                : Q("La configuración revisada no pudo guardarse: " + resultado.falla));
}

// --- Schedule --------------------------------------------------------------------------------------------------------

bool frmAsistRemota::ProcesarAgenda(bool hecho) {
  c_->avisoAgenda->Decir({});
  frmAgendas agendas(mod_, this);
  agendas.SoloColeccion = true;
  if (hecho) {
    agendas.Horarios(estado_.Horarios);
    agendas.RecargarLista();
  } else {
    const Ocupacion ocupacion(*this, {.operador = &mod_.operador, .panel = c_->picInfo});
    if (mod_.atender) mod_.atender();
    if (!agendas.LeerAgenda()) {
      c_->avisoAgenda->Decir(kSinAgenda);
      return false;
    }
  }
  agendas.exec();
  if (!agendas.Acepto) return false;
  estado_.Horarios = agendas.Horarios();
  return true;
}

// --- The last step ---------------------------------------------------------------------------------------------------

void frmAsistRemota::PrepararFinal() {
  LeerIdentificadorDeLaUTR();
  SeleccionarValor(*c_->CVel, VelocidadPropuesta(mod_.propiedades));
  c_->lblStep[3]->setText("Haga clic en Finalizar para poner en marcha la UTR");
  c_->pgbProgreso->hide();
  CambiarOpciones();
}

void frmAsistRemota::LeerIdentificadorDeLaUTR() {
  std::int32_t identificador = 0;
  const bool leido = IgnorandoErrores([&] {
    const Ocupacion ocupacion(*this, {.operador = &mod_.operador, .panel = c_->picInfo});
    identificador = LeerIdentificador(mod_.comunicador);
  });
  c_->TxtRadio->setText(QString::number(identificador));
  c_->CHKRadio->setChecked(identificador != 0);
  c_->avisoRadio->Decir(leido ? QString() : QStringLiteral("El identificador de la UTR no pudo leerse"));
}

std::string frmAsistRemota::VelPuestaMarcha() const {
  return U(c_->CVel->currentText());
}

void frmAsistRemota::VelPuestaMarcha(const std::string& velocidad) {
  c_->CVel->setCurrentIndex(c_->CVel->findText(Q(velocidad)));
}

void frmAsistRemota::CambiarOpciones() {
  for (QWidget* control : std::initializer_list<QWidget*>{c_->LRadio, c_->TxtRadio}) {
    control->setEnabled(c_->CHKRadio->isChecked());
  }
  c_->lblCambioVelocidad->setText(Q(AvisoDeVelocidad(mod_, ValorElegido(*c_->CVel))));
  MostrarLineas(LineasDe(Pedido()));
}

void frmAsistRemota::DejarIdentificador() {
  if (sin_regla_ || Ocupacion::Ocupada(*this) || !c_->TxtRadio->isEnabled() || c_->TxtRadio->hasFocus()) return;
  // A box that came between the press of a button and its release would leave the button pressed.
  if (QGuiApplication::mouseButtons() != Qt::NoButton) {
    constexpr int kOtraVez = 20;
    QTimer::singleShot(kOtraVez, this, &frmAsistRemota::DejarIdentificador);
    return;
  }
  if (!IdentificadorAdmitido()) c_->TxtRadio->setText("1");
}

// Says what is wrong with it.
bool frmAsistRemota::IdentificadorAdmitido() {
  const std::string_view reparo = ReparoDeIdentificador(U(c_->TxtRadio->text()));
  if (reparo.empty()) return true;
  const QScopedValueRollback una_vez(sin_regla_, true);  // the box takes the focus from the field
  mod_.operador.Mostrar({std::string(reparo), "Atencion", Icono::kNinguno, Botones::kAceptar});
  return false;
}

PedidoPuesta frmAsistRemota::Pedido() const {
  return {.completa = estado_.ColeccionConfigCompleta,
          .horarios = estado_.Horarios,
          .asignar = c_->CHKRadio->isChecked(),
          .identificador = U(c_->TxtRadio->text()),
          .velocidad = ValorElegido(*c_->CVel),
          .borrar_cartucho = c_->chkBorrarDatos[1]->isChecked(),
          .respaldo = lectura_.RespaldoDelEquipo()};
}

void frmAsistRemota::MostrarLineas(const std::vector<LineaPuesta>& lineas) {
  c_->lineas->Marcar(
      [lineas](std::size_t fila) {
        const bool marcada = fila < lineas.size() && LlamaLaAtencion(lineas[fila].estado);
        return marcada ? QStringLiteral("Atención") : QString();
      },
      IconoDe("aviso"));
  c_->lineas->Mostrar(TablaDeLineas(lineas));
  // Room for the longest state, so that nothing moves while they change.
  c_->lineas->Arbol()->setColumnWidth(
      kColumnaEstado, fontMetrics().horizontalAdvance(Q(NombreDe(EstadoPaso::kNoConfirmado))) + kMargenEstado);
  for (std::size_t i = 0; i < lineas.size(); ++i) {
    if (lineas[i].estado == EstadoPaso::kEnCurso || lineas[i].estado == EstadoPaso::kNoConfirmado) {
      c_->lineas->Elegir(i);
    }
  }
}

void frmAsistRemota::Finalizar() {
  if (estado_.paso != kUltimoPaso) {
    // Without its arrival: what was prepared still stands.
    SetStep(kUltimoPaso, Direccion::kAtras);
  }
  if (c_->CHKRadio->isChecked() && !IdentificadorAdmitido()) return c_->TxtRadio->setFocus();
  Intentar([this] { Escribir(); });
}

void frmAsistRemota::Escribir() {
  c_->pgbProgreso->show();
  ResultadoPuesta resultado;
  {
    const Ocupacion ocupacion(*this, {.operador = &mod_.operador, .apagados = {c_->fraOpciones, c_->pieNavegacion}});
    ProgresoFinal progreso(*c_);
    resultado = PonerEnMarcha(Pedido(), {.unidad = {mod_.comunicador, mod_.registro},
                                         .reloj = mod_.reloj,
                                         .diario = mod_.diario,
                                         .atender = mod_.atender,
                                         .progreso = progreso,
                                         .lineas = [this](const auto& lineas) { MostrarLineas(lineas); }});
  }
  escrito_.escribio = escrito_.escribio || resultado.escribio;
  if (resultado.identificador) escrito_.identificador = resultado.identificador;
  if (resultado.canales) escrito_.canales = resultado.canales;
  if (resultado.error) throw *resultado.error;
  Informar(mod_.operador, Titulo(), "La puesta en marcha de la UTR ha concluido satisfactoriamente");
  Concluida = true;
  accept();
}

void frmAsistRemota::done(int resultado) {
  sin_regla_ = true;
  QDialog::done(resultado);
}

}  // namespace utr
