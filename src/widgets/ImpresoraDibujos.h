#pragma once

#include <functional>
#include <string_view>

#include "services/Impresora.h"

class QPagedPaintDevice;

namespace utr {

// Draws on the pages of a device and gives how many they are; 0: the device took none.
using DibujarPaginas = std::function<int(QPagedPaintDevice& dispositivo)>;

// What a printer of the system can do beside texts. The core, which doesn't know what pages are drawn with, sees only
// its other face.
class ImpresoraDibujos {
 public:
  virtual ~ImpresoraDibujos() = default;

  // Prints drawn pages as one job of that title, once, on the chosen paper with its margins. Raises Error 482 when the
  // printer doesn't take them.
  virtual void Dibujar(const EleccionImpresora& eleccion, std::string_view titulo, const DibujarPaginas& dibujar) = 0;
};

// The same through the printer of the program, with as many copies as were chosen. One that can't draw doesn't take
// them.
void ImprimirDibujo(Impresora& impresora, const EleccionImpresora& eleccion, std::string_view titulo,
                    const DibujarPaginas& dibujar);

}  // namespace utr
