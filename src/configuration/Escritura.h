#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Error.h"
#include "base/Progreso.h"
#include "configuration/ConfigColl.h"
#include "driver/Comunicador.h"
#include "services/RegistroErrores.h"
#include "tables/Tabla.h"

// The channels of a station written to the unit: a fixed order of driver calls for each of the two modes, told as a
// table of steps and walked by one loop. Nothing here asks or shows; whoever calls does both with what comes back.
namespace utr {

// The numbers of the channels that were changed, each followed by "#", in the order of their first change: "3#7#".
class CanalesModificar {
 public:
  // Appends a channel that isn't there yet; whole entries are compared, so that "3" isn't found in "13#".
  void Agregar(std::string_view canal);
  bool Contiene(std::string_view canal) const;
  const std::string& Texto() const noexcept { return texto_; }

 private:
  std::string texto_;
};

enum class ModoEscritura : std::uint8_t {
  kConfiguracion,    // everything, and the unit restarts
  kParametrizacion,  // times, limits and alarms of the enabled channels
};

enum class PasoEscritura : std::uint8_t {
  kCanalesModificar,
  kArmarTabla,  // the last stage starts: the table to be written is made of the collection
  kPilaCanal,
  kParametrizacion,
  kEvento,
  kReinicio,
  kFechaHora,
};
// The words for a step: "reinicio de la UTR".
std::string_view NombreDePaso(PasoEscritura paso);

// Shown while it is being written.
inline constexpr std::string_view kAvisoEscritura = "Esta operación demorará unos instantes. Por favor espere...";

struct PedidoEscritura {
  ModoEscritura modo = ModoEscritura::kConfiguracion;
  const ConfigColl& coleccion;
  const CanalesModificar& modificar;
};

// How a sequence ended.
struct ResultadoEscritura {
  bool Grabado = false;                  // the last stage was started
  bool Parametrizado = false;            // the unit took the parameters of the channels
  bool Aceptado = false;                 // the sequence is over and the dialog hides; else it stays open
  std::optional<PasoEscritura> fallo{};  // the step that failed, if any; none behind it ran
  std::string mensaje{};                 // the critical message of that step; empty: it fails without a word
  std::optional<Error> error{};          // what that step raised, not logged yet; there is no `mensaje` then
  TablaPtr tabla{};                      // what was to be written; null when it didn't come to that or without rows

  bool Completa() const noexcept { return Aceptado && !fallo && tabla != nullptr; }
};

// Runs the sequence of a mode up to its end or the first step that fails, by its answer or by raising. Never raises.
// `progreso` is told kAvisoEscritura when the last stage starts (its text is emptied at the end, on every way out) and
// each step done; it isn't asked for a cancel, since a unit that was written half must not be the answer to a click. A
// collection without channels is not written, and the unit then is not restarted.
ResultadoEscritura Escribir(const PedidoEscritura& pedido, Comunicador& comunicador, RegistroErrores& registro,
                            Progreso& progreso);

}  // namespace utr
