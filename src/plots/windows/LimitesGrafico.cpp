#include "plots/windows/LimitesGrafico.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/Numeros.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kSobreElEje = 3;      // pixels of the words at the foot over the axis
constexpr double kBajoBanderas = 10;   // and of those at the top under the flags of events
constexpr double kAlCostado = 4;       // and from the sides
constexpr int kFondoDePalabras = 200;  // of 255, where they lie over a curve
constexpr int kAnchoDePaso = 4;        // pixels of a curve that words keep clear of as one
constexpr double kRenglones = 5;       // of a drawing; in a lower one words would hide the curves

}  // namespace

// Words that lie on no others, as far as there is room.
class LimitesGrafico::Rotulos {
 public:
  Rotulos(QCPPainter& pintor, const QRectF& lugar, const QColor& fondo, std::vector<QRectF> curvas)
      : pintor_(pintor),
        lugar_(lugar),
        fondo_(fondo),
        alto_(QFontMetricsF(pintor.font()).height()),
        curvas_(std::move(curvas)) {}

  const QRectF& Lugar() const { return lugar_; }
  double Alto() const { return alto_; }

  bool Caben() const { return lugar_.height() >= kRenglones * alto_; }

  // At the first of those heights where there is room beside the curves, on that side before the other; else over a
  // curve, else over what lies at the first.
  void Decir(std::initializer_list<double> alturas, Qt::Alignment lado, const QString& texto, const QColor& color) {
    const Qt::Alignment otro = lado == Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft;
    for (const bool sobre_curvas : {false, true}) {
      for (const Qt::Alignment uno : {lado, otro}) {
        for (const double altura : alturas) {
          const QRectF sitio = Sitio(altura, uno, texto);
          if (Libre(sitio) && (sobre_curvas || !HayCurva(sitio))) return Escribir(sitio, texto, color);
        }
      }
    }
    Apilar(*alturas.begin(), -alto_, texto, color);
  }

  // From that height on upwards or downwards: at the right, or at the left where only that is clear of the curves.
  void Apilar(double altura, double paso, const QString& texto, const QColor& color) {
    const QRectF derecha = Pila(altura, paso, Qt::AlignRight, texto);
    const QRectF izquierda = Pila(altura, paso, Qt::AlignLeft, texto);
    Escribir(HayCurva(derecha) && !HayCurva(izquierda) ? izquierda : derecha, texto, color);
  }

 private:
  QRectF Sitio(double altura, Qt::Alignment lado, const QString& texto) const {
    const double ancho = QFontMetricsF(pintor_.font()).horizontalAdvance(texto);
    const double x = lado == Qt::AlignLeft ? lugar_.left() + kAlCostado : lugar_.right() - kAlCostado - ancho;
    return {x, altura, ancho, alto_};
  }
  QRectF Pila(double altura, double paso, Qt::Alignment lado, const QString& texto) const {
    while (!Libre(Sitio(altura, lado, texto)) && altura > lugar_.top() && altura + alto_ < lugar_.bottom())
      altura += paso;
    return Sitio(altura, lado, texto);
  }
  bool HayCurva(const QRectF& sitio) const {
    return std::any_of(curvas_.begin(), curvas_.end(), [&](const QRectF& tramo) { return tramo.intersects(sitio); });
  }
  bool Libre(const QRectF& sitio) const {
    return std::none_of(tomados_.begin(), tomados_.end(),
                        [&](const QRectF& otro) { return otro.adjusted(0, 1, 0, -1).intersects(sitio); });
  }
  void Escribir(const QRectF& sitio, const QString& texto, const QColor& color) {
    tomados_.push_back(sitio);
    pintor_.fillRect(sitio, fondo_);
    pintor_.setPen(color);
    pintor_.drawText(sitio, Qt::AlignLeft | Qt::TextDontClip, texto);
  }

  QCPPainter& pintor_;
  QRectF lugar_;
  QColor fondo_;
  double alto_;
  std::vector<QRectF> curvas_;
  std::vector<QRectF> tomados_;
};

// Over the curves, which are of the layer ahead of that of the axes.
LimitesGrafico::LimitesGrafico(QCPAxisRect* lugar)
    : QCPLayerable(lugar->parentPlot(), QStringLiteral("axes")), lugar_(lugar) {}

void LimitesGrafico::Poner(const std::vector<CanalGrafico>& canales, const std::vector<QCPAxis*>& ejes) {
  limites_.clear();
  series_.clear();
  for (std::size_t i = 0; i < canales.size(); ++i) {
    series_.emplace_back(canales[i].serie, ejes.at(i));
    for (const LimiteSerie& limite : canales[i].limites) {
      const QString palabra = QString::fromUtf8(limite.palabra);
      limites_.push_back(
          {limite, ejes.at(i),
           QStringLiteral("%1 %2 %3").arg(Q(canales[i].serie->Canal()), palabra, Q(TextoGeneral(limite.valor)))});
    }
  }
}

