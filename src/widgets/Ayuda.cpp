#include "widgets/Ayuda.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QShortcut>

#include "driver/Utilidades.h"

namespace utr {

void AbrirAyuda(const std::filesystem::path& archivo, const QWidget& desde, EntradaAyuda entrada) {
  auto* ayudante = QCoreApplication::instance()->findChild<Ayudante*>(QString(), Qt::FindDirectChildrenOnly);
  if (ayudante != nullptr && HayAyuda(archivo)) ayudante->Mostrar(archivo, entrada, desde);
}

void ServirAyuda(QPushButton& boton, const std::filesystem::path& archivo) {
  boton.setEnabled(HayAyuda(archivo));
  QObject::connect(&boton, &QPushButton::clicked, &boton, [&boton, archivo] { AbrirAyuda(archivo, boton); });
  new QShortcut(QKeySequence::HelpContents, &boton, &boton, &QPushButton::click);
}

bool HayAyuda(const std::filesystem::path& archivo) {
  return ExisteArchivo(archivo);
}

}  // namespace utr
