#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"

namespace utr {

enum class Papel : std::uint8_t { kA4, kCarta, kOficio, kA3 };

// The printer that was chosen last, its copies and its paper; no name until one was chosen.
struct EleccionImpresora {
  std::string nombre;
  int copias = 1;
  Papel papel = Papel::kA4;
  bool apaisado = false;
};

// kPareja: all characters are as wide, for texts that are aligned with blanks.
enum class LetraImpresion : std::uint8_t { kComun, kPareja };

// What goes to paper as one job.
struct DocumentoImpreso {
  std::string texto;  // lines parted by "\n" or "\r\n", columns by tabs
  LetraImpresion letra = LetraImpresion::kComun;
  std::string titulo{};                  // the job's name
  std::string pie{};                     // at the foot of each page, ahead of its number; one line
  std::optional<std::size_t> titulos{};  // the line of column titles, which each page repeats
  std::vector<bool> numericas{};         // columns that stand at the right from that line on; the others at the left
};

// The system's printers, as the list services see them.
class Impresora {
 public:
  virtual ~Impresora() = default;

  // Device names.
  virtual std::vector<std::string> Nombres() = 0;

  // Prints the document as one job on the chosen printer and paper (the copies are the caller's). Tells the pages that
  // are counted and drawn, and prints nothing when it is cancelled: false. Raises Error 482 when the printer doesn't
  // take it.
  virtual bool Imprimir(const EleccionImpresora& eleccion, const DocumentoImpreso& documento, Progreso& progreso) = 0;
};

}  // namespace utr
