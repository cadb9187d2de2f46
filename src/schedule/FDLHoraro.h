#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace utr {

inline constexpr int kMinutosDia = 1440;

// The minute of the day that any minute stands for: 1455 is 15, -15 is 1425.
constexpr int MinutoDelDia(int minuto) {
  return (minuto % kMinutosDia + kMinutosDia) % kMinutosDia;
}

// One entry of the schedule. The three kinds of transmission are independent; any combination is legal, none included.
struct FDLHoraro {
  std::int16_t Horario = 0;  // minute of the day; shown modulo a day
  bool TWind = false;        // by window
  bool TCond = false;        // conditional
  bool TOblig = false;       // obligatory
  std::string Key{};         // the minute given at creation and "C"; an edited entry keeps it

  bool operator==(const FDLHoraro&) const = default;
};
using FDLHoraroPtr = std::shared_ptr<FDLHoraro>;

// "HH:mm" of any minute, modulo a day.
std::string TextoHorario(int minuto);

}  // namespace utr
