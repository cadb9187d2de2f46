#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "retrieved/recovery/MemoriaFlash.h"

namespace utr {

// What of the flash is to be read.
struct SeleccionFlash {
  bool datos = true;            // the stacks: all, or those that are told
  bool todas_las_pilas = true;  // whatever `pilas` says
  std::array<bool, kGrupoCola> pilas{};
  bool cola = false;
  bool eventos = false;
  bool completa = false;  // blank pages don't end a group

  // A group of kGruposFlash is to be read.
  bool Elige(std::size_t grupo) const;

  // Anything is.
  bool Hay() const;

  // Where the read begins: without data at the transmission queue.
  int PrimeraPista() const;

  bool operator==(const SeleccionFlash&) const = default;
};

// A track that leaves something in the file: its pages, or just its end.
struct PasoFlash {
  int pista = 0;
  bool leer = true;
  bool operator==(const PasoFlash&) const = default;
};

// The tracks of a read in their order. Events that nobody wants leave the ends of their tracks; other tracks that
// nobody wants leave nothing.
std::vector<PasoFlash> PlanDeLectura(const SeleccionFlash& seleccion);

// A page text is that of a blank page: all of its items but two are 255, neither more nor less.
bool EsPaginaVacia(std::string_view texto);

}  // namespace utr
