#include "driver/simulated/driver/ComunicadorSimulado.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "driver/ComunicadorAnotado.h"
#include "driver/simulated/driver/ComunicadorConFallas.h"
#include "driver/simulated/driver/ComunicadorEnProceso.h"
#include "driver/simulated/driver/InteriorSimulado.h"

namespace utr {

// The unit's operations, the faults that they meet, and the log of what came of it, each around the one before.
struct ComunicadorSimulado::Partes {
  Partes(const std::filesystem::path& carpeta, Reloj& reloj, Atender atender)
      : interior(carpeta, reloj, std::move(atender)) {}

  simulada::InteriorSimulado interior;
  ComunicadorEnProceso unidad{interior};
  ComunicadorConFallas con_fallas{unidad, interior};
  ComunicadorAnotado anotado{con_fallas, interior.bitacora, interior.reloj,
                             [this] { return interior.escenario.tablas_enteras; }};
};

ComunicadorSimulado::ComunicadorSimulado(const std::filesystem::path& carpeta, Reloj& reloj, Atender atender)
    : ComunicadorSimulado(std::make_unique<Partes>(carpeta, reloj, std::move(atender))) {}

ComunicadorSimulado::ComunicadorSimulado(std::unique_ptr<Partes> partes)
    : ComunicadorReenviado(static_cast<Comunicador&>(partes->anotado)), partes_(std::move(partes)) {}

ComunicadorSimulado::~ComunicadorSimulado() = default;

std::vector<std::pair<int, std::string>> ComunicadorSimulado::Puertos() {
  partes_->interior.Comenzar();
  std::vector<std::pair<int, std::string>> puertos;
  for (const int numero : partes_->interior.escenario.lineas.puertos) {
    puertos.emplace_back(numero, fmt::format("Puerto simulado {}", numero));
  }
  return puertos;
}

bool ComunicadorSimulado::TieneDireccion(std::string_view direccion) {
  partes_->interior.Comenzar();
  const auto& direcciones = partes_->interior.escenario.lineas.direcciones;
  return std::find(direcciones.begin(), direcciones.end(), direccion) != direcciones.end();
}

simulada::Fallas* ComunicadorSimulado::FallasPorLinea(simulada::Op op) {
  simulada::Fallas& fallas = partes_->interior.Mirar(op);
  return partes_->interior.escenario.lineas.fallas_por_linea ? &fallas : nullptr;
}

double ComunicadorSimulado::Factor() const {
  return partes_->interior.escenario.tiempos.factor;
}

void ComunicadorSimulado::AlContestar(std::function<void(std::optional<bool> contesta)> aviso) {
  partes_->interior.al_contestar = std::move(aviso);
}

const std::string& ComunicadorSimulado::Aviso() const {
  return partes_->interior.aviso;
}

void ComunicadorSimulado::VaciarBitacora() noexcept {
  partes_->interior.bitacora.Vaciar();
}

}  // namespace utr
