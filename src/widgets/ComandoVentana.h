#pragma once

#include <QKeySequence>
#include <functional>

namespace utr {

// A menu of a window.
struct MenuVentana {
  const char* nombre = nullptr;
  const char* texto = nullptr;
  const char* dentro_de = nullptr;  // the menu that it hangs in; null: the menu bar
};

// A command of a window, as its menu and its toolbar show it. Written with its fields named.
struct ComandoVentana {
  const char* nombre = nullptr;  // of the menu entry; null: it stands in no menu
  const char* texto = nullptr;   // of the entry
  const char* menu = nullptr;    // where the entry stands; null: the first menu
  bool abre_grupo = false;       // a rule ahead of the entry
  const char* clave = nullptr;   // of the button; null: it isn't on the toolbar
  const char* icono = nullptr;
  const char* ayuda = nullptr;  // tooltip and accessible name of the button
  QKeySequence tecla{};
  std::function<bool()> si{};     // when it can be used; empty: always
  std::function<void()> hacer{};  // runs unless the window is at work
};

}  // namespace utr
