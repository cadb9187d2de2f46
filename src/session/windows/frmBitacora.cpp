#include "session/windows/frmBitacora.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

#include "base/Error.h"
#include "base/Texto.h"
#include "session/BitacoraVisita.h"
#include "session/LibroEstaciones.h"
#include "session/Respaldos.h"
#include "widgets/AyudaCombos.h"
#include "widgets/Campos.h"
#include "widgets/ImpresoraDibujos.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"
#include "widgets/TurnoDeImpresora.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr const char* kModulo = "frmBitacora";
constexpr const char* kBitacora = "Bitácora de la visita";
constexpr QSize kTamano(980, 620);
constexpr int kLineasNotas = 3;
constexpr int kMargenNotas = 12;
enum Columna : std::size_t { kMomento, kUnidad, kQue, kAntes, kDespues };  // and how it ended, which must be in sight
constexpr int kLetrasCortas = 16;
constexpr int kLetrasLargas = 26;
constexpr auto kTrasEscribir = std::chrono::seconds(1);

DescripcionLista Descripcion() {
  return {.titulo = kBitacora,
          .columna_titulo = 2,
          .palabras = {.modulo = kModulo, .titulo_ventana = kBitacora, .procedimiento_imprimir = "ImprimirInforme"}};
}

Columnas ColumnasDeBitacora() {
  return {{.titulo = "Momento", .campo = "Momento", .orden = ClaseOrden::kFecha},
          {.titulo = "Unidad", .campo = "Unidad"},
          {.titulo = "Qué", .campo = "Comando"},
          {.titulo = "Antes", .campo = "Antes"},
          {.titulo = "Después", .campo = "Escrito"},
          {.titulo = "Resultado", .campo = "Resultado"}};
}

TablaPtr TablaDeBitacora(const std::vector<Asiento>& asientos) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : {"Momento", "Unidad", "Comando", "Antes", "Escrito", "Resultado"})
    tabla->Append(campo, TipoCampo::kVarChar, 255);
  tabla->Open();
  for (const Asiento& asiento : asientos) {
    tabla->AddNew();
    tabla->Set("Momento", TextoFechaHora(asiento.momento));
    tabla->Set("Unidad", asiento.unidad);
    tabla->Set("Comando", asiento.comando);
    tabla->Set("Antes", asiento.antes);
    tabla->Set("Escrito", asiento.escrito);
    tabla->Set("Resultado", asiento.resultado);
  }
  tabla->UpdateBatch();
  if (!asientos.empty()) tabla->MoveFirst();
  return tabla;
}

FechaHora Dia(const FechaHora& momento) {
  return {.anio = momento.anio, .mes = momento.mes, .dia = momento.dia};
}

QString Numero(std::int32_t estacion) {
  return estacion == 0 ? QStringLiteral("sin identificador") : QString::number(estacion);
}

// A file that was saved elsewhere may hold entries of several.
std::string EstacionesDe(const std::vector<Asiento>& asientos) {
  std::set<std::int32_t> numeros;
  for (const Asiento& asiento : asientos) numeros.insert(asiento.estacion);
  std::vector<std::string> textos;
  textos.reserve(numeros.size());
  for (const std::int32_t numero : numeros) textos.push_back(U(Numero(numero)));
  return textos.empty() ? "-" : Unir(textos, "; ");
}

}  // namespace

