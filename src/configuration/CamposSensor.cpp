#include "configuration/CamposSensor.h"

#include "base/Numeros.h"

namespace utr {
namespace {

using C = CampoSensor;

constexpr std::array kPeriodos{C::kTMed, C::kTRead, C::kTEval, C::kTStorage, C::kTDiscret, C::kTCero, C::kTResetAlarma};
constexpr std::array kValidaciones{C::kMaxValid,  C::kMinValid, C::kMaxSubVal,
                                   C::kMaxBajVal, C::kMaxSubTx, C::kMaxBajTx};
constexpr std::array kAlarmas{C::kAMax, C::kAMin, C::kAlSub, C::kAlBaj, C::kAlMaxPico, C::kAlMinPico};
constexpr std::array kSensorCFG{C::kRangoMin, C::kRangoMax, C::kCero, C::kSpan, C::kBits};

constexpr std::array<DatosCampo, kCamposDeTexto> kDatos{{
    {C::kTMed, "Periodos(0)", "lblPeriodo(0)", "Tiempo de Medición (TMed):", &Config::TMed, false},
    {C::kTRead, "Periodos(1)", "lblPeriodo(1)", "Período de Lectura (TRead):", &Config::TRead, false},
    {C::kTEval, "Periodos(2)", "lblPeriodo(2)", "Evaluación de Alarmas (TEval):", &Config::TEval, false},
    {C::kTStorage, "Periodos(3)", "lblPeriodo(3)", "Período de Registro (TStorage):", &Config::TStorage, false},
    {C::kTDiscret, "Periodos(4)", "lblPeriodo(4)", "Período Transmisión (TDiscret):", &Config::TDiscret, false},
    {C::kTCero, "Periodos(5)", "lblPeriodo(5)", "Puesta a Cero del Pluviómetro (TCero):", &Config::TCero, false},
    {C::kTResetAlarma, "Periodos(6)", "lblPeriodo(6)", "Reseteo de Alarmas (TRestAlarm):", &Config::TResetAlarma,
     false},
    {C::kMaxValid, "Validaciones(0)", "lblValidaciones(0)", "Valor Máximo  (MaxValid):", &Config::MaxValid, true},
    {C::kMinValid, "Validaciones(1)", "lblValidaciones(1)", "Valor Mínimo (MinValid):", &Config::MinValid, true},
    {C::kMaxSubVal, "Validaciones(2)", "lblValidaciones(2)",
     "Máxima Variación Ascendente (MaxSubVal): ", &Config::MaxSubVal, true},
    {C::kMaxBajVal, "Validaciones(3)", "lblValidaciones(3)",
     "Máxima Variación Descendente (MaxBajVal):", &Config::MaxBajVal, true},
    {C::kMaxSubTx, "Validaciones(4)", "lblValidaciones(4)", "Por Variación Ascendente (MaxSubTx):", &Config::MaxSubTx,
     true},
    {C::kMaxBajTx, "Validaciones(5)", "lblValidaciones(5)", "Por Variación Descendente (MaxBaTx):", &Config::MaxBajTx,
     true},
    {C::kAMax, "Alarmas(0)", "lblAlarmas(0)", "Alarma de Máxima (AMax):", &Config::AMax, true},
    {C::kAMin, "Alarmas(1)", "lblAlarmas(1)", "Alarma de Mínima (AMin):", &Config::AMin, true},
    {C::kAlSub, "Alarmas(2)", "lblAlarmas(2)", "Variación Ascendente (AlSub):", &Config::AlSub, true},
    {C::kAlBaj, "Alarmas(3)", "lblAlarmas(3)", "Variación Descendente (AlBaj):", &Config::AlBaj, true},
    {C::kAlMaxPico, "Alarmas(4)", "lblAlarmas(4)", "Alarma de Pico Máximo (AlMaxPico):", &Config::AlMaxPico, true},
    {C::kAlMinPico, "Alarmas(5)", "lblAlarmas(5)", "Alarma de Pico Mínimo (AlMinPico):", &Config::AlMinPico, true},
    {C::kRangoMin, "SensorCFG(0)", "lblSensorCFG(0)", "Rango Mínimo (UI)", &Config::RangoMin, true},
    {C::kRangoMax, "SensorCFG(1)", "lblSensorCFG(1)", "Rango Máximo (UI)", &Config::RangoMax, true},
    {C::kCero, "SensorCFG(2)", "lblSensorCFG(2)", "Cero (Cuentas)", &Config::Cero, true},
    {C::kSpan, "SensorCFG(3)", "lblSensorCFG(3)", "Span (Cuentas)", &Config::Span, true},
    {C::kBits, "SensorCFG(4)", "lblSensorCFG(4)", "Bits a enviar", &Config::Bits, true},
    {C::kNivRefLmn, "NivRefLmn", "LNivRefLmn", "Nivel de Referencia (Limnímetro): ", &Config::NivRefLmn, true},
    {C::kPluviometro, "TPluviometro", "Label1", "Cte. del Pluviómetro (mm):", nullptr, true},
}};

// One letter a face, in their order: E enabled, - disabled, h hidden, = unchanged, 0 enabled and reset.
struct FilaDeCeldas {
  CampoSensor campo;
  char celdas[9];
};
constexpr FilaDeCeldas kCeldas[] = {
    {C::kTMed, "EEEEE---"},         {C::kTRead, "EEEEEEE-"},       {C::kTEval, "EEEEEE-E"},
    {C::kTStorage, "EEEEE-E-"},     {C::kTDiscret, "EEEEE-E-"},    {C::kTCero, "------E-"},
    {C::kTResetAlarma, "EEEEEE-E"}, {C::kMaxValid, "EEEE-EE-"},    {C::kMinValid, "EEEE-E--"},
    {C::kMaxSubVal, "EE------"},    {C::kMaxBajVal, "E-------"},   {C::kMaxSubTx, "EEE---E-"},
    {C::kMaxBajTx, "E-------"},     {C::kAMax, "EEEE-E--"},        {C::kAMin, "EEEE-E--"},
    {C::kAlSub, "EEEE----"},        {C::kAlBaj, "EEEE----"},       {C::kAlMaxPico, "--EE----"},
    {C::kAlMinPico, "--EE----"},    {C::kRangoMin, "EEEEE-E-"},    {C::kRangoMax, "EEEEE-E-"},
    {C::kCero, "EEEEE-E-"},         {C::kSpan, "EEEEE-E-"},        {C::kBits, "EEEEE-E-"},
    {C::kNivRefLmn, "EE-0-h--"},    {C::kPluviometro, "----=hE-"}, {C::kAlarmaOn, "EEEE-EEE"},
    {C::kTresHilos, "--==-=E-"},    {C::kFiltroOlas, "E----h--"},  {C::kRegisDif, "EEE--==-"},
    {C::kFrameCFG, "EEEEE-E-"},     {C::kFrameDig, "-------E"},    {C::kTipos, "EEEEEE--"},
    {C::kParametros, "EEEEEE-E"},   {C::kOpciones, "EEEEEEE-"},
};
static_assert(std::size(kCeldas) == kCamposDeSensor);

constexpr TipoOfrecido kDeNivel[] = {{0, "Limnimétrico"}, {1, "Meteorológico"}};
constexpr TipoOfrecido kDeVelocidad[] = {{1, "Meteorológico"}, {2, "Velocidad de Viento"}, {0, "Analógico"}};
constexpr TipoOfrecido kDeDireccion[] = {{1, "Meteorológico"}, {3, "Dirección de Viento"}, {0, "Analógico"}};
constexpr TipoOfrecido kAnalogicos[] = {{1, "Meteorológico"}, {0, "Analógico"}};
constexpr TipoOfrecido kDePluviometro[] = {{5, "Pluviométrico"}};
constexpr TipoOfrecido kDigitales[] = {{7, "Supervisión Digital"}};

constexpr Resolucion kResoluciones[] = {{1, "1"}, {2, "0.1"}, {3, "0.01"}, {4, "0.001"}};

}  // namespace

std::span<const CampoSensor> Periodos() {
  return kPeriodos;
}
std::span<const CampoSensor> Validaciones() {
  return kValidaciones;
}
std::span<const CampoSensor> Alarmas() {
  return kAlarmas;
}
std::span<const CampoSensor> SensorCFG() {
  return kSensorCFG;
}

const DatosCampo& DatosDe(CampoSensor campo) {
  return kDatos.at(static_cast<std::size_t>(campo));
}

double ValoresSensor::Numero(CampoSensor campo) const {
  return Val((*this)[campo]);
}

ValoresSensor ValoresDe(const Config& config) {
  ValoresSensor valores;
  for (const DatosCampo& dato : kDatos) {
    if (dato.valor != nullptr) valores[dato.campo] = config.*dato.valor;
  }
  valores[C::kPluviometro] = config.CtePluvi == 0 ? std::string(kConstanteDefecto) : FormatoFijo(config.CtePluvi);
  return valores;
}

std::optional<CaraSensor> CaraDe(std::int16_t tipo, std::int16_t canal) {
  switch (tipo) {
    case 0:
      return canal == 1 ? CaraSensor::kLimnimetro : CaraSensor::kAnalogico;
    case 1:
      return CaraSensor::kMeteorologico;
    case 2:
      return CaraSensor::kVelocidad;
    case 3:
      return CaraSensor::kDireccion;
    case 4:
      return CaraSensor::kSupervisionAnalogica;
    case 5:
      return CaraSensor::kPluviometro;
    case 7:
      return CaraSensor::kSupervisionDigital;
    default:
      return std::nullopt;
  }
}

Celda CeldaDe(CampoSensor campo, CaraSensor cara) {
  switch (kCeldas[static_cast<std::size_t>(campo)].celdas[static_cast<std::size_t>(cara)]) {
    case 'E':
      return Celda::kActiva;
    case 'h':
      return Celda::kOculta;
    case '=':
      return Celda::kSinCambio;
    case '0':
      return Celda::kReiniciada;
    default:
      return Celda::kInactiva;
  }
}

const char* RotuloNivel(CaraSensor cara) {
  if (cara == CaraSensor::kAnalogico) return "Constante a sumar al valor escalado: ";
  if (cara == CaraSensor::kVelocidad) return "Constante a sumar al valor escalado:";
  return "Nivel de Referencia (Limnímetro): ";
}

std::span<const TipoOfrecido> TiposDeCanal(std::int16_t canal) {
  if (canal == 1) return kDeNivel;
  if (canal == 2) return kDeVelocidad;
  if (canal == 3) return kDeDireccion;
  if ((canal >= 4 && canal <= 14) || canal == 22 || canal == 23) return kAnalogicos;
  if (canal == 15) return kDePluviometro;
  if (canal >= 16 && canal <= 21) return kDigitales;
  return {};
}

std::span<const Resolucion> Resoluciones() {
  return kResoluciones;
}

}  // namespace utr
