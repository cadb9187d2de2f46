#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace utr::enlace {

// An open file of the system, closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int numero = -1) noexcept : numero_(numero) {}
  ~Descriptor() { Cerrar(); }
  Descriptor(Descriptor&& otro) noexcept : numero_(std::exchange(otro.numero_, -1)) {}
  Descriptor& operator=(Descriptor&& otro) noexcept {
    if (this != &otro) {
      Cerrar();
      numero_ = std::exchange(otro.numero_, -1);
    }
    return *this;
  }

  int Numero() const noexcept { return numero_; }
  bool Abierto() const noexcept { return numero_ >= 0; }
  void Cerrar() noexcept;

 private:
  int numero_;
};

// Waits up to so many milliseconds until the file can be read from, or written to. True also when it has failed, which
// the next read or write then tells.
bool EsperarLectura(const Descriptor& descriptor, int milisegundos);
bool EsperarEscritura(const Descriptor& descriptor, int milisegundos);

// The common part of lines on files that don't block: `nombre` is what a failure calls the line.
std::size_t EnviarPor(const Descriptor& descriptor, const std::string& nombre, std::span<const std::uint8_t> bytes,
                      int milisegundos);
std::size_t RecibirPor(const Descriptor& descriptor, const std::string& nombre, std::vector<std::uint8_t>& destino,
                       int milisegundos);

}  // namespace utr::enlace
