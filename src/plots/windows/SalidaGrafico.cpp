#include "plots/windows/SalidaGrafico.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPicture>
#include <algorithm>
#include <memory>
#include <ostream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "plots/windows/Hidrograma.h"
#include "widgets/ImpresoraDibujos.h"
#include "widgets/Temas.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kAnchoDibujo = 1000;  // pixels across, whatever the paper: letters keep their proportion
constexpr QSize kImagen(1600, 1000);
constexpr int kPuntosPorPulgada = 300;
constexpr double kEntreRenglones = 1.25;

[[noreturn]] void NoSePuedeDibujar() {
  throw Error(error::kArchivo, "GuardarGrafico", "No se pudo dibujar el gráfico");
}

// The span that was asked for, and what is in sight of it.
QString PeriodoDe(const ContenidoGrafico& contenido) {
  const auto todo = TodoElTiempo(contenido);
  if (!contenido.ventana || !todo) return contenido.periodo;
  QString a_la_vista =
      TextoVentana({std::max(contenido.ventana->desde, todo->desde), std::min(contenido.ventana->hasta, todo->hasta)});
  if (contenido.periodo.isEmpty()) return a_la_vista;
  return contenido.periodo + QStringLiteral("    A la vista: ") + a_la_vista;
}

QByteArray ComoPdf(const ContenidoGrafico& contenido) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QPdfWriter escritor(&bytes);
  escritor.setTitle(contenido.titulo);
  escritor.setCreator(QStringLiteral("AdminUTR"));
  escritor.setResolution(kPuntosPorPulgada);
  escritor.setPageSize(QPageSize(QPageSize::A4));
  escritor.setPageOrientation(QPageLayout::Landscape);
  escritor.setPageMargins({15, 15, 15, 15}, QPageLayout::Millimeter);
  QPainter pintor;
  if (!pintor.begin(&escritor)) NoSePuedeDibujar();
  PintarLamina(contenido, pintor, pintor.viewport());
  if (!pintor.end() || bytes.data().isEmpty()) NoSePuedeDibujar();
  return bytes.data();
}

QByteArray ComoPng(const ContenidoGrafico& contenido) {
  QImage imagen(kImagen, QImage::Format_RGB32);
  imagen.fill(Qt::white);
  QPainter pintor;
  if (!pintor.begin(&imagen)) NoSePuedeDibujar();
  pintor.setRenderHint(QPainter::Antialiasing);
  PintarLamina(contenido, pintor, QRectF(QPointF(0, 0), kImagen).adjusted(30, 30, -30, -30));
  pintor.end();
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  if (!imagen.save(&bytes, "PNG")) NoSePuedeDibujar();
  return bytes.data();
}

}  // namespace

void PintarGrafico(const ContenidoGrafico& contenido, QPainter& pintor, const QRectF& lugar) {
  Hidrograma hidrograma;
  hidrograma.setPalette(PaletaDe(Tema::kClaro));
  hidrograma.Mostrar(contenido);
  const double escala = lugar.width() / kAnchoDibujo;
  const QSize tamano(static_cast<int>(kAnchoDibujo), static_cast<int>(lugar.height() / escala));
  QPicture dibujo = hidrograma.Dibujo(tamano);
  pintor.save();
  pintor.translate(lugar.topLeft());
  // A picture that is played grows with the resolution of the device by itself.
  const double propia = escala * dibujo.logicalDpiX() / pintor.device()->logicalDpiX();
  pintor.scale(propia, propia);
  dibujo.play(&pintor);
  pintor.restore();
}

void PintarLamina(const ContenidoGrafico& contenido, QPainter& pintor, const QRectF& lugar) {
  const double escala = lugar.width() / kAnchoDibujo;
  double y = lugar.top();
  const auto renglon = [&](const QString& texto, int pixeles, bool negrita) {
    if (texto.isEmpty()) return;
    QFont letra = QGuiApplication::font();
    letra.setPixelSize(std::max(1, static_cast<int>(pixeles * escala)));
    letra.setBold(negrita);
    pintor.setFont(letra);
    const double alto = pixeles * escala * kEntreRenglones;
    pintor.drawText(QRectF(lugar.left(), y, lugar.width(), alto), Qt::AlignLeft | Qt::AlignVCenter, texto);
    y += alto;
  };
  pintor.save();
  pintor.setPen(Qt::black);
  renglon(contenido.titulo, 18, true);
  renglon(contenido.estacion, 13, false);
  renglon(PeriodoDe(contenido), 13, false);
  pintor.restore();
  y += 8 * escala;
  PintarGrafico(contenido, pintor, QRectF(lugar.left(), y, lugar.width(), lugar.bottom() - y));
}

void GuardarGrafico(const ContenidoGrafico& contenido, const std::filesystem::path& ruta) {
  const bool imagen = Q(ruta.string()).endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
  const QByteArray bytes = imagen ? ComoPng(contenido) : ComoPdf(contenido);
  EscribirEntero(ruta, [&](std::ostream& salida) { salida.write(bytes.constData(), bytes.size()); });
}

void ImprimirGrafico(const ContenidoGrafico& contenido, Impresora& impresora, const EleccionImpresora& eleccion,
                     Progreso& progreso) {
  const auto dibujar = [&contenido](QPagedPaintDevice& dispositivo, QPainter& pintor, Progreso& como_va) {
    como_va.Texto("Página 1 de 1");
    if (como_va.Cancelado() || !pintor.begin(&dispositivo)) return 0;
    PintarLamina(contenido, pintor, pintor.viewport());
    return 1;
  };
  ImprimirDibujo(impresora, eleccion, U(contenido.titulo), dibujar, progreso);
}

GraficoVisto VistoDe(ContenidoGrafico contenido) {
  const auto suyo = std::make_shared<const ContenidoGrafico>(std::move(contenido));
  const QString de_quien = suyo->de_archivo ? QStringLiteral(" (puede ser de otra estación)") : QString();
  return {suyo->titulo, suyo->estacion + de_quien, PeriodoDe(*suyo),
          [suyo](QPainter& pintor, const QRectF& lugar) { PintarGrafico(*suyo, pintor, lugar); }};
}

}  // namespace utr
