#pragma once

#include <cstdint>
#include <functional>

#include "driver/Comunicador.h"
#include "services/RegistroErrores.h"
#include "unit/PaginaUnidad.h"

// The writers of the unit's parameters. Each reads page "0", changes its positions and writes the page back, and gives
// whether it was written. All other positions go back exactly as they came, and their count never changes. On a page
// that couldn't be read, that is too short for the positions, or that is no page text, they raise kSubindice and write
// nothing: a part of it written back would be another station's page. Failures are logged and raised again.
namespace utr {

struct ContextoUnidad {
  Comunicador& comunicador;
  RegistroErrores& registro;
  // Told the page as it was read, just ahead of the write: for whoever keeps what stood there before.
  std::function<void(const PaginaUnidad& pagina)> leida{};
};

// Length of the schedule window in minutes.
bool GrabarVentanaAgenda(const ContextoUnidad& contexto, std::int16_t duracion);

// Both in tens of what the operator sees. Raises kDesborde for a value that is no byte.
bool GrabarDilei(const ContextoUnidad& contexto, std::int16_t delay, std::int16_t contDelay);

// Identifier of the unit.
bool GrabarIdUTR(const ContextoUnidad& contexto, std::int16_t id);

// Code of the speed, 0 to 5: see pagina0::CodigoDeVelocidad. A speed without a code goes as code 0.
bool GrabarVelocidad(const ContextoUnidad& contexto, std::int16_t codigo);

}  // namespace utr
