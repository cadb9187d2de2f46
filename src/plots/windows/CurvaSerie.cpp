#include "plots/windows/CurvaSerie.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace utr {
namespace {

constexpr double kGrosor = 1.6;
constexpr double kPuntoSuelto = 2.2;  // radius of a point that no line reaches
constexpr double kCruz = 3.5;         // half the size of the mark of a value that wasn't validated
constexpr int kVelo = 55;             // of the band
constexpr double kBarraMinima = 1.5;
constexpr double kParteDeBarra = 0.8;  // of its lapse that a bar takes

// A direction that went through north goes on at the other end: its line would cross the whole plot.
void PartirEnElNorte(const Serie& serie, std::vector<PasoReducido>& pasos) {
  for (std::size_t i = 1; i < pasos.size(); ++i) {
    if (serie.PasaPorElNorte(pasos[i - 1].ultimo, pasos[i].primero)) pasos[i].sigue = false;
  }
}

// Whether most columns hold several points. Such a line is a row of upright strokes, which are drawn many times faster
// than a line that goes up and down.
bool Tupida(const std::vector<PasoReducido>& pasos) {
  const auto varios =
      std::count_if(pasos.begin(), pasos.end(), [](const auto& paso) { return paso.abajo != paso.arriba; });
  return varios > static_cast<std::ptrdiff_t>(pasos.size() / 2);
}

}  // namespace

CurvaSerie::CurvaSerie(QCPAxis* tiempo, QCPAxis* valores, CanalGrafico canal)
    : QCPAbstractPlottable(tiempo, valores), canal_(std::move(canal)) {
  setSelectable(QCP::stNone);
}

void CurvaSerie::Colorear(const ColoresGrafico& colores, std::size_t cual) {
  colores_ = colores;
  color_ = colores.curvas.at(cual);
}

double CurvaSerie::selectTest(const QPointF&, bool, QVariant*) const {
  return -1;
}

QCPRange CurvaSerie::getKeyRange(bool& foundRange, QCP::SignDomain) const {
  const CifrasSerie& cifras = canal_.serie->Cifras();
  foundRange = cifras.primero.has_value();
  return foundRange ? QCPRange(static_cast<double>(*cifras.primero), static_cast<double>(*cifras.ultimo)) : QCPRange();
}

QCPRange CurvaSerie::getValueRange(bool& foundRange, QCP::SignDomain, const QCPRange& inKeyRange) const {
  foundRange = !canal_.serie->Tramos().empty();
  const Extension extension = ExtensionDe(canal_, {inKeyRange.lower, inKeyRange.upper});
  return {extension.abajo, extension.arriba};
}

void CurvaSerie::draw(QCPPainter* painter) {
  const VentanaTiempo ventana{mKeyAxis->range().lower, mKeyAxis->range().upper};
  if (canal_.serie->EsLluvia()) return DibujarLluvia(*painter, ventana);
  Pasos pasos = Reducir(*canal_.serie, ventana, mKeyAxis->axisRect()->width());
  PartirEnElNorte(*canal_.serie, pasos);
  if (Tupida(pasos)) {
    DibujarTupida(*painter, pasos);
  } else {
    DibujarBanda(*painter, pasos);
    DibujarLinea(*painter, pasos);
  }
  DibujarNoValidados(*painter, pasos);
}

void CurvaSerie::DibujarBanda(QCPPainter& pintor, const Pasos& pasos) const {
  QColor velo = color_;
  velo.setAlpha(kVelo);
  pintor.setPen(Qt::NoPen);
  pintor.setBrush(velo);
  QPolygonF arriba;
  QPolygonF abajo;
  const auto cerrar = [&] {
    std::reverse(abajo.begin(), abajo.end());
    if (arriba.size() > 1) pintor.drawPolygon(arriba + abajo);
    arriba.clear();
    abajo.clear();
  };
  for (const PasoReducido& paso : pasos) {
    if (!paso.sigue || std::isnan(paso.banda_abajo)) cerrar();
    if (std::isnan(paso.banda_abajo)) continue;
    arriba.append(coordsToPixels(paso.momento, paso.banda_arriba));
    abajo.append(coordsToPixels(paso.momento, paso.banda_abajo));
  }
  cerrar();
}

// Upright strokes of a column each, between those of the band, which is costly to draw where it would be hidden. Each
// reaches to the value that the line comes from.
void CurvaSerie::DibujarTupida(QCPPainter& pintor, const Pasos& pasos) const {
  QColor velo = color_;
  velo.setAlpha(kVelo);
  pintor.setAntialiasing(false);
  const auto trazo = [&](double momento, double abajo, double arriba, const QColor& color, double minimo) {
    const QPointF desde = coordsToPixels(momento, arriba);
    const double alto = coordsToPixels(momento, abajo).y() - desde.y();
    pintor.fillRect(QRectF(std::floor(desde.x()), desde.y(), 1, std::max(minimo, alto)), color);
  };
  double antes = 0;
  for (const PasoReducido& paso : pasos) {
    const double de_donde = paso.sigue ? antes : paso.primero;
    const double abajo = std::min(paso.abajo, de_donde);
    const double arriba = std::max(paso.arriba, de_donde);
    if (paso.banda_arriba > arriba) trazo(paso.momento, arriba, paso.banda_arriba, velo, 0);
    if (paso.banda_abajo < abajo) trazo(paso.momento, paso.banda_abajo, abajo, velo, 0);
    trazo(paso.momento, abajo, arriba, color_, 1);
    antes = paso.ultimo;
  }
}

