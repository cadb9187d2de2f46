#include "retrieved/windows/EnlaceGrafico.h"

#include "plots/windows/PanelGrafico.h"
#include "widgets/VistaLista.h"

namespace utr {

void EnlazarConLista(PanelGrafico& grafico, VistaLista& lista) {
  QObject::connect(&lista, &VistaLista::SeleccionCambiada, &grafico,
                   [&grafico, &lista] { SenalarFilaActual(grafico, lista); });
  QObject::connect(&grafico, &PanelGrafico::FilaElegida, &lista, [&grafico, &lista](std::size_t fila) {
    const ListaTabla& filas = lista.Lista();
    std::size_t posicion = 0;
    while (posicion < filas.Cantidad() && filas.Fila(posicion) != fila) ++posicion;
    if (posicion < filas.Cantidad()) return lista.Elegir(posicion);
    grafico.Avisar(QStringLiteral("El filtro de la lista oculta el renglón de este registro."));
  });
}

void SenalarFilaActual(PanelGrafico& grafico, const VistaLista& lista) {
  const auto posicion = lista.FilaActual();
  grafico.SenalarFila(posicion ? std::optional(lista.Lista().Fila(*posicion)) : std::nullopt);
}

}  // namespace utr
