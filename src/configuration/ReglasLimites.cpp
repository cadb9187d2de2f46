#include <algorithm>
#include <cmath>
#include <span>
#include <string>

#include "base/Numeros.h"
#include "configuration/CalculosSensor.h"
#include "configuration/ReglasSensor.h"

// The rules of validation limits and alarms.
namespace utr {
namespace {

using C = CampoSensor;

// The numbers that the limits are held against. Sums are compared as the texts that they give, so that a value which
// the program itself wrote as such a sum passes.
struct Escala {
  explicit Escala(const ValoresSensor& valores)
      : rango_max(ATresDecimales(valores.Numero(C::kRangoMax))),
        rango_min(ATresDecimales(valores.Numero(C::kRangoMin))),
        referencia(valores.Numero(C::kNivRefLmn)) {}

  double Mayor() const { return AQuinceCifras(std::max(rango_max, rango_min) + referencia); }
  double Menor() const { return AQuinceCifras(std::min(rango_max, rango_min) + referencia); }
  double Amplitud() const { return AQuinceCifras(std::fabs(rango_max - rango_min)); }

  double rango_max;
  double rango_min;
  double referencia;
};

class Revision {
 public:
  Revision(const EntradaReglas& entrada, ResultadoReglas& resultado)
      : valores_(entrada.valores), resultado_(resultado), escala_(entrada.valores) {}

  double Numero(C campo) const { return ATresDecimales(valores_.Numero(campo)); }
  const Escala& LaEscala() const { return escala_; }

  void Exigir(bool cumple, std::vector<C> campos, std::string texto) {
    if (!cumple) resultado_.reparos.push_back({std::move(texto), std::move(campos)});
  }
  void Forzar(C campo, std::string texto) { resultado_.forzados.push_back({campo, std::move(texto)}); }
  void ForzarComo(C campo, C modelo) { Forzar(campo, valores_[modelo]); }

  // The value lies within the range, moved by the reference level.
  void EnElRango(C campo, const std::string& que, const std::string& mayor, const std::string& menor) {
    const std::vector<C> campos{campo, C::kRangoMax, C::kRangoMin, C::kNivRefLmn};
    Exigir(Numero(campo) <= escala_.Mayor(), campos, que + " debe ser menor o igual al " + mayor);
    Exigir(Numero(campo) >= escala_.Menor(), campos, que + " debe ser mayor o igual al " + menor);
  }
  // It isn't larger than the range is wide.
  void EnLaAmplitud(C campo, const std::string& texto) {
    Exigir(Numero(campo) <= escala_.Amplitud(), {campo, C::kRangoMax, C::kRangoMin}, texto);
  }
  void MayorQueCero(C campo, const char* cero) {
    Exigir(Numero(campo) > 0, {campo}, std::string("El valor de ") + DatosDe(campo).rotulo + " debe ser mayor " + cero);
  }
  void NoMenor(C mayor, C menor) {
    Exigir(Numero(menor) <= Numero(mayor), {menor, mayor},
           std::string("El valor de ") + DatosDe(mayor).rotulo + " debe ser mayor que el valor de " +
               DatosDe(menor).rotulo);
  }

