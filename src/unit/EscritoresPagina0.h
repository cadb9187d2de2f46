#pragma once

#include <cstdint>

#include "driver/Comunicador.h"
#include "services/RegistroErrores.h"

// The writers of the unit's parameters. Each reads page "0", changes its positions and writes the page back, and gives
// whether it was written. A page that couldn't be read has one item without a text: the writers of later positions
// raise kSubindice then and write nothing, that of the speed writes its item alone. Failures are logged and raised
// again.
namespace utr {

struct ContextoUnidad {
  Comunicador& comunicador;
  RegistroErrores& registro;
};

// Length of the schedule window in minutes.
bool GrabarVentanaAgenda(const ContextoUnidad& contexto, std::int16_t duracion);

// Both in tens of what the operator sees.
bool GrabarDilei(const ContextoUnidad& contexto, std::int16_t delay, std::int16_t contDelay);

// Identifier of the unit.
bool GrabarIdUTR(const ContextoUnidad& contexto, std::int16_t id);

// Code of the speed, 0 to 5: see pagina0::CodigoDeVelocidad.
bool GrabarVelocidad(const ContextoUnidad& contexto, std::int16_t codigo);

}  // namespace utr
