#include "schedule/windows/PanelProximas.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "base/Texto.h"
#include "widgets/Accesibilidad.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kMargen = 6;
constexpr int kRenglonesTexto = 5;
constexpr int kHorasEntreNumeros = 3;
constexpr int kMinutosHora = 60;
constexpr int kCerca = 4;            // pixels around the pointer
constexpr double kLadoMarca = 0.25;  // half of a mark, in heights of a lane
const QColor kColorAviso(0xdc, 0x5a, 0x4e);

// A lane of the picture: its name, whose entries it shows and the shape of their marks.
using Forma = void (*)(QPainterPath&, const QPointF&, double);
struct Carril {
  const char* nombre;
  bool MarcaHorario::*tipo;
  Forma forma;
  bool llena;
};

void Rombo(QPainterPath& trazo, const QPointF& centro, double lado) {
  trazo.addPolygon(QPolygonF({centro - QPointF(0, lado), centro + QPointF(lado, 0), centro + QPointF(0, lado),
                              centro - QPointF(lado, 0), centro - QPointF(0, lado)}));
}
void Disco(QPainterPath& trazo, const QPointF& centro, double lado) {
  trazo.addEllipse(centro, lado, lado);
}
void Barra(QPainterPath& trazo, const QPointF& centro, double lado) {
  trazo.addRect(QRectF(centro.x() - 1, centro.y() - lado, 2, 2 * lado));
}

constexpr std::array<Carril, 3> kCarriles{{{"Ventana", &MarcaHorario::TWind, Barra, true},
                                           {"Obligatoria", &MarcaHorario::TOblig, Disco, true},
                                           {"Condicional", &MarcaHorario::TCond, Rombo, false}}};

QString TextoDe(const ProximasHoras& proximas) {
  std::vector<std::string> renglones{TextoDeProxima(proximas)};
  for (const std::string& aviso : AvisosDe(proximas)) renglones.push_back("Atención: " + aviso);
  for (const std::string& renglon : RenglonesDe(proximas)) renglones.push_back(renglon);
  return Q(Unir(renglones, "\n"));
}

}  // namespace

// --- The panel -------------------------------------------------------------------------------------------------------

PanelProximas::PanelProximas(QWidget* parent)
    : QGroupBox(parent), linea_(new LineaDeTiempo), texto_(new QPlainTextEdit) {
  setObjectName("PanelProximas");
  texto_->setObjectName("txtProximas");
  texto_->setReadOnly(true);
  texto_->setTabChangesFocus(true);
  texto_->setAccessibleName("Próximas 24 horas");
  texto_->setWhatsThis(
      "Lo mismo que el dibujo, en palabras: qué horario sigue, qué se superpone o está repetido, y "
      "todos los horarios desde este momento.");
  texto_->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
  texto_->setFixedHeight(texto_->fontMetrics().lineSpacing() * kRenglonesTexto + 2 * texto_->frameWidth() +
                         qRound(texto_->document()->documentMargin()));
  auto* columna = new QVBoxLayout(this);
  columna->addWidget(linea_);
  columna->addWidget(texto_);
}

void PanelProximas::Mostrar(const ProximasHoras& proximas) {
  setTitle(QStringLiteral("Próximas 24 horas, desde las %1 de esta computadora").arg(Q(TextoHorario(proximas.desde))));
  linea_->Mostrar(proximas);
  const QString texto = TextoDe(proximas);
  if (texto != texto_->toPlainText()) Cambiar(texto);
}

// Every minute the first line changes, and who reads further down stays there.
void PanelProximas::Cambiar(const QString& texto) {
  const int renglon = texto_->textCursor().blockNumber();
  const int arriba = texto_->verticalScrollBar()->value();
  texto_->setPlainText(texto);
  const int ultimo = texto_->document()->blockCount() - 1;
  texto_->setTextCursor(QTextCursor(texto_->document()->findBlockByNumber(std::min(renglon, ultimo))));
  texto_->verticalScrollBar()->setValue(arriba);
}

// --- The picture -----------------------------------------------------------------------------------------------------

LineaDeTiempo::LineaDeTiempo(QWidget* parent) : QWidget(parent) {
  setObjectName("LineaDeTiempo");
  DarRol(*this, QAccessible::Chart);
  setAccessibleName("Línea de las próximas 24 horas");
  setWhatsThis(
      "Los horarios de la agenda en las próximas 24 horas, según la hora de esta computadora. Las barras son "
      "las ventanas de transmisión.");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LineaDeTiempo::Mostrar(const ProximasHoras& proximas) {
  proximas_ = proximas;
  setAccessibleDescription(Q(TextoDeProxima(proximas)));
  update();
}

int LineaDeTiempo::Alto() const {
  return fontMetrics().height() + kMargen;
}

QSize LineaDeTiempo::sizeHint() const {
  return {kMinutosDia / 2, Alto() * (static_cast<int>(kCarriles.size()) + 2)};
}

QSize LineaDeTiempo::minimumSizeHint() const {
  return {Izquierda() * 3, sizeHint().height()};
}

int LineaDeTiempo::Izquierda() const {
  int ancho = 0;
  for (const Carril& carril : kCarriles)
    ancho = std::max(ancho, fontMetrics().horizontalAdvance(QString::fromUtf8(carril.nombre)));
  return ancho + 3 * kMargen;
}

double LineaDeTiempo::X(int posicion) const {
  const int ancho = width() - Izquierda() - 3 * kMargen;
  return Izquierda() + static_cast<double>(ancho) * posicion / kMinutosDia;
}

void LineaDeTiempo::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  pintor.setRenderHint(QPainter::Antialiasing);
  PintarEje(pintor);
  for (int carril = 0; carril < static_cast<int>(kCarriles.size()); ++carril) PintarCarril(pintor, carril);
  PintarAvisos(pintor);
}

