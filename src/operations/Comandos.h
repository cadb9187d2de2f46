#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "operations/BanderasEstado.h"
#include "operations/PruebasRango.h"
#include "services/Diario.h"
#include "session/ModRTU.h"
#include "unit/EscritoresPagina0.h"
#include "unit/PaginaUnidad.h"

namespace utr {

struct CambioUTR;
struct LecturaPagina0;
struct OrdenUTR;

// What is done to the unit at the press of a button, each behind a question.
enum class AccionUTR { kBorrarCartucho, kBorrarFlash, kReiniciarUTR, kReiniciarAgenda };

// How a command ended. What isn't confirmed may be in the unit all the same.
enum class FinComando {
  kIncompleto,    // a value is missing or out of range, which was said
  kCancelado,     // the confirmation wasn't a yes
  kNoEscrito,     // failed before anything went out to the unit, also where the driver kept it to itself
  kNoConfirmado,  // went out, and the unit refused, fell silent or failed
  kSinReiniciar,  // written; the restart with which it takes force was refused
  kSinTerminar,   // written; the restart or what follows it failed with an error
  kHecho,
};

// The texts of the two delays, as they are typed and shown.
struct Retardos {
  std::string delay;
  std::string repeticiones;
};

// What the unit keeps of them: it counts in tens, and a half goes to the even ten.
Retardos Redondear(const Retardos& retardos);

// What leaving the delay's field makes of its text: "0" beyond 0 to 1000.
std::string RetardoAlSalir(std::string_view texto);

// What the clock's fields show where the unit gave no date: the time's field and the date's field.
inline constexpr FechaHora kHoraSinLeer{.anio = 2001, .mes = 1, .dia = 1};
inline constexpr FechaHora kFechaSinLeer{.anio = 2000, .mes = 1, .dia = 1};

// The direct commands to the unit, each from its checks and questions to its closing message and its entry in the
// journal. It remembers what it read and wrote last, which is what the journal tells as the value before where no read
// belongs to the command itself, or that read failed; no call is made for the journal.
//
// A read gives nothing where the unit gave nothing that could be used, which was said in its own words; so do errors
// that are raised inside, and inside the writes that don't restart the unit.
class Comandos {
 public:
  // Runs work with the unit while the window is kept shut. `detalle` says how it goes on where it takes its time.
  using Ocupar = std::function<void(std::string_view detalle, const std::function<void()>& trabajo)>;

  // `titulo`: of all messages.
  Comandos(ModRTU& mod, std::string titulo, Ocupar ocupar);

  // --- Parameters on page "0" ----------------------------------------------------------------------------------------

  std::optional<Retardos> LeerDelay();
  std::optional<std::int32_t> LeerBPS();  // the code of the speed, which may stand for none
  std::optional<std::int32_t> LeerIdentificador();
  std::optional<std::int32_t> LeerAgenda();  // minutes of the window

  FinComando GrabarDelay(const Retardos& retardos);
  FinComando GrabarAgenda(const std::string& minutos);

  // The speed in bits per second (0: none is chosen) and the identifier. Both restart the unit, wait for it, and bring
  // settings and link up to date, so that the talk goes on. Their errors are logged and shown as such.
  FinComando GrabarBPS(std::int32_t velocidad);
  FinComando GrabarIdentificador(const std::string& identificador);

  // The speed of the link can be changed from here: a serial port and no telephone call.
  bool PuedeGrabarBPS() const;

  // --- Flags, pages, clock -------------------------------------------------------------------------------------------

  std::optional<Banderas> LeerCS();
  FinComando GrabarCS(const Banderas& banderas);

  // The page as it came, to be shown whatever it is; shorter than two characters it is a failure, which was said.
  std::string LeerPagina(const std::string& numero);
  FinComando EscribirPagina(const std::string& numero, const std::string& datos);

  std::optional<FechaHora> ActualizarHora();
  // Sets the clock to the computer's time. Behind kHecho the clock is to be read.
  FinComando GrabarHora();

  // --- Actions -------------------------------------------------------------------------------------------------------

  FinComando Hacer(AccionUTR accion);

  // Turns RTS over; the state behind it, which is the former one where the driver refused. It begins as off.
  bool ConmutarRTS();

 private:
  // A command under way, as the journal will tell it.
  struct Intento {
    std::string comando{};
    std::string dato{};  // what is known of the unit by it; empty: nothing is kept
    std::string antes = asiento::kSinLeer;
    std::string escrito{};
    bool salio = false;    // the order went out to the unit
    bool grabado = false;  // and the unit confirmed it
  };
  using Accion = std::function<bool(Intento& intento)>;

  std::optional<PaginaUnidad> LeerPaginaCero(const LecturaPagina0& lectura);
  bool EnEspera(const Accion& accion, Intento& intento, std::optional<Error>& falla);
  FinComando Cumplir(const OrdenUTR& orden, Intento intento, const Accion& accion);
  FinComando GrabarYReiniciar(const CambioUTR& cambio, Intento intento, const Accion& grabar,
                              const std::function<void()>& seguir);
  FinComando Reiniciar(const CambioUTR& cambio, Intento& intento, const Accion& grabar,
                       const std::function<void()>& seguir, std::string& resultado);
  ContextoUnidad Unidad(Intento& intento, const std::function<std::string(const PaginaUnidad&)>& antes) const;
  void Ajustar(const CambioUTR& cambio, std::string_view clave, std::int32_t valor, std::int32_t defecto);
  Intento Empezar(std::string comando, std::string dato, std::string escrito) const;
  void Saber(const Intento& intento, FinComando fin);
  void Anotar(Diario::Tarea& tarea, const Intento& intento, const std::string& resultado);
  bool Confirmar(const char* pregunta, Icono icono);
  bool EnRango(CampoComando campo, double valor);
  void Decir(std::string_view texto, Icono icono, const std::string& detalle = {});

  ModRTU& mod_;
  std::string titulo_;
  Ocupar ocupar_;
  std::map<std::string, std::string> sabido_;  // what was read or written last, by what it is
  // The unit's clock and this computer's at that moment; none once it was written since.
  std::optional<std::pair<FechaHora, FechaHora>> reloj_leido_;
  bool rts_ = false;
};

}  // namespace utr
