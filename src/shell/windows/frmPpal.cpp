#include "shell/windows/frmPpal.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QProcess>
#include <QWhatsThis>

#include "configuration/Catalogo.h"
#include "retrieved/windows/frmColaTransmicion.h"
#include "retrieved/windows/frmDatos.h"
#include "retrieved/windows/frmEventos.h"
#include "session/ArchivoAyuda.h"
#include "session/OperacionesEnlace.h"
#include "session/windows/frmConfirmPass.h"
#include "session/windows/frmLogin.h"
#include "session/windows/frmPresentacion.h"
#include "session/windows/frmPuerto.h"
#include "shell/windows/BarraEstado.h"
#include "shell/windows/ListaAcciones.h"
#include "shell/windows/MenuPpal.h"
#include "shell/windows/frmAbout.h"
#include "widgets/Ayuda.h"
#include "widgets/Iconos.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmPpal";
constexpr int kAccionPuerto = 7;

// Holds a flag up for the span of a scope.
class Bandera {
 public:
  explicit Bandera(bool& bandera) : bandera_(bandera) { bandera_ = true; }
  ~Bandera() { bandera_ = false; }
  Bandera(const Bandera&) = delete;
  Bandera& operator=(const Bandera&) = delete;

 private:
  bool& bandera_;
};

}  // namespace

frmPpal::frmPpal(ModRTU& mod, QWidget* parent)
    : QMainWindow(parent),
      mod_(mod),
      lectura_(mod),
      menu_(new MenuPpal(this)),
      lista_(new ListaAcciones),
      barra_estado_(new BarraEstado) {
  setObjectName("frmPpal");
  setWindowTitle(Q(kTitulo));
  setCentralWidget(lista_);
  setStatusBar(barra_estado_);
  ConectarControles();
  mod_.conexion.AlCambiar([this] { MostrarEnlace(); });
  resize(720, 520);
  RecordarTamano(this);
}

void frmPpal::ConectarControles() {
  connect(lista_, &ListaAcciones::Ejecutar, this, &frmPpal::mnuAcciones_Click);
  connect(menu_, &MenuPpal::Accion, this, &frmPpal::mnuAcciones_Click);
  connect(menu_, &MenuPpal::Avanzada, this, &frmPpal::mnuAccAvanzadas_Click);
  connect(menu_, &MenuPpal::Salir, this, &QWidget::close);
  connect(menu_, &MenuPpal::Conectar, this, &frmPpal::BotonConected);
  connect(menu_, &MenuPpal::Desconectar, this, &frmPpal::BotonDisconected);
  connect(menu_, &MenuPpal::BarraDeEstado, barra_estado_, &QWidget::setVisible);
  connect(menu_, &MenuPpal::OrdenPedido, lista_, &ListaAcciones::Ordenar);
  connect(menu_, &MenuPpal::VistaPedida, this, [this](Vista vista) {
    lista_->FijarVista(vista);
    menu_->FijarVista(vista);
  });
  connect(menu_, &MenuPpal::AyudaPedida, this, [this] { AbrirAyuda(mod_.archivo_ayuda); });
  connect(menu_, &MenuPpal::QueEsEsto, this, [] { QWhatsThis::enterWhatsThisMode(); });
  connect(menu_, &MenuPpal::AcercaDe, this,
          [this] { Operar("mnuHelpAbout_Click", [this] { frmAbout(this).exec(); }); });
}

void frmPpal::Cargar() {
  Operar("Form_Load", [this] {
    FijarArchivoAyuda(mod_);
    IgnorandoErrores([&] { mod_.comunicador.ModoConexion(true); });
    mod_.conexion.TomarDeAjustes();
    LeerConfiguracion(false, false, false, false);
    mod_.catalogo.CargarUnidades();
    ArmarLista();
    InfoPanel();
  });
}

