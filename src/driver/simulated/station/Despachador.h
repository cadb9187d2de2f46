#pragma once

#include <cstdint>
#include <optional>
#include <variant>

#include "driver/link/protocol/Mapa.h"
#include "driver/link/protocol/Ordenes.h"
#include "driver/simulated/scenario/EstacionViva.h"
#include "driver/simulated/station/Borrador.h"
#include "driver/simulated/station/LibroDeOrdenes.h"

namespace utr::simulada {

// The unit behind the protocol: a request in, an answer out, whatever line they travel on. What it does is told by
// docs/protocol.md. It knows no time but that of the station's clock.
class Despachador {
 public:
  // `viva` must outlive it. An order that a former run had begun and didn't end is refused from now on.
  explicit Despachador(EstacionViva& viva);

  // The answer to the request of a frame; nothing is silence: somebody else is meant, it is a broadcast, or the unit
  // is away. Over IP the addresses are those of TCP.
  std::optional<protocolo::Bytes> Responder(std::uint8_t direccion, protocolo::VistaBytes pdu, bool por_ip);

  // What time alone brings: ends of long orders, restarts that take force. Responder does it too.
  void Pasar();

  // Bits per second of the unit's port, as in force.
  int Velocidad() const;

  // A number for a line that is laid to it, another one each time.
  std::uint64_t NumeroDeLinea() { return lineas_++; }

  // The unit can be heard: it is neither away nor mute.
  bool Presente() const;

 private:
  using Respuesta = std::variant<protocolo::Bytes, protocolo::Excepcion>;

  Respuesta Atender(protocolo::VistaBytes pdu);
  Respuesta LeerBits(protocolo::VistaBytes pdu) const;
  Respuesta LeerRegistros(protocolo::VistaBytes pdu);
  Respuesta Conmutar(protocolo::VistaBytes pdu);
  Respuesta Ordenar(protocolo::VistaBytes pdu);
  Respuesta LeerArchivos(protocolo::VistaBytes pdu);
  Respuesta EscribirArchivos(protocolo::VistaBytes pdu);

  void Llevar(const protocolo::Orden& orden);
  void Empezar(const protocolo::Orden& orden);
  void TomarFuerza();

  std::optional<std::vector<std::uint16_t>> Registros(protocolo::Tramo tramo);
  std::optional<std::vector<std::uint16_t>> BloqueEn(std::uint16_t desde);
  std::optional<protocolo::Bytes> ParteDeArchivo(const protocolo::PedidoDeArchivo& parte);
  protocolo::Cabezales CabezalesDe(const Memoria& memoria, bool sabe_pendientes) const;
  int Identificador() const;
  std::int64_t Milisegundos() const { return viva_.reloj.Milisegundos(); }

  // A restart that was carried out and hasn't taken force: the line still is as it was.
  struct Reinicio {
    std::int64_t hasta = 0;
    int velocidad = 0;
    int identificador = 0;
    bool de_puesta = false;
  };
  struct EnCurso {
    protocolo::Orden orden;
    std::int64_t hasta = 0;
  };

  EstacionViva& viva_;
  LibroDeOrdenes libro_;
  Borrador borrador_;
  std::optional<Reinicio> reinicio_;
  std::optional<EnCurso> en_curso_;
  std::int64_t ausente_hasta_ = 0;
  std::uint64_t lineas_ = 0;
};

}  // namespace utr::simulada
