#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/Reloj.h"
#include "driver/ComunicadorReenviado.h"

namespace utr {

// What is known of the unit's clock without asking for it.
class RelojUTR {
 public:
  struct Lectura {
    FechaHora equipo;       // the unit's
    FechaHora computadora;  // this computer's at that moment
  };

  // The last reading; nothing before one, and once the clock was written since.
  const std::optional<Lectura>& Leida() const noexcept { return leida_; }

  // When the unit last confirmed to have been given this computer's time; nothing once it was read since.
  const std::optional<FechaHora>& PuestaEl() const noexcept { return puesta_; }

  // What it shows when this computer's clock shows `ahora`, as far as the two are known to differ; nothing where that
  // isn't known.
  std::optional<FechaHora> EnLaUnidad(const FechaHora& ahora) const;

  void Leer(const Lectura& lectura);
  // The clock was written; `confirmado`: the unit said so.
  void Escribir(const FechaHora& ahora, bool confirmado);
  // Another unit may answer from now on.
  void Olvidar() noexcept;

 private:
  std::optional<Lectura> leida_;
  std::optional<FechaHora> puesta_;
};

// Seconds by which the unit was ahead of the computer, below zero behind it.
std::int64_t Adelanto(const RelojUTR::Lectura& lectura);

// No more apart than what asking for the time takes.
bool EnHora(std::int64_t adelanto);

// "en hora", "2 min 8 s adelantado", "3 d 4 h atrasado": the two largest units that say something.
std::string TextoAdelanto(std::int64_t segundos);

// Learns from every call that passes what it tells of the unit's clock, and makes none itself. What was known is
// forgotten as soon as another identifier, address, port or telephone number leads to another unit.
class ComunicadorConReloj final : public ComunicadorReenviado {
 public:
  // All three must outlive it.
  ComunicadorConReloj(Comunicador& destino, const Reloj& reloj, RelojUTR& reloj_utr)
      : ComunicadorReenviado(destino), reloj_(reloj), reloj_utr_(reloj_utr) {}

  std::string LeerFechaHora() override;
  bool GrabarFechaHora() override;
  void IdEquipo(std::int32_t identificador) override;
  void Conectar(std::string_view enlace, std::string_view puerto) override;
  void DireccionIP(std::string_view direccion) override;
  void PuertoIP(std::string_view puerto) override;
  void PorIP(bool activo) override;
  bool LlamarTelefono(std::string_view numero, std::string_view comandos) override;

 private:
  enum Parte : std::uint8_t { kIdentificador, kDireccion, kPuertoIP, kPorIP, kPartes };
  void IrA(Parte parte, std::string valor, const std::function<void()>& ir);

  const Reloj& reloj_;
  RelojUTR& reloj_utr_;
  std::array<std::string, kPartes> camino_;  // to the unit, as told last
};

}  // namespace utr
