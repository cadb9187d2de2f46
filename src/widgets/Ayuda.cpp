#include "widgets/Ayuda.h"

#include <QDesktopServices>
#include <QPushButton>
#include <QShortcut>
#include <QUrl>

#include "driver/Utilidades.h"
#include "widgets/TextoQt.h"

namespace utr {

void AbrirAyuda(const std::filesystem::path& archivo) {
  if (!HayAyuda(archivo)) return;
  QDesktopServices::openUrl(QUrl::fromLocalFile(Q(archivo.string())));
}

void ServirAyuda(QPushButton& boton, const std::filesystem::path& archivo) {
  boton.setEnabled(HayAyuda(archivo));
  QObject::connect(&boton, &QPushButton::clicked, &boton, [archivo] { AbrirAyuda(archivo); });
  new QShortcut(QKeySequence::HelpContents, &boton, &boton, &QPushButton::click);
}

bool HayAyuda(const std::filesystem::path& archivo) {
  return ExisteArchivo(archivo);
}

}  // namespace utr