void CurvaSerie::DibujarLinea(QCPPainter& pintor, const Pasos& pasos) const {
  pintor.setPen(QPen(color_, kGrosor, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  pintor.setBrush(color_);
  QPolygonF linea;
  const auto cerrar = [&] {
    if (linea.size() > 1) pintor.drawPolyline(linea);
    if (linea.size() == 1) pintor.drawEllipse(linea.front(), kPuntoSuelto, kPuntoSuelto);
    linea.clear();
  };
  for (const PasoReducido& paso : pasos) {
    if (!paso.sigue) cerrar();
    linea.append(coordsToPixels(paso.momento, paso.primero));
    if (paso.abajo == paso.arriba) continue;
    for (const double valor : {paso.abajo, paso.arriba, paso.ultimo}) linea.append(coordsToPixels(paso.momento, valor));
  }
  cerrar();
}

void CurvaSerie::DibujarLluvia(QCPPainter& pintor, const VentanaTiempo& ventana) const {
  pintor.setPen(Qt::NoPen);
  pintor.setBrush(color_);
  if (const auto segundos = SegundosPorBarra(*canal_.serie, ventana))
    return DibujarSumas(pintor, BarrasDe(*canal_.serie, ventana, *segundos));
  DibujarRegistros(pintor, ventana);
}

void CurvaSerie::DibujarSumas(QCPPainter& pintor, const std::vector<BarraLluvia>& barras) const {
  std::vector<QPointF> no_validados;
  for (const BarraLluvia& barra : barras) {
    const auto hasta = static_cast<double>(barra.hasta);
    DibujarBarra(pintor, static_cast<double>(barra.desde), hasta, barra.suma);
    if (barra.no_validados) no_validados.push_back(coordsToPixels(hasta, barra.suma));
  }
  MarcarNoValidados(pintor, no_validados);
}

// Each ends with its record, and that of the first one beyond the span may reach into it.
void CurvaSerie::DibujarRegistros(QCPPainter& pintor, const VentanaTiempo& ventana) const {
  const Serie& serie = *canal_.serie;
  const double segundos = serie.Minutos().value_or(1) * 60;
  std::vector<QPointF> no_validados;
  for (const TramoSerie& tramo : TramosEn(serie, {ventana.desde, ventana.hasta + segundos})) {
    for (std::size_t i = tramo.desde; i < tramo.hasta; ++i) {
      const auto momento = static_cast<double>(serie.Tiempos()[i]);
      DibujarBarra(pintor, momento - segundos, momento, serie.Valores()[i]);
      if (!serie.Validado(i)) no_validados.push_back(coordsToPixels(momento, serie.Valores()[i]));
    }
  }
  MarcarNoValidados(pintor, no_validados);
}

// From the top, with a little room to the one before.
void CurvaSerie::DibujarBarra(QCPPainter& pintor, double desde, double hasta, double valor) const {
  if (!(valor > 0)) return;
  const QPointF punta = coordsToPixels(hasta, valor);
  const double ancho = std::max(kBarraMinima, (punta.x() - coordsToPixels(desde, valor).x()) * kParteDeBarra);
  pintor.drawRect(
      QRectF(QPointF(punta.x() - ancho, mValueAxis->coordToPixel(0)), QPointF(punta.x(), punta.y())).normalized());
}

void CurvaSerie::DibujarNoValidados(QCPPainter& pintor, const Pasos& pasos) const {
  std::vector<QPointF> puntos;
  for (const PasoReducido& paso : pasos) {
    if (!std::isnan(paso.no_validado)) puntos.push_back(coordsToPixels(paso.momento, paso.no_validado));
  }
  MarcarNoValidados(pintor, puntos);
}

void CurvaSerie::MarcarNoValidados(QCPPainter& pintor, const std::vector<QPointF>& puntos) const {
  pintor.setPen(QPen(colores_.no_validado, kGrosor));
  double anterior = -std::numeric_limits<double>::infinity();  // marks on one another would only blot the curve
  for (const QPointF& punto : puntos) {
    if (std::abs(punto.x() - anterior) < 2 * kCruz) continue;
    anterior = punto.x();
    pintor.drawLine(QLineF(punto - QPointF(kCruz, kCruz), punto + QPointF(kCruz, kCruz)));
    pintor.drawLine(QLineF(punto - QPointF(kCruz, -kCruz), punto + QPointF(kCruz, -kCruz)));
  }
}

void CurvaSerie::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
  painter->setPen(QPen(color_, kGrosor));
  painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}

}  // namespace utr
