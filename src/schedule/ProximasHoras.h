#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "schedule/FDLHorarios.h"

// What the unit will do in the 24 hours from a minute on, as a picture and as words. Positions are minutes from that
// minute on, 0 to 1440; "minute" is one of the day.
namespace utr {

struct MarcaHorario {
  int posicion = 0;
  int minuto = 0;
  bool TWind = false;
  bool TCond = false;
  bool TOblig = false;
  bool repetida = false;     // another entry shows the same time
  bool superpuesta = false;  // its window and that of a neighbour overlap
};

// A window, or the part of it inside the picture.
struct BarraVentana {
  int desde = 0;
  int hasta = 0;
  bool superpuesta = false;
};

struct ProximasHoras {
  int desde = 0;                                  // the minute at the left edge
  int duracion = 0;                               // minutes of a window; 0: none is drawn
  std::vector<MarcaHorario> marcas;               // every entry, by position
  std::vector<BarraVentana> barras;               // of the entries by window, by their start
  std::vector<std::pair<int, int>> superpuestos;  // minutes of neighbours whose windows overlap, each pair once
  std::vector<std::pair<int, int>> repetidos;     // a minute, and how many entries show it

  // The first entry from the left edge on; null without entries.
  const MarcaHorario* Proxima() const { return marcas.empty() ? nullptr : &marcas.front(); }
};

// `desde`: any minute, taken modulo a day. `duracion`: minutes of a window; below 1 there are none, above a day it is a
// day. A window goes on at the left edge with what is left of it at the right one, since every day is the same.
ProximasHoras ProximasDe(const FDLHorarios& horarios, int desde, int duracion);

// "Próximo horario: 12:00 (obligatoria, por ventana), en 1 h 59 min".
std::string TextoDeProxima(const ProximasHoras& proximas);

// What is to be noticed, a line each: "08:00 y 08:03 se superponen", "08:00 está dos veces".
std::vector<std::string> AvisosDe(const ProximasHoras& proximas);

// Every entry, a line each, by position: "12:00 obligatoria, por ventana hasta las 12:10". A window that is
// open at the left edge already says so.
std::vector<std::string> RenglonesDe(const ProximasHoras& proximas);

}  // namespace utr
