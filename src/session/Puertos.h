#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/ModRTU.h"

namespace utr {

// Gives each system name its number: "COM3" is 3, any other name takes the lowest number that is free, in the natural
// order of the names ("ttyS2" ahead of "ttyS10"). Numbers above 10 are left out, since they mean IP. Ordered by number.
std::vector<PuertoSerie> NumerarPuertos(std::vector<std::string> nombres);

// "COM 1" to "COM 5", without system names.
std::vector<PuertoSerie> PuertosFijos();

// The ports of the list, or the fixed ones where it is empty or fails; none above 10.
std::vector<PuertoSerie> PuertosOfrecidos(ListaDePuertos& lista);

// "COM 3".
std::string TextoPuerto(int numero);

}  // namespace utr
