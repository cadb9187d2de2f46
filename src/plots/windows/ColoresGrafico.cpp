#include "plots/windows/ColoresGrafico.h"

#include "widgets/Temas.h"

namespace utr {
namespace {

// As far apart in hue as the colours of a theme go. Limits and events share what is left: a dotted line across and a
// flag aren't taken for each other.
constexpr std::array<Matiz, kCurvas> kCurvasDe{Matiz::kAcento, Matiz::kAviso, Matiz::kBien};

}  // namespace

ColoresGrafico ColoresDeGrafico(const QPalette& de_la_ventana) {
  QPalette paleta = de_la_ventana;
  paleta.setCurrentColorGroup(QPalette::Active);  // a window at work is off, and its plot keeps its colours
  ColoresGrafico colores;
  colores.fondo = paleta.color(QPalette::Base);
  colores.texto = paleta.color(QPalette::Text);
  colores.reja = colores.texto;
  colores.reja.setAlpha(40);
  colores.cursor = colores.texto;
  colores.alarma = ColorDe(Matiz::kMal, paleta);
  colores.validacion = ColorDe(Matiz::kAparte, paleta);
  colores.no_validado = ColorDe(Matiz::kAlerta, paleta);
  colores.evento = ColorDe(Matiz::kAparte, paleta);
  for (std::size_t i = 0; i < kCurvas; ++i) colores.curvas.at(i) = ColorDe(kCurvasDe.at(i), paleta);
  return colores;
}

}  // namespace utr
