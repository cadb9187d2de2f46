#pragma once

#include <qcustomplot.h>

#include <memory>
#include <vector>

#include "plots/windows/ColoresGrafico.h"
#include "plots/windows/ContenidoGrafico.h"
#include "retrieved/series/BarrasLluvia.h"
#include "retrieved/series/Reduccion.h"

namespace utr {

// One channel on a plot: the band from minimum to maximum, the line (bars from the top for rain), the values that
// weren't validated. It draws the series itself, so that neither a gap nor a clock that went back is bridged and no
// extreme is lost when many points fall on one column of pixels; axes, layers, zoom and paper are those of the plot.
class CurvaSerie : public QCPAbstractPlottable {
 public:
  CurvaSerie(QCPAxis* tiempo, QCPAxis* valores, CanalGrafico canal);

  const CanalGrafico& Canal() const noexcept { return canal_; }
  void Colorear(const ColoresGrafico& colores, std::size_t cual);

  double selectTest(const QPointF& pos, bool onlySelectable, QVariant* details = nullptr) const override;
  QCPRange getKeyRange(bool& foundRange, QCP::SignDomain inSignDomain = QCP::sdBoth) const override;
  QCPRange getValueRange(bool& foundRange, QCP::SignDomain inSignDomain = QCP::sdBoth,
                         const QCPRange& inKeyRange = QCPRange()) const override;

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

 private:
  using Pasos = std::vector<PasoReducido>;
  void DibujarBanda(QCPPainter& pintor, const Pasos& pasos) const;
  void DibujarTupida(QCPPainter& pintor, const Pasos& pasos) const;
  void DibujarLinea(QCPPainter& pintor, const Pasos& pasos) const;
  void DibujarLluvia(QCPPainter& pintor, const VentanaTiempo& ventana) const;
  void DibujarSumas(QCPPainter& pintor, const std::vector<BarraLluvia>& barras) const;
  void DibujarRegistros(QCPPainter& pintor, const VentanaTiempo& ventana) const;
  void DibujarBarra(QCPPainter& pintor, double desde, double hasta, double valor) const;
  void MarcarNoValidados(QCPPainter& pintor, const std::vector<QPointF>& puntos) const;
  void DibujarNoValidados(QCPPainter& pintor, const Pasos& pasos) const;

  CanalGrafico canal_;
  ColoresGrafico colores_;
  QColor color_;
};

}  // namespace utr
