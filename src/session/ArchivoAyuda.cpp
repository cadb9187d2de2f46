#include "session/ArchivoAyuda.h"

#include "base/CarpetaPrograma.h"

namespace utr {

void FijarArchivoAyuda(ModRTU& mod) noexcept {
  IgnorandoErrores([&] { mod.archivo_ayuda = ArchivoDelPrograma(mod.carpeta, "Ayuda/" + mod.nombre + ".hlp"); });
}

}  // namespace utr
