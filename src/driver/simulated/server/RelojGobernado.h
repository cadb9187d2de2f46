#pragma once

#include <optional>

#include "base/Reloj.h"

namespace utr::simulada {

// The computer's clock, until somebody sets the date and moves it on by hand: then the date stands still otherwise.
// Milliseconds go on by themselves in any case, since bytes travel.
class RelojGobernado final : public Reloj {
 public:
  explicit RelojGobernado(const std::optional<FechaHora>& fecha = std::nullopt) {
    if (fecha) Fijar(*fecha);
  }

  void Fijar(const FechaHora& fecha) { fijada_ = Segundos(fecha) * 1000; }
  void Adelantar(std::int64_t milisegundos) {
    adelanto_ += milisegundos;
    if (fijada_) *fijada_ += milisegundos;
  }

  FechaHora Ahora() const override { return fijada_ ? FechaDeSegundos(*fijada_ / 1000) : sistema_.Ahora(); }
  std::int64_t Milisegundos() const override { return sistema_.Milisegundos() + adelanto_; }
  void Esperar(double segundos, const Atender& atender) override { sistema_.Esperar(segundos, atender); }

 private:
  RelojSistema sistema_;
  std::int64_t adelanto_ = 0;
  std::optional<std::int64_t> fijada_;  // milliseconds from 01/01/1970
};

}  // namespace utr::simulada
