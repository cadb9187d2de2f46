#include "session/windows/InformeVisita.h"

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <algorithm>
#include <array>

#include "base/Texto.h"
#include "session/SituacionDelEnlace.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr double kPuntos = 9;
constexpr double kPuntosTitulo = 15;
constexpr double kMilimetrosPie = 8;
constexpr double kPorPulgada = 25.4;
constexpr double kMilimetrosSobreFuente = 1;
constexpr int kFigurasPorPagina = 2;
constexpr double kDePantalla = 96;  // points to the inch of the lengths in a document
constexpr double kPuntosPorCelda = 3;
constexpr double kPuntosTrasTitulo = 6;
constexpr double kPuntosTrasEncabezado = 10;
constexpr double kPuntosDeBorde = 1;

// What reached no unit of the field says so itself: the lines of a day are read one by one.
std::string Que(const Asiento& asiento) {
  return EsDePractica(asiento.unidad) ? "[" + asiento.unidad + "] " + asiento.comando : asiento.comando;
}

// The entries are of one day, unless they come from a file of elsewhere.
bool DeUnDia(const std::vector<Asiento>& asientos) {
  return std::all_of(asientos.begin(), asientos.end(), [&](const Asiento& uno) {
    return DiasDesde1970(uno.momento) == DiasDesde1970(asientos.front().momento);
  });
}

bool DeUnaEstacion(const std::vector<Asiento>& asientos) {
  return std::all_of(asientos.begin(), asientos.end(),
                     [&](const Asiento& uno) { return uno.estacion == asientos.front().estacion; });
}

struct ColumnaInforme {
  const char* titulo;
  double ancho;  // of a hundred
  std::string (*texto)(const Asiento& asiento);
};
constexpr std::array<ColumnaInforme, 5> kColumnas{{
    {"Hora", 10, [](const Asiento& a) { return TextoHora(a.momento); }},
    {"Qué", 27, Que},
    {"Antes", 18, [](const Asiento& a) { return a.antes; }},
    {"Después", 21, [](const Asiento& a) { return a.escrito; }},
    {"Resultado", 24, [](const Asiento& a) { return a.resultado; }},
}};

const char* TituloDe(const std::vector<Asiento>& asientos) {
  const auto de_practica =
      std::count_if(asientos.begin(), asientos.end(), [](const Asiento& a) { return EsDePractica(a.unidad); });
  if (de_practica == 0) return "Informe de la visita";
  return de_practica == std::ssize(asientos) ? "Informe de una visita de práctica"
                                             : "Informe de la visita, con asientos de práctica";
}

// "real, simulada", in the order in which they came.
std::string UnidadesDe(const std::vector<Asiento>& asientos) {
  std::vector<std::string> unidades;
  for (const Asiento& asiento : asientos) {
    const std::string unidad = asiento.unidad.empty() ? "-" : asiento.unidad;
    if (std::find(unidades.begin(), unidades.end(), unidad) == unidades.end()) unidades.push_back(unidad);
  }
  return Unir(unidades, ", ");
}

QTextCharFormat Letra(double puntos, bool negrita) {
  QTextCharFormat formato;
  formato.setFontPointSize(puntos);
  formato.setFontWeight(negrita ? QFont::Bold : QFont::Normal);
  formato.setForeground(Qt::black);
  return formato;
}

// Lays out and draws one report on one device.
class Plana {
 public:
  Plana(QPagedPaintDevice& dispositivo, QPainter& pintor, const InformeVisita& informe, Progreso& progreso)
      : dispositivo_(dispositivo),
        pintor_(pintor),
        informe_(informe),
        progreso_(progreso),
        de_un_dia_(DeUnDia(informe.asientos)),
        de_una_estacion_(DeUnaEstacion(informe.asientos)),
        por_milimetro_(pintor.device()->logicalDpiY() / kPorPulgada),
        hoja_(pintor.viewport()),
        util_(hoja_.adjusted(0, 0, 0, -kMilimetrosPie * por_milimetro_)) {
    Armar();
  }

