#pragma once

class QSize;
class QWidget;

namespace utr {

// How much larger the program's letters are than those for which icons and sizes are given; never less than 1.
double EscalaDelTexto();

// How large the window may be to be seen whole on its screen, with what the desktop puts around it.
QSize SitioEnPantalla(const QWidget& ventana);

// Gives the window the size that it had when the same user last closed it, and keeps its size from now on whenever it
// is hidden or closed; on a smaller screen than that was, no larger than what fits. Windows are told apart by their
// object name, and so are a window's sizes with letters of another size or large targets. Call it at the end of the
// window's construction, after a first size was given with resize().
void RecordarTamano(QWidget* ventana);

}  // namespace utr
