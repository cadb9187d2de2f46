#include "schedule/AnotacionAgenda.h"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>
#include <vector>

namespace utr {
namespace {

std::string UnHorario(const FDLHoraro& horario) {
  return TextoHorario(horario.Horario) + (horario.TOblig ? " TOblig" : "") + (horario.TCond ? " TCond" : "") +
         (horario.TWind ? " TWind" : "");
}

std::string FinDe(const ResultadoAgenda& resultado) {
  if (resultado.error) return "[" + resultado.error->Descripcion() + "]" + asiento::kSinConfirmar;
  return resultado.mensaje.empty() ? asiento::kHecho : resultado.mensaje + asiento::kSinConfirmar;
}

}  // namespace

std::string EnPalabras(const FDLHorarios& horarios) {
  std::vector<FDLHoraroPtr> orden(horarios.begin(), horarios.end());
  std::stable_sort(orden.begin(), orden.end(),
                   [](const auto& a, const auto& b) { return MinutoDelDia(a->Horario) < MinutoDelDia(b->Horario); });
  std::string lista;
  for (const FDLHoraroPtr& horario : orden) lista += (lista.empty() ? "" : ", ") + UnHorario(*horario);
  const std::string ventana =
      horarios.DuracionVentana == 0 ? "" : fmt::format(", ventana de {} min.", horarios.DuracionVentana);
  return fmt::format("{} {}{}{}", orden.size(), orden.size() == 1 ? "horario" : "horarios",
                     lista.empty() ? "" : " (" + lista + ")", ventana);
}

void AnotarAgenda(Diario::Tarea& tarea, const FechaHora& momento, const std::optional<FDLHorarios>& antes,
                  const FDLHorarios& horarios, const ResultadoAgenda& resultado) {
  if (horarios.Count() == 0) return;
  tarea.Anotar({momento, "Grabar agenda", antes ? EnPalabras(*antes) : asiento::kSinLeer, EnPalabras(horarios),
                FinDe(resultado)});
}

}  // namespace utr
