#pragma once

#include "tables/Tabla.h"

// What a driver takes from a table that it is handed: the rows that the table shows, in their order.
namespace utr {

// A cursor of its own over the rows that `tabla` shows, on the first of them: the filter and the sort of the table
// hold, and the table's own cursor stays where it is. Raises kTablaCerrada for a closed table.
TablaPtr ALaVista(const Tabla& tabla);

// Those rows as a table of their own, posted, on its first row; without rows where the table shows none.
TablaPtr CopiarALaVista(const Tabla& tabla);

}  // namespace utr
