#pragma once

#include <functional>

#include "base/Fechas.h"

namespace utr {

// Lets events of the interface run once. The core is given one and never sees the event loop. May be empty: then
// nothing runs.
using Atender = std::function<void()>;

// The one source of the present time and of every wait, so that tests neither wait nor sleep.
class Reloj {
 public:
  virtual ~Reloj() = default;

  // The present local date and time of the computer.
  virtual FechaHora Ahora() const = 0;

  // A count of milliseconds that never goes back, for spans of time.
  virtual std::int64_t Milisegundos() const = 0;

  // Waits for the given time, calling `atender` again and again meanwhile. A value of 0 or less calls it once.
  virtual void Esperar(double segundos, const Atender& atender) = 0;
};

// The computer's clock.
class RelojSistema : public Reloj {
 public:
  FechaHora Ahora() const override;
  std::int64_t Milisegundos() const override;
  void Esperar(double segundos, const Atender& atender) override;
};

}  // namespace utr
