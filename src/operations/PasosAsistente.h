#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "configuration/ConfigColl.h"
#include "driver/Comunicador.h"
#include "schedule/FDLHorarios.h"
#include "session/ModRTU.h"

// Where a commissioning stands: what was collected so far, and the way from step to step.
namespace utr {

inline constexpr std::int16_t kPrimerPaso = 1;  // behind the introduction, which is 0
inline constexpr std::int16_t kUltimoPaso = 3;

enum class Direccion : std::int16_t { kAdelante = 0, kAtras = 1 };

struct EstadoAsistente {
  ConfigColl ColeccionConfig;          // the channels that are shown and edited
  ConfigColl ColeccionConfigCompleta;  // all channels, which are written: the same objects
  FDLHorarios Horarios;
  std::int16_t paso = 0;
  bool configuracion_hecha = false;  // channels were loaded and reviewed
  bool agenda_hecha = false;         // a schedule was accepted
  bool fin_habilitado = false;       // the last step was prepared
};

// What is done on arrival. Each is told whether it was done before, and gives whether it was done now; without it the
// step isn't reached.
struct LlegadasAsistente {
  std::function<bool(bool hecha)> LeeryGuardarCFG;
  std::function<bool(bool hecha)> ProcesarAgenda;
};

// Goes to a step. On the way forward the action of the step runs first; going back runs none and leaves Finish as it
// is. False: the action failed, and the state is as before. Raises what the action raises.
bool SetStep(EstadoAsistente& estado, std::int16_t paso, Direccion direccion, const LlegadasAsistente& llegadas);

// The caption of the window in a step.
std::string TituloDePaso(std::int16_t paso);

bool HayAnterior(std::int16_t paso);
bool HaySiguiente(std::int16_t paso);

inline constexpr std::string_view kPasoEjecutado = "Este paso ya fué ejecutado";

// LabelP1 and lblStep(2), which tell whether their step was done.
std::string_view TextoDeConfiguracion(const EstadoAsistente& estado);
std::string_view TextoDeAgenda(const EstadoAsistente& estado);

// --- What the last step proposes -------------------------------------------------------------------------------------

// The identifier that page "0" of the unit holds. Raises what the driver raises, and for a page that couldn't be read
// or is none.
std::int32_t LeerIdentificador(Comunicador& comunicador);

// The speeds that a unit can be given, and which of them is proposed: that of the settings where it is one of the first
// two, else the last.
inline constexpr std::array<std::int32_t, 3> kVelocidadesAsistente{1200, 9600, 19200};
std::int32_t VelocidadPropuesta(const Propiedades& propiedades);

// Says that the unit will go over to that speed; empty where a serial link without a call has it already.
std::string AvisoDeVelocidad(const ModRTU& mod, std::int32_t velocidad);

}  // namespace utr
