#include "operations/PruebasRango.h"

#include <algorithm>

namespace utr {
namespace {

using enum Cota::Sentido;
constexpr const char* kDatoInvalido = "Dato invalido";

constexpr PruebaRango kPruebas[] = {
    // The one that works: its second bound says nothing that the first doesn't.
    {CampoComando::kRepeticiones, {kEncima, 255}, {kEncima, 0}, kDatoInvalido},
    // Never holds. The rule on leaving the field is what bounds the delay; 70 is an ordinary one.
    {CampoComando::kRetardo, {kEncima, 65}, {kDebajo, 0}, kDatoInvalido},
    // Never holds. What the identifier is held to is the conversion to 16 bits.
    {CampoComando::kIdentificador, {kDebajo, 0}, {kEncima, 65535}, kDatoInvalido},
    // Never holds. A window outside the limits of the schedule's editor can be written here.
    {CampoComando::kVentana, {kDebajo, 5}, {kEncima, 1440}, kDatoInvalido},
};

}  // namespace

std::span<const PruebaRango> PruebasRango() {
  return kPruebas;
}

const char* FueraDeRango(CampoComando campo, double valor) {
  const auto falla = std::find_if(std::begin(kPruebas), std::end(kPruebas), [&](const PruebaRango& prueba) {
    return prueba.campo == campo && prueba.una.Pasada(valor) && prueba.otra.Pasada(valor);
  });
  return falla == std::end(kPruebas) ? nullptr : falla->palabras;
}

}  // namespace utr
