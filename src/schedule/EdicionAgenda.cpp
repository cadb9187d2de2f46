#include "schedule/EdicionAgenda.h"

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

constexpr std::size_t kTramo = 4;          // from so many on, equally spaced times are told by their ends
constexpr std::size_t kTramosDichos = 24;  // a line holds no more

// The times in words, equally spaced ones by their ends: "08:00", "09:00 a 21:00 cada 30 min".
std::vector<std::string> TramosDe(const std::vector<std::int16_t>& minutos) {
  std::vector<std::string> tramos;
  for (std::size_t i = 0; i < minutos.size();) {
    const int paso = i + 1 < minutos.size() ? minutos[i + 1] - minutos[i] : 0;
    std::size_t fin = i;
    while (paso > 0 && fin + 1 < minutos.size() && minutos[fin + 1] - minutos[fin] == paso) ++fin;
    const bool junto = fin - i + 1 >= kTramo;
    tramos.push_back(junto ? TextoHorario(minutos[i]) + " a " + TextoHorario(minutos[fin]) + " cada " +
                                 std::to_string(paso) + " min"
                           : TextoHorario(minutos[i]));
    i = junto ? fin + 1 : i + 1;
  }
  return tramos;
}

}  // namespace

std::optional<std::int32_t> DuracionDe(std::string_view texto) {
  if (!EsNumerico(texto)) return std::nullopt;
  const double minutos = LeerDoble(texto);
  if (minutos < kDuracionMenor || minutos > kDuracionMayor) return std::nullopt;
  return Entero32(minutos);
}

std::optional<Mensaje> ReparoDeAgenda(std::size_t filas, std::string_view duracion) {
  if (filas == 0) return Mensaje{.texto = "Sin datos para grabar", .titulo = {}, .icono = Icono::kExclamacion};
  if (filas >= kHorariosDeMas)
    return Mensaje{.texto =
                       "Se excedio el límite de entradas en la agenda.\n"
                       "Como máximo se admiten 50 hasta entradas horarias",
                   .titulo = {},
                   .icono = Icono::kExclamacion};
  if (!DuracionDe(duracion))
    return Mensaje{.texto = "Debe ingresar un valor válido de ventana", .titulo = {}, .icono = Icono::kInformacion};
  return std::nullopt;
}

ResultadoPeriodo AgregarPeriodo(FDLHorarios& horarios, const Periodo& periodo) {
  if (periodo.paso < 1) Lanzar(error::kLlamada, "AgregarPeriodo");
  ResultadoPeriodo resultado;
  for (std::int32_t i = periodo.desde; i <= periodo.hasta; i += periodo.paso) {  // beyond 16 bits before it ends
    const auto minuto = static_cast<std::int16_t>(i);
    const bool estaba = horarios.Buscar(minuto) != nullptr;
    const FDLHoraroPtr horario = horarios.Add(minuto);
    horario->TCond = periodo.TCond;
    horario->TOblig = periodo.TOblig;
    horario->TWind = periodo.TWind;
    if (estaba) {
      resultado.cambiados.push_back(horario->Horario);
    } else {
      ++resultado.agregados;
    }
  }
  return resultado;
}

std::string TextoDePeriodo(const ResultadoPeriodo& resultado) {
  std::string texto = resultado.agregados == 0   ? "No se agregaron horarios"
                      : resultado.agregados == 1 ? "Se agregó un horario"
                                                 : "Se agregaron " + std::to_string(resultado.agregados) + " horarios";
  if (resultado.cambiados.empty()) return texto;
  std::vector<std::string> tramos = TramosDe(resultado.cambiados);
  const bool sobran = tramos.size() > kTramosDichos;
  if (sobran) tramos.resize(kTramosDichos);
  texto +=
      resultado.cambiados.size() == 1 ? ". Ya estaba y tomó estos tipos: " : ". Ya estaban y tomaron estos tipos: ";
  texto += Unir(tramos, ", ");
  return sobran ? texto + "... (" + std::to_string(resultado.cambiados.size()) + " en total)" : texto;
}

std::string TextoDeCantidad(std::int32_t horarios) {
  if (horarios == 0) return "La agenda no tiene horarios";
  return horarios == 1 ? "La agenda tiene un horario" : "La agenda tiene " + std::to_string(horarios) + " horarios";
}

}  // namespace utr
