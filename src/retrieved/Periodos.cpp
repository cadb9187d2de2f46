#include "retrieved/Periodos.h"

namespace utr {
namespace {

constexpr FechaHora kPrimeraFecha{2000, 1, 1, 0, 0, 0};

FechaHora Antes(const FechaHora& ahora, std::int64_t dias) {
  return FechaDeSegundos(Segundos(ahora) - dias * kSegundosDia);
}

}  // namespace

std::optional<Lapso> LapsoDe(Periodo periodo, const FechaHora& ahora, const std::optional<FechaHora>& visita) {
  const FechaHora hoy = FechaDeDias(DiasDesde1970(ahora));
  FechaHora fin = hoy;
  fin.hora = 23;
  fin.minuto = 59;
  switch (periodo) {
    case Periodo::kHoy:
      return Lapso{hoy, fin};
    case Periodo::kUltimas24Horas:
      return Lapso{Antes(ahora, 1), fin};
    case Periodo::kUltimos7Dias:
      return Lapso{Antes(ahora, 7), fin};
    case Periodo::kTodo:
      return Lapso{kPrimeraFecha, fin};
    case Periodo::kDesdeLaVisita:
      break;
  }
  if (!visita || ahora < *visita) return std::nullopt;
  return Lapso{*visita, fin};
}

}  // namespace utr
