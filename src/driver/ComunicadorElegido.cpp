#include "driver/ComunicadorElegido.h"

#include <utility>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "driver/Textos.h"

namespace utr {

ComunicadorElegido::ComunicadorElegido(Comunicador& simulado, Comunicador& real, Deslinde deslinde)
    : ComunicadorReenviado(simulado),
      simulado_(simulado),
      real_(real),
      deslinde_(std::move(deslinde)),
      actual_(&simulado) {
  rumbo_.serie = &simulado;
}

Comunicador& ComunicadorElegido::De(const Rumbo& rumbo) const {
  if (!rumbo.por_ip) return *rumbo.serie;
  return deslinde_.direccion_simulada(rumbo.direccion) ? simulado_ : real_;
}

// A close has taken the kind of the link with it, so that the one which is taken into use is told it again. True: it is
// another one than before.
bool ComunicadorElegido::Elegir(const Rumbo& rumbo) {
  Comunicador& cual = De(rumbo);
  if (actual_ == &cual) return false;
  Destino().Desconectar();
  actual_ = &cual;
  Dirigir(cual);
  cual.PorIP(rumbo.por_ip);
  return true;
}

void ComunicadorElegido::Avisar() const {
  if (aviso_) aviso_();
}

// Only the one in use can be at something and refuse, so that it is told first: none has heard it then.
template <class Decir>
void ComunicadorElegido::DecirALosDos(Decir decir) {
  Comunicador& otro = Simulado() ? real_ : simulado_;
  decir(Destino());
  decir(otro);
}

template <class Decir>
void ComunicadorElegido::Cambiar(const Rumbo& rumbo, bool de_nuevo, Decir decir) {
  DecirALosDos(decir);
  rumbo_ = rumbo;
  if (Elegir(rumbo) || de_nuevo) Avisar();
}

void ComunicadorElegido::IdEquipo(std::int32_t identificador) {
  DecirALosDos([&](Comunicador& cual) { cual.IdEquipo(identificador); });
}

// A call that is refused because another one runs leaves all as it was. Any other failure doesn't: a port that isn't
// opened is never another one.
void ComunicadorElegido::Conectar(std::string_view enlace, std::string_view puerto) {
  const auto pedido = LeerEnlace(enlace);
  if (!pedido) return Destino().Conectar(enlace, puerto);
  Rumbo rumbo = rumbo_;
  rumbo.por_ip = pedido->por_ip;
  if (pedido->por_ip) {
    rumbo.direccion = pedido->direccion;
    rumbo.puerto_ip = puerto;
  } else {
    rumbo.serie = deslinde_.puerto_simulado(NumeroDePuerto(puerto)) ? &simulado_ : &real_;
  }
  Elegir(rumbo);
  try {
    Destino().Conectar(enlace, puerto);
  } catch (const Error& falla) {
    if (falla.Numero() == error_enlace::kOcupado) throw;
    rumbo_ = rumbo;
    Avisar();
    throw;
  }
  rumbo_ = rumbo;
  Avisar();
}

void ComunicadorElegido::Desconectar() {
  Destino().Desconectar();
  rumbo_.por_ip = false;
}

void ComunicadorElegido::PorIP(bool activo) {
  Rumbo rumbo = rumbo_;
  const bool de_nuevo = std::exchange(rumbo.por_ip, activo) != activo;
  Cambiar(rumbo, de_nuevo, [&](Comunicador& cual) { cual.PorIP(activo); });
}

void ComunicadorElegido::DireccionIP(std::string_view direccion) {
  Rumbo rumbo = rumbo_;
  const bool de_nuevo = std::exchange(rumbo.direccion, direccion) != direccion;
  Cambiar(rumbo, rumbo.por_ip && de_nuevo, [&](Comunicador& cual) { cual.DireccionIP(direccion); });
}

void ComunicadorElegido::PuertoIP(std::string_view puerto) {
  Rumbo rumbo = rumbo_;
  const bool de_nuevo = std::exchange(rumbo.puerto_ip, puerto) != puerto;
  Cambiar(rumbo, rumbo.por_ip && de_nuevo, [&](Comunicador& cual) { cual.PuertoIP(puerto); });
}

void ComunicadorElegido::Cancelar(bool activo) {
  simulado_.Cancelar(activo);
  real_.Cancelar(activo);
}

}  // namespace utr
