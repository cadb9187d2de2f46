#include "driver/simulated/driver/ComunicadorSimulado.h"

#include "driver/Dias.h"
#include "driver/simulated/driver/InteriorSimulado.h"

// Life of the driver, its log and what needs no link. The other operations lie in OperacionesLectura.cpp,
// OperacionesEscritura.cpp and OperacionesEnlace.cpp.
namespace utr {

ComunicadorSimulado::ComunicadorSimulado(std::filesystem::path carpeta, Reloj& reloj, Atender atender)
    : interior_(std::make_unique<Interior>(std::move(carpeta), reloj, std::move(atender))) {}

ComunicadorSimulado::~ComunicadorSimulado() = default;

std::vector<std::pair<int, std::string>> ComunicadorSimulado::Puertos() const {
  std::vector<std::pair<int, std::string>> puertos;
  for (const int numero : interior_->escenario.lineas.puertos) {
    puertos.emplace_back(numero, fmt::format("Puerto simulado {}", numero));
  }
  return puertos;
}

const std::string& ComunicadorSimulado::Aviso() const {
  return interior_->aviso;
}

void ComunicadorSimulado::VaciarBitacora() noexcept {
  interior_->bitacora.Vaciar();
}

void ComunicadorSimulado::EscribirLog(std::string_view linea) noexcept {
  interior_->bitacora.Linea(linea);
}

std::string ComunicadorSimulado::ConvertirA(std::int16_t numero) {
  return interior_->Operar(Op::kConvertirA, std::to_string(numero), [&] { return FechaDeDia(numero); });
}

}  // namespace utr
