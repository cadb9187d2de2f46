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
class PaginaUnidad {
 public:
  // Splits a page text. An empty one has one empty item.
  explicit PaginaUnidad(std::string_view texto);

  // Asks the unit for the page. Raises what the driver raises; a page that couldn't be read is one empty item.
  static PaginaUnidad Leer(Comunicador& comunicador, std::string_view numero);

  std::size_t Cuantos() const noexcept { return items_.size(); }

  // The text of an item, and its number by its leading digits. Raise kSubindice beyond the last item.
  const std::string& Item(std::size_t lugar) const;
  std::int32_t Numero(std::size_t lugar) const;
  // Low byte at `lugar`, high byte behind it, as an unsigned 16-bit value.
  std::int32_t Par(std::size_t lugar) const;

  // Replace an item by a number, or an item and the next one by the two parts of a pair text. Raise kSubindice beyond
  // the last item; nothing is changed then.
  void Poner(std::size_t lugar, std::int32_t numero);
  void PonerPar(std::size_t lugar, std::string_view par);

  // The page text of the items.
  std::string Texto() const;

 private:
  void Exigir(std::size_t lugar) const;

  std::vector<std::string> items_;
};

}  // namespace utr
