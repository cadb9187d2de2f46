#include "session/ArchivoAyuda.h"

namespace utr {

void FijarArchivoAyuda(ModRTU& mod) noexcept {
  IgnorandoErrores([&] { mod.archivo_ayuda = mod.carpeta / "Ayuda" / (mod.nombre + ".hlp"); });
}

}  // namespace utr
