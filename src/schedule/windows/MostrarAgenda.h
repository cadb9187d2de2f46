#pragma once

#include "session/windows/FlujoLectura.h"

namespace utr {

// The main window's road to the schedule: reads it from the unit, opens the editor whether that brought anything or
// not, and says how its write ended. Shows its failures.
void ProcesarAgenda(FlujoLectura& flujo);

}  // namespace utr
