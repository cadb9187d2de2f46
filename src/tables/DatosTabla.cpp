#include "tables/DatosTabla.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/Error.h"

namespace utr {

void DatosTabla::AgregarCampo(const Campo& campo, DetalleColumna detalle) {
  por_nombre_.emplace(campo.nombre, campos.size());
  campos.push_back(campo);
  detalles.push_back(std::move(detalle));
  columnas.emplace_back(campo.tipo);
}

void DatosTabla::AgregarFila() {
  if (filas >= std::numeric_limits<std::uint32_t>::max()) Lanzar(error::kDesborde, "Tabla");
  ++filas;
}

void DatosTabla::Anotar(std::size_t fila, std::size_t campo) {
  const auto antes = [](const FilaPendiente& p, std::size_t f) { return p.fila < f; };
  const auto p = std::lower_bound(pendientes.begin(), pendientes.end(), fila, antes);
  if (p == pendientes.end() || p->fila != fila) return;
  const auto columna = static_cast<std::uint32_t>(campo);
  const auto lugar = std::lower_bound(p->puestas.begin(), p->puestas.end(), columna);
  if (lugar == p->puestas.end() || *lugar != columna) p->puestas.insert(lugar, columna);
}

void DatosTabla::Publicar() {
  publicadas = filas;
  pendientes.clear();
  originales.reset();
  borradas.reset();
}

std::unique_ptr<DatosTabla> DatosTabla::Aparte() const {
  auto aparte = std::make_unique<DatosTabla>();
  for (const auto& campo : campos) aparte->AgregarCampo(campo);
  return aparte;
}

int DatosTabla::Buscar(std::string_view nombre) const noexcept {
  const auto i = por_nombre_.find(nombre);
  return i == por_nombre_.end() ? -1 : static_cast<int>(i->second);
}

}  // namespace utr
