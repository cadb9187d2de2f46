#pragma once

#include <vector>

#include "base/Reloj.h"

namespace utr {

// A clock that stands still until a test or a wait moves it. A wait takes no time: it moves the clock on, is recorded
// and lets events run once.
class RelojFalso : public Reloj {
 public:
  explicit RelojFalso(FechaHora ahora = {2026, 3, 15, 10, 0, 0}) { Poner(ahora); }

  void Poner(const FechaHora& ahora) { milisegundos_ = Segundos(ahora) * 1000; }
  void Adelantar(double segundos) { milisegundos_ += static_cast<std::int64_t>(segundos * 1000); }

  FechaHora Ahora() const override { return FechaDeSegundos(milisegundos_ / 1000); }
  std::int64_t Milisegundos() const override { return milisegundos_; }
  void Esperar(double segundos, const Atender& atender) override {
    esperas.push_back(segundos);
    if (atender) atender();
    if (segundos > 0) Adelantar(segundos);
  }

  std::vector<double> esperas;  // seconds asked for, in order

 private:
  std::int64_t milisegundos_ = 0;
};

}  // namespace utr
