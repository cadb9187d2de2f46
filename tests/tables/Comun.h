#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/Error.h"
#include "tables/Tabla.h"

namespace utr::prueba {

inline std::int32_t NumeroDeError(const std::function<void()>& accion) {
  try {
    accion();
  } catch (const Error& e) {
    return e.Numero();
  }
  return 0;
}

// A table of text fields with these rows, posted, on its first row.
inline TablaPtr TablaDeTextos(const std::vector<std::string>& campos,
                              const std::vector<std::vector<std::string>>& filas) {
  auto tabla = std::make_shared<Tabla>();
  for (const auto& campo : campos) tabla->Append(campo, TipoCampo::kVarChar, 20);
  tabla->Open();
  for (const auto& fila : filas) {
    tabla->AddNew();
    for (std::size_t i = 0; i < fila.size(); ++i) tabla->Set(i, fila[i]);
  }
  tabla->UpdateBatch();
  tabla->MoveFirst();
  return tabla;
}

// What a walk over the rows on show sees of one field, joined by blanks.
inline std::string Recorrido(Tabla& tabla, std::string_view campo) {
  std::string texto;
  for (tabla.MoveFirst(); !tabla.Eof(); tabla.MoveNext()) texto += (texto.empty() ? "" : " ") + tabla.Texto(campo);
  return texto;
}

}  // namespace utr::prueba
