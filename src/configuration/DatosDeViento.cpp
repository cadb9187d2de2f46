#include "configuration/DatosDeViento.h"

#include <string>

#include "driver/CanalesUTR.h"
#include "services/RegistroErrores.h"

namespace utr {

namespace {

void CopiarMarca(Tabla& configuracion, Tabla& tabla, std::string_view marca, TipoSensor tipo) {
  IgnorandoErrores([&] {
    tabla.Filter(std::string(marca) + "='Si'");
    if (tabla.RecordCount() == 0) return;
    configuracion.Filter("Canal='" + tabla.Texto("Canal") + "'");
    configuracion.Set("Tipo", TextoTipo(tipo));
  });
  IgnorandoErrores([&] { configuracion.Filter(""); });
  IgnorandoErrores([&] { tabla.Filter(""); });
}

}  // namespace

void CopiarDatosDeViento(Tabla& configuracion, Tabla& tabla) {
  CopiarMarca(configuracion, tabla, "TDirV", TipoSensor::kDireccionViento);
  CopiarMarca(configuracion, tabla, "TVelV", TipoSensor::kVelocidadViento);
}

}  // namespace utr
