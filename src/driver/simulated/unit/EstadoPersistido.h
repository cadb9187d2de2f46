#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "driver/simulated/unit/Estacion.h"

namespace utr::simulada {

// What became of an order that came over a wire; `huella` tells its contents from others.
struct OrdenGuardada {
  std::uint32_t sesion = 0;
  std::uint16_t secuencia = 0;
  std::uint32_t huella = 0;
  std::uint16_t estado = 0;
  std::uint16_t motivo = 0;
};

// What is kept between runs: the unit, the state of the scenario that it took over last, and that scenario's text, by
// which the station goes on where the file says nothing that can be understood.
struct EstadoPersistido {
  Estacion estacion;
  std::map<std::string, std::string> aplicado;
  std::string escenario;
  std::vector<OrdenGuardada> ordenes;  // the newest first
};

// Writes the file, whole or not at all. Raises kArchivo.
void GuardarEstado(const std::filesystem::path& ruta, EstadoPersistido& estado);

// Reads it into a fresh `estado`. False, with nothing read: nothing has that name. Raises kArchivo, with the reason in
// Spanish, for a file that can't be read, is damaged or somebody else's; `estado` is of no use then.
bool CargarEstado(const std::filesystem::path& ruta, EstadoPersistido& estado);

// Gives the file another name beside it, one that is free, and returns that name. Raises kArchivo.
std::string ApartarEstado(const std::filesystem::path& ruta);

}  // namespace utr::simulada
