#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "driver/link/protocol/Ordenes.h"
#include "driver/simulated/unit/EstadoPersistido.h"

namespace utr::simulada {

// The last orders and what became of them, kept in the state of the unit, so that they outlive its runs.
class LibroDeOrdenes {
 public:
  // What is known of an order that came in.
  enum class Trato : std::uint8_t { kNueva, kConocida, kOtroContenido };

  explicit LibroDeOrdenes(std::vector<OrdenGuardada>& ordenes) : ordenes_(ordenes) {}

  Trato TratoDe(const protocolo::Orden& orden) const;

  // A new order; the oldest gives way.
  void Anotar(const protocolo::Orden& orden, protocolo::EstadoDeOrden estado, protocolo::Motivo motivo);

  // What became of the newest one.
  void Resolver(protocolo::EstadoDeOrden estado, protocolo::Motivo motivo);

  bool HayEnCurso() const;
  std::vector<protocolo::ResultadoDeOrden> Resultados() const;  // kResultados of them, the newest first

 private:
  std::vector<OrdenGuardada>& ordenes_;
};

}  // namespace utr::simulada
