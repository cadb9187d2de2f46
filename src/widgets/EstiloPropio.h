#pragma once

#include <QProxyStyle>

#include "widgets/Temas.h"

namespace utr {

// Qt's own style "Fusion", with what it lacks here: a button that is pressed in is seen in any palette, icons in a
// menu follow the selection, message boxes bear the program's icons, fields have an outline that is seen in the dark.
// Outdoors, lines are heavy, what is aimed at is large, and what is disabled has leaning letters and dashes.
class EstiloPropio : public QProxyStyle {
  Q_OBJECT

 public:
  explicit EstiloPropio(Tema tema);

  void drawPrimitive(PrimitiveElement elemento, const QStyleOption* opcion, QPainter* pintor,
                     const QWidget* control) const override;
  void drawControl(ControlElement elemento, const QStyleOption* opcion, QPainter* pintor,
                   const QWidget* control) const override;
  void drawItemText(QPainter* pintor, const QRect& lugar, int alineado, const QPalette& paleta, bool activo,
                    const QString& texto, QPalette::ColorRole papel) const override;
  void drawComplexControl(ComplexControl elemento, const QStyleOptionComplex* opcion, QPainter* pintor,
                          const QWidget* control) const override;
  int pixelMetric(PixelMetric medida, const QStyleOption* opcion, const QWidget* control) const override;
  QSize sizeFromContents(ContentsType clase, const QStyleOption* opcion, const QSize& tamano,
                         const QWidget* control) const override;
  QIcon standardIcon(StandardPixmap cual, const QStyleOption* opcion, const QWidget* control) const override;
  QPixmap standardPixmap(StandardPixmap cual, const QStyleOption* opcion, const QWidget* control) const override;

 private:
  void Contornear(const QStyleOption& opcion, QPainter& pintor, const QRect& lugar, double redondeo) const;
  void ContornearMarca(const QStyleOption& opcion, QPainter& pintor, bool redonda) const;
  void Trazar(const QStyleOption& opcion, QPainter& pintor, const QRect& lugar, double redondeo,
              const QColor& color) const;
  int BajoElTitulo(const QStyleOption& opcion, const QWidget* control) const;
  void PintarApretado(const QStyleOption& opcion, QPainter& pintor) const;

  Tema tema_;
};

}  // namespace utr
