#pragma once

#include <functional>

#include "services/Impresora.h"
#include "services/Operador.h"

namespace utr {

// Whether a printer is chosen: that of `eleccion`, or the one that the operator chooses now where none was yet. False:
// he cancelled, or there is none. The chosen one may have gone since: a list then prints nothing without a word, and a
// drawing raises 482.
bool HayImpresora(Operador& operador, EleccionImpresora& eleccion);

// Whether the printer of that choice is among the system's.
bool EstaInstalada(Impresora& impresora, const EleccionImpresora& eleccion);

// Runs `imprimir` once a copy with a progress that says which one of several it is; none behind one that gives false.
// What it raises goes through.
void PorCopia(int copias, Progreso& progreso, const std::function<bool(Progreso& progreso)>& imprimir);

}  // namespace utr
