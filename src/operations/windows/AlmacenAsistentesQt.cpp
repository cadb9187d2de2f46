#include "operations/windows/AlmacenAsistentesQt.h"

#include <QSettings>

#include "widgets/TextoQt.h"

namespace utr {
namespace {

QSettings Archivo() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("AdminUTR"),
                   QStringLiteral("Asistentes"));
}

QString Nombre(std::string_view seccion, std::string_view clave) {
  return Q(seccion) + '/' + Q(clave);
}

}  // namespace

std::string AlmacenAsistentesQt::Leer(std::string_view seccion, std::string_view clave) const {
  return U(Archivo().value(Nombre(seccion, clave)).toString());
}

void AlmacenAsistentesQt::Guardar(std::string_view seccion, std::string_view clave, std::string_view valor) {
  QSettings archivo = Archivo();
  archivo.setValue(Nombre(seccion, clave), Q(valor));
  archivo.sync();
}

}  // namespace utr
