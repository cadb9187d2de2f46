#pragma once

#include "driver/link/protocol/Ordenes.h"
#include "driver/simulated/scenario/EstacionViva.h"
#include "driver/simulated/station/Borrador.h"

namespace utr::simulada {

// Carries an order out on the unit. kNinguno: done; any other reason: refused, with nothing changed but the draft,
// which an order that takes it empties in any case. `ahora` in milliseconds. It neither saves nor restarts the line.
protocolo::Motivo Ejecutar(EstacionViva& viva, Borrador& borrador, const protocolo::Orden& orden, std::int64_t ahora);

// The order takes longer than its answer: an erasure.
bool EsLarga(protocolo::Codigo codigo);

// The order restarts the unit.
bool EsReinicio(protocolo::Codigo codigo);

}  // namespace utr::simulada
