#include "configuration/windows/frmParametrizacion.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <utility>

#include "base/Error.h"
#include "base/Numeros.h"
#include "configuration/AnotacionEscritura.h"
#include "configuration/CambiosConfiguracion.h"
#include "configuration/ListaCanales.h"
#include "configuration/Pilas.h"
#include "configuration/windows/PanelCambios.h"
#include "configuration/windows/frmParamCfg.h"
#include "session/windows/FlujoLectura.h"
#include "session/windows/frmLogin.h"
#include "widgets/Campos.h"
#include "widgets/Iconos.h"
#include "widgets/PanelAviso.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr const char* kModulo = "frmParametrizacion";
constexpr QSize kTamano(960, 640);

// Captions and questions of the two modes.
struct PalabrasModo {
  const char* titulo;
  const char* pregunta;
  const char* escribe;  // what Aceptar does, under the name of the channels on show
  ModoEscritura modo;
};
constexpr PalabrasModo kConfiguracion = {
    "Configuración de los canales",
    "En esta acción se va a escribir la configuración y reiniciar la UTR\n¿Desea continuar?",
    "Aceptar los escribe todos en la UTR y la reinicia.", ModoEscritura::kConfiguracion};
constexpr PalabrasModo kParametrizacion = {
    "Parametrizaciones de los canales", "En esta acción se va a escribir la parametrización\n¿Desea continuar?",
    "Aceptar escribe su parametrización en la UTR.", ModoEscritura::kParametrizacion};
constexpr const char* kSoloMirar = "Sólo para mirar: Aceptar no escribe nada en la UTR.";

const PalabrasModo& PalabrasDe(bool configuracion) {
  return configuracion ? kConfiguracion : kParametrizacion;
}

DescripcionLista Descripcion() {
  return {.titulo = kConfiguracion.titulo,
          .palabras = {.modulo = kModulo,
                       .titulo_ventana = kConfiguracion.titulo,
                       .procedimiento_imprimir = "mnuParamImprimir_Click"}};
}

// The wait panel of the window, up while there is something to say.
class AvisoDeEscritura : public SinProgreso {
 public:
  AvisoDeEscritura(PanelAviso& panel, const Atender& atender) : panel_(panel), atender_(atender) {}

  void Texto(std::string_view texto) override {
    panel_.Ver(!texto.empty());
    if (!texto.empty() && atender_) atender_();  // it is seen before the driver blocks
  }

 private:
  PanelAviso& panel_;
  const Atender& atender_;
};

}  // namespace

frmParametrizacion::frmParametrizacion(ModRTU& mod, LecturaConfiguracion& lectura, QWidget* parent)
    : VentanaLista(mod.Listas(), mod.archivo_ayuda, Descripcion(), ColumnasDeCanales(), parent),
      mod_(mod),
      lectura_(lectura),
      lblOrigen_(new QLabel),
      lblPilas_(Linea("lblPilas")),
      cambios_(new PanelCambios(mod.Listas(), kModulo)) {
  lblOrigen_->setObjectName("lblOrigen");
  lblOrigen_->setTextFormat(Qt::PlainText);
  lblOrigen_->setWordWrap(true);
  Lista().Marcar(
      [this](std::size_t fila) {
        const auto canal = CanalDe(fila);
        const bool marcada = canal && cambiados_.contains(*canal);
        return marcada ? QStringLiteral("Difiere de lo leído de la UTR") : QString();
      },
      IconoDe("modificado"));
  QPushButton* aceptar = Boton("cmd(0)", "Aceptar");
  QPushButton* cancelar = Boton("cmd(1)", "Cancelar");
  connect(aceptar, &QPushButton::clicked, this,
          [this] { Intentar("cmd_Click( 0", Redaccion::kEntreCorchetes, &frmParametrizacion::Aceptar); });
  ArmarComandos();
  Armar(lblOrigen_, {.aceptar = aceptar, .cancelar = cancelar, .por_defecto = false}, kTamano, cambios_);
}

// Hidden while all of it is there: hiding lays the list out once more, which asks for the marks.
frmParametrizacion::~frmParametrizacion() {
  setVisible(false);
}

// --- Commands --------------------------------------------------------------------------------------------------------

