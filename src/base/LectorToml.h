#pragma once

#define TOML_EXCEPTIONS 1
#include <toml++/toml.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace utr {

// A TOML text as it was read, or where and why it can't be.
struct TomlLeido {
  toml::table raiz;
  std::size_t linea = 0;  // from 1 on, of what isn't understood; 0: all is
  std::string motivo;     // the library's, in its own words; may be empty

  bool Bien() const noexcept { return linea == 0; }
  // "línea 3: no se entiende"
  std::string Falla() const { return "línea " + std::to_string(linea) + ": no se entiende"; }
};

// Reads any text, whatever it holds.
TomlLeido LeerToml(std::string_view texto);

}  // namespace utr
