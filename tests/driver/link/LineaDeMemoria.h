#pragma once

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <utility>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/transport/Linea.h"
#include "support/RelojFalso.h"

namespace utr::prueba {

// A line to a station in memory, on which time passes only while something is waited for: then the clock goes straight
// to when the next byte is due.
template <class Otro>
class LineaDeMemoria : public enlace::Linea {
 public:
  LineaDeMemoria(std::unique_ptr<Otro> otro, RelojFalso& reloj) : otro_(std::move(otro)), reloj_(reloj) {}

  bool Lista(int) override { return true; }
  std::size_t Enviar(std::span<const std::uint8_t> bytes, int) override {
    ExigirAbierta();
    otro_->Recibir(bytes, reloj_.Milisegundos());
    return bytes.size();
  }
  std::size_t Recibir(std::vector<std::uint8_t>& destino, int milisegundos) override {
    const std::int64_t hasta = reloj_.Milisegundos() + milisegundos;
    for (;;) {
      const auto bytes = otro_->Entregar(reloj_.Milisegundos());
      destino.insert(destino.end(), bytes.begin(), bytes.end());
      if (!bytes.empty()) return bytes.size();
      ExigirAbierta();
      const std::int64_t ahora = reloj_.Milisegundos();
      if (ahora >= hasta) return 0;
      const std::int64_t proximo = otro_->Proximo().value_or(hasta);
      reloj_.Adelantar(static_cast<double>(std::clamp(proximo, ahora + 1, hasta) - ahora) / 1000);
    }
  }
  bool Rts(bool) override { return true; }
  bool Dtr(bool) override { return false; }

 private:
  void ExigirAbierta() {
    if (otro_->Colgado()) throw Error(error_enlace::kLineaPerdida, "LineaDeMemoria", "Se perdió la línea", EIO);
  }

  std::unique_ptr<Otro> otro_;
  RelojFalso& reloj_;
};

}  // namespace utr::prueba
