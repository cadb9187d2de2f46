#include "plots/windows/GraficosALaVista.h"

#include <algorithm>

namespace utr {

void GraficosALaVista::Poner(const QString& ventana, GraficoVisto grafico) {
  Quitar(ventana);
  graficos_.emplace_back(ventana, std::move(grafico));
}

void GraficosALaVista::SonDe(const QString& unidad) {
  if (unidad == unidad_) return;
  unidad_ = unidad;
  graficos_.clear();
}

void GraficosALaVista::Quitar(const QString& ventana) {
  const auto suyo =
      std::remove_if(graficos_.begin(), graficos_.end(), [&](const auto& grafico) { return grafico.first == ventana; });
  graficos_.erase(suyo, graficos_.end());
}

}  // namespace utr
