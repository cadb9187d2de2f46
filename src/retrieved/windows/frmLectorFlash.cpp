#include "retrieved/windows/frmLectorFlash.h"

#include <fmt/format.h>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "base/Texto.h"
#include "retrieved/windows/PanelLectura.h"
#include "retrieved/windows/PanelSeleccion.h"
#include "retrieved/windows/VistaMapa.h"
#include "widgets/Ayuda.h"
#include "widgets/Campos.h"
#include "widgets/CarpetaDelOperador.h"
#include "widgets/DisposicionEnFilas.h"
#include "widgets/EtiquetaRuta.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/Ocupacion.h"
#include "widgets/SinDormir.h"
#include "widgets/Tamanos.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmLectorFlash";
constexpr const char* kFiltro = "Archivos de recuperación (*.bkp)|*.bkp";
constexpr std::size_t kRenglonesEnteros = 20;
constexpr int kEntreColumnas = 20;

constexpr const char* kSinConfiguracion[] = {"No se pudo completar la lectura de la configuración ",
                                             "Exporte manualmente la configuración del equipo"};

std::string BotonReintentar(std::size_t paginas) {
  return paginas == 1 ? "Reintentar la página que falló"
                      : fmt::format("Reintentar las {} páginas que fallaron", paginas);
}

std::string Cuantas(std::uint64_t numero, const char* una, const char* varias) {
  return fmt::format("{} {}", numero, numero == 1 ? una : varias);
}

// One line each, every one ended.
std::string Lineas(auto desde, auto hasta) {
  std::string texto;
  for (; desde != hasta; ++desde) texto += *desde + "\n";
  return texto;
}

}  // namespace

frmLectorFlash::frmLectorFlash(ModRTU& mod, const Tabla* configuracion, QWidget* parent)
    : QDialog(parent),
      mod_(mod),
      vista_(new VistaMapa(mapa_)),
      seleccion_(new PanelSeleccion),
      avance_(new PanelLectura(mod.reloj, *vista_)),
      lblPathFile_(new EtiquetaRuta("lblPathFile")),
      lblContinua_(new QLabel),
      cmdFile_(Boton("cmdFile", "&Guardar en...")),
      cmdContinuar_(Boton("cmdContinuar", "Continuar una &lectura...")),
      traer_(Boton("cmd(0)", "&Traer")),
      cerrar_(Boton("cmd(1)", "&Cerrar")),
      cmdAyuda_(Boton("cmdAyuda", "A&yuda")) {
  setObjectName("frmLectorFlash");
  setWindowTitle("Recuperación de información");
  mapa_.NombrarCanales(configuracion);
  vista_->Renombrar();
  Armar();
  connect(seleccion_, &PanelSeleccion::Cambiada, this, &frmLectorFlash::MarcarMapa);
  connect(cmdFile_, &QPushButton::clicked, this, &frmLectorFlash::ElegirArchivo);
  connect(cmdContinuar_, &QPushButton::clicked, this, &frmLectorFlash::Continuar);
  connect(traer_, &QPushButton::clicked, this, &frmLectorFlash::Traer);
  connect(cerrar_, &QPushButton::clicked, this, &frmLectorFlash::reject);
  ServirAyuda(*cmdAyuda_, mod_.archivo_ayuda);
  connect(avance_->Boton(), &QPushButton::clicked, this, &frmLectorFlash::PedirCancelacion);
  ruta_propuesta_ = NombreArchivoFlash(CarpetaDelOperador(mod_.carpeta), mod_.reloj.Ahora());
  DejarDeContinuar();
  AjustarTamano(*this);
}

void frmLectorFlash::Armar() {
  lblContinua_->setObjectName("lblContinua");
  auto* lugares = new QHBoxLayout;
  lugares->addWidget(new QLabel("Guardar en:"));
  lugares->addWidget(lblPathFile_, 1);
  lugares->addWidget(cmdFile_);
  auto* columnas = new DisposicionEnFilas(kEntreColumnas);
  columnas->Agregar(seleccion_);
  // Where the options are higher than the screen, the map beside them is still seen whole.
  vista_->setMaximumHeight(SitioEnPantalla(*this).height() - 2 * kMargenVentana - kSobreElPie -
                           traer_->sizeHint().height());
  auto* mapa = new QVBoxLayout;
  mapa->addWidget(vista_, 1);
  mapa->addStretch(0);
  columnas->AgregarFlexible(mapa);
  const QList<QWidget*> elecciones = seleccion_->Controles();
  auto* a_la_izquierda = new QHBoxLayout;
  a_la_izquierda->addWidget(cmdContinuar_);
  auto* todo = new QVBoxLayout(this);
  todo->setContentsMargins(kMargenVentana, kMargenVentana, kMargenVentana, kMargenVentana);
  todo->addLayout(columnas, 1);
  auto* opciones = new DisposicionEnFilas(kEntreColumnas);
  for (QWidget* opcion : elecciones.last(2)) opciones->Agregar(opcion);
  todo->addLayout(opciones);
  todo->addLayout(lugares);
  // What is continued is told where the read then tells how it goes.
  auto* segun = new QGridLayout;
  segun->addWidget(avance_, 0, 0);
  segun->addWidget(lblContinua_, 0, 0, Qt::AlignTop);
  todo->addLayout(segun);
  todo->addSpacing(kSobreElPie);
  todo->addLayout(FilaDePie({.aceptar = traer_, .cancelar = cerrar_, .ayuda = cmdAyuda_}, a_la_izquierda));
  QList<QWidget*> orden = elecciones;
  orden << cmdFile_ << vista_->Controles() << avance_->Boton() << traer_ << cerrar_ << cmdAyuda_ << cmdContinuar_;
  for (qsizetype i = 1; i < orden.size(); ++i) setTabOrder(orden[i - 1], orden[i]);
}

