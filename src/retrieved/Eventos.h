#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

// The table of events: one row an event with its date, name and values.
namespace utr {

// An open table RegistrosEventos without rows: Fecha (20), Hora (15), Codigo, Valor1, Valor2 (50), Descripcion (150),
// text.
TablaPtr CrearRegistrosEventos();

// The description table "Eventos.xml" of the program (ArchivoDelPrograma); null when it is missing or can't be
// understood.
TablaPtr CargarEventos(const std::filesystem::path& carpeta);

// "<code>#<name>#<label of value 1>#<label of value 2>", the code trimmed; "<code>#-#-#-" without a row or a table. The
// filter of the table stays on the code.
std::string DescribirEvento(std::string_view codigo, Tabla* descripciones);

// Codes whose second value is a difference of raw counts.
bool EsEventoDiferencial(std::int16_t codigo);

// Builds RegistrosEventos from a stream with a known start: a row with a Fecha of more than one character is a marker,
// a row with an Hora of one character or none is dropped. Null for a null `origen`, an empty table for one without
// rows. An event that names its channel and gives none keeps neither of its values ("N/D"). The result stands behind
// its last row. Raises what scaling and missing fields raise.
TablaPtr ArmarRegistrosEventos(const TablaPtr& origen, Tabla* configuracion, Tabla* descripciones);

// The same for pending events, where the stream may begin in the middle of a day: markers are told by the date test,
// rows ahead of the first one get the day before it (today without any), and second values are always readings. The
// result stands on its first row.
TablaPtr ArmarEventosPendientes(const TablaPtr& origen, Tabla* configuracion, Tabla* descripciones,
                                const ContextoRegistros& contexto);

}  // namespace utr
