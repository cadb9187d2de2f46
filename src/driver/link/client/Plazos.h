#pragma once

#include <cstdint>

#include "driver/link/protocol/Mapa.h"

namespace utr::enlace {

// How long the client waits, in milliseconds, and how often it tries. docs/protocol.md tells why.
struct Plazos {
  std::int64_t serie = 300;  // for an answer on a serial line, besides the time that the bytes take
  std::int64_t llamada = 3000;
  std::int64_t tcp = 2000;                      // and for a connection to stand
  std::int64_t escritura = 2000;                // for the answer to what writes, at the least
  std::int64_t hueco = protocolo::kMayorHueco;  // inside a frame
  std::int64_t hueco_en_llamada = protocolo::kMayorHuecoEnLlamada;
  std::int64_t silencio = 1000;  // of a line on which an answer was missed, ahead of the next request
  std::int64_t silencio_en_llamada = 3000;
  std::int64_t sondeo = 200;        // between two looks at an order that runs
  std::int64_t ocupada = 10000;     // that a unit may be at something else
  std::int64_t adelantadas = 5000;  // that a page fetched ahead is good for
  int intentos = 3;
  std::int32_t peor_velocidad = 300;  // bits per second between two modems, whatever the port's is
};

}  // namespace utr::enlace
