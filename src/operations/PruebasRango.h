#pragma once

#include <span>

// The range tests of the direct commands: two bounds that both have to be passed.
namespace utr {

enum class CampoComando { kRepeticiones, kRetardo, kIdentificador, kVentana };

struct Cota {
  enum class Sentido { kDebajo, kEncima } sentido;
  double limite;

  constexpr bool Pasada(double valor) const { return sentido == Sentido::kDebajo ? valor < limite : valor > limite; }
};

struct PruebaRango {
  CampoComando campo;
  Cota una;
  Cota otra;  // joined by "and"
  const char* palabras;
};
std::span<const PruebaRango> PruebasRango();

// The words of the test that a value of that field fails; null where it fails none.
const char* FueraDeRango(CampoComando campo, double valor);

}  // namespace utr
