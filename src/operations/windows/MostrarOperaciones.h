#pragma once

#include "session/windows/FlujoLectura.h"

// The main window's roads to what is done to a unit.
namespace utr {

// The outputs. Without a configuration of the unit it offers to read it, and the window isn't opened in that pass.
// Shows its failures.
void MostrarSalidasDigitales(FlujoLectura& flujo);

// The direct commands. Behind them the title tells the identifier that may have changed, and the link is shown anew.
void MostrarComandos(FlujoLectura& flujo);

}  // namespace utr
