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
  // The journal puts in what follows.
  std::int32_t estacion = 0;  // identifier in the settings when it began; 0: none
  std::string unidad{};       // what was at the other end: "real", "simulada"...; empty: nobody knows
  std::uint64_t orden = 0;    // of its own in this run of the program, ascending
  bool provisional = false;   // another entry may still take its place
};

// What a unit's clock showed, for an entry made at `ahora`: the hour as it was read; with the computer's time of that
// reading where it isn't of this moment, since a clock's hour says nothing without it.
std::string HoraLeida(const std::string& hora, const FechaHora& leida_el, const FechaHora& ahora);

// The journal of this run of the program, oldest first: what was written to units and read out of them at length, and
// the backups.
//
// Two kinds of note come together here. Every driver call that counts is told by the driver itself
// (ComunicadorConDiario), whoever makes it, so that nothing is missing: a write ahead of the call, as one that isn't
// confirmed, and again once it has ended. A procedure that knows more (what stood there before, what it means in words)
// opens a Tarea, and its own entries take the place of those calls. What another entry takes the place of is there all
// the same until then, provisional: whatever cuts the program off, the journal tells what had gone out.
class Diario {
 public:
  // The station of an entry is the identifier that the settings hold.
  Diario(const Propiedades& propiedades, const Reloj& reloj) : propiedades_(propiedades), reloj_(reloj) {}

  // Who tells what is at the other end, asked at each entry; an empty function: nobody.
  void AlPreguntarUnidad(std::function<std::string()> unidad) { unidad_ = std::move(unidad); }
  Diario(const Diario&) = delete;
  Diario& operator=(const Diario&) = delete;

  // Work with the unit of which the procedure itself tells. Those inside another one may be told of by either.
  class Tarea {
   public:
    explicit Tarea(Diario& diario);
    // Calls that no entry took the place of stay for good when the outermost task ends.
    ~Tarea();
    Tarea(const Tarea&) = delete;
    Tarea& operator=(const Tarea&) = delete;

    // An entry in place of all calls of the task so far. Its station is that with which the task began.
    void Anotar(Asiento asiento);

   private:
    Diario& diario_;
    std::uint64_t desde_;  // orders from here on are of the task
    std::int32_t estacion_;
  };

  // An entry by itself: what isn't a driver call, or is told beside it.
  void Anotar(Asiento asiento);

  // A driver call: an entry, provisional while a task is open.
  void AnotarLlamada(Asiento asiento);
  // The same ahead of the call, provisional until Terminar gives what became of it. Gives the order of the entry.
  std::uint64_t Empezar(Asiento asiento);
  void Terminar(std::uint64_t empezado, Asiento asiento);
  // A page of the flash that was asked for. Pages come by the thousand: those in a row make one entry.
  void AnotarPaginaFlash(bool respondida);
  // The entry of the pages so far, where nothing else has closed it.
  void Completar();

  // The unit is called by another identifier from now on. Both journals tell where the other one is.
  void AnotarOtroIdentificador(std::int32_t anterior, std::int32_t nuevo);

  const std::vector<Asiento>& Asientos() const noexcept { return asientos_; }

  // A change of the journal: those that it has no more, and the entry that came, null where none did. Neither: what was
  // provisional stays for good.
  struct Cambio {
    std::vector<std::uint64_t> retirados{};
    const Asiento* nuevo = nullptr;
  };
  // Who keeps the entries; one at a time, none with an empty function. Told of each change as it comes. It must not
  // raise.
  void AlCambiar(std::function<void(const Cambio&)> aviso) { aviso_ = std::move(aviso); }

  // What was written to units, as a table of texts for a list, in the order of the entries: "Momento" (date and time),
  // "UTR" (whose: "120, real"; the identifier alone where nobody tells what it is), "Comando", "Antes", "Escrito",
  // "Resultado". It stands on its first row.
  TablaPtr ComoTabla() const;

 private:
  struct Paginas {
    std::int64_t leidas = 0;
    std::int64_t fallidas = 0;
    std::uint64_t empezado = 0;  // order of the entry that stands for them
  };

  std::int32_t Estacion() const { return propiedades_.LeerEntero(clave::kIdentificador, 0); }
  std::uint64_t Poner(Asiento asiento, const std::vector<std::uint64_t>& retirados = {});
  void Afirmar();
  Asiento LecturaDePaginas(std::string resultado) const;
  void ReunirPaginas();

  const Propiedades& propiedades_;
  const Reloj& reloj_;
  std::function<void(const Cambio&)> aviso_;
  std::function<std::string()> unidad_;
  std::vector<Asiento> asientos_;
  std::uint64_t proximo_ = 1;
  std::optional<Paginas> paginas_;
  int tareas_ = 0;
};

}  // namespace utr
