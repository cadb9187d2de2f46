#pragma once

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace utr {

// Which drivers there are to choose from; scripts and tests settle it with an environment variable.
enum class Eleccion : std::uint8_t { kLibre, kSimulada, kLinea };

inline constexpr const char* kVariableDeEleccion = "ADMINUTR_ENLACE";

// "simulado": the simulated station alone; "linea": lines alone; not there or empty: both. Nothing for another text,
// since a guess could reach a unit that wasn't meant.
inline std::optional<Eleccion> EleccionDelEntorno() {
  const char* valor = std::getenv(kVariableDeEleccion);
  const std::string_view texto = valor == nullptr ? "" : valor;
  if (texto.empty()) return Eleccion::kLibre;
  if (texto == "simulado") return Eleccion::kSimulada;
  if (texto == "linea") return Eleccion::kLinea;
  return std::nullopt;
}

}  // namespace utr
