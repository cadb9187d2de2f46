#include "driver/simulated/station/Extremo.h"

#include <algorithm>
#include <cmath>

namespace utr::simulada {

using namespace protocolo;

Extremo::Extremo(ClaseDeLinea clase, EstacionViva& viva, Despachador& unidad)
    : clase_(clase),
      viva_(viva),
      unidad_(unidad),
      linea_(unidad.NumeroDeLinea()),
      azar_(viva.escenario.cable, linea_) {}

void Extremo::Reabrir() {
  rtu_.Vaciar();
  tcp_ = {};
  salida_.Vaciar();
  entrada_ = tramas_ = 0;
  colgado_ = false;
}

bool Extremo::Oye() const {
  return clase_ != ClaseDeLinea::kSerie || velocidad_ == 0 || velocidad_ == unidad_.Velocidad();
}

// Bits per second of what travels; 0: it takes no time. A call has the speed of its slower end, and a network none of
// its own.
double Extremo::Ritmo() const {
  const Tiempos& tiempos = viva_.escenario.tiempos;
  const double veces = tiempos.linea * tiempos.factor;
  if (azar_.Fallas().bits_por_segundo > 0) return azar_.Fallas().bits_por_segundo;
  if (!con_ritmo_ || !EnSerie() || veces <= 0) return 0;
  const int propia = unidad_.Velocidad();
  return (velocidad_ > 0 ? std::min(velocidad_, propia) : propia) / veces;
}

std::int64_t Extremo::MayorHueco() const {
  return clase_ == ClaseDeLinea::kLlamada ? kMayorHuecoEnLlamada : kMayorHueco;
}

void Extremo::Recibir(VistaBytes bytes, std::int64_t ahora) {
  if (colgado_ || !Oye()) return;
  if (azar_.Fallas() != viva_.escenario.cable) azar_ = Azar(viva_.escenario.cable, linea_);
  Atender(ahora);  // a gap ahead of these bytes breaks what came before them
  recibido_ = ahora;
  const double ritmo = Ritmo();
  const double duracion = ritmo > 0 ? static_cast<double>(bytes.size()) * 10000 / ritmo : 0;
  entrada_ = std::max(entrada_, ahora) + static_cast<std::int64_t>(std::ceil(duracion));
  if (EnSerie()) {
    rtu_.Recibir(bytes);
  } else {
    tcp_.Recibir(bytes);
  }
  Atender(ahora);
}

void Extremo::Atender(std::int64_t ahora) {
  const auto proxima = [this] { return EnSerie() ? rtu_.Proxima() : tcp_.Proxima(); };
  for (auto trama = proxima(); trama; trama = proxima()) AtenderTrama(*trama, ahora);
  colgado_ = colgado_ || tcp_.Roto();
  while (EnSerie() && !rtu_.Vacio() && ahora - recibido_ > MayorHueco()) {
    rtu_.Cortar();
    while (const auto trama = rtu_.Proxima()) AtenderTrama(*trama, ahora);
  }
}

Bytes Extremo::Enmarcar(const Trama& trama, VistaBytes pdu) const {
  return EnSerie() ? TramaRtu(trama.direccion, pdu) : TramaTcp(trama.transaccion, trama.direccion, pdu);
}

// The request as the faults leave it: another frame where its check doesn't tell, none where it does.
std::optional<Trama> Extremo::Estropeada(const Trama& trama) {
  const auto bytes = azar_.Pedido(Enmarcar(trama, trama.pdu), EnSerie());
  if (!bytes || !EnSerie()) return bytes ? std::optional(trama) : std::nullopt;
  ReceptorRtu receptor(Sentido::kPedido);
  receptor.Recibir(*bytes);
  return receptor.Proxima();
}

void Extremo::AtenderTrama(const Trama& trama, std::int64_t ahora) {
  if (colgado_) return;
  const int corta = azar_.Fallas().corta_despues;
  ++tramas_;
  colgado_ = corta > 0 && tramas_ > corta;
  if (colgado_) return;
  const auto pedido = Estropeada(trama);
  const auto pdu = pedido ? unidad_.Responder(pedido->direccion, pedido->pdu, !EnSerie()) : std::nullopt;
  if (!pdu) return;
  const std::int64_t listo = std::max(ahora, entrada_);
  for (const Azar::Tramo& tramo : azar_.Respuesta(Enmarcar(*pedido, *pdu), EnSerie())) {
    salida_.Poner(tramo.bytes, listo + tramo.demora, Ritmo());
  }
}

Bytes Extremo::Entregar(std::int64_t ahora) {
  Atender(ahora);
  return salida_.Tomar(ahora);
}

std::optional<std::int64_t> Extremo::Proximo() const {
  auto proximo = salida_.Proximo();
  if (EnSerie() && !rtu_.Vacio()) {
    const std::int64_t corte = recibido_ + MayorHueco() + 1;
    proximo = proximo ? std::min(*proximo, corte) : corte;
  }
  return proximo;
}

}  // namespace utr::simulada
