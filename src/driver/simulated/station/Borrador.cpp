#include "driver/simulated/station/Borrador.h"

#include <algorithm>

namespace utr::simulada {

using namespace protocolo;

bool Borrador::Admite(std::uint32_t sesion, std::int64_t ahora) const {
  return sesion_ == 0 || sesion_ == sesion || Caduco(ahora);
}

bool Borrador::Escribir(std::uint32_t sesion, std::int64_t ahora, std::size_t pieza, VistaBytes datos) {
  const std::size_t cuantas = datos.size() / kBytesPorPieza;
  if (pieza + cuantas > kMayorImagen / kBytesPorPieza) return false;
  if (sesion_ != sesion || Caduco(ahora)) Vaciar();
  sesion_ = sesion;
  escrito_ = ahora;
  if (piezas_.size() < pieza + cuantas) {
    piezas_.resize(pieza + cuantas);
    bytes_.resize(piezas_.size() * kBytesPorPieza);
  }
  std::copy(datos.begin(), datos.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(pieza * kBytesPorPieza));
  std::fill_n(piezas_.begin() + static_cast<std::ptrdiff_t>(pieza), cuantas, true);
  return true;
}

std::optional<Bytes> Borrador::Imagen(std::uint32_t sesion, std::int64_t ahora, const Resumen& resumen) const {
  if (sesion_ != sesion || Caduco(ahora) || resumen.largo > bytes_.size()) return std::nullopt;
  const auto piezas = static_cast<std::ptrdiff_t>(PiezasDe(resumen.largo));
  if (!std::all_of(piezas_.begin(), piezas_.begin() + piezas, [](bool escrita) { return escrita; }))
    return std::nullopt;
  Bytes imagen(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(resumen.largo));
  if (ResumenDe(imagen) != resumen) return std::nullopt;
  return imagen;
}

void Borrador::Vaciar() {
  sesion_ = 0;
  bytes_.clear();
  piezas_.clear();
}

}  // namespace utr::simulada
