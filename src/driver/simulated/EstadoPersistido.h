#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "driver/simulated/Estacion.h"

namespace utr::simulada {

// What is kept between runs: the unit, and the state of the scenario that it took over last.
struct EstadoPersistido {
  Estacion estacion;
  std::map<std::string, std::string> aplicado;
};

// Writes the file whole under a temporary name and renames it. Raises kArchivo.
void GuardarEstado(const std::filesystem::path& ruta, EstadoPersistido& estado);

// Reads it into a fresh `estado`. Raises kArchivo, with the reason in Spanish, for a file that is missing, damaged or
// of another version; `estado` is of no use then.
void CargarEstado(const std::filesystem::path& ruta, EstadoPersistido& estado);

}  // namespace utr::simulada
