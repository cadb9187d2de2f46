#include "retrieved/series/NumerosDeColumna.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

constexpr double kSinNumero = std::numeric_limits<double>::quiet_NaN();

bool EsCifra(char letra) {
  return letra >= '0' && letra <= '9';
}

// A plain number, as nearly all of them are; not a number for whatever wants a closer look.
double NumeroLlano(std::string_view texto) {
  const std::size_t primera = texto.starts_with('-') ? 1 : 0;
  if (texto.size() <= primera || !EsCifra(texto[primera])) return kSinNumero;
  double numero = 0;
  const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
  return error == std::errc() && fin == texto.data() + texto.size() ? numero : kSinNumero;
}

}  // namespace

double NumeroDeRegistro(std::string_view texto) {
  const double llano = NumeroLlano(Recortar(texto));
  if (!std::isnan(llano) || !EsNumerico(texto)) return llano;
  try {
    return LeerDoble(texto);
  } catch (const Error&) {  // beyond a double: nothing that could be shown to scale
    return kSinNumero;
  }
}

}  // namespace utr
