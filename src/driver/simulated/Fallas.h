#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "driver/simulated/Operaciones.h"
#include "tables/Tabla.h"

namespace utr::simulada {

// What goes wrong. The first five take the place of the answer; the delay comes ahead of it; the others spoil its data.
enum class TipoFalla : std::uint8_t {
  kFalso,            // a truth value of false; of LeerEstado, a negative state
  kVacio,            // an empty text
  kNinguna,          // no table
  kSinFilas,         // the table without its rows
  kError,            // an error is raised
  kDemora,           // the call takes longer
  kCampoAusente,     // the table lacks a field
  kNumeroComoTexto,  // a numeric field is a text field
  kNoNumero,         // a value that isn't a number
  kTramaCorta,       // only the first rows come
  kFechaInvalida,    // dates that aren't dates
  kPaginaDaniada,    // a flash page with flipped bits
  kPaginaSinFecha,   // a flash page without a date of its own
};

// One fault of a scenario: which operation, what, how often, and under which conditions.
struct Falla {
  Op operacion = Op::kLeerPagina;
  TipoFalla tipo = TipoFalla::kFalso;
  int veces = -1;  // how many of the calls that meet it fail; -1: all
  std::optional<int> pista, pagina, puerto, velocidad, canal;

  std::int32_t numero = 5;  // kError
  std::string origen = "UTR simulada";
  std::string texto = "Falla simulada";
  double segundos = 1;        // kDemora
  std::string campo;          // kCampoAusente, kNumeroComoTexto, kNoNumero
  std::string valor = "abc";  // kNoNumero, kFechaInvalida
  int cuantos = 8;            // kTramaCorta: rows; kPaginaDaniada: bits
};

// The words of the faults as a scenario writes them, and whether a fault suits what an operation gives.
std::optional<TipoFalla> BuscarTipoFalla(std::string_view nombre);
bool Conviene(TipoFalla tipo, Op operacion);

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
    std::optional<Falla> respuesta;  // takes the place of the answer
    std::vector<Falla> de_datos;     // spoil it, in the order of the scenario
  };

  // Other faults from now on; counts begin anew.
  void Poner(std::vector<Falla> fallas);

  bool Ninguna(Op op) const { return hay_[static_cast<std::size_t>(op)] == 0; }

  // The faults that this call meets; each that counts is counted.
  Efecto Para(Op op, const Contexto& contexto);

 private:
  std::vector<Falla> fallas_;
  std::array<int, kOperaciones> hay_{};
};

// The table as a data fault leaves it: a new one. Faults that aren't of tables leave it as it is.
TablaPtr Estropear(const Falla& falla, Tabla& tabla);

// The same for a text: a flash page or a date.
std::string Estropear(const Falla& falla, std::string texto);

}  // namespace utr::simulada
