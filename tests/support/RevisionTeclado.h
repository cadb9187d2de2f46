#pragma once

#include <string>
#include <vector>

class QWidget;

namespace utr {

// What someone without a mouse would stumble over in a window, as it stands now: a letter of two controls or of two
// entries of a menu, a tool that neither a menu
// nor a key gives, a step of Tab that goes back up or to the left, a control that looks the same with the keyboard as
// without. Each complaint names its control.
std::vector<std::string> ReparosDeTeclado(QWidget& ventana);

// Controls that the keyboard reaches and that, once the window was explained, don't answer "¿Qué es esto?", neither by
// themselves nor through what they are a part of.
std::vector<std::string> SinExplicacion(const QWidget& ventana);

}  // namespace utr
