#include "session/BitacoraVisita.h"

#include <optional>
#include <ostream>
#include <utility>

#include "base/Archivos.h"
#include "base/Error.h"
#include "session/ArchivoBitacora.h"
#include "session/Respaldos.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr const char* kModulo = "BitacoraVisita";
constexpr int kMayorOrden = 999;

FechaHora Dia(const FechaHora& momento) {
  return {.anio = momento.anio, .mes = momento.mes, .dia = momento.dia};
}

bool Existe(const fs::path& ruta) {
  std::error_code falla;
  return fs::symlink_status(ruta, falla).type() != fs::file_type::not_found;
}

// What is there of a file that can go on; nothing for one that is to be left alone.
std::optional<BitacoraLeida> LaQueSigue(const fs::path& archivo) {
  std::optional<BitacoraLeida> leida;
  std::error_code falla;
  const bool propio = fs::symlink_status(archivo, falla).type() == fs::file_type::regular;
  if (!propio || !IgnorandoErrores([&] { leida = LeerBitacora(archivo); }) || !leida->reparo.empty())
    return std::nullopt;
  return leida;
}

// Brings one piece to the disk, at the end of a file of that length or as a new file.
void AlDisco(const fs::path& archivo, std::uint64_t largo, const std::string& bytes) {
  const bool nuevo = largo == 0 && !Existe(archivo);
  ArchivoCreciente creciente = nuevo ? ArchivoCreciente(archivo) : ArchivoCreciente(archivo, largo);
  creciente.Agregar(bytes);
  AlFallar([&] { creciente.Terminar(); },
           [&] {
             std::error_code nada;  // or it would stand there twice once it is tried again
             fs::resize_file(archivo, largo, nada);
           });
}

}  // namespace

BitacoraVisita::BitacoraVisita(fs::path programa, Diario& diario, RegistroErrores& registro)
    : programa_(std::move(programa)), diario_(diario), registro_(registro) {
  diario_.AlAnotar([this](const Asiento& asiento) {
    pendientes_.push_back(asiento);
    Reintentar();
  });
}

BitacoraVisita::~BitacoraVisita() {
  diario_.AlAnotar({});
}

void BitacoraVisita::Reintentar() {
  if (pendientes_.empty()) return;
  const std::string falla_anterior = std::exchange(falla_, {});
  std::size_t hechos = 0;
  if (const auto falla = FallaDe([&] {
        for (; hechos < pendientes_.size(); ++hechos) Guardar(pendientes_[hechos]);
      })) {
    falla_ = falla->Descripcion();
    if (falla_anterior.empty()) registro_.RegistrarError(*falla, kModulo, "Reintentar");
  }
  pendientes_.erase(pendientes_.begin(), pendientes_.begin() + static_cast<std::ptrdiff_t>(hechos));
  const bool todo_bien = falla_.empty() && falla_anterior.empty();
  if (!todo_bien && aviso_) IgnorandoErrores(aviso_);
}

void BitacoraVisita::Guardar(const Asiento& asiento) {
  const fs::path carpeta = Carpeta(asiento.estacion);
  const FechaHora dia = Dia(asiento.momento);
  std::error_code falla;
  const bool la_misma = abierta_.carpeta == carpeta && abierta_.dia == dia &&
                        fs::file_size(abierta_.archivo, falla) == abierta_.largo && !falla;
  if (!la_misma) abierta_ = Abrir(carpeta, dia);
  const std::string bytes =
      (abierta_.largo == 0 ? CabeceraBitacora() : std::string()) + RenglonBitacora(abierta_.ultimo + 1, asiento);
  AlDisco(abierta_.archivo, abierta_.largo, bytes);
  abierta_.largo += bytes.size();
  ++abierta_.ultimo;
}

// The file of that day that can go on, or the name of one that isn't there yet.
BitacoraVisita::Abierta BitacoraVisita::Abrir(const fs::path& carpeta, const FechaHora& dia) const {
  std::error_code falla;
  fs::create_directories(carpeta, falla);
  if (falla) throw Error(error::kArchivo, kModulo, "No se puede crear la carpeta " + carpeta.string(), falla.value());
  for (int orden = 1; orden <= kMayorOrden; ++orden) {
    const fs::path archivo = carpeta / NombreBitacora(dia, orden);
    if (!Existe(archivo)) return {.carpeta = carpeta, .dia = dia, .archivo = archivo};
    const auto leida = LaQueSigue(archivo);
    if (leida) return {carpeta, dia, archivo, leida->largo, leida->ultimo};
  }
  throw Error(error::kArchivo, kModulo, "No queda nombre para otra bitácora en " + carpeta.string());
}

void BitacoraVisita::GuardarPendientes(const fs::path& archivo) {
  EscribirEntero(archivo, [this](std::ostream& salida) {
    salida << CabeceraBitacora();
    for (std::size_t i = 0; i < pendientes_.size(); ++i) salida << RenglonBitacora(i + 1, pendientes_[i]);
  });
  pendientes_.clear();
  falla_.clear();
  if (aviso_) aviso_();
}

fs::path BitacoraVisita::Carpeta(std::int32_t estacion) const {
  return Respaldos::CarpetaDe(programa_, estacion);
}

}  // namespace utr
