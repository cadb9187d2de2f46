#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "driver/Comunicador.h"
#include "services/Propiedades.h"

namespace utr {

// What is known of the unit behind an address. A connection over IP is opened by whatever asks next, so that only what
// came of calls tells it.
enum class EnlaceIP : std::uint8_t {
  kSinProbar,  // nobody was asked since the way or the address was chosen, or it was left
  kContesta,   // the unit answered what it was asked last, be it with a refusal
  kPerdido,    // it didn't, or nobody could be reached there
};

// The link with the unit as the program knows it: its kind, whether a telephone call stands, whether the serial port
// counts as connected, whether the unit answers over IP. The only place that changes this state; whoever shows it is
// told of every change and of every try that failed.
class Conexion {
 public:
  Conexion(Comunicador& comunicador, const Propiedades& propiedades);

  bool PorIP() const noexcept { return por_ip_; }
  // A call stands, so that Conectar must not be repeated.
  bool EnLlamada() const noexcept { return en_llamada_; }
  // The pressed one of the two connection buttons; over IP it means nothing.
  bool Conectado() const noexcept { return conectado_; }
  // Means something over IP alone.
  EnlaceIP Ip() const noexcept { return ip_; }

  // The port of the last Conectar that went well, as text; empty before any. The settings may name another one already.
  const std::string& PuertoAbierto() const noexcept { return puerto_abierto_; }

  // Who shows the link; one at a time, none with an empty function.
  void AlCambiar(std::function<void()> aviso) { aviso_ = std::move(aviso); }
  // Has the link shown anew, without a change.
  void Avisar() const;

  // The kind of link that the settings tell; no call stands.
  void TomarDeAjustes();
  // The kind of link is chosen, maybe with another address: nobody was asked there yet.
  void FijarPorIP(bool por_ip);
  void MarcarConectado(bool conectado);
  // What came of a call, as the driver tells it: whether the unit answered; nothing: who is there may be another one
  // from now on. Over a serial port it changes nothing.
  void MarcarRespuesta(std::optional<bool> contesta);
  // A call that stood counts no more: it was lost, or is given up. The driver is not asked.
  void OlvidarLlamada();

  // Opens the link, in which no call stands then: `enlace` is the link settings text, `puerto` the serial or TCP port.
  // Raises what the driver raises; the port then counts as disconnected, and over IP the unit as lost.
  void Conectar(std::string_view enlace, std::string_view puerto);
  // The same with speed (or address) and port of the settings, whose kind the link then has.
  void ConectarSegunAjustes();

  // Dials over the open port. True: the call stands. Raises what the driver raises; no call stands then.
  bool Llamar(std::string_view numero, std::string_view comandos);

  // Closes the port and ends a call.
  void Desconectar();

 private:
  Comunicador& comunicador_;
  const Propiedades& propiedades_;
  std::function<void()> aviso_;
  std::string puerto_abierto_;
  bool por_ip_ = false;
  bool en_llamada_ = false;
  bool conectado_ = false;
  EnlaceIP ip_ = EnlaceIP::kSinProbar;
};

}  // namespace utr
