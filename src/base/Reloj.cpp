#include "base/Reloj.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace utr {

// Thousands of calls fall into one second, and the local date of a second costs more than many of them do.
FechaHora RelojSistema::Ahora() const {
  static thread_local std::time_t segundo = -1;
  static thread_local FechaHora fecha;
  const std::time_t ahora = std::time(nullptr);
  if (ahora == segundo) return fecha;
  std::tm local{};
  localtime_r(&ahora, &local);
  // A leap second is the last second of its minute.
  fecha = {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
           local.tm_hour,        local.tm_min,     local.tm_sec > 59 ? 59 : local.tm_sec};
  segundo = ahora;
  return fecha;
}

std::int64_t RelojSistema::Milisegundos() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

void RelojSistema::Esperar(double segundos, const Atender& atender) {
  const auto fin = std::chrono::steady_clock::now() + std::chrono::duration<double>(segundos);
  do {
    if (atender) atender();
    const auto resto = fin - std::chrono::steady_clock::now();
    if (resto <= decltype(resto)::zero()) return;
    std::this_thread::sleep_for(std::min<std::chrono::duration<double>>(resto, std::chrono::milliseconds(15)));
  } while (true);
}

}  // namespace utr
