#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/ModRTU.h"

namespace utr {

// "COM 1" to "COM 5", without system names.
std::vector<PuertoSerie> PuertosFijos();

// The same with the system names of those that the list has, as far as it can be had, and behind them those of the list
// with a number from 6 to 10: a device is never out of reach.
std::vector<PuertoSerie> PuertosFijos(ListaDePuertos& lista);

// The ports of the list, or the fixed ones where it is empty or fails; none above 10.
std::vector<PuertoSerie> PuertosOfrecidos(ListaDePuertos& lista);

// "COM 3".
std::string TextoPuerto(int numero);

}  // namespace utr
