#pragma once

#include "session/windows/FlujoLectura.h"

namespace utr {

// The main window's road to the flash reader. Failures that the window didn't show itself are logged and raised.
void RecuperarDatos(FlujoLectura& flujo);

}  // namespace utr
