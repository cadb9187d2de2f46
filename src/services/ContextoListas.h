#pragma once

#include <functional>
#include <string>

#include "base/Reloj.h"
#include "driver/Comunicador.h"
#include "services/Impresora.h"
#include "services/Operador.h"
#include "services/RegistroErrores.h"

namespace utr {

// What the services of a list lean on: the driver's export, the log, the operator, the printers and the one chosen, and
// what paper says of where and when it comes from.
struct ContextoListas {
  Comunicador& comunicador;
  RegistroErrores& registro;
  Operador& operador;
  Impresora& impresora;
  EleccionImpresora& eleccion;
  Reloj& reloj;
  std::function<std::string()> estacion;  // the station at hand, in words
};

}  // namespace utr
