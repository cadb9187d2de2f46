#include "schedule/EscrituraAgenda.h"

#include "base/Numeros.h"

namespace utr {
namespace {

// Gives the words of the step that the unit didn't take, empty when it took all. `grabado` turns true when there is no
// step left that brings data.
std::string Escribir(const FDLHorarios& horarios, const ContextoUnidad& contexto, bool& grabado) {
  const TablaPtr tabla = horarios.GetRecMembers();
  if (tabla->RecordCount() == 0) return {};
  if (!contexto.comunicador.GrabarAgenda(*tabla)) return "Error grabando agenda";
  if (!GrabarVentanaAgenda(contexto, Entero16(horarios.DuracionVentana)))
    return "Error grabando duración de ventana de agenda";
  grabado = true;
  if (!contexto.comunicador.ReiniciarAgenda("41")) return "Error reiniciando agenda";
  return {};
}

}  // namespace

ResultadoAgenda EscribirAgenda(const FDLHorarios& horarios, const ContextoUnidad& contexto) {
  ResultadoAgenda resultado;
  resultado.error = FallaDe([&] { resultado.mensaje = Escribir(horarios, contexto, resultado.Grabado); });
  return resultado;
}

}  // namespace utr
