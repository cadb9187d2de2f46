#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "base/Archivos.h"

// File and number helpers that stand beside the driver.
namespace utr {

// The folder of a path without a closing separator ("/" or "\"); "" when the path has no folder.
std::string ExtraerDirectorio(std::string_view ruta);

// Writes the text as UTF-8, replacing the file: to a temporary name beside it first, renamed when whole, so a failure
// leaves the former file as it was. False: not written.
bool GrabarTexto(std::string_view texto, const std::filesystem::path& ruta);

// True when a file (or folder) of that path exists. Never raises.
bool ExisteArchivo(const std::filesystem::path& ruta);

// The smallest and the largest of their arguments. Raise error 5 when there are none.
double Minimo(std::initializer_list<double> valores);
double Maximo(std::initializer_list<double> valores);

}  // namespace utr
