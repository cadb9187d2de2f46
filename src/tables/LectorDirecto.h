#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tables/ReceptorFilas.h"

// Rows in the recordset service's own form are read from the bytes as they stand: no tree of the file is built.
// Internal to the reader.
namespace utr {

// The rows of a file, taken out of its document.
struct Partes {
  std::string documento;  // the rest, with an empty rs:data in their place
  char* filas = nullptr;
  std::size_t largo = 0;
};

// Takes the rows out of a document that declares the service's own prefixes; nothing for any other one.
std::optional<Partes> Partir(char* datos, std::size_t largo);

// Reads them. False: something stands there that the service doesn't write, and what was taken so far is worth nothing.
// References are resolved in place.
bool LeerDirecto(const Partes& partes, ReceptorFilas& receptor);

}  // namespace utr
