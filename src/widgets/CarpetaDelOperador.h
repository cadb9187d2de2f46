#pragma once

#include <filesystem>

namespace utr {

// Where the operator's own files are proposed: in the folder that is told, unless it is the hidden one of an installed
// program (EsDeDatosOcultos); then among his documents, or in his home where there is no such folder.
std::filesystem::path CarpetaDelOperador(const std::filesystem::path& carpeta);

// His documents, or his home.
std::filesystem::path DocumentosDelOperador();

}  // namespace utr
