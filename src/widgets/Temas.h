#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace utr {

// How the program looks. Outdoors: black on white without any grey text, heavy lines and large targets, for a screen in
// the sun; what is disabled has leaning letters there, and dashes where others have lines.
enum class Tema { kClaro, kOscuro, kExteriores };

// The colours beside those of a palette. Each can be read on the grounds of a window and of a list.
enum class Matiz {
  kAcento,  // what a drawing sets apart, and what is chosen
  kAlerta,  // what a drawing warns of
  kBien,    // a link that stands
  kMal,     // a link that is lost
  kAviso,   // what wants a look
  kAparte,  // what belongs to none of those
};

// The one place where palettes live.
QPalette PaletaDe(Tema tema);

// The theme of which a palette is. One that isn't of this program counts as light or dark.
Tema TemaDe(const QPalette& paleta);

// The colour in the theme of that palette.
QColor ColorDe(Matiz matiz, const QPalette& paleta);

// The letter of a text that stands on that palette. One that is disabled leans where its colour doesn't tell it.
QFont LetraDe(bool activo, QFont letra, const QPalette& paleta);

// From 1 (none) to 21 (black on white), as the accessibility guidelines for the web define it.
double Contraste(const QColor& uno, const QColor& otro);

// Gives the program that look: style and palette. Windows that are open take it at once.
void AplicarTema(Tema tema);

}  // namespace utr
