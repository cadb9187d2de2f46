#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "retrieved/series/Serie.h"
#include "tables/Tabla.h"

// What there is to say of a table of records as a whole, and which of its rows aren't to be trusted like the others.
// Figures are those of the series; see series/Serie.h.
namespace utr {

// The series of a table of records, one a channel in the order in which they come first: made once, for whoever tells
// figures and whoever draws. `configuracion` tells how often a channel records; null: its records do. None for a table
// without Fecha, Canal or Valor. `a_intervalos`: as in OpcionesSerie.
using SeriesDeTabla = std::vector<std::shared_ptr<const Serie>>;
SeriesDeTabla SeriesDe(const Tabla& tabla, const Tabla* configuracion, bool a_intervalos = true);

// One line on what a read brought: the first and the last record that are there, how many, those without a value, not
// validated, without a date and missing in between, gaps, times that the clock went back; of a single channel minimum,
// maximum (those of its intervals where the table has them) and mean, and what fell in all; of directions the mean
// alone. Of events the first, the last and how many. Empty for a table without rows
// and for present values. `series`: those of the table. `a_intervalos`: its channels record at regular intervals; where
// they don't, as what is queued to be sent, nobody knows what is missing and nothing is said of it.
std::string TextoCifras(const Tabla& tabla, const SeriesDeTabla& series, bool a_intervalos = true);

enum class MarcaRegistro : std::uint8_t { kNinguna, kSinValor, kSinValidar };

// The marks of the rows of a table by their identity. Tables without the fields Valor and Validacion have none.
class MarcasRegistros {
 public:
  explicit MarcasRegistros(const Tabla& tabla);

  MarcaRegistro De(std::size_t fila) const { return fila < marcas_.size() ? marcas_[fila] : MarcaRegistro::kNinguna; }

 private:
  std::vector<MarcaRegistro> marcas_;  // of all rows, or none
};

}  // namespace utr
