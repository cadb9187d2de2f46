#pragma once

#include <cstdint>
#include <optional>

#include "driver/simulated/station/Cable.h"
#include "driver/simulated/station/Despachador.h"

namespace utr::simulada {

enum class ClaseDeLinea : std::uint8_t { kSerie, kLlamada, kTcp };

// The station's end of one line: bytes in, bytes out, when they are due, with the faults of the scenario in between. It
// knows no device; moments are milliseconds of the clock.
class Extremo {
 public:
  Extremo(ClaseDeLinea clase, EstacionViva& viva, Despachador& unidad);

  // The bits per second at which the other end speaks. On a serial line the unit hears its own speed alone; 0: nobody
  // knows, and any is its own.
  void Velocidad(int bits_por_segundo) { velocidad_ = bits_por_segundo; }

  // The device itself takes the time that bytes take: nothing is held back here.
  void SinRitmo() { con_ritmo_ = false; }

  void Recibir(protocolo::VistaBytes bytes, std::int64_t ahora);

  // What is due for the other end by now.
  protocolo::Bytes Entregar(std::int64_t ahora);

  // When Entregar should be called next, though nothing came in; nothing when that brings nothing.
  std::optional<std::int64_t> Proximo() const;

  // The line must be hung up: it brought what no client sends, or the scenario wants it.
  bool Colgado() const { return colgado_; }

  // A new call or connection on the same line.
  void Reabrir();

 private:
  void Atender(std::int64_t ahora);
  void AtenderTrama(const protocolo::Trama& trama, std::int64_t ahora);
  protocolo::Bytes Enmarcar(const protocolo::Trama& trama, protocolo::VistaBytes pdu) const;
  std::optional<protocolo::Trama> Estropeada(const protocolo::Trama& trama);
  bool Oye() const;
  double Ritmo() const;
  std::int64_t MayorHueco() const;
  bool EnSerie() const { return clase_ != ClaseDeLinea::kTcp; }

  ClaseDeLinea clase_;
  EstacionViva& viva_;
  Despachador& unidad_;
  std::uint64_t linea_;
  Azar azar_;
  protocolo::ReceptorRtu rtu_{protocolo::Sentido::kPedido};
  protocolo::ReceptorTcp tcp_;
  Salida salida_;
  int velocidad_ = 0;
  bool con_ritmo_ = true;
  std::int64_t recibido_ = 0;  // when the last bytes came in
  std::int64_t entrada_ = 0;   // until when what came in was on the line
  int tramas_ = 0;             // since the line was opened
  bool colgado_ = false;
};

}  // namespace utr::simulada
