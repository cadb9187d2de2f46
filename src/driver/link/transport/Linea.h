#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace utr::enlace {

// A line on which bytes travel both ways, whatever it is made of. It is open from its making to its end, and never
// waits longer than it is told to, so that whoever waits can let events run between two steps.
//
// Every operation raises error_enlace::kLineaPerdida, with the system's error, once the device is gone or the other end
// has closed; what had arrived until then is handed over first.
class Linea {
 public:
  virtual ~Linea() = default;

  // The line stands: at once on a device, after the other end has taken the call on a socket. Waits up to so many
  // milliseconds for it. Raises kDireccionMuda when it is refused.
  virtual bool Lista(int milisegundos) = 0;

  // Hands over as many of the bytes as there is room for, waiting up to so many milliseconds for any; gives how many.
  virtual std::size_t Enviar(std::span<const std::uint8_t> bytes, int milisegundos) = 0;

  // Appends what has arrived, waiting up to so many milliseconds for anything; gives how many bytes came.
  virtual std::size_t Recibir(std::vector<std::uint8_t>& destino, int milisegundos) = 0;

  // Switches the line RTS, or DTR. False: the line has none.
  virtual bool Rts(bool activo) = 0;
  virtual bool Dtr(bool activo) = 0;
};

// Where lines come from.
class Tendido {
 public:
  virtual ~Tendido() = default;

  // Opens a serial device, 8 bits, no parity, 1 stop bit, for this program alone. Raises kPuertoEnUso, with the name of
  // the device, when another holder has it, kPuertoInexistente when there is no such device or it is no serial one,
  // kLlamada for a speed that serial lines don't have.
  virtual std::unique_ptr<Linea> AbrirSerie(const std::string& dispositivo, std::int32_t velocidad) = 0;

  // Begins a connection to a dotted address; Linea::Lista tells when it stands. Raises kDireccionMuda when the system
  // refuses it at once.
  virtual std::unique_ptr<Linea> AbrirTcp(const std::string& direccion, int puerto) = 0;
};

// The lines of this machine.
class TendidoDelEquipo final : public Tendido {
 public:
  std::unique_ptr<Linea> AbrirSerie(const std::string& dispositivo, std::int32_t velocidad) override;
  std::unique_ptr<Linea> AbrirTcp(const std::string& direccion, int puerto) override;
};

}  // namespace utr::enlace
