#pragma once

#include <QFont>
#include <string>
#include <string_view>
#include <vector>

#include "services/Impresora.h"
#include "widgets/ImpresoraDibujos.h"

class QPagedPaintDevice;

namespace utr {

// Through Qt's print support.
class ImpresoraQt : public Impresora, public ImpresoraDibujos {
 public:
  std::vector<std::string> Nombres() override;
  void Imprimir(std::string_view nombre, std::string_view texto, LetraImpresion letra) override;
  void Dibujar(std::string_view nombre, std::string_view titulo, const DibujarPaginas& dibujar) override;
};

// Draws the whole text on as many pages as it takes, with tab stops wide enough for the widest text of each column;
// lines that are still wider than the page are drawn smaller, down to a readable size, and then wrapped. Gives the
// number of pages; 0 when the device couldn't be opened.
int DibujarDocumento(QPagedPaintDevice& dispositivo, std::string_view texto, const QFont& letra);

}  // namespace utr
