#pragma once

#include <filesystem>

namespace utr {

// Opens a help file with whatever the system opens such files with; nothing where there is no such file.
void AbrirAyuda(const std::filesystem::path& archivo);

}  // namespace utr
