#pragma once

#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "session/ModRTU.h"

namespace utr {

// The serial ports that the simulated machine has.
class PuertosSimulados : public ListaDePuertos {
 public:
  explicit PuertosSimulados(const ComunicadorSimulado& comunicador) : comunicador_(comunicador) {}

  std::vector<PuertoSerie> Listar() override {
    std::vector<PuertoSerie> puertos;
    for (const auto& [numero, nombre] : comunicador_.Puertos()) puertos.push_back({numero, nombre});
    return puertos;
  }

 private:
  const ComunicadorSimulado& comunicador_;
};

}  // namespace utr
