#include "session/ModRTU.h"

#include "session/SituacionDelEnlace.h"

namespace utr {

std::string ModRTU::UnidadAMano() const {
  const bool de_practica = situacion != nullptr && EsDePractica(situacion->Clase());
  return std::to_string(propiedades.LeerEntero(clave::kIdentificador, 0)) + (de_practica ? " de práctica" : "");
}

}  // namespace utr
