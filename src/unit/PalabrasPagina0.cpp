#include "unit/PalabrasPagina0.h"

#include <cstdint>
#include <optional>

#include "driver/PaginaCero.h"

namespace utr {

std::string VelocidadEnPalabras(const PaginaUnidad& pagina) {
  const std::int32_t codigo = pagina.Numero(pagina0::kVelocidad);
  const std::optional<std::int32_t> velocidad = pagina0::VelocidadDeCodigo(codigo);
  return velocidad ? std::to_string(*velocidad) : "código " + std::to_string(codigo);
}

std::string IdentificadorEnPalabras(const PaginaUnidad& pagina) {
  return std::to_string(pagina.Par(pagina0::kIdentificador));
}

std::string VentanaEnPalabras(const PaginaUnidad& pagina) {
  return std::to_string(pagina.Par(pagina0::kVentana)) + " min.";
}

}  // namespace utr
