#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "configuration/ConfigColl.h"
#include "configuration/ReglasSensor.h"
#include "services/Operador.h"
#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"

// The channels that a unit is commissioned with: where they come from, which of them are reviewed, and what binds the
// two of the wind.
namespace utr {

enum class FuenteAsistente : std::uint8_t {
  kUTR,
  kPrevia,   // a saved table of channels (.ucg)
  kArchivo,  // a configuration file (.icf), which the driver reads
};

// The file dialog of a source that is a file; its folder is left to the caller.
PedidoArchivo PedidoDe(FuenteAsistente fuente);

// Both collections hold the same objects under the number of their row, so that what is edited in one is what the other
// writes.
struct CanalesAsistente {
  ConfigColl ColeccionConfig;          // the enabled channels, which are shown and edited
  ConfigColl ColeccionConfigCompleta;  // all rows, which are written
  std::vector<std::string> avisos;     // what the operator has to know about the table, a sentence each
};

// The channels of a table, in its own row order whatever its filter and sort. Of several rows of one channel the first
// counts; the others are passed over and named. Raises kLlamada for no table or one without rows, and kCampo for one
// without a column of the channel table.
CanalesAsistente CanalesDe(const TablaPtr& tabla);

// The same from a source; `ruta` is the path of a file, and counts for nothing with the unit. The table on hand isn't
// touched, and what the unit gives is saved as a backup. Failures are logged and raised again.
CanalesAsistente CargarConfiguracion(ModRTU& mod, LecturaConfiguracion& lectura, FuenteAsistente fuente,
                                     const std::filesystem::path& ruta);

// What the wind asks of a station: the vane takes the reading and storage periods of the anemometer. Of several the
// first enabled one of each kind counts, else the first.
struct AjusteViento {
  bool forzado = false;                 // the periods of the vane differed and were set
  std::string veleta{};                 // its short code, where they were, now or before
  std::vector<ReparoSensor> reparos{};  // the rules that the vane breaks with them
};
// `forzado_antes`: they were set by a former call, so that what the vane breaks by it is told as long as it does.
AjusteViento AjustarViento(const ConfigColl& completa, bool forzado_antes = false);

inline constexpr std::string_view kAvisoDeViento =
    "La veleta y el anemometro deben tener el mismo Tread y Tstorage\n"
    "Se han forzados los tiempos de la veleta igual al del anemometro";

// What the vane that was set doesn't obey, a line each; empty where it obeys all.
std::string TextoDeReparos(const AjusteViento& ajuste);

}  // namespace utr
