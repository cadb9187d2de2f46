#pragma once

#include <filesystem>

namespace utr {

// Where the practice station of this machine keeps itself when nobody says otherwise, and where its lines are found as
// COM and a number: what the environment variable UTR_ESTACION names, else utr-estacion in the user's folder of states
// (XDG_STATE_HOME, ~/.local/state). Empty for a user without a home.
std::filesystem::path CarpetaDeEstacion();

}  // namespace utr
