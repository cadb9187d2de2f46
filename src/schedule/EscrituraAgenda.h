#pragma once

#include <optional>
#include <string>

#include "base/Error.h"
#include "schedule/FDLHorarios.h"
#include "unit/EscritoresPagina0.h"

namespace utr {

// How a write of the schedule ended.
struct ResultadoAgenda {
  bool Grabado = false;          // schedule and window reached the unit, whether it restarted its schedule or not
  std::string mensaje{};         // words of the step that the unit didn't take; empty: it took all, or an error came
  std::optional<Error> error{};  // raised in the middle; what was written stays
};

// Writes a schedule to the unit: entries, window, restart of the schedule, up to the first step that fails. Nothing is
// sent of a schedule without entries. Neither asks nor shows.
ResultadoAgenda EscribirAgenda(const FDLHorarios& horarios, const ContextoUnidad& contexto);

}  // namespace utr
