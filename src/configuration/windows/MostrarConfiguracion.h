#pragma once

#include "session/windows/FlujoLectura.h"

// The main window's roads to the list of channels, and what follows when it was written: the unit is read again and
// compared with what was written. Without a table they say that a configuration has to be read. A table that isn't the
// unit's is only shown. They show their failures.
namespace utr {

// All channels and all that they hold. `solo_mirar`: the enabled ones, to look at.
void MostrarConfiguracion(FlujoLectura& flujo, bool solo_mirar = false);

// Times, limits and alarms of the enabled channels.
void MostrarParametros(FlujoLectura& flujo);

}  // namespace utr
