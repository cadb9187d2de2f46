#pragma once

#include "shell/ModRTU.h"

namespace utr {

// Opens the program's help file with whatever the system opens such files with; nothing where there is no such file.
void AbrirAyuda(const ModRTU& mod);

}  // namespace utr
