#pragma once

#include "tables/Tabla.h"

namespace utr {

// Carries the wind marks of another table of channels into `configuracion`: the first row marked "Si" in TDirV makes
// its channel a wind direction (kind 3), the first in TVelV a wind speed (kind 2). Errors are ignored; filters are
// cleared.
void CopiarDatosDeViento(Tabla& configuracion, Tabla& tabla);

}  // namespace utr