frmBitacora::frmBitacora(ModRTU& mod, std::vector<FiguraInforme> figuras, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, Descripcion(), ColumnasDeBitacora(), parent),
      mod_(mod),
      figuras_(std::move(figuras)),
      cboEstacion_(new QComboBox),
      cboDia_(new QComboBox),
      txtOperador_(new CampoTexto("txtOperador")),
      txtNotas_(new QPlainTextEdit),
      lblReparo_(Linea("lblReparo")),
      lblPendientes_(Linea("lblPendientes")),
      lblSinGuardar_(Linea("lblSinGuardar")),
      tmrGuardar_(new QTimer(this)),
      vacia_(Panel("picVacia", "No hay asientos en la bitácora de ese día")) {
  ArmarComandos();
  QPushButton* cerrar = Boton("cmdCerrar", "&Cerrar");
  Lista().LimitarLetras(
      {{kUnidad, kLetrasCortas}, {kQue, kLetrasLargas}, {kAntes, kLetrasCortas}, {kDespues, kLetrasCortas}});
  Armar(ArmarEncima(), {.cancelar = cerrar, .por_defecto = false}, kTamano);
  tmrGuardar_->setObjectName("tmrGuardar");
  tmrGuardar_->setSingleShot(true);
  tmrGuardar_->setInterval(kTrasEscribir);
  connect(tmrGuardar_, &QTimer::timeout, this, &frmBitacora::GuardarLoEscrito);
  connect(txtOperador_, &QLineEdit::textChanged, tmrGuardar_, qOverload<>(&QTimer::start));
  connect(txtNotas_, &QPlainTextEdit::textChanged, tmrGuardar_, qOverload<>(&QTimer::start));
  mod_.diario.Completar();
  mod_.bitacora.Reintentar();
  LlenarEstaciones();
  connect(cboEstacion_, &QComboBox::currentIndexChanged, this, [this] {
    if (GuardarDatos()) return LlenarDias();
    const QSignalBlocker callada(cboEstacion_);
    SeleccionarValor(*cboEstacion_, estacion_);
  });
  // From a journal of elsewhere back to that of the day that stands there already.
  connect(cboEstacion_, &QComboBox::activated, this, &frmBitacora::Volver);
  connect(cboDia_, &QComboBox::activated, this, &frmBitacora::Volver);
  connect(cboDia_, &QComboBox::currentIndexChanged, this, [this] {
    if (GuardarDatos()) return MostrarDia();
    const QSignalBlocker callada(cboDia_);
    cboDia_->setCurrentIndex(LugarDe(dia_));
  });
}

frmBitacora::~frmBitacora() = default;

QWidget* frmBitacora::ArmarEncima() {
  cboEstacion_->setObjectName("cboEstacion");
  cboDia_->setObjectName("cboDia");
  for (QComboBox* lista : {cboEstacion_, cboDia_}) lista->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  txtNotas_->setObjectName("txtNotas");
  txtNotas_->setTabChangesFocus(true);
  txtNotas_->setFixedHeight(kLineasNotas * txtNotas_->fontMetrics().lineSpacing() + kMargenNotas);
  const QString para_que = QStringLiteral("Se guarda con la bitácora de ese día y va en el informe de la visita.");
  txtOperador_->setWhatsThis(para_que);
  txtNotas_->setWhatsThis(para_que);
  auto* fila = new QHBoxLayout;
  fila->addWidget(cboEstacion_);
  fila->addSpacing(kMargenNotas);
  fila->addWidget(Rotulo("lblDia", "&Día:", cboDia_));
  fila->addWidget(cboDia_);
  fila->addStretch(1);
  auto* encima = new QWidget;
  auto* formulario = new QFormLayout(encima);
  formulario->setContentsMargins(0, 0, 0, 0);
  formulario->addRow(Rotulo("lblEstacion", "&Estación:", cboEstacion_), fila);
  formulario->addRow(Rotulo("lblOperador", "&Operador:", txtOperador_), txtOperador_);
  formulario->addRow(Rotulo("lblNotas", "&Notas:", txtNotas_), txtNotas_);
  return encima;
}