  // The number of pages; 0 once it is cancelled.
  int Dibujar() {
    const int de_texto = texto_.pageCount();
    const int figuras = static_cast<int>(informe_.figuras.size());
    paginas_ = de_texto + (figuras + kFigurasPorPagina - 1) / kFigurasPorPagina;
    progreso_.Rango(paginas_);
    for (int i = 0; i < de_texto; ++i) {
      if (!Empezar()) return 0;
      DibujarTexto(i);
    }
    for (int i = 0; i < figuras; ++i) {
      if (i % kFigurasPorPagina == 0 && !Empezar()) return 0;
      DibujarFigura(informe_.figuras[static_cast<std::size_t>(i)], i % kFigurasPorPagina);
    }
    return paginas_;
  }

 private:
  void Armar() {
    texto_.documentLayout()->setPaintDevice(pintor_.device());
    texto_.setDocumentMargin(0);
    QFont letra = texto_.defaultFont();
    letra.setPointSizeF(kPuntos);
    texto_.setDefaultFont(letra);
    QTextOption opcion;
    opcion.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    texto_.setDefaultTextOption(opcion);
    texto_.setPageSize(util_.size());
    QTextCursor cursor(&texto_);
    cursor.beginEditBlock();  // laid out once, not at each cell
    Encabezado(cursor);
    Asientos(cursor);
    cursor.endEditBlock();
  }

  static void Linea(QTextCursor& cursor, const char* rotulo, const std::string& valor) {
    if (!cursor.atStart()) cursor.insertBlock(QTextBlockFormat());
    cursor.insertText(QString::fromUtf8(rotulo), Letra(kPuntos, true));
    cursor.insertText(Q(valor), Letra(kPuntos, false));
  }

  void Encabezado(QTextCursor& cursor) const {
    cursor.insertText(QString::fromUtf8(TituloDe(informe_.asientos)), Letra(kPuntosTitulo, true));
    QTextBlockFormat del_titulo;
    del_titulo.setBottomMargin(kPuntosTrasTitulo);
    cursor.setBlockFormat(del_titulo);
    Linea(cursor, "Estación: ", informe_.estacion);
    if (!informe_.asientos.empty()) Linea(cursor, "Unidad: ", UnidadesDe(informe_.asientos));
    Linea(cursor, "Día: ", informe_.dia);
    Linea(cursor, "Operador: ", informe_.datos.operador.empty() ? "-" : informe_.datos.operador);
    if (!informe_.datos.notas.empty()) Linea(cursor, "Notas: ", informe_.datos.notas);
    cursor.insertBlock();
  }

  // Of a hundred. A date takes more room than a time, at the cost of its neighbour.
  double ParteDe(const ColumnaInforme& columna) const {
    constexpr double kPorLaFecha = 3;
    if (de_un_dia_ || &columna > &kColumnas[1]) return columna.ancho;
    return &columna == kColumnas.data() ? columna.ancho + kPorLaFecha : columna.ancho - kPorLaFecha;
  }

  std::string Celda(const ColumnaInforme& columna, const Asiento& asiento) const {
    if (&columna == &kColumnas[0] && !de_un_dia_) return TextoFechaHora(asiento.momento);
    if (&columna == &kColumnas[1] && !de_una_estacion_)
      return "Estación " + std::to_string(asiento.estacion) + ": " + Que(asiento);
    return columna.texto(asiento);
  }

  void Asientos(QTextCursor& cursor) const {
    if (informe_.asientos.empty()) return Linea(cursor, "Sin asientos en la bitácora de ese día.", {});
    QTextTableFormat formato;
    formato.setHeaderRowCount(1);
    formato.setTopMargin(kPuntosTrasEncabezado);
    formato.setCellPadding(kPuntosPorCelda);
    formato.setCellSpacing(0);
    formato.setBorder(kPuntosDeBorde);
    formato.setBorderCollapse(true);
    formato.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    formato.setBorderBrush(Qt::black);
    QList<QTextLength> anchos;
    // Lengths of a document are those of a screen, whatever the device.
    const double ancho = (util_.width() * kDePantalla / pintor_.device()->logicalDpiX() - kPuntosPorCelda) / 100;
    for (const ColumnaInforme& columna : kColumnas)
      anchos << QTextLength(QTextLength::FixedLength, ParteDe(columna) * ancho - 2 * formato.cellPadding());
    formato.setColumnWidthConstraints(anchos);
    QTextTable* tabla =
        cursor.insertTable(static_cast<int>(informe_.asientos.size()) + 1, static_cast<int>(kColumnas.size()), formato);
    const auto poner = [&](int fila, std::size_t columna, const QString& texto, bool titulo) {
      tabla->cellAt(fila, static_cast<int>(columna)).firstCursorPosition().insertText(texto, Letra(kPuntos, titulo));
    };
    for (std::size_t c = 0; c < kColumnas.size(); ++c) {
      poner(0, c, QString::fromUtf8(kColumnas[c].titulo), true);
      for (std::size_t i = 0; i < informe_.asientos.size(); ++i) {
        poner(static_cast<int>(i) + 1, c, Q(Celda(kColumnas[c], informe_.asientos[i])), false);
      }
    }
  }

