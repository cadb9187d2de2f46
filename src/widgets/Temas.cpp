#include "widgets/Temas.h"

#include <QApplication>
#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/EstiloPropio.h"

namespace utr {
namespace {

struct ColoresDeTema {
  const char* ventana;
  const char* texto;
  const char* base;
  const char* alterna;
  const char* boton;
  const char* apagado;     // text of what is disabled
  const char* sugerencia;  // text that stands in for a missing one
  const char* resalte;     // ground of what is selected
  const char* resaltado;   // text on it
  const char* nota;        // ground of tips and panels
  const char* borde;
  std::array<const char*, 6> matices;  // by Matiz
};

constexpr std::array<ColoresDeTema, 3> kColores{{
    {.ventana = "#f0f1f2",
     .texto = "#16191c",
     .base = "#ffffff",
     .alterna = "#f4f7fa",
     .boton = "#f5f6f7",
     .apagado = "#73797f",
     .sugerencia = "#646a70",
     .resalte = "#1a69a8",
     .resaltado = "#ffffff",
     .nota = "#fff6d6",
     .borde = "#8a9097",
     .matices = {"#1a6fb3", "#bf3126", "#1b7332", "#bf2a1e", "#855600", "#7040ad"}},
    {.ventana = "#2a2d30",
     .texto = "#eef0f2",
     .base = "#1e2022",
     .alterna = "#26292c",
     .boton = "#3a3e43",
     .apagado = "#9aa0a6",
     .sugerencia = "#a4aab0",
     .resalte = "#2468a6",
     .resaltado = "#ffffff",
     .nota = "#3d3a2a",
     .borde = "#80868d",
     .matices = {"#62b4f2", "#f58d83", "#66cf82", "#f58d83", "#f0bc4a", "#c4a8ee"}},
    {.ventana = "#ffffff",
     .texto = "#000000",
     .base = "#ffffff",
     .alterna = "#ffffff",
     .boton = "#ffffff",
     .apagado = "#000000",
     .sugerencia = "#000000",
     .resalte = "#00307a",
     .resaltado = "#ffffff",
     .nota = "#ffffff",
     .borde = "#000000",
     .matices = {"#003d99", "#9c0000", "#00591e", "#9c0000", "#6b3f00", "#4b1c86"}},
}};

const ColoresDeTema& ColoresDe(Tema tema) {
  return kColores.at(static_cast<std::size_t>(tema));
}

QColor Mezcla(const QColor& uno, const QColor& otro, double parte) {
  const auto entre = [parte](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * parte)); };
  return {entre(uno.red(), otro.red()), entre(uno.green(), otro.green()), entre(uno.blue(), otro.blue())};
}

// Of one of the three channels of a colour.
double Lineal(double canal) {
  return canal <= 0.04045 ? canal / 12.92 : std::pow((canal + 0.055) / 1.055, 2.4);
}

double Luminancia(const QColor& color) {
  return 0.2126 * Lineal(color.redF()) + 0.7152 * Lineal(color.greenF()) + 0.0722 * Lineal(color.blueF());
}

// The tones with which a style gives depth.
void PonerRelieves(QPalette& paleta, const ColoresDeTema& colores) {
  const QColor boton(colores.boton);
  const QColor borde(colores.borde);
  const bool oscuro = Luminancia(boton) < 0.18;
  paleta.setColor(QPalette::Light, oscuro ? boton.lighter(130) : QColor(Qt::white));
  paleta.setColor(QPalette::Midlight, Mezcla(boton, borde, 0.2));
  paleta.setColor(QPalette::Mid, Mezcla(boton, borde, 0.6));
  paleta.setColor(QPalette::Dark, borde);
  paleta.setColor(QPalette::Shadow, oscuro ? QColor(Qt::black) : borde.darker(150));
}

}  // namespace

QPalette PaletaDe(Tema tema) {
  const ColoresDeTema& colores = ColoresDe(tema);
  QPalette paleta;
  const auto poner = [&](std::initializer_list<QPalette::ColorRole> papeles, const char* color) {
    for (const QPalette::ColorRole papel : papeles) paleta.setColor(papel, QColor(color));
  };
  poner({QPalette::Window}, colores.ventana);
  poner({QPalette::Base}, colores.base);
  poner({QPalette::AlternateBase}, colores.alterna);
  poner({QPalette::Button}, colores.boton);
  poner({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}, colores.texto);
  poner({QPalette::BrightText, QPalette::HighlightedText}, colores.resaltado);
  poner({QPalette::PlaceholderText}, colores.sugerencia);
  poner({QPalette::Highlight}, colores.resalte);
  poner({QPalette::ToolTipBase}, colores.nota);
  poner({QPalette::Link, QPalette::LinkVisited}, colores.matices[static_cast<std::size_t>(Matiz::kAcento)]);
  PonerRelieves(paleta, colores);
  for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
    paleta.setColor(QPalette::Disabled, papel, QColor(colores.apagado));
  }
  // A field that takes nothing has the ground of what it stands on; a row that is selected there stays legible.
  paleta.setColor(QPalette::Disabled, QPalette::Base, QColor(colores.ventana));
  paleta.setColor(QPalette::Disabled, QPalette::Highlight, QColor(colores.apagado));
  paleta.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(colores.ventana));
  return paleta;
}

Tema TemaDe(const QPalette& paleta) {
  const QColor ventana = paleta.color(QPalette::Active, QPalette::Window);
  const QColor texto = paleta.color(QPalette::Active, QPalette::WindowText);
  const ColoresDeTema& exteriores = ColoresDe(Tema::kExteriores);
  if (ventana == QColor(exteriores.ventana) && texto == QColor(exteriores.texto)) return Tema::kExteriores;
  return Luminancia(ventana) < Luminancia(texto) ? Tema::kOscuro : Tema::kClaro;
}

QColor ColorDe(Matiz matiz, const QPalette& paleta) {
  return {ColoresDe(TemaDe(paleta)).matices.at(static_cast<std::size_t>(matiz))};
}

QFont LetraDe(bool activo, QFont letra, const QPalette& paleta) {
  if (!activo && TemaDe(paleta) == Tema::kExteriores) letra.setItalic(true);
  return letra;
}

double Contraste(const QColor& uno, const QColor& otro) {
  const auto [menor, mayor] = std::minmax({Luminancia(uno), Luminancia(otro)});
  return (mayor + 0.05) / (menor + 0.05);
}

void AplicarTema(Tema tema) {
  QApplication::setStyle(new EstiloPropio(tema));
  QApplication::setPalette(PaletaDe(tema));
}

}  // namespace utr