void frmBitacora::ArmarComandos() {
  ComandoVentana imprimir = ComandoImprimir("mnuBitImprimir");
  imprimir.texto = "&Imprimir el informe";
  imprimir.ayuda = "Imprimir el informe de la visita";
  imprimir.si = {};
  imprimir.hacer = [this] { ImprimirInforme(); };
  ComandoVentana previa = ComandoVistaPrevia();
  previa.texto = "&Vista previa de la lista...";  // the report is laid out by itself
  ComandoVentana abrir = ComandoAbrir("mnuBitAbrir");
  abrir.texto = "&Abrir el asiento";
  abrir.ayuda = "Abrir el asiento elegido";
  abrir.tecla = {};
  Comandos(
      {{.nombre = "mnuBitacora", .texto = "&Bitácora"}},
      {abrir,
       {.nombre = "mnuBitOtra",
        .texto = "Abrir &otra bitácora...",
        .icono = "abrir",
        .tecla = QKeySequence::Open,
        .hacer = [this] { AbrirOtra(); }},
       ComandoGuardar("mnuBitGuardar"),
       ComandoGuardarCsv(),
       ComandoConfigurarImpresora("mnuBitConfigPrint"),
       imprimir,
       previa,
       ComandoSalir("mnuBitSalir"),
       ComandoOrdenar(true),
       ComandoOrdenar(false),
       ComandoAyuda(),
       ComandoQueEsEsto()},
      {"Open", "Save", "Print", nullptr, "Sort Ascending", "Sort Descending", nullptr, "Help", "Help What's This"});
}

bool frmBitacora::Intentar(const char* procedimiento, const std::function<void()>& hacer) {
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, U(windowTitle()),
                               Redaccion::kCompletada, hacer);
}

// --- What is on show -------------------------------------------------------------------------------------------------

// The stations that have journals, and the present one.
void frmBitacora::LlenarEstaciones() {
  const QSignalBlocker callada(cboEstacion_);
  const std::int32_t actual = mod_.propiedades.LeerEntero(clave::kIdentificador, 0);
  std::vector<std::int32_t> estaciones = Respaldos::Estaciones(mod_.carpeta);
  std::erase_if(estaciones,
                [&](std::int32_t una) { return una == actual || DiasDeBitacora(mod_.bitacora.Carpeta(una)).empty(); });
  estaciones.insert(std::upper_bound(estaciones.begin(), estaciones.end(), actual), actual);
  for (const std::int32_t una : estaciones) AgregarEntrada(*cboEstacion_, Numero(una), una);
  SeleccionarValor(*cboEstacion_, actual);
  LlenarDias();
}

void frmBitacora::LlenarDias() {
  estacion_ = ValorElegido(*cboEstacion_);
  dias_ = DiasDeBitacora(mod_.bitacora.Carpeta(estacion_));
  const FechaHora hoy = Dia(mod_.reloj.Ahora());
  if (std::none_of(dias_.begin(), dias_.end(), [&](const DiaDeBitacora& uno) { return uno.dia == hoy; }))
    dias_.insert(dias_.begin(), {hoy, {}});
  {
    const QSignalBlocker callada(cboDia_);
    cboDia_->clear();
    for (const DiaDeBitacora& uno : dias_) cboDia_->addItem(Q(TextoFecha(uno.dia) + (uno.dia == hoy ? " (hoy)" : "")));
    cboDia_->setCurrentIndex(0);
  }
  MostrarDia();
}

int frmBitacora::LugarDe(const FechaHora& dia) const {
  const auto lugar = std::find_if(dias_.begin(), dias_.end(), [&](const DiaDeBitacora& uno) { return uno.dia == dia; });
  return static_cast<int>(lugar - dias_.begin());
}

void frmBitacora::MostrarDia() {
  archivo_.clear();
  asientos_.clear();
  reparos_.clear();
  const DiaDeBitacora& elegido = dias_.at(static_cast<std::size_t>(std::max(0, cboDia_->currentIndex())));
  dia_ = elegido.dia;
  for (const std::filesystem::path& archivo : elegido.archivos) {
    if (const auto falla = FallaDe([&] { Leer(archivo); })) reparos_.push_back(falla->Descripcion());
  }
  for (const Asiento& pendiente : mod_.bitacora.Pendientes()) {
    if (pendiente.estacion == estacion_ && Dia(pendiente.momento) == dia_) asientos_.push_back(pendiente);
  }
  MostrarAsientos();
  MostrarDatos();
}

