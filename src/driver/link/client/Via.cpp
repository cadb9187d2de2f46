#include "driver/link/client/Via.h"

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/Textos.h"
#include "driver/link/transport/Modem.h"

namespace utr::enlace {

namespace {

constexpr const char* kOrigen = "Comunicador";

}  // namespace

Via::Via(Tendido& tendido, DispositivoDe dispositivos, Espera& espera, const Plazos& plazos)
    : tendido_(tendido), dispositivos_(std::move(dispositivos)), espera_(espera), plazos_(plazos) {}

void Via::Conectar(std::string_view enlace, std::string_view puerto) {
  const auto pedido = LeerEnlace(enlace);
  const int numero = NumeroDePuerto(puerto);
  if (!pedido || numero == 0) Lanzar(error::kLlamada, kOrigen);
  Desconectar();
  espera_.ExigirQueSiga();
  if (pedido->por_ip) {
    direccion_ = pedido->direccion;
    puerto_ip_ = numero;
    por_ip_ = true;  // also where nobody answers yet: the next operation tries again
    if (!AbrirIpConIntentos()) {
      throw Error(error_enlace::kDireccionMuda, kOrigen,
                  "La dirección " + direccion_ + ", puerto " + std::to_string(numero) + ", no responde");
    }
    ajustes_ = direccion_ + ",n,8,1";
  } else {
    puerto_serie_ = numero;
    velocidad_ = pedido->velocidad;
    AbrirSerie();
    averiguar_ = dispositivo_ == modem_;
    ajustes_ = std::to_string(velocidad_) + ",n,8,1";
  }
  caida_ = false;
}

// What the number leads to is asked each time: a name may have become somebody else's since it was opened.
void Via::AbrirSerie() {
  const auto dispositivo = dispositivos_(puerto_serie_);
  if (!dispositivo) {
    const std::string numero = std::to_string(puerto_serie_);
    throw Error(error_enlace::kPuertoInexistente, kOrigen, "El puerto COM " + numero + " no existe");
  }
  serie_ = std::make_unique<Conversacion>(tendido_.AbrirSerie(*dispositivo, velocidad_), Medio::kSerie, velocidad_,
                                          espera_, plazos_, trafico_);
  if (*dispositivo == dispositivo_) serie_->CallarHasta(callar_hasta_);
  dispositivo_ = *dispositivo;
  perdida_ = false;
}

// What it still may bring is remembered, for whoever opens the same device again.
void Via::CerrarSerie() {
  if (serie_) callar_hasta_ = serie_->CallarHasta();
  serie_.reset();
}

bool Via::HayDireccion() const {
  return puerto_ip_ != 0 && EsDireccionIP(direccion_);
}

bool Via::AbrirIpConIntentos() {
  for (int intento = 0; intento < plazos_.intentos; ++intento) {
    if (AbrirIp()) return true;
  }
  return false;
}

bool Via::AbrirIp() {
  ip_.reset();
  try {
    auto linea = tendido_.AbrirTcp(direccion_, puerto_ip_);
    if (!espera_.Establecer(*linea, espera_.Ahora() + plazos_.tcp)) return false;
    ip_ = std::make_unique<Conversacion>(std::move(linea), Medio::kTcp, 0, espera_, plazos_, trafico_);
    return true;
  } catch (const Error& falla) {
    if (falla.Numero() != error_enlace::kDireccionMuda) throw;
    return false;
  }
}

// A modem that doesn't answer any more can't be hung up; the port is closed all the same, and DTR falls with it. False:
// the operator didn't want to wait, and only the closing of the port ends the call.
bool Via::Colgar() {
  if (!serie_ || serie_->DeMedio() != Medio::kLlamada) return true;
  serie_->PonerMedio(Medio::kSerie);
  try {
    Modem(serie_->Canal(), espera_).Colgar();
    return true;
  } catch (const Error& falla) {
    return falla.Numero() != error_enlace::kCancelada;
  }
}

void Via::Desconectar() {
  Colgar();
  CerrarSerie();
  ip_.reset();
  por_ip_ = false;
  perdida_ = sin_llamada_ = averiguar_ = false;
}

bool Via::Llamar(std::string_view numero, std::string_view comandos) {
  if (!serie_ && perdida_) AbrirSerie();
  if (!serie_ || numero.empty()) return false;
  const bool colgada = Colgar();
  sin_llamada_ = true;
  averiguar_ = false;
  modem_ = dispositivo_;
  if (!colgada) {
    CerrarSerie();
    perdida_ = true;
    return false;
  }
  try {
    if (!Modem(serie_->Canal(), espera_).Llamar(numero, comandos)) return false;
  } catch (const Error& falla) {
    if (falla.Numero() == error_enlace::kCancelada) return false;
    Perder(falla);
    throw;
  }
  serie_->PonerMedio(Medio::kLlamada);
  caida_ = sin_llamada_ = false;
  return true;
}

bool Via::Rts(bool activo) {
  return serie_ && serie_->Canal().Rts(activo);
}

bool Via::PorIP(bool activo) {
  const bool otra = activo != por_ip_;
  por_ip_ = activo;
  if (otra) caida_ = false;
  return otra;
}

bool Via::DireccionIP(std::string_view direccion) {
  if (direccion == direccion_) return false;
  direccion_ = direccion;
  ip_.reset();
  return true;
}

bool Via::PuertoIP(std::string_view puerto) {
  const int numero = NumeroDePuerto(puerto);
  if (numero == puerto_ip_) return false;
  puerto_ip_ = numero;
  ip_.reset();
  return true;
}

Conversacion* Via::Abierta() {
  if (por_ip_) {
    const bool sirve = ip_ && !ip_->Gastada();
    return sirve || (HayDireccion() && AbrirIp()) ? ip_.get() : nullptr;
  }
  if (!serie_ && perdida_) AbrirSerie();
  if (serie_ && averiguar_) {
    sin_llamada_ = HayModem();
    averiguar_ = false;
  }
  return sin_llamada_ ? nullptr : serie_.get();
}

// A cable may have taken the place of the modem that a number was dialled on.
bool Via::HayModem() {
  const bool contesta = Modem(serie_->Canal(), espera_).Contesta();
  if (!contesta) modem_.clear();
  return contesta;
}

bool Via::Perder(const Error& falla) {
  if (falla.Numero() != error_enlace::kLineaPerdida) return false;
  caida_ = true;
  if (por_ip_) {
    ip_.reset();
    return true;
  }
  // Of a call that the modem says has ended the port is still there.
  const bool la_llamada_sola = EnLlamada() && falla.ErrorDelSistema() == 0;
  sin_llamada_ = sin_llamada_ || EnLlamada();
  if (la_llamada_sola) {
    serie_->PonerMedio(Medio::kSerie);
  } else {
    CerrarSerie();
    perdida_ = true;
  }
  return false;
}

}  // namespace utr::enlace
