#include "driver/simulated/InteriorSimulado.h"

#include <sys/stat.h>

#include "driver/TablasEntregadas.h"

namespace utr {

namespace {

constexpr const char* kEscenario = "UTRSimulada.toml";
constexpr const char* kEstado = "UTRSimulada.estado";
constexpr int kPaginasEntreMiradas = 64;  // a look at a file costs as much as several pages

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
    Adoptar(firma.hay ? simulada::LeerEscenario(ruta_escenario_) : simulada::Escenario{});
  } catch (const Error& falla) {
    bitacora.Aviso(fecha, "UTRSimulada.toml, " + falla.Descripcion() + "; sigue el escenario anterior");
  }
}

void ComunicadorSimulado::Interior::Adoptar(simulada::Escenario nuevo) {
  escenario = std::move(nuevo);
  fallas.Poner(escenario.fallas);
  Unidad().Vivir(escenario.vida);
  const bool historia = simulada::AplicarEstado(Unidad(), estado.aplicado, escenario.estado);
  estado.aplicado = escenario.estado;
  if (historia) Unidad().RehacerHistoria(ahora);
}

// The unit as the last run left it, or a fresh one. A fresh one has applied nothing, so it takes over every key.
void ComunicadorSimulado::Interior::CargarUnidad() {
  try {
    simulada::CargarEstado(carpeta / kEstado, estado);
  } catch (...) {
    estado = simulada::EstadoPersistido{};
    bitacora.Aviso(fecha, ErrorActual().Descripcion() + "; la UTR simulada comienza de nuevo");
  }
  RevisarEscenario();
  // The scenario was wrong from the beginning: the station lives by what holds without one.
  if (estado.aplicado.empty()) Adoptar(simulada::Escenario{});
}

void ComunicadorSimulado::Interior::Guardar() noexcept {
  cambiada_ = false;
  try {
    simulada::GuardarEstado(carpeta / kEstado, estado);
  } catch (...) {
    bitacora.Aviso(fecha, "no se pudo guardar el estado de la UTR simulada");
  }
}

bool ComunicadorSimulado::Interior::Llega() {
  if (enlace.ausente_hasta != 0 && reloj.Milisegundos() >= enlace.ausente_hasta) enlace.ausente_hasta = 0;
  return enlace.ausente_hasta == 0 && enlace.Llega(escenario.lineas, Unidad());
}

bool ComunicadorSimulado::Interior::Responde() {
  const bool llega = Llega();
  enlace.caido = !llega;
  if (!llega) Esperar(escenario.tiempos.sin_respuesta);
  return llega;
}

void ComunicadorSimulado::Interior::ExigirRespuesta() {
  if (!Responde()) Lanzar(error::kSinRespuesta, "Comunicador");
}

void ComunicadorSimulado::Interior::Esperar(double segundos) {
  reloj.Esperar(segundos * escenario.tiempos.factor, bloqueada_ ? Atender{} : atender);
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
