#include "session/ModRTU.h"

#include "session/LibroEstaciones.h"
#include "session/SituacionDelEnlace.h"

namespace utr {

std::string ModRTU::UnidadAMano() const {
  return std::to_string(propiedades.LeerEntero(clave::kIdentificador, 0)) + (DePractica() ? " de práctica" : "");
}

bool ModRTU::DePractica() const {
  return situacion != nullptr && EsDePractica(situacion->UltimaConocida());
}

std::string ModRTU::EstacionAMano() const {
  const std::int32_t identificador = propiedades.LeerEntero(clave::kIdentificador, 0);
  if (identificador == 0) return DePractica() ? "UTR sin identificador, de práctica" : "UTR sin identificador";
  std::string utr = "UTR " + UnidadAMano();
  LibroEstaciones libro(carpeta / LibroEstaciones::kArchivo);
  if (!IgnorandoErrores([&] { libro.Leer(); })) return utr;
  const Estacion* estacion = libro.LaUnica(identificador);
  return estacion == nullptr ? utr : "Estación " + estacion->nombre + ", " + utr;
}

}  // namespace utr
