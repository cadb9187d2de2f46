#pragma once

#include <string>

#include "unit/PaginaUnidad.h"

// What page "0" of the unit holds, as the operator reads it. The page must reach as far as the parameter: kSubindice is
// raised otherwise.
namespace utr {

// "9600"; "código 7" where the code stands for no speed.
std::string VelocidadEnPalabras(const PaginaUnidad& pagina);

// "120".
std::string IdentificadorEnPalabras(const PaginaUnidad& pagina);

// "300 min."
std::string VentanaEnPalabras(const PaginaUnidad& pagina);

}  // namespace utr
