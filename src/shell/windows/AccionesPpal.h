#pragma once

#include <array>

namespace utr {

class frmPpal;

// One command of the main window's two numbered menus, or of that of the visit.
struct AccionPpal {
  const char* texto;
  const char* tecla;
  const char* que_hace;
  const char* icono;
  void (frmPpal::*hacer)();
  bool reconecta = false;           // a port that was lost is asked about first
  bool olvida_predefinida = false;  // the predefined parametrization in use is forgotten
};

extern const std::array<AccionPpal, 9> kAcciones;   // "&Acciones"
extern const std::array<AccionPpal, 7> kAvanzadas;  // "A&vanzadas", behind the password
extern const std::array<AccionPpal, 3> kVisita;     // "V&isita"

}  // namespace utr
