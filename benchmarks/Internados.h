#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// What whoever keeps a table within its memory can't do without: each text once, found by its bytes.
namespace medida {

class Internados {
 public:
  // The number of the text, from 1 on; a new one is kept.
  std::uint32_t Numero(std::string_view texto) {
    if ((textos_.size() + 1) * 3 > ranuras_.size() * 2) Crecer();
    const auto dispersion = static_cast<std::uint32_t>(std::hash<std::string_view>{}(texto));
    std::size_t i = dispersion & (ranuras_.size() - 1);
    for (; ranuras_[i].numero != 0; i = (i + 1) & (ranuras_.size() - 1)) {
      if (ranuras_[i].dispersion == dispersion && Texto(ranuras_[i].numero) == texto) return ranuras_[i].numero;
    }
    textos_.push_back({bytes_.size(), texto.size()});
    bytes_ += texto;
    ranuras_[i] = {dispersion, static_cast<std::uint32_t>(textos_.size())};
    return ranuras_[i].numero;
  }

  std::string_view Texto(std::uint32_t numero) const {
    const Entrada& e = textos_[numero - 1];
    return {bytes_.data() + e.desde, e.largo};
  }

 private:
  struct Entrada {
    std::size_t desde;
    std::size_t largo;
  };
  struct Ranura {
    std::uint32_t dispersion = 0;
    std::uint32_t numero = 0;  // 0: free
  };

  void Crecer() {
    const std::size_t nuevo = ranuras_.empty() ? 16 : ranuras_.size() * 2;
    std::vector<Ranura> mayor(nuevo);
    for (const Ranura& ranura : ranuras_) {
      if (ranura.numero == 0) continue;
      std::size_t i = ranura.dispersion & (nuevo - 1);
      while (mayor[i].numero != 0) i = (i + 1) & (nuevo - 1);
      mayor[i] = ranura;
    }
    ranuras_ = std::move(mayor);
  }

  std::vector<Ranura> ranuras_;  // a power of two
  std::vector<Entrada> textos_;
  std::string bytes_;
};

}  // namespace medida
