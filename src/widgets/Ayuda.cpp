#include "widgets/Ayuda.h"

#include <QDesktopServices>
#include <QUrl>

#include "driver/Utilidades.h"
#include "widgets/TextoQt.h"

namespace utr {

void AbrirAyuda(const std::filesystem::path& archivo) {
  if (!ExisteArchivo(archivo)) return;
  QDesktopServices::openUrl(QUrl::fromLocalFile(Q(archivo.string())));
}

}  // namespace utr
