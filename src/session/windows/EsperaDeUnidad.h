#pragma once

#include <QObject>

#include "session/SituacionDelEnlace.h"
#include "widgets/Ocupacion.h"

class QPushButton;

namespace utr {

struct ModRTU;

// A call to the unit that may take long, for the span of a scope, in the panel of a window at work: since when it
// waits; how long that is and what came over the line, as far as the driver lets the window know; and, where the driver
// can end what is running, a button that does so. Esc and the close button of the window do the same.
//
//   OpcionesOcupacion opciones = AlTrabajar();
//   EsperaDeUnidad espera(mod, opciones);
//   const Ocupacion ocupacion(*this, opciones);
class EsperaDeUnidad : public QObject {
  Q_OBJECT

 public:
  // Whether the operator may end the work: where the driver can end a call, or always, for work of many calls.
  enum class Cancelable : std::uint8_t { kSegunElEnlace, kSiempre };

  // `opciones` has a panel.
  EsperaDeUnidad(ModRTU& mod, OpcionesOcupacion& opciones, Cancelable cancelable = Cancelable::kSegunElEnlace);
  ~EsperaDeUnidad() override;
  EsperaDeUnidad(const EsperaDeUnidad&) = delete;
  EsperaDeUnidad& operator=(const EsperaDeUnidad&) = delete;

  // Runs a call to the unit. False: the operator cancelled it and the driver gave up. Raises what else it raises.
  bool Llamar(const std::function<void()>& llamada);

  // The operator asked to end it.
  bool Cancelada() const { return cancelada_; }

  // Ends the call that is running, as the button does.
  void Cancelar();

 private:
  void PonerBoton(OpcionesOcupacion& opciones);
  void Mostrar();

  ModRTU& mod_;
  PanelAviso& panel_;
  QPushButton* boton_ = nullptr;
  std::string desde_;
  std::int64_t comienzo_;  // milliseconds of the clock
  CuentaDeLinea al_comenzar_;
  bool cancelada_ = false;
};

}  // namespace utr
