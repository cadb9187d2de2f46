#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/Reloj.h"
#include "driver/link/transport/Linea.h"

namespace utr::enlace {

// The waits of one operation on a line: in short steps, between which events of the interface run, and which end when
// the operation is cancelled. Moments are milliseconds of the clock.
class Espera {
 public:
  // The longest time in which nothing runs but the wait; a cancel is heard within it.
  static constexpr int kPaso = 15;

  Espera(Reloj& reloj, Atender atender) : reloj_(reloj), atender_(std::move(atender)) {}

  std::int64_t Ahora() const { return reloj_.Milisegundos(); }

  // An operation begins: whatever was cancelled before was another one.
  void Comenzar() { cancelada_ = obstinada_ = false; }
  void Cancelar() { cancelada_ = true; }
  bool Cancelada() const { return cancelada_; }

  // Raises kCancelada for an operation that was cancelled, and can be.
  void ExigirQueSiga() const;

  // What happens from here on can't be cancelled any more, or can again.
  void Obstinarse(bool activo) { obstinada_ = activo; }

  // Appends what arrives until `hasta` at the latest. False: nothing came. Raises kCancelada, and what the line raises.
  bool Recibir(Linea& linea, std::vector<std::uint8_t>& destino, std::int64_t hasta);

  // Hands all the bytes over; with `compromete` the operation can't be cancelled any more once the first of them went
  // out. Raises kLineaPerdida, with the system's number of a time-out, when the line doesn't take them until `hasta`.
  void Enviar(Linea& linea, std::span<const std::uint8_t> bytes, std::int64_t hasta, bool compromete = false);

  // Waits until the line stands. False: not until `hasta`.
  bool Establecer(Linea& linea, std::int64_t hasta);

  // Listens for so long and drops what arrives.
  void Desoir(Linea& linea, std::int64_t milisegundos);

  // Listens until nothing has come for so long, or until `hasta`, and drops what arrives.
  void EsperarSilencio(Linea& linea, std::int64_t milisegundos, std::int64_t hasta);

  // Waits without listening, between two looks at the unit. Raises kCancelada.
  void Pausar(std::int64_t milisegundos);

  // The same for a wait that is an operation of its own.
  void Pasar(double segundos);

  // Lets events run where none have for a step. Raises kCancelada.
  void Ceder();

 private:
  int PasoHasta(std::int64_t hasta) const;

  Reloj& reloj_;
  Atender atender_;
  bool cancelada_ = false;
  bool obstinada_ = false;
  std::int64_t cedido_ = 0;
};

}  // namespace utr::enlace
