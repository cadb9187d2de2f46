#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/ErroresDeEnlace.h"
#include "driver/simulated/scenario/Escenario.h"

namespace utr::simulada {

// The computer's side of the link: port, modem and socket, and whether the unit hears through them.
class EnlaceSimulado {
 public:
  // Opens a serial port or, for a link settings text over IP, a socket; what was open is closed first. Raises
  // kPuertoEnUso for a port that is taken, the numbers above for one that doesn't exist and for an address where nobody
  // answers, kLlamada for a text that says neither.
  void Conectar(std::string_view enlace, std::string_view puerto, const Lineas& lineas);
  void Desconectar();

  // What is sent reaches a unit that listens. Whether it is away restarting the caller knows.
  bool Llega(const Lineas& lineas, const Estacion& estacion) const;

  // Bits per second at which the unit is heard: over a modem the slower end rules, and a socket ends in front of the
  // unit's own port.
  int VelocidadDeLinea(const Estacion& estacion) const;

  // The link is up (`ahora` in milliseconds of the clock), which is another thing than the open port: a restart of the
  // unit or a silent call takes it down, an answer or another Conectar brings it back. Over IP, where no Conectar need
  // follow, it is up whenever somebody answers at the address and the unit isn't away.
  bool Arriba(const Lineas& lineas, std::int64_t ahora) const;

  // What a call over the modem needs: the open port has one.
  bool TieneModem(const Lineas& lineas) const;

  std::int32_t id_equipo = 0;
  bool abierto = false;  // the serial port
  int puerto = 0;
  int velocidad = 0;
  bool rts = false;
  std::string ajustes;  // link settings text in force; the last one after a close
  bool por_ip = false;
  std::string direccion;
  int puerto_ip = 0;
  bool llamada = false;  // a telephone call stands
  bool llamar = true;    // no call has been abandoned
  bool caido = false;
  std::int64_t ausente_hasta = 0;  // milliseconds of the clock; 0: the unit is there
};

}  // namespace utr::simulada
