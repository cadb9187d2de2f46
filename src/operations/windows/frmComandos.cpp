#include "operations/windows/frmComandos.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "driver/PaginaCero.h"
#include "driver/Textos.h"
#include "operations/windows/CampoPagina.h"
#include "operations/windows/MarcoComando.h"
#include "widgets/Ayuda.h"
#include "widgets/AyudaCombos.h"
#include "widgets/CampoFecha.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Ocupacion.h"
#include "widgets/PanelAviso.h"
#include "widgets/PanelLista.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr const char* kModulo = "frmComandos";
constexpr const char* kNombreVentana = "Comandos a la UTR";
constexpr int kCifras = 10;          // that a field takes; what is too much is for the commands to say
constexpr int kRenglonesPagina = 3;  // what a page of 64 bytes takes
constexpr int kPasoDelay = 10;       // what the unit counts in
constexpr int kMayorDelay = 1000;
constexpr int kColumnasEstado = 4;
constexpr int kSobreYBajoLaVentana = 48;
constexpr int kALosLados = 72;  // of the frames: margins, scroll bar and the window's borders

// Where the frames stand, in the order in which Tab walks them: side by side where the screen is wide enough for it.
struct Lugar {
  int fila;
  int columna;
  int columnas;
};
using Lugares = std::array<Lugar, 8>;
using Marcos = std::array<QWidget*, 8>;
constexpr Lugares kEnTresColumnas{
    {{0, 0, 1}, {0, 1, 1}, {0, 2, 1}, {1, 0, 2}, {1, 2, 1}, {2, 0, 3}, {3, 0, 2}, {3, 2, 1}}};
constexpr Lugares kEnDosColumnas{
    {{0, 0, 1}, {0, 1, 1}, {1, 0, 1}, {2, 0, 2}, {1, 1, 1}, {3, 0, 2}, {4, 0, 2}, {5, 0, 2}}};

void Colocar(QGridLayout& reja, const Marcos& marcos, const Lugares& lugares) {
  for (QWidget* marco : marcos) reja.removeWidget(marco);
  int columnas = 0;
  for (std::size_t i = 0; i < marcos.size(); ++i) {
    reja.addWidget(marcos[i], lugares[i].fila, lugares[i].columna, 1, lugares[i].columnas);
    columnas = std::max(columnas, lugares[i].columna + lugares[i].columnas);
  }
  for (int columna = 0; columna < reja.columnCount(); ++columna)
    reja.setColumnStretch(columna, columna < columnas ? 1 : 0);
}

DescripcionPanel DelDiario() {
  return {
      .nombre = "Diario",
      .titulo = "Registro de comandos",
      .de_que = "el registro",
      .explicacion = "Lo que se le hizo a la UTR: qué había antes, qué se escribió y cómo terminó.",
      .documento = "Comandos a la UTR",
      .origen = "Comandos desde que se inició el programa",
      .al_final = true,
      .palabras = {.modulo = kModulo, .titulo_ventana = kNombreVentana, .procedimiento_imprimir = "ImprimirDiario"}};
}

Columnas ColumnasDelDiario() {
  return {{"Momento", "Momento", Presentacion::kTalCual, ClaseOrden::kFecha},
          {"UTR", "UTR"},
          {"Comando", "Comando"},
          {"Antes", "Antes"},
          {"Escrito", "Escrito"},
          {"Resultado", "Resultado"}};
}

QLineEdit* Digitos(const char* nombre) {
  auto* campo = new CampoDigitos(nombre, kCifras);
  campo->setFixedWidth(campo->fontMetrics().horizontalAdvance(QString(kCifras, QChar('0'))) + 16);
  return campo;
}

QDateTimeEdit* Muestra(const char* nombre, const char* formato) {
  auto* campo = new CampoFecha;
  campo->setObjectName(QString::fromLatin1(nombre));
  campo->setDisplayFormat(QString::fromLatin1(formato));
  campo->setMinimumDate(QDate(100, 1, 1));
  campo->setReadOnly(true);
  campo->setButtonSymbols(QAbstractSpinBox::NoButtons);
  campo->setToolTip("El reloj de la UTR, como se leyó; Grabar la pone en la hora de la PC");
  return campo;
}

QDateTime MomentoQt(const FechaHora& fecha) {
  return {QDate(fecha.anio, fecha.mes, fecha.dia), QTime(fecha.hora, fecha.minuto, fecha.segundo)};
}

}  // namespace

