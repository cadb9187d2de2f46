#include "base/LectorToml.h"

#include <algorithm>

namespace utr {

namespace {

// The first line with a name of thousands of parts ("a.a.a..."), which the library would follow until the program's
// stack is used up; 0: there is none.
std::size_t LineaDemasiadoHonda(std::string_view texto) {
  constexpr std::size_t kPartes = 4000;
  std::size_t linea = 1;
  std::size_t puntos = 0;
  for (const char c : texto) {
    if (c == '.' && ++puntos > kPartes) return linea;
    if (std::string_view("=,[]{}#\n").find(c) != std::string_view::npos) puntos = 0;
    if (c == '\n') ++linea;
  }
  return 0;
}

}  // namespace

TomlLeido LeerToml(std::string_view texto) {
  TomlLeido leido;
  leido.linea = LineaDemasiadoHonda(texto);
  if (!leido.Bien()) return leido;
  try {
    leido.raiz = toml::parse(texto);
  } catch (const toml::parse_error& falla) {
    leido.linea = std::max<std::size_t>(falla.source().begin.line, 1);
    leido.motivo = falla.description();
  }
  return leido;
}

}  // namespace utr