void frmParametrizacion::ArmarComandos() {
  ComandoVentana configurar = ComandoConfigurarImpresora("mnuConfigPrint");
  configurar.texto = "&Configurar impresora ...";
  ComandoVentana texto = ComandoGuardar(nullptr);
  texto.clave = "Guardar";
  texto.tecla = {};
  Comandos({{.nombre = "mnuParam", .texto = "&Parametrizaciones"}},
           {{.nombre = "mnuParamAbrir",
             .texto = "&Abrir",
             .clave = "Open",
             .icono = "abrir",
             .ayuda = "Abrir un archivo de configuración",
             .tecla = QKeySequence::Open,
             .hacer = [this] { Abrir(); }},
            {.nombre = "mnuParamGuardarComo",
             .texto = "&Guardar como...",
             .tecla = QKeySequence::Save,
             .si = [this] { return HayResultado(); },
             .hacer =
                 [this] {
                   Intentar("mnuParamGuardarComo_Click", Redaccion::kCompletarse,
                            &frmParametrizacion::GuardarConfiguracion);
                 }},
            texto,
            ComandoGuardarCsv(),
            configurar,
            ComandoImprimir("mnuParamImprimir"),
            ComandoVistaPrevia(),
            ComandoSalir("mnuParamSalir"),
            OrdenarPorLaFlecha(true),
            OrdenarPorLaFlecha(false),
            ComandoQueEsEsto()},
           {"Open", "Print", "Guardar", nullptr, "Sort Ascending", "Sort Descending", nullptr, "Help What's This"});
}

ComandoVentana frmParametrizacion::OrdenarPorLaFlecha(bool ascendente) {
  ComandoVentana comando = ComandoOrdenar(ascendente);
  comando.hacer = [this, ascendente] { Lista().Ordenar(Lista().ColumnaOrdenada().value_or(0), ascendente); };
  return comando;
}

std::string frmParametrizacion::Titulo() const {
  return U(windowTitle());
}

bool frmParametrizacion::Intentar(const char* procedimiento, Redaccion redaccion, void (frmParametrizacion::*hacer)()) {
  if (Ocupacion::Ocupada(*this)) return false;
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, procedimiento, Titulo(), redaccion,
                               [&] { (this->*hacer)(); });
}

// --- What is on show -------------------------------------------------------------------------------------------------

// In the mode for parametrizations a file is only shown: what it holds isn't that of the station's enabled channels.
bool frmParametrizacion::SoloMirar() const {
  return SoloLectura || (!ModoConfiguracion && !archivo_.empty());
}

FilasDeCanales frmParametrizacion::Cuales() const {
  return ModoConfiguracion && !SoloLectura ? FilasDeCanales::kTodas : FilasDeCanales::kHabilitadas;
}

void frmParametrizacion::Llenar(const Tabla& tabla) {
  if (!SoloLectura) ExigirColumnasDeCanal(tabla);
  ColeccionCFG = ColeccionDe(tabla, Cuales());
  inicial_ = ColeccionDe(tabla, Cuales());
  archivo_.clear();
  editados_.clear();
  RecargarListaParam(ColeccionCFG);
  if (Lista().Lista().Cantidad() > 0) Lista().Elegir(0);
}

void frmParametrizacion::RecargarListaParam(const ConfigColl& coleccion) {
  const std::optional<std::int16_t> elegido = CanalElegido();
  const QString filtro = Lista().CampoFiltro()->text();
  MostrarCambios();
  filas_ = TablaDeLista(*coleccion.GetRecMembers(mod_.registro), mod_.catalogo);
  Lista().Mostrar(filas_);
  Lista().CampoFiltro()->setText(filtro);
  if (elegido) ElegirCanal(*elegido);
  Decir(lblPilas_, Q(LineaDePilas(coleccion)));
  MostrarModo();
}

void frmParametrizacion::MostrarModo() {
  Titular(QString::fromUtf8(PalabrasDe(ModoConfiguracion).titulo));
  cambios_->Titular(Titulo());
  cambios_->setVisible(!SoloMirar());
  lblOrigen_->setText(TextoOrigen());
}

void frmParametrizacion::MostrarCambios() {
  const std::vector<CambioConfiguracion> cambios =
      SoloMirar() ? std::vector<CambioConfiguracion>{} : CambiosDe(inicial_, ColeccionCFG, mod_.catalogo);
  cambiados_.clear();
  for (const CambioConfiguracion& cambio : cambios) cambiados_.insert(cambio.canal);
  cambios_->MostrarCambios(cambios);
}

