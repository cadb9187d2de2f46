#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "services/RegistroErrores.h"

namespace utr {

// The whole content of a file of the program (ArchivoDelPrograma), byte for byte; empty when there is no such file. A
// file that can't be read is logged and raised.
std::string LeerArchivoPrograma(RegistroErrores& registro, const std::filesystem::path& carpeta,
                                std::string_view nombre);

// The same for a whole path.
std::string LeerArchivoBinario(RegistroErrores& registro, const std::filesystem::path& ruta);

}  // namespace utr
