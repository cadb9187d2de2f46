#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "configuration/Config.h"

// The fields in which one channel is edited: their names, captions and places in the channel, and what each kind of
// sensor makes of them. Windows, rules and predefined sets read these tables; none has a list of its own.
namespace utr {

enum class CampoSensor : std::uint8_t {
  // Fields with a text.
  kTMed,  // Periodos(0..6), minutes
  kTRead,
  kTEval,
  kTStorage,
  kTDiscret,
  kTCero,
  kTResetAlarma,
  kMaxValid,  // Validaciones(0..5), engineering units
  kMinValid,
  kMaxSubVal,
  kMaxBajVal,
  kMaxSubTx,
  kMaxBajTx,
  kAMax,  // Alarmas(0..5), engineering units
  kAMin,
  kAlSub,
  kAlBaj,
  kAlMaxPico,
  kAlMinPico,
  kRangoMin,  // SensorCFG(0..4): engineering units, counts, bits
  kRangoMax,
  kCero,
  kSpan,
  kBits,
  kNivRefLmn,
  kPluviometro,  // TPluviometro, millimetres for one tip
  // Options and frames.
  kAlarmaOn,    // CAlarmaON
  kTresHilos,   // FlagsParam(2)
  kFiltroOlas,  // FlagsParam(3)
  kRegisDif,    // chkFlagRegis_Dif
  kFrameCFG,    // the frame of the scale
  kFrameDig,    // the frame of the normal state
  kTipos,       // cboTiposSensores
  kParametros,  // cboParametros
  kOpciones,    // fraOpcionesFlags
};
inline constexpr std::size_t kCamposDeTexto = 26;
inline constexpr std::size_t kCamposDeSensor = 35;

// The arrays of fields, each in the order of its indices.
std::span<const CampoSensor> Periodos();
std::span<const CampoSensor> Validaciones();
std::span<const CampoSensor> Alarmas();
std::span<const CampoSensor> SensorCFG();

// One field with a text.
struct DatosCampo {
  CampoSensor campo;
  const char* control;         // object name: "Periodos(0)"
  const char* rotulo_control;  // object name of its label
  const char* rotulo;          // its caption, as sentences name it too
  std::string Config::*valor;  // its place in the channel; null for the gauge's constant, which is a number there
  bool decimal;                // "-", "." and "," may be typed; else digits alone
};
const DatosCampo& DatosDe(CampoSensor campo);

// The texts of the fields, by field.
class ValoresSensor {
 public:
  std::string& operator[](CampoSensor campo) { return textos_.at(static_cast<std::size_t>(campo)); }
  const std::string& operator[](CampoSensor campo) const { return textos_.at(static_cast<std::size_t>(campo)); }
  // The number of a text by its leading digits.
  double Numero(CampoSensor campo) const;
  bool operator==(const ValoresSensor&) const = default;

 private:
  std::array<std::string, kCamposDeTexto> textos_;
};

// What an empty or zero constant of the gauge becomes.
inline constexpr std::string_view kConstanteDefecto = "0.25";

// The texts of a channel. The constant of the gauge is written with three decimals, an empty one or 0 as "0.25".
ValoresSensor ValoresDe(const Config& config);

// The faces that the dialog has: kind 0 is told apart by its channel.
enum class CaraSensor : std::uint8_t {
  kLimnimetro,
  kAnalogico,
  kMeteorologico,
  kVelocidad,
  kDireccion,
  kSupervisionAnalogica,
  kPluviometro,
  kSupervisionDigital,
};
// Nothing for kinds without a face (6 and above 7).
std::optional<CaraSensor> CaraDe(std::int16_t tipo, std::int16_t canal);

// What a face makes of a field.
enum class Celda : std::uint8_t {
  kActiva,    // shown and enabled
  kInactiva,  // shown and disabled; it keeps its value
  kOculta,
  kSinCambio,   // as the face before it left it
  kReiniciada,  // shown and enabled, set to "0"
};
Celda CeldaDe(CampoSensor campo, CaraSensor cara);

// The caption of the reference level under a face.
const char* RotuloNivel(CaraSensor cara);

// The kinds that a channel may hold, in the order in which they are offered, with their words there.
struct TipoOfrecido {
  std::int16_t tipo;
  const char* texto;
};
std::span<const TipoOfrecido> TiposDeCanal(std::int16_t canal);

// The resolutions, by the code that a channel stores; the text is what the arithmetic reads.
struct Resolucion {
  std::int16_t codigo;
  const char* texto;
};
std::span<const Resolucion> Resoluciones();

}  // namespace utr
