#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "schedule/FDLHorarios.h"
#include "services/Operador.h"

// What the schedule's editor does to a schedule, and what it asks of it before it lets it go.
namespace utr {

inline constexpr int kDuracionMenor = 5;  // minutes of a transmission window
inline constexpr int kDuracionMayor = 1440;
inline constexpr std::size_t kHorariosDeMas = 50;  // so many aren't written any more

// The window that a typed text gives, in minutes: a number from kDuracionMenor to kDuracionMayor, rounded. Nothing for
// any other text.
std::optional<std::int32_t> DuracionDe(std::string_view texto);

// Why a list of so many rows with that text as window isn't taken: words and icon of the message, without a title.
// Nothing where it is.
std::optional<Mensaje> ReparoDeAgenda(std::size_t filas, std::string_view duracion);

// A run of times: from `desde` to `hasta`, both included, minutes of a day, every `paso` minutes.
struct Periodo {
  std::int16_t desde = 0;
  std::int16_t hasta = 0;
  std::int16_t paso = 0;
  bool TWind = false;
  bool TCond = false;
  bool TOblig = false;
};
struct ResultadoPeriodo {
  int agregados = 0;
  std::vector<std::int16_t> cambiados{};  // times shown of the entries that were there and took the kinds
};

// Adds the entries of a run. One whose minute is there already stays in its place and takes the kinds. A step below 1
// raises kLlamada, with nothing added.
ResultadoPeriodo AgregarPeriodo(FDLHorarios& horarios, const Periodo& periodo);

// "Se agregaron 3 horarios. Ya estaban y tomaron estos tipos: 08:00, 09:00 a 21:00 cada 30 min". Four and more equally
// spaced times are told by their ends; what is too long for a line nevertheless is cut, and then says how many they
// are.
std::string TextoDePeriodo(const ResultadoPeriodo& resultado);

// "La agenda tiene 7 horarios".
std::string TextoDeCantidad(std::int32_t horarios);

}  // namespace utr
