#include "shell/windows/frmPpal.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QProcess>
#include <QScreen>
#include <QStringList>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWhatsThis>
#include <algorithm>
#include <optional>

#include "base/CarpetaPrograma.h"
#include "configuration/Catalogo.h"
#include "configuration/FilasDeCanales.h"
#include "configuration/windows/MostrarConfiguracion.h"
#include "operations/windows/AlmacenAsistentesQt.h"
#include "operations/windows/AsistenteParam.h"
#include "operations/windows/MostrarOperaciones.h"
#include "plots/windows/GraficosALaVista.h"
#include "retrieved/windows/MostrarLector.h"
#include "retrieved/windows/MostrarVistas.h"
#include "schedule/windows/MostrarAgenda.h"
#include "session/ArchivoAyuda.h"
#include "session/BitacoraVisita.h"
#include "session/Encabezado.h"
#include "session/OperacionesEnlace.h"
#include "session/windows/frmBitacora.h"
#include "session/windows/frmConfirmPass.h"
#include "session/windows/frmLibroEstaciones.h"
#include "session/windows/frmLogin.h"
#include "session/windows/frmPuerto.h"
#include "shell/windows/AccionesPpal.h"
#include "shell/windows/BarraEstado.h"
#include "shell/windows/FranjaEstacion.h"
#include "shell/windows/ListaAcciones.h"
#include "shell/windows/MenuPpal.h"
#include "shell/windows/frmAbout.h"
#include "widgets/Ayuda.h"
#include "widgets/Iconos.h"
#include "widgets/Ocupacion.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"
#include "widgets/frmTeclado.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmPpal";

}  // namespace

frmPpal::frmPpal(ModRTU& mod, QWidget* parent)
    : QMainWindow(parent),
      mod_(mod),
      lectura_(mod),
      flujo_(mod, lectura_, *this),
      menu_(new MenuPpal(this)),
      franja_(new FranjaEstacion),
      lista_(new ListaAcciones),
      barra_estado_(new BarraEstado) {
  setObjectName("frmPpal");
  setWindowTitle(Q(kTitulo));
  auto* centro = new QWidget;
  auto* columna = new QVBoxLayout(centro);
  columna->setContentsMargins(0, 0, 0, 0);
  columna->setSpacing(0);
  columna->addWidget(franja_);
  columna->addWidget(lista_, 1);
  setCentralWidget(centro);
  setStatusBar(barra_estado_);
  ConectarControles();
  mod_.conexion.AlCambiar([this] { MostrarEnlace(); });
  mod_.bitacora.AlCambiar([this] { MostrarPendientes(); });
  flujo_.Servirse({.estado = [this](std::string_view texto) { barra_estado_->Texto(texto); },
                   .verificacion = [this](auto texto, auto detalle) { barra_estado_->Verificacion(texto, detalle); },
                   .leida = [this] { MostrarEstacion(); },
                   .mostrar_canales = [this](bool solo_mirar) { utr::MostrarConfiguracion(flujo_, solo_mirar); }});
  resize((QSize(820, 600) * EscalaDelTexto()).boundedTo(SitioEnPantalla(*this)));
  RecordarTamano(this);
}

frmPpal::~frmPpal() {
  mod_.conexion.AlCambiar({});
  mod_.bitacora.AlCambiar({});
  if (situacion_ == nullptr) return;
  situacion_->AlCambiar({});
  situacion_->AlCambiarElPuerto({});
  situacion_->AlResponder({});
  situacion_->AlTerminarLaLlamada({});
  situacion_->AlAvisar({});
}

void frmPpal::Seguir(SituacionDelEnlace& situacion) {
  situacion_ = &situacion;
  const auto mostrar = [this] {
    menu_->MostrarUnidad(situacion_->Clase());
    franja_->DecirUnidad(Q(TextoDe(situacion_->Clase())));
    const bool por_linea = situacion_->Clase() != ClaseDeUnidad::kSimulada;
    barra_estado_->Trafico(por_linea ? TextoDe(situacion_->Cuenta()) : std::string());
  };
  situacion.AlCambiar(mostrar);
  situacion.AlCambiarElPuerto([this](bool abierto) { mod_.conexion.MarcarConectado(abierto); });
  situacion.AlResponder([this](std::optional<bool> contesta) { mod_.conexion.MarcarRespuesta(contesta); });
  situacion.AlTerminarLaLlamada([this] { mod_.conexion.OlvidarLlamada(); });
  situacion.AlAvisar([this](const std::string& aviso) { Avisar(aviso); });
  mostrar();
}

