#include "driver/simulated/InteriorSimulado.h"

#include <chrono>
#include <system_error>

namespace utr {

namespace {

constexpr const char* kEscenario = "UTRSimulada.toml";
constexpr const char* kEstado = "UTRSimulada.estado";
constexpr int kPaginasEntreMiradas = 32;  // a look at a file costs as much as several pages

// Time and size of a file as a text; empty for a file that isn't there.
std::string Firma(const std::filesystem::path& ruta) {
  std::error_code falla;
  const auto tiempo = std::filesystem::last_write_time(ruta, falla);
  if (falla) return {};
  const auto largo = std::filesystem::file_size(ruta, falla);
  return std::to_string(tiempo.time_since_epoch().count()) + "/" + std::to_string(falla ? 0 : largo);
}

}  // namespace

ComunicadorSimulado::Interior::Interior(std::filesystem::path donde, Reloj& un_reloj, Atender atiende)
    : carpeta(std::move(donde)), reloj(un_reloj), atender(std::move(atiende)), bitacora(carpeta), firma_("sin leer") {
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

void ComunicadorSimulado::Interior::RevisarEscenario() {
  const std::filesystem::path ruta = carpeta / kEscenario;
  std::string firma = Firma(ruta);
  if (firma == firma_) return;
  const bool hay = !firma.empty();
  firma_ = std::move(firma);
  try {
    Adoptar(hay ? simulada::LeerEscenario(ruta) : simulada::Escenario{});
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

bool ComunicadorSimulado::Interior::Responde() {
  const bool llega = enlace.Llega(escenario.lineas, Unidad(), reloj.Milisegundos());
  enlace.caido = !llega;
  if (!llega) Esperar(escenario.tiempos.sin_respuesta);
  return llega;
}

void ComunicadorSimulado::Interior::Esperar(double segundos) {
  reloj.Esperar(segundos * escenario.tiempos.factor, atender);
}

std::string ComunicadorSimulado::Interior::Describir(Op op, const Tabla* tabla) {
  if (tabla == nullptr) return "sin tabla";
  if (!tabla->Abierta()) return "tabla cerrada";
  std::string texto = fmt::format("tabla de {} filas y {} campos", tabla->RecordCount(), tabla->FieldCount());
  if (escenario.tablas_enteras) texto += ", " + bitacora.GuardarTabla(De(op).nombre, *tabla);
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
