#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "tables/Tabla.h"

namespace utr {

// A column read as something else than its texts, each distinct text read once. `nulo` is what a null gives. The table
// must not change meanwhile.
template <typename Cosa>
class ColumnaLeida {
 public:
  // `leer`: Cosa leer(std::string_view texto).
  template <typename Leer>
  ColumnaLeida(const Tabla& tabla, std::size_t campo, const Leer& leer, Cosa nulo) {
    if (ClaseDe(tabla.Field(campo).tipo) == Clase::kTexto) {
      const TextosColumna textos = tabla.Textos(campo);
      indices_ = textos.Indices(propios_);
      leidas_.reserve(textos.Cantidad() + 1);
      leidas_.push_back(nulo);
      for (std::size_t i = 1; i <= textos.Cantidad(); ++i) leidas_.push_back(leer(textos.Texto(i)));
    } else {
      LeerFilas(tabla, campo, leer, nulo);
    }
  }

  std::size_t Cantidad() const noexcept { return indices_.size(); }
  const Cosa& De(std::size_t fila) const noexcept { return leidas_[indices_[fila]]; }
  std::uint32_t Indice(std::size_t fila) const noexcept { return indices_[fila]; }  // equal where the texts are

  // Of all rows, and of those told.
  std::vector<Cosa> Todas() const { return Leidas(indices_); }
  std::vector<Cosa> De(std::span<const std::uint32_t> filas) const {
    std::vector<std::uint32_t> suyos(filas.size());
    std::transform(filas.begin(), filas.end(), suyos.begin(), [this](std::uint32_t fila) { return indices_[fila]; });
    return Leidas(suyos);
  }

 private:
  // A column of numbers or truth values, as a file may hold one: each row has its own.
  template <typename Leer>
  void LeerFilas(const Tabla& tabla, std::size_t campo, const Leer& leer, Cosa nulo) {
    const std::size_t filas = tabla.Clone()->RecordCount();  // without the filter of the table
    for (std::size_t fila = 0; fila < filas; ++fila) {
      const Valor valor = tabla.Filas().Value(fila, campo);
      propios_.push_back(static_cast<std::uint32_t>(fila));
      leidas_.push_back(std::holds_alternative<std::monostate>(valor) ? nulo : leer(TextoDe(valor)));
    }
    indices_ = propios_;
  }

  // Walks what indices stand for, so that a vector is made of it in one go, with each element written once.
  struct Paso {
    using iterator_category = std::random_access_iterator_tag;
    using value_type = Cosa;
    using difference_type = std::ptrdiff_t;
    using pointer = const Cosa*;
    using reference = const Cosa&;

    reference operator*() const { return leidas[*indice]; }
    Paso& operator++() {
      ++indice;
      return *this;
    }
    difference_type operator-(const Paso& otro) const { return indice - otro.indice; }
    bool operator==(const Paso& otro) const { return indice == otro.indice; }

    const Cosa* leidas;
    const std::uint32_t* indice;
  };
  std::vector<Cosa> Leidas(std::span<const std::uint32_t> indices) const {
    return std::vector<Cosa>(Paso{leidas_.data(), indices.data()},
                             Paso{leidas_.data(), indices.data() + indices.size()});
  }

  std::vector<Cosa> leidas_;
  std::vector<std::uint32_t> propios_;
  std::span<const std::uint32_t> indices_;  // which one each row holds
};

// The number of a text that passes the numeric test; not a number for any other text and for one beyond a double.
double NumeroDeRegistro(std::string_view texto);

}  // namespace utr
