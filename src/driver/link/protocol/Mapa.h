#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/Fechas.h"
#include "driver/CanalesUTR.h"

// The map of a unit on the wire: addresses, registers, files, and the numbers that both ends keep to. docs/protocol.md
// is the contract; nothing here says anything else.
namespace utr::protocolo {

inline constexpr std::uint16_t kVersionDelMapa = 1;

// --- Addresses -------------------------------------------------------------------------------------------------------

inline constexpr std::uint8_t kDifusion = 0;       // never answered, never obeyed
inline constexpr std::uint8_t kUnicaUnidad = 255;  // whoever is alone on the line

// The address under which a client calls an identifier; 0 calls whoever is there.
constexpr std::uint8_t DireccionDe(std::int32_t identificador) {
  return identificador == 0 ? kUnicaUnidad : static_cast<std::uint8_t>(1 + (identificador - 1) % 247);
}

// Whether the unit of that identifier is meant by an address; over IP address 0 is no broadcast and means it too.
constexpr bool Atiende(std::int32_t identificador, std::uint8_t direccion, bool por_ip) {
  if (direccion == kDifusion) return por_ip;
  if (direccion == kUnicaUnidad) return true;
  return direccion <= 247 && (identificador == 0 || direccion == DireccionDe(identificador));
}

// --- Input registers, coils, discrete inputs -------------------------------------------------------------------------

namespace registro {
inline constexpr std::uint16_t kIdentificador = 0;
inline constexpr std::uint16_t kVersion = 1;
inline constexpr std::uint16_t kDePractica = 2;  // 1: a station to practise with
inline constexpr std::uint16_t kEstado = 3;      // state flags, reading layout
inline constexpr std::uint16_t kCartucho = 4;    // 1: a cartridge is in
inline constexpr std::uint16_t kReloj = 5;       // year, month, day, hour, minute, second
inline constexpr std::uint16_t kTrama = 100;     // the frame of present values, 38 places
inline constexpr std::uint16_t kAnillos = 200;   // heads of the rings of the flash
inline constexpr std::uint16_t kPilas = 250;     // the stack of each channel
inline constexpr std::uint16_t kAnillosDelCartucho = 300;
inline constexpr std::uint16_t kOrdenes = 400;  // results of the last orders, the newest first
}  // namespace registro

inline constexpr std::size_t kLargoDeIdentidad = 3;  // identifier, map version, practice
inline constexpr std::size_t kLargoDeReloj = 6;
inline constexpr std::size_t kLargoDePilas = 23;  // channels
inline constexpr std::uint16_t kMayorLecturaDeRegistros = 125;

// A run of registers that can be read together. A read lies in one of them.
struct Bloque {
  std::uint16_t desde;
  std::uint16_t cuantos;
};

// The clock in its six registers, and back; nothing for a moment that doesn't exist.
std::array<std::uint16_t, kLargoDeReloj> RegistrosDeReloj(const FechaHora& fecha);
std::optional<FechaHora> LeerReloj(std::span<const std::uint16_t> registros);

inline constexpr std::uint16_t kSalidas = 2;            // coils 0 and 1: outputs 1 and 2
inline constexpr std::uint16_t kEntradasDiscretas = 3;  // 0 to 2: SD1 to SD3, as the frame gives them

// --- Rings -----------------------------------------------------------------------------------------------------------

inline constexpr std::size_t kAnillosPorMemoria = 11;  // nine stacks, the queue, the events
inline constexpr std::size_t kAnilloDeCola = 9;
inline constexpr std::size_t kAnilloDeSucesos = 10;
inline constexpr std::size_t kRegistrosPorAnillo = 4;
inline constexpr std::uint16_t kPaginasPorPista = 1024;
inline constexpr std::uint16_t kPistasPorMemoria = 32;
inline constexpr std::uint16_t kSinPendiente = 0xFFFF;

// Where a ring stands. Its pages lie from the first page of track PrimeraPista on; places count from there.
struct Cabezal {
  std::uint16_t siguiente = 0;              // place of the page that is opened next
  bool lleno = false;                       // it has gone round: its oldest page is `siguiente`, else it is 0
  bool asciende = false;                    // from the oldest page to the newest no day goes back
  std::uint16_t pendiente = kSinPendiente;  // place of the oldest page with a pending record
  std::uint16_t paginas = 0;                // of the ring