QString frmParametrizacion::TextoOrigen() const {
  const char* que = SoloMirar() ? kSoloMirar : PalabrasDe(ModoConfiguracion).escribe;
  QString texto = Q(Cuales() == FilasDeCanales::kTodas ? "Canales " : "Canales habilitados ") + Q(DeQuienSon()) +
                  Q(DeAntes() ? "; para grabar hay que volver a leerla. " : ". ") + QString::fromUtf8(que);
  if (Grabado) texto += QStringLiteral(" La última grabación no terminó: la UTR puede tener ya una parte.");
  return texto;
}

std::string frmParametrizacion::DeQuienSon() const {
  if (!archivo_.empty()) return "del archivo " + archivo_.filename().string();
  if (lectura_.Fuente() != kFuenteUTR)
    return "del archivo " + std::filesystem::path(lectura_.Fuente()).filename().string();
  const std::int32_t identificador = lectura_.IdentificadorLeido();
  const std::string utr = identificador == 0 ? "de la UTR" : "de la UTR " + std::to_string(identificador);
  return utr + (DeAntes() ? ", como se leyeron antes" : ", como se leyeron de ella");
}

// Read of a unit, which isn't the one that the settings point at any more.
bool frmParametrizacion::DeAntes() const {
  return archivo_.empty() && lectura_.Fuente() == kFuenteUTR && !lectura_.EsDelEquipoActual();
}

std::optional<std::int16_t> frmParametrizacion::CanalDe(std::size_t fila) const {
  if (!filas_) return std::nullopt;
  return NumeroDeFila(TextoDe(filas_->Filas().Value(fila, 0)));
}

std::optional<std::int16_t> frmParametrizacion::CanalElegido() const {
  const std::optional<std::size_t> posicion = Lista().FilaActual();
  return posicion ? CanalDe(Lista().Lista().Fila(*posicion)) : std::nullopt;
}

void frmParametrizacion::ElegirCanal(std::int16_t canal) {
  const ListaTabla& lista = Lista().Lista();
  for (std::size_t posicion = 0; posicion < lista.Cantidad(); ++posicion) {
    if (CanalDe(lista.Fila(posicion)) == canal) return Lista().Elegir(posicion);
  }
}

EncabezadoLista frmParametrizacion::Encabezado(bool) const {
  const bool de_la_unidad = archivo_.empty() && lectura_.Fuente() == kFuenteUTR && !DeAntes();
  return {"Canales de la UTR", {}, {}, de_la_unidad ? std::string() : "Canales " + DeQuienSon()};
}

// --- Editing ---------------------------------------------------------------------------------------------------------

void frmParametrizacion::Activar() {
  Intentar("Editar", Redaccion::kSeleccionada, &frmParametrizacion::Editar);
}

void frmParametrizacion::Editar() {
  const std::optional<std::int16_t> canal = CanalElegido();
  if (!canal || !ClaveDada()) return;
  const ConfigPtr config = ColeccionCFG.Item(*canal);
  if (!config) Lanzar(error::kLlamada, kModulo);
  frmParamCfg dialogo(mod_, this);
  dialogo.SoloLectura = SoloMirar();
  dialogo.SoloParametros = !ModoConfiguracion;
  dialogo.FijarColeccion(&ColeccionCFG);
  dialogo.FijarConfiguracion(config);
  dialogo.exec();
  if (!dialogo.Acepto) return;
  modificar_.Agregar(std::to_string(*canal));
  editados_.insert(*canal);
  RecargarListaParam(ColeccionCFG);
}

// The password is asked until it is given once; it then holds as long as the window lives.
bool frmParametrizacion::ClaveDada() {
  if (!clave_dada_) clave_dada_ = PedirClave(mod_, this);
  if (!clave_dada_)
    Informar(mod_.operador, Titulo(), "Para modificar los parámetros del sensor debe conocer la clave de acceso");
  return clave_dada_;
}

// True when no accepted edit would be lost, or the operator lets them go.
bool frmParametrizacion::PuedenPerderse(const char* accion) {
  if (editados_.empty()) return true;
  const std::string cuantos = editados_.size() == 1 ? "un canal" : std::to_string(editados_.size()) + " canales";
  return Preguntar(mod_.operador, Titulo(),
                   std::string(accion) + " se pierden los cambios aceptados en " + cuantos +
                       ", que no se grabaron en la UTR\n¿Desea continuar?",
                   Respuesta::kNo);
}

// --- Files -----------------------------------------------------------------------------------------------------------