void frmPpal::ArmarLista() {
  for (std::size_t i = 0; i < kAcciones.size(); ++i) {
    lista_->Agregar(QString(kAcciones[i].texto).remove('&'), IconoDe(kAcciones[i].icono), static_cast<int>(i),
                    kAcciones[i].construida);
  }
  lista_->FijarVista(Vista::kDetalles);
  menu_->FijarVista(Vista::kDetalles);
  menu_->FijarOrden(true);
  EstadoConeccion(true);
  lista_->setFocus();
}

// Runs an action that the operator asked for, alone; whatever it didn't handle itself is logged and shown.
void frmPpal::Operar(const char* procedimiento, const std::function<void()>& operacion) {
  if (operando_) return;
  const Bandera bandera(operando_);
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, Titulo(), Redaccion::kCompletada,
                        operacion);
}

void frmPpal::mnuAcciones_Click(int indice) {
  Operar("mnuAcciones_Click", [&] {
    if (indice != kAccionPuerto && !ReconectarSiHaceFalta()) return;
    switch (indice) {
      case 1:
        return MostrarEventos();
      case 2:
        return MostrarDatos();
      case 4:
        mod_.ruta_predefinida.clear();
        LeerConfiguracion(false, true, true, false);
        return;
      case 5:
        return Contrasena();
      case kAccionPuerto:
        return ConfigurarPuerto();
      default:
        return;
    }
  });
}

// True when the link may be used: it is up as far as the buttons tell, or the operator had it opened again.
bool frmPpal::ReconectarSiHaceFalta() {
  if (mod_.conexion.Conectado() || mod_.conexion.PorIP()) return true;
  if (!Preguntar("El puerto COM se ha desconectado.\n¿Desea reconectar el mismo?")) return false;
  IgnorandoErrores([&] { mod_.conexion.ConectarSegunAjustes(); });
  EstadoConeccion(true);
  return true;
}

void frmPpal::mnuAccAvanzadas_Click(int indice) {
  Operar("mnuAccAvanzadas_Click ", [&] {
    frmLogin entrada(mod_, ClaveActual(mod_), this);
    entrada.exec();
    if (!entrada.LoginSucceeded) {
      Informar("Para acceder a la funcionalidad solicitada debe conocer la clave de acceso");
      return;
    }
    if (indice == 5) ColaDeTransmicion();
    if (indice == 6) ExportarConfiguracion();
  });
}

void frmPpal::BotonConected() {
  if (operando_) return menu_->FijarConexion(mod_.conexion.Conectado());  // the click alone has pressed the button
  Operar("tbToolBar_ButtonClick", [&] {
    const std::optional<Error> falla = FallaDe([&] { mod_.conexion.ConectarSegunAjustes(); });
    if (!falla) return;
    mod_.operador.Mostrar(MensajeDePuerto(*falla, Titulo()));
    mod_.conexion.Desconectar();
  });
}

void frmPpal::BotonDisconected() {
  if (operando_) return menu_->FijarConexion(mod_.conexion.Conectado());  // the click alone has pressed the button
  Operar("tbToolBar_ButtonClick", [&] { mod_.conexion.Desconectar(); });
}

void frmPpal::EstadoConeccion(bool Conected) {
  mod_.conexion.MarcarConectado(Conected);
}

void frmPpal::InfoPanel() {
  barra_estado_->Mostrar(utr::InfoPanel(mod_));
}

// Told by the link at each change, so that buttons and panels never show a former one.
void frmPpal::MostrarEnlace() {
  menu_->FijarConexion(mod_.conexion.Conectado());
  menu_->MostrarConexion(HayPuertoSerie(mod_.propiedades));
  IgnorandoErrores([&] { InfoPanel(); });
}

