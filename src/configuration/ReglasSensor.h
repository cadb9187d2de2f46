#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/CamposSensor.h"

// The rules that bind the values of one channel. They read texts by their leading number, rounded half to even to three
// decimals where they are engineering units, and never change a value: what they force is told as data, and whoever
// accepts the values applies it.
namespace utr {

// A broken rule: the line that says so and the fields that take part, the wrong one first.
struct ReparoSensor {
  std::string texto;
  std::vector<CampoSensor> campos;
};

// A field that takes a text.
struct ValorForzado {
  CampoSensor campo;
  std::string texto;
  bool operator==(const ValorForzado&) const = default;
};

void Aplicar(const std::vector<ValorForzado>& forzados, ValoresSensor& valores);

struct EntradaReglas {
  std::int16_t tipo = 0;
  std::int16_t canal = 0;
  ValoresSensor valores;
  // The texts as they were loaded and what can be edited now: only a text that was changed in an enabled field must be
  // a number. Without `habilitado` none is judged.
  ValoresSensor cargados{};
  std::function<bool(CampoSensor)> habilitado{};
};

struct ResultadoReglas {
  std::vector<ReparoSensor> reparos;   // in the order of the rules
  std::vector<ValorForzado> forzados;  // by the steps that ran, in order
};

// The steps. Each reports all its broken rules.
void ValidarTiempos(const EntradaReglas& entrada, ResultadoReglas& resultado);
void ValidarValidaciones(const EntradaReglas& entrada, ResultadoReglas& resultado);
void ValidarAlarmas(const EntradaReglas& entrada, ResultadoReglas& resultado);
void ValidarCanalPluviometro(const EntradaReglas& entrada, ResultadoReglas& resultado);
void ValidarNumeros(const EntradaReglas& entrada, ResultadoReglas& resultado);

// The whole test, as accepting makes it: step by step up to the first that reports.
ResultadoReglas ValidarDatos(const EntradaReglas& entrada);

// All steps, for marks at the fields while they are edited.
ResultadoReglas ReparosVivos(const EntradaReglas& entrada);

// "Error en los valores ingresados" and the lines, each behind a line break.
std::string MensajeDeReparos(const std::vector<ReparoSensor>& reparos);

// The value of `b` isn't smaller than that of `a` and a whole multiple of it. False for an `a` of 0.
bool EsMultiplo(std::string_view a, std::string_view b);

// A sign, digits and one point, with a digit at least; blanks around it don't count.
bool EsNumeroSimple(std::string_view texto);

}  // namespace utr
