#pragma once

#include <qcustomplot.h>

#include <optional>
#include <vector>

#include "plots/windows/ColoresGrafico.h"
#include "plots/windows/ContenidoGrafico.h"

namespace utr {

// The events of the unit as flags at the top, with a thin line down from each. Flags that would stand on one another
// are drawn as one.
class BanderasEventos : public QCPLayerable {
 public:
  explicit BanderasEventos(QCPAxisRect* lugar);

  void Poner(std::vector<EventoGrafico> eventos) { eventos_ = std::move(eventos); }
  void Colorear(const ColoresGrafico& colores) { color_ = colores.evento; }

  // The events whose flags lie within reach of that pixel.
  std::vector<const EventoGrafico*> Cerca(double x) const;

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  void draw(QCPPainter* painter) override;
  QRect clipRect() const override { return lugar_->rect(); }

 private:
  QCPAxisRect* lugar_;
  std::vector<EventoGrafico> eventos_;
  QColor color_;
};

// The line that stands at the point picked, with a ring around the value. On a layer of its own, so that it moves
// without the curves being drawn again.
class CursorGrafico : public QCPLayerable {
 public:
  explicit CursorGrafico(QCPAxisRect* lugar, const QString& capa);

  // `valores`: the axis of the point, `valor` may be no number. Nothing: there is no cursor.
  struct Sitio {
    double momento = 0;
    double valor = 0;
    QCPAxis* valores = nullptr;
  };
  void Poner(std::optional<Sitio> sitio) { sitio_ = sitio; }
  void Colorear(const ColoresGrafico& colores) { color_ = colores.cursor; }

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  void draw(QCPPainter* painter) override;
  QRect clipRect() const override { return lugar_->rect(); }

 private:
  QCPAxisRect* lugar_;
  std::optional<Sitio> sitio_;
  QColor color_;
};

// What is said in the middle of a plot that has nothing to draw.
class LeyendaVacia : public QCPLayerable {
 public:
  explicit LeyendaVacia(QCPAxisRect* lugar);
  void Decir(const QString& texto) { texto_ = texto; }
  void Colorear(const ColoresGrafico& colores) { color_ = colores.texto; }

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;
  QRect clipRect() const override { return lugar_->rect(); }

 private:
  QCPAxisRect* lugar_;
  QString texto_;
  QColor color_;
};

}  // namespace utr
