#pragma once

#include "operations/AlmacenAsistentes.h"
#include "session/windows/FlujoLectura.h"

namespace utr {

// The main window's road to the start-up wizard, and what follows it: behind a unit that was commissioned the link is
// opened at its new speed where it fell, the settings take its new identifier, and its channels are read again; behind
// one that was only begun they are read alone. It shows its failures.
void AsistenteParam(FlujoLectura& flujo, AlmacenAsistentes& almacen);

}  // namespace utr
