#pragma once

#include <qcustomplot.h>

#include <memory>
#include <utility>
#include <vector>

#include "plots/windows/ColoresGrafico.h"
#include "plots/windows/ContenidoGrafico.h"

namespace utr {

// The limits of all channels of a plot as lines across, each with its words. One outside its axis is told at the end of
// it, so that nobody takes its absence for no limit. Words give way to each other, whichever
// channel they are of, and to the curves as far as there is room.
class LimitesGrafico : public QCPLayerable {
 public:
  explicit LimitesGrafico(QCPAxisRect* lugar);

  // `ejes`: the axis of values of each channel.
  void Poner(const std::vector<CanalGrafico>& canales, const std::vector<QCPAxis*>& ejes);
  void Colorear(const ColoresGrafico& colores) { colores_ = colores; }

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;
  QRect clipRect() const override { return lugar_->rect(); }

 private:
  struct Limite {
    LimiteSerie limite;
    QCPAxis* eje = nullptr;
    QString texto;
  };
  class Rotulos;

  std::vector<QRectF> Curvas() const;
  void DibujarLinea(QCPPainter& pintor, const Limite& uno) const;
  void RotularDentro(const Limite& uno, Rotulos& rotulos) const;
  void RotularEnElBorde(const Limite& uno, Rotulos& rotulos) const;
  QColor ColorDeLimite(const Limite& uno) const;

  QCPAxisRect* lugar_;
  std::vector<Limite> limites_;
  std::vector<std::pair<std::shared_ptr<const Serie>, QCPAxis*>> series_;  // each with its axis of values
  ColoresGrafico colores_;
};

}  // namespace utr
