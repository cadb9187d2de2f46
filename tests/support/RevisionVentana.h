#pragma once

#include <string>
#include <vector>

class QWidget;

namespace utr {

// What someone who doesn't see the window, or has no mouse, would miss in it, as it stands now: controls without a
// name, lists without titles, what has the keyboard and tells no role, a key of two commands. Each complaint names its
// control.
std::vector<std::string> ReparosDeAcceso(QWidget& ventana);

// What can't be seen whole: a window larger than its screen with the frame around it, controls narrower than their
// words or out of the window. What scrolls is in reach.
std::vector<std::string> ReparosDeTamano(QWidget& ventana);

}  // namespace utr
