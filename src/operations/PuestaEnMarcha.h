#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Error.h"
#include "base/Progreso.h"
#include "base/Reloj.h"
#include "configuration/ConfigColl.h"
#include "schedule/FDLHorarios.h"
#include "services/Diario.h"
#include "session/Respaldos.h"
#include "tables/Tabla.h"
#include "unit/EscritoresPagina0.h"

// The end of commissioning: all that was collected goes to the unit, which is erased and restarted. The steps are a
// table (what is said, driver call, failure, waits, progress) walked by one loop; whoever shows is told of each change.
namespace utr {

// --- The identifier --------------------------------------------------------------------------------------------------

inline constexpr std::int16_t kMayorIdentificadorAsignable = 32760;

// What is wrong with the text of an identifier that is to be assigned; empty: it is a number from 1 to 32760.
std::string_view ReparoDeIdentificador(std::string_view texto);

// --- The request -----------------------------------------------------------------------------------------------------

struct PedidoPuesta {
  const ConfigColl& completa;
  const FDLHorarios& horarios;
  bool asignar = false;          // the identifier goes to the unit; else one that stands there is taken away
  std::string identificador{};   // as the field holds it
  std::int32_t velocidad = 0;    // bits per second; one that the unit doesn't know counts as the code 0
  bool borrar_cartucho = false;  // the flash is always erased
  std::optional<ResultadoRespaldo> respaldo{};  // of what the unit holds now, as far as it gave it
};

// --- The list of steps -----------------------------------------------------------------------------------------------

enum class EstadoPaso : std::uint8_t {
  kPendiente,
  kEnCurso,
  kHecho,
  kNoAceptado,    // the unit refused, and the sequence went on
  kNoConfirmado,  // it failed and ended the sequence; it may be in the unit all the same
  kNoAlcanzado,
  kSinRespaldo,  // of the line ahead of the steps
};
std::string_view NombreDe(EstadoPaso estado);
// States that the operator should see at once.
bool LlamaLaAtencion(EstadoPaso estado);

// One line: what is done, its state, and what else is known of it.
struct LineaPuesta {
  std::string texto;
  EstadoPaso estado = EstadoPaso::kPendiente;
  std::string detalle{};
  bool operator==(const LineaPuesta&) const = default;
};

// The lines of a request before it runs: the backup, then one for each write that it takes, in their order.
std::vector<LineaPuesta> LineasDe(const PedidoPuesta& pedido);

// The lines as a table of texts for a list: "Paso", "Estado", "Detalle".
TablaPtr TablaDeLineas(const std::vector<LineaPuesta>& lineas);

// --- The sequence ----------------------------------------------------------------------------------------------------

struct ContextoPuesta {
  ContextoUnidad unidad;
  Reloj& reloj;
  Diario& diario;  // is told each write as it ends
  Atender atender{};
  Progreso& progreso;  // is told 7 steps, the text of each stage, and what is done
  std::function<void(const std::vector<LineaPuesta>&)> lineas{};  // is told the lines at each change
};

struct ResultadoPuesta {
  std::optional<Error> error{};                 // what ended the sequence, not logged yet; none: all is done
  bool escribio = false;                        // a write was begun, so that the unit may not be what it was
  std::optional<std::int16_t> identificador{};  // what the unit took as its own; 0: it was taken away
  TablaPtr canales{};                           // the channels that were handed over
};

// Runs the steps up to their end or the first that fails. What was written by then stays written. Never raises.
ResultadoPuesta PonerEnMarcha(const PedidoPuesta& pedido, const ContextoPuesta& contexto);

}  // namespace utr
