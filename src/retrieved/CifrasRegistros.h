#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tables/Tabla.h"

// What there is to say of a table of records as a whole, and which of its rows aren't to be trusted like the others.
// Figures are those of the series; see series/Serie.h.
namespace utr {

// One line on what a read brought: the first and the last record that are there, how many, those without a value, not
// validated, without a date and missing in between, gaps, times that the clock went back; of a single channel minimum,
// maximum and mean, and what fell in all. `configuracion` tells how often a channel records; null: its records do.
// Of events the first, the last and how many. Empty for a table without rows and for present values.
std::string TextoCifras(const Tabla& tabla, const Tabla* configuracion);

enum class MarcaRegistro : std::uint8_t { kNinguna, kSinValor, kSinValidar };

// The marks of the rows of a table by their identity. The table must live and not change meanwhile. Tables without the
// fields Valor and Validacion have none.
class MarcasRegistros {
 public:
  MarcasRegistros() = default;
  explicit MarcasRegistros(const Tabla& tabla);

  MarcaRegistro De(std::size_t fila) const;

 private:
  const Tabla* tabla_ = nullptr;
  std::size_t valor_ = 0;  // places of the fields
  std::size_t validacion_ = 0;
  std::vector<bool> sin_valor_;  // by the number of the text, 0: null
  std::vector<bool> sin_validar_;
};

}  // namespace utr
