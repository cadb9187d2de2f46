#include "widgets/ImpresoraQt.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <optional>

#include "base/Error.h"
#include "base/Texto.h"
#include "widgets/AnchoTexto.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::int32_t kErrorImpresora = 482;
constexpr double kPuntos = 10;          // size of the letter where the page is wide enough
constexpr double kPuntosMinimos = 6;    // below it nobody reads; cells are wrapped instead
constexpr double kEntreColumnas = 1.5;  // in widths of an "n"

using Lineas = std::vector<std::string_view>;

Lineas SepararLineas(std::string_view texto) {
  Lineas lineas = Separar(texto, '\n');
  for (std::string_view& linea : lineas) {
    if (linea.ends_with('\r')) linea.remove_suffix(1);
  }
  return lineas;
}

// Lays the lines out for one font on one device.
class Plana {
 public:
  Plana(const Lineas& lineas, const QFont& letra, QPagedPaintDevice& dispositivo)
      : medidas_(letra, &dispositivo), ancho_(medidas_), espacio_(ancho_("n") * kEntreColumnas) {
    for (const std::string_view linea : lineas) MedirLinea(linea);
  }

  double AnchoTotal() const {
    double total = suelto_;
    double columnas = 0;
    for (const double columna : columnas_) columnas += columna + espacio_;
    return std::max(total, columnas - (columnas_.empty() ? 0 : espacio_));
  }

  // Narrows the widest columns until the whole fits the page; their cells wrap then.
  void Encajar(double pagina) {
    suelto_ = std::min(suelto_, pagina);
    while (!columnas_.empty() && AnchoTotal() > pagina) {
      const auto mayor = std::max_element(columnas_.begin(), columnas_.end());
      *mayor = std::max(1.0, *mayor - std::max(1.0, std::min(*mayor / 10, AnchoTotal() - pagina)));
      if (*mayor <= 1.0) break;
    }
  }

  double Espacio() const { return espacio_; }
  const std::vector<double>& Columnas() const { return columnas_; }
  double AltoLinea() const { return medidas_.height(); }
  double AnchoDe(std::string_view texto) const { return ancho_(texto); }

 private:
  void MedirLinea(std::string_view linea) {
    if (linea.find('\t') == std::string_view::npos) {
      suelto_ = std::max<double>(suelto_, ancho_(linea));
      return;
    }
    const Lineas celdas = Separar(linea, '\t');
    if (celdas.size() > columnas_.size()) columnas_.resize(celdas.size(), 0);
    for (std::size_t i = 0; i < celdas.size(); ++i) {
      columnas_[i] = std::max<double>(columnas_[i], ancho_(celdas[i]));
    }
  }

  QFontMetrics medidas_;
  AnchoTexto ancho_;
  double espacio_;
  double suelto_ = 0;  // the widest line without tabs
  std::vector<double> columnas_;
};

// Draws line after line, going on to a new page when one is full.
class Escritura {
 public:
  Escritura(QPagedPaintDevice& dispositivo, QPainter& pintor, const Plana& plana)
      : dispositivo_(dispositivo), pintor_(pintor), plana_(plana), pagina_(pintor.viewport()) {}

  void Linea(std::string_view linea) {
    const std::vector<QRectF> lugares = Lugares(linea);
    const Lineas celdas = Separar(linea, '\t');
    double alto = plana_.AltoLinea();
    for (std::size_t i = 0; i < celdas.size(); ++i) alto = std::max(alto, AltoDe(celdas[i], lugares[i].width()));
    if (y_ > 0 && y_ + alto > pagina_.height()) {
      dispositivo_.newPage();
      ++paginas_;
      y_ = 0;
    }
    for (std::size_t i = 0; i < celdas.size(); ++i) {
      const QRectF lugar(lugares[i].x(), y_, lugares[i].width() + 1, alto);
      pintor_.drawText(lugar, Opciones(celdas[i], lugares[i].width()), Q(celdas[i]));
    }
    y_ += alto;
  }

  int Paginas() const { return paginas_; }

