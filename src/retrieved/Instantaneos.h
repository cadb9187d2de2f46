#pragma once

#include <cstdint>

#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

namespace utr {

// The raw value of a channel in a reading of present values: the rows' `Valor` joined by "/" are one frame in which
// each channel has a fixed place. 0 for a channel outside the frame's layout. The reading, which must have rows,
// returns to its first one. Raises 9 for a frame that is too short and 13 for an item that is no number.
std::int32_t ValorInstantaneo(Tabla& lectura, std::int16_t canal);

// One row for each enabled channel of the channel table: Fecha (20) and Hora (15) of the computer, Canal (10) as in the
// configuration, Valor (50), Descripcion (50), Unidad (50), all text. `escalados`: engineering values, with the level
// reference or constant where `con_nivel_referencia`; else counts. Both tables return to their first rows, the result
// stands on its first one. A failure is logged and raised with this procedure as its source.
TablaPtr PresentacionDatosInstantaneos(Tabla& lectura, Tabla& configuracion, bool escalados, bool con_nivel_referencia,
                                       const ContextoRegistros& contexto);

}  // namespace utr
