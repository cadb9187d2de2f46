#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Fechas.h"
#include "base/Reloj.h"
#include "services/Propiedades.h"
#include "tables/Tabla.h"

namespace utr {

// Words that the entries share.
namespace asiento {
inline constexpr const char* kSinLeer = "sin leer";              // what stood there before isn't known
inline constexpr const char* kNada = "-";                        // there is no such value
inline constexpr const char* kHecho = "hecho";                   // the unit confirmed it
inline constexpr const char* kNoAceptado = "no aceptado";        // it said no
inline constexpr const char* kSinConfirmar = "; no confirmado";  // it didn't confirm: it may stand there all the same
inline constexpr const char* kNadaEscrito = "; no se escribió nada";  // it failed before anything went out
}  // namespace asiento

// What an entry tells of. kNota: what is neither done to a unit nor taken from it, such as another identifier from now
// on.
enum class ClaseAsiento : std::uint8_t { kEscritura, kRespaldo, kLectura, kNota };

// One thing that was done: when it ended, what it was, what stood in the unit before as far as it was known, what was
// written, and how it ended. Texts as the operator reads them.
struct Asiento {
  FechaHora momento;
  std::string comando;
  std::string antes;
  std::string escrito;
  std::string resultado;
  ClaseAsiento clase = ClaseAsiento::kEscritura;
  std::int32_t estacion = 0;  // identifier in the settings when it began; 0: none. The journal puts it in
};

// The journal of this run of the program, oldest first: what was written to units and read out of them at length, and
// the backups. It only grows.
//
// Two kinds of note come together here. Every driver call that counts is told by the driver itself
// (ComunicadorConDiario), whoever makes it, so that nothing is missing. A procedure that knows more (what stood there
// before, what it means in words) opens a Tarea, and its own entries take the place of those calls.
class Diario {
 public:
  // The station of an entry is the identifier that the settings hold.
  Diario(const Propiedades& propiedades, const Reloj& reloj) : propiedades_(propiedades), reloj_(reloj) {}
  Diario(const Diario&) = delete;
  Diario& operator=(const Diario&) = delete;

  // Work with the unit of which the procedure itself tells. Those inside another one may be told of by either.
  class Tarea {
   public:
    explicit Tarea(Diario& diario);
    // Calls that no entry took the place of become entries of their own when the outermost task ends.
    ~Tarea();
    Tarea(const Tarea&) = delete;
    Tarea& operator=(const Tarea&) = delete;

    // An entry in place of all calls of the task so far. Its station is that with which the task began.
    void Anotar(Asiento asiento);

   private:
    Diario& diario_;
    std::size_t desde_;
    std::int32_t estacion_;
  };

  // An entry by itself: what isn't a driver call, or is told beside it.
  void Anotar(Asiento asiento);

  // A driver call: an entry, unless a task is open.
  void AnotarLlamada(Asiento asiento);
  // A page of the flash that was asked for. Pages come by the thousand: those in a row make one entry.
  void AnotarPaginaFlash(bool respondida);
  // The entry of the pages so far, where nothing else has closed it.
  void Completar();

  // The unit is called by another identifier from now on. Both journals tell where the other one is.
  void AnotarOtroIdentificador(std::int32_t anterior, std::int32_t nuevo);

  const std::vector<Asiento>& Asientos() const noexcept { return asientos_; }

  // Who keeps the entries; one at a time, none with an empty function. Told of each as it comes. It must not raise.
  void AlAnotar(std::function<void(const Asiento&)> aviso) { aviso_ = std::move(aviso); }

  // What was written to units, as a table of texts for a list, in the order of the entries: "Momento" (date and time),
  // "Comando", "Antes", "Escrito", "Resultado". It stands on its first row.
  TablaPtr ComoTabla() const;

 private:
  struct Paginas {
    std::int64_t leidas = 0;
    std::int64_t fallidas = 0;
  };

  std::int32_t Estacion() const { return propiedades_.LeerEntero(clave::kIdentificador, 0); }
  void Guardar(Asiento asiento);
  void Reunir(Asiento asiento);
  void ReunirPaginas();

  const Propiedades& propiedades_;
  const Reloj& reloj_;
  std::function<void(const Asiento&)> aviso_;
  std::vector<Asiento> asientos_;
  std::vector<Asiento> llamadas_;  // of the tasks that are open
  std::optional<Paginas> paginas_;
  int tareas_ = 0;
};

}  // namespace utr
