#include "configuration/AnotacionEscritura.h"

#include <fmt/format.h>

#include <string>

#include "driver/CanalesUTR.h"

namespace utr {
namespace {

std::string Falla(const ResultadoEscritura& resultado) {
  const std::string paso(NombreDePaso(*resultado.fallo));
  return "falló: " + paso + (resultado.error ? " [" + resultado.error->Descripcion() + "]" : std::string());
}

// The caption of a field, which has a colon ahead of the field in its dialog.
std::string SinDosPuntos(std::string rotulo) {
  if (rotulo.ends_with(':')) rotulo.pop_back();
  return rotulo;
}

// How the write as a whole ended.
std::string FinDeTodo(const ResultadoEscritura& resultado) {
  if (resultado.fallo) return Falla(resultado) + asiento::kSinConfirmar;
  return resultado.tabla ? asiento::kHecho : "sin canales: no se escribieron parámetros";
}

// How it ended for the parameters of the channels, which are one of its steps.
std::string FinDeLosParametros(const ResultadoEscritura& resultado) {
  if (resultado.Parametrizado) return asiento::kHecho;
  if (resultado.fallo == PasoEscritura::kParametrizacion)
    return std::string(asiento::kNoAceptado) + asiento::kSinConfirmar;
  return "no se escribió";
}

std::string Canales(const EscrituraHecha& escritura) {
  const std::size_t canales = escritura.resultado.tabla ? escritura.resultado.tabla->RecordCount() : 0;
  const std::size_t cambios = escritura.cambios.size();
  return fmt::format("{} {}, {}", canales, canales == 1 ? "canal" : "canales",
                     cambios == 0   ? "sin cambios"
                     : cambios == 1 ? "1 cambio"
                                    : fmt::format("{} cambios", cambios));
}

}  // namespace

void AnotarEscritura(Diario::Tarea& tarea, const FechaHora& momento, const EscrituraHecha& escritura) {
  const bool configuracion = escritura.modo == ModoEscritura::kConfiguracion;
  tarea.Anotar({momento, configuracion ? "Grabar configuración de canales" : "Grabar parametrización de canales",
                asiento::kNada, Canales(escritura), FinDeTodo(escritura.resultado)});
  const std::string fin = FinDeLosParametros(escritura.resultado);
  for (const CambioConfiguracion& cambio : escritura.cambios) {
    tarea.Anotar({momento, NombreCanal(cambio.canal) + ": " + SinDosPuntos(cambio.campo),
                  cambio.en_la_utr + (escritura.tras_otra ? " (antes de la grabación que no terminó)" : ""),
                  cambio.nuevo, fin});
  }
}

}  // namespace utr
