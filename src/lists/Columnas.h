#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace utr {

// How the value of a field is shown in a list.
enum class Presentacion : std::uint8_t {
  kTalCual,      // the text of the value; null is an empty text
  kGuionSiNulo,  // "-" when null
  kNoSi,         // "No" where the value equals 0, "Si" otherwise
  kFuncion,      // what `funcion` makes of the text of the value
  kGuion,        // "-" always; the table needn't have the field
};

// What a click on the title orders by. Values that can't be read as their kind stand ahead of those that can. Equal
// dates are ordered by the times in the column right behind theirs, where there is one.
enum class ClaseOrden : std::uint8_t { kTexto, kNumero, kFecha, kHora };

// One column of a list: its title, the field of the table that it shows (found without regard to case) and how.
struct ColumnaLista {
  std::string titulo;
  std::string campo;
  Presentacion presentacion = Presentacion::kTalCual;
  ClaseOrden orden = ClaseOrden::kTexto;
  std::string (*funcion)(std::string_view valor) = nullptr;  // for kFuncion alone; pure
  int lugar = -1;  // position of the field, for tables that may repeat a name; -1: the name tells it
};

using Columnas = std::vector<ColumnaLista>;

}  // namespace utr
