#pragma once

#include <QObject>

namespace utr {

// The wheel changes no value: over a closed drop-down list, a date picker or an up-down field it does nothing, whether
// they have the focus or not. An operator who scrolls past a sensor's kind would change it without a click. Install it
// on the application; one list that is open scrolls as ever.
class RuedaInofensiva : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
};

}  // namespace utr
