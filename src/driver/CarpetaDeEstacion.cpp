#include "driver/CarpetaDeEstacion.h"

#include <cstdlib>

namespace utr {

namespace {

std::filesystem::path DelEntorno(const char* variable) {
  const char* valor = std::getenv(variable);
  return valor == nullptr ? "" : valor;
}

}  // namespace

std::filesystem::path CarpetaDeEstacion() {
  constexpr const char* kNombre = "utr-estacion";
  if (auto propia = DelEntorno("UTR_ESTACION"); !propia.empty()) return std::filesystem::absolute(propia);
  if (const auto estados = DelEntorno("XDG_STATE_HOME"); estados.is_absolute()) return estados / kNombre;
  if (const auto casa = DelEntorno("HOME"); !casa.empty()) return casa / ".local" / "state" / kNombre;
  return {};
}

}  // namespace utr
