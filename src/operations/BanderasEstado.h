#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The unit's state flags as eight boxes, numbered by their bit when they are written. They are read in another layout.
namespace utr {

inline constexpr std::size_t kBanderas = 8;
using Banderas = std::array<bool, kBanderas>;

struct BanderaEstado {
  std::size_t casilla;  // also the bit when written
  const char* rotulo;
  std::int32_t leida;  // mask when read; 0: never read
};
// In the order in which they are shown.
extern const std::array<BanderaEstado, kBanderas> kBanderasEstado;

// The boxes of a state as it was read.
Banderas BanderasDe(std::int32_t estado);

// The state that is written for the boxes.
std::int16_t ValorDe(const Banderas& banderas);

// The captions of the ticked ones, in their order; "ninguna" where none is.
std::string TextoDeBanderas(const Banderas& banderas);

}  // namespace utr
