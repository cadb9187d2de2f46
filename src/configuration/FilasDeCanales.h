#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "configuration/ConfigColl.h"
#include "tables/Tabla.h"

// Which rows of a channel table become channels.
namespace utr {

// The channel number that a text of the column Canal stands for, by its leading number: a whole number above 0 (up to
// 16 bits), whatever its form ("07", " 7 "). Nothing for any other text.
std::optional<std::int16_t> NumeroDeFila(std::string_view canal);

enum class FilasDeCanales : std::uint8_t {
  kTodas,
  kHabilitadas,  // those with value 1 of Flags
};

// Raises kCampo for a table that lacks a column of the channel table, Modificado apart: the channels made of it would
// hold nothing there, and writing them would take the value from the unit.
void ExigirColumnasDeCanal(const Tabla& tabla);

// The channels of a table, in its own row order whatever its filter and sort, each under its number; the first row of
// a channel has the last word, also about whether it is taken. The table is left as it is. Raises kCampo for a table
// without the columns that decide.
ConfigColl ColeccionDe(const Tabla& tabla, FilasDeCanales cuales);

}  // namespace utr
