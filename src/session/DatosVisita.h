#pragma once

#include <filesystem>
#include <string>

#include "base/Fechas.h"

namespace utr {

// What the operator says of a visit: it is kept for the day of a station beside its journal, "Visita-2026-03-15.toml".
struct DatosVisita {
  std::string operador;
  std::string notas;  // may have lines
  bool operator==(const DatosVisita&) const = default;
};

// What was said of that day; nothing where there is no file. Raises kArchivo, with a sentence that names the line, for
// a file that can't be read or understood.
DatosVisita LeerDatosVisita(const std::filesystem::path& carpeta, const FechaHora& dia);

// Replaces what was said of that day, whole or not at all, and makes the folder where it isn't there yet. Raises
// kArchivo when that can't be done, and for texts that are no UTF-8.
void GuardarDatosVisita(const std::filesystem::path& carpeta, const FechaHora& dia, const DatosVisita& datos);

}  // namespace utr
