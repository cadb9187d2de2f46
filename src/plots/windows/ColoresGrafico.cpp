#include "plots/windows/ColoresGrafico.h"

#include "widgets/Temas.h"

namespace utr {
namespace {

// The three curves of each theme: far apart in hue and in lightness, so that they are told apart in grey too.
constexpr QRgb kCurvasDe[][kCurvas] = {
    {0xff0b5cad, 0xffb3470b, 0xff2d7d32},  // light
    {0xff6cb6ff, 0xffffb066, 0xff7fd88a},  // dark
    {0xff0000c0, 0xffa02000, 0xff005500},  // outdoors
};

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
  colores.validacion = ColorDe(Matiz::kAviso, paleta);
  colores.no_validado = ColorDe(Matiz::kAlerta, paleta);
  colores.evento = ColorDe(Matiz::kAcento, paleta);
  for (std::size_t i = 0; i < kCurvas; ++i) colores.curvas[i] = kCurvasDe[static_cast<std::size_t>(TemaDe(paleta))][i];
  return colores;
}

}  // namespace utr
