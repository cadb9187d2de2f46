#pragma once

#include <QGroupBox>

#include "schedule/ProximasHoras.h"

class QPlainTextEdit;

namespace utr {

class LineaDeTiempo;

// The next 24 hours of a schedule, as a time line and as text ("txtProximas") for whoever can't see it.
class PanelProximas : public QGroupBox {
  Q_OBJECT

 public:
  explicit PanelProximas(QWidget* parent = nullptr);

  void Mostrar(const ProximasHoras& proximas);

 private:
  void Cambiar(const QString& texto);

  LineaDeTiempo* linea_;
  QPlainTextEdit* texto_;
};

// The picture: a lane for each kind with a mark of its own shape at every entry, windows as bars behind the marks, a
// warning sign over what overlaps or is there twice. Its tip tells the entries under the pointer.
class LineaDeTiempo : public QWidget {
  Q_OBJECT

 public:
  explicit LineaDeTiempo(QWidget* parent = nullptr);

  void Mostrar(const ProximasHoras& proximas);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* evento) override;
  bool event(QEvent* evento) override;

 private:
  int Alto() const;       // of a lane
  int Izquierda() const;  // where the day begins, right of the names of the lanes
  double X(int posicion) const;
  int HorasEntreNumeros() const;
  void PintarEje(QPainter& pintor) const;
  void PintarCarril(QPainter& pintor, int carril) const;
  void PintarAvisos(QPainter& pintor) const;
  QString TextoBajo(int x) const;

  ProximasHoras proximas_;
};

}  // namespace utr
