#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace utr {

// The printer that was chosen last and its copies; no name until one was chosen.
struct EleccionImpresora {
  std::string nombre;
  int copias = 1;
};

// kPareja: all characters are as wide, for texts that are aligned with blanks.
enum class LetraImpresion : std::uint8_t { kComun, kPareja };

// The system's printers, as the list services see them.
class Impresora {
 public:
  virtual ~Impresora() = default;

  // Device names.
  virtual std::vector<std::string> Nombres() = 0;

  // Prints the text as one job. Raises Error 482 when the printer doesn't take it.
  virtual void Imprimir(std::string_view nombre, std::string_view texto, LetraImpresion letra) = 0;
};

}  // namespace utr
