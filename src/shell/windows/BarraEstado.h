#pragma once

#include <QStatusBar>

#include "base/Progreso.h"
#include "session/OperacionesEnlace.h"

class QLabel;

namespace utr {

class EtiquetaEstado;

// The status bar: panel 1 for progress, a panel for what was written, and the two
// that tell the link. What is told to it as progress is seen
// at once, with the part that is done behind the text; it offers no cancel, and what was left out stays as the text.
class BarraEstado : public QStatusBar, public Progreso {
  Q_OBJECT

 public:
  explicit BarraEstado(QWidget* parent = nullptr);

  // The two panels of the link. A lost one has a hollow dot, and is read as well as the others.
  void Mostrar(const TextosPanel& textos);

  // What was written and verified, or couldn't be kept: a panel that is there only while it says something. `detalle`
  // is what its tooltip says more.
  void Verificacion(std::string_view texto, std::string_view detalle = {});

  // What the disk doesn't take of the journal, and why; empty: nothing, and no panel. Seen at once.
  void Bitacora(std::string_view texto, std::string_view detalle);

  // What goes over the wire; empty: nothing, and no panel. Seen at once, since the work that tells it may not let
  // events run.
  void Trafico(std::string_view texto);

  void Texto(std::string_view texto) override;
  void Rango(std::int64_t pasos) override;
  void Posicion(std::int64_t hechos) override;
  bool Cancelado() override { return false; }
  void Descartado(std::string_view que, std::string_view porque) override;

 private:
  void MostrarProgreso();

  QString texto_;
  std::int64_t pasos_ = 0;
  std::int64_t hechos_ = 0;
  QLabel* panel1_;
  QLabel* verificacion_;
  QLabel* bitacora_;
  QLabel* trafico_;
  EtiquetaEstado* puerto_;
  EtiquetaEstado* velocidad_;
};

}  // namespace utr
