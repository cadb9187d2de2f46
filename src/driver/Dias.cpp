#include "driver/Dias.h"

#include "base/Fechas.h"

namespace utr {

namespace {

constexpr std::int64_t kOrigen = 10957;  // days from 01/01/1970 to 01/01/2000

}  // namespace

std::int32_t DiaDe(std::int64_t segundos) {
  const std::int64_t dias = segundos >= 0 ? segundos / kSegundosDia : -((-segundos + kSegundosDia - 1) / kSegundosDia);
  return static_cast<std::int32_t>(dias - kOrigen);
}

std::int64_t SegundosDeDia(std::int32_t dia) {
  return (dia + kOrigen) * kSegundosDia;
}

std::string FechaDeDia(std::int32_t dia) {
  return TextoFecha(FechaDeSegundos(SegundosDeDia(dia)));
}

}  // namespace utr
