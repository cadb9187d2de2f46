#include "widgets/Iconos.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// The drawings lie in a static library, so they must be asked for; this can't stand inside a namespace.
static void CargarDibujos() {
  Q_INIT_RESOURCE(iconos);
}

namespace utr {
namespace {

// The colours with which drawings set a part apart. On a selection they could be the ground itself.
constexpr const char* kAcentos[] = {"#2b8fd6", "#dc5a4e"};

QColor ColorDe(QIcon::Mode modo) {
  const QPalette paleta = QApplication::palette();
  if (modo == QIcon::Disabled) return paleta.color(QPalette::Disabled, QPalette::ButtonText);
  if (modo == QIcon::Selected) return paleta.color(QPalette::HighlightedText);
  return paleta.color(QPalette::ButtonText);
}

// Draws an SVG whose "currentColor" is the palette's colour at the time of drawing.
class MotorIcono : public QIconEngine {
 public:
  MotorIcono(QString nombre, QByteArray dibujo) : nombre_(std::move(nombre)), dibujo_(std::move(dibujo)) {}

  void paint(QPainter* pintor, const QRect& lugar, QIcon::Mode modo, QIcon::State) override {
    QByteArray coloreado = dibujo_;
    const QByteArray color = ColorDe(modo).name().toLatin1();
    coloreado.replace("currentColor", color);
    if (modo == QIcon::Selected) {
      for (const char* acento : kAcentos) coloreado.replace(acento, color);
    }
    QSvgRenderer dibujante(coloreado);
    // Accents that the drawing colours itself must fade too.
    if (modo == QIcon::Disabled) pintor->setOpacity(pintor->opacity() * 0.6);
    dibujante.render(pintor, lugar);
  }

  QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State estado) override {
    const QString clave = QStringLiteral("icono/%1/%2x%3/%4/%5")
                              .arg(nombre_)
                              .arg(tamano.width())
                              .arg(tamano.height())
                              .arg(static_cast<int>(modo))
                              .arg(ColorDe(modo).name());
    QPixmap imagen;
    if (QPixmapCache::find(clave, &imagen)) return imagen;
    imagen = QPixmap(tamano);
    imagen.fill(Qt::transparent);
    QPainter pintor(&imagen);
    pintor.setRenderHint(QPainter::Antialiasing);
    paint(&pintor, QRect(QPoint(0, 0), tamano), modo, estado);
    pintor.end();
    QPixmapCache::insert(clave, imagen);
    return imagen;
  }

  QSize actualSize(const QSize& tamano, QIcon::Mode, QIcon::State) override { return tamano; }
  bool isNull() override { return dibujo_.isEmpty(); }
  QString key() const override { return QStringLiteral("utr"); }
  QIconEngine* clone() const override { return new MotorIcono(nombre_, dibujo_); }

 private:
  QString nombre_;
  QByteArray dibujo_;
};

}  // namespace

QIcon IconoDe(const char* nombre) {
  [[maybe_unused]] static const bool cargados = (CargarDibujos(), true);
  const QString texto = QString::fromLatin1(nombre);
  QFile archivo(QStringLiteral(":/iconos/%1.svg").arg(texto));
  if (!archivo.open(QIODevice::ReadOnly)) return {};
  return QIcon(new MotorIcono(texto, archivo.readAll()));
}

}  // namespace utr
