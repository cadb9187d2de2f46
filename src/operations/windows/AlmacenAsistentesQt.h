#pragma once

#include "operations/AlmacenAsistentes.h"

namespace utr {

// The store of the wizards among the user's own settings.
class AlmacenAsistentesQt : public AlmacenAsistentes {
 public:
  std::string Leer(std::string_view seccion, std::string_view clave) const override;
  void Guardar(std::string_view seccion, std::string_view clave, std::string_view valor) override;
};

}  // namespace utr