// Every how many hours there is room for a number.
int LineaDeTiempo::HorasEntreNumeros() const {
  const double hora = X(kMinutosHora) - X(0);
  const int ancho = fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + kMargen;
  return hora * kHorasEntreNumeros >= ancho ? kHorasEntreNumeros : 2 * kHorasEntreNumeros;
}

void LineaDeTiempo::PintarEje(QPainter& pintor) const {
  const int arriba = Alto();
  const int abajo = arriba + Alto() * static_cast<int>(kCarriles.size());
  QColor tenue = palette().color(QPalette::WindowText);
  pintor.fillRect(QRectF(X(0), arriba, X(kMinutosDia) - X(0), abajo - arriba), palette().color(QPalette::Base));
  const int cada = HorasEntreNumeros();
  const int primera = MinutoDelDia(-proximas_.desde) % kMinutosHora;
  for (int posicion = primera; posicion <= kMinutosDia; posicion += kMinutosHora) {
    const int hora = MinutoDelDia(proximas_.desde + posicion) / kMinutosHora;
    const bool numero = hora % cada == 0;
    tenue.setAlphaF(numero ? 0.35F : 0.12F);
    pintor.setPen(tenue);
    pintor.drawLine(QPointF(X(posicion), arriba), QPointF(X(posicion), abajo + (numero ? 3 : 0)));
    if (!numero) continue;
    pintor.setPen(palette().color(QPalette::WindowText));
    const QString texto = Q(TextoHorario(hora * kMinutosHora));
    const double ancho = fontMetrics().horizontalAdvance(texto);
    const double izquierda = std::min(X(posicion) - ancho / 2, width() - ancho);
    pintor.drawText(QRectF(izquierda, abajo + 3, ancho + 1, Alto()), Qt::AlignLeft | Qt::AlignTop, texto);
  }
  pintor.setPen(palette().color(QPalette::Mid));
  pintor.drawRect(QRectF(X(0), arriba, X(kMinutosDia) - X(0), abajo - arriba));
}

void LineaDeTiempo::PintarCarril(QPainter& pintor, int carril) const {
  const Carril& que = kCarriles.at(static_cast<std::size_t>(carril));
  const double alto = Alto();
  const double arriba = alto * (carril + 1);
  const QColor color = palette().color(QPalette::WindowText);
  pintor.setPen(color);
  pintor.drawText(QRectF(0, arriba, Izquierda() - kMargen, alto), Qt::AlignRight | Qt::AlignVCenter,
                  QString::fromUtf8(que.nombre));
  if (que.tipo == &MarcaHorario::TWind) {
    for (const BarraVentana& barra : proximas_.barras) {
      QColor relleno = barra.superpuesta ? kColorAviso : palette().color(QPalette::Highlight);
      pintor.setPen(relleno);
      relleno.setAlphaF(0.4F);
      pintor.setBrush(relleno);
      pintor.drawRect(QRectF(QPointF(X(barra.desde), arriba + 4), QPointF(X(barra.hasta), arriba + alto - 4)));
    }
  }
  for (const MarcaHorario& marca : proximas_.marcas) {
    if (!(marca.*que.tipo)) continue;
    QPainterPath trazo;
    que.forma(trazo, QPointF(X(marca.posicion), arriba + alto / 2), alto * kLadoMarca);
    pintor.setPen(QPen(color, que.llena ? 0 : 1.5));
    pintor.setBrush(que.llena ? QBrush(color) : QBrush(palette().color(QPalette::Base)));
    pintor.drawPath(trazo);
  }
}

// Over the lanes: a stroke at every entry, so that one without any kind is seen too, and a triangle over those that
// need a look.
void LineaDeTiempo::PintarAvisos(QPainter& pintor) const {
  const double abajo = Alto() - 1;
  const double lado = Alto() * kLadoMarca;
  for (const MarcaHorario& marca : proximas_.marcas) {
    const double x = X(marca.posicion);
    pintor.setPen(palette().color(QPalette::WindowText));
    pintor.drawLine(QPointF(x, abajo - 3), QPointF(x, abajo));
    if (!marca.repetida && !marca.superpuesta) continue;
    pintor.setPen(Qt::NoPen);
    pintor.setBrush(kColorAviso);
    pintor.drawPolygon(
        QPolygonF({QPointF(x, abajo - 3 - 2 * lado), QPointF(x + lado, abajo - 3), QPointF(x - lado, abajo - 3)}));
  }
}

QString LineaDeTiempo::TextoBajo(int x) const {
  QStringList renglones;
  const std::vector<std::string> todos = RenglonesDe(proximas_);
  for (std::size_t i = 0; i < proximas_.marcas.size(); ++i) {
    if (std::abs(X(proximas_.marcas[i].posicion) - x) <= kCerca) renglones.append(Q(todos[i]));
  }
  return renglones.join('\n');
}

bool LineaDeTiempo::event(QEvent* evento) {
  if (evento->type() != QEvent::ToolTip) return QWidget::event(evento);
  const auto* pedido = static_cast<QHelpEvent*>(evento);
  QToolTip::showText(pedido->globalPos(), TextoBajo(pedido->x()), this);
  return true;
}

}  // namespace utr
