#include "configuration/Canales.h"

#include <fmt/format.h>

#include <cmath>

#include "base/Numeros.h"

namespace utr {

namespace {

// Kind 0 depends on the channel, and 6 is none.
constexpr struct {
  TipoSensor tipo;
  std::string_view palabra;
} kPalabras[] = {{TipoSensor::kMeteorologico, "Meteorologico"},
                 {TipoSensor::kVelocidadViento, "Velocidad de Viento"},
                 {TipoSensor::kDireccionViento, "Direccion de Viento"},
                 {TipoSensor::kSupervisionAnalogica, "Supervisión Analogica"},
                 {TipoSensor::kPluviometro, "Pluviómetro"},
                 {TipoSensor::kSupervisionDigital, "Supervisión Digital"}};

std::string_view DescripcionTipoCero(std::int16_t canal) {
  if (canal == 1) return "Limnimetro";
  return canal >= 2 && canal <= 23 ? "Analógico" : " - ";
}

}  // namespace

std::string TipoEntrada(std::int16_t canal) {
  switch (ClaseDeCanal(canal).value_or(ClaseCanal::kSalida)) {
    case ClaseCanal::kAnalogica:
      return "Entrada Analógica";
    case ClaseCanal::kPluviometro:
      return "Pluviométrico";
    case ClaseCanal::kDigital:
      return "Entrada Digital";
    case ClaseCanal::kSalida:
      break;
  }
  return "N/D";
}

std::string DescripcionTipo(std::string_view tipo, std::int16_t canal) {
  const auto leido = LeerTipo(tipo);
  if (leido == TipoSensor::kNivel) return std::string(DescripcionTipoCero(canal));
  for (const auto& p : kPalabras) {
    if (leido == p.tipo) return std::string(p.palabra);
  }
  return {};
}

std::uint8_t LeerFlags(std::string_view flags) {
  const double numero = Val(flags);
  // What is beyond a whole number of 32 bits holds no options.
  return std::abs(numero) < 2147483647 ? static_cast<std::uint8_t>(Entero32(numero) & 0xFF) : std::uint8_t{0};
}

bool CanalHabilitado(std::uint8_t flags) {
  return (flags & 1) != 0;
}

bool AlarmaHabilitada(std::uint8_t flags) {
  return (flags & 2) != 0;
}

bool SeparadorEsPunto() {
  return TextoGeneral(0.5).find('.') != std::string::npos;
}

std::string FechaHoraTexto(const FechaHora& f) {
  return fmt::format("{:02}/{:02}/{} {:02}:{:02}:{:02}", f.dia, f.mes, f.anio, f.hora, f.minuto, f.segundo);
}

}  // namespace utr
