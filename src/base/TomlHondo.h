#pragma once

#include <cstddef>
#include <string_view>

namespace utr {

// The number, from 1 on, of the first line of a TOML text with a name of thousands of parts ("a.a.a..."), which the
// library would follow until the program's stack is used up; 0: there is none, and the text may be parsed.
inline std::size_t LineaDemasiadoHonda(std::string_view texto) {
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

}  // namespace utr
