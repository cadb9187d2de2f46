#include "driver/simulated/driver/InteriorSimulado.h"

#include <sys/stat.h>

#include <algorithm>

#include "driver/TablasEntregadas.h"

namespace utr {

namespace {

constexpr const char* kEscenario = "UTRSimulada.toml";
constexpr const char* kEstado = "UTRSimulada.estado";
constexpr int kPaginasEntreMiradas = 64;         // a look at a file costs as much as several pages
constexpr std::int64_t kEntreGuardados = 60000;  // milliseconds
constexpr std::int64_t kMayorAtraso = 3600;      // seconds
constexpr double kPasoDeLlamada = 0.1;           // seconds between two looks at whether the call was abandoned
constexpr double kReposo = 0.5;                  // seconds in which a file that is being written goes on growing

}  // namespace

ComunicadorSimulado::Interior::Interior(std::filesystem::path donde, Reloj& un_reloj, Atender atiende)
    : carpeta(std::move(donde)),
      reloj(un_reloj),
      atender(std::move(atiende)),
      bitacora(carpeta),
      ruta_escenario_((carpeta / kEscenario).string()) {
  fecha = reloj.Ahora();
  ahora = Segundos(fecha);
  CargarUnidad();
}

ComunicadorSimulado::Interior::~Interior() {
  Guardar();
}

void ComunicadorSimulado::Interior::Comenzar() {
  fecha = reloj.Ahora();
  ahora = Segundos(fecha);
  paginas_seguidas_ = 0;
  RevisarEscenario();
  Unidad().Avanzar(ahora);
  GuardarSiToca();
}

// Orders save at once. What the unit recorded by itself is saved now and then, and so is another scenario, so that
// after a sudden end the next run doesn't record the same hours again in another world.
void ComunicadorSimulado::Interior::GuardarSiToca() {
  if (por_guardar_ || reloj.Milisegundos() - guardado_ >= kEntreGuardados) Guardar();
}

void ComunicadorSimulado::Interior::ComenzarPagina() {
  if (paginas_seguidas_ % kPaginasEntreMiradas == 0) Comenzar();
  ++paginas_seguidas_;
  const FechaHora antes = fecha;
  fecha = reloj.Ahora();
  if (fecha == antes) return;
  ahora = Segundos(fecha);
  Unidad().Avanzar(ahora);
}

// One call of the system for time, size and identity of the file, since it is made at every call of the driver.
ComunicadorSimulado::Interior::Firma ComunicadorSimulado::Interior::FirmaDe(const std::string& ruta) {
  struct stat archivo {};
  if (::stat(ruta.c_str(), &archivo) != 0) return {.leida = true};
  return {.leida = true,
          .hay = true,
          .segundos = archivo.st_mtim.tv_sec,
          .nanosegundos = archivo.st_mtim.tv_nsec,
          .largo = archivo.st_size,
          .nodo = static_cast<std::int64_t>(archivo.st_ino)};
}

void ComunicadorSimulado::Interior::RevisarEscenario() {
  const Firma firma = FirmaDe(ruta_escenario_);
  if (firma == firma_) return;
  firma_ = firma;
  try {
    std::string texto = simulada::LeerTextoEscenario(ruta_escenario_);
    simulada::Escenario nuevo = simulada::LeerEscenarioDeTexto(texto);
    if (EstaQuieto(nuevo)) Adoptar(std::move(nuevo), std::move(texto));
  } catch (...) {
    if (!firma.hay && estado.aplicado.empty()) return;  // a fresh station needs no file
    bitacora.Aviso(fecha,
                   "UTRSimulada.toml, " + ErrorActual().Descripcion() +
                       (estado.aplicado.empty() ? "; rige el escenario de fábrica" : "; sigue el escenario anterior"));
  }
}

// Half a file may look whole. Before it costs the unit its memories, or what was written to it, it is looked at again a
// moment later; the next call reads what was still being written.
bool ComunicadorSimulado::Interior::EstaQuieto(const simulada::Escenario& nuevo) {
  if (estado.aplicado.empty() || !(simulada::CambiaHistoria(estado.aplicado, nuevo.estado) ||
                                   simulada::PierdeClaves(estado.aplicado, nuevo.estado))) {
    return true;
  }
  const Firma leida = firma_;
  reloj.Esperar(kReposo, atender);
  if (FirmaDe(ruta_escenario_) == leida) return true;
  firma_ = Firma{};
  return false;
}

// Nobody knows when a change that was found now was made. It holds since the last call, so that a nailed value raises
// its alarm without a wait, but for an hour at most: a weekend with the program closed went by in the world that was.
void ComunicadorSimulado::Interior::Adoptar(simulada::Escenario nuevo, std::string texto) {
  const bool vivia = !estado.aplicado.empty();
  if (vivia && Unidad().registrado < Unidad().Reloj(ahora - kMayorAtraso)) Unidad().Avanzar(ahora - kMayorAtraso);
  escenario = std::move(nuevo);
  fallas.Poner(escenario.fallas);
  Unidad().Vivir(escenario.vida);
  simulada::AplicarEstado(Unidad(), estado.aplicado, escenario.estado);
  if (simulada::CambiaHistoria(estado.aplicado, escenario.estado)) Unidad().RehacerHistoria(ahora);
  if (texto == estado.escenario && estado.aplicado == escenario.estado) return;
  estado.aplicado = escenario.estado;
  estado.escenario = std::move(texto);
  por_guardar_ = true;
}

// The unit as the last run left it, or a fresh one. A fresh one has applied nothing, so it takes over every key.
void ComunicadorSimulado::Interior::CargarUnidad() {
  try {
    if (!simulada::CargarEstado(carpeta / kEstado, estado)) {
      bitacora.Aviso(fecha, "no hay UTRSimulada.estado; la estación simulada comienza de nuevo");
    }
  } catch (...) {
    estado = simulada::EstadoPersistido{};
    Apartar(ErrorActual().Descripcion());
  }
  RetomarEscenario();
  RevisarEscenario();
  // No scenario was ever understood: the station lives by what holds without one.
  if (estado.aplicado.empty()) Adoptar(simulada::Escenario{}, {});
  if (por_guardar_ && !Guardar() && aviso.empty()) {
    aviso = "La estación no se puede guardar: no se le puede grabar nada";
  }
}

// The station lives on by the scenario of the last run, which it has applied already, until the file says another one.
void ComunicadorSimulado::Interior::RetomarEscenario() {
  if (estado.aplicado.empty()) return;
  try {
    escenario = simulada::LeerEscenarioDeTexto(estado.escenario);
  } catch (const Error& falla) {
    bitacora.Aviso(fecha, "el escenario guardado ya no se entiende: " + falla.Descripcion());
  }
  escenario.estado = estado.aplicado;
  fallas.Poner(escenario.fallas);
  Unidad().Vivir(escenario.vida);
}

// A state file that can't be read isn't written over: it may be the only copy of somebody's rehearsal. The notice has
// the room of a panel of the status bar; the reason is for the log.
void ComunicadorSimulado::Interior::Apartar(const std::string& motivo) {
  try {
    const std::string nombre = simulada::ApartarEstado(carpeta / kEstado);
    aviso = "La estación comienza de nuevo; ver " + nombre;
    bitacora.Aviso(fecha, motivo + " y quedó aparte, como " + nombre + "; la estación simulada comienza de nuevo");
  } catch (...) {
    guardable_ = false;
    aviso = "La estación comienza de nuevo y no se le puede grabar nada";
    bitacora.Aviso(fecha, motivo + " ni apartar; la estación simulada comienza de nuevo y no se guarda");
  }
}

bool ComunicadorSimulado::Interior::Guardar() noexcept {
  por_guardar_ = false;
  guardado_ = reloj.Milisegundos();
  if (!guardable_) return false;
  try {
    simulada::GuardarEstado(carpeta / kEstado, estado);
    return true;
  } catch (...) {
    bitacora.Aviso(fecha, "no se pudo guardar el estado de la estación simulada");
    return false;
  }
}

// What isn't kept wasn't done: the operator would find it undone at the next start.
bool ComunicadorSimulado::Interior::Cumplir(const std::function<bool()>& orden) {
  simulada::Estacion unidad = Unidad();
  const simulada::EnlaceSimulado como_estaba = enlace;
  if (!orden()) return false;
  if (Guardar()) return true;
  Unidad() = std::move(unidad);
  enlace = como_estaba;
  return false;
}

bool ComunicadorSimulado::Interior::Llega() {
  if (enlace.ausente_hasta != 0 && reloj.Milisegundos() >= enlace.ausente_hasta) enlace.ausente_hasta = 0;
  return enlace.ausente_hasta == 0 && enlace.Llega(escenario.lineas, Unidad());
}

bool ComunicadorSimulado::Interior::Responde() {
  const bool llega = Llega();
  enlace.caido = !llega;
  respondio_ = llega;
  if (!llega) Esperar(escenario.tiempos.sin_respuesta);
  return llega;
}

void ComunicadorSimulado::Interior::ExigirRespuesta() {
  if (!Responde()) Lanzar(error::kSinRespuesta, "Comunicador");
}

void ComunicadorSimulado::Interior::Esperar(double segundos) {
  bitacora.Vaciar();
  reloj.Esperar(segundos * escenario.tiempos.factor, bloqueada_ ? Atender{} : atender);
}

bool ComunicadorSimulado::Interior::EsperarLlamada(double segundos) {
  for (; segundos > 0 && enlace.llamar; segundos -= kPasoDeLlamada) Esperar(std::min(segundos, kPasoDeLlamada));
  return enlace.llamar;
}

// The delay of a fault; false: the call that it delays was abandoned meanwhile.
bool ComunicadorSimulado::Interior::Demorar(Op op, double segundos) {
  if (segundos <= 0) return true;
  if (op == Op::kLlamarTelefono) return EsperarLlamada(segundos);
  Esperar(segundos);
  return true;
}

// Ten bits a byte: eight, and the two that begin and end it.
void ComunicadorSimulado::Interior::Transferir(Op op, std::size_t filas) {
  const simulada::Octetos& octetos = De(op).octetos;
  const double bits = 10 * (octetos.fijos + static_cast<double>(filas) * octetos.por_fila);
  const double segundos = bits / enlace.VelocidadDeLinea(Unidad()) * escenario.tiempos.linea;
  if (segundos * escenario.tiempos.factor > 0) Esperar(segundos);
}

std::string ComunicadorSimulado::Interior::Describir(Op op, const Tabla* tabla) {
  if (tabla == nullptr) return "sin tabla";
  if (!tabla->Abierta()) return "tabla cerrada";
  std::string texto = fmt::format("tabla de {} filas y {} campos", tabla->RecordCount(), tabla->FieldCount());
  if (escenario.tablas_enteras) texto += ", " + bitacora.GuardarTabla(De(op).nombre, *CopiarALaVista(*tabla));
  return texto;
}

void ComunicadorSimulado::Interior::Estropear(const std::vector<simulada::Falla>& fallas, TablaPtr& tabla) {
  for (const simulada::Falla& falla : fallas) {
    if (tabla) tabla = simulada::Estropear(falla, *tabla);
  }
}

void ComunicadorSimulado::Interior::Estropear(const std::vector<simulada::Falla>& fallas, std::string& texto) {
  for (const simulada::Falla& falla : fallas) {
    if (!texto.empty()) texto = simulada::Estropear(falla, std::move(texto));
  }
}

}  // namespace utr