void frmPpal::Vestir(Apariencia& apariencia) {
  menu_->OfrecerApariencia(apariencia);
}

void frmPpal::ConectarControles() {
  connect(lista_, &ListaAcciones::Ejecutar, this, &frmPpal::mnuAcciones_Click);
  connect(menu_, &MenuPpal::Accion, this, &frmPpal::mnuAcciones_Click);
  connect(menu_, &MenuPpal::Avanzada, this, &frmPpal::mnuAccAvanzadas_Click);
  connect(menu_, &MenuPpal::Visita, this, &frmPpal::mnuVisita_Click);
  connect(menu_, &MenuPpal::Salir, this, &QWidget::close);
  connect(menu_, &MenuPpal::Conectar, this, &frmPpal::BotonConected);
  connect(menu_, &MenuPpal::Desconectar, this, &frmPpal::BotonDisconected);
  connect(menu_, &MenuPpal::BarraDeEstado, barra_estado_, &QWidget::setVisible);
  connect(menu_, &MenuPpal::OrdenPedido, lista_, &ListaAcciones::Ordenar);
  connect(menu_, &MenuPpal::VistaPedida, this, [this](Vista vista) {
    lista_->FijarVista(vista);
    menu_->FijarVista(vista);
  });
  connect(menu_, &MenuPpal::AyudaPedida, this,
          [this](EntradaAyuda entrada) { AbrirAyuda(mod_.archivo_ayuda, *this, entrada); });
  connect(menu_, &MenuPpal::TecladoPedido, this, [this] { frmTeclado(this).exec(); });
  connect(menu_, &MenuPpal::QueEsEsto, this, [] { QWhatsThis::enterWhatsThisMode(); });
  connect(menu_, &MenuPpal::AcercaDe, this,
          [this] { Operar("mnuHelpAbout_Click", [this] { frmAbout(this).exec(); }); });
}

void frmPpal::Cargar() {
  Operar("Form_Load", [this] {
    FijarArchivoAyuda(mod_);
    menu_->HabilitarAyuda(HayAyuda(mod_.archivo_ayuda));
    IgnorandoErrores([&] { mod_.comunicador.ModoConexion(true); });
    mod_.conexion.TomarDeAjustes();
    LeerConfiguracion({});
    mod_.catalogo.CargarUnidades();
    ArmarLista();
    InfoPanel();
  });
}

void frmPpal::ArmarLista() {
  for (std::size_t i = 0; i < kAcciones.size(); ++i) {
    lista_->Agregar(QString(kAcciones[i].texto).remove('&'), kAcciones[i].que_hace, IconoDe(kAcciones[i].icono),
                    static_cast<int>(i));
  }
  lista_->FijarVista(Vista::kDetalles);
  menu_->FijarVista(Vista::kDetalles);
  lista_->Ordenar(true);
  lista_->Elegir(0);
  menu_->FijarOrden(true);
  EstadoConeccion(true);
  lista_->setFocus();
}

// Runs an action that the operator asked for, alone; whatever it didn't handle itself is logged and shown.
void frmPpal::Operar(const char* procedimiento, const std::function<void()>& operacion) {
  if (Ocupacion::Ocupada(*this)) return;
  const Ocupacion ocupacion(*this);
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, Titulo(), Redaccion::kCompletada,
                        operacion);
  MostrarEstacion();
}

void frmPpal::mnuAcciones_Click(int indice) {
  Operar("mnuAcciones_Click", [&] { Ejecutar(kAcciones.at(static_cast<std::size_t>(indice))); });
}

void frmPpal::Ejecutar(const AccionPpal& accion) {
  if (accion.reconecta && !ReconectarSiHaceFalta()) return;
  if (accion.olvida_predefinida) mod_.ruta_predefinida.clear();
  (this->*accion.hacer)();
}

