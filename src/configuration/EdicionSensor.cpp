#include "configuration/EdicionSensor.h"

#include <algorithm>
#include <array>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/CalculosSensor.h"
#include "configuration/Canales.h"

namespace utr {
namespace {

using C = CampoSensor;

// A supervision has no scale: whatever its fields hold, these are stored as zero.
constexpr std::array kCerosDigitales{&Config::RangoMin, &Config::RangoMax, &Config::Rango,     &Config::Cero,
                                     &Config::Span,     &Config::Bits,     &Config::MaxValid,  &Config::MinValid,
                                     &Config::AMax,     &Config::AMin,     &Config::AlMaxPico, &Config::AlMinPico};

std::optional<std::int32_t> FilaDe(std::string_view texto) {
  const auto numero = EnteroExacto(Recortar(texto));
  if (!numero || *numero < INT32_MIN || *numero > INT32_MAX) return std::nullopt;
  return static_cast<std::int32_t>(*numero);
}

// A text that says the number already stays as it is.
void GuardarNumero(std::optional<std::int32_t> numero, std::string& texto) {
  if (numero && FilaDe(texto) != numero) texto = std::to_string(*numero);
}

// The options of a text, whatever it holds.
std::uint8_t OpcionesDe(const std::string& flags) {
  const double numero = Val(flags);
  return numero >= INT32_MIN && numero <= INT32_MAX ? LeerFlags(flags) & kOpcionesSensor : 0;
}

void GuardarTextos(std::span<const C> campos, const ValoresSensor& valores, Config& config) {
  for (const C campo : campos) config.*DatosDe(campo).valor = valores[campo];
}

// An untouched field stores the very number that came, which has more decimals than the field shows.
void GuardarConstante(const EdicionSensor& edicion, Config& config) {
  const std::string& texto = edicion.valores[C::kPluviometro];
  if (config.CtePluvi != 0 && texto == edicion.cargados[C::kPluviometro]) return;
  config.CtePluvi = Val(Reemplazar(texto, ",", "."));
}

void GuardarParametros(const EdicionSensor& edicion, Config& config) {
  for (const auto campos : {Periodos(), Validaciones(), Alarmas()}) GuardarTextos(campos, edicion.valores, config);
  GuardarNumero(edicion.flags, config.Flags);
  config.NivRefLmn = edicion.valores[C::kNivRefLmn];
}

void GuardarIdentidad(const EdicionSensor& edicion, Config& config) {
  GuardarNumero(edicion.tipo, config.Tipo);
  GuardarTextos(SensorCFG(), edicion.valores, config);
  config.Rango = TextoRango(edicion.valores);
  GuardarConstante(edicion, config);
  GuardarNumero(edicion.parametro, config.Parametro);
  GuardarNumero(edicion.unidad, config.Unidad);
  config.RangoNegativo = CodigoPendiente(edicion.valores);
  GuardarNumero(edicion.resolucion, config.Resolucion);
  if (edicion.tipo != 7) return;
  for (const auto valor : kCerosDigitales) config.*valor = "0";
}

// Predefined sets bring times, the two ends of validation and alarms, whatever the kind; a level, its reference.
bool LoTraeUnaPredefinida(C campo, CaraSensor cara) {
  const auto es = [campo](C otro) { return otro == campo; };
  if (campo == C::kNivRefLmn) return cara == CaraSensor::kLimnimetro || cara == CaraSensor::kAnalogico;
  return std::ranges::any_of(Periodos(), es) || std::ranges::any_of(Alarmas(), es) || campo == C::kMaxValid ||
         campo == C::kMinValid;
}

}  // namespace

std::int16_t CanalDe(const Config& config) {
  const double numero = Val(config.Canal);
  return numero >= kPrimerCanal && numero <= kUltimoCanal ? static_cast<std::int16_t>(numero) : std::int16_t{0};
}

std::int16_t TipoDe(const Config& config) {
  const auto tipo = LeerTipo(config.Tipo);
  return tipo ? static_cast<std::int16_t>(*tipo) : std::int16_t{-1};
}

EdicionSensor EdicionDe(const Config& config) {
  EdicionSensor edicion;
  edicion.canal = CanalDe(config);
  const std::int16_t tipo = TipoDe(config);
  const auto ofrecidos = TiposDeCanal(edicion.canal);
  if (std::ranges::any_of(ofrecidos, [&](const TipoOfrecido& uno) { return uno.tipo == tipo; })) edicion.tipo = tipo;
  edicion.valores = ValoresDe(config);
  edicion.cargados = edicion.valores;
  edicion.flags = OpcionesDe(config.Flags);
  edicion.parametro = FilaDe(config.Parametro);
  edicion.unidad = FilaDe(config.Unidad);
  edicion.resolucion = Val(config.Resolucion) > 0 ? FilaDe(config.Resolucion) : std::optional<std::int32_t>(1);
  return edicion;
}

ResultadoReglas AceptarEdicion(EdicionSensor& edicion, const std::function<bool(CampoSensor)>& habilitado,
                               bool solo_parametros, Config& config) {
  ResultadoReglas resultado =
      ValidarDatos({edicion.tipo.value_or(-1), edicion.canal, edicion.valores, edicion.cargados, habilitado});
  Aplicar(resultado.forzados, edicion.valores);
  if (!resultado.reparos.empty()) return resultado;
  GuardarParametros(edicion, config);
  if (!solo_parametros) GuardarIdentidad(edicion, config);
  config.Modificado = true;
  return resultado;
}

std::string RemedioDe(CampoSensor campo, CaraSensor cara, ModoEdicion modo) {
  if (modo == ModoEdicion::kSoloLectura) return "\"Configurar\"";
  const bool leer = LoTraeUnaPredefinida(campo, cara);
  if (modo == ModoEdicion::kSoloParametros) return leer ? "\"Leer\" o \"Configurar\"" : "\"Configurar\"";
  if (leer) return "\"Leer\"";
  // The widths follow a range that is typed anew.
  if (CeldaDe(C::kRangoMax, cara) != Celda::kActiva) return {};
  return std::string("\"") + DatosDe(C::kRangoMin).rotulo + "\" o \"" + DatosDe(C::kRangoMax).rotulo + "\"";
}

std::vector<ValorForzado> CopiarValores(const Config& origen, const std::function<bool(CampoSensor)>& habilitado) {
  const ValoresSensor valores = ValoresDe(origen);
  std::vector<ValorForzado> cambios;
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    const auto campo = static_cast<C>(i);
    if (habilitado(campo)) cambios.push_back({campo, valores[campo]});
  }
  return cambios;
}

bool MismaCara(const Config& origen, std::int16_t tipo, std::int16_t canal) {
  const auto cara = CaraDe(tipo, canal);
  return cara && CaraDe(TipoDe(origen), CanalDe(origen)) == cara;
}

}  // namespace utr
