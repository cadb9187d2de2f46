#pragma once

#include <vector>

#include "widgets/ServiciosLista.h"

namespace utr {

// What can be done in a record view. The first two are its two frames: reading by them, or going to them.
enum class Comando {
  kMarco0,
  kMarco1,
  kAbrir,
  kGuardar,
  kExportar,
  kConfigurarImpresora,
  kImprimir,
  kSalir,
  kAscendente,
  kDescendente,
  kAyuda,
  kQueEsEsto,
};

// An entry of the menu, with its name.
struct EntradaVista {
  Comando comando;
  const char* nombre;
  const char* texto;
};

// How a view is called, what its menu and toolbar hold, and its words in the list services.
struct DescripcionVista {
  const char* titulo;
  const char* menu;  // name and text of its one menu
  const char* texto_menu;
  const char* submenu;  // where the two frames stand in the menu; null: in the menu itself
  const char* texto_submenu;
  std::vector<EntradaVista> entradas;
  std::vector<Comando> barra;
  std::size_t columna_titulo;  // of the list, for the caption of the detail dialog
  PalabrasLista palabras;
};

}  // namespace utr
