#include "session/RelojUTR.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace utr {
namespace {

// One answer takes its time over a slow line, so a second or two says nothing.
constexpr std::int64_t kToleranciaSegundos = 2;

struct UnidadDeTiempo {
  std::int64_t segundos;
  const char* nombre;
};
constexpr std::array<UnidadDeTiempo, 4> kUnidades{{{kSegundosDia, " d"}, {3600, " h"}, {60, " min"}, {1, " s"}}};

std::string TextoDeDuracion(std::int64_t segundos) {
  std::string texto;
  int partes = 0;
  for (const auto& [largo, nombre] : kUnidades) {
    const std::int64_t cuantas = segundos / largo;
    segundos %= largo;
    if (partes > 0) ++partes;
    if (cuantas != 0) {
      if (partes == 0) partes = 1;
      texto += (texto.empty() ? "" : " ") + std::to_string(cuantas) + nombre;
    }
    if (partes == 2) break;
  }
  return texto;
}

}  // namespace

std::optional<FechaHora> RelojUTR::EnLaUnidad(const FechaHora& ahora) const {
  if (leida_) return FechaDeSegundos(Segundos(ahora) + Adelanto(*leida_));
  return puesta_ ? std::optional(ahora) : std::nullopt;
}

void RelojUTR::Leer(const Lectura& lectura) {
  leida_ = lectura;
  puesta_.reset();
}

void RelojUTR::Escribir(const FechaHora& ahora, bool confirmado) {
  leida_.reset();
  puesta_ = confirmado ? std::optional(ahora) : std::nullopt;
}

void RelojUTR::Olvidar() noexcept {
  leida_.reset();
  puesta_.reset();
}

std::int64_t Adelanto(const RelojUTR::Lectura& lectura) {
  return Segundos(lectura.equipo) - Segundos(lectura.computadora);
}

bool EnHora(std::int64_t adelanto) {
  return std::llabs(adelanto) <= kToleranciaSegundos;
}

std::string TextoAdelanto(std::int64_t segundos) {
  if (EnHora(segundos)) return "en hora";
  return TextoDeDuracion(std::llabs(segundos)) + (segundos > 0 ? " adelantado" : " atrasado");
}

std::string ComunicadorConReloj::LeerFechaHora() {
  std::string texto = ComunicadorReenviado::LeerFechaHora();
  if (const auto equipo = LeerFecha(texto)) reloj_utr_.Leer({*equipo, reloj_.Ahora()});
  return texto;
}

// Whatever the unit answers, the reading before it says nothing any more.
bool ComunicadorConReloj::GrabarFechaHora() {
  reloj_utr_.Escribir(reloj_.Ahora(), false);
  const bool confirmado = ComunicadorReenviado::GrabarFechaHora();
  reloj_utr_.Escribir(reloj_.Ahora(), confirmado);
  return confirmado;
}

// What the driver refuses has changed nothing that is known here, and the reading may be another unit's all the same.
void ComunicadorConReloj::IrA(Parte parte, std::string valor, const std::function<void()>& ir) {
  if (camino_[parte] != valor) reloj_utr_.Olvidar();
  ir();
  camino_[parte] = std::move(valor);
}

// The same words are said again ahead of many a read, to the same unit.
void ComunicadorConReloj::IdEquipo(std::int32_t identificador) {
  IrA(kIdentificador, std::to_string(identificador), [&] { ComunicadorReenviado::IdEquipo(identificador); });
}
void ComunicadorConReloj::DireccionIP(std::string_view direccion) {
  IrA(kDireccion, std::string(direccion), [&] { ComunicadorReenviado::DireccionIP(direccion); });
}
void ComunicadorConReloj::PuertoIP(std::string_view puerto) {
  IrA(kPuertoIP, std::string(puerto), [&] { ComunicadorReenviado::PuertoIP(puerto); });
}
void ComunicadorConReloj::PorIP(bool activo) {
  IrA(kPorIP, activo ? "1" : "0", [&] { ComunicadorReenviado::PorIP(activo); });
}

// The cable of the same port may lead to another unit by now, and the same number be answered by another one.
void ComunicadorConReloj::Conectar(std::string_view enlace, std::string_view puerto) {
  reloj_utr_.Olvidar();
  ComunicadorReenviado::Conectar(enlace, puerto);
}
bool ComunicadorConReloj::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  reloj_utr_.Olvidar();
  return ComunicadorReenviado::LlamarTelefono(numero, comandos);
}

}  // namespace utr
