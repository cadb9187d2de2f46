#pragma once

#include <string>
#include <vector>

#include "base/Fechas.h"
#include "tables/Tabla.h"

namespace utr {

// Words that the entries share.
namespace asiento {
inline constexpr const char* kSinLeer = "sin leer";              // what stood there before isn't known
inline constexpr const char* kHecho = "hecho";                   // the unit confirmed it
inline constexpr const char* kSinConfirmar = "; no confirmado";  // it didn't: it may stand in the unit all the same
}  // namespace asiento

// One command to the unit: when it ended, what it was, what stood in the unit before as far as it was known, what was
// written, and how it ended. Texts as the operator reads them.
struct Asiento {
  FechaHora momento;
  std::string comando;
  std::string antes;
  std::string escrito;
  std::string resultado;
};

// The journal of what was done to units in this run of the program, oldest first. It only grows.
class Diario {
 public:
  void Anotar(Asiento asiento) { asientos_.push_back(std::move(asiento)); }
  const std::vector<Asiento>& Asientos() const noexcept { return asientos_; }

  // The entries as a table of texts for a list, in their order: "Momento" (date and time), "Comando", "Antes",
  // "Escrito", "Resultado". It stands on its first row.
  TablaPtr ComoTabla() const;

 private:
  std::vector<Asiento> asientos_;
};

}  // namespace utr
