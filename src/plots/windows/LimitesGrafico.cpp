#include "plots/windows/LimitesGrafico.h"

#include <algorithm>

#include "base/Numeros.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kSobreElEje = 3;      // pixels of the words at the foot over the axis
constexpr double kBajoBanderas = 10;   // and of those at the top under the flags of events
constexpr double kAlCostado = 4;       // and from the sides
constexpr int kFondoDePalabras = 200;  // of 255, where they lie over a curve
constexpr double kRenglones = 5;       // of a drawing; in a lower one words would hide the curves

}  // namespace

// Words that lie on no others, as far as there is room.
class LimitesGrafico::Rotulos {
 public:
  Rotulos(QCPPainter& pintor, const QRectF& lugar, const QColor& fondo)
      : pintor_(pintor), lugar_(lugar), fondo_(fondo), alto_(QFontMetricsF(pintor.font()).height()) {}

  const QRectF& Lugar() const { return lugar_; }
  double Alto() const { return alto_; }

  bool Caben() const { return lugar_.height() >= kRenglones * alto_; }

  // At the first of those heights where there is room, on that side before the other; else over what lies at the first.
  void Decir(std::initializer_list<double> alturas, Qt::Alignment lado, const QString& texto, const QColor& color) {
    const Qt::Alignment otro = lado == Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft;
    for (const Qt::Alignment uno : {lado, otro}) {
      for (const double altura : alturas) {
        if (Libre(Sitio(altura, uno, texto))) return Escribir(Sitio(altura, uno, texto), texto, color);
      }
    }
    Apilar(*alturas.begin(), -alto_, texto, color);
  }

  // At the right, from that height on upwards or downwards.
  void Apilar(double altura, double paso, const QString& texto, const QColor& color) {
    while (!Libre(Sitio(altura, Qt::AlignRight, texto)) && altura > lugar_.top() && altura + alto_ < lugar_.bottom())
      altura += paso;
    Escribir(Sitio(altura, Qt::AlignRight, texto), texto, color);
  }

 private:
  QRectF Sitio(double altura, Qt::Alignment lado, const QString& texto) const {
    const double ancho = QFontMetricsF(pintor_.font()).horizontalAdvance(texto);
    const double x = lado == Qt::AlignLeft ? lugar_.left() + kAlCostado : lugar_.right() - kAlCostado - ancho;
    return {x, altura, ancho, alto_};
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
  std::vector<QRectF> tomados_;
};

// Over the curves, which are of the layer ahead of that of the axes.
LimitesGrafico::LimitesGrafico(QCPAxisRect* lugar)
    : QCPLayerable(lugar->parentPlot(), QStringLiteral("axes")), lugar_(lugar) {}

void LimitesGrafico::Poner(const std::vector<CanalGrafico>& canales, const std::vector<QCPAxis*>& ejes) {
  limites_.clear();
  for (std::size_t i = 0; i < canales.size(); ++i) {
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
  Rotulos rotulos(*painter, lugar_->rect(), fondo);
  for (const bool dentro : {true, false}) {
    for (const Limite& uno : limites_) {
      if (uno.eje->range().contains(uno.limite.valor) != dentro) continue;
      if (dentro) DibujarLinea(*painter, uno);
      if (rotulos.Caben()) dentro ? RotularDentro(uno, rotulos) : RotularEnElBorde(uno, rotulos);
    }
  }
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
