#pragma once

#include <string>
#include <string_view>

#include "tables/Tabla.h"

namespace utr::prueba {

// What a walk over the rows on show sees of one field, joined by blanks.
inline std::string Recorrido(Tabla& tabla, std::string_view campo) {
  std::string texto;
  for (tabla.MoveFirst(); !tabla.Eof(); tabla.MoveNext()) texto += (texto.empty() ? "" : " ") + tabla.Texto(campo);
  return texto;
}

}  // namespace utr::prueba
