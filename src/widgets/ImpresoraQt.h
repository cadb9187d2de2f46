#pragma once

#include <QFont>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "services/Impresora.h"
#include "widgets/ImpresoraDibujos.h"

class QPagedPaintDevice;
class QPrinter;

namespace utr {

// Through Qt's print support.
class ImpresoraQt : public Impresora, public ImpresoraDibujos {
 public:
  std::vector<std::string> Nombres() override;
  bool Imprimir(const EleccionImpresora& eleccion, const DocumentoImpreso& documento, Progreso& progreso) override;
  void Dibujar(const EleccionImpresora& eleccion, std::string_view titulo, const DibujarPaginas& dibujar) override;
};

// Draws the whole document on as many pages as it takes. Gives the number of pages; 0 when the device couldn't be
// opened or the work was cancelled. `al_cancelar` undoes what the device has by then, if anything.
int DibujarDocumento(QPagedPaintDevice& dispositivo, const DocumentoImpreso& documento, const QFont& letra,
                     Progreso& progreso, const std::function<void()>& al_cancelar = {});

// The paper that was chosen, with margins of 15 mm, and the letter of a document.
void PonerPapel(QPrinter& impresora, const EleccionImpresora& eleccion);
QFont FuenteDe(LetraImpresion letra);

// The kinds of paper as the operator reads them, in the order of their numbers.
QStringList NombresDePapel();

}  // namespace utr
