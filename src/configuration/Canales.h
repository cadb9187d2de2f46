#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Fechas.h"
#include "driver/CanalesUTR.h"

// The words for what CanalesUTR.h knows of channels: classes of input and kinds of sensor. Pure look-ups.
namespace utr {

// "Entrada Analógica", "Pluviométrico" or "Entrada Digital"; "N/D" for outputs and any other number.
std::string TipoEntrada(std::int16_t canal);

// The word of a kind of sensor as lists show it. `tipo` is read by its leading number; empty for an unknown kind.
std::string DescripcionTipo(std::string_view tipo, std::int16_t canal);

// The option bits held by the text of a column `Flags`; 0 for a text without a number or with one beyond
// 32 bits.
std::uint8_t LeerFlags(std::string_view flags);

bool CanalHabilitado(std::uint8_t flags);
bool AlarmaHabilitada(std::uint8_t flags);

// True when the text of the number 0.5 holds a ".".
bool SeparadorEsPunto();

// "dd/mm/yyyy HH:mm:ss": every element but the year has two digits at least.
std::string FechaHoraTexto(const FechaHora& fecha);

}  // namespace utr
