#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "base/Fechas.h"
#include "driver/CanalesUTR.h"
#include "driver/simulated/unit/Memoria.h"
#include "tables/Tabla.h"

// A station of nine channels, and what it measures.
namespace medida {

// Counts of a converter of 16 bits: each channel at a height of its own, with a slow wave and noise.
inline std::uint16_t Cuentas(std::uint32_t canal, std::uint32_t muestra, std::uint32_t campo) {
  const double onda = 4000.0 * canal + 12000 + 8000 * std::sin(muestra / (300.0 + 40.0 * canal));
  std::uint32_t ruido = muestra * 2654435761U + campo * 40503U + canal * 97531U;
  ruido ^= ruido >> 15;
  ruido *= 2246822519U;
  return static_cast<std::uint16_t>(onda + (ruido >> 8) % 600);
}

inline std::uint8_t CanalDePila(int pila) {
  return pila == 8 ? std::uint8_t{15} : static_cast<std::uint8_t>(pila + 1);
}

// Nine channels of several kinds, each with a stack.
inline utr::TablaPtr ConfiguracionDeNueve() {
  auto tabla = std::make_shared<utr::Tabla>();
  utr::AgregarColumnasDeCanales(*tabla);
  tabla->Open();
  for (int pila = 0; pila < utr::simulada::kPilas; ++pila) {
    tabla->AddNew();
    const std::pair<const char*, std::string> celdas[] = {{"Canal", std::to_string(CanalDePila(pila))},
                                                          {"Tipo", pila == 8 ? "5" : std::to_string(pila % 4)},
                                                          {"Pila", std::to_string(pila)},
                                                          {"Flags", "1"},
                                                          {"Cero", "819"},
                                                          {"Span", std::to_string(64716 - 100 * pila)},
                                                          {"Rango", "14.5"},
                                                          {"RangoMin", "-2"},
                                                          {"RangoMax", "12.5"},
                                                          {"NivRefLmn", "3"},
                                                          {"CtePluvi", "0.2"},
                                                          {"TStorage", "10"},
                                                          {"Parametro", std::to_string(pila)},
                                                          {"Unidad", "1"}};
    for (const auto& [columna, texto] : celdas) tabla->Set(columna, texto);
  }
  tabla->UpdateBatch();
  tabla->MoveFirst();
  return tabla;
}

// How the raw values of the driver's stream repeat.
enum class Crudos : std::uint8_t {
  kRuido,      // a wave with noise
  kDistintos,  // no channel gives a value twice
};

inline std::uint16_t CrudoDeNueve(std::size_t muestra, std::size_t campo, Crudos crudos) {
  const auto canal = static_cast<std::uint32_t>(muestra % std::size_t{utr::simulada::kPilas});
  const auto vez = static_cast<std::uint32_t>(muestra / std::size_t{utr::simulada::kPilas});
  if (crudos == Crudos::kRuido) return Cuentas(canal, vez, static_cast<std::uint32_t>(campo));
  return static_cast<std::uint16_t>(vez * 40503U + campo * 21);  // an odd factor: 65,536 values in turn
}

// The stream of the driver: a marker a day, the channels in turn every ten minutes.
inline utr::TablaPtr OrigenDeNueve(std::size_t muestras, Crudos crudos) {
  constexpr std::size_t kPorDia = std::size_t{144} * std::size_t{utr::simulada::kPilas};
  auto tabla = std::make_shared<utr::Tabla>();
  for (const char* campo : {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"})
    tabla->Append(campo, utr::TipoCampo::kVarChar, 20);
  tabla->Open();
  for (std::size_t i = 0; i < muestras; ++i) {
    const auto segundos = static_cast<std::int64_t>(i / std::size_t{utr::simulada::kPilas}) * 600;
    const utr::FechaHora fecha = utr::FechaDeSegundos(1104537600 + segundos);
    tabla->AddNew();
    if (i % kPorDia == 0) {
      tabla->Set(0, utr::TextoFecha(fecha));
      tabla->AddNew();
    }
    tabla->Set(1, utr::TextoHora(fecha));
    tabla->Set(2, std::to_string(CanalDePila(static_cast<int>(i % std::size_t{utr::simulada::kPilas}))));
    for (std::size_t campo = 3; campo < 6; ++campo) tabla->Set(campo, std::to_string(CrudoDeNueve(i, campo, crudos)));
    tabla->Set(6, i % 97 == 0 ? "0" : "1");
    tabla->Set(7, i % 5 == 0 ? "1" : "0");
  }
  tabla->UpdateBatch();
  return tabla;
}

}  // namespace medida
