#include "tables/Diccionario.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

#include "base/Error.h"
#include "base/Texto.h"

namespace utr {
namespace {

// Reads a number of fixed size from bytes that may stand anywhere.
template <typename T>
std::uint64_t Tomar(const char* p) noexcept {
  T w;
  std::memcpy(&w, p, sizeof w);
  return w;
}

// The first eight bytes; of a shorter text all of them, in an arrangement that is one to one for each length.
std::uint64_t Cabeza(std::string_view t) noexcept {
  const char* p = t.data();
  const std::size_t n = t.size();
  if (n >= 8) return Tomar<std::uint64_t>(p);
  if (n >= 4) return Tomar<std::uint32_t>(p) | Tomar<std::uint32_t>(p + n - 4) << 32;
  if (n >= 2) return Tomar<std::uint16_t>(p) | Tomar<std::uint16_t>(p + n - 2) << 16;
  return n == 1 ? Tomar<std::uint8_t>(p) : 0;
}

std::uint64_t Mezclar(std::uint64_t h, std::uint64_t w) noexcept {
  h = (h ^ w) * 0xD6E8FEB86659FD93ULL;
  return h ^ (h >> 32);
}

}  // namespace

std::size_t DispersionSinCaso::operator()(std::string_view texto) const noexcept {
  std::uint64_t h = texto.size();
  for (std::size_t i = 0; i < texto.size(); ++i) {
    auto c = static_cast<unsigned char>(texto[i]);
    if (c >= 'A' && c <= 'Z') c |= 0x20U;
    if (c == 0xC3 && i + 1 < texto.size()) {  // a letter of Latin-1, but for the sign of multiplication
      const auto d = static_cast<unsigned char>(texto[++i]);
      c = d >= 0x80 && d <= 0x9E && d != 0x97 ? d ^ 0x20U : d;
    }
    h = Mezclar(h, c);
  }
  return h;
}

bool IgualdadSinCaso::operator()(std::string_view a, std::string_view b) const noexcept {
  if (a.size() != b.size()) return false;
  return a == b || IgualSinCaso(a, b);
}

Diccionario::Clave Diccionario::ClaveDe(std::string_view texto) noexcept {
  Clave clave{Cabeza(texto), 0, 0};
  std::uint64_t h = Mezclar(texto.size() * 0x9E3779B97F4A7C15ULL, clave.cabeza);
  for (std::size_t i = 8; i < texto.size(); i += 8) h = Mezclar(h, Cabeza(texto.substr(i)));
  clave.dispersion = static_cast<std::uint32_t>(h * 0x9E3779B97F4A7C15ULL >> 32);
  clave.marca = (clave.dispersion & 0xFFFFFF00U) | static_cast<std::uint32_t>(std::min<std::size_t>(texto.size(), 255));
  return clave;
}

const char* Diccionario::Guardar(std::string_view texto) {
  static constexpr char kVacio[kHolgura + 1] = {};
  if (texto.empty()) return kVacio;
  std::size_t cual = abierto_;
  if (texto.size() > libre_) {
    // A long text gets a block of its own, so that the present one stays in use.
    const std::size_t bloque = std::clamp(bytes_, kBloqueMenor, kBloqueMayor);
    const bool propio = texto.size() > bloque / 4;
    const std::size_t tamano = propio ? texto.size() : bloque;
    bloques_.push_back({std::make_unique_for_overwrite<char[]>(tamano + kHolgura)});
    bytes_ += tamano + kHolgura;
    cual = bloques_.size() - 1;
    if (!propio) abierto_ = cual;
    if (!propio) libre_ = tamano;
  }
  Bloque& bloque = bloques_[cual];
  char* destino = bloque.bytes.get() + bloque.usados;
  std::memcpy(destino, texto.data(), texto.size());
  bloque.usados += texto.size();
  if (cual == abierto_) libre_ -= texto.size();
  return destino;
}

void Diccionario::Crecer() {
  constexpr std::size_t kPorMarca = std::size_t{1} << 24;  // as many slots as the hash in a mark tells apart
  const std::size_t nuevo = std::max<std::size_t>(16, ranuras_.size() * 2);
  const auto anteriores = std::exchange(ranuras_, std::vector<Ranura>(nuevo));
  salto_ = static_cast<unsigned>(std::max(32 - std::countr_zero(nuevo), 0));
  for (const Ranura& ranura : anteriores) {
    if (ranura.numero == 0) continue;
    const std::uint32_t dispersion = nuevo <= kPorMarca ? ranura.marca : ClaveDe(Texto(ranura.numero)).dispersion;
    std::size_t i = dispersion >> salto_;
    while (ranuras_[i].numero != 0) i = (i + 1) & (nuevo - 1);
    ranuras_[i] = ranura;
  }
}

std::uint32_t Diccionario::Numero(std::string_view texto, const Clave& clave) {
  if ((entradas_.size() + 1) * 3 > ranuras_.size() * 2) Crecer();
  const std::size_t mascara = ranuras_.size() - 1;
  std::size_t i = clave.dispersion >> salto_;
  for (; ranuras_[i].numero != 0; i = (i + 1) & mascara) {
    if (Es(ranuras_[i], clave, texto)) return ranuras_[i].numero;
  }
  if (texto.size() > std::numeric_limits<std::uint32_t>::max() || entradas_.size() > 0xFFFFFFF0U) {
    Lanzar(error::kDesborde, "Tabla");
  }
  entradas_.push_back({Guardar(texto), static_cast<std::uint32_t>(texto.size())});
  ranuras_[i] = {clave.cabeza, static_cast<std::uint32_t>(entradas_.size()), clave.marca};
  return ranuras_[i].numero;
}

void Diccionario::IndexarSinCaso() {
  if (anteriores_.size() == entradas_.size()) return;
  if (ultimos_.size() < entradas_.size()) {
    anteriores_.clear();
    ultimos_.assign(std::bit_ceil(entradas_.size() * 2), 0);
  }
  anteriores_.reserve(entradas_.size());
  while (anteriores_.size() < entradas_.size()) {
    const auto numero = static_cast<std::uint32_t>(anteriores_.size() + 1);
    std::uint32_t& ultimo = ultimos_[DispersionSinCaso{}(Texto(numero)) & (ultimos_.size() - 1)];
    anteriores_.push_back(std::exchange(ultimo, numero));
  }
}

void Diccionario::IgualesSinCaso(std::string_view texto, std::uint32_t desde, std::vector<std::uint32_t>& numeros) {
  IndexarSinCaso();
  if (ultimos_.empty()) return;
  const std::size_t antes = numeros.size();
  std::uint32_t n = ultimos_[DispersionSinCaso{}(texto) & (ultimos_.size() - 1)];
  for (; n > desde; n = anteriores_[n - 1]) {
    if (IgualdadSinCaso{}(Texto(n), texto)) numeros.push_back(n);
  }
  std::reverse(numeros.begin() + static_cast<std::ptrdiff_t>(antes), numeros.end());
}

std::size_t Diccionario::Memoria() const noexcept {
  return bytes_ + entradas_.capacity() * sizeof(Entrada) + ranuras_.capacity() * sizeof(Ranura) +
         (ultimos_.capacity() + anteriores_.capacity()) * sizeof(std::uint32_t);
}

}  // namespace utr
