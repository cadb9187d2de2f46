#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "driver/Comunicador.h"

// The three digital outputs of the unit: their states among the present values, what a state is called, and the
// switching of two of them.
namespace utr {

// States in the order SD1, SD2, SD3, as the unit gives them: true for any value but 0.
using EstadoSalidas = std::array<bool, 3>;

inline constexpr std::string_view kEncendido = "ENCENDIDO";
inline constexpr std::string_view kApagado = "APAGADO";
inline constexpr std::string_view kSinRespuesta = "Sin Respuesta";

// Reads the states. Raises what the driver raises; kSinRespuesta where it gives no table; 9 and 13 for values that
// don't reach as far as the outputs or are no numbers.
EstadoSalidas ObtenerEstadoSalidasDig(Comunicador& comunicador);

// What the state of an output (0 is SD1) is called. SD1 reads inverted.
std::string_view TextoDeSalida(std::size_t salida, bool estado);

// Switches SD2 or SD3 (1 or 2, as the driver numbers them too) and gives what to show: the state asked for, or
// kSinRespuesta where the unit refused or the driver failed. Never raises.
std::string_view ConmutarSalida(Comunicador& comunicador, std::size_t salida, bool encender) noexcept;

}  // namespace utr