  // False: it was cancelled, or the device takes no more pages.
  bool Empezar() {
    progreso_.Texto("Página " + std::to_string(pagina_ + 1) + " de " + std::to_string(paginas_));
    progreso_.Posicion(pagina_);
    if (progreso_.Cancelado() || (pagina_ > 0 && !dispositivo_.newPage())) return false;
    ++pagina_;
    QFont letra = texto_.defaultFont();
    letra.setPointSizeF(kPuntos - 1);
    pintor_.setFont(letra);
    pintor_.setPen(Qt::black);
    const QRectF pie(hoja_.left(), util_.bottom(), hoja_.width(), hoja_.bottom() - util_.bottom());
    pintor_.drawText(
        pie, Qt::AlignLeft | Qt::AlignBottom,
        QStringLiteral("Estación %1, %2. Impreso: %3").arg(Q(informe_.estacion), Q(informe_.dia), Q(informe_.impreso)));
    pintor_.drawText(pie, Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("Página %1 de %2").arg(pagina_).arg(paginas_));
    return true;
  }

  void DibujarTexto(int pagina) {
    const double arriba = pagina * util_.height();
    pintor_.save();
    pintor_.translate(0, -arriba);
    QAbstractTextDocumentLayout::PaintContext contexto;
    contexto.palette.setColor(QPalette::Text, Qt::black);
    contexto.clip = QRectF(0, arriba, util_.width(), util_.height());
    pintor_.setClipRect(contexto.clip);
    texto_.documentLayout()->draw(&pintor_, contexto);
    pintor_.restore();
  }

  void DibujarFigura(const FiguraInforme& figura, int lugar) {
    const double alto = util_.height() / kFigurasPorPagina;
    QRectF cuadro(util_.left(), util_.top() + lugar * alto, util_.width(), alto - 4 * por_milimetro_);
    pintor_.save();
    pintor_.setFont(texto_.defaultFont());
    const double titulo = pintor_.fontMetrics().height() * 1.5;
    pintor_.drawText(QRectF(cuadro.left(), cuadro.top(), cuadro.width(), titulo), Qt::AlignLeft | Qt::AlignVCenter,
                     Q(figura.titulo));
    cuadro.setTop(cuadro.top() + titulo);
    const QString fuente = figura.fuente.empty() ? QString() : QStringLiteral("Fuente: ") + Q(figura.fuente);
    constexpr int kComo = Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap;
    const QRectF renglones = pintor_.boundingRect(cuadro, kComo, fuente);
    if (!fuente.isEmpty()) cuadro.setBottom(renglones.top() - kMilimetrosSobreFuente * por_milimetro_);
    figura.pintar(pintor_, cuadro);
    pintor_.drawText(renglones, kComo, fuente);
    pintor_.restore();
  }

  QPagedPaintDevice& dispositivo_;
  QPainter& pintor_;
  const InformeVisita& informe_;
  Progreso& progreso_;
  bool de_un_dia_;
  bool de_una_estacion_;
  double por_milimetro_;
  QRectF hoja_;
  QRectF util_;  // above the foot
  QTextDocument texto_;
  int pagina_ = 0;
  int paginas_ = 0;
};

}  // namespace

const char* TituloDeInforme(const InformeVisita& informe) {
  return TituloDe(informe.asientos);
}

int DibujarInforme(QPagedPaintDevice& dispositivo, QPainter& pintor, const InformeVisita& informe, Progreso& progreso) {
  progreso.Texto("Preparando las páginas...");
  if (progreso.Cancelado() || !pintor.begin(&dispositivo)) return 0;
  return Plana(dispositivo, pintor, informe, progreso).Dibujar();
}

}  // namespace utr
