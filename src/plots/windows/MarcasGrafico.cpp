#include "plots/windows/MarcasGrafico.h"

#include <cmath>

namespace utr {
namespace {

constexpr double kBandera = 9;   // width of a flag, and how near the pointer has to be
constexpr double kMastil = 8;    // height of a flag
constexpr double kAnillo = 4.5;  // radius of the ring around the point picked

double PixelDe(const QCPAxisRect& lugar, const EventoGrafico& evento) {
  return lugar.axis(QCPAxis::atBottom)->coordToPixel(static_cast<double>(evento.momento));
}

}  // namespace

BanderasEventos::BanderasEventos(QCPAxisRect* lugar) : QCPLayerable(lugar->parentPlot()), lugar_(lugar) {}

void BanderasEventos::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  applyAntialiasingHint(painter, mAntialiased, QCP::aeItems);
}

void BanderasEventos::draw(QCPPainter* painter) {
  const QRect dentro = lugar_->rect();
  double anterior = -kBandera;
  QColor hilo = color_;
  hilo.setAlpha(90);
  for (const EventoGrafico& evento : eventos_) {
    const double x = PixelDe(*lugar_, evento);
    if (x < dentro.left() || x > dentro.right() || x - anterior < 1) continue;
    anterior = x;
    painter->setPen(QPen(hilo, 1));
    painter->drawLine(QLineF(x, dentro.top(), x, dentro.bottom()));
    painter->setPen(Qt::NoPen);
    painter->setBrush(color_);
    painter->drawPolygon(QPolygonF{QPointF(x, dentro.top()), QPointF(x + kBandera, dentro.top() + kMastil / 2),
                                   QPointF(x, dentro.top() + kMastil)});
  }
}

std::vector<const EventoGrafico*> BanderasEventos::Cerca(double x) const {
  std::vector<const EventoGrafico*> cerca;
  for (const EventoGrafico& evento : eventos_) {
    if (std::abs(PixelDe(*lugar_, evento) - x) <= kBandera / 2) cerca.push_back(&evento);
  }
  return cerca;
}

CursorGrafico::CursorGrafico(QCPAxisRect* lugar, const QString& capa)
    : QCPLayerable(lugar->parentPlot(), capa), lugar_(lugar) {}

void CursorGrafico::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  applyAntialiasingHint(painter, mAntialiased, QCP::aeItems);
}

void CursorGrafico::draw(QCPPainter* painter) {
  if (!sitio_) return;
  const double x = lugar_->axis(QCPAxis::atBottom)->coordToPixel(sitio_->momento);
  painter->setPen(QPen(color_, 1, Qt::DashLine));
  painter->drawLine(QLineF(x, lugar_->top(), x, lugar_->bottom()));
  if (std::isnan(sitio_->valor)) return;
  painter->setPen(QPen(color_, 2));
  painter->setBrush(Qt::NoBrush);
  painter->drawEllipse(QPointF(x, sitio_->valores->coordToPixel(sitio_->valor)), kAnillo, kAnillo);
}

LeyendaVacia::LeyendaVacia(QCPAxisRect* lugar) : QCPLayerable(lugar->parentPlot()), lugar_(lugar) {}

void LeyendaVacia::draw(QCPPainter* painter) {
  if (texto_.isEmpty()) return;
  painter->setFont(lugar_->axis(QCPAxis::atBottom)->labelFont());
  painter->setPen(color_);
  painter->drawText(QRectF(lugar_->rect()), Qt::AlignCenter | Qt::TextWordWrap, texto_);
}

}  // namespace utr
