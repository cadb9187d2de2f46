#pragma once

#include <QColor>
#include <QPalette>
#include <array>

namespace utr {

inline constexpr std::size_t kCurvas = 3;  // channels that a plot shows at most

// The colours of plots, all of them, for the theme of a palette.
struct ColoresGrafico {
  QColor fondo;
  QColor texto;
  QColor reja;
  QColor cursor;
  QColor alarma;
  QColor validacion;
  QColor no_validado;
  QColor evento;
  std::array<QColor, kCurvas> curvas;
};
ColoresGrafico ColoresDeGrafico(const QPalette& paleta);

}  // namespace utr
