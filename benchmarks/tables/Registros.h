#pragma once

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tables/Tabla.h"

// Tables of records as reading a station fills them: nine channels in turn, each with a record every ten minutes.
namespace medida {

inline constexpr std::size_t kFilas = 262144;
inline constexpr std::size_t kCanales = 9;

inline constexpr std::array<const char*, 10> kCampos = {"Fecha",  "Hora",       "Canal",  "Valor",       "Maximo",
                                                        "Minimo", "Validacion", "ColaTX", "Descripcion", "Unidad"};

// How many different values a column of measurements holds.
enum class Variedad : std::uint8_t {
  kCuentas,   // 31,000: what a converter tells apart within the range of a sensor
  kDistinta,  // no value twice
};

// Values of a column of measurements, spread as noise spreads them: no order that anything could lean on.
inline std::uint32_t Medicion(std::size_t fila, std::size_t campo, Variedad variedad) {
  constexpr std::uint32_t kDistintas = 31000;
  const auto mezclada = static_cast<std::uint32_t>((fila * 2654435761U + campo * 40503U) % kFilas);
  if (variedad == Variedad::kDistinta) return mezclada;  // an odd factor and a power of two: each number once
  return static_cast<std::uint32_t>(mezclada * std::uint64_t{2246822519U} % 4294967291U) % kDistintas;
}

// The rain gauge measures neither a highest nor a lowest value.
inline bool EsNula(std::size_t fila, std::size_t campo) {
  return fila % kCanales == 8 && (campo == 4 || campo == 5);
}

// The text of one cell that isn't null.
inline std::string Celda(std::size_t fila, std::size_t campo, Variedad variedad) {
  static constexpr std::array<const char*, kCanales> kDescripciones = {
      "Nivel Limnimétrico",  "Temperatura del aire",  "Humedad relativa",
      "Presión atmosférica", "Velocidad del viento",  "Dirección del viento",
      "Radiación solar",     "Tensión de la batería", "Lluvia acumulada"};
  static constexpr std::array<const char*, kCanales> kUnidades = {"m", "°C",   "%", "hPa", "km/h",
                                                                  "°", "W/m2", "V", "mm"};
  const std::size_t canal = fila % kCanales;
  const std::size_t minutos = fila / kCanales * 10;
  switch (campo) {
    case 0:
      return fmt::format("{:02}/{:02}/{}", minutos / 1440 % 28 + 1, minutos / 40320 % 12 + 1, 2026 + minutos / 483840);
    case 1:
      return fmt::format("{:02}:{:02}:00", minutos / 60 % 24, minutos % 60);
    case 2:
      return fmt::format("EA{:02}", canal + 1);
    case 3:
    case 4:
    case 5:
      return fmt::format("{:.3f}", Medicion(fila, campo, variedad) / 1000.0);
    case 6:
      return fila % 97 == 0 ? "0" : "1";
    case 7:
      return fila % 5 == 0 ? "1" : "0";
    case 8:
      return kDescripciones[canal];
    default:
      return kUnidades[canal];
  }
}

// The rows aren't posted yet.
inline utr::TablaPtr Construir(Variedad variedad) {
  auto tabla = std::make_shared<utr::Tabla>();
  for (const char* campo : kCampos) tabla->Append(campo, utr::TipoCampo::kVarChar, 50);
  tabla->Open();
  tabla->Reservar(kFilas);
  for (std::size_t fila = 0; fila < kFilas; ++fila) {
    tabla->AddNew();
    for (std::size_t campo = 0; campo < kCampos.size(); ++campo) {
      if (!EsNula(fila, campo)) tabla->Set(campo, Celda(fila, campo, variedad));
    }
  }
  return tabla;
}

}  // namespace medida