// True when the link may be used: it is up as far as the buttons tell, or the operator had it opened again.
bool frmPpal::ReconectarSiHaceFalta() {
  if (mod_.conexion.Conectado() || mod_.conexion.PorIP()) return true;
  if (!Preguntar(mod_.operador, Titulo(), "El puerto COM se ha desconectado.\n¿Desea reconectar el mismo?"))
    return false;
  IgnorandoErrores([&] { mod_.conexion.ConectarSegunAjustes(); });
  EstadoConeccion(true);
  return true;
}

void frmPpal::mnuAccAvanzadas_Click(int indice) {
  Operar("mnuAccAvanzadas_Click ", [&] {
    if (PedirClave(mod_, this)) return Ejecutar(kAvanzadas.at(static_cast<std::size_t>(indice)));
    Informar(mod_.operador, Titulo(), "Para acceder a la funcionalidad solicitada debe conocer la clave de acceso");
  });
}

void frmPpal::mnuVisita_Click(int indice) {
  Operar("mnuVisita_Click", [&] { Ejecutar(kVisita.at(static_cast<std::size_t>(indice))); });
}

void frmPpal::BotonConected() {
  if (Ocupacion::Ocupada(*this))
    return menu_->FijarConexion(mod_.conexion.Conectado());  // the click alone has pressed the button
  Operar("tbToolBar_ButtonClick", [&] {
    const std::optional<Error> falla = FallaDe([&] { mod_.conexion.ConectarSegunAjustes(); });
    if (!falla) return;
    mod_.operador.Mostrar(MensajeDePuerto(*falla, Titulo()));
    mod_.conexion.Desconectar();
  });
}

void frmPpal::BotonDisconected() {
  if (Ocupacion::Ocupada(*this))
    return menu_->FijarConexion(mod_.conexion.Conectado());  // the click alone has pressed the button
  Operar("tbToolBar_ButtonClick", [&] { mod_.conexion.Desconectar(); });
}

void frmPpal::EstadoConeccion(bool Conected) {
  mod_.conexion.MarcarConectado(Conected);
}

void frmPpal::Avisar(const std::string& texto) {
  barra_estado_->Texto(texto);
}

void frmPpal::InfoPanel() {
  panel_ = utr::InfoPanel(mod_);
  barra_estado_->Mostrar(panel_);
  MostrarEstacion();
}

void frmPpal::MostrarEstacion() {
  // Plots of one station never go into the report of another one.
  if (mod_.graficos != nullptr) mod_.graficos->SonDe(Q(mod_.UnidadAMano()));
  std::optional<std::size_t> canales;
  const TablaPtr& tabla = lectura_.RecConfig();
  if (tabla) {
    IgnorandoErrores([&] { canales = ColeccionDe(*tabla, FilasDeCanales::kHabilitadas).Count(); });
  }
  franja_->Mostrar(EncabezadoDe(lectura_, mod_, canales, panel_));
}

// Told by the link at each change, so that buttons and panels never show a former one.
void frmPpal::MostrarEnlace() {
  menu_->FijarConexion(mod_.conexion.Conectado());
  menu_->MostrarConexion(HayPuertoSerie(mod_.propiedades));
  IgnorandoErrores([&] { InfoPanel(); });
}

// What the disk doesn't take of the journal is said until it does.
void frmPpal::MostrarPendientes() {
  const std::size_t cuantos = mod_.bitacora.Pendientes().size();
  barra_estado_->Bitacora(cuantos == 0 ? std::string() : "Bitácora sin guardar: " + CuantosAsientos(cuantos),
                          mod_.bitacora.Falla());
}

bool frmPpal::LeerConfiguracion(const PedidoConfiguracion& pedido) {
  return flujo_.LeerConfiguracion(pedido);
}

void frmPpal::LeerConfiguracion() {
  LeerConfiguracion({.MostrarConfig = true, .SoloMostrarLaCFG = true});
}

bool frmPpal::LeerConfiguracionDirectaUTR() {
  return flujo_.LeerConfiguracionDirectaUTR();
}

void frmPpal::ConfigurarPuerto() {
  utr::ConfigurarPuerto(mod_, *this);
}

void frmPpal::Contrasena() {
  CambiarContrasena(mod_, *this);
}

