#include "configuration/DatosDeViento.h"

#include <string>

#include "services/RegistroErrores.h"

namespace utr {

namespace {

void CopiarMarca(Tabla& configuracion, Tabla& tabla, std::string_view marca, const char* tipo) {
  IgnorandoErrores([&] {
    tabla.Filter(std::string(marca) + "='Si'");
    if (tabla.RecordCount() == 0) return;
    configuracion.Filter("Canal='" + tabla.Texto("Canal") + "'");
    configuracion.Set("Tipo", tipo);
  });
  IgnorandoErrores([&] { configuracion.Filter(""); });
  IgnorandoErrores([&] { tabla.Filter(""); });
}

}  // namespace

void CopiarDatosDeViento(Tabla& configuracion, Tabla& tabla) {
  CopiarMarca(configuracion, tabla, "TDirV", "3");
  CopiarMarca(configuracion, tabla, "TVelV", "2");
}

}  // namespace utr
