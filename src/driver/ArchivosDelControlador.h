#pragma once

#include <filesystem>

#include "tables/Tabla.h"

// The files whose inside the driver alone knows.
namespace utr {

// The table of channels of a configuration file (.icf): the channel table in persisted form, as the central station
// writes it. Raises kArchivo for a file that can't be read or lacks a column of the channel table.
TablaPtr LeerIcf(const std::filesystem::path& ruta);

// Writes a file for manual insertion (.imp): the rows that the table shows, as a table in persisted form whose first
// field, Tipo, is 1 for data and 0 for events, then Fecha with date and time, then canal (its short code), Valor,
// Maximo, Minimo, Validacion or Codigo, Valor1, Valor2; what the source lacks is empty. Replaces a file that exists,
// whole or not at all. False, with nothing written, for another `tipo`; raises kArchivo for a file that can't be
// written.
bool EscribirImp(Tabla& tabla, const std::filesystem::path& ruta, int tipo);

}  // namespace utr
