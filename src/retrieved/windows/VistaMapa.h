#pragma once

#include <QWidget>

#include "retrieved/recovery/MapaMemoria.h"

class QLabel;
class QToolButton;

namespace utr {

class EtiquetaCopiable;
class RejaMapa;

// The map of the memory: a row of cells for each track, eight pages in each, or one after a zoom; under it the cell
// that the pointer or the keyboard is at in words, a legend with shapes and counts, and all of the counts as a text
// that screen readers find.
class VistaMapa : public QWidget {
  Q_OBJECT

 public:
  // Shows `mapa`, which has to outlive it, and takes its AlCambiar.
  explicit VistaMapa(MapaMemoria& mapa, QWidget* parent = nullptr);
  ~VistaMapa() override;

  // Brings the texts up to date with the map; the cells follow each change by themselves. To be called as often as the
  // operator looks, and once at the end of the work.
  void Actualizar();

  // The map names other channels.
  void Renombrar();

  // One page in a cell, or eight.
  void Acercar(bool cerca);

  // In the order in which Tab walks them.
  QList<QWidget*> Controles() const;

  // The page that the words tell, by pointer or arrow keys.
  LugarPagina Lugar() const;

 private:
  void Armar();
  void DecirLugar();

  MapaMemoria& mapa_;
  RejaMapa* reja_;
  QLabel* lugar_;
  EtiquetaCopiable* cuenta_;
  QToolButton* cerca_;
};

}  // namespace utr
