#include "widgets/Recuerdos.h"

#include <QSettings>

namespace utr {
namespace {

QSettings Archivo() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("AdminUTR"), QStringLiteral("ventanas"));
}

}  // namespace

QVariant Recuerdos::Valor(const QString& nombre) const {
  return Archivo().value(Clave(nombre));
}

QString Recuerdos::Texto(const QString& nombre, const QString& si_no_hay) const {
  const QVariant valor = Valor(nombre);
  return valor.canConvert<QString>() ? valor.toString() : si_no_hay;
}

QStringList Recuerdos::Textos(const QString& nombre) const {
  return Valor(nombre).toStringList();
}

// The file gives truth values back as texts.
bool Recuerdos::Marcado(const QString& nombre, bool si_no_hay) const {
  const QString texto = Texto(nombre);
  if (texto == QLatin1String("true")) return true;
  return texto == QLatin1String("false") ? false : si_no_hay;
}

int Recuerdos::Entero(const QString& nombre, int si_no_hay, int minimo, int maximo) const {
  bool es_entero = false;
  const int valor = Valor(nombre).toInt(&es_entero);
  return es_entero && valor >= minimo && valor <= maximo ? valor : si_no_hay;
}

void Recuerdos::Guardar(const QString& nombre, const QVariant& valor) {
  QSettings archivo = Archivo();
  archivo.setValue(Clave(nombre), valor);
  archivo.sync();
}

void Recuerdos::Olvidar(const QString& nombre) {
  Archivo().remove(Clave(nombre));
}

}  // namespace utr