std::string frmLectorFlash::Titulo() const {
  return U(windowTitle());
}

// --- Which file ------------------------------------------------------------------------------------------------------

void frmLectorFlash::ElegirArchivo() {
  const auto elegida = mod_.operador.ElegirGuardar({.titulo = "Guardar como...",
                                                    .filtro = kFiltro,
                                                    .carpeta = ruta_.parent_path(),
                                                    .nombre = ruta_.filename().string()});
  if (!elegida) return;
  ruta_ = ruta_propuesta_ = *elegida;
  lblPathFile_->Poner(Q(ruta_.string()));
}

void frmLectorFlash::Continuar() {
  if (anterior_) return DejarDeContinuar();
  const auto elegida = mod_.operador.ElegirAbrir(
      {.titulo = "Continuar una lectura...", .filtro = kFiltro, .carpeta = ruta_.parent_path(), .nombre = {}});
  if (!elegida) return;
  RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "cmdContinuar_Click", Titulo(), Redaccion::kCompletada,
                        [&] { TomarAnterior(*elegida); });
}

void frmLectorFlash::TomarAnterior(const std::filesystem::path& ruta) {
  const Ocupacion ocupacion(*this, {.operador = &mod_.operador});
  LecturaAnterior anterior(ruta);
  std::vector<std::filesystem::path> restos = ContinuacionesDe(ruta, anterior);
  if (!restos.empty() &&
      !Preguntar(mod_.operador, Titulo(),
                 "Una continuación de esta lectura quedó sin terminar\n¿Desea agregar las páginas que alcanzó a leer?"))
    restos.clear();
  for (const std::filesystem::path& resto : restos) anterior.Agregar(resto);
  anterior_ = std::move(anterior);
  continuaciones_ = std::move(restos);
  ruta_ = ruta;
  MostrarContinuacion();
}

void frmLectorFlash::DejarDeContinuar() {
  anterior_.reset();
  continuaciones_.clear();
  ruta_ = ruta_propuesta_;
  MostrarContinuacion();
}

void frmLectorFlash::MostrarContinuacion() {
  lblPathFile_->Poner(Q(ruta_.string()));
  cmdFile_->setEnabled(!anterior_);
  cmdContinuar_->setText(anterior_ ? QStringLiteral("No continuar la &lectura")
                                   : QStringLiteral("Continuar una &lectura..."));
  std::string texto;
  if (anterior_) {
    texto = "Continúa esa lectura, que tiene " + Cuantas(anterior_->Paginas(), "página", "páginas");
    if (anterior_->Danadas() > 0) texto += " y " + Cuantas(anterior_->Danadas(), "renglón dañado", "renglones dañados");
    texto += ". Marque también lo que le falta leer.";
  }
  lblContinua_->setText(Q(texto));
  seleccion_->Fijar(anterior_ ? &*anterior_ : nullptr);
}

void frmLectorFlash::MarcarMapa() {
  MarcarPlan(mapa_, seleccion_->Seleccion(), anterior_ ? &*anterior_ : nullptr);
  vista_->Actualizar();
}

// --- Reading ---------------------------------------------------------------------------------------------------------

void frmLectorFlash::Traer() {
  if (Ocupacion::Ocupada(*this)) return;
  if (!seleccion_->Seleccion().Hay())
    return utr::Informar(mod_.operador, Titulo(), "Debe seleccionar al menos una de las opciones de lectura");
  const auto intentar = [this](const std::function<void()>& accion) {
    return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "cmd_Click", Titulo(), Redaccion::kCompletada,
                                 accion);
  };
  Fin fin;
  const bool leida = intentar([&] {
    ProbarEquipo();
    falta_configuracion_ = seleccion_->ConConfiguracion();
    fin = GuardarLecturaFlash({});
  });
  while (leida && Informar(fin)) {
    intentar([&] {
      ProbarEquipo();
      anterior_.emplace(ruta_);
      continuaciones_.clear();
      fin = GuardarLecturaFlash(fin.reintentables);
    });
  }
  if (empezo_) accept();
}

