#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The unit's flash memory as the program sees it: tracks of pages, in groups that are rings.
namespace utr {

inline constexpr int kPistas = 32;
inline constexpr int kPaginasPista = 1024;
inline constexpr int kPaginasFlash = kPistas * kPaginasPista;

enum class ClaseGrupo : std::uint8_t { kPila, kCola, kEventos };

// Tracks that belong together.
struct GrupoFlash {
  ClaseGrupo clase = ClaseGrupo::kPila;
  int primera = 0;  // track
  int ultima = 0;
};

inline constexpr std::size_t kGrupoCola = 9;
inline constexpr std::size_t kGrupoEventos = 10;

// The nine stacks, under their numbers, the transmission queue and the events; together all tracks, in order.
inline constexpr std::array<GrupoFlash, 11> kGruposFlash = {{{ClaseGrupo::kPila, 0, 2},
                                                             {ClaseGrupo::kPila, 3, 5},
                                                             {ClaseGrupo::kPila, 6, 8},
                                                             {ClaseGrupo::kPila, 9, 11},
                                                             {ClaseGrupo::kPila, 12, 14},
                                                             {ClaseGrupo::kPila, 15, 17},
                                                             {ClaseGrupo::kPila, 18, 20},
                                                             {ClaseGrupo::kPila, 21, 23},
                                                             {ClaseGrupo::kPila, 24, 26},
                                                             {ClaseGrupo::kCola, 27, 29},
                                                             {ClaseGrupo::kEventos, 30, 31}}};

// The place in kGruposFlash of a track from 0 to 31.
constexpr std::size_t GrupoDePista(int pista) {
  return static_cast<std::size_t>(pista / 3);
}

// A page of the memory.
struct LugarPagina {
  int pista = 0;
  int pagina = 0;
  auto operator<=>(const LugarPagina&) const = default;
};

// Its place in a row of all pages.
constexpr std::size_t IndiceDePagina(const LugarPagina& lugar) {
  return static_cast<std::size_t>(lugar.pista * kPaginasPista + lugar.pagina);
}

}  // namespace utr
