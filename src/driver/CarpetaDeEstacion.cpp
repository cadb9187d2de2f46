#include "driver/CarpetaDeEstacion.h"

#include "base/CarpetaPrograma.h"
#include "base/Error.h"

namespace utr {

namespace {

constexpr const char* kCandado = "Estacion.candado";

[[noreturn]] void NoSeTiene(const std::string& motivo, const std::filesystem::path& carpeta, int error_del_sistema) {
  throw Error(error::kArchivo, "utr-estacion", motivo + carpeta.string(), error_del_sistema);
}

}  // namespace

std::filesystem::path CarpetaDeEstacion() {
  constexpr const char* kNombre = "utr-estacion";
  if (auto propia = RutaDelEntorno("UTR_ESTACION"); !propia.empty()) return std::filesystem::absolute(propia);
  if (const auto estados = RutaDelEntorno("XDG_STATE_HOME"); estados.is_absolute()) return estados / kNombre;
  if (const auto casa = RutaDelEntorno("HOME"); !casa.empty()) return casa / ".local" / "state" / kNombre;
  return {};
}

CandadoDeCarpeta::CandadoDeCarpeta(const std::filesystem::path& carpeta) {
  std::error_code falla;
  std::filesystem::create_directories(carpeta, falla);
  if (falla) NoSeTiene("No se puede crear la carpeta ", carpeta, falla.value());
  const Candado::Toma toma = candado_.Tomar(carpeta / kCandado);
  if (toma == Candado::Toma::kSinArchivo) {
    NoSeTiene("No se puede escribir en la carpeta ", carpeta, candado_.ErrorDelSistema());
  }
  if (toma == Candado::Toma::kAjeno) NoSeTiene("Otra estación usa la carpeta ", carpeta, candado_.ErrorDelSistema());
}

bool EstacionDetenida(const std::filesystem::path& carpeta) {
  return Candado::Libre(carpeta / kCandado);
}

}  // namespace utr
