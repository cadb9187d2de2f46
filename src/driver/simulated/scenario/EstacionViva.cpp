#include "driver/simulated/scenario/EstacionViva.h"

#include <sys/stat.h>

#include "base/CarpetaPrograma.h"
#include "base/Error.h"

namespace utr::simulada {

namespace {

constexpr std::int64_t kEntreGuardados = 60000;  // milliseconds
constexpr std::int64_t kMayorAtraso = 3600;      // seconds
constexpr double kReposo = 0.5;                  // seconds in which a file that is being written goes on growing

}  // namespace

EstacionViva::EstacionViva(std::filesystem::path donde, ArchivosDeEstacion archivos, Reloj& un_reloj, Atender atiende,
                           Anotar anotar)
    : carpeta(std::move(donde)),
      reloj(un_reloj),
      atender(std::move(atiende)),
      fecha(reloj.Ahora()),
      ahora(Segundos(fecha)),
      archivos_(std::move(archivos)),
      anotar_(std::move(anotar)),
      ruta_escenario_((carpeta / archivos_.escenario).string()) {
  CargarUnidad();
}

EstacionViva::~EstacionViva() {
  Guardar();
}

void EstacionViva::Comenzar() {
  fecha = reloj.Ahora();
  ahora = Segundos(fecha);
  RevisarEscenario();
  Unidad().Avanzar(ahora);
  GuardarSiToca();
}

void EstacionViva::Seguir() {
  const FechaHora antes = fecha;
  fecha = reloj.Ahora();
  if (fecha == antes) return;
  ahora = Segundos(fecha);
  Unidad().Avanzar(ahora);
}

void EstacionViva::Escenificar(std::string texto) {
  Escenario nuevo = LeerEscenarioDeTexto(texto);
  Adoptar(std::move(nuevo), std::move(texto));
}

// Orders save at once. What the unit recorded by itself is saved now and then, and so is another scenario, so that
// after a sudden end the next run doesn't record the same hours again in another world.
void EstacionViva::GuardarSiToca() {
  if (por_guardar_ || reloj.Milisegundos() - guardado_ >= kEntreGuardados) Guardar();
}

// One call of the system for time, size and identity of the file, since it is made at every call of the driver.
EstacionViva::Firma EstacionViva::FirmaDe(const std::string& ruta) {
  struct stat archivo {};
  if (::stat(ruta.c_str(), &archivo) != 0) return {.leida = true};
  return {.leida = true,
          .hay = true,
          .segundos = archivo.st_mtim.tv_sec,
          .nanosegundos = archivo.st_mtim.tv_nsec,
          .largo = archivo.st_size,
          .nodo = static_cast<std::int64_t>(archivo.st_ino)};
}

void EstacionViva::RevisarEscenario() {
  if (carpeta.empty()) return;
  std::string ruta = ruta_escenario_;
  Firma firma = FirmaDe(ruta);
  if (!firma.hay) {  // that of the package, then
    ruta = ArchivoDelPrograma(carpeta, archivos_.escenario).string();
    firma = FirmaDe(ruta);
  }
  if (firma == firma_) return;
  firma_ = firma;
  try {
    std::string texto = LeerTextoEscenario(ruta);
    Escenario nuevo = LeerEscenarioDeTexto(texto);
    if (EstaQuieto(nuevo, ruta)) Adoptar(std::move(nuevo), std::move(texto));
  } catch (...) {
    if (!firma.hay && estado.aplicado.empty()) return;  // a fresh station needs no file
    anotar_(fecha, archivos_.escenario + ", " + ErrorActual().Descripcion() +
                       (estado.aplicado.empty() ? "; rige el escenario de fábrica" : "; sigue el escenario anterior"));
  }
}

// Half a file may look whole. Before it costs the unit its memories, or what was written to it, it is looked at again a
// moment later; the next call reads what was still being written.
bool EstacionViva::EstaQuieto(const Escenario& nuevo, const std::string& ruta) {
  if (estado.aplicado.empty() ||
      !(CambiaHistoria(estado.aplicado, nuevo.estado) || PierdeClaves(estado.aplicado, nuevo.estado))) {
    return true;
  }
  const Firma leida = firma_;
  reloj.Esperar(kReposo, atender);
  if (FirmaDe(ruta) == leida) return true;
  firma_ = Firma{};
  return false;
}

// Nobody knows when a change that was found now was made. It holds since the last call, so that a nailed value raises
// its alarm without a wait, but for an hour at most: a weekend with the program closed went by in the world that was.
void EstacionViva::Adoptar(Escenario nuevo, std::string texto) {
  const bool vivia = !estado.aplicado.empty();
  if (vivia && Unidad().registrado < Unidad().Reloj(ahora - kMayorAtraso)) Unidad().Avanzar(ahora - kMayorAtraso);
  escenario = std::move(nuevo);
  Unidad().Vivir(escenario.vida);
  AplicarEstado(Unidad(), estado.aplicado, escenario.estado);
  if (CambiaHistoria(estado.aplicado, escenario.estado)) Unidad().RehacerHistoria(ahora);
  AlAdoptar();
  if (texto == estado.escenario && estado.aplicado == escenario.estado) return;
  estado.aplicado = escenario.estado;
  estado.escenario = std::move(texto);
  por_guardar_ = true;
}

// The unit as the last run left it, or a fresh one. A fresh one has applied nothing, so it takes over every key.
void EstacionViva::CargarUnidad() {
  ajena_ = !TomarEstado();
  if (ajena_) {
    aviso = "Otro programa tiene la estación simulada";
    anotar_(fecha, aviso);
  } else if (!carpeta.empty()) {
    CargarEstadoGuardado();
  }
  RetomarEscenario();
  RevisarEscenario();
  // No scenario was ever understood: the station lives by what holds without one.
  if (estado.aplicado.empty()) Adoptar(Escenario{}, {});
  if (por_guardar_ && !Guardar() && aviso.empty()) {
    aviso = "La estación no se puede guardar: no se le puede grabar nada";
  }
}

void EstacionViva::CargarEstadoGuardado() {
  try {
    if (CargarEstado(carpeta / archivos_.estado, estado)) return;
    anotar_(fecha, "no hay " + archivos_.estado + "; la estación simulada comienza de nuevo");
  } catch (...) {
    estado = EstadoPersistido{};
    Apartar(ErrorActual().Descripcion());
  }
}

// In a folder where no file can be made nothing can be kept either, so that there is nothing to agree on.
bool EstacionViva::TomarEstado() {
  if (carpeta.empty() || archivos_.candado.empty()) return true;
  return candado_.Tomar(carpeta / archivos_.candado) != Candado::Toma::kAjeno;
}

bool EstacionViva::EsPropia() {
  if (!ajena_) return true;
  if (!TomarEstado()) return false;
  estado = EstadoPersistido{};
  firma_ = Firma{};
  aviso.clear();
  CargarUnidad();
  Unidad().Avanzar(ahora);
  return true;
}

// The station lives on by the scenario of the last run, which it has applied already, until the file says another one.
void EstacionViva::RetomarEscenario() {
  if (estado.aplicado.empty()) return;
  try {
    escenario = LeerEscenarioDeTexto(estado.escenario);
  } catch (const Error& falla) {
    anotar_(fecha, "el escenario guardado ya no se entiende: " + falla.Descripcion());
  }
  escenario.estado = estado.aplicado;
  Unidad().Vivir(escenario.vida);
}

// A state file that can't be read isn't written over: it may be the only copy of somebody's rehearsal. The notice has
// the room of a panel of the status bar; the reason is for the log.
void EstacionViva::Apartar(const std::string& motivo) {
  try {
    const std::string nombre = ApartarEstado(carpeta / archivos_.estado);
    aviso = "La estación comienza de nuevo; ver " + nombre;
    anotar_(fecha, motivo + " y quedó aparte, como " + nombre + "; la estación simulada comienza de nuevo");
  } catch (...) {
    guardable_ = false;
    aviso = "La estación comienza de nuevo y no se le puede grabar nada";
    anotar_(fecha, motivo + " ni apartar; la estación simulada comienza de nuevo y no se guarda");
  }
}

bool EstacionViva::Guardar() noexcept {
  por_guardar_ = false;
  guardado_ = reloj.Milisegundos();
  if (carpeta.empty()) return true;
  if (!guardable_ || ajena_) return false;
  try {
    GuardarEstado(carpeta / archivos_.estado, estado);
    return true;
  } catch (...) {
    anotar_(fecha, "no se pudo guardar el estado de la estación simulada");
    return false;
  }
}

// What isn't kept wasn't done: the operator would find it undone at the next start.
bool EstacionViva::Cumplir(const std::function<bool()>& orden) {
  Estacion unidad = Unidad();
  if (!orden()) return false;
  if (Guardar()) return true;
  Unidad() = std::move(unidad);
  return false;
}

}  // namespace utr::simulada
