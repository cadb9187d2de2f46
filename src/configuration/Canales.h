#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Fechas.h"

// The vocabulary of channels: numbers, short codes, classes of input and kinds of sensor. Pure look-ups.
namespace utr {

inline constexpr std::int16_t kPrimerCanal = 1;
inline constexpr std::int16_t kUltimoCanal = 26;  // 24 to 26 are the digital outputs

// The short code of a channel number, "EA01" to "EA14", "PLV", "ED1"...; "N/D" for any other number.
std::string NombreCanal(std::int16_t canal);

// "Entrada Analógica", "Pluviométrico" or "Entrada Digital"; "N/D" for outputs and any other number.
std::string TipoEntrada(std::int16_t canal);

// The channel number of a name that can be named back: analogue ones (every "EA" is removed; 15 and 16 are channels 22
// and 23) and "PLV" in any case. 0 for any other.
std::int16_t NumeroCanal(std::string_view nombre);

// NumeroCanal, and where it gives 0 the number whose short code is exactly `nombre`; 0 for an unknown name.
std::int16_t NumeroDeNombre(std::string_view nombre);

// The word of a kind of sensor as lists show it. `tipo` is read by its leading number; empty for an unknown kind.
std::string DescripcionTipo(std::string_view tipo, std::int16_t canal);

// The option bits held by the text of a column `Flags`; 0 for a text without a number.
std::uint8_t LeerFlags(std::string_view flags);

bool CanalHabilitado(std::uint8_t flags);
bool AlarmaHabilitada(std::uint8_t flags);

// True when the text of the number 0.5 holds a ".".
bool SeparadorEsPunto();

// "dd/mm/yyyy HH:mm:ss": every element but the year has two digits at least.
std::string FechaHoraTexto(const FechaHora& fecha);

}  // namespace utr
