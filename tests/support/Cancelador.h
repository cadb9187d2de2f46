#pragma once

#include "base/Progreso.h"

namespace utr::prueba {

// An operator who cancels when asked once more than so many times.
class Cancelador : public SinProgreso {
 public:
  explicit Cancelador(int cuando) : faltan_(cuando) {}
  bool Cancelado() override { return --faltan_ < 0; }

 private:
  int faltan_;
};

}  // namespace utr::prueba
