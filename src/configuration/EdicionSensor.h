#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "configuration/ReglasSensor.h"

// One channel while it is edited, and the way back into the channel.
namespace utr {

// The number of a channel's text; 0 for one that names no channel.
std::int16_t CanalDe(const Config& config);

// The number of a channel's kind of sensor; -1 for one that is unknown.
std::int16_t TipoDe(const Config& config);

// The bits of Flags that the dialog has options for; others are lost when it accepts.
inline constexpr std::uint8_t kOpcionesSensor = 31;

// What the fields of the dialog hold.
struct EdicionSensor {
  std::int16_t canal = 0;
  std::optional<std::int16_t> tipo;  // the selected kind; nothing where the channel offers none such
  ValoresSensor valores;
  ValoresSensor cargados;  // as they were loaded
  std::uint8_t flags = 0;  // the options that are set
  // The selected rows of the lists. Nothing: none is selected, and what is stored stays.
  std::optional<std::int32_t> parametro;
  std::optional<std::int32_t> unidad;
  std::optional<std::int32_t> resolucion;
};

// A channel as the fields show it at first. Rows are those that its texts name, whether a catalogue has them or not.
EdicionSensor EdicionDe(const Config& config);

// What accepting does. Applies to `edicion` what the rules force, also where one is broken; without a complaint stores
// the edition in the channel: with `solo_parametros` times, limits, alarms, reference level and options alone.
// `habilitado` tells what can be edited now. The caller has seen to it that a kind is selected.
ResultadoReglas AceptarEdicion(EdicionSensor& edicion, const std::function<bool(CampoSensor)>& habilitado,
                               bool solo_parametros, Config& config);

// How much of a channel can be edited.
enum class ModoEdicion : std::uint8_t { kTodo, kSoloParametros, kSoloLectura };

// What mends a field that is off under that face: the commands to use, as a part of a sentence. Empty: nothing does.
std::string RemedioDe(CampoSensor campo, CaraSensor cara, ModoEdicion modo);

// The texts that the fields take from another channel: those of the fields that can be edited here and now.
std::vector<ValorForzado> CopiarValores(const Config& origen, const std::function<bool(CampoSensor)>& habilitado);

// Another channel to copy from has the same face.
bool MismaCara(const Config& origen, std::int16_t tipo, std::int16_t canal);

}  // namespace utr
