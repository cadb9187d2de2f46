#include "retrieved/series/Momentos.h"

#include "base/Fechas.h"
#include "base/Texto.h"
#include "retrieved/series/NumerosDeColumna.h"

namespace utr {
namespace {

std::int64_t LeerMomento(std::string_view texto) {
  const auto fecha = LeerFecha(Recortar(texto));
  return fecha ? Segundos(*fecha) : kSinMomento;
}

// From midnight on: a time alone lies on the first day of the calendar.
std::int64_t LeerHora(std::string_view texto) {
  static const std::int64_t kMedianoche = Segundos(FechaHora{});
  const auto hora = LeerFecha(Recortar(texto));
  return hora ? Segundos(*hora) - kMedianoche : 0;
}

}  // namespace

std::vector<std::int64_t> MomentosDe(const Tabla& tabla) {
  const ColumnaLeida<std::int64_t> dias(tabla, tabla.IndiceCampo("Fecha"), LeerMomento, kSinMomento);
  const int hora = tabla.BuscarCampo("Hora");
  if (hora < 0) return dias.Todas();
  const ColumnaLeida<std::int64_t> horas(tabla, static_cast<std::size_t>(hora), LeerHora, 0);
  std::vector<std::int64_t> momentos;
  momentos.reserve(dias.Cantidad());
  for (std::size_t fila = 0; fila < dias.Cantidad(); ++fila) {
    const std::int64_t dia = dias.De(fila);
    momentos.push_back(dia == kSinMomento ? dia : dia + horas.De(fila));
  }
  return momentos;
}

}  // namespace utr
