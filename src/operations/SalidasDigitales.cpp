#include "operations/SalidasDigitales.h"

#include "base/Error.h"
#include "retrieved/Instantaneos.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

// The channels of the outputs, and whether one is on where it reads false.
constexpr struct {
  std::int16_t canal;
  bool invertida;
} kSalidas[] = {{24, true}, {25, false}, {26, false}};

}  // namespace

EstadoSalidas ObtenerEstadoSalidasDig(Comunicador& comunicador) {
  const TablaPtr lectura = comunicador.LeerInstantaneos();
  if (!lectura) {
    throw Error(error::kSinRespuesta, "ObtenerEstadoSalidasDig", "La UTR no entregó los valores de las salidas");
  }
  EstadoSalidas estado{};
  for (std::size_t salida = 0; salida < estado.size(); ++salida) {
    estado[salida] = ValorInstantaneo(*lectura, kSalidas[salida].canal) != 0;
  }
  return estado;
}

std::string_view TextoDeSalida(std::size_t salida, bool estado) {
  return estado != kSalidas[salida].invertida ? kEncendido : kApagado;
}

std::string_view ConmutarSalida(Comunicador& comunicador, std::size_t salida, bool encender) noexcept {
  bool conmutada = false;
  IgnorandoErrores([&] { conmutada = comunicador.GrabarSalidaDigital(static_cast<int>(salida), encender); });
  if (!conmutada) return kSinRespuesta;
  return encender ? kEncendido : kApagado;
}

}  // namespace utr
