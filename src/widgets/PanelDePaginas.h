#pragma once

#include <functional>

#include "base/Progreso.h"
#include "widgets/Ocupacion.h"

namespace utr {

// Work that lays out or draws pages. It tells what it is told with how far it is, and ends early once cancelled.
using TrabajoDePaginas = std::function<void(Progreso& progreso)>;

// Runs it behind the panel of `opciones`, which must have one: the panel tells how far the work is and bears a button
// that cancels it, as Esc and closing the window do. What the work raises goes through.
void ConPanelDePaginas(QWidget& ventana, OpcionesOcupacion opciones, const TrabajoDePaginas& trabajo);

// The same for a part of a window that has no panel for it: one floats over the window meanwhile.
void ConPanelDePaginas(const QWidget& parte, const TrabajoDePaginas& trabajo);

}  // namespace utr