void frmPpal::ProcesarAgenda() {
  utr::ProcesarAgenda(flujo_);
}

void frmPpal::MostrarEventos() {
  utr::MostrarEventos(flujo_);
}

void frmPpal::MostrarDatos() {
  utr::MostrarDatos(flujo_);
}

void frmPpal::ColaDeTransmicion() {
  utr::ColaDeTransmicion(flujo_);
}

void frmPpal::ProcesarDatos() {
  utr::ProcesarDatos(flujo_);
}

void frmPpal::VisualizarArchivos() {
  utr::VisualizarArchivos(flujo_);
}

void frmPpal::MostrarSalidasDigitales() {
  utr::MostrarSalidasDigitales(flujo_);
}

void frmPpal::MostrarComandos() {
  utr::MostrarComandos(flujo_);
}

void frmPpal::RecuperarDatos() {
  utr::RecuperarDatos(flujo_);
}

void frmPpal::MostrarConfiguracion() {
  utr::MostrarConfiguracion(flujo_);
}

void frmPpal::MostrarParametros() {
  utr::MostrarParametros(flujo_);
}

void frmPpal::AsistenteParam() {
  AlmacenAsistentesQt almacen;
  utr::AsistenteParam(flujo_, almacen);
}

void frmPpal::ExportarConfiguracion() {
  flujo_.ExportarConfiguracion();
}

void frmPpal::MostrarBitacora() {
  std::vector<FiguraInforme> figuras;
  if (mod_.graficos != nullptr) {
    for (const auto& [ventana, grafico] : mod_.graficos->Todos()) {
      QStringList fuente{grafico.fuente, grafico.periodo};
      fuente.removeAll(QString());
      figuras.push_back({U(grafico.titulo), U(fuente.join(QStringLiteral(", "))), grafico.pintar});
    }
  }
  frmBitacora(mod_, std::move(figuras), this).exec();
}

void frmPpal::DescargarTodo() {
  utr::DescargarTodo(flujo_);
}

void frmPpal::MostrarLibroEstaciones() {
  const auto estacion = ElegirEstacion(mod_, this);
  if (estacion) LeerConfiguracion({.MostrarConfig = true, .SoloMostrarLaCFG = true, .Estacion = EntradaDe(*estacion)});
}

void frmPpal::LanzarMandadero() {
  const QString programa = Q(ArchivoDelPrograma(mod_.carpeta, "Mandadero.exe").string());
  if (QProcess::startDetached(programa, {})) return;
  mod_.operador.Mostrar(
      {"La operación solicitada no puede ser completada", Titulo(), Icono::kCritico, Botones::kAceptar});
}

std::string frmPpal::Titulo() const {
  return U(windowTitle());
}

void frmPpal::closeEvent(QCloseEvent* evento) {
  Descargar();
  evento->accept();
  QCoreApplication::quit();
}

// Once the bar has taken the new letters and icons in.
void frmPpal::changeEvent(QEvent* evento) {
  QMainWindow::changeEvent(evento);
  if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange)
    QTimer::singleShot(0, this, &frmPpal::CrecerConLaBarra);
}

// A button that the bar has no room for is out of sight, so that the window widens with larger letters as far as the
// screen lets it.
void frmPpal::CrecerConLaBarra() {
  const auto* barra = findChild<QToolBar*>("BarraHerramientas");
  if (barra == nullptr || isMaximized() || isFullScreen()) return;
  const int falta = barra->sizeHint().width() - barra->width();
  if (falta <= 0) return;
  const int ancho = std::min(width() + falta, SitioEnPantalla(*this).width());
  const int afuera = x() + ancho - screen()->availableGeometry().right();
  resize(std::max(ancho, width()), height());
  if (isVisible() && afuera > 0) move(std::max(x() - afuera, screen()->availableGeometry().left()), y());
}

void frmPpal::Descargar() {
  const Ocupacion ocupacion(*this);  // nothing is entered any more
  IgnorandoErrores([&] { lectura_.Liberar(); });
  IgnorandoErrores([&] { mod_.propiedades.GrabarArchivoPropiedades(); });
  IgnorandoErrores([&] { mod_.comunicador.Desconectar(); });
}

}  // namespace utr
