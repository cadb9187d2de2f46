#pragma once

#include <span>
#include <string_view>

#include "console/Sesion.h"

namespace utr::consola {

// Runs a command line, whose arguments stand behind the program's name, and gives the code that the process ends with.
// What was asked for goes to `entorno.salida`; what went wrong, in one line, to `entorno.errores`. Never raises. For
// one that was interrupted the process ends here, by the signal that came.
int Correr(std::span<const std::string_view> argumentos, const Entorno& entorno);

}  // namespace utr::consola
