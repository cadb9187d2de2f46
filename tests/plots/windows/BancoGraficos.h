#pragma once

#include <memory>
#include <vector>

#include "plots/windows/ContenidoGrafico.h"
#include "support/Tablas.h"

// Contents of plots written down in a test.
namespace utr {

// Records of a channel on 15/03/2026, at "HH:mm", ten minutes apart unless there is a gap.
using Muestras = std::vector<std::pair<const char*, const char*>>;

inline CanalGrafico CanalDe(const char* canal, const Muestras& muestras, std::vector<LimiteSerie> limites = {}) {
  std::vector<Celdas> filas;
  for (const auto& [hora, valor] : muestras) filas.push_back({"15/03/2026", hora, canal, valor, "Nivel", "m"});
  const auto tabla = TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Descripcion", "Unidad"}, filas);
  return {std::make_shared<const Serie>(*tabla, OpcionesSerie{{}, 10.0}), std::move(limites)};
}

inline ContenidoGrafico ContenidoDe(std::vector<CanalGrafico> canales) {
  ContenidoGrafico contenido;
  contenido.titulo = QStringLiteral("Datos de prueba");
  contenido.canales = std::move(canales);
  return contenido;
}

}  // namespace utr
