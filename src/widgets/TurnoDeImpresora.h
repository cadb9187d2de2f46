#pragma once

#include <functional>

#include "services/Impresora.h"
#include "services/Operador.h"

namespace utr {

// Whether there is a printer to print on: that of `eleccion`, or the one that the operator chooses now where none was
// chosen yet or the chosen one is no longer among the system's. False: he cancelled, or there is none.
bool HayImpresora(Operador& operador, Impresora& impresora, EleccionImpresora& eleccion);

// Whether the printer of that choice is among the system's.
bool EstaInstalada(Impresora& impresora, const EleccionImpresora& eleccion);

// Runs `imprimir` once a copy with a progress that says which one of several it is; none behind one that gives false.
// What it raises goes through.
void PorCopia(int copias, Progreso& progreso, const std::function<bool(Progreso& progreso)>& imprimir);

}  // namespace utr
