#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tables/Tabla.h"

// Which channel keeps its history in which stack of the flash.
namespace utr {

// Three lists of the same length, one entry for each channel with a history, joined by ",". Numbers are in plain text,
// so that most of them carry a blank ahead.
struct ListasPilas {
  std::string pilas;    // the stack, 0 to 8; empty text for a channel whose stack is no whole number of these
  std::string canales;  // the channel, from 0
  std::string pistas;   // the last track of the stack; empty text as above
};

// The rows of a channel table in their order, whatever its filter and sort; a row without a channel number is no
// channel. The table is left as it is. Raises kCampo for a table without Tipo, Pila or Canal.
ListasPilas ArmarListasPilas(const Tabla& configuracion);

// Whether the stack of a track is in a list of stacks, and its place there from 0; -1: it isn't. The stack of a track
// is a third of its number, and 0 for those beyond 26. Entries that hold no number match nothing.
bool EstaPilaConfigurada(int pista, std::string_view lista);
std::int16_t IndicePila(int pista, std::string_view lista);

}  // namespace utr
