#include "operations/PasosAsistente.h"

#include <fmt/format.h>

#include <algorithm>

#include "driver/PaginaCero.h"
#include "session/AjustesEnlace.h"
#include "unit/PaginaUnidad.h"

namespace utr {
namespace {

// What a step does to the state on the way forward; false: it isn't reached.
bool Llegar(EstadoAsistente& estado, std::int16_t paso, const LlegadasAsistente& llegadas) {
  switch (paso) {
    case 1:
      estado.fin_habilitado = false;
      return true;
    case 2:
      if (!llegadas.LeeryGuardarCFG(estado.configuracion_hecha)) return false;
      estado.configuracion_hecha = true;
      estado.fin_habilitado = false;
      return true;
    case 3:
      if (!llegadas.ProcesarAgenda(estado.agenda_hecha)) return false;
      estado.agenda_hecha = true;
      estado.fin_habilitado = true;
      return true;
    default:
      return true;
  }
}

// Bits per second of the serial link that the settings tell; 0: it is over IP, or they tell no speed.
std::int32_t VelocidadDelEnlace(const Propiedades& propiedades) {
  const EntradaEnlace enlace = LeerEntrada(propiedades);
  return enlace.por_ip ? 0 : enlace.velocidad;
}

}  // namespace

bool SetStep(EstadoAsistente& estado, std::int16_t paso, Direccion direccion, const LlegadasAsistente& llegadas) {
  if (paso < 0 || paso > kUltimoPaso) return false;
  if (direccion == Direccion::kAdelante && !Llegar(estado, paso, llegadas)) return false;
  estado.paso = paso;
  return true;
}

std::string TituloDePaso(std::int16_t paso) {
  if (paso == 0) return "Asistente para puesta en marcha de la UTR";
  return "Asistente puesta en marcha: Step " + std::to_string(paso);
}

bool HayAnterior(std::int16_t paso) {
  return paso > 0;
}

bool HaySiguiente(std::int16_t paso) {
  return paso < kUltimoPaso;
}

std::string_view TextoDeConfiguracion(const EstadoAsistente& estado) {
  return estado.configuracion_hecha ? kPasoEjecutado : "Cargar configuración desde:";
}

std::string_view TextoDeAgenda(const EstadoAsistente& estado) {
  return estado.agenda_hecha ? kPasoEjecutado : "Seleccione y verifique la agenda a escribir a la UTR";
}

std::int32_t LeerIdentificador(Comunicador& comunicador) {
  return PaginaUnidad::Leer(comunicador, pagina0::kNumero).Par(pagina0::kIdentificador);
}

std::int32_t VelocidadPropuesta(const Propiedades& propiedades) {
  const std::int32_t velocidad = VelocidadDelEnlace(propiedades);
  const bool hay = std::ranges::find(kVelocidadesAsistente, velocidad) != kVelocidadesAsistente.end();
  return hay ? velocidad : kVelocidadesAsistente.back();
}

std::string AvisoDeVelocidad(const ModRTU& mod, std::int32_t velocidad) {
  const bool serie = !mod.conexion.PorIP() && !mod.conexion.EnLlamada();
  if (serie && VelocidadDelEnlace(mod.propiedades) == velocidad) return {};
  return fmt::format("La UTR pasará a {} bps", velocidad);
}

}  // namespace utr
