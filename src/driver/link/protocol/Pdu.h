#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "driver/link/protocol/Tramas.h"

// Requests and answers inside their frames, both ways: what a client sends and reads, what a unit reads and sends. All
// numbers on the wire have two bytes, the high one first. A reader gives nothing for bytes that aren't exactly what
// they should be.
namespace utr::protocolo {

namespace funcion {
inline constexpr std::uint8_t kLeerSalidas = 1;
inline constexpr std::uint8_t kLeerEntradas = 2;
inline constexpr std::uint8_t kLeerRegistros = 4;
inline constexpr std::uint8_t kConmutarSalida = 5;
inline constexpr std::uint8_t kConmutarSalidas = 15;
inline constexpr std::uint8_t kEscribirRegistros = 16;
inline constexpr std::uint8_t kLeerArchivos = 20;
inline constexpr std::uint8_t kEscribirArchivos = 21;
}  // namespace funcion

inline constexpr std::uint8_t kBitDeExcepcion = 0x80;
enum class Excepcion : std::uint8_t {
  kFuncion = 1,    // the unit doesn't know the function
  kDireccion = 2,  // there is no such register, file or record
  kValor = 3,      // a count or a value that makes no sense
  kFalla = 4,      // the unit failed
  kOcupada = 6,    // it is at something else; the same request may do later
  // Of a gateway on the way to the unit, which hasn't got an answer for the client.
  kSinCamino = 0x0A,
  kUnidadMuda = 0x0B,
};

// Big-endian numbers of two and four bytes.
void Poner16(Bytes& bytes, std::uint16_t numero);
void Poner32(Bytes& bytes, std::uint32_t numero);
std::uint16_t Leer16(VistaBytes bytes, std::size_t lugar);  // `lugar` and the next byte must be there
std::uint32_t Leer32(VistaBytes bytes, std::size_t lugar);

// Registers as bytes and back, high byte first; an odd last byte is dropped.
Bytes BytesDe(std::span<const std::uint16_t> registros);
std::vector<std::uint16_t> RegistrosDe(VistaBytes bytes);

// --- Exceptions ------------------------------------------------------------------------------------------------------

Bytes PduDeExcepcion(std::uint8_t funcion, Excepcion excepcion);

// The code of an answer that is an exception to that function; nothing for any other answer.
std::optional<std::uint8_t> LeerExcepcion(VistaBytes pdu, std::uint8_t funcion);

// --- Bits and registers ----------------------------------------------------------------------------------------------

// A read of coils, discrete inputs or registers: from where, and how many.
struct Tramo {
  std::uint16_t desde = 0;
  std::uint16_t cuantos = 0;
};
Bytes PedidoDeTramo(std::uint8_t funcion, Tramo tramo);
std::optional<Tramo> LeerPedidoDeTramo(VistaBytes pdu);

Bytes RespuestaDeRegistros(std::span<const std::uint16_t> registros);
std::optional<std::vector<std::uint16_t>> LeerRespuestaDeRegistros(VistaBytes pdu, std::size_t cuantos);

Bytes RespuestaDeBits(std::uint8_t funcion, const std::vector<bool>& bits);
std::optional<std::vector<bool>> LeerRespuestaDeBits(VistaBytes pdu, std::uint8_t funcion, std::size_t cuantos);

// A write of one coil, of coils or of registers. The answer to it repeats function, address and value or count.
Bytes PedidoDeSalida(std::uint16_t salida, bool encender);
struct EscrituraDeBits {
  std::uint16_t desde = 0;
  std::vector<bool> bits;
};
std::optional<EscrituraDeBits> LeerPedidoDeSalidas(VistaBytes pdu);  // function 5 or 15
Bytes PedidoDeEscritura(std::uint16_t desde, std::span<const std::uint16_t> registros);
struct EscrituraDeRegistros {
  std::uint16_t desde = 0;
  std::vector<std::uint16_t> registros;
};
std::optional<EscrituraDeRegistros> LeerPedidoDeEscritura(VistaBytes pdu);
Bytes AcuseDe(VistaBytes pedido);  // what a unit answers to functions 5, 15 and 16: their first five bytes

// --- File records ----------------------------------------------------------------------------------------------------

inline constexpr std::size_t kMayorCuentaDeArchivos = 245;  // bytes of a read behind its count, asked or answered

// One part of a read of files: so many registers from the beginning of a record on, through the records behind it.
struct PedidoDeArchivo {
  std::uint16_t archivo = 0;
  std::uint16_t record = 0;
  std::uint16_t registros = 0;

  bool operator==(const PedidoDeArchivo&) const = default;
};
Bytes PedidoDeArchivos(std::span<const PedidoDeArchivo> partes);
std::optional<std::vector<PedidoDeArchivo>> LeerPedidoDeArchivos(VistaBytes pdu);

// Bytes of the answer behind its count; a unit refuses what goes beyond kMayorCuentaDeArchivos.
std::size_t CuentaDeRespuesta(std::span<const PedidoDeArchivo> partes);
Bytes RespuestaDeArchivos(std::span<const Bytes> partes);  // one for each part, of whole registers
// The bytes of each part; nothing unless all have the length that was asked for.
std::optional<std::vector<Bytes>> LeerRespuestaDeArchivos(VistaBytes pdu, std::span<const PedidoDeArchivo> partes);

// One part of a write of files. The answer repeats the request.
struct EscrituraDeArchivo {
  std::uint16_t archivo = 0;
  std::uint16_t record = 0;
  Bytes datos;  // of whole registers
};
Bytes PedidoDeEscrituraDeArchivos(std::span<const EscrituraDeArchivo> partes);
std::optional<std::vector<EscrituraDeArchivo>> LeerPedidoDeEscrituraDeArchivos(VistaBytes pdu);

}  // namespace utr::protocolo