void frmBitacora::Volver() {
  if (!archivo_.empty()) MostrarDia();
}

void frmBitacora::Leer(const std::filesystem::path& archivo) {
  BitacoraLeida leida = LeerBitacora(archivo);
  asientos_.insert(asientos_.end(), leida.asientos.begin(), leida.asientos.end());
  if (!leida.reparo.empty()) reparos_.push_back(leida.reparo);
}

void frmBitacora::MostrarAsientos() {
  Lista().Mostrar(TablaDeBitacora(asientos_));
  asientos_.empty() ? Zona().Mostrar({vacia_}) : Zona().Mostrar({});
  if (!asientos_.empty()) Lista().Elegir(asientos_.size() - 1);
  const std::string otros = reparos_.size() > 1 ? " (y " + std::to_string(reparos_.size() - 1) + " más)" : "";
  Decir(lblReparo_, reparos_.empty() ? QString() : Q(reparos_.front() + otros));
  lblReparo_->setToolTip(Q(Unir(reparos_, "\n")));
  const std::size_t pendientes = mod_.bitacora.Pendientes().size();
  Decir(lblPendientes_, pendientes == 0 ? QString() : Q(CuantosAsientos(pendientes) + " sin guardar en el disco"));
  lblPendientes_->setToolTip(Q(mod_.bitacora.Falla()));
}

// A file that isn't understood is said, and isn't written over.
void frmBitacora::MostrarDatos() {
  guardados_.reset();
  Decir(lblSinGuardar_, {});
  DatosVisita datos;
  if (archivo_.empty() &&
      Intentar("LeerDatosVisita", [&] { datos = LeerDatosVisita(mod_.bitacora.Carpeta(estacion_), dia_); }))
    guardados_ = datos;
  txtOperador_->setText(Q(datos.operador));
  txtNotas_->setPlainText(Q(datos.notas));
  txtOperador_->setEnabled(guardados_.has_value());
  txtNotas_->setEnabled(guardados_.has_value());
}

void frmBitacora::AbrirOtra() {
  if (!GuardarDatos()) return;
  const auto ruta = mod_.operador.ElegirAbrir({.titulo = "Abrir bitácora...",
                                               .filtro = "Bitácoras (*.csv)|*.csv",
                                               .carpeta = mod_.bitacora.Carpeta(estacion_),
                                               .nombre = {}});
  if (!ruta) return;
  BitacoraLeida leida;
  if (!Intentar("AbrirOtra", [&] { leida = LeerBitacora(*ruta); })) return;
  archivo_ = *ruta;
  asientos_ = std::move(leida.asientos);
  reparos_ = {"Del archivo " + ruta->filename().string() + (leida.reparo.empty() ? "" : "; " + leida.reparo)};
  MostrarAsientos();
  MostrarDatos();
}

// --- What the operator says ------------------------------------------------------------------------------------------

DatosVisita frmBitacora::Datos() const {
  return {U(txtOperador_->text()), U(txtNotas_->toPlainText())};
}

// What is typed is on the disk soon, whatever becomes of the program; a disk that refuses it is said beside the work.
void frmBitacora::GuardarLoEscrito() {
  if (!guardados_ || *guardados_ == Datos()) return;
  const auto falla = FallaDe([this] { GuardarDatosVisita(mod_.bitacora.Carpeta(estacion_), dia_, Datos()); });
  if (!falla) guardados_ = Datos();
  Decir(lblSinGuardar_, falla ? QStringLiteral("El operador y las notas no se guardaron") : QString());
  lblSinGuardar_->setToolTip(falla ? Q(falla->Descripcion()) : QString());
}

