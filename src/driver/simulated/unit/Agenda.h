#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "driver/TablasDeUnidad.h"
#include "tables/Tabla.h"

namespace utr::simulada {

using Entrada = EntradaAgenda;

// The schedule of the unit, in the order in which it was written.
class Agenda {
 public:
  static constexpr std::size_t kLugares = kMayorAgenda;

  // The schedule as it leaves the factory: six entries that count, and two that don't.
  static Agenda DeFabrica();

  // The entries as text, "08:00 OVC OK" joined by ";" (O obligatory, V window, C conditional, "-" none; no time at all
  // reads "-"), and back; nothing is changed, and false given, for a text of another form.
  std::string ComoTexto() const;
  bool LeerTexto(std::string_view texto);

  TablaPtr ComoTabla() const { return TablaDeAgenda(entradas_); }

  // Takes the entries that a table shows, with the fields HorarioInteger, TOblig, TWind and TCond in place of those
  // that counted. False, with nothing changed, for a minute outside the day, a minute that is no number or more entries
  // than places. Raises error 3265 for a table without those fields.
  bool Escribir(Tabla& tabla);

  const std::vector<Entrada>& Entradas() const { return entradas_; }

 private:
  std::vector<Entrada> entradas_;
};

}  // namespace utr::simulada
