#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "driver/simulated/scenario/Operaciones.h"
#include "tables/Tabla.h"

namespace utr::simulada {

// What goes wrong. The first five take the place of the answer; the delay comes ahead of it, and old values are read
// instead of the present ones; the others spoil its data.
enum class TipoFalla : std::uint8_t {
  kFalso,            // a truth value of false; of LeerEstado, a negative state
  kVacio,            // an empty text
  kNinguna,          // no table
  kSinFilas,         // the table without its rows
  kError,            // an error is raised
  kDemora,           // the call takes longer
  kAtraso,           // present values are those of a while ago
  kCampoAusente,     // the table lacks a field
  kNumeroComoTexto,  // a numeric field is a text field
  kTextoComoNumero,  // a text field is a numeric field
  kNoNumero,         // a value that isn't a number
  kTramaCorta,       // only the first rows come
  kFilaRepetida,     // a row comes twice
  kMarcaConHora,     // rows that carry the date carry a time too
  kFechaInvalida,    // dates that aren't dates
  kTexto,            // another text
  kPaginaDaniada,    // a flash page with flipped bits
  kPaginaSinFecha,   // a flash page without a date of its own
  kPaginaBorrada,    // a flash page with nothing in it
};

// One fault of a scenario: which operation, what, how often, and under which conditions.
struct Falla {
  Op operacion = Op::kLeerPagina;
  TipoFalla tipo = TipoFalla::kFalso;
  int despues_de = 0;  // how many of the calls that meet it go well first
  int veces = -1;      // how many of the calls that meet it fail then; -1: all
  std::optional<int> pista{}, pagina{}, puerto{}, velocidad{}, canal{};
  std::optional<int> hasta_pagina{};  // the last one of a run of pages that `pagina` begins

  std::int32_t numero = 5;  // kError
  std::string origen = "UTR simulada";
  std::string texto = "Falla simulada";  // kError: its description; kTexto: the answer
  bool respuesta_perdida = false;        // an answer that fails: the operation was carried out all the same
  double segundos = 1;                   // kDemora: of waiting; kAtraso: how old the values are
  bool bloquea = false;                  // kDemora: no events of the interface run in the whole call
  std::string campo{};                   // the field that goes wrong
  std::string valor = "abc";             // what it holds then
  std::optional<int> fila{};             // the one row that goes wrong, from 1; without it all
  int cuantos = 8;                       // kTramaCorta: rows; kPaginaDaniada: bits
};

// The words of the faults as a scenario writes them, and whether a fault suits what an operation gives.
std::optional<TipoFalla> BuscarTipoFalla(std::string_view nombre);
bool Conviene(TipoFalla tipo, Op operacion);

// Whether a key of a scenario means anything for this fault. Those that say when it happens mean something for all.
bool Admite(TipoFalla tipo, std::string_view clave);

// Of a fault in a field: why the tables that the operation gives have no such field to go wrong, in Spanish; empty when
// they have. An empty `campo` is looked up as "Fecha" where the fault is of dates.
std::string ReparoDeCampo(const Falla& falla);

// What a call is about, as far as its operation has it: a condition on the rest would never be met. Port and speed
// every call has.
struct Asunto {
  bool pista = false, pagina = false, canal = false;
};
Asunto AsuntoDe(Op operacion);

// What a call is about, for the conditions.
struct Contexto {
  std::optional<int> pista{}, pagina{}, canal{};
  int puerto = 0;
  int velocidad = 0;
};

// The faults of the scenario in force, with their counts.
class Fallas {
 public:
  // What befalls one call.
  struct Efecto {
    double demora = 0;               // seconds
    bool bloquea = false;            // no events run meanwhile, nor in the rest of the call
    double atraso = 0;               // seconds by which present values are old
    std::optional<Falla> respuesta;  // takes the place of the answer
    std::vector<Falla> de_datos;     // spoil it, in the order of the scenario
  };

  // Other faults from now on; counts begin anew.
  void Poner(std::vector<Falla> fallas);

  bool Ninguna(Op op) const { return hay_[static_cast<std::size_t>(op)] == 0; }

  // The faults that this call meets; each that counts is counted.
  Efecto Para(Op op, const Contexto& contexto);

 private:
  static void Sumar(Efecto& efecto, const Falla& falla);

  std::vector<Falla> fallas_;
  std::array<int, kOperaciones> hay_{};
};

// The table as a data fault leaves it: a new one. Faults that aren't of tables leave it as it is.
TablaPtr Estropear(const Falla& falla, Tabla& tabla);

// The same for a text: a flash page or a date.
std::string Estropear(const Falla& falla, std::string texto);

}  // namespace utr::simulada
