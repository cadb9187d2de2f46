#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "configuration/ReglasSensor.h"

// The arithmetic of one channel: what is derived from the scale, and what follows a change of another field. Nothing
// here changes a value; each gives the fields that take a text.
namespace utr {

// Rounded half to even to three decimals, on the 15-digit decimal text of the number.
double ATresDecimales(double numero);
// The number that its text of 15 digits tells.
double AQuinceCifras(double numero);

// The bits that the range takes at that resolution; nothing where the ends are equal or the resolution isn't above 0.
// May be negative for a range smaller than the resolution.
std::optional<std::int16_t> CalcularBits(double rango_max, double rango_min, double resolucion);

// The divisors of a number from 1 to itself, ascending.
std::vector<std::int16_t> Divisores(std::int16_t numero);

// The text of the range's width, and the code of its slope: "55" where the lower end is above the upper one.
std::string TextoRango(const ValoresSensor& valores);
std::string CodigoPendiente(const ValoresSensor& valores);

// What follows a typed RangoMin or RangoMax: limits and alarms at that end take its text, and those of the width take
// the width of the ends as whole numbers. A width beyond 16 bits leaves these.
std::vector<ValorForzado> SeguirRango(CampoSensor extremo, const ValoresSensor& valores);

// What follows a typed reference level: limits and alarms move by as much.
std::vector<ValorForzado> SeguirNivel(std::int16_t tipo, const std::string& anterior, const ValoresSensor& valores);

// Bits of the scale at the resolution's text; nothing where it can't be told.
std::optional<ValorForzado> SeguirEscala(const ValoresSensor& valores, const std::string& resolucion);

// What the stepper of a time may reach: lowest, highest and step. That of TRead walks positions in the divisors of a
// day, counted from 1.
struct LimitesPaso {
  double minimo = 1;
  double maximo = 1;
  double paso = 1;
  // The legal value that is nearest to `valor`.
  double Cercano(double valor) const;
  // The next one above (1) or below (-1) it; `valor` itself where there is none.
  double Tras(double valor, int hacia) const;
};
LimitesPaso LimitesDe(CampoSensor tiempo, const ValoresSensor& valores);

// The text that a step of a stepper puts into a field: the next legal value above (`hacia` 1) or below (-1) the one
// that stands there, within the limits. Times, and the gauge's constant in hundredths. Nothing where there is no step
// to do.
std::optional<std::string> Pasar(CampoSensor campo, int hacia, const ValoresSensor& valores);

// Whether a text is one of the reading periods that the stepper of TRead walks.
bool DivideElDia(const std::string& minutos);

// The times that must move behind a change of TRead, so that each stays where its stepper may be.
std::vector<ValorForzado> AjustarTiempos(const ValoresSensor& valores,
                                         const std::function<bool(CampoSensor)>& habilitado);

}  // namespace utr