// False: it couldn't be kept, which was said, and the operator stays with it.
bool frmBitacora::GuardarDatos() {
  if (!guardados_ || *guardados_ == Datos()) return true;
  if (Intentar("GuardarDatosVisita", [&] { GuardarDatosVisita(mod_.bitacora.Carpeta(estacion_), dia_, Datos()); })) {
    guardados_ = Datos();
    Decir(lblSinGuardar_, {});
    return true;
  }
  return Preguntar(mod_.operador, U(windowTitle()),
                   "El operador y las notas no se guardaron\n¿Desea seguir sin guardarlos?", Respuesta::kNo);
}

void frmBitacora::reject() {
  if (GuardarDatos()) VentanaLista::reject();
}

// --- The report ------------------------------------------------------------------------------------------------------

EncabezadoLista frmBitacora::Encabezado(bool) const {
  return {kBitacora, {"Estación: " + NombreDeEstacion(), "Día: " + DiaEnPalabras()}};
}

// The number, and the name that the book has for it where only one station is called so.
std::string frmBitacora::NombreDeEstacion() const {
  if (!archivo_.empty()) return EstacionesDe(asientos_);
  std::string nombre = U(Numero(estacion_));
  LibroEstaciones libro(mod_.carpeta / LibroEstaciones::kArchivo);
  if (!IgnorandoErrores([&] { libro.Leer(); })) return nombre;
  if (const Estacion* ella = libro.LaUnica(estacion_))
    nombre += ", " + ella->nombre + (ella->lugar.empty() ? "" : " (" + ella->lugar + ")");
  return nombre;
}

std::string frmBitacora::DiaEnPalabras() const {
  if (archivo_.empty()) return TextoFecha(dia_);
  if (asientos_.empty()) return "-";
  const auto antes = [](const Asiento& uno, const Asiento& otro) { return uno.momento < otro.momento; };
  const auto [primero, ultimo] = std::minmax_element(asientos_.begin(), asientos_.end(), antes);
  const std::string desde = TextoFecha(primero->momento);
  const std::string hasta = TextoFecha(ultimo->momento);
  return desde == hasta ? desde : desde + " a " + hasta;
}

// Plots are of this run and of the present station: they belong to no earlier visit, no other one's and no journal from
// elsewhere.
InformeVisita frmBitacora::Informe() const {
  const bool de_esta = estacion_ == mod_.propiedades.LeerEntero(clave::kIdentificador, 0);
  const bool de_hoy = archivo_.empty() && de_esta && dia_ == Dia(mod_.reloj.Ahora());
  return {.estacion = NombreDeEstacion(),
          .dia = DiaEnPalabras(),
          .impreso = TextoFechaHora(mod_.reloj.Ahora()),
          .datos = Datos(),
          .asientos = asientos_,
          .figuras = de_hoy ? figuras_ : std::vector<FiguraInforme>{}};
}

void frmBitacora::ImprimirInforme() {
  if (!GuardarDatos()) return;
  const bool sin_nombre = guardados_ && txtOperador_->text().trimmed().isEmpty();
  if (sin_nombre && !Preguntar(mod_.operador, U(windowTitle()),
                               "El informe no lleva el nombre del operador\n¿Desea imprimirlo así?", Respuesta::kNo))
    return txtOperador_->setFocus();
  if (!HayImpresora(mod_.operador, mod_.eleccion_impresora)) return;
  const EleccionImpresora eleccion = mod_.eleccion_impresora;
  Intentar("ImprimirInforme", [&] {
    const PunteroDeEspera espera(mod_.operador);
    const InformeVisita informe = Informe();
    const auto dibujar = [&](QPagedPaintDevice& dispositivo, QPainter& pintor, Progreso& progreso) {
      return DibujarInforme(dispositivo, pintor, informe, progreso);
    };
    ConPanel([&](Progreso& progreso) {
      ImprimirDibujo(mod_.impresora, eleccion, TituloDeInforme(informe), dibujar, progreso);
    });
  });
}

}  // namespace utr
