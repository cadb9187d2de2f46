#pragma once

#include <functional>
#include <string>

#include "driver/ComunicadorReenviado.h"

namespace utr {

// Which ports and addresses are the simulated station's; all others lead over a wire.
struct Deslinde {
  std::function<bool(int puerto)> puerto_simulado;
  std::function<bool(std::string_view direccion)> direccion_simulada;
};

// The driver that the program talks with: the simulated station or the one over a wire, as the port or the address that
// is asked for wants it. The one that is left is closed. Both are told the identifier, the kind of the link, address
// and port over IP, and to cancel. What the one in use refuses because another call runs changes nothing.
class ComunicadorElegido final : public ComunicadorReenviado {
 public:
  // Both must outlive it. The simulated one is in use until something else is asked for.
  ComunicadorElegido(Comunicador& simulado, Comunicador& real, Deslinde deslinde);

  bool Simulado() const noexcept { return actual_ == &simulado_; }

  // Who is told whenever another unit may be at the other end: another driver is in use, or the same one was led
  // elsewhere or opened once more.
  void AlElegir(std::function<void()> aviso) { aviso_ = std::move(aviso); }

  void IdEquipo(std::int32_t identificador) override;
  void Conectar(std::string_view enlace, std::string_view puerto) override;
  void Desconectar() override;
  void PorIP(bool activo) override;
  void DireccionIP(std::string_view direccion) override;
  void PuertoIP(std::string_view puerto) override;
  void Cancelar(bool activo) override;

 private:
  // Where the calls lead.
  struct Rumbo {
    bool por_ip = false;
    std::string direccion;
    std::string puerto_ip;
    Comunicador* serie = nullptr;  // that has the serial port
  };

  Comunicador& De(const Rumbo& rumbo) const;
  bool Elegir(const Rumbo& rumbo);
  template <class Decir>
  void DecirALosDos(Decir decir);
  template <class Decir>
  void Cambiar(const Rumbo& rumbo, bool de_nuevo, Decir decir);
  void Avisar() const;

  Comunicador& simulado_;
  Comunicador& real_;
  Deslinde deslinde_;
  std::function<void()> aviso_;
  Comunicador* actual_;
  Rumbo rumbo_;
};

}  // namespace utr