bool frmPpal::LeerConfiguracion(bool DesdeUTROnly, [[maybe_unused]] bool MostrarConfig,
                                [[maybe_unused]] bool SoloMostrarLaCFG, bool ShowUCG) {
  std::unique_ptr<frmPresentacion> dialogo;
  const auto leer = [&] {
    dialogo = std::make_unique<frmPresentacion>(mod_, Encima());
    dialogo->FijarFuente(DesdeUTROnly);
    dialogo->bShowUCG = ShowUCG;
    dialogo->ActivarDesactivarControles();
    dialogo->exec();
    dialogo->Acepto ? AceptarLectura(*dialogo) : ReabrirEnlace();
  };
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerConfiguracion", Titulo(),
                               Redaccion::kCompletada, [&] { AlFallar(leer, [&] { dialogo.reset(); }); });
}

void frmPpal::AceptarLectura(frmPresentacion& dialogo) {
  mod_.comunicador.PorIP(mod_.conexion.PorIP());
  if (mod_.conexion.PorIP()) {
    mod_.comunicador.DireccionIP(dialogo.Direccion());
    mod_.comunicador.PuertoIP(dialogo.Puerto());
  }
  mod_.conexion.Avisar();
  dialogo.MostrarLectura();
  {
    const PunteroDeEspera espera(mod_.operador);
    lectura_.Preparar(dialogo.Fuente());
  }
  dialogo.hide();
  if (isVisible()) activateWindow();  // a dialog that was seen for a blink may leave the keyboard to nobody
  CompararHoras(mod_);
  if (const auto titulo = TituloTrasLectura(mod_.propiedades)) setWindowTitle(Q(*titulo));
}

// After a cancel: the dialog may have closed or moved the link, so it is opened again as the settings say.
void frmPpal::ReabrirEnlace() {
  mod_.conexion.ConectarSegunAjustes();
}

bool frmPpal::LeerConfiguracionDirectaUTR() {
  std::unique_ptr<frmPresentacion> dialogo;
  const auto leer = [&] {
    dialogo = std::make_unique<frmPresentacion>(mod_, Encima());
    dialogo->MostrarLectura();
    const PunteroDeEspera espera(mod_.operador);
    lectura_.Preparar(std::string(kFuenteUTR));
    dialogo.reset();
  };
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerConfiguracionDirectaUTR", Titulo(),
                               Redaccion::kCompletada, [&] { AlFallar(leer, [&] { dialogo.reset(); }); });
}

void frmPpal::ConfigurarPuerto() {
  const auto configurar = [&] {
    frmPuerto dialogo(mod_, this);
    dialogo.exec();
    std::string falla;
    if (dialogo.Configuro) falla = AbrirPuerto(mod_, dialogo.PSettings(), dialogo.PPuerto());
    mod_.comunicador.ModoConexion(true);
    mod_.conexion.Avisar();
    if (!falla.empty()) throw Error(error::kPuertoEnUso, "MsCOmm", falla);
  };
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "ConfigurarPuerto", Titulo(), Redaccion::kCompletada,
                        [&] { AlFallar(configurar, [&] { EstadoConeccion(false); }); });
}

void frmPpal::Contrasena() {
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "Contrasena", Titulo(), Redaccion::kCompletada, [&] {
    frmConfirmPass dialogo(mod_, ClaveActual(mod_), this);
    dialogo.exec();
    if (dialogo.Aceptar) GrabarClave(dialogo.ClaveNueva());
  });
}

// A password that couldn't be saved isn't in force either.
void frmPpal::GrabarClave(const std::string& nueva) {
  const Propiedad defecto{std::string(kClaveDefecto)};
  const std::string anterior = ClaveActual(mod_);
  mod_.propiedades.Escribir(clave::kClave, Propiedad{nueva}, defecto);
  AlFallar([&] { mod_.propiedades.GrabarArchivoPropiedades(); },
           [&] { mod_.propiedades.Escribir(clave::kClave, Propiedad{anterior}, defecto); });
}

void frmPpal::MostrarEventos() {
  MostrarVista("MostrarEventos", [this](const TablaPtr& rec_config) {
    return std::make_unique<frmEventos>(mod_, rec_config->Clone(), this);
  });
}

void frmPpal::MostrarDatos() {
  MostrarVista("MostrarDatos", [this](const TablaPtr& rec_config) {
    return std::make_unique<frmDatos>(mod_, rec_config->Clone(), this);
  });
}

