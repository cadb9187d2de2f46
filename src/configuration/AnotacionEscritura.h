#pragma once

#include <vector>

#include "base/Fechas.h"
#include "configuration/CambiosConfiguracion.h"
#include "configuration/Escritura.h"
#include "services/Diario.h"

namespace utr {

// What the journal is told of a write of channels.
struct EscrituraHecha {
  ModoEscritura modo = ModoEscritura::kConfiguracion;
  std::vector<CambioConfiguracion> cambios;  // against what was read from the unit, as it stood ahead of the write
  bool tras_otra = false;                    // an earlier write broke off since that read
  const ResultadoEscritura& resultado;
};

// One entry for the write as a whole, and one behind it for each field that differs, in words, with its end: what stood
// behind the step that failed didn't reach the unit.
void AnotarEscritura(Diario::Tarea& tarea, const FechaHora& momento, const EscrituraHecha& escritura);

}  // namespace utr
