#pragma once

#include <QFont>
#include <QPalette>
#include <array>
#include <optional>

#include "widgets/Temas.h"

namespace utr {

// The sizes of text that are offered, in percent of the platform's.
inline constexpr std::array<int, 5> kTamanosTexto{100, 125, 150, 175, 200};

// Theme and size of text of the program's run, as the user chose them; both are kept for each user. Windows that are
// open follow at once.
class Apariencia {
 public:
  // Remembers how the platform looks and gives the program the look that was kept.
  Apariencia();

  // The theme that was chosen; nothing: light or dark, as the platform is.
  std::optional<Tema> Elegido() const noexcept { return elegido_; }
  void Elegir(std::optional<Tema> tema);

  // One of kTamanosTexto.
  int TamanoTexto() const noexcept { return tamano_; }
  void FijarTamanoTexto(int porciento);

 private:
  void Aplicar() const;

  QPalette del_equipo_;
  QFont letra_del_equipo_;
  std::optional<Tema> elegido_;
  int tamano_ = kTamanosTexto.front();
};

}  // namespace utr
