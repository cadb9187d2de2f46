#pragma once

#include "driver/Comunicador.h"
#include "services/Impresora.h"
#include "services/Operador.h"
#include "services/RegistroErrores.h"

namespace utr {

// What the services of a list lean on: the driver's export, the log, the operator, the printers and the one chosen.
struct ContextoListas {
  Comunicador& comunicador;
  RegistroErrores& registro;
  Operador& operador;
  Impresora& impresora;
  EleccionImpresora& eleccion;
};

}  // namespace utr
