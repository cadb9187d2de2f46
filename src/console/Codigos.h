#pragma once

#include <cstdint>

#include "base/Error.h"

namespace utr::consola {

// How the program ends.
enum class Codigo : std::uint8_t {
  kHecho = 0,
  kSinDatos = 1,
  kArgumentos = 2,
  kEnlace = 3,
  kSinRespuesta = 4,  // no answer, or a refusal
  kArchivo = 5,
};

// What was being done when something failed.
enum class Fase : std::uint8_t { kArgumentos, kEnlace, kConversacion, kArchivos };

// The code that a failure ends with. Its number tells it where it can, else what was being done.
Codigo CodigoDe(const Error& falla, Fase fase);

// A failure in one line, with what the system said of it.
std::string EnUnRenglon(const Error& falla);

}  // namespace utr::consola
