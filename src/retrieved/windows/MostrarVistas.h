#pragma once

#include "session/windows/FlujoLectura.h"

// The main window's roads to the record views. Without a configuration of the unit each offers to read it, and the view
// isn't opened in that pass. They show their failures.
namespace utr {

void MostrarEventos(FlujoLectura& flujo);
void MostrarDatos(FlujoLectura& flujo);
void ColaDeTransmicion(FlujoLectura& flujo);

}  // namespace utr
