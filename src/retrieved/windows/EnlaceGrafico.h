#pragma once

namespace utr {

class PanelGrafico;
class VistaLista;

// Ties a plot and the list beside it: a point that is picked picks its row, a row that becomes current shows its point.
// A row that the filter hides stays so. Both must live as long as each other.
void EnlazarConLista(PanelGrafico& grafico, VistaLista& lista);

}  // namespace utr
