#pragma once

#include <QApplication>
#include <QEvent>

#include "session/SituacionDelEnlace.h"

namespace utr {

// Tells the state of the link whenever the operator clicks or types. Made ahead of all windows, so that what a busy
// window swallows doesn't count.
class ActosDelOperador final : public QObject {
 public:
  explicit ActosDelOperador(SituacionDelEnlace& situacion) : situacion_(situacion) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* objeto, QEvent* evento) override {
    const QEvent::Type tipo = evento->type();
    const bool actua = tipo == QEvent::MouseButtonPress || tipo == QEvent::KeyPress || tipo == QEvent::TouchBegin;
    if (actua && objeto->isWidgetType()) situacion_.ActuaElOperador();
    return false;
  }

 private:
  SituacionDelEnlace& situacion_;
};

}  // namespace utr
