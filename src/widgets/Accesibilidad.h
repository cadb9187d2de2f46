#pragma once

#include <QAccessible>

class QWidget;

namespace utr {

// Tells a screen reader what a control of the program's own is, of which it would hear only that there is one. To be
// called while the control is made, ahead of its name.
void DarRol(QWidget& control, QAccessible::Role rol);

// Has a screen reader say the name of the control at once, wherever the keyboard is.
void Anunciar(QWidget& control);

}  // namespace utr
