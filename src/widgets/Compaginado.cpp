#include "widgets/Compaginado.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextOption>
#include <algorithm>
#include <cmath>

#include "base/Texto.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kCasiNada = 0.5;     // of a dot
constexpr double kPuntos = 10;        // size of the letter where the page is wide enough
constexpr double kPuntosMinimos = 6;  // below it nobody reads; cells are wrapped instead
constexpr double kPuntosPie = 8;
constexpr double kEntreColumnas = 1.5;  // in widths of an "n"
constexpr double kAltoPie = 2.2;        // in lines
constexpr std::size_t kLineasPorPaso = 2000;
constexpr double kPuntosPorPulgada = 72;

// In dots of the device, so that a painter of any other resolution draws the same.
QFont ConPuntos(QFont letra, double puntos, double por_pulgada) {
  letra.setPixelSize(std::max(1, static_cast<int>(std::floor(puntos * por_pulgada / kPuntosPorPulgada))));
  return letra;
}

}  // namespace

Compaginado::Compaginado(const DocumentoImpreso& documento, const QPagedPaintDevice& dispositivo, const QFont& letra,
                         Progreso& progreso)
    : documento_(documento),
      area_(0, 0, dispositivo.width(), dispositivo.height()),
      puntos_por_pulgada_(dispositivo.logicalDpiY()),
      letra_(letra),
      ancho_(QFontMetrics(letra)) {
  lineas_ = Separar(documento.texto, '\n');
  for (std::string_view& linea : lineas_) {
    if (linea.ends_with('\r')) linea.remove_suffix(1);
  }
  if (!Medir(progreso)) return;
  Encajar();
  if (!Paginar(progreso)) comienzos_.clear();
}

Compaginado::Lineas Compaginado::Celdas(std::string_view linea) {
  return Separar(linea, '\t');
}

// --- Widths ----------------------------------------------------------------------------------------------------------

double Compaginado::Medidas::Total() const {
  double total = 0;
  for (const double columna : columnas) total += columna + espacio;
  return std::max(suelto, total - (columnas.empty() ? 0 : espacio));
}

void Compaginado::FijarLetra(double puntos) {
  letra_ = ConPuntos(letra_, puntos, puntos_por_pulgada_);
  ancho_ = AnchoTexto(QFontMetrics(letra_));
  alto_linea_ = QFontMetricsF(letra_).height();
  medidas_.espacio = ancho_("n") * kEntreColumnas;
}

void Compaginado::MedirLinea(std::string_view linea) {
  if (linea.find('\t') == std::string_view::npos) {
    medidas_.suelto = std::max<double>(medidas_.suelto, ancho_(linea));
    return;
  }
  const Lineas celdas = Celdas(linea);
  if (celdas.size() > medidas_.columnas.size()) medidas_.columnas.resize(celdas.size(), 0);
  for (std::size_t i = 0; i < celdas.size(); ++i)
    medidas_.columnas[i] = std::max<double>(medidas_.columnas[i], ancho_(celdas[i]));
}

// The widths in the common size; where that is too wide for the page, they shrink in proportion with the letter.
bool Compaginado::Medir(Progreso& progreso) {
  progreso.Texto("Preparando las páginas...");
  progreso.Rango(static_cast<std::int64_t>(lineas_.size()));
  FijarLetra(kPuntos);
  for (std::size_t i = 0; i < lineas_.size(); ++i) {
    if (i % kLineasPorPaso == 0) {
      progreso.Posicion(static_cast<std::int64_t>(i));
      if (progreso.Cancelado()) return false;
    }
    MedirLinea(lineas_[i]);
  }
  return true;
}

// Finds the largest size between the two limits at which the lines fit the width, and where even the smallest doesn't
// do, narrows the widest columns until they fit; their cells wrap then.
void Compaginado::Encajar() {
  const double pagina = area_.width();
  if (medidas_.Total() > pagina) {
    // A little less than in proportion: widths don't shrink evenly.
    const double razon = std::max(kPuntosMinimos / kPuntos, pagina / medidas_.Total() * 0.97);
    FijarLetra(kPuntos * razon);
    const double holgura = std::min(1.0, razon * 1.03);
    for (double& columna : medidas_.columnas) columna = std::ceil(columna * holgura);
    medidas_.suelto *= holgura;
  }
  todo_cabe_ = medidas_.Total() <= pagina;
  medidas_.suelto = std::min(medidas_.suelto, pagina);
  while (!medidas_.columnas.empty() && medidas_.Total() > pagina) {
    const auto mayor = std::max_element(medidas_.columnas.begin(), medidas_.columnas.end());
    *mayor = std::max(1.0, *mayor - std::max(1.0, std::min(*mayor / 10, medidas_.Total() - pagina)));
    if (*mayor <= 1.0) break;
  }
}

double Compaginado::AnchoDeCelda(std::size_t columna, bool con_columnas) const {
  return con_columnas ? medidas_.columnas[columna] : area_.width();
}

// --- Pages -----------------------------------------------------------------------------------------------------------

double Compaginado::AltoDeCelda(std::string_view celda, double ancho) const {
  if (ancho_(celda) <= ancho) return alto_linea_;
  const QRectF lugar(0, 0, ancho + 1, 1e6);
  return QFontMetricsF(letra_).boundingRect(lugar, Qt::TextWrapAnywhere, Q(celda)).height();
}

