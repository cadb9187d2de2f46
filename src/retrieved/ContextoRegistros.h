#pragma once

#include "base/Reloj.h"
#include "configuration/Catalogo.h"
#include "driver/Comunicador.h"
#include "services/RegistroErrores.h"

namespace utr {

// What scaling and the record builders lean on beside their arguments.
struct ContextoRegistros {
  Comunicador& comunicador;
  const Reloj& reloj;
  Catalogo& catalogo;
  RegistroErrores& registro;
};

}  // namespace utr
