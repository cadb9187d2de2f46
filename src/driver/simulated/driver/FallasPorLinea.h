#pragma once

#include <functional>
#include <optional>

#include "base/Reloj.h"
#include "driver/simulated/driver/ComunicadorConFallas.h"

namespace utr {

class ComunicadorSimulado;

// The faults of the simulated station's scenario around a driver over a line, in the operations that ask the unit,
// where the scenario wants them there too. None ever strikes a real unit: ahead of each the driver has to know that the
// one which answers is to practise with. Present values can't be made old over a line.
class FallasPorLinea final : public EntornoDeFallas {
 public:
  using DePractica = std::function<std::optional<bool>()>;

  // All must outlive it. `de_practica` asks the unit where that isn't known, and gives nothing when nobody answers.
  FallasPorLinea(ComunicadorSimulado& simulado, DePractica de_practica, Reloj& reloj, Atender atender);

  simulada::Fallas& Mirar(simulada::Op op) override;
  void Disponer(bool bloquea, double atraso) override;
  void Esperar(double segundos) override;

  // Lets events of the interface run, unless a fault blocks the call at hand: for the waits of the driver itself.
  void Atiende() const;

 private:
  ComunicadorSimulado& simulado_;
  DePractica de_practica_;
  Reloj& reloj_;
  Atender atender_;
  simulada::Fallas ninguna_;
  bool bloqueada_ = false;
};

}  // namespace utr