void frmPpal::ColaDeTransmicion() {
  MostrarVista("ColaDeTransmicion", [this](const TablaPtr& rec_config) {
    return std::make_unique<frmColaTransmicion>(mod_, CopiarRecordset(*rec_config->Clone(), true), this);
  });
}

void frmPpal::MostrarVista(const char* procedimiento, const CrearVista& crear) {
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, Titulo(), Redaccion::kCompletarse, [&] {
    if (!lectura_.LeidaDeLaUTR()) return OfrecerLectura();
    std::unique_ptr<QDialog> vista;
    {
      const PunteroDeEspera espera(mod_.operador);
      vista = crear(lectura_.RecConfig());
    }
    vista->exec();
  });
}

void frmPpal::OfrecerLectura() {
  if (!Preguntar("No se ha leido la configuración de la RTU\n¿Desea leerla ahora?")) return;
  const PunteroDeEspera espera(mod_.operador);
  lectura_.Preparar(std::string(kFuenteUTR));
}

void frmPpal::ExportarConfiguracion() {
  RegistrandoYRelanzando(mod_.registro, kModulo, "ExportarConfiguracion", [&] {
    if (!lectura_.LeidaDeLaUTR() && !LeerParaExportar()) return;
    PedidoArchivo pedido;
    pedido.titulo = "Guardar configuración...";
    pedido.filtro = "Configuración UTR (*.ucg)|*.ucg";
    pedido.carpeta = mod_.carpeta;
    const auto ruta = mod_.operador.ElegirGuardar(pedido);
    if (!ruta) return;
    lectura_.Guardar(*ruta);
    Informar(
        "La configuración de la estación remota ha sido guardada satisfacoriamente\n"
        "Tenga en cuenta que la misma solamente debería ser utilizada\n"
        "para poner en marcha nuevamente esta misma estación remota");
  });
}

// True when the unit's configuration is at hand now and is to be exported. A read also ends well after a cancel, so the
// table itself is asked.
bool frmPpal::LeerParaExportar() {
  if (!Preguntar("Debe leer la configuración desde la UTR previamente\n¿Desea leer la configuración ahora?"))
    return false;
  if (!LeerConfiguracion(true, false, false, false) || !lectura_.LeidaDeLaUTR()) return false;
  return Preguntar("Se ha leido la configuración desde la UTR\n¿Desea exportarla ahora?");
}

void frmPpal::LanzarMandadero() {
  const QString programa = Q((mod_.carpeta / "Mandadero.exe").string());
  if (QProcess::startDetached(programa, {})) return;
  mod_.operador.Mostrar(
      {"La operación solicitada no puede ser completada", Titulo(), Icono::kCritico, Botones::kAceptar});
}

bool frmPpal::Preguntar(const std::string& texto) {
  return mod_.operador.Mostrar({texto, Titulo(), Icono::kPregunta, Botones::kSiNo}) == Respuesta::kSi;
}

void frmPpal::Informar(const std::string& texto) {
  mod_.operador.Mostrar({texto, Titulo(), Icono::kInformacion, Botones::kAceptar});
}

// The parent of a dialog: none while this window isn't seen yet, so that the dialog takes the middle of the screen.
QWidget* frmPpal::Encima() {
  return isVisible() ? this : nullptr;
}

std::string frmPpal::Titulo() const {
  return U(windowTitle());
}

void frmPpal::closeEvent(QCloseEvent* evento) {
  if (operando_) {
    evento->ignore();
    return;
  }
  operando_ = true;  // nothing is entered any more
  Descargar();
  evento->accept();
  QCoreApplication::quit();
}

void frmPpal::Descargar() {
  IgnorandoErrores([&] { lectura_.Liberar(); });
  IgnorandoErrores([&] { mod_.propiedades.GrabarArchivoPropiedades(); });
  IgnorandoErrores([&] { mod_.comunicador.Desconectar(); });
}

}  // namespace utr
