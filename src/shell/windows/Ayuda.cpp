#include "shell/windows/Ayuda.h"

#include <QDesktopServices>
#include <QUrl>

#include "driver/Utilidades.h"
#include "widgets/TextoQt.h"

namespace utr {

void AbrirAyuda(const ModRTU& mod) {
  if (!ExisteArchivo(mod.archivo_ayuda)) return;
  QDesktopServices::openUrl(QUrl::fromLocalFile(Q(mod.archivo_ayuda.string())));
}

}  // namespace utr
