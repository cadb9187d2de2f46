#include "driver/simulated/driver/FallasPorLinea.h"

#include <utility>

#include "driver/simulated/driver/ComunicadorSimulado.h"

namespace utr {

FallasPorLinea::FallasPorLinea(ComunicadorSimulado& simulado, DePractica de_practica, Reloj& reloj, Atender atender)
    : simulado_(simulado), de_practica_(std::move(de_practica)), reloj_(reloj), atender_(std::move(atender)) {}

simulada::Fallas& FallasPorLinea::Mirar(simulada::Op op) {
  if (simulada::De(op).octetos.fijos == 0) return ninguna_;  // asks nobody
  simulada::Fallas* fallas = simulado_.FallasPorLinea(op);
  const bool hay = fallas != nullptr && !fallas->Ninguna(op);
  return hay && de_practica_().value_or(false) ? *fallas : ninguna_;
}

void FallasPorLinea::Disponer(bool bloquea, double /*atraso*/) {
  bloqueada_ = bloquea;
}

void FallasPorLinea::Esperar(double segundos) {
  reloj_.Esperar(segundos * simulado_.Factor(), [this] { Atiende(); });
}

void FallasPorLinea::Atiende() const {
  if (!bloqueada_ && atender_) atender_();
}

}  // namespace utr