frmComandos::frmComandos(ModRTU& mod, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      comandos_(mod, kNombreVentana, [this](auto detalle, const auto& trabajo) { Ocupar(detalle, trabajo); }),
      picInfo_(new PanelAviso("picInfo", "Esta operación demorará unos instantes. Por favor espere...", this)),
      cuerpo_(new QWidget),
      diario_(new PanelLista(mod.Listas(), DelDiario(), ColumnasDelDiario(), this)),
      cmdCerrar_(Boton("cmdCerrar", "&Cerrar")),
      cmdAyuda_(Boton("cmdAyuda", "A&yuda")),
      Delay_(Digitos("Delay")),
      ContDelay_(Digitos("ContDelay")),
      CVelocidadP_(new QComboBox),
      TIdUTR_(Digitos("TIdUTR")),
      VentanaAgenda_(Digitos("VentanaAgenda")),
      NumDePagina_(Digitos("NumDePagina")),
      DatosDePagina_(new CampoPagina("DatosDePagina", kRenglonesPagina)),
      lblBytes_(new QLabel),
      HoraRemota_(Muestra("HoraRemota", "HH:mm:ss")),
      FechaRemota_(Muestra("FechaRemota", "dd/MM/yyyy")) {
  setObjectName(kModulo);
  setWindowTitle(kNombreVentana);
  picInfo_->Flotar();
  ArmarTodo();
  diario_->Mostrar(mod_.diario.ComoTabla());
  connect(Delay_, &QLineEdit::editingFinished, this, &frmComandos::Corregir);
  connect(cmdCerrar_, &QPushButton::clicked, this, &QDialog::reject);
  ServirAyuda(*cmdAyuda_, mod_.archivo_ayuda);
  AjustarTamano(*this);
}

// --- The frames ------------------------------------------------------------------------------------------------------

void frmComandos::ArmarTodo() {
  const Marcos marcos{ArmarRTS(),     ArmarPuerto(),   ArmarIdentificador(), ArmarEstado(),
                      ArmarVentana(), ArmarAcciones(), ArmarPagina(),        ArmarHora()};
  auto* reja = new QGridLayout(cuerpo_);
  reja->setContentsMargins(0, 0, 0, 0);
  Colocar(*reja, marcos, kEnTresColumnas);
  if (cuerpo_->minimumSizeHint().width() + kALosLados > screen()->availableSize().width()) {
    Colocar(*reja, marcos, kEnDosColumnas);
    // As they stand now.
    OrdenDeTab({cuerpo_->findChild<QWidget*>("GrabarIdentificador"), VentanaAgenda_,
                cuerpo_->findChild<QWidget*>("LeerAgenda"), cuerpo_->findChild<QWidget*>("GrabarAgenda")});
  }
  auto* columna = new QVBoxLayout;
  columna->addWidget(new AreaDesplazable(cuerpo_, this), 1);
  columna->addWidget(diario_);
  connect(diario_, &PanelLista::Plegada, this, &frmComandos::HacerLugar);
  ArmarDialogo(*this, columna, {.cancelar = cmdCerrar_, .ayuda = cmdAyuda_, .por_defecto = false});
}

QPushButton* frmComandos::NuevoBoton(MarcoComando& marco, const char* nombre, const char* texto, Hacer hacer) {
  QPushButton* boton = marco.AgregarBoton(nombre, texto);
  connect(boton, &QPushButton::clicked, this, [this, hacer] { Operar(hacer); });
  return boton;
}

MarcoComando* frmComandos::ArmarRTS() {
  fraRTS_ = new MarcoComando("RTS de la UTR", "RTS");
  auto* detras = new QWidget;
  auto* fila = new QHBoxLayout(detras);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->addWidget(ArmarPasos());
  fila->addWidget(new QLabel("ms"));
  fraRTS_->Campo(Rotulo("lblDelay", "&Delay RTS -> TX:", Delay_), Delay_, detras);
  fraRTS_->Campo(Rotulo("lblContDelay", "R&epeticiones:", ContDelay_), ContDelay_);
  NuevoBoton(*fraRTS_, "LeerDelay", "Leer", &frmComandos::LeerDelay);
  NuevoBoton(*fraRTS_, "GrabarDelay", "Grabar", &frmComandos::GrabarDelay);
  fraRTS_->Contenido([this] { return U(Delay_->text() + '|' + ContDelay_->text()); });
  for (QLineEdit* campo : {Delay_, ContDelay_})
    connect(campo, &QLineEdit::textChanged, fraRTS_, &MarcoComando::Refrescar);
  return fraRTS_;
}

QWidget* frmComandos::ArmarPasos() {
  auto* pasos = new QWidget;
  pasos->setObjectName("UpDDelayRTS");
  auto* columna = new QVBoxLayout(pasos);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->setSpacing(0);
  for (const int hacia : {1, -1}) {
    auto* flecha = new QToolButton;
    flecha->setArrowType(hacia > 0 ? Qt::UpArrow : Qt::DownArrow);
    flecha->setAccessibleName(hacia > 0 ? "Aumentar el delay" : "Disminuir el delay");
    flecha->setAutoRepeat(true);
    flecha->setFocusPolicy(Qt::NoFocus);
    flecha->setFixedSize(18, Delay_->sizeHint().height() / 2);
    connect(flecha, &QToolButton::clicked, this, [this, hacia] { SubirDelay(hacia); });
    columna->addWidget(flecha);
  }
  return pasos;
}

MarcoComando* frmComandos::ArmarPuerto() {
  fraPuerto_ = new MarcoComando("Puerto de la UTR", "Puerto");
  CVelocidadP_->setObjectName("CVelocidadP");
  for (const std::int32_t velocidad : pagina0::kVelocidades)
    AgregarEntrada(*CVelocidadP_, QString::number(velocidad), velocidad);
  CVelocidadP_->setCurrentIndex(-1);
  fraPuerto_->Campo(Rotulo("lblVelocidadP", "&Velocidad:", CVelocidadP_), CVelocidadP_);
  NuevoBoton(*fraPuerto_, "LeerBPS", "Leer", &frmComandos::LeerBPS);
  QPushButton* grabar = NuevoBoton(*fraPuerto_, "GrabarBPS", "Grabar", &frmComandos::GrabarBPS);
  grabar->setEnabled(comandos_.PuedeGrabarBPS());
  grabar->setToolTip(grabar->isEnabled() ? "Cambia la velocidad de la UTR y la reinicia; el enlace sigue a la nueva"
                                         : "Por IP o por teléfono la velocidad de la UTR no se cambia desde aquí");
  fraPuerto_->Contenido([this] { return std::to_string(ValorElegido(*CVelocidadP_)); });
  connect(CVelocidadP_, &QComboBox::currentIndexChanged, fraPuerto_, &MarcoComando::Refrescar);
  return fraPuerto_;
}

MarcoComando* frmComandos::ArmarIdentificador() {
  fraIdentificador_ = new MarcoComando("Identificador para comunicación vía radio", "Identificador");
  fraIdentificador_->Campo(Rotulo("lblTIdUTR", "&Numero del equipo:", TIdUTR_), TIdUTR_);
  NuevoBoton(*fraIdentificador_, "LeerIdentificador", "Leer", &frmComandos::LeerIdentificador);
  NuevoBoton(*fraIdentificador_, "GrabarIdentificador", "Grabar", &frmComandos::GrabarIdentificador)
      ->setToolTip("Cambia el identificador de la UTR y la reinicia");
  fraIdentificador_->Contenido([this] { return U(TIdUTR_->text()); });
  connect(TIdUTR_, &QLineEdit::textChanged, fraIdentificador_, &MarcoComando::Refrescar);
  return fraIdentificador_;
}

MarcoComando* frmComandos::ArmarEstado() {
  fraEstado_ = new MarcoComando("Estado del UTR(Configuración de los flags)", "Estado");
  fraEstado_->AdvertirSinLeer("Grabar envía las ocho casillas como están");
  auto* casillas = new QGridLayout;
  int lugar = 0;
  for (const BanderaEstado& bandera : kBanderasEstado) {
    auto* casilla = new QCheckBox(bandera.rotulo);
    casilla->setObjectName(QStringLiteral("Check1(%1)").arg(bandera.casilla));
    if (bandera.leida == 0) casilla->setToolTip("No se lee de la UTR: sólo se graba");
    casillas->addWidget(casilla, lugar / kColumnasEstado, lugar % kColumnasEstado);
    connect(casilla, &QCheckBox::toggled, fraEstado_, &MarcoComando::Refrescar);
    Check1_[bandera.casilla] = casilla;
    ++lugar;
  }
  fraEstado_->Renglon(casillas);
  NuevoBoton(*fraEstado_, "LeerCS", "Leer", &frmComandos::LeerCS);
  NuevoBoton(*fraEstado_, "GrabarCS", "Grabar", &frmComandos::GrabarCS);
  fraEstado_->Contenido([this] { return TextoDeBanderas(Casillas()); });
  return fraEstado_;
}

MarcoComando* frmComandos::ArmarVentana() {
  fraVentana_ = new MarcoComando("Ventana de agenda", "Ventana");
  fraVentana_->Campo(Rotulo("lblVentanaAgenda", "D&uración de la ventana en minutos:", VentanaAgenda_), VentanaAgenda_);
  NuevoBoton(*fraVentana_, "LeerAgenda", "Leer", &frmComandos::LeerAgenda);
  NuevoBoton(*fraVentana_, "GrabarAgenda", "Grabar", &frmComandos::GrabarAgenda);
  fraVentana_->Contenido([this] { return U(VentanaAgenda_->text()); });
  connect(VentanaAgenda_, &QLineEdit::textChanged, fraVentana_, &MarcoComando::Refrescar);
  return fraVentana_;
}

QPushButton* frmComandos::NuevaAccion(const char* nombre, const char* texto, const char* ayuda, Hacer hacer) {
  QPushButton* boton = Boton(nombre, texto);
  boton->setToolTip(ayuda);
  boton->setAccessibleDescription(ayuda);
  connect(boton, &QPushButton::clicked, this, [this, hacer] { Operar(hacer); });
  return boton;
}

// What loses something or stops the unit stands apart, and bears the sign of it.
QWidget* frmComandos::ArmarAcciones() {
  auto* marco = new QGroupBox("Acciones sobre la UTR");
  auto* fila = new QHBoxLayout(marco);
  RTS_ = NuevaAccion("RTS", "RTS Apagado", "Enciende o apaga la línea RTS del puerto de esta PC",
                     &frmComandos::ConmutarRTS);
  fila->addWidget(RTS_);
  auto* raya = new QFrame;
  raya->setFrameShape(QFrame::VLine);
  raya->setFrameShadow(QFrame::Sunken);
  fila->addSpacing(8);
  fila->addWidget(raya);
  fila->addStretch(1);
  QPushButton* const peligrosas[] = {
      NuevaAccion("ReinicioAgendaB", "Reinicio Agenda",
                  "La agenda empieza de nuevo: se pierde la ventana o la transmisión que esté en curso",
                  &frmComandos::Accion<AccionUTR::kReiniciarAgenda>),
      NuevaAccion("RiniciarRTU", "Reinicio UTR",
                  "La UTR se detiene y arranca de nuevo: no mide ni contesta hasta que vuelve",
                  &frmComandos::Accion<AccionUTR::kReiniciarUTR>),
      NuevaAccion("cmdBorrarCartucho", "Borrar Cartucho", "Se pierden todos los datos y eventos del cartucho",
                  &frmComandos::Accion<AccionUTR::kBorrarCartucho>),
      NuevaAccion("BorradoFlash", "Borrar Flash",
                  "Se pierden todos los datos, los eventos y la cola de transmisión que guarda la UTR",
                  &frmComandos::Accion<AccionUTR::kBorrarFlash>)};
  for (QPushButton* boton : peligrosas) {
    boton->setIcon(IconoDe("aviso"));
    fila->addWidget(boton);
  }
  return marco;
}

MarcoComando* frmComandos::ArmarPagina() {
  fraPagina_ = new MarcoComando("Escritura de páginas", "Pagina");
  fraPagina_->Campo(Rotulo("lblNumDePagina", "&Pagina:", NumDePagina_), NumDePagina_);
  lblBytes_->setObjectName("lblBytes");
  fraPagina_->Renglon(Rotulo("lblDatosDePagina", "Da&tos", DatosDePagina_));
  fraPagina_->Renglon(DatosDePagina_);
  fraPagina_->AgregarAlPie(lblBytes_);
  NuevoBoton(*fraPagina_, "LeerPaginaB", "Leer", &frmComandos::LeerPagina);
  NuevoBoton(*fraPagina_, "EscribirPaginaB", "Grabar", &frmComandos::EscribirPagina);
  fraPagina_->Contenido([this] { return U(NumDePagina_->text() + '|' + DatosDePagina_->toPlainText()); });
  connect(NumDePagina_, &QLineEdit::textChanged, fraPagina_, &MarcoComando::Refrescar);
  connect(DatosDePagina_, &QPlainTextEdit::textChanged, fraPagina_, &MarcoComando::Refrescar);
  connect(DatosDePagina_, &QPlainTextEdit::textChanged, this, &frmComandos::ContarBytes);
  ContarBytes();
  return fraPagina_;
}

MarcoComando* frmComandos::ArmarHora() {
  fraHora_ = new MarcoComando("Fecha y Hora de la remota", "Hora");
  fraHora_->Campo(Rotulo("lblHoraRemota", "Hora:", HoraRemota_), HoraRemota_);
  fraHora_->Campo(Rotulo("lblFechaRemota", "Fecha:", FechaRemota_), FechaRemota_);
  HoraRemota_->setDateTime(MomentoQt(kHoraSinLeer));
  FechaRemota_->setDateTime(MomentoQt(kFechaSinLeer));
  NuevoBoton(*fraHora_, "ActualizarHora", "Leer", &frmComandos::ActualizarHora);
  NuevoBoton(*fraHora_, "GrabarHoraB", "Grabar", &frmComandos::GrabarHora)
      ->setToolTip("Pone la UTR en la hora de la PC");
  fraHora_->Contenido([this] { return U(HoraRemota_->text() + FechaRemota_->text()); });
  return fraHora_;
}

// The window grows by the journal as far as the screen has room; the frames scroll for the rest.
void frmComandos::HacerLugar(int mas) {
  const int maximo = std::max(height(), screen()->availableSize().height() - kSobreYBajoLaVentana);
  resize(width(), std::min(height() + mas, maximo));
}

// --- What every command goes through ---------------------------------------------------------------------------------

// The rule on leaving the delay runs first: a button that is pressed by its key takes no focus from the field.
void frmComandos::Operar(Hacer hacer) {
  if (Ocupacion::Ocupada(*this)) return;
  Corregir();
  QWidget* foco = nullptr;
  {
    const Ocupacion ocupacion(*this);
    foco = (this->*hacer)();
  }
  diario_->Mostrar(mod_.diario.ComoTabla());
  if (foco != nullptr) foco->setFocus();
}

void frmComandos::Ocupar(std::string_view detalle, const std::function<void()>& trabajo) {
  picInfo_->Detallar(Q(detalle));
  OpcionesOcupacion opciones{.operador = &mod_.operador, .panel = picInfo_};
  if (!detalle.empty()) opciones.apagados = {cuerpo_, diario_, cmdCerrar_, cmdAyuda_};
  const Ocupacion ocupacion(*this, opciones);
  trabajo();
}

void frmComandos::Terminar(MarcoComando& marco, FinComando fin, const std::string& nota) {
  if (fin == FinComando::kHecho) marco.Grabado(Ahora(), nota);
  if (fin == FinComando::kSinReiniciar) marco.Grabado(Ahora(), "sin reiniciar la UTR");
  if (fin == FinComando::kSinTerminar) marco.Grabado(Ahora(), "sin terminar");
  if (fin == FinComando::kNoConfirmado) marco.NoConfirmado(Ahora());
}

void frmComandos::Corregir() {
  const QString texto = Q(RetardoAlSalir(U(Delay_->text())));
  if (texto != Delay_->text()) Delay_->setText(texto);
}

void frmComandos::SubirDelay(int pasos) {
  const int valor = std::clamp(Delay_->text().toInt() + pasos * kPasoDelay, 0, kMayorDelay);
  Delay_->setText(QString::number(valor));
}

void frmComandos::ContarBytes() {
  const auto bytes = LeerTextoPagina(U(DatosDePagina_->toPlainText()));
  if (!bytes) return lblBytes_->setText("no es texto de página");
  lblBytes_->setText(bytes->size() == 1 ? QStringLiteral("1 byte") : QStringLiteral("%1 bytes").arg(bytes->size()));
}

// --- Page "0" --------------------------------------------------------------------------------------------------------

QWidget* frmComandos::LeerDelay() {
  if (const auto retardos = comandos_.LeerDelay()) {
    Delay_->setText(Q(retardos->delay));
    ContDelay_->setText(Q(retardos->repeticiones));
    fraRTS_->Leido(Ahora());
  }
  return nullptr;
}

QWidget* frmComandos::GrabarDelay() {
  const Retardos retardos{U(Delay_->text()), U(ContDelay_->text())};
  const FinComando fin = comandos_.GrabarDelay(retardos);
  std::string nota;
  if (fin == FinComando::kHecho) {
    const Retardos quedo = Redondear(retardos);
    if (quedo.delay != retardos.delay || quedo.repeticiones != retardos.repeticiones)
      nota = "quedó " + quedo.delay + " y " + quedo.repeticiones;
  }
  Terminar(*fraRTS_, fin, nota);
  return nullptr;
}

QWidget* frmComandos::LeerBPS() {
  if (const auto codigo = comandos_.LeerBPS()) {
    const auto velocidad = pagina0::VelocidadDeCodigo(*codigo);
    SeleccionarValor(*CVelocidadP_, velocidad.value_or(0));
    fraPuerto_->Leido(Ahora(), velocidad ? "" : "código " + std::to_string(*codigo));
  }
  return nullptr;
}

QWidget* frmComandos::GrabarBPS() {
  const FinComando fin = comandos_.GrabarBPS(ValorElegido(*CVelocidadP_));
  Terminar(*fraPuerto_, fin);
  return fin == FinComando::kIncompleto ? CVelocidadP_ : nullptr;
}

QWidget* frmComandos::LeerIdentificador() {
  if (const auto identificador = comandos_.LeerIdentificador()) {
    TIdUTR_->setText(QString::number(*identificador));
    fraIdentificador_->Leido(Ahora());
  }
  return nullptr;
}

QWidget* frmComandos::GrabarIdentificador() {
  const FinComando fin = comandos_.GrabarIdentificador(U(TIdUTR_->text()));
  Terminar(*fraIdentificador_, fin);
  return fin == FinComando::kIncompleto ? TIdUTR_ : nullptr;
}

QWidget* frmComandos::LeerAgenda() {
  if (const auto minutos = comandos_.LeerAgenda()) {
    VentanaAgenda_->setText(QString::number(*minutos));
    fraVentana_->Leido(Ahora());
  }
  return nullptr;
}

QWidget* frmComandos::GrabarAgenda() {
  Terminar(*fraVentana_, comandos_.GrabarAgenda(U(VentanaAgenda_->text())));
  return nullptr;
}

// --- Flags, pages, clock, actions ------------------------------------------------------------------------------------

Banderas frmComandos::Casillas() const {
  Banderas banderas{};
  std::transform(Check1_.begin(), Check1_.end(), banderas.begin(), [](const auto* uno) { return uno->isChecked(); });
  return banderas;
}

void frmComandos::Marcar(const Banderas& banderas) {
  for (std::size_t casilla = 0; casilla < kBanderas; ++casilla) Check1_[casilla]->setChecked(banderas[casilla]);
}

QWidget* frmComandos::LeerCS() {
  Marcar({});
  fraEstado_->Olvidar();
  if (const auto banderas = comandos_.LeerCS()) {
    Marcar(*banderas);
    fraEstado_->Leido(Ahora());
  }
  return nullptr;
}

QWidget* frmComandos::GrabarCS() {
  Terminar(*fraEstado_, comandos_.GrabarCS(Casillas()));
  return nullptr;
}

// The data of another page don't stay on show behind a read that failed.
QWidget* frmComandos::LeerPagina() {
  const std::string numero = U(NumDePagina_->text());
  const std::string pagina = comandos_.LeerPagina(numero);
  DatosDePagina_->setPlainText(Q(pagina));
  pagina.size() < 2 ? fraPagina_->Olvidar() : fraPagina_->Leido(Ahora(), "página " + numero);
  return nullptr;
}

QWidget* frmComandos::EscribirPagina() {
  const std::string numero = U(NumDePagina_->text());
  Terminar(*fraPagina_, comandos_.EscribirPagina(numero, U(DatosDePagina_->toPlainText())), "página " + numero);
  return nullptr;
}

QWidget* frmComandos::ActualizarHora() {
  const std::optional<FechaHora> hora = comandos_.ActualizarHora();
  HoraRemota_->setDateTime(MomentoQt(hora.value_or(kHoraSinLeer)));
  FechaRemota_->setDateTime(MomentoQt(hora.value_or(kFechaSinLeer)));
  hora ? fraHora_->Leido(Ahora()) : fraHora_->Olvidar();
  return nullptr;
}

QWidget* frmComandos::GrabarHora() {
  const FinComando fin = comandos_.GrabarHora();
  if (fin == FinComando::kHecho) return ActualizarHora();
  Terminar(*fraHora_, fin);
  return nullptr;
}

QWidget* frmComandos::ConmutarRTS() {
  RTS_->setText(comandos_.ConmutarRTS() ? "RTS Prendido" : "RTS Apagado");
  return nullptr;
}

}  // namespace utr
