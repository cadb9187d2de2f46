#pragma once

#include <string>
#include <string_view>

#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

// The table of historic and queue records: one row a sample with its whole date, channel name, engineering values,
// description and unit. Its field names and sizes are the data format of the system.
namespace utr {

// An open table RegistrosDatos without rows: Fecha (20), Hora (15), Canal (10), Valor, Maximo, Minimo (50), Validacion,
// ColaTX (3), Descripcion (50), Unidad (15), all text.
TablaPtr CrearRegistrosDatos();

// Builds RegistrosDatos from the stream of rows that the driver gives for stored data: a row whose Fecha is a date is a
// marker and gives no row of its own; a row with an Hora of one character or none is dropped. `configuracion`: the
// channel table, or null for values in counts. Null for a null `origen`, an empty table for one without rows.
//
// The result stands behind its last row; the cursor of `origen` stays where it is; the filter of `configuracion` is
// cleared if any row was built. Raises kCampo for a source with rows that lacks a field, kTipos and kDesborde for a
// sample whose Canal is no number of 16 bits, and what scaling raises.
TablaPtr ArmarRegistrosDatos(const TablaPtr& origen, Tabla* configuracion, const ContextoRegistros& contexto);

// The same for the transmission queue, where a row may carry date and sample together.
TablaPtr ArmarRegistrosCola(const TablaPtr& origen, Tabla* configuracion, const ContextoRegistros& contexto);

// The name of a channel's unit, and what the channel measures; "-" without a table or a row for it. The filter of the
// table is cleared.
std::string UnidadDeCanal(std::string_view canal, Tabla* configuracion, Catalogo& catalogo);
std::string DescripcionDeCanal(std::string_view canal, Tabla* configuracion, Catalogo& catalogo);

}  // namespace utr
