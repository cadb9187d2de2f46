#include "driver/simulated/station/LibroDeOrdenes.h"

#include <algorithm>

namespace utr::simulada {

using namespace protocolo;

namespace {

// Without the check that the block ends with: a check over that would tell half as much.
std::uint32_t HuellaDe(const Orden& orden) {
  auto registros = BloqueDe(orden);
  registros.resize(registros.size() - 2);
  return Crc32(BytesDe(registros));
}

}  // namespace

LibroDeOrdenes::Trato LibroDeOrdenes::TratoDe(const Orden& orden) const {
  const auto hallada = std::find_if(ordenes_.begin(), ordenes_.end(), [&orden](const OrdenGuardada& o) {
    return o.sesion == orden.sesion && o.secuencia == orden.secuencia;
  });
  if (hallada == ordenes_.end()) return Trato::kNueva;
  return hallada->huella == HuellaDe(orden) ? Trato::kConocida : Trato::kOtroContenido;
}

void LibroDeOrdenes::Anotar(const Orden& orden, EstadoDeOrden estado, Motivo motivo) {
  const OrdenGuardada nueva{orden.sesion, orden.secuencia, HuellaDe(orden), static_cast<std::uint16_t>(estado),
                            static_cast<std::uint16_t>(motivo)};
  ordenes_.insert(ordenes_.begin(), nueva);
  if (ordenes_.size() > kResultados) ordenes_.resize(kResultados);
}

void LibroDeOrdenes::Resolver(EstadoDeOrden estado, Motivo motivo) {
  ordenes_.front().estado = static_cast<std::uint16_t>(estado);
  ordenes_.front().motivo = static_cast<std::uint16_t>(motivo);
}

bool LibroDeOrdenes::HayEnCurso() const {
  return !ordenes_.empty() && ordenes_.front().estado == static_cast<std::uint16_t>(EstadoDeOrden::kEnCurso);
}

std::vector<ResultadoDeOrden> LibroDeOrdenes::Resultados() const {
  std::vector<ResultadoDeOrden> resultados;
  for (const OrdenGuardada& o : ordenes_) {
    resultados.push_back({o.sesion, o.secuencia, static_cast<EstadoDeOrden>(o.estado), static_cast<Motivo>(o.motivo)});
  }
  resultados.resize(kResultados);
  return resultados;
}

}  // namespace utr::simulada
