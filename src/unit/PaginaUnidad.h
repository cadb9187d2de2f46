#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "driver/Comunicador.h"

namespace utr {

// A page of the unit as the texts of its items. What isn't changed goes back exactly as it came, and the count of items
// never changes.
//
// Whoever asks for more than the page has raises kSubindice with "La página N no pudo leerse", as a text does that is
// no page.
class PaginaUnidad {
 public:
  // Splits a page text. Raises kSubindice for an empty one and for one with an item that is no byte.
  PaginaUnidad(std::string_view numero, std::string_view texto);

  // Asks the unit for the page. Raises what the driver raises, and kSubindice for a page that couldn't be read.
  static PaginaUnidad Leer(Comunicador& comunicador, std::string_view numero);

  std::size_t Cuantos() const noexcept { return items_.size(); }

  // Raises kSubindice unless the page has at least so many items.
  void ExigirBytes(std::size_t cuantos) const;

  // The number of an item, 0 to 255. Raises kSubindice beyond the last item.
  std::int32_t Numero(std::size_t lugar) const;
  // Low byte at `lugar`, high byte behind it, as an unsigned 16-bit value.
  std::int32_t Par(std::size_t lugar) const;

  // Replace an item by a byte, or an item and the next one by the two parts of a pair text. Raise kSubindice beyond the
  // last item, kDesborde for a number that is no byte and kTipos for a text that is no pair; nothing is changed then.
  void Poner(std::size_t lugar, std::int32_t numero);
  void PonerPar(std::size_t lugar, std::string_view par);

  // The page text of the items.
  std::string Texto() const;

 private:
  [[noreturn]] void LanzarNoLeida() const;

  std::string numero_;
  std::vector<std::string> items_;
};

}  // namespace utr
