#pragma once

#include "retrieved/windows/VistaRegistros.h"

namespace utr {

// "Cola de transmisión": what the unit holds for sending, by day or pending.
class frmColaTransmicion : public VistaRegistros {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own clone. Show it with exec().
  frmColaTransmicion(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);
};

}  // namespace utr
