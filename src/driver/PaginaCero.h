#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// The page of unit parameters: its number, its positions counted from 0, and the codes of its speeds. A pair holds a
// 16-bit value, low byte first. Positions without a name are kept as they are read.
namespace utr::pagina0 {

inline constexpr std::string_view kNumero = "0";

inline constexpr std::size_t kVelocidad = 0;      // code of the speed
inline constexpr std::size_t kRetardo = 1;        // delay from RTS to transmission, in tens of what is shown
inline constexpr std::size_t kRepeticiones = 2;   // in tens of what is shown
inline constexpr std::size_t kIdentificador = 3;  // pair
inline constexpr std::size_t kVentana = 6;        // pair: length of the schedule window in minutes

// Bits per second by code.
inline constexpr std::array<std::int32_t, 6> kVelocidades{300, 1200, 2400, 4800, 9600, 19200};

// The speed of a code; nothing for a code without one.
constexpr std::optional<std::int32_t> VelocidadDeCodigo(std::int32_t codigo) {
  if (codigo < 0 || codigo >= static_cast<std::int32_t>(kVelocidades.size())) return std::nullopt;
  return kVelocidades[static_cast<std::size_t>(codigo)];
}

// The code of a speed; nothing for a speed without one.
constexpr std::optional<std::int32_t> CodigoDeVelocidad(std::int32_t velocidad) {
  for (std::size_t codigo = 0; codigo < kVelocidades.size(); ++codigo) {
    if (kVelocidades[codigo] == velocidad) return static_cast<std::int32_t>(codigo);
  }
  return std::nullopt;
}

}  // namespace utr::pagina0
