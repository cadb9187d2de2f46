#pragma once

#include <QFont>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "services/Impresora.h"
#include "widgets/ImpresoraDibujos.h"

class QPagedPaintDevice;
class QPainter;
class QPrinter;

namespace utr {

// Through Qt's print support.
class ImpresoraQt : public Impresora, public ImpresoraDibujos {
 public:
  std::vector<std::string> Nombres() override;
  bool Imprimir(const EleccionImpresora& eleccion, const DocumentoImpreso& documento, Progreso& progreso) override;
  bool Dibujar(const EleccionImpresora& eleccion, std::string_view titulo, const DibujarPaginas& dibujar,
               Progreso& progreso) override;
};

// Draws the whole document on as many pages as it takes, as DibujarPaginas does. The painter isn't begun where the work
// is cancelled before there is anything to draw.
int DibujarDocumento(QPagedPaintDevice& dispositivo, QPainter& pintor, const DocumentoImpreso& documento,
                     const QFont& letra, Progreso& progreso);

// The paper that was chosen, with margins of 15 mm, and the letter of a document.
void PonerPapel(QPrinter& impresora, const EleccionImpresora& eleccion);
QFont FuenteDe(LetraImpresion letra);

// The kinds of paper as the operator reads them, in the order of their numbers.
QStringList NombresDePapel();

}  // namespace utr