  bool operator==(const Cabezal&) const = default;
};
using Cabezales = std::array<Cabezal, kAnillosPorMemoria>;

constexpr std::uint16_t PrimeraPista(std::size_t anillo) {
  return static_cast<std::uint16_t>(3 * anillo);  // the last one, the events, has two tracks
}

inline constexpr std::size_t kRegistrosDeCabezales = kAnillosPorMemoria * kRegistrosPorAnillo;
std::vector<std::uint16_t> RegistrosDeCabezales(const Cabezales& cabezales);
// Nothing for another number of registers, a place beyond its ring or a ring of another size; one ring, or all.
std::optional<Cabezal> LeerCabezal(std::size_t anillo, std::span<const std::uint16_t> registros);
std::optional<Cabezales> LeerCabezales(std::span<const std::uint16_t> registros);

// --- Files -----------------------------------------------------------------------------------------------------------

namespace archivo {
inline constexpr std::uint16_t kEco = 1;          // record n is one register that holds n
inline constexpr std::uint16_t kRegistros = 2;    // record n is input register n
inline constexpr std::uint16_t kPaginas = 0x10;   // pages of the unit: 16 files of 4096 records
inline constexpr std::uint16_t kCanales = 0x20;   // the channel table: a head and its image in pieces
inline constexpr std::uint16_t kAgenda = 0x21;    // the schedule, the same
inline constexpr std::uint16_t kBorrador = 0x30;  // what is staged; write only
inline constexpr std::uint16_t kFlash = 0x100;    // and a track: record n is page n
inline constexpr std::uint16_t kCartucho = 0x200;
}  // namespace archivo

inline constexpr std::uint16_t kMayorRecord = 9999;         // of any file
inline constexpr std::uint16_t kRegistrosPorPagina = 32;    // a page of flash, a piece of an image
inline constexpr std::uint16_t kRegistrosDePaginaUTR = 33;  // a page of the unit: its length in bytes, then 64 bytes
inline constexpr std::uint16_t kPaginasPorArchivo = 4096;   // of the unit
inline constexpr std::uint16_t kPaginasPorPedido = 3;       // of flash, as one run
inline constexpr std::size_t kBytesPorPieza = 2 * kRegistrosPorPagina;
inline constexpr std::size_t kMayorImagen = 4096 * kBytesPorPieza;  // bytes of the image of a table

inline constexpr std::size_t kMayorFilas = 64;  // of the channel table

// Where a page of the unit lies.
struct LugarDePagina {
  std::uint16_t archivo;
  std::uint16_t record;
};
constexpr LugarDePagina LugarDePaginaUTR(std::uint16_t pagina) {
  return {static_cast<std::uint16_t>(archivo::kPaginas + pagina / kPaginasPorArchivo),
          static_cast<std::uint16_t>(pagina % kPaginasPorArchivo)};
}

// The record of a page of the unit, and the bytes of such a record; nothing for one that makes no sense.
std::vector<std::uint8_t> RecordDePaginaUTR(std::span<const std::uint8_t> bytes);
std::optional<std::vector<std::uint8_t>> LeerRecordDePaginaUTR(std::span<const std::uint8_t> record);

// --- Times, in milliseconds ------------------------------------------------------------------------------------------

inline constexpr std::int64_t kMayorHueco = 250;            // inside a frame; a longer one breaks it
inline constexpr std::int64_t kMayorHuecoEnLlamada = 1000;  // the same over a telephone
inline constexpr std::int64_t kVidaDelBorrador = 30000;     // behind the last piece that was staged
inline constexpr std::int64_t kReinicioSinLeer = 2000;      // a restart takes force though nobody read its result

}  // namespace utr::protocolo
