#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/Catalogo.h"
#include "configuration/ConfigColl.h"
#include "tables/Tabla.h"

// What a write would change in the unit, in words.
namespace utr {

// The caption of a column of the channel table, as the dialogs have it; the name itself for a column without one.
std::string RotuloDeColumna(std::string_view columna);

// Two texts of a column stand for the same value: as numbers where both are one, else as texts. A comma makes none a
// number, since readers differ about it.
bool MismoValor(std::string_view a, std::string_view b);

// One field of one channel that differs. Codes are told as words, options of Flags one by one.
struct CambioConfiguracion {
  std::int16_t canal = 0;
  std::string campo;  // its caption
  std::string en_la_utr;
  std::string nuevo;
  bool operator==(const CambioConfiguracion&) const = default;
};

// What differs between the channels as they came from the unit and as they are now, in the order of `ahora`, then the
// channels that `ahora` lacks; `Modificado` doesn't count. Neither is changed. A channel that only one of them holds
// says so under the caption "Canal"; one that the unit lacks then lists all that it would be given.
//
// `inicial` must hold objects of its own (ColeccionDe of the same table makes them): the dialogs edit those of `ahora`.
std::vector<CambioConfiguracion> CambiosDe(const ConfigColl& inicial, const ConfigColl& ahora, Catalogo& catalogo);

// The changes as a table of texts for a list, in their order: "NroCanal", "Canal" (short code), "Campo", "ValorUTR",
// "ValorNuevo".
TablaPtr TablaDeCambios(const std::vector<CambioConfiguracion>& cambios);

}  // namespace utr
