#include "retrieved/Periodos.h"

#include <algorithm>

namespace utr {
namespace {

constexpr FechaHora kPrimeraFecha{2000, 1, 1, 0, 0, 0};

FechaHora FinDelDia(const FechaHora& fecha) {
  FechaHora fin = FechaDeDias(DiasDesde1970(fecha));
  fin.hora = 23;
  fin.minuto = fin.segundo = 59;
  return fin;
}

FechaHora ComienzoDelMinuto(FechaHora fecha) {
  fecha.segundo = 0;
  return fecha;
}

}  // namespace

std::optional<Lapso> LapsoDe(Periodo periodo, const FechaHora& ahora, const std::optional<FechaHora>& visita,
                             const std::optional<FechaHora>& unidad) {
  const FechaHora fin = FinDelDia(std::max(ahora, unidad.value_or(ahora)));
  const auto ultimos = [&](std::int64_t dias) {
    const std::int64_t hasta = Segundos(unidad.value_or(ahora));
    return Lapso{ComienzoDelMinuto(FechaDeSegundos(hasta - dias * kSegundosDia)), fin};
  };
  switch (periodo) {
    case Periodo::kHoy:
      return Lapso{FechaDeDias(DiasDesde1970(ahora)), fin};
    case Periodo::kUltimas24Horas:
      return ultimos(1);
    case Periodo::kUltimos7Dias:
      return ultimos(7);
    case Periodo::kTodo:
      return Lapso{kPrimeraFecha, fin};
    case Periodo::kDesdeLaVisita:
      break;
  }
  if (!visita || ahora < *visita) return std::nullopt;
  return Lapso{*visita, fin};
}

}  // namespace utr
