#pragma once

#include <QAbstractScrollArea>
#include <functional>

#include "retrieved/recovery/MapaMemoria.h"

namespace utr {

// Draws what stands for a page in that state: a shape that is told apart without its colour.
void PintarEstado(QPainter& pintor, const QRect& celda, EstadoPagina estado, const QPalette& paleta);

// The grid of a map: a row for each track, parted by groups, with one cell that is current. Arrows, Inicio, Fin and the
// page keys move it, and it follows the pointer; "+", "-", Ctrl with the wheel and a double click change the zoom.
class RejaMapa : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit RejaMapa(const MapaMemoria& mapa, QWidget* parent = nullptr);

  bool Cerca() const noexcept { return cerca_; }
  void Acercar(bool cerca);

  // The first page of the current cell, and how many a cell holds.
  LugarPagina Lugar() const noexcept { return lugar_; }
  int PorCelda() const noexcept { return cerca_ ? 1 : MapaMemoria::kPaginasCelda; }

  // That page has changed.
  void Repintar(const LugarPagina& lugar);

  // The names at the side have changed.
  void Medir();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void LugarCambiado();
  void ZoomCambiado();

 protected:
  void paintEvent(QPaintEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void wheelEvent(QWheelEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void focusOutEvent(QFocusEvent* evento) override;

 private:
  int Columnas() const { return kPaginasPista / PorCelda(); }
  int AltoMinimo() const;  // of a cell, all of the map in sight
  int Arriba(int pista) const;
  QRect Celda(const LugarPagina& lugar) const;
  void RepintarActual();
  void Ir(LugarPagina lugar, bool a_la_vista);
  bool LugarEn(const QPoint& punto, LugarPagina& lugar) const;
  void PintarGrupos(QPainter& pintor) const;
  void PintarPista(QPainter& pintor, int pista, const QRect& zona) const;

  const MapaMemoria& mapa_;
  LugarPagina lugar_;
  bool cerca_ = false;
  int margen_ = 0;  // of the names at the left
  int ancho_ = 0;   // of a cell
  int alto_ = 0;
  int cambios_ = 0;  // since the last painting
};

}  // namespace utr
