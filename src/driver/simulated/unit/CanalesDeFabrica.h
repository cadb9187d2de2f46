#pragma once

#include <array>

#include "driver/simulated/unit/Canales.h"

namespace utr::simulada {

// The channel table of the station as it leaves the factory: for each of the 23 channels its columns as "Name=text"
// joined by ";". Columns that a channel doesn't name hold the common text.
extern const std::array<const char*, kCanales> kCanalesDeFabrica;
extern const char* const kComunesDeFabrica;

}  // namespace utr::simulada
