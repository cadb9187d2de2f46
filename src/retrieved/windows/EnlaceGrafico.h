#pragma once

namespace utr {

class PanelGrafico;
class VistaLista;

// Ties a plot and the list beside it: a point that is picked picks its row, a row that becomes current shows its point.
// A row that the filter hides stays so, and the plot says it. Both must live as long as each other.
void EnlazarConLista(PanelGrafico& grafico, VistaLista& lista);

// Puts the cursor on the point of the row that is current, for a plot that was filled behind its list.
void SenalarFilaActual(PanelGrafico& grafico, const VistaLista& lista);

}  // namespace utr
