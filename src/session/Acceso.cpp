#include "session/Acceso.h"

namespace utr {
namespace {

constexpr int kIntentos = 3;

}  // namespace

Acceso::Resultado Acceso::Probar(std::string_view intento) {
  if (intento == clave_) return Resultado::kAceptada;
  return ++fallidos_ < kIntentos ? Resultado::kReintentar : Resultado::kAgotada;
}

bool PuedeCambiarClave(std::string_view actual, std::string_view original) {
  return !actual.empty() && actual == original;
}

bool ClaveNuevaValida(std::string_view nueva, std::string_view repetida) {
  return !nueva.empty() && nueva == repetida;
}

}  // namespace utr
