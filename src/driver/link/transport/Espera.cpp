#include "driver/link/transport/Espera.h"

#include <algorithm>
#include <cerrno>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::enlace {

namespace {

constexpr const char* kOrigen = "Comunicador";

}  // namespace

void Espera::Ceder() {
  if (Ahora() - cedido_ >= kPaso) {
    if (atender_) atender_();
    cedido_ = Ahora();
  }
  ExigirQueSiga();
}

void Espera::ExigirQueSiga() const {
  if (cancelada_ && !obstinada_) throw Error(error_enlace::kCancelada, kOrigen, "La operación fue cancelada");
}

int Espera::PasoHasta(std::int64_t hasta) const {
  return static_cast<int>(std::clamp<std::int64_t>(hasta - Ahora(), 0, kPaso));
}

bool Espera::Recibir(Linea& linea, std::vector<std::uint8_t>& destino, std::int64_t hasta) {
  for (;;) {
    const bool llego = linea.Recibir(destino, PasoHasta(hasta)) > 0;
    Ceder();
    if (llego) return true;
    if (Ahora() >= hasta) return false;
  }
}

void Espera::Enviar(Linea& linea, std::span<const std::uint8_t> bytes, std::int64_t hasta, bool compromete) {
  while (!bytes.empty()) {
    const std::size_t salieron = linea.Enviar(bytes, PasoHasta(hasta));
    if (compromete && salieron > 0) obstinada_ = true;
    bytes = bytes.subspan(salieron);
    Ceder();
    if (!bytes.empty() && Ahora() >= hasta) {
      throw Error(error_enlace::kLineaPerdida, kOrigen, "La línea no toma lo que se le manda", ETIMEDOUT);
    }
  }
}

bool Espera::Establecer(Linea& linea, std::int64_t hasta) {
  while (!linea.Lista(PasoHasta(hasta))) {
    Ceder();
    if (Ahora() >= hasta) return false;
  }
  return true;
}

void Espera::Pausar(std::int64_t milisegundos) {
  for (const std::int64_t hasta = Ahora() + milisegundos; Ahora() < hasta;) {
    reloj_.Esperar(PasoHasta(hasta) / 1000.0, {});
    Ceder();
  }
}

void Espera::Pasar(double segundos) {
  reloj_.Esperar(segundos, [this] {
    if (atender_) atender_();
    ExigirQueSiga();
  });
}

void Espera::Desoir(Linea& linea, std::int64_t milisegundos) {
  std::vector<std::uint8_t> ruido;
  for (const std::int64_t hasta = Ahora() + milisegundos; Ahora() < hasta; ruido.clear()) Recibir(linea, ruido, hasta);
}

void Espera::EsperarSilencio(Linea& linea, std::int64_t milisegundos, std::int64_t hasta) {
  std::vector<std::uint8_t> ruido;
  while (Ahora() < hasta && Recibir(linea, ruido, std::min(hasta, Ahora() + milisegundos))) ruido.clear();
}

}  // namespace utr::enlace
