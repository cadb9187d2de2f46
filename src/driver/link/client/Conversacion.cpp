#include "driver/link/client/Conversacion.h"

#include <algorithm>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/link/protocol/Pdu.h"
#include "driver/link/transport/Modem.h"

namespace utr::enlace {

namespace {

constexpr std::int64_t kBitsPorByte = 10;
constexpr std::int64_t kVecesSilencio = 5;   // after which a line that never falls silent is spoken on all the same
constexpr std::int64_t kHuecosPorTrama = 4;  // that a frame may have
constexpr std::size_t kEnvolturaRtu = 3;     // bytes around a PDU
constexpr std::size_t kMayorCrudo = 4096;
constexpr std::size_t kMayorRuido = 256 * 1024;  // bytes ahead of a request; who sends more doesn't wait to be asked
constexpr std::size_t kLargoDelAviso = 10;       // "NO CARRIER"

bool EsExcepcion(const Bytes& pdu) {
  return (pdu.front() & protocolo::kBitDeExcepcion) != 0;
}

// It comes from the way to the unit: the unit itself has said nothing.
bool EsDelCamino(const Bytes& pdu) {
  return EsExcepcion(pdu) && pdu.size() == 2 &&
         (pdu[1] == static_cast<std::uint8_t>(protocolo::Excepcion::kSinCamino) ||
          pdu[1] == static_cast<std::uint8_t>(protocolo::Excepcion::kUnidadMuda));
}

}  // namespace

Conversacion::Conversacion(std::unique_ptr<Linea> linea, Medio medio, std::int32_t velocidad, Espera& espera,
                           const Plazos& plazos, Trafico& trafico)
    : linea_(std::move(linea)),
      medio_(medio),
      velocidad_(velocidad),
      espera_(espera),
      plazos_(plazos),
      trafico_(trafico) {}

std::int64_t Conversacion::TiempoDe(std::size_t bytes) const {
  if (medio_ == Medio::kTcp) return 0;
  const std::int32_t velocidad = medio_ == Medio::kLlamada ? std::min(velocidad_, plazos_.peor_velocidad) : velocidad_;
  return static_cast<std::int64_t>(bytes + kEnvolturaRtu) * kBitsPorByte * 1000 / velocidad;
}

std::int64_t Conversacion::Hueco() const {
  return medio_ == Medio::kLlamada ? plazos_.hueco_en_llamada : plazos_.hueco;
}

// Until the first byte of the answer may come. Of a call the modems' speed isn't known: they take the request at once
// and may be long in sending it.
std::int64_t Conversacion::Plazo(const Pedido& pedido) const {
  if (pedido.plazo != 0) return pedido.plazo;
  const std::int64_t minimo = pedido.escribe ? plazos_.escritura : 0;
  if (medio_ == Medio::kTcp) return std::max(plazos_.tcp, minimo);
  if (medio_ == Medio::kLlamada) return std::max(plazos_.llamada, minimo) + TiempoDe(pedido.pdu.size());
  return std::max(plazos_.serie, minimo) + TiempoDe(pedido.pdu.size()) + TiempoDe(pedido.respuesta);
}

// Nobody asked for it. It may be a modem that says that the call has ended while nobody spoke; on a connection it is
// part of some frame, without which nobody would know where the next one begins.
void Conversacion::Desechar(const Bytes& ruido) {
  Acumular(ruido);
  if (medio_ == Medio::kLlamada) BuscarFinDeLlamada({});
  if (medio_ != Medio::kTcp) return;
  tcp_.Recibir(ruido);
  while (tcp_.Proxima()) {
  }
  if (tcp_.Roto())
    throw Error(error_enlace::kLineaPerdida, "Comunicador", "Lo que llega por la conexión no se entiende");
}

void Conversacion::EsperarTurno() {
  const std::int64_t silencio = Silencio();
  const std::int64_t tope = espera_.Ahora() + kVecesSilencio * silencio;
  std::size_t desechados = 0;
  // What has arrived already. A peer that pours without end is spoken to all the same.
  const auto vaciar = [&] {
    for (Bytes ruido; desechados < kMayorRuido && linea_->Recibir(ruido, 0) > 0; ruido.clear()) {
      desechados += ruido.size();
      Desechar(ruido);
      espera_.Ceder();
    }
  };
  crudo_.clear();
  vaciar();
  while (espera_.Ahora() < std::min(callar_hasta_, tope)) {
    Bytes ruido;
    if (espera_.Recibir(*linea_, ruido, std::min(callar_hasta_, tope))) callar_hasta_ = espera_.Ahora() + silencio;
    desechados += ruido.size();
    Desechar(ruido);
  }
  vaciar();
  callar_hasta_ = 0;
}

void Conversacion::Enviar(const Pedido& pedido) {
  const bool por_tcp = medio_ == Medio::kTcp;
  const Bytes trama = por_tcp ? protocolo::TramaTcp(++transaccion_, pedido.direccion, pedido.pdu)
                              : protocolo::TramaRtu(pedido.direccion, pedido.pdu);
  rtu_.Vaciar();
  crudo_.clear();
  ++trafico_.pedidos;
  trafico_.enviados += trama.size();
  espera_.Enviar(*linea_, trama, espera_.Ahora() + Plazo(pedido), pedido.compromete);
}

std::int64_t Conversacion::Silencio() const {
  return medio_ == Medio::kLlamada ? plazos_.silencio_en_llamada : plazos_.silencio;
}

// From a missed answer on the line is left alone for as long as it may still bring it.
void Conversacion::Fallar() {
  callar_hasta_ = espera_.Ahora() + Silencio();
  gastada_ = medio_ == Medio::kTcp;
}

std::optional<Bytes> Conversacion::Intentar(const Pedido& pedido) {
  EsperarTurno();
  try {
    Enviar(pedido);
    auto respuesta = Escuchar(pedido);
    if (!respuesta) Fallar();
    if (respuesta && EsExcepcion(*respuesta)) return Sopesada(*std::move(respuesta));
    return respuesta;
  } catch (...) {
    Fallar();
    throw;
  }
}

// An exception. On a serial line it says nothing of what it answers, so that a second copy would refuse the next
// request; and behind that of a gateway the unit's own answer may still come.
std::optional<Bytes> Conversacion::Sopesada(Bytes excepcion) {
  const bool del_camino = EsDelCamino(excepcion);
  if (medio_ != Medio::kTcp) callar_hasta_ = espera_.Ahora() + (del_camino ? Silencio() : Hueco());
  if (del_camino) return std::nullopt;
  return excepcion;
}

// The next frame that answers the request, if it is there; frames that answer something else are dropped.
std::optional<Bytes> Conversacion::Hallar(const Pedido& pedido) {
  for (;;) {
    const bool por_tcp = medio_ == Medio::kTcp;
    auto trama = por_tcp ? tcp_.Proxima() : rtu_.Proxima();
    if (!trama) return std::nullopt;
    const bool propia = trama->direccion == pedido.direccion && (!por_tcp || trama->transaccion == transaccion_);
    if (propia && pedido.es_suya(trama->pdu)) return std::move(trama->pdu);
  }
}

void Conversacion::Acumular(VistaBytes bytes) {
  if (crudo_.size() < kMayorCrudo) crudo_.insert(crudo_.end(), bytes.begin(), bytes.end());
}

// A modem says that the call has ended in place of the answer, or in the middle of it. Bytes of a frame that is coming
// in may be the same words.
void Conversacion::BuscarFinDeLlamada(VistaBytes bytes) {
  Acumular(bytes);
  const std::string_view texto(reinterpret_cast<const char*>(crudo_.data()), crudo_.size());
  const std::string_view principio = texto.substr(std::min(texto.find_first_not_of("\r\n"), texto.size()));
  if (!DiceSinPortadora(bytes.empty() ? texto : principio.substr(0, kLargoDelAviso))) return;
  throw Error(error_enlace::kLineaPerdida, "Comunicador", "Se cortó la llamada");
}

// The bytes of a frame keep it alive, a gap between two of them breaks it: what looked like its beginning was noise,
// and the answer may stand behind it.
std::optional<Bytes> Conversacion::Escuchar(const Pedido& pedido) {
  std::int64_t hasta = espera_.Ahora() + Plazo(pedido);
  const std::int64_t tope = hasta + TiempoDe(pedido.respuesta) + kHuecosPorTrama * Hueco();
  Bytes bytes;
  for (;;) {
    const bool a_medias = medio_ != Medio::kTcp && !rtu_.Vacio();
    const std::int64_t limite = a_medias ? std::min(tope, espera_.Ahora() + Hueco()) : std::min(hasta, tope);
    bytes.clear();
    if (!espera_.Recibir(*linea_, bytes, limite)) {
      if (!a_medias) return std::nullopt;
      rtu_.Cortar();
    }
    trafico_.recibidos += bytes.size();
    if (medio_ == Medio::kTcp) {
      tcp_.Recibir(bytes);
    } else {
      rtu_.Recibir(bytes);
    }
    if (auto respuesta = Hallar(pedido)) return respuesta;
    if (medio_ == Medio::kTcp && tcp_.Roto()) return std::nullopt;
    if (medio_ == Medio::kLlamada) BuscarFinDeLlamada(bytes);
    if (espera_.Ahora() >= tope) return std::nullopt;
  }
}

}  // namespace utr::enlace