void frmParametrizacion::Abrir() {
  if (!PuedenPerderse("Al abrir un archivo")) return;
  PedidoArchivo pedido;
  pedido.titulo = "Abrir configuración...";
  pedido.filtro = "Configuración exportada (*.ucg)|*.ucg|Archivos de configuración (*.icf)|*.icf";
  std::error_code nada;
  if (!std::exchange(carpeta_propuesta_, true) && std::filesystem::is_directory(lectura_.CarpetaDeRespaldos(), nada))
    pedido.carpeta = lectura_.CarpetaDeRespaldos();
  const auto ruta = mod_.operador.ElegirAbrir(pedido);
  if (!ruta) return;
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "mnuParamAbrir_Click", Titulo(), Redaccion::kCompletarse,
                        [&] { AbrirArchivo(*ruta); });
}

// The list and all that belongs to it change only when the file was read whole.
void frmParametrizacion::AbrirArchivo(const std::filesystem::path& ruta) {
  const PunteroDeEspera espera(mod_.operador);
  const TablaPtr tabla = lectura_.LeerArchivo(ruta.string());
  if (ModoConfiguracion && !SoloLectura) ExigirColumnasDeCanal(*tabla);
  ConfigColl coleccion = ColeccionDe(*tabla, Cuales());
  if (coleccion.Count() == 0)
    throw Error(error::kArchivo, kModulo, "El archivo " + ruta.string() + " no tiene canales para mostrar");
  ColeccionCFG = std::move(coleccion);
  archivo_ = ruta;
  editados_.clear();
  Lista().CampoFiltro()->clear();
  RecargarListaParam(ColeccionCFG);
}

void frmParametrizacion::GuardarConfiguracion() {
  utr::GuardarConfiguracion(mod_, Titulo(), [this](const std::filesystem::path& ruta) {
    ColeccionCFG.GetRecMembers(mod_.registro)->GuardarSobre(ruta);
  });
}

// --- Writing ---------------------------------------------------------------------------------------------------------

void frmParametrizacion::Aceptar() {
  if (SoloMirar()) return reject();
  if (Confirmar() && Respaldar()) Grabar();
}

bool frmParametrizacion::Confirmar() {
  return Preguntar(mod_.operador, Titulo(), PalabrasDe(ModoConfiguracion).pregunta, Respuesta::kNo);
}

// Keeps the state that is about to be overwritten. True: it is kept, or the operator goes on without.
bool frmParametrizacion::Respaldar() {
  {
    const PunteroDeEspera espera(mod_.operador);
    respaldo_ = lectura_.RespaldarParaEscribir();
  }
  return respaldo_.Guardado() || Preguntar(mod_.operador, Titulo(),
                                           "No se pudo guardar el respaldo de la configuración leída de la UTR\n[ " +
                                               respaldo_.falla + " ]\n¿Desea grabar de todos modos, sin respaldo?",
                                           Respuesta::kNo);
}

void frmParametrizacion::Grabar() {
  const ModoEscritura modo = PalabrasDe(ModoConfiguracion).modo;
  std::vector<CambioConfiguracion> cambios = CambiosDe(inicial_, ColeccionCFG, mod_.catalogo);
  Diario::Tarea tarea(mod_.diario);
  {
    OpcionesOcupacion opciones = AlTrabajar();
    AvisoDeEscritura aviso(*std::exchange(opciones.panel, nullptr), mod_.atender);
    const Ocupacion ocupacion(*this, opciones);
    resultado_ = Escribir({modo, ColeccionCFG, modificar_}, mod_.comunicador, mod_.registro, aviso);
  }
  AnotarEscritura(tarea, mod_.reloj.Ahora(), {modo, std::move(cambios), Grabado, resultado_});
  Grabado = Grabado || resultado_.Grabado;
  if (!resultado_.mensaje.empty())
    mod_.operador.Mostrar({resultado_.mensaje, Titulo(), Icono::kCritico, Botones::kAceptar});
  if (resultado_.Aceptado) {
    Aceptado = true;
    return accept();
  }
  lblOrigen_->setText(TextoOrigen());
  if (resultado_.error) throw *resultado_.error;
}

// --- Leaving ---------------------------------------------------------------------------------------------------------

// Esc and the close button ask; Cancelar, which says what it does, doesn't.
void frmParametrizacion::closeEvent(QCloseEvent* evento) {
  if (!PuedenPerderse("Al cerrar")) return evento->ignore();
  VentanaLista::closeEvent(evento);
}

void frmParametrizacion::keyPressEvent(QKeyEvent* evento) {
  if (!evento->matches(QKeySequence::Cancel)) return VentanaLista::keyPressEvent(evento);
  close();
}

}  // namespace utr
