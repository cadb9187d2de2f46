#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/Fechas.h"
#include "services/Diario.h"

// The journal of a visit as it lies on the disk: one file for each day of a station, "Bitacora-2026-03-15.csv" in its
// folder. RFC 4180 in UTF-8: a head line that tells the version, then one record for each entry: its number in the
// file, moment, identifier of the station, what was at the other end, what was done, what stood there before, what was
// written, how it ended.
namespace utr {

inline constexpr int kVersionBitacora = 1;

// The head line, and the record of an entry with its number, each with its end of line. Texts are quoted always, so
// that each comes back exactly as it was.
std::string CabeceraBitacora();
std::string RenglonBitacora(std::size_t numero, const Asiento& asiento);

// What a file gave. Their `clase` isn't kept there.
struct BitacoraLeida {
  std::vector<Asiento> asientos;
  std::size_t ultimo = 0;   // number of the last record
  std::uint64_t largo = 0;  // of the file, in bytes
  std::string reparo{};     // what couldn't be understood, with its line; empty: all is well and the file can go on
};

// Reads a file as far as it can be understood; one without a byte is a journal without entries. Raises kArchivo for one
// that can't be read, is no journal, or is of another version.
BitacoraLeida LeerBitacora(const std::filesystem::path& archivo);

// The name of the file of a day; `orden` from 2 on: one more of that day, since none of the former ones could go on.
std::string NombreBitacora(const FechaHora& dia, int orden = 1);

// The files of a day of a station.
struct DiaDeBitacora {
  FechaHora dia;                                // at midnight
  std::vector<std::filesystem::path> archivos;  // in their order
};

// The days of a folder that have journals, newest first; none for a folder that isn't there.
std::vector<DiaDeBitacora> DiasDeBitacora(const std::filesystem::path& carpeta);

}  // namespace utr
