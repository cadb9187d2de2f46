#pragma once

#include <functional>
#include <string_view>

#include "services/Impresora.h"

class QPagedPaintDevice;
class QPainter;

namespace utr {

// Begins the painter on the device, draws its pages and gives how many they are; 0: the device took none, or it was
// cancelled. Ending the painter, which sends the pages off, is the caller's.
using DibujarPaginas = std::function<int(QPagedPaintDevice& dispositivo, QPainter& pintor, Progreso& progreso)>;

// What a printer of the system can do beside texts. The core, which doesn't know what pages are drawn with, sees only
// its other face.
class ImpresoraDibujos {
 public:
  virtual ~ImpresoraDibujos() = default;

  // Prints drawn pages as one job of that title, once, on the chosen paper with its margins. Prints nothing when it is
  // cancelled: false. Raises Error 482 when the printer doesn't take them.
  virtual bool Dibujar(const EleccionImpresora& eleccion, std::string_view titulo, const DibujarPaginas& dibujar,
                       Progreso& progreso) = 0;
};

// The same through the printer of the program, with as many copies as were chosen, none behind a cancelled one. One
// that can't draw doesn't take them.
void ImprimirDibujo(Impresora& impresora, const EleccionImpresora& eleccion, std::string_view titulo,
                    const DibujarPaginas& dibujar, Progreso& progreso);

}  // namespace utr