QColor LimitesGrafico::ColorDeLimite(const Limite& uno) const {
  return uno.limite.clase == ClaseLimite::kAlarma ? colores_.alarma : colores_.validacion;
}

void LimitesGrafico::draw(QCPPainter* painter) {
  if (limites_.empty()) return;
  painter->setFont(limites_.front().eje->tickLabelFont());
  QColor fondo = colores_.fondo;
  fondo.setAlpha(kFondoDePalabras);
  Rotulos rotulos(*painter, lugar_->rect(), fondo, Curvas());
  for (const bool dentro : {true, false}) {
    for (const Limite& uno : limites_) {
      if (uno.eje->range().contains(uno.limite.valor) != dentro) continue;
      if (dentro) DibujarLinea(*painter, uno);
      if (rotulos.Caben()) dentro ? RotularDentro(uno, rotulos) : RotularEnElBorde(uno, rotulos);
    }
  }
}

// Where lines and bands lie, in steps of a few pixels.
std::vector<QRectF> LimitesGrafico::Curvas() const {
  const QCPAxis* tiempo = lugar_->axis(QCPAxis::atBottom);
  const VentanaTiempo ventana{tiempo->range().lower, tiempo->range().upper};
  std::vector<QRectF> curvas;
  for (const auto& [serie, valores] : series_) {
    QPointF desde;  // where the line to the next one begins
    for (const PasoReducido& paso : Reducir(*serie, ventana, std::max(1, lugar_->width() / kAnchoDePaso))) {
      const bool banda = std::isfinite(paso.banda_abajo) && std::isfinite(paso.banda_arriba);
      const double x = tiempo->coordToPixel(paso.momento);
      const double abajo = valores->coordToPixel(banda ? paso.banda_abajo : paso.abajo);
      const double arriba = valores->coordToPixel(banda ? paso.banda_arriba : paso.arriba);
      curvas.push_back(QRectF(QPointF(x - kAnchoDePaso, arriba), QPointF(x + kAnchoDePaso, abajo)).normalized());
      const QPointF fin(x, valores->coordToPixel(paso.primero));
      if (paso.sigue) {
        const double pendiente = (fin.y() - desde.y()) / (fin.x() - desde.x());
        for (double lugar = desde.x(); lugar < fin.x(); lugar += kAnchoDePaso) {
          const double y = desde.y() + pendiente * (lugar - desde.x());
          curvas.push_back(QRectF(lugar, y, kAnchoDePaso, pendiente * kAnchoDePaso).normalized());
        }
      }
      desde = QPointF(x, valores->coordToPixel(paso.ultimo));
    }
  }
  for (QRectF& tramo : curvas) tramo.adjust(0, -1, 0, 1);  // a level stretch is a line, which has a width
  return curvas;
}

void LimitesGrafico::DibujarLinea(QCPPainter& pintor, const Limite& uno) const {
  const double y = uno.eje->coordToPixel(uno.limite.valor);
  pintor.setPen(QPen(ColorDeLimite(uno), 1, uno.limite.clase == ClaseLimite::kAlarma ? Qt::DashLine : Qt::DotLine));
  pintor.drawLine(QLineF(lugar_->left(), y, lugar_->right(), y));
}

void LimitesGrafico::RotularDentro(const Limite& uno, Rotulos& rotulos) const {
  const Qt::Alignment lado = uno.limite.clase == ClaseLimite::kAlarma ? Qt::AlignLeft : Qt::AlignRight;
  const QColor color = ColorDeLimite(uno);
  const double debajo = uno.eje->coordToPixel(uno.limite.valor);
  const double encima = debajo - rotulos.Alto();
  if (encima < rotulos.Lugar().top() + kBajoBanderas) return rotulos.Decir({debajo}, lado, uno.texto, color);
  if (debajo + rotulos.Alto() > rotulos.Lugar().bottom()) return rotulos.Decir({encima}, lado, uno.texto, color);
  rotulos.Decir({encima, debajo}, lado, uno.texto, color);
}

void LimitesGrafico::RotularEnElBorde(const Limite& uno, Rotulos& rotulos) const {
  const bool arriba = (uno.limite.valor > uno.eje->range().upper) != uno.eje->rangeReversed();
  const QString texto = (arriba ? QStringLiteral("▲ ") : QStringLiteral("▼ ")) + uno.texto;
  const double alto = rotulos.Alto();
  arriba ? rotulos.Apilar(rotulos.Lugar().top() + kBajoBanderas, alto, texto, ColorDeLimite(uno))
         : rotulos.Apilar(rotulos.Lugar().bottom() - kSobreElEje - alto, -alto, texto, ColorDeLimite(uno));
}

}  // namespace utr
