#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "retrieved/recovery/MapaMemoria.h"
#include "tables/Tabla.h"

namespace utr {

// Shows in `mapa`, made for processing, what recovery files hold before they are processed: each page blank, damaged
// or with data, data winning where files differ, and those of a stack that no channel of `configuracion` has (null:
// none has); pages without a line stay as not there. What is wrong with the files in words, one line each; empty:
// nothing that shows at a glance. A file that can't be read is such a line; the filter of the table is cleared. Raises
// what the table raises.
std::string AnticiparMapa(MapaMemoria& mapa, const std::vector<std::filesystem::path>& archivos, Tabla* configuracion);

}  // namespace utr
