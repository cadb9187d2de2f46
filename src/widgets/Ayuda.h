#pragma once

#include <filesystem>

class QPushButton;

namespace utr {

// Opens a help file with whatever the system opens such files with; nothing where there is no such file.
void AbrirAyuda(const std::filesystem::path& archivo);

// Has the help button of a window open that file, and F1 press it there. It is off while there is no such file.
void ServirAyuda(QPushButton& boton, const std::filesystem::path& archivo);

// There is such a file.
bool HayAyuda(const std::filesystem::path& archivo);

}  // namespace utr
