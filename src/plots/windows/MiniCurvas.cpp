#include "plots/windows/MiniCurvas.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/Fechas.h"
#include "plots/windows/ColoresGrafico.h"
#include "retrieved/series/TextoSerie.h"
#include "widgets/Accesibilidad.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

using Curva = CurvasInstantaneas::Curva;

constexpr int kMargen = 6;
constexpr int kAnchoMinimo = 220;
constexpr double kPunto = 2.5;  // radius of the last point
constexpr double kSuelto = 1;   // of one that no line reaches

QString Titulo(const Curva& curva) {
  const QString canal = Q(curva.canal);
  return curva.descripcion.empty() || curva.descripcion == "-" ? canal : canal + ' ' + Q(curva.descripcion);
}

QString Ultimo(const Curva& curva) {
  return curva.puntos.empty() ? QStringLiteral("N/D") : Q(TextoValor(curva.puntos.back().valor, curva.unidad));
}

// Draws the stretches of a curve into that rectangle; the right side is the last moment of all.
void DibujarCurva(QPainter& pintor, const Curva& curva, std::int64_t ahora, const QRectF& lugar) {
  double abajo = std::numeric_limits<double>::infinity();
  double arriba = -abajo;
  for (const auto& punto : curva.puntos) {
    abajo = std::fmin(abajo, punto.valor);
    arriba = std::fmax(arriba, punto.valor);
  }
  const auto sitio = [&](const CurvasInstantaneas::Punto& punto) {
    const double atras = static_cast<double>(ahora - punto.momento) / CurvasInstantaneas::kSegundos;
    const double parte = arriba > abajo ? (punto.valor - abajo) / (arriba - abajo) : 0.5;
    return QPointF(lugar.right() - atras * lugar.width(), lugar.bottom() - parte * lugar.height());
  };
  QPolygonF tramo;
  const auto cerrar = [&] {
    if (tramo.size() > 1) pintor.drawPolyline(tramo);
    if (tramo.size() == 1) pintor.drawEllipse(tramo.front(), kSuelto, kSuelto);
    tramo.clear();
  };
  for (const auto& punto : curva.puntos) {
    if (!punto.sigue) cerrar();
    if (!std::isnan(punto.valor)) tramo.append(sitio(punto));
  }
  cerrar();
  if (!std::isnan(curva.puntos.back().valor)) pintor.drawEllipse(sitio(curva.puntos.back()), kPunto, kPunto);
}

}  // namespace

MiniCurvas::MiniCurvas(QWidget* parent) : QWidget(parent) {
  setObjectName("MiniCurvas");
  DarRol(*this, QAccessible::Chart);
  setAccessibleName(QStringLiteral("Valores de la última media hora"));
  setWhatsThis(QStringLiteral(
      "Los valores presentes de la última media hora, un canal por renglón, cada uno en su propia escala."));
}

void MiniCurvas::Agregar(const Tabla& lectura) {
  curvas_.Agregar(lectura);
  Cambiadas();
}

void MiniCurvas::Vaciar() {
  curvas_.Vaciar();
  Cambiadas();
}

void MiniCurvas::Cambiadas() {
  QStringList dichos;
  for (const Curva& curva : curvas_.Curvas()) dichos.append(Titulo(curva) + QStringLiteral(": ") + Ultimo(curva));
  setAccessibleDescription(dichos.join(QStringLiteral("; ")));
  updateGeometry();
  update();
}

int MiniCurvas::AltoRenglon() const {
  return fontMetrics().lineSpacing() * 3 + kMargen;
}

QSize MiniCurvas::minimumSizeHint() const {
  return {kAnchoMinimo, static_cast<int>(std::max<std::size_t>(curvas_.Curvas().size(), 1)) * AltoRenglon()};
}

QSize MiniCurvas::sizeHint() const {
  return minimumSizeHint();
}

void MiniCurvas::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  pintor.setRenderHint(QPainter::Antialiasing);
  const ColoresGrafico colores = ColoresDeGrafico(palette());
  pintor.fillRect(rect(), colores.fondo);
  if (curvas_.Curvas().empty()) {
    pintor.setPen(colores.texto);
    pintor.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, QStringLiteral("Sin valores presentes"));
    return;
  }
  std::int64_t ahora = 0;
  for (const Curva& curva : curvas_.Curvas()) {
    if (!curva.puntos.empty()) ahora = std::max(ahora, curva.puntos.back().momento);
  }
  const int letra = fontMetrics().lineSpacing();
  int y = 0;
  for (const Curva& curva : curvas_.Curvas()) {
    const QRect renglon(kMargen, y, width() - 2 * kMargen, AltoRenglon());
    const QString ultimo = Ultimo(curva);
    pintor.setPen(colores.texto);
    pintor.drawText(renglon.adjusted(0, 2, 0, 0), Qt::AlignRight | Qt::AlignTop, ultimo);
    const int sitio = renglon.width() - fontMetrics().horizontalAdvance(ultimo) - kMargen;
    pintor.drawText(renglon.adjusted(0, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                    fontMetrics().elidedText(Titulo(curva), Qt::ElideRight, sitio));
    if (!curva.puntos.empty()) {
      const QRectF lugar = QRectF(renglon).adjusted(kPunto, letra + 2 * kPunto, -kPunto, -kMargen);
      pintor.setPen(QPen(colores.curvas.front(), 1.5));
      pintor.setBrush(colores.curvas.front());
      DibujarCurva(pintor, curva, ahora, lugar);
    }
    y += AltoRenglon();
    pintor.setPen(colores.reja);
    pintor.drawLine(0, y - 1, width(), y - 1);
  }
}

}  // namespace utr
