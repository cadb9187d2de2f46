#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "tables/Tabla.h"

namespace utr {

// The moment of a row that has none.
inline constexpr std::int64_t kSinMomento = std::numeric_limits<std::int64_t>::min();

// The moments of all rows of a table of records, in the order of adding, whatever filter and sort: seconds from
// 01/01/1970 without zone, as the unit wrote them. The date is read from Fecha and the time of day from Hora; without a
// field Hora, as in a file for manual insertion, Fecha tells both. A date that can't be read gives kSinMomento; a time
// of day that can't be read counts as midnight. Raises kCampo for a table without Fecha.
std::vector<std::int64_t> MomentosDe(const Tabla& tabla);

}  // namespace utr
