#pragma once

#include <iosfwd>
#include <vector>

#include "lists/Csv.h"
#include "tables/Tabla.h"

namespace utr {

// The records of several channels side by side as CSV: a row for each moment at which any of them has one, ascending,
// as the unit wrote the times, with date, time and, for each channel, value, minimum, maximum and whether the unit
// validated it. Minimum and maximum stand only where the channel has any. A channel without a record of that moment has
// empty fields. Nothing is dropped: what has the same moment as another record of its channel gets a row of its own, in
// the order of the table, and what has no readable date stands behind all others.
//
// The tables are record tables of one channel each, with rows. False: the stream failed.
bool EscribirPorTiempo(std::ostream& salida, const std::vector<TablaPtr>& canales, const OpcionesCsv& opciones);

}  // namespace utr
