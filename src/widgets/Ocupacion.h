#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "services/Operador.h"

namespace utr {

class PanelAviso;

// What a window at work shows, and what stays usable in it.
struct OpcionesOcupacion {
  Operador* operador = nullptr;         // brings the hourglass; null: the pointer stays as it is
  PanelAviso* panel = nullptr;          // seen meanwhile, if any
  std::vector<QWidget*> apagados{};     // look off; what was off already stays so afterwards
  std::vector<QWidget*> siguen{};       // inside those or not: stay on and take input, as a cancel button does
  std::function<void()> al_cancelar{};  // what Esc and the close button do; empty: nothing
  std::function<void()> al_cambiar{};   // called when the window is busy, and again when it isn't any more
};

// A window at work, for the span of a scope: its panel is up, the hourglass stands, and no click, key or close reaches
// it, nor what pops up from it. Other windows are as they were, so a box or a dialog may be shown meanwhile.
//
// At the end, whichever way the scope is left, what the operator typed and clicked while the program was blocked is
// taken and dropped before the window opens up, and the keyboard goes back to where it was. Nested use is fine: the
// innermost one rules, and the window opens up with the last. A window that dies meanwhile is left alone.
class Ocupacion {
 public:
  explicit Ocupacion(QWidget& ventana, const OpcionesOcupacion& opciones = {});
  ~Ocupacion();
  Ocupacion(const Ocupacion&) = delete;
  Ocupacion& operator=(const Ocupacion&) = delete;

  // The window is at work now.
  static bool Ocupada(const QWidget& ventana);

 private:
  class Guardia;

  std::optional<PunteroDeEspera> puntero_;
  QPointer<QObject> guardia_;  // goes with the window
};

}  // namespace utr
