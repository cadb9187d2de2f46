#pragma once

#include <QScrollArea>
#include <QSize>
#include <initializer_list>

class QDialog;
class QHBoxLayout;
class QLayout;
class QPushButton;
class QWidget;

namespace utr {

// Pixels around the content of every window, and between its body and the row of buttons below.
inline constexpr int kMargenVentana = 16;
inline constexpr int kSobreElPie = 12;

// The buttons at the foot of a window, those that it has. Names, captions and what they do are the window's own.
struct PieDialogo {
  QPushButton* aceptar = nullptr;   // at the right
  QPushButton* cancelar = nullptr;  // right of it
  QPushButton* ayuda = nullptr;     // at the left
  bool por_defecto = true;          // Enter in a field presses `aceptar`, or `cancelar` alone; false: no button
};

// The row itself, with what else stands in it right of Ayuda.
QHBoxLayout* FilaDePie(const PieDialogo& pie, QLayout* a_la_izquierda = nullptr);

// Content that scrolls where the screen has no room for all of it, and otherwise is as if it stood by itself.
class AreaDesplazable : public QScrollArea {
 public:
  AreaDesplazable(QWidget* contenido, QWidget* parent);
  QSize sizeHint() const override;
};

// The content itself, or, where the screen isn't wide enough for it, an area in which it scrolls sideways.
QWidget* ALoAncho(QWidget* contenido, const QDialog& dialogo);

// Puts a dialog together: the body over the row, with the margins of all. Room that is left over goes to a body that
// can grow, else between the two. Tab walks `campos` in that order, then Aceptar, Cancelar, Ayuda.
void ArmarDialogo(QDialog& dialogo, QLayout* cuerpo, const PieDialogo& pie,
                  std::initializer_list<QWidget*> campos = {});

// The first size of a dialog, that of its content and at least `minimo`, which is given for common letters, no larger
// than the screen, and from then on the one that it was left with. A content that the screen has no room for scrolls:
// all of the dialog's layout but a toolbar at its head and its last part. `por_venir`: what the content may yet grow
// by, as it is filled.
void AjustarTamano(QDialog& dialogo, const QSize& minimo = {}, const QSize& por_venir = {});

}  // namespace utr
