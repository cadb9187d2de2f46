#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "driver/link/client/Plazos.h"
#include "driver/link/protocol/Tramas.h"
#include "driver/link/transport/Espera.h"
#include "driver/link/transport/Linea.h"

namespace utr::enlace {

using protocolo::Bytes;
using protocolo::VistaBytes;

enum class Medio : std::uint8_t { kSerie, kLlamada, kTcp };

// What went over the line since the beginning of the run.
struct Trafico {
  std::uint64_t enviados = 0;   // bytes
  std::uint64_t recibidos = 0;  // bytes
  std::uint64_t pedidos = 0;
  std::uint64_t reintentos = 0;  // requests that were sent again
  std::uint64_t paginas = 0;     // of a memory, that came whole or not
};

// A request, and what tells its answer from others.
struct Pedido {
  std::uint8_t direccion = 0;
  Bytes pdu;
  std::size_t respuesta = 0;  // length of the PDU that is expected at the most
  bool escribe = false;
  bool compromete = false;  // an order: from its first byte on nothing ends the wait for its result
  std::int64_t plazo = 0;   // milliseconds for its answer, in place of what the line has for all; 0: those
  std::function<bool(VistaBytes)> es_suya;  // whether a PDU answers it, exceptions included
};

// One exchange at a time over one line, in the frames of its kind. It knows when the line may be spoken on: after an
// answer was missed, what comes late must not be taken for the next one.
class Conversacion {
 public:
  Conversacion(std::unique_ptr<Linea> linea, Medio medio, std::int32_t velocidad, Espera& espera, const Plazos& plazos,
               Trafico& trafico);

  // Sends the request once and gives the PDU of its answer; nothing when none came in time, or when a gateway says that
  // the unit behind it gave it none. Raises what the line and the wait raise, and kLineaPerdida when a modem says that
  // the call has ended.
  std::optional<Bytes> Intentar(const Pedido& pedido);

  // Waits until the line may be spoken on, or for so long that it never will be any better. Raises as Intentar does.
  void EsperarTurno();

  // A connection that can't be used any more, for an answer may still come on it or what came made no sense.
  bool Gastada() const { return gastada_; }

  // Until when an answer that was missed may still come in, by the clock; 0: there is none. Whoever opens the same line
  // again hands it on.
  std::int64_t CallarHasta() const { return callar_hasta_; }
  void CallarHasta(std::int64_t momento) { callar_hasta_ = momento; }

  Linea& Canal() { return *linea_; }
  void PonerMedio(Medio medio) { medio_ = medio; }
  Medio DeMedio() const { return medio_; }

 private:
  std::int64_t Plazo(const Pedido& pedido) const;
  std::int64_t Hueco() const;
  std::int64_t TiempoDe(std::size_t bytes) const;
  void Enviar(const Pedido& pedido);
  std::optional<Bytes> Escuchar(const Pedido& pedido);
  std::optional<Bytes> Hallar(const Pedido& pedido);
  std::int64_t Silencio() const;
  void Fallar();
  std::optional<Bytes> Sopesada(Bytes excepcion);
  void Desechar(const Bytes& ruido);
  void Acumular(VistaBytes bytes);
  void BuscarFinDeLlamada(VistaBytes bytes);

  std::unique_ptr<Linea> linea_;
  Medio medio_;
  std::int32_t velocidad_;
  Espera& espera_;
  const Plazos& plazos_;
  Trafico& trafico_;
  protocolo::ReceptorRtu rtu_{protocolo::Sentido::kRespuesta};
  protocolo::ReceptorTcp tcp_;
  Bytes crudo_;  // what came since the request, or ahead of it, for the words of a modem
  std::uint16_t transaccion_ = 0;
  std::int64_t callar_hasta_ = 0;
  bool gastada_ = false;
};

}  // namespace utr::enlace
