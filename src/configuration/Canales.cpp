#include "configuration/Canales.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

constexpr std::string_view kSinNombre = "N/D";
constexpr std::string_view kAnalogica = "Entrada Analógica";
constexpr std::string_view kPluviometrico = "Pluviométrico";
constexpr std::string_view kDigital = "Entrada Digital";

struct Canal {
  std::string_view nombre;
  std::string_view clase;
};

// By channel number from 1. The gaps in the codes are part of the numbering.
constexpr Canal kCanales[] = {
    {"EA01", kAnalogica}, {"EA02", kAnalogica}, {"EA03", kAnalogica}, {"EA04", kAnalogica}, {"EA05", kAnalogica},
    {"EA06", kAnalogica}, {"EA07", kAnalogica}, {"EA08", kAnalogica}, {"EA09", kAnalogica}, {"EA10", kAnalogica},
    {"EA11", kAnalogica}, {"EA12", kAnalogica}, {"EA13", kAnalogica}, {"EA14", kAnalogica}, {"PLV", kPluviometrico},
    {"ED1", kDigital},    {"ED2", kDigital},    {"ED5", kDigital},    {"ED6", kDigital},    {"ED7", kDigital},
    {"ED8", kDigital},    {"EA15", kAnalogica}, {"EA16", kAnalogica}, {"SD1", kSinNombre},  {"SD2", kSinNombre},
    {"SD3", kSinNombre},
};
static_assert(std::size(kCanales) == kUltimoCanal);

Canal BuscarCanal(std::int16_t canal) {
  if (canal < kPrimerCanal || canal > kUltimoCanal) return {kSinNombre, kSinNombre};
  return kCanales[canal - 1];
}

// By kind; 0 depends on the channel and 6 has no word.
constexpr std::string_view kTipos[] = {
    "", "Meteorologico",      "Velocidad de Viento", "Direccion de Viento", "Supervisión Analogica", "Pluviómetro",
    "", "Supervisión Digital"};

std::string_view DescripcionTipoCero(std::int16_t canal) {
  if (canal == 1) return "Limnimetro";
  return canal >= 2 && canal <= 23 ? "Analógico" : " - ";
}

// The channel of the number in an analogue name, or 0.
std::int16_t CanalAnalogico(double numero) {
  if (numero == 15) return 22;
  if (numero == 16) return 23;
  const bool propio = numero >= 1 && numero <= 14 && numero == std::floor(numero);
  return propio ? static_cast<std::int16_t>(numero) : std::int16_t{0};
}

}  // namespace

std::string NombreCanal(std::int16_t canal) {
  return std::string(BuscarCanal(canal).nombre);
}

std::string TipoEntrada(std::int16_t canal) {
  return std::string(BuscarCanal(canal).clase);
}

std::int16_t NumeroCanal(std::string_view nombre) {
  if (Mayusculas(nombre) == "PLV") return 15;
  const std::string resto = Reemplazar(nombre, "EA", "");
  return EsNumerico(resto) ? CanalAnalogico(LeerDoble(resto)) : std::int16_t{0};
}

std::int16_t NumeroDeNombre(std::string_view nombre) {
  if (const std::int16_t canal = NumeroCanal(nombre); canal != 0) return canal;
  const auto* hallado = std::find_if(std::begin(kCanales), std::end(kCanales),
                                     [&](const Canal& canal) { return canal.nombre == nombre; });
  return hallado == std::end(kCanales) ? std::int16_t{0} : static_cast<std::int16_t>(hallado - kCanales + 1);
}

std::string DescripcionTipo(std::string_view tipo, std::int16_t canal) {
  const double numero = Val(tipo);
  if (numero == 0) return std::string(DescripcionTipoCero(canal));
  for (std::size_t i = 1; i < std::size(kTipos); ++i) {
    if (numero == static_cast<double>(i)) return std::string(kTipos[i]);
  }
  return {};
}

std::uint8_t LeerFlags(std::string_view flags) {
  return static_cast<std::uint8_t>(Entero32(Val(flags)) & 0xFF);
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