 private:
  // Where the cells of the line stand; a line without tabs has the page's width.
  std::vector<QRectF> Lugares(std::string_view linea) const {
    if (linea.find('\t') == std::string_view::npos) return {QRectF(0, 0, pagina_.width(), 0)};
    std::vector<QRectF> lugares;
    double x = 0;
    for (const double columna : plana_.Columnas()) {
      lugares.emplace_back(x, 0, columna, 0);
      x += columna + plana_.Espacio();
    }
    return lugares;
  }

  bool Cabe(std::string_view celda, double ancho) const { return plana_.AnchoDe(celda) <= ancho; }

  int Opciones(std::string_view celda, double ancho) const {
    return Cabe(celda, ancho) ? static_cast<int>(Qt::TextSingleLine | Qt::TextDontClip)
                              : static_cast<int>(Qt::TextWrapAnywhere);
  }

  double AltoDe(std::string_view celda, double ancho) const {
    if (Cabe(celda, ancho)) return plana_.AltoLinea();
    return pintor_.boundingRect(QRectF(0, 0, ancho + 1, 1e6), Opciones(celda, ancho), Q(celda)).height();
  }

  QPagedPaintDevice& dispositivo_;
  QPainter& pintor_;
  const Plana& plana_;
  QRectF pagina_;
  double y_ = 0;
  int paginas_ = 1;
};

QFont ConPuntos(QFont letra, double puntos) {
  letra.setPointSizeF(puntos);
  return letra;
}

// The largest size between the two limits at which the lines fit the width.
double PuntosQueCaben(const Lineas& lineas, const QFont& letra, QPagedPaintDevice& dispositivo, double pagina) {
  const double ancho = Plana(lineas, ConPuntos(letra, kPuntos), dispositivo).AnchoTotal();
  if (ancho <= pagina) return kPuntos;
  // A little less than in proportion: widths don't shrink evenly.
  return std::max(kPuntosMinimos, kPuntos * pagina / ancho * 0.97);
}

[[noreturn]] void NoLoToma() {
  throw Error(kErrorImpresora, "Imprimir", "Error de impresora");
}

QFont FuenteDe(LetraImpresion letra) {
  return letra == LetraImpresion::kPareja ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                          : QGuiApplication::font();
}

}  // namespace

int DibujarDocumento(QPagedPaintDevice& dispositivo, std::string_view texto, const QFont& letra) {
  QPainter pintor;
  if (!pintor.begin(&dispositivo)) return 0;
  const Lineas lineas = SepararLineas(texto);
  const double pagina = pintor.viewport().width();
  const QFont elegida = ConPuntos(letra, PuntosQueCaben(lineas, letra, dispositivo, pagina));
  Plana plana(lineas, elegida, dispositivo);
  plana.Encajar(pagina);
  pintor.setFont(elegida);
  Escritura escritura(dispositivo, pintor, plana);
  for (const std::string_view linea : lineas) escritura.Linea(linea);
  return pintor.end() ? escritura.Paginas() : 0;
}

std::vector<std::string> ImpresoraQt::Nombres() {
  std::vector<std::string> nombres;
  for (const QString& nombre : QPrinterInfo::availablePrinterNames()) nombres.push_back(U(nombre));
  return nombres;
}

void ImpresoraQt::Imprimir(std::string_view nombre, std::string_view texto, LetraImpresion letra) {
  Dibujar(nombre, "AdminUTR",
          [&](QPagedPaintDevice& dispositivo) { return DibujarDocumento(dispositivo, texto, FuenteDe(letra)); });
}

void ImpresoraQt::Dibujar(std::string_view nombre, std::string_view titulo, const DibujarPaginas& dibujar) {
  QPrinter impresora(QPrinter::HighResolution);
  impresora.setPrinterName(Q(nombre));
  impresora.setDocName(Q(titulo));
  if (!impresora.isValid() || dibujar(impresora) == 0) NoLoToma();
}

void ImprimirDibujo(Impresora& impresora, std::string_view nombre, std::string_view titulo,
                    const DibujarPaginas& dibujar) {
  auto* con_dibujos = dynamic_cast<ImpresoraDibujos*>(&impresora);
  if (con_dibujos == nullptr) NoLoToma();
  con_dibujos->Dibujar(nombre, titulo, dibujar);
}

}  // namespace utr