 private:
  const ValoresSensor& valores_;
  ResultadoReglas& resultado_;
  Escala escala_;
};

void LimitesDeRango(Revision& revision) {
  const std::string cola = " entre el Rango Maximo o el Rango Minimo mas el nivel de refencia";
  for (const auto& [campo, nombre] : {std::pair(C::kMaxValid, "MaxValid"), std::pair(C::kMinValid, "MinValid")}) {
    revision.EnElRango(campo, std::string("El valor de ") + nombre, "valor maximo" + cola, "valor mínimo" + cola);
  }
}

void VariacionesDeNivel(Revision& revision) {
  for (const auto& [campo, nombre] : {std::pair(C::kMaxSubVal, "MaxSubVal"), std::pair(C::kMaxBajVal, "MaxBajVal"),
                                      std::pair(C::kMaxSubTx, "MaxSubTx"), std::pair(C::kMaxBajTx, "MaxBajTx")}) {
    revision.EnLaAmplitud(campo, std::string("El valor de ") + nombre +
                                     " debe ser menor o igual al valor absoluto de (Rango Maximo - Rango Minimo)");
  }
}

void AlarmaEnElRango(Revision& revision, C campo, const char* cual) {
  const std::string cola = " entre el Rango Maximo y el Rango Minimo mas el Nivel de Referencia";
  revision.EnElRango(campo, std::string("El valor de la alarma de ") + cual, "valor máximo" + cola,
                     "valor mínimo" + cola);
}

void AlarmasDeRango(Revision& revision) {
  AlarmaEnElRango(revision, C::kAMax, "máxima");
  AlarmaEnElRango(revision, C::kAMin, "mínima");
  for (const auto& [campo, cual] : {std::pair(C::kAlSub, "Ascendente"), std::pair(C::kAlBaj, "Descendente")}) {
    revision.EnLaAmplitud(campo,
                          std::string("El valor de la alarma de Variación ") + cual +
                              " debe ser menor o igual al valor absoluto entre el Rango Maximo y el Rango Minimo");
  }
}

void AlarmasDeViento(Revision& revision) {
  const Escala& escala = revision.LaEscala();
  const auto linea = [](C campo, const char* cola) {
    return std::string("El valor de ") + DatosDe(campo).rotulo + cola;
  };
  revision.Exigir(AQuinceCifras(revision.Numero(C::kAMax) - escala.referencia) <= escala.rango_max,
                  {C::kAMax, C::kRangoMax, C::kNivRefLmn},
                  linea(C::kAMax, " menos el nivel de referncia debe ser menor o igual que el rango maximo"));
  // The words say "menor" for a test of below: they are the system's own.
  revision.Exigir(AQuinceCifras(revision.Numero(C::kAMin) - escala.referencia) >= escala.rango_min,
                  {C::kAMin, C::kRangoMin, C::kNivRefLmn},
                  linea(C::kAMin, " menos el nivel de referncia debe ser menor o igual que el rango mínimo"));
  revision.NoMenor(C::kAlMaxPico, C::kAlMinPico);
  revision.NoMenor(C::kAMax, C::kAMin);
  for (const C campo : {C::kAlSub, C::kAlBaj, C::kAlMaxPico, C::kAlMinPico}) revision.MayorQueCero(campo, "a cero");
}

}  // namespace

void ValidarValidaciones(const EntradaReglas& entrada, ResultadoReglas& resultado) {
  Revision revision(entrada, resultado);
  if (entrada.tipo == 5) {
    for (const C campo : {C::kMaxValid, C::kMaxSubTx}) revision.MayorQueCero(campo, "que cero");
  }
  if (entrada.tipo == 0 || entrada.tipo == 1) LimitesDeRango(revision);
  if (entrada.tipo == 0) VariacionesDeNivel(revision);
  if (entrada.tipo == 1) {
    for (const C campo : {C::kMaxSubVal, C::kMaxBajVal, C::kMaxBajTx}) revision.Forzar(campo, "0");
  }
  if (entrada.tipo == 7) return;
  const double bits = entrada.valores.Numero(C::kBits);
  revision.Exigir(bits <= 16, {C::kBits}, "La cantidad de Bits a Enviar no puede ser superior a 16");
  revision.Exigir(bits != 0, {C::kBits},
                  "La cantidad de Bits a Enviar no puede ser 0, verifique los parametros de escalado");
}

void ValidarAlarmas(const EntradaReglas& entrada, ResultadoReglas& resultado) {
  Revision revision(entrada, resultado);
  switch (entrada.tipo) {
    case 0:
      AlarmasDeRango(revision);
      revision.ForzarComo(C::kAlMaxPico, C::kAMax);
      revision.ForzarComo(C::kAlMinPico, C::kAMin);
      return;
    case 1:
      AlarmasDeRango(revision);
      AlarmaEnElRango(revision, C::kAlMaxPico, "pico máximo");
      AlarmaEnElRango(revision, C::kAlMinPico, "pico mínimo");
      return;
    case 2:
    case 3:
      return AlarmasDeViento(revision);
    case 4:
      return revision.NoMenor(C::kAMax, C::kAMin);
    default:
      return;
  }
}

}  // namespace utr
