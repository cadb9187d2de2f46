#include "driver/CanalesUTR.h"

#include <algorithm>
#include <cmath>

#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

struct Canal {
  std::string_view nombre;
  ClaseCanal clase;
};

// By channel number from 1. The gaps in the codes are part of the numbering.
constexpr Canal kCanales[] = {
    {"EA01", ClaseCanal::kAnalogica}, {"EA02", ClaseCanal::kAnalogica}, {"EA03", ClaseCanal::kAnalogica},
    {"EA04", ClaseCanal::kAnalogica}, {"EA05", ClaseCanal::kAnalogica}, {"EA06", ClaseCanal::kAnalogica},
    {"EA07", ClaseCanal::kAnalogica}, {"EA08", ClaseCanal::kAnalogica}, {"EA09", ClaseCanal::kAnalogica},
    {"EA10", ClaseCanal::kAnalogica}, {"EA11", ClaseCanal::kAnalogica}, {"EA12", ClaseCanal::kAnalogica},
    {"EA13", ClaseCanal::kAnalogica}, {"EA14", ClaseCanal::kAnalogica}, {"PLV", ClaseCanal::kPluviometro},
    {"ED1", ClaseCanal::kDigital},    {"ED2", ClaseCanal::kDigital},    {"ED5", ClaseCanal::kDigital},
    {"ED6", ClaseCanal::kDigital},    {"ED7", ClaseCanal::kDigital},    {"ED8", ClaseCanal::kDigital},
    {"EA15", ClaseCanal::kAnalogica}, {"EA16", ClaseCanal::kAnalogica}, {"SD1", ClaseCanal::kSalida},
    {"SD2", ClaseCanal::kSalida},     {"SD3", ClaseCanal::kSalida},
};
static_assert(std::size(kCanales) == kUltimoCanal);

const Canal* BuscarCanal(std::int16_t canal) {
  return canal < kPrimerCanal || canal > kUltimoCanal ? nullptr : &kCanales[canal - 1];
}

// The channel of the number in an analogue name, or 0.
std::int16_t CanalAnalogico(double numero) {
  if (numero == 15) return 22;
  if (numero == 16) return 23;
  const bool propio = numero >= 1 && numero <= 14 && numero == std::floor(numero);
  return propio ? static_cast<std::int16_t>(numero) : std::int16_t{0};
}

constexpr struct {
  TipoSensor tipo;
  bool guarda_historia;
} kTipos[] = {
    {TipoSensor::kNivel, true},
    {TipoSensor::kMeteorologico, true},
    {TipoSensor::kVelocidadViento, true},
    {TipoSensor::kDireccionViento, true},
    {TipoSensor::kPluviometro, true},
    {TipoSensor::kSupervisionAnalogica, false},
    {TipoSensor::kSupervisionDigital, false},
};

constexpr std::string_view kCantidades[] = {
    "TMed",      "TRead",     "TEval",    "TStorage", "TDiscret", "TCero", "TResetAlarma", "MaxValid", "MinValid",
    "MaxSubVal", "MaxBajVal", "MaxSubTx", "MaxBajTx", "AMax",     "AMin",  "AlSub",        "AlBaj",    "AlMaxPico",
    "AlMinPico", "RangoMax",  "RangoMin", "Rango",    "Span",     "Cero",  "Bits",         "CtePluvi", "NivRefLmn",
};

// The channels of a stretch of the frame.
constexpr struct {
  std::int16_t desde;
  std::int16_t hasta;
  std::size_t lugar;  // of the first one
} kTramos[] = {{1, 14, 0}, {15, 21, 28}, {22, 23, 14}, {24, 26, 35}};

}  // namespace

std::optional<ClaseCanal> ClaseDeCanal(std::int16_t canal) {
  const Canal* hallado = BuscarCanal(canal);
  return hallado == nullptr ? std::nullopt : std::optional(hallado->clase);
}

std::string NombreCanal(std::int16_t canal) {
  const Canal* hallado = BuscarCanal(canal);
  return std::string(hallado == nullptr ? "N/D" : hallado->nombre);
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

std::optional<TipoSensor> TipoDeNumero(double numero) {
  for (const auto& t : kTipos) {
    if (static_cast<double>(t.tipo) == numero) return t.tipo;
  }
  return std::nullopt;
}

std::optional<TipoSensor> LeerTipo(std::string_view texto) {
  return TipoDeNumero(Val(texto));
}

std::string TextoTipo(TipoSensor tipo) {
  return std::to_string(static_cast<int>(tipo));
}

bool GuardaHistoria(std::optional<TipoSensor> tipo) {
  return std::any_of(std::begin(kTipos), std::end(kTipos),
                     [tipo](const auto& t) { return tipo == t.tipo && t.guarda_historia; });
}

void AgregarColumnasDeCanales(Tabla& tabla) {
  for (const ColumnaCanal& columna : kColumnasDeCanal) tabla.Append(columna.nombre, columna.tipo, columna.tamano);
}

bool EsColumnaDeCantidad(std::string_view columna) {
  return std::any_of(std::begin(kCantidades), std::end(kCantidades),
                     [columna](std::string_view una) { return IgualSinCaso(una, columna); });
}

std::optional<std::size_t> LugarEnTrama(std::int16_t canal) {
  for (const auto& tramo : kTramos) {
    if (canal >= tramo.desde && canal <= tramo.hasta)
      return tramo.lugar + static_cast<std::size_t>(canal - tramo.desde);
  }
  return std::nullopt;
}

}  // namespace utr
