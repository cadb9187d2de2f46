#pragma once

#include <filesystem>

#include "help/PaginasAyuda.h"

namespace utr::ayuda {

// What the pages of the help may ask for, out of the tables that the program itself works with. `datos`: the folder of
// the catalogues (`*.xml`) that ship beside the executable.
FuentesAyuda FuentesDelPrograma(const std::filesystem::path& datos);

}  // namespace utr::ayuda
