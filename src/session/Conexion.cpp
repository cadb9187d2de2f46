#include "session/Conexion.h"

#include <utility>

#include "driver/ErroresDeEnlace.h"
#include "services/RegistroErrores.h"
#include "session/AjustesEnlace.h"

namespace utr {
namespace {

// What was given up, or refused because another call runs, says nothing of the unit.
EnlaceIP TrasFallar(const Error& falla) {
  const bool nada = falla.Numero() == error_enlace::kOcupado || falla.Numero() == error_enlace::kCancelada;
  return nada ? EnlaceIP::kSinProbar : EnlaceIP::kPerdido;
}

}  // namespace

Conexion::Conexion(Comunicador& comunicador, const Propiedades& propiedades)
    : comunicador_(comunicador), propiedades_(propiedades) {}

void Conexion::Avisar() const {
  if (aviso_) aviso_();
}

void Conexion::TomarDeAjustes() {
  en_llamada_ = false;
  FijarPorIP(!HayPuertoSerie(propiedades_));
}

void Conexion::FijarPorIP(bool por_ip) {
  por_ip_ = por_ip;
  ip_ = EnlaceIP::kSinProbar;
  Avisar();
}

void Conexion::MarcarConectado(bool conectado) {
  conectado_ = conectado;
  Avisar();
}

void Conexion::MarcarRespuesta(std::optional<bool> contesta) {
  EnlaceIP ahora = EnlaceIP::kSinProbar;
  if (contesta) ahora = *contesta ? EnlaceIP::kContesta : EnlaceIP::kPerdido;
  if (por_ip_ && std::exchange(ip_, ahora) != ahora) Avisar();
}

void Conexion::OlvidarLlamada() {
  if (std::exchange(en_llamada_, false)) Avisar();
}

void Conexion::Conectar(std::string_view enlace, std::string_view puerto) {
  en_llamada_ = false;
  ip_ = EnlaceIP::kSinProbar;
  if (const auto falla = FallaDe([&] { comunicador_.Conectar(enlace, puerto); })) {
    ip_ = TrasFallar(*falla);
    MarcarConectado(false);
    throw Error(*falla);
  }
  puerto_abierto_ = puerto;
  MarcarConectado(true);
}

void Conexion::ConectarSegunAjustes() {
  const std::string velocidad = propiedades_.LeerTexto(clave::kVelocidad, std::to_string(kVelocidadDefecto));
  const std::int32_t puerto = propiedades_.LeerEntero(clave::kPuerto, kPuertoDefecto);
  por_ip_ = !HayPuertoSerie(propiedades_);
  Conectar(TextoEnlace(velocidad), std::to_string(puerto));
}

bool Conexion::Llamar(std::string_view numero, std::string_view comandos) {
  en_llamada_ = false;
  en_llamada_ = comunicador_.LlamarTelefono(numero, comandos);
  Avisar();
  return en_llamada_;
}

void Conexion::Desconectar() {
  en_llamada_ = false;
  ip_ = EnlaceIP::kSinProbar;
  AlFallar([&] { comunicador_.Desconectar(); }, [&] { MarcarConectado(false); });
  MarcarConectado(false);
}

}  // namespace utr
