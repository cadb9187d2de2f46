#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "session/AjustesEnlace.h"
#include "session/ModRTU.h"

// What the windows of the connection do with the driver.
namespace utr {

// A search for the speed of a unit. `probando` is told of each speed ahead of its try; `cancelada` is asked behind it.
struct BusquedaVelocidad {
  std::int32_t puerto = kPuertoDefecto;
  std::span<const std::int32_t> velocidades;
  std::function<void(std::int32_t)> probando{};
  std::function<bool()> cancelada{};
};

// Tries the speeds on a serial port, all but the first one, and gives the first at which the unit answers. A speed
// whose port doesn't open didn't answer. Each speed tried is left in the store, so that the last one stays there when
// none does; a search that was cancelled gives none and leaves the store, in memory and on disk, as it was before it.
std::optional<std::int32_t> BuscarVelocidad(ModRTU& mod, const BusquedaVelocidad& busqueda);

// Calls the unit through the modem and gives whether the call stands. Messages are titled `titulo`.
//
// `cancelada` is asked once the port is open and again ahead of dialling: a call that was abandoned by then isn't made,
// and nothing is said.
bool LlamarPorTelefono(ModRTU& mod, const EntradaEnlace& entrada, std::string_view titulo,
                       const std::function<bool()>& cancelada = {});

// Opens a port that was chosen by hand and sets RTS. Gives the sentence of the failure, empty without one; over IP a
// failure is dropped.
std::string AbrirPuerto(ModRTU& mod, std::string_view enlace, std::string_view puerto);

// The message for a failure of the toolbar's connection button, titled `titulo`.
Mensaje MensajeDePuerto(const Error& falla, std::string_view titulo);

// How what is told of unit and link stands.
enum class Tono : std::uint8_t { kNeutro, kBien, kMal, kAviso };

// The two panels of the status bar that tell the link. Over IP both are enabled whatever is known of it.
struct TextosPanel {
  std::string puerto;
  std::string velocidad;
  bool habilitados = true;
  Tono tono = Tono::kBien;
};
TextosPanel InfoPanel(ModRTU& mod);

// Whole elapsed minutes between the unit's clock and the computer's, either way round. A clock of an earlier year
// counts as one day off. Raises 6 beyond 16 bits.
std::int16_t MinutosDeDiferencia(FechaHora equipo, const FechaHora& ahora);

// Compares the clocks and, from 30 minutes on, offers to set the unit's. Raises 13 when the unit gives no date.
void CompararHoras(ModRTU& mod);

}  // namespace utr
