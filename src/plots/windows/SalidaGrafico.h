#pragma once

#include <filesystem>

#include "plots/windows/ContenidoGrafico.h"
#include "plots/windows/GraficosALaVista.h"
#include "services/Impresora.h"

class QPainter;
class QRectF;

namespace utr {

// A plot away from the screen, in the colours of paper: title, station and span over it.

// The plot alone, into that rectangle.
void PintarGrafico(const ContenidoGrafico& contenido, QPainter& pintor, const QRectF& lugar);

// With its title, into that rectangle: one page.
void PintarLamina(const ContenidoGrafico& contenido, QPainter& pintor, const QRectF& lugar);

// One page of PDF, or a picture, as the ending of the name tells (".png"; else PDF); whole or not at all. Raises
// kArchivo, also when it can't be drawn.
void GuardarGrafico(const ContenidoGrafico& contenido, const std::filesystem::path& ruta);

// One page of the chosen paper, as often as told there, named after the plot. Prints no more once it is cancelled.
// Raises Error 482 when the printer doesn't take it.
void ImprimirGrafico(const ContenidoGrafico& contenido, Impresora& impresora, const EleccionImpresora& eleccion,
                     Progreso& progreso);

// What stays to be painted again; the contents are its own.
GraficoVisto VistoDe(ContenidoGrafico contenido);

}  // namespace utr
