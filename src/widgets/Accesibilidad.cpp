#include "widgets/Accesibilidad.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace utr {
namespace {

constexpr const char* kRol = "rolAccesible";

QAccessibleInterface* ConSuRol(const QString& clase, QObject* objeto) {
  if (clase != QLatin1String(objeto->metaObject()->className())) return nullptr;  // once, for the class itself
  auto* control = qobject_cast<QWidget*>(objeto);
  const QVariant rol = objeto->property(kRol);
  if (control == nullptr || !rol.isValid()) return nullptr;
  return new QAccessibleWidget(control, static_cast<QAccessible::Role>(rol.toInt()));
}

}  // namespace

void DarRol(QWidget& control, QAccessible::Role rol) {
  static const bool instalada = (QAccessible::installFactory(&ConSuRol), true);
  control.setProperty(kRol, instalada ? static_cast<int>(rol) : 0);
}

void Anunciar(QWidget& control) {
  QAccessibleEvent evento(&control, QAccessible::Alert);
  QAccessible::updateAccessibility(&evento);
}

}  // namespace utr
