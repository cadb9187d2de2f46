#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>

namespace utr {

// Runs `escribir` on a stream over a temporary file beside `ruta` and renames it over `ruta` when everything was
// written and flushed; else removes it and raises kArchivo, leaving the former file as it was. Every exporter goes
// through it.
void EscribirEntero(const std::filesystem::path& ruta, const std::function<void(std::ostream&)>& escribir);

}  // namespace utr
