#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "driver/link/protocol/Pdu.h"

// Orders: what changes a unit. One is a block of registers written whole, from register 0 on, by function 16; what
// became of it is read from the input registers at registro::kOrdenes.
namespace utr::protocolo {

// Where the driver's contract has a number for a command, the code is that number.
enum class Codigo : std::uint16_t {
  kSuceso = 1,                  // event: its number (0 to 255) and its value
  kPilas = 7,                   // stacks: nothing leaves them; else how many channels, and these
  kReinicio = 14,               // restart after a change of speed, identifier or configuration
  kCanalesModificar = 33,       // channels that will be changed
  kReinicioDeAgenda = 41,       // the schedule and its window take force
  kReinicioDePuesta = 44,       // restart at the end of commissioning
  kBorrarFlash = 101,           //
  kBorrarCartucho = 102,        //
  kReloj = 103,                 // year, month, day, hour, minute, second
  kEstado = 104,                // state flags, writing layout (0 to 255)
  kSalida = 105,                // output (1 or 2), 0 or 1
  kPagina = 106,                // page of the unit: its number, how many bytes (1 to 64), the bytes, two in a register
  kTomarParametrizacion = 110,  // staged channels, over those that the unit has: a Resumen
  kTomarConfiguracion = 111,    // staged channels, and all others become disabled: a Resumen
  kTomarAgenda = 112,           // staged schedule: a Resumen
};

// How long a client waits for the end of an order of that code, in milliseconds.
std::int64_t LimiteDe(Codigo codigo);

inline constexpr std::uint16_t kRegistrosDeOrden = 6;  // ahead of the arguments; two of check stand behind them
inline constexpr std::size_t kMayorArgumentos = 100;

struct Orden {
  std::uint16_t identificador = 0;  // of the unit that is meant; 0: any
  std::uint32_t sesion = 0;         // a client's own, random, never 0
  std::uint16_t secuencia = 0;      // another one for each order of a session
  Codigo codigo{};                  // any number, when it came in
  std::vector<std::uint16_t> argumentos;
};

// The block: identifier, session (2), sequence, code, number of arguments, arguments, CRC-32 over the bytes of all that
// (2). Nothing is read from a block of another length or with another check.
std::vector<std::uint16_t> BloqueDe(const Orden& orden);
std::optional<Orden> LeerBloque(std::span<const std::uint16_t> registros);

enum class EstadoDeOrden : std::uint16_t { kNinguna = 0, kEnCurso = 1, kHecha = 2, kRechazada = 3 };
enum class Motivo : std::uint16_t {  // of a refusal
  kNinguno = 0,
  kArgumentos = 1,    // a code or arguments that the unit doesn't take
  kNoGuardada = 2,    // what would have changed can't be kept
  kSinCartucho = 3,   //
  kSinBorrador = 4,   // what was staged isn't what the order names
  kInterrumpida = 5,  // the unit was started again before it was done
};

inline constexpr std::size_t kResultados = 16;
inline constexpr std::size_t kRegistrosPorResultado = 5;

struct ResultadoDeOrden {
  std::uint32_t sesion = 0;
  std::uint16_t secuencia = 0;
  EstadoDeOrden estado = EstadoDeOrden::kNinguna;
  Motivo motivo = Motivo::kNinguno;

  bool operator==(const ResultadoDeOrden&) const = default;
};
std::vector<std::uint16_t> RegistrosDeResultados(std::span<const ResultadoDeOrden> resultados);
// As many results as whole ones were read.
std::vector<ResultadoDeOrden> LeerResultados(std::span<const std::uint16_t> registros);

// --- Arguments -------------------------------------------------------------------------------------------------------

// A page of the unit; the reader gives nothing for arguments that aren't one.
struct PaginaEscrita {
  std::uint16_t numero = 0;
  Bytes bytes;  // 1 to 64
};
std::vector<std::uint16_t> ArgumentosDe(const PaginaEscrita& pagina);
std::optional<PaginaEscrita> LeerPaginaEscrita(std::span<const std::uint16_t> argumentos);

// What an order says of the image that it takes.
struct Resumen {
  std::uint16_t filas = 0;
  std::uint32_t largo = 0;    // bytes of the image
  std::uint32_t control = 0;  // CRC-32 over it

  bool operator==(const Resumen&) const = default;
};
std::vector<std::uint16_t> ArgumentosDe(const Resumen& resumen);
std::optional<Resumen> LeerResumen(std::span<const std::uint16_t> argumentos);

}  // namespace utr::protocolo
