#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "driver/CanalesUTR.h"
#include "tables/Tabla.h"

// The two tables that a unit holds, and what they are made of: rows of texts and entries of a schedule. Every driver
// makes them here, so that the same unit gives the same table by whatever road.
namespace utr {

// --- Channels --------------------------------------------------------------------------------------------------------

// The columns in which a unit gives its channels: the 38 of the channel table, then Nombre and the wind marks TDirV and
// TVelV. The place of a column in this list is its number.
const std::vector<ColumnaCanal>& ColumnasDeUnidad();

// The place of a column, the case of its letters aside; the number of columns for an unknown one.
std::size_t LugarDeColumna(std::string_view columna);

// The number that a unit reads out of a text of its own; a decimal comma counts as a point.
double NumeroDeTexto(std::string_view texto);

// The table of channels, on its first row. A row has one text for each column, in their order; CtePluvi becomes a
// number, and Modificado and the wind marks are what follows from the rest, whatever the row says of them.
TablaPtr TablaDeCanales(std::span<const std::vector<std::string>> filas);

// --- Schedule --------------------------------------------------------------------------------------------------------

inline constexpr std::size_t kMayorAgenda = 96;  // entries

// One place of a unit's schedule.
struct EntradaAgenda {
  int minuto = -1;  // of the day; -1: none
  bool obligatoria = false;
  bool ventana = false;
  bool condicional = false;
  std::string descripcion = "OK";  // an entry counts only as "OK"

  bool Cuenta() const { return minuto >= 0 && descripcion == "OK"; }
  bool operator==(const EntradaAgenda&) const = default;
};

// The table of a schedule, in the form of Comunicador::LeerAgenda, on its first row.
TablaPtr TablaDeAgenda(std::span<const EntradaAgenda> entradas);

// The entries that a table shows, with the fields HorarioInteger, TOblig, TWind and TCond. Nothing for a minute outside
// the day and for one that is no number. Raises error 3265 for a table without those fields.
std::optional<std::vector<EntradaAgenda>> LeerEntradasDeAgenda(const Tabla& tabla);

}  // namespace utr
