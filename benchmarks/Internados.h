#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What whoever keeps a table within its memory can't do without: each text once, found by its bytes.
namespace medida {

class Internados {
 public:
  // The number of the text, from 1 on; a new one is kept.
  std::uint32_t Numero(std::string_view texto) { return Numero(texto, Dispersion(Buscada(texto), texto)); }

  // The same in two steps, between which the place where the text would be is brought near.
  std::size_t Anticipar(std::string_view texto) const {
    const std::size_t dispersion = Dispersion(Buscada(texto), texto);
    if (!ranuras_.empty()) __builtin_prefetch(&ranuras_[dispersion & (ranuras_.size() - 1)]);
    return dispersion;
  }
  std::uint32_t Numero(std::string_view texto, std::size_t dispersion) {
    if ((textos_.size() + 1) * 3 > ranuras_.size() * 2) Crecer();
    const Ranura buscada = Buscada(texto);
    const std::size_t mascara = ranuras_.size() - 1;
    std::size_t i = dispersion & mascara;
    for (; ranuras_[i].numero != 0; i = (i + 1) & mascara) {
      const bool puede = ranuras_[i].cabeza == buscada.cabeza && ranuras_[i].largo == buscada.largo;
      if (puede && (texto.size() <= 8 || Texto(ranuras_[i].numero) == texto)) return ranuras_[i].numero;
    }
    textos_.push_back({bytes_.size(), texto.size()});
    bytes_ += texto;
    ranuras_[i] = {buscada.cabeza, buscada.largo, static_cast<std::uint32_t>(textos_.size())};
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
  // With its first bytes, so that a short text is found without looking anywhere else.
  struct Ranura {
    std::uint64_t cabeza = 0;
    std::uint32_t largo = 0;
    std::uint32_t numero = 0;  // 0: free
  };

  template <typename Palabra>
  static std::uint64_t Tomar(const char* p) {
    Palabra palabra;
    std::memcpy(&palabra, p, sizeof palabra);
    return palabra;
  }

  static std::uint64_t Cabeza(std::string_view t) {
    const std::size_t n = t.size();
    if (n >= 8) return Tomar<std::uint64_t>(t.data());
    if (n >= 4) return Tomar<std::uint32_t>(t.data()) | Tomar<std::uint32_t>(t.data() + n - 4) << 32;
    if (n >= 2) return Tomar<std::uint16_t>(t.data()) | Tomar<std::uint16_t>(t.data() + n - 2) << 16;
    return n == 1 ? Tomar<std::uint8_t>(t.data()) : 0;
  }

  static Ranura Buscada(std::string_view texto) { return {Cabeza(texto), static_cast<std::uint32_t>(texto.size()), 0}; }

  static std::size_t Dispersion(const Ranura& ranura, std::string_view texto) {
    constexpr std::uint64_t kMezcla = 0x9E3779B97F4A7C15ULL;
    std::uint64_t h = (ranura.cabeza + texto.size()) * kMezcla;
    for (std::size_t i = 8; i < texto.size(); i += 8) h = ((h ^ (h >> 29)) + Cabeza(texto.substr(i))) * kMezcla;
    return h >> 32;
  }

  void Crecer() {
    const std::size_t cuantas = ranuras_.empty() ? 1024 : ranuras_.size() * 2;
    const std::vector<Ranura> anteriores = std::exchange(ranuras_, std::vector<Ranura>(cuantas));
    for (const Ranura& ranura : anteriores) {
      if (ranura.numero == 0) continue;
      std::size_t i = Dispersion(ranura, Texto(ranura.numero)) & (ranuras_.size() - 1);
      while (ranuras_[i].numero != 0) i = (i + 1) & (ranuras_.size() - 1);
      ranuras_[i] = ranura;
    }
  }

  std::vector<Ranura> ranuras_;  // a power of two
  std::vector<Entrada> textos_;
  std::string bytes_;
};

}  // namespace medida
