#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "configuration/Escritura.h"
#include "tables/Tabla.h"

// What was written against what the unit gives back.
namespace utr {

struct DiferenciaEscritura {
  std::int16_t canal = 0;
  std::string campo;  // its caption
  std::string escrito;
  std::string leido;
  bool operator==(const DiferenciaEscritura&) const = default;
};

struct VerificacionEscritura {
  std::size_t valores = 0;  // how many were compared
  std::vector<DiferenciaEscritura> diferencias;

  bool Iguales() const noexcept { return diferencias.empty(); }
};

// Compares every channel of `escrita` with the first row of that channel in `releida`, column by column (numbers as
// numbers, else as texts), without `Modificado`, `Pila` and `Pagina`. A channel or column that `releida` lacks counts
// as different. Filters and sorts don't count; cursors stay.
VerificacionEscritura Verificar(const Tabla& escrita, const Tabla& releida);

// The line for values that are all as written: "700 valores escritos y verificados".
std::string LineaVerificada(const VerificacionEscritura& verificacion);

// The exclamation for a write that isn't whole or reads back otherwise: the step that failed, up to twenty values that
// differ and how many more there are, and where the backup of the state before it lies (empty: there is none). Empty
// where no step failed and nothing differs.
std::string AvisoDeVerificacion(const VerificacionEscritura& verificacion, std::optional<PasoEscritura> fallo,
                                const std::filesystem::path& respaldo);

}  // namespace utr
