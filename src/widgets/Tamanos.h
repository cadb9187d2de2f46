#pragma once

class QWidget;

namespace utr {

// Gives the window the size that it had when the same user last closed it, and keeps its size from now on whenever it
// is hidden or closed. Windows are told apart by their object name. Call it at the end of the window's construction,
// after a first size was given with resize().
void RecordarTamano(QWidget* ventana);

}  // namespace utr
