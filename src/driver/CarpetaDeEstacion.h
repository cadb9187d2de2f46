#pragma once

#include <filesystem>

#include "base/Candado.h"

namespace utr {

// Where the practice station of this machine keeps itself when nobody says otherwise, and where its lines are found as
// COM and a number: what the environment variable UTR_ESTACION names, else utr-estacion in the user's folder of states
// (XDG_STATE_HOME, ~/.local/state). Empty for a user without a home.
std::filesystem::path CarpetaDeEstacion();

// The lock that a station holds on its folder while it runs.
class CandadoDeCarpeta {
 public:
  // Takes it, in a folder that is made when need be. Raises kArchivo when another station has it or the folder can't be
  // written.
  explicit CandadoDeCarpeta(const std::filesystem::path& carpeta);

 private:
  Candado candado_;
};

// A station had this folder and doesn't run any more. Lines that were left in it lead to nobody, or to a terminal that
// was given to somebody else since.
bool EstacionDetenida(const std::filesystem::path& carpeta);

}  // namespace utr
