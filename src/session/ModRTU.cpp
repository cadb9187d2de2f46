#include "session/ModRTU.h"

#include "session/LibroEstaciones.h"
#include "session/SituacionDelEnlace.h"

namespace utr {

std::string ModRTU::UnidadAMano() const {
  const bool de_practica = situacion != nullptr && EsDePractica(situacion->Clase());
  return std::to_string(propiedades.LeerEntero(clave::kIdentificador, 0)) + (de_practica ? " de práctica" : "");
}

std::string ModRTU::EstacionAMano() const {
  const std::int32_t identificador = propiedades.LeerEntero(clave::kIdentificador, 0);
  if (identificador == 0) return "UTR sin identificador";
  std::string utr = "UTR " + std::to_string(identificador);
  LibroEstaciones libro(carpeta / LibroEstaciones::kArchivo);
  if (!IgnorandoErrores([&] { libro.Leer(); })) return utr;
  const Estacion* estacion = libro.LaUnica(identificador);
  return estacion == nullptr ? utr : "Estación " + estacion->nombre + ", " + utr;
}

}  // namespace utr
