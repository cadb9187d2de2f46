#include "widgets/CarpetaDelOperador.h"

#include <QDir>
#include <QStandardPaths>

#include "base/CarpetaPrograma.h"
#include "widgets/TextoQt.h"

namespace utr {

std::filesystem::path DocumentosDelOperador() {
  const QString documentos = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return Ruta(QDir(documentos).exists() ? documentos : QDir::homePath());
}

std::filesystem::path CarpetaDelOperador(const std::filesystem::path& carpeta) {
  return EsDeDatosOcultos(carpeta) ? DocumentosDelOperador() : carpeta;
}

}  // namespace utr
