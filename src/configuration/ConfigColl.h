#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "configuration/Config.h"
#include "driver/CanalesUTR.h"
#include "services/RegistroErrores.h"
#include "tables/Tabla.h"

namespace utr {

// The field that holds a column of the channel table, by the column's place in kColumnasDeCanal.
using MiembroConfig = std::variant<std::string Config::*, double Config::*, bool Config::*>;
const MiembroConfig& MiembroDeColumna(std::size_t columna);

// What a channel holds in a column, as a text.
std::string TextoDeColumna(const Config& config, std::size_t columna);

// The channels of a station in the order in which they were added, each under a key: "C" and the channel number unless
// another one was given. Objects are shared with whoever asks for them.
class ConfigColl {
 public:
  // Builds the object of a channel from the current row of a channel table. A channel that is present already is
  // returned as it stands: the first row has the last word. A column that is missing, null or doesn't convert leaves
  // its field as it was; nothing is raised. `clave` empty: the channel's own key.
  ConfigPtr Add(std::int16_t canal, const Tabla& registro, std::string_view clave = {});

  // Takes in an object that exists already, shared with whoever holds it; `Key` and all else in it stay. `clave` empty:
  // the object's own key. A key that is taken already leaves the collection as it is.
  void Add(ConfigPtr config, std::string_view clave = {});

  // The object of a channel number or of its text (blanks around it don't count), or null.
  ConfigPtr Item(std::int16_t canal) const;
  ConfigPtr Item(std::string_view canal) const;

  std::size_t Count() const noexcept { return elementos_.size(); }

  // Takes out the object at a position counted from 1, or under a whole key such as "C7". Never by bare channel number.
  // Raises kLlamada where there is none.
  void Remove(std::size_t posicion);
  void Remove(std::string_view clave);

  // A new channel table with one posted row for each object, on its first row. A failure is logged and raised again.
  TablaPtr GetRecMembers(RegistroErrores& registro) const;

  // Walks the objects (ConfigPtr) in the order of adding.
  auto begin() const { return elementos_.begin(); }
  auto end() const { return elementos_.end(); }

 private:
  // The position of a key from 0; that behind the last one where there is none.
  std::size_t Buscar(std::string_view clave) const;

  std::vector<ConfigPtr> elementos_;
  std::vector<std::string> claves_;  // of each
};

}  // namespace utr
