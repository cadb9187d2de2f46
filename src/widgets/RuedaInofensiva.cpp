#include "widgets/RuedaInofensiva.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace utr {

bool RuedaInofensiva::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() != QEvent::Wheel) return false;
  if (qobject_cast<QComboBox*>(objeto) == nullptr && qobject_cast<QAbstractSpinBox*>(objeto) == nullptr) return false;
  evento->ignore();  // what lies around it may scroll
  return true;
}

}  // namespace utr
