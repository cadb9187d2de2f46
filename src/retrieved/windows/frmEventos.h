#pragma once

#include "retrieved/windows/VistaRegistros.h"

namespace utr {

// "Eventos de la UTR": events by date, from the unit or its cartridge, and the pending ones.
class frmEventos : public VistaRegistros {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own clone. Show it with exec().
  frmEventos(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);
};

}  // namespace utr