// The link, and whether a file that is continued is of this unit.
void frmLectorFlash::ProbarEquipo() {
  const Ocupacion ocupacion(*this, {.operador = &mod_.operador});
  ProbarEnlace(mod_.comunicador);
  if (anterior_) anterior_->ComprobarEquipo(mod_.comunicador, mod_.atender);
}

frmLectorFlash::Fin frmLectorFlash::GuardarLecturaFlash(const std::vector<LugarPagina>& reintentar) {
  const SeleccionFlash seleccion = seleccion_->Seleccion();
  QList<QWidget*> controles = seleccion_->Controles();
  controles << seleccion_ << cmdFile_ << cmdContinuar_ << traer_ << cerrar_ << cmdAyuda_;
  const Ocupacion ocupacion(*this, {.operador = &mod_.operador,
                                    .apagados = {controles.begin(), controles.end()},
                                    .siguen = {avance_->Boton(), vista_},
                                    .al_cancelar = [this] { PedirCancelacion(); },
                                    .al_cambiar = [this] { MostrarAvance(!avance_->isVisibleTo(this)); }});
  const SinDormir despierta(windowTitle());
  LecturaEnCurso lectura({.comunicador = mod_.comunicador,
                          .reloj = mod_.reloj,
                          .progreso = *avance_,
                          .mapa = mapa_,
                          .atender = mod_.atender,
                          .diario = &mod_.diario,
                          .seguir_sin_respuesta =
                              [this] {
                                return Preguntar(mod_.operador, Titulo(),
                                                 "El equipo dejó de responder\n¿Desea seguir intentando?");
                              }},
                         {.ruta = ruta_,
                          .opciones = {seleccion, anterior_ ? &*anterior_ : nullptr, reintentar},
                          .continuaciones = continuaciones_});
  empezo_ = true;
  const LectorFlash& lector = lectura.Lector();
  avance_->Seguir(lector, seleccion.PrimeraPista());
  lectura.Leer();
  vista_->Actualizar();
  Fin fin{lector.Renglones(), {}};
  if (!lector.Cancelada()) fin.reintentables = lector.Fallidas();
  if (!lector.Cancelada() && falta_configuracion_ && !ExportarConfiguracion()) {
    if (avance_->Cancelado()) fin.renglones.emplace_back(LectorFlash::kCancelada);
    fin.renglones.insert(fin.renglones.end(), std::begin(kSinConfiguracion), std::end(kSinConfiguracion));
  }
  return fin;
}

void frmLectorFlash::MostrarAvance(bool visto) {
  lblContinua_->setVisible(!visto);
  avance_->Ver(visto);
}

bool frmLectorFlash::ExportarConfiguracion() {
  avance_->ExportandoConfiguracion();
  if (mod_.atender) mod_.atender();
  falta_configuracion_ =
      !ExportarConfiguracionLeida(mod_.comunicador, mod_.registro, *avance_, RutaDeConfiguracion(ruta_));
  return !falta_configuracion_;
}

void frmLectorFlash::PedirCancelacion() {
  if (avance_->Cancelado()) return;
  const Respuesta respuesta = mod_.operador.Mostrar({"¿Desea cancelar la lectura desde el equipo?",
                                                     Titulo(),
                                                     Icono::kPregunta,
                                                     Botones::kAceptarCancelar,
                                                     {},
                                                     Respuesta::kCancelar});
  if (respuesta != Respuesta::kAceptar) return;
  avance_->Cancelar();
  cerrar_->setEnabled(true);
}

// Tells what went wrong, if anything; true: the operator wants the failed pages read again.
bool frmLectorFlash::Informar(const Fin& fin) {
  const std::vector<std::string>& todos = fin.renglones;
  if (todos.empty()) return false;
  const auto corte = todos.begin() + static_cast<std::ptrdiff_t>(std::min(todos.size(), kRenglonesEnteros));
  Mensaje mensaje{
      "Durante la obtención de la información se produjeron los siguientes errores\n" + Lineas(todos.begin(), corte),
      Titulo(), Icono::kInformacion, Botones::kAceptar};
  if (corte != todos.end()) {
    mensaje.texto += fmt::format("... y {} más", todos.end() - corte);
    mensaje.detalle = Lineas(corte, todos.end());
  }
  if (!fin.reintentables.empty()) {
    mensaje.botones = Botones::kAceptarOpcion;
    mensaje.opciones[0] = BotonReintentar(fin.reintentables.size());
  }
  return mod_.operador.Mostrar(mensaje) == Respuesta::kPrimera;
}

}  // namespace utr
