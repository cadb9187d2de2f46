#pragma once

#include <vector>

#include "configuration/CambiosConfiguracion.h"
#include "widgets/PanelLista.h"

namespace utr {

// The pane "Cambios": what a write would change in the unit. It unfolds by itself when the first change comes, and is
// the operator's to fold from then on.
class PanelCambios : public PanelLista {
  Q_OBJECT

 public:
  // `modulo`: name of the window in the error log.
  PanelCambios(const ContextoListas& contexto, const char* modulo, QWidget* parent = nullptr);

  void MostrarCambios(const std::vector<CambioConfiguracion>& cambios) { Mostrar(TablaDeCambios(cambios)); }
};

}  // namespace utr
