#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tables/Tabla.h"

namespace utr {

enum class ClaseLimite : std::uint8_t { kAlarma, kValidacion };

// A level that the unit compares readings with, in engineering units.
struct LimiteSerie {
  ClaseLimite clase = ClaseLimite::kAlarma;
  const char* campo = "";    // "AMax"
  const char* palabra = "";  // "Alarma de máxima"
  double valor = 0;
};

// What the channel table says of a channel to whoever draws its records.
struct CanalDeSerie {
  std::optional<double> minutos;     // between two records (TStorage); nothing where the table doesn't tell
  std::vector<LimiteSerie> limites;  // those that the kind has; alarms only where they are enabled; none of a channel
                                     // whose records can't be scaled
};

// The first row of that channel, whatever the filter of the table, which stays as it is with its cursor. Without such a
// row, or without the columns, nothing is known. Validation limits that leave nothing between them, or between 0 and
// the one of a rain gauge, were never set, and are left out.
CanalDeSerie LeerCanalDeSerie(const Tabla& configuracion, std::int16_t canal);

}  // namespace utr