double Compaginado::AltoDe(std::string_view linea) const {
  if (todo_cabe_) return alto_linea_;
  const Lineas celdas = Celdas(linea);
  double alto = alto_linea_;
  for (std::size_t i = 0; i < celdas.size(); ++i)
    alto = std::max(alto, AltoDeCelda(celdas[i], AnchoDeCelda(i, celdas.size() > 1)));
  return alto;
}

double Compaginado::AltoUtil() const {
  return area_.height() - kAltoPie * alto_linea_;
}

// As much of a height as whole rows of letters take, one at least.
double Compaginado::Renglones(double alto) const {
  return std::max(1.0, std::floor(alto / alto_linea_)) * alto_linea_;
}

bool Compaginado::Paginar(Progreso& progreso) {
  const double util = AltoUtil();
  alto_titulos_ = documento_.titulos ? AltoDe(lineas_[*documento_.titulos]) : 0;
  double y = 0;
  for (std::size_t i = 0; i < lineas_.size(); ++i) {
    if (i % kLineasPorPaso == 0) {
      progreso.Posicion(static_cast<std::int64_t>(i));
      progreso.Texto("Páginas contadas: " + std::to_string(comienzos_.size()));
      if (progreso.Cancelado()) return false;
    }
    double alto = AltoDe(lineas_[i]);
    double saltado = 0;
    while (comienzos_.empty() || y + alto - saltado > util) {
      // What is higher than a page goes on at the next one, between two of its rows.
      const bool ya_empezada = !comienzos_.empty() && comienzos_.back().linea == i;
      if (ya_empezada) saltado += Renglones(util - y);
      comienzos_.push_back({i, saltado});
      y = Repite(i) ? alto_titulos_ : 0;
      if (y + alto - saltado <= util) break;
    }
    y += alto - saltado;
  }
  return true;
}

// --- Drawing ---------------------------------------------------------------------------------------------------------

void Compaginado::Dibujar(QPainter& pintor, int pagina) const {
  const auto cual = static_cast<std::size_t>(pagina);
  const Comienzo& desde = comienzos_[cual];
  const bool ultima = cual + 1 == comienzos_.size();
  const std::size_t hasta =
      ultima ? lineas_.size() : comienzos_[cual + 1].linea + (comienzos_[cual + 1].saltado > 0 ? 1 : 0);
  pintor.setFont(letra_);
  pintor.setPen(Qt::black);
  double y = 0;
  if (Repite(desde.linea)) y += DibujarLinea(pintor, *documento_.titulos, y);
  for (std::size_t i = desde.linea; i < hasta; ++i) {
    const double saltado = i == desde.linea ? desde.saltado : 0;
    const double resta = AltoDe(lineas_[i]) - saltado;
    const double sitio = AltoUtil() - y;
    const double parte = resta > sitio + kCasiNada ? Renglones(sitio) : resta;
    pintor.save();
    if (saltado > 0 || parte < resta) pintor.setClipRect(QRectF(0, y, area_.width(), parte));
    DibujarLinea(pintor, i, y - saltado);
    pintor.restore();
    y += parte;
  }
  DibujarPie(pintor, pagina);
}

double Compaginado::DibujarLinea(QPainter& pintor, std::size_t linea, double y) const {
  const Lineas celdas = Celdas(lineas_[linea]);
  const bool con_columnas = celdas.size() > 1;
  const bool de_lista = documento_.titulos && linea >= *documento_.titulos;
  const double alto = AltoDe(lineas_[linea]);
  double x = 0;
  for (std::size_t i = 0; i < celdas.size(); ++i) {
    const double ancho = AnchoDeCelda(i, con_columnas);
    const bool cabe = todo_cabe_ || ancho_(celdas[i]) <= ancho;
    const bool derecha = de_lista && con_columnas && i < documento_.numericas.size() && documento_.numericas[i];
    const int lado = static_cast<int>(derecha ? Qt::AlignRight : Qt::AlignLeft);
    const int modo =
        cabe ? static_cast<int>(Qt::TextSingleLine | Qt::TextDontClip) : static_cast<int>(Qt::TextWrapAnywhere);
    const std::string_view texto = derecha ? Recortar(celdas[i]) : celdas[i];
    if (!texto.empty()) pintor.drawText(QRectF(x, y, ancho + 1, alto), lado | modo, Q(texto));
    x += ancho + medidas_.espacio;
  }
  if (documento_.titulos && linea == *documento_.titulos) {
    pintor.setPen(QPen(Qt::gray, std::max(1.0, alto_linea_ / 24)));
    pintor.drawLine(QPointF(0, y + alto), QPointF(area_.width(), y + alto));
    pintor.setPen(Qt::black);
  }
  return alto;
}

void Compaginado::DibujarPie(QPainter& pintor, int pagina) const {
  const QFont chica = ConPuntos(letra_, kPuntosPie, puntos_por_pulgada_);
  const QFontMetricsF medidas(chica);
  const QString numero = QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(Paginas());
  const QRectF lugar(0, area_.height() - medidas.height(), area_.width(), medidas.height());
  const double resto = area_.width() - medidas.horizontalAdvance(numero) - 2 * medidas.averageCharWidth();
  pintor.setFont(chica);
  pintor.drawText(lugar, Qt::AlignLeft | Qt::TextSingleLine,
                  medidas.elidedText(Q(documento_.pie), Qt::ElideRight, resto));
  pintor.drawText(lugar, Qt::AlignRight | Qt::TextSingleLine, numero);
  pintor.setFont(letra_);
}

}  // namespace utr
