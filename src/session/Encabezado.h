#pragma once

#include <optional>
#include <string>

#include "session/LecturaConfiguracion.h"
#include "session/ModRTU.h"
#include "session/OperacionesEnlace.h"

namespace utr {

// What the operator should always see: one thing in a few words, and a line that says more.
struct Dato {
  std::string texto;
  std::string detalle;
  Tono tono = Tono::kNeutro;
};

struct Encabezado {
  Dato estacion;  // whose configuration is on hand, where it came from and when, how many channels it has
  Dato enlace;
  Dato reloj;  // the unit's clock against the computer's, as it was last read
};

// From what is known already: no call to the driver is made. `canales`: how many the configuration has enabled, as far
// as that can be told; `panel` is what the status bar shows of the link.
Encabezado EncabezadoDe(const LecturaConfiguracion& lectura, const ModRTU& mod, std::optional<std::size_t> canales,
                        const TextosPanel& panel);

}  // namespace utr
