#pragma once

#include <cstdint>

#include "tables/Tabla.h"

// Rows of record tables by what they hold. The result is a new table of the same shape that stands on its first row;
// one that leaves nothing out shares its rows with the table that it was made of. The cursor of that one stays where it
// is.
namespace utr {

struct Descartes {
  std::uint64_t por_fecha = 0;  // Fecha isn't a date
  std::uint64_t por_hora = 0;   // Fecha is one, but Hora isn't "h:m:s" of a day
};

// The rows of a table with Fecha and Hora that lie on a date and at a time of day, as a new table of the same shape
// that stands on its first row. Adds to `descartes` what it left out. Raises kCampo for a table without these fields.
TablaPtr ValidarRegistros(Tabla& tabla, Descartes* descartes = nullptr);

// The rows of a channel: Canal is its number or its name. Raises kCampo for a table without Canal.
TablaPtr ExtraerCanal(Tabla& tabla, std::int16_t canal);

}  // namespace utr
