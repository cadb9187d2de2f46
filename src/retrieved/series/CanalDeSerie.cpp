#include "retrieved/series/CanalDeSerie.h"

#include <cmath>

#include "base/Numeros.h"
#include "configuration/CamposSensor.h"
#include "configuration/Canales.h"
#include "configuration/FilasDeCanales.h"
#include "retrieved/series/NumerosDeColumna.h"

namespace utr {
namespace {

struct CampoLimite {
  CampoSensor campo;
  LimiteSerie limite;
};
constexpr CampoLimite kLimites[] = {
    {CampoSensor::kAMax, {ClaseLimite::kAlarma, "AMax", "Alarma de máxima"}},
    {CampoSensor::kAMin, {ClaseLimite::kAlarma, "AMin", "Alarma de mínima"}},
    {CampoSensor::kAlMaxPico, {ClaseLimite::kAlarma, "AlMaxPico", "Alarma de pico máximo"}},
    {CampoSensor::kAlMinPico, {ClaseLimite::kAlarma, "AlMinPico", "Alarma de pico mínimo"}},
    {CampoSensor::kMaxValid, {ClaseLimite::kValidacion, "MaxValid", "Máximo válido"}},
    {CampoSensor::kMinValid, {ClaseLimite::kValidacion, "MinValid", "Mínimo válido"}},
};

std::string Texto(const Tabla& fila, std::string_view campo) {
  return fila.BuscarCampo(campo) < 0 ? std::string() : fila.Texto(campo);
}

double Numero(const Tabla& fila, std::string_view campo) {
  return NumeroDeRegistro(Texto(fila, campo));
}

// A rain gauge has no lowest valid reading but 0.
bool SinValidacion(const Tabla& fila, CaraSensor cara) {
  const double minimo = CeldaDe(CampoSensor::kMinValid, cara) == Celda::kActiva ? Numero(fila, "MinValid") : 0;
  return Numero(fila, "MaxValid") <= minimo;
}

// Whether scaled records of the channel are in the units of its limits: without a span they stay counts, but for those
// of a rain gauge.
bool EnUnidades(const Tabla& fila, TipoSensor tipo) {
  return GuardaHistoria(tipo) && (tipo == TipoSensor::kPluviometro || Val(Texto(fila, "Span")) > 0);
}

std::vector<LimiteSerie> LimitesDe(const Tabla& fila, std::int16_t canal) {
  std::vector<LimiteSerie> limites;
  const auto tipo = LeerTipo(Texto(fila, "Tipo"));
  const auto cara = tipo ? CaraDe(static_cast<std::int16_t>(*tipo), canal) : std::nullopt;
  if (!cara || !EnUnidades(fila, *tipo)) return limites;
  const bool con_alarmas = AlarmaHabilitada(LeerFlags(Texto(fila, "Flags")));
  for (const CampoLimite& uno : kLimites) {
    const bool es_alarma = uno.limite.clase == ClaseLimite::kAlarma;
    if (CeldaDe(uno.campo, *cara) != Celda::kActiva || (es_alarma ? !con_alarmas : SinValidacion(fila, *cara)))
      continue;
    LimiteSerie limite = uno.limite;
    limite.valor = Numero(fila, limite.campo);
    if (!std::isnan(limite.valor)) limites.push_back(limite);
  }
  return limites;
}

}  // namespace

CanalDeSerie LeerCanalDeSerie(const Tabla& configuracion, std::int16_t canal) {
  CanalDeSerie datos;
  if (configuracion.BuscarCampo("Canal") < 0) return datos;
  const TablaPtr fila = configuracion.Clone();
  while (!fila->Eof() && NumeroDeFila(fila->Texto("Canal")) != canal) fila->MoveNext();
  if (fila->Eof()) return datos;
  const double minutos = Numero(*fila, "TStorage");
  if (minutos > 0) datos.minutos = minutos;
  datos.limites = LimitesDe(*fila, canal);
  return datos;
}

}  // namespace utr
