#pragma once

#include "driver/Comunicador.h"
#include "schedule/FDLHorarios.h"

namespace utr {

// Adds what a table of the driver's LeerAgenda says to a schedule: a row counts where its minute isn't empty and its
// "Descripcion" is exactly "OK", and a kind is set where its column is exactly "Si". A minute that is there already
// takes the kinds of the row. Raises kCampo for a table without the columns, kTipos and kDesborde for a minute that is
// no 16-bit number.
void AgregarHorarios(FDLHorarios& horarios, Tabla& tabla);

// The same, and the length of the window from the page of parameters. Raises what the driver raises, and kSubindice for
// a page that couldn't be read.
void CargarAgenda(FDLHorarios& horarios, Tabla& tabla, Comunicador& comunicador);

}  // namespace utr
