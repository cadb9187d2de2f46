#pragma once

#include "session/ModRTU.h"

namespace utr {

// Sets the program's help file: "Ayuda", the name of the executable and ".hlp", under its folder. Never raises.
void FijarArchivoAyuda(ModRTU& mod) noexcept;

}  // namespace utr
