#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

// Frames around requests and answers. Where a frame ends is told by its function and its counts, never by a silence,
// which adapters, modems and pseudo-terminals don't keep.
namespace utr::protocolo {

using Bytes = std::vector<std::uint8_t>;
using VistaBytes = std::span<const std::uint8_t>;

inline constexpr std::size_t kMayorPdu = 253;
inline constexpr std::size_t kMayorTramaRtu = kMayorPdu + 3;  // address ahead, two bytes of check behind
inline constexpr std::size_t kCabeceraTcp = 7;

enum class Sentido : std::uint8_t { kPedido, kRespuesta };

// The check of a serial frame: polynomial 0xA001 reflected, initial 0xFFFF; sent low byte first.
std::uint16_t Crc16(VistaBytes bytes);

// The check over orders and images of tables: CRC-32 of IEEE 802.3, as of zip files.
std::uint32_t Crc32(VistaBytes bytes);

// How long a PDU is, from its first bytes.
struct LargoDePdu {
  enum class Clase : std::uint8_t { kSabido, kFaltan, kDesconocido } clase;
  std::size_t largo = 0;  // where it is known; never above kMayorPdu
};
LargoDePdu MedirPdu(Sentido sentido, VistaBytes principio);

// A frame as it came in. Over TCP `transaccion` is the number that the answer repeats.
struct Trama {
  std::uint8_t direccion = 0;
  std::uint16_t transaccion = 0;
  Bytes pdu;
};

Bytes TramaRtu(std::uint8_t direccion, VistaBytes pdu);
Bytes TramaTcp(std::uint16_t transaccion, std::uint8_t direccion, VistaBytes pdu);

// Finds the frames in what a serial line brings. It holds less than two frames, whatever comes.
class ReceptorRtu {
 public:
  explicit ReceptorRtu(Sentido sentido) : sentido_(sentido) {}

  void Recibir(VistaBytes bytes);

  // The next whole frame, if there is one. What can't begin a frame is dropped and counted.
  std::optional<Trama> Proxima();

  // The line was silent for longer than a gap inside a frame may be: the frame that was coming in is broken. Its first
  // byte goes, so that a frame behind it is found; call Proxima afterwards, and again while something is left.
  void Cortar();

  bool Vacio() const { return bytes_.empty(); }
  void Vaciar() { bytes_.clear(); }
  std::size_t Descartados() const { return descartados_; }  // bytes that belonged to no frame, since the beginning

 private:
  void Descartar(std::size_t cuantos);

  Sentido sentido_;
  Bytes bytes_;
  std::size_t descartados_ = 0;
};

// The same for a TCP connection, which loses nothing: a head that makes no sense spoils the connection for good.
class ReceptorTcp {
 public:
  void Recibir(VistaBytes bytes);
  std::optional<Trama> Proxima();
  bool Roto() const { return roto_; }  // the connection must be closed
  bool Vacio() const { return bytes_.empty(); }

 private:
  Bytes bytes_;
  bool roto_ = false;
};

}  // namespace utr::protocolo
