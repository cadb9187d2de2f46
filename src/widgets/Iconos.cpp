#include "widgets/Iconos.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "widgets/Temas.h"

// The drawings lie in a static library, so they must be asked for; this can't stand inside a namespace.
static void CargarDibujos() {
  Q_INIT_RESOURCE(iconos);
}

namespace utr {
namespace {

// The colours with which drawings set a part apart, and what they stand for in the theme.
struct Acento {
  const char* dibujado;
  Matiz matiz;
};
constexpr Acento kAcentos[] = {{"#2b8fd6", Matiz::kAcento}, {"#dc5a4e", Matiz::kAlerta}, {"#b57a0a", Matiz::kAviso}};

constexpr const char* kTrazo = "stroke-width=\"1.75\"";
constexpr const char* kTrazoGrueso = "stroke-width=\"2.5\"";
constexpr const char* kTrazoApagado = "stroke-width=\"1.25\" stroke-dasharray=\"1 2.75\"";

QColor ColorDelModo(QIcon::Mode modo, const QPalette& paleta) {
  if (modo == QIcon::Disabled) return paleta.color(QPalette::Disabled, QPalette::ButtonText);
  if (modo == QIcon::Selected) return paleta.color(QPalette::Active, QPalette::HighlightedText);
  return paleta.color(QPalette::Active, QPalette::ButtonText);
}

// Draws an SVG whose "currentColor" is the palette's colour at the time of drawing.
class MotorIcono : public QIconEngine {
 public:
  MotorIcono(QString nombre, QByteArray dibujo) : nombre_(std::move(nombre)), dibujo_(std::move(dibujo)) {}

  void paint(QPainter* pintor, const QRect& lugar, QIcon::Mode modo, QIcon::State) override {
    const QPalette paleta = QApplication::palette();
    QByteArray coloreado = dibujo_;
    const QByteArray color = ColorDelModo(modo, paleta).name().toLatin1();
    coloreado.replace("currentColor", color);
    // On a selection an accent could be the ground itself, and on what is disabled it would look alive.
    const bool de_un_color = modo == QIcon::Selected || modo == QIcon::Disabled;
    for (const auto& [dibujado, matiz] : kAcentos) {
      coloreado.replace(dibujado, de_un_color ? color : ColorDe(matiz, paleta).name().toLatin1());
    }
    if (TemaDe(paleta) == Tema::kExteriores)
      coloreado.replace(kTrazo, modo == QIcon::Disabled ? kTrazoApagado : kTrazoGrueso);
    QSvgRenderer(coloreado).render(pintor, lugar);
  }

  QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State estado) override {
    const QString clave = QStringLiteral("icono/%1/%2x%3/%4/%5/%6")
                              .arg(nombre_)
                              .arg(tamano.width())
                              .arg(tamano.height())
                              .arg(static_cast<int>(modo))
                              .arg(ColorDelModo(modo, QApplication::palette()).name())
                              .arg(static_cast<int>(TemaDe(QApplication::palette())));
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
