#pragma once

#include <optional>
#include <string>

#include "base/Fechas.h"
#include "schedule/EscrituraAgenda.h"
#include "schedule/FDLHorarios.h"
#include "services/Diario.h"

namespace utr {

// "2 horarios (08:00 TOblig TCond, 10:30 TOblig), ventana de 300 min.", in the order of time. A window of 0 isn't
// known and is left out.
std::string EnPalabras(const FDLHorarios& horarios);

// The entry of a write of the schedule. `antes`: what the unit held, where it was read. Nothing for a schedule without
// entries, of which nothing was sent.
void AnotarAgenda(Diario::Tarea& tarea, const FechaHora& momento, const std::optional<FDLHorarios>& antes,
                  const FDLHorarios& horarios, const ResultadoAgenda& resultado);

}  // namespace utr
