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
    double valor = 0;          // not a number where the read had none
    bool sigue = false;        // a line joins it with the one before
  };
  struct Curva {
    std::string canal;  // its name, "EA01"
    std::string descripcion;
    std::string unidad;
    std::deque<Punto> puntos;  // in the order of time, all within kSegundos of the last one
  };

  // Adds a read as PresentacionDatosInstantaneos gives it. A channel that the read lacks loses its curve, and one whose
  // clock went back begins anew.
  void Agregar(const Tabla& lectura);
  // A read is missing ahead of the next one: no line leads over what nobody saw.
  void Interrumpir() noexcept { interrumpida_ = true; }
  void Vaciar() noexcept { curvas_.clear(); }

  // In the order of the last read.
  const std::vector<Curva>& Curvas() const noexcept { return curvas_; }

 private:
  std::vector<Curva> curvas_;
  bool interrumpida_ = false;
};

}  // namespace utr
