#include "driver/ComunicadorElegido.h"

#include <utility>

#include "driver/Textos.h"

namespace utr {

ComunicadorElegido::ComunicadorElegido(Comunicador& simulado, Comunicador& real, Deslinde deslinde)
    : ComunicadorReenviado(simulado),
      simulado_(simulado),
      real_(real),
      deslinde_(std::move(deslinde)),
      actual_(&simulado),
      serie_(&simulado) {}

// A close has taken the kind of the link with it, so that the one which is taken into use is told it again. `de_nuevo`:
// it leads elsewhere now, though it be the same.
void ComunicadorElegido::Elegir(Comunicador& cual, bool de_nuevo) {
  const bool otro = actual_ != &cual;
  if (otro) {
    Destino().Desconectar();
    actual_ = &cual;
    Dirigir(cual);
    cual.PorIP(por_ip_);
  }
  if (aviso_ && (otro || de_nuevo)) aviso_();
}

void ComunicadorElegido::ElegirSegunEnlace(bool de_nuevo) {
  Elegir(por_ip_ ? DeDireccion() : *serie_, de_nuevo);
}

void ComunicadorElegido::IdEquipo(std::int32_t identificador) {
  simulado_.IdEquipo(identificador);
  real_.IdEquipo(identificador);
}

void ComunicadorElegido::Conectar(std::string_view enlace, std::string_view puerto) {
  if (const auto pedido = LeerEnlace(enlace)) {
    por_ip_ = pedido->por_ip;
    if (por_ip_) {
      direccion_ = pedido->direccion;
      puerto_ip_ = puerto;
      Elegir(DeDireccion(), true);
    } else {
      serie_ = deslinde_.puerto_simulado(NumeroDePuerto(puerto)) ? &simulado_ : &real_;
      Elegir(*serie_, true);
    }
  }
  Destino().Conectar(enlace, puerto);
}

void ComunicadorElegido::Desconectar() {
  por_ip_ = false;
  Destino().Desconectar();
}

void ComunicadorElegido::PorIP(bool activo) {
  const bool de_nuevo = std::exchange(por_ip_, activo) != activo;
  simulado_.PorIP(activo);
  real_.PorIP(activo);
  ElegirSegunEnlace(de_nuevo);
}

void ComunicadorElegido::DireccionIP(std::string_view direccion) {
  const bool de_nuevo = std::exchange(direccion_, direccion) != direccion;
  simulado_.DireccionIP(direccion);
  real_.DireccionIP(direccion);
  ElegirSegunEnlace(por_ip_ && de_nuevo);
}

void ComunicadorElegido::PuertoIP(std::string_view puerto) {
  const bool de_nuevo = std::exchange(puerto_ip_, puerto) != puerto;
  simulado_.PuertoIP(puerto);
  real_.PuertoIP(puerto);
  ElegirSegunEnlace(por_ip_ && de_nuevo);
}

void ComunicadorElegido::Cancelar(bool activo) {
  simulado_.Cancelar(activo);
  real_.Cancelar(activo);
}

}  // namespace utr
