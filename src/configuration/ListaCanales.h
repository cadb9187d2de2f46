#pragma once

#include "configuration/Catalogo.h"
#include "lists/Columnas.h"
#include "tables/Tabla.h"

// The list of a station's channels as it is shown, saved as text and printed.
namespace utr {

// Its eight columns, over the table that TablaDeLista makes. The first one is the channel number, which tells a row
// from all others.
Columnas ColumnasDeCanales();

// A table of texts with a row for each row of a channel table, in its order, codes told as words. Rows whose `Canal`
// is no channel number are left out. The cursor of `canales` ends behind its last row.
TablaPtr TablaDeLista(Tabla& canales, Catalogo& catalogo);

}  // namespace utr
