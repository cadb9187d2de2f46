#include "retrieved/windows/EnlaceGrafico.h"

#include "plots/windows/PanelGrafico.h"
#include "widgets/VistaLista.h"

namespace utr {

void EnlazarConLista(PanelGrafico& grafico, VistaLista& lista) {
  QObject::connect(&lista, &VistaLista::SeleccionCambiada, &grafico, [&grafico, &lista] {
    const auto posicion = lista.FilaActual();
    grafico.SenalarFila(posicion ? std::optional(lista.Lista().Fila(*posicion)) : std::nullopt);
  });
  QObject::connect(&grafico, &PanelGrafico::FilaElegida, &lista, [&lista](std::size_t fila) {
    const ListaTabla& filas = lista.Lista();
    std::size_t posicion = 0;
    while (posicion < filas.Cantidad() && filas.Fila(posicion) != fila) ++posicion;
    if (posicion < filas.Cantidad()) lista.Elegir(posicion);
  });
}

}  // namespace utr
