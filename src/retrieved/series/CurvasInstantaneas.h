#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tables/Tabla.h"

namespace utr {

// What the reads of present values of the last half hour gave, by channel: what a technician looks at while he moves a
// sensor.
class CurvasInstantaneas {
 public:
  static constexpr std::int64_t kSegundos = 30 * 60;

  struct Punto {
    std::int64_t momento = 0;  // of the read, by the clock of this machine
    double valor = 0;
  };
  struct Curva {
    std::string canal;  // its name, "EA01"
    std::string descripcion;
    std::string unidad;
    std::deque<Punto> puntos;  // in the order of time, all within kSegundos of the last one
  };

  // Adds a read as PresentacionDatosInstantaneos gives it. A value that is no number adds nothing to its curve; a
  // channel that the read lacks loses its curve, and one whose clock went back begins anew.
  void Agregar(const Tabla& lectura);
  void Vaciar() noexcept { curvas_.clear(); }

  // In the order of the last read.
  const std::vector<Curva>& Curvas() const noexcept { return curvas_; }

 private:
  std::vector<Curva> curvas_;
};

}  // namespace utr
