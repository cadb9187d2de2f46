#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "schedule/FDLHoraro.h"
#include "tables/Tabla.h"

namespace utr {

// The schedule: entries in the order in which they were added, one for each key, and the length of the transmission
// window. Two entries may show the same time: an entry whose time was edited lives on under the key of its first time.
//
// Entries are shared with whoever asks for them; a copy of the schedule has entries of its own, keys kept.
class FDLHorarios {
 public:
  FDLHorarios() = default;
  FDLHorarios(const FDLHorarios& otro);
  FDLHorarios& operator=(const FDLHorarios& otro);
  FDLHorarios(FDLHorarios&&) noexcept = default;
  FDLHorarios& operator=(FDLHorarios&&) noexcept = default;
  ~FDLHorarios() = default;

  std::int32_t DuracionVentana = 0;  // minutes; 0 until someone sets it

  // The entry that was created at that minute, as it stands; without one a new entry with all three kinds set, under
  // `sKey`, or under its own key where that is empty. Raises kLlamada for an `sKey` that is taken.
  FDLHoraroPtr Add(std::int16_t Horario, std::string_view sKey = {});

  // The entry under a minute of creation, or under its text without the "C" ("480"). Item raises kLlamada where there
  // is none; Buscar gives null.
  FDLHoraroPtr Item(std::int16_t minuto) const { return Item(std::to_string(minuto)); }
  FDLHoraroPtr Item(std::string_view minuto) const;
  FDLHoraroPtr Buscar(std::int16_t minuto) const { return Buscar(std::to_string(minuto)); }
  FDLHoraroPtr Buscar(std::string_view minuto) const { return EnClave(std::string(minuto) + 'C'); }

  std::int32_t Count() const noexcept { return static_cast<std::int32_t>(elementos_.size()); }

  // Takes out the entry under a whole key, "480C". Raises kLlamada where there is none.
  void Remove(std::string_view clave);

  // A new table, one posted row for each entry, sorted by "HorarioInteger ASC" and on its first row when it has any:
  // "key" (the minute of creation), "Horario" ("HH:mm:ss"), "TOblig", "TWind", "TCond" ("Si", "No"), "HorarioInteger".
  TablaPtr GetRecMembers() const;

  // Walks the entries (FDLHoraroPtr) in the order of adding.
  auto begin() const { return elementos_.begin(); }
  auto end() const { return elementos_.end(); }

 private:
  std::size_t Lugar(std::string_view clave) const;
  FDLHoraroPtr EnClave(std::string_view clave) const;

  std::vector<FDLHoraroPtr> elementos_;
  std::vector<std::string> claves_;  // of each
};

}  // namespace utr
