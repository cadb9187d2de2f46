#pragma once

#include <optional>

#include "base/Fechas.h"
#include "widgets/Recuerdos.h"

namespace utr {

struct ModRTU;

// When each station was visited, kept for each user by the identifier of the station. A visit goes on while the unit
// gives something at least every six hours, whether or not the program is started anew meanwhile; stations to practise
// with are kept apart from those of the field.
class Visitas {
 public:
  // Of the station that the settings point at now.
  explicit Visitas(const ModRTU& mod);

  // The unit has just given something.
  void Anotar();

  // When the visit before the one under way ended; nothing while none is known.
  std::optional<FechaHora> FinDeLaAnterior() const;

 private:
  std::optional<FechaHora> Leer(const char* nombre) const;
  bool SigueDesde(const FechaHora& ultima) const;

  FechaHora ahora_;
  Recuerdos recuerdos_;
};

}  // namespace utr
