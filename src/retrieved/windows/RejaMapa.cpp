#include "retrieved/windows/RejaMapa.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <optional>

#include "widgets/Accesibilidad.h"
#include "widgets/Temas.h"
#include "widgets/TextoQt.h"
#include "widgets/frmTeclado.h"

namespace utr {
namespace {

constexpr int kAnchoCelda = 5;
constexpr int kAltoCelda = 9;
constexpr int kAnchoMinimo = 3;  // two to draw on, and one to the next
constexpr int kAnchoDeCerca = 9;
constexpr int kEntreGrupos = 4;
constexpr int kJuntoAlNombre = 8;
constexpr int kBordeCelda = 3;        // around the current one
constexpr int kCambiosSueltos = 200;  // before the next painting

enum class Forma { kLlena, kContorno, kMedia, kRaya, kPunto, kFranja, kDiagonal, kHueca };

struct Aspecto {
  EstadoPagina estado;
  Forma forma;
  std::optional<Matiz> color;  // none: grey, between text and ground
};
constexpr Aspecto kAspectos[] = {
    {EstadoPagina::kVacia, Forma::kContorno, {}},
    {EstadoPagina::kAnterior, Forma::kMedia, Matiz::kAcento},
    {EstadoPagina::kDatos, Forma::kLlena, Matiz::kAcento},
    {EstadoPagina::kSalteada, Forma::kRaya, {}},
    {EstadoPagina::kPendiente, Forma::kPunto, {}},
    {EstadoPagina::kSinCanal, Forma::kFranja, Matiz::kAparte},
    {EstadoPagina::kDaniada, Forma::kDiagonal, Matiz::kAviso},
    {EstadoPagina::kFallida, Forma::kHueca, Matiz::kMal},
};

QColor Gris(const QPalette& paleta) {
  return paleta.color(QPalette::Disabled, QPalette::Text);
}

}  // namespace

void PintarEstado(QPainter& pintor, const QRect& celda, EstadoPagina estado, const QPalette& paleta) {
  const Aspecto& aspecto = *std::find_if(std::begin(kAspectos), std::end(kAspectos),
                                         [&](const Aspecto& uno) { return uno.estado == estado; });
  const QColor color = aspecto.color ? ColorDe(*aspecto.color, paleta) : Gris(paleta);
  const QColor fondo = paleta.color(QPalette::Base);
  const int medio = celda.center().y();
  pintor.setPen(color);
  switch (aspecto.forma) {
    case Forma::kContorno:
      pintor.drawRect(celda.adjusted(0, 0, -1, -1));
      return;
    case Forma::kMedia:
      pintor.drawRect(celda.adjusted(0, 0, -1, -1));
      pintor.fillRect(celda.adjusted(0, celda.height() / 2, 0, 0), color);
      return;
    case Forma::kRaya:
      pintor.drawLine(celda.left(), medio, celda.right(), medio);
      return;
    case Forma::kPunto:
      pintor.fillRect(QRect(celda.center().x(), medio, 2, 2), color);
      return;
    default:
      break;
  }
  pintor.fillRect(celda, color);
  pintor.setPen(fondo);
  if (aspecto.forma == Forma::kFranja) pintor.fillRect(QRect(celda.left(), medio - 1, celda.width(), 3), fondo);
  if (aspecto.forma == Forma::kDiagonal) pintor.drawLine(celda.bottomLeft(), celda.topRight());
  if (aspecto.forma == Forma::kHueca) {  // even the smallest stays red for the most part
    QRect hueco(0, 0, (celda.width() + 1) / 2, (celda.height() + 2) / 4);
    hueco.moveCenter(celda.center());
    pintor.fillRect(hueco, fondo);
  }
}

RejaMapa::RejaMapa(const MapaMemoria& mapa, QWidget* parent) : QAbstractScrollArea(parent), mapa_(mapa) {
  setObjectName("Mapa");
  DarRol(*this, QAccessible::Chart);
  setAccessibleName(QStringLiteral("Mapa de la memoria"));
  DecirTeclas(*this, {{"Pasar de un lugar a otro", "flechas, Inicio, Fin"},
                      {"Pasar de un grupo de pistas a otro", "Re Pág, Av Pág"},
                      {"Acercar, alejar", "+, -"}});
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  viewport()->setBackgroundRole(QPalette::Base);
  Medir();
}

void RejaMapa::Medir() {
  int nombre = 0;
  for (std::size_t grupo = 0; grupo < kGruposFlash.size(); ++grupo)
    nombre = std::max(nombre, fontMetrics().horizontalAdvance(Q(mapa_.NombreDeGrupo(grupo))));
  margen_ = nombre + 2 * kJuntoAlNombre;
  const int entre = kEntreGrupos * static_cast<int>(kGruposFlash.size() + 1);
  alto_ = std::max(AltoMinimo(), (viewport()->height() - entre) / kPistas);
  const int justo = (viewport()->width() - margen_ - kJuntoAlNombre) / MapaMemoria::kCeldasPista;
  ancho_ = cerca_ ? kAnchoDeCerca : std::max(kAnchoMinimo, justo);
  const auto ajustar = [](QScrollBar* barra, int todo, int visto) {
    barra->setRange(0, std::max(0, todo - visto));
    barra->setPageStep(visto);
    barra->setSingleStep(kAnchoDeCerca * MapaMemoria::kPaginasCelda);
  };
  ajustar(horizontalScrollBar(), margen_ + Columnas() * ancho_ + kJuntoAlNombre, viewport()->width());
  ajustar(verticalScrollBar(), entre + kPistas * alto_, viewport()->height());
  viewport()->update();
}

void RejaMapa::Acercar(bool cerca) {
  if (cerca == cerca_) return;
  cerca_ = cerca;
  Medir();
  Ir(lugar_, true);
  Q_EMIT ZoomCambiado();
  Q_EMIT LugarCambiado();
}

int RejaMapa::Arriba(int pista) const {
  const int grupos = static_cast<int>(GrupoDePista(pista)) + 1;
  return grupos * kEntreGrupos + pista * alto_ - verticalScrollBar()->value();
}

QRect RejaMapa::Celda(const LugarPagina& lugar) const {
  const int columna = lugar.pagina / PorCelda();
  return {margen_ + columna * ancho_ - horizontalScrollBar()->value(), Arriba(lugar.pista), ancho_, alto_};
}

// Many changes at once, as a choice of what to read makes, cost one painting of all.
void RejaMapa::Repintar(const LugarPagina& lugar) {
  if (cambios_ > kCambiosSueltos) return;
  if (++cambios_ > kCambiosSueltos) return viewport()->update();
  viewport()->update(Celda(lugar));
}

void RejaMapa::RepintarActual() {
  viewport()->update(Celda(lugar_).adjusted(-kBordeCelda, -kBordeCelda, kBordeCelda, kBordeCelda));
}

QSize RejaMapa::sizeHint() const {
  const int entre = kEntreGrupos * static_cast<int>(kGruposFlash.size() + 1);
  return QSize(margen_ + MapaMemoria::kCeldasPista * kAnchoCelda + kJuntoAlNombre, entre + kPistas * kAltoCelda) +
         QSize(2 * frameWidth(), 2 * frameWidth());
}

QSize RejaMapa::minimumSizeHint() const {
  const int entre = kEntreGrupos * static_cast<int>(kGruposFlash.size() + 1);
  return QSize(margen_ + MapaMemoria::kCeldasPista * kAnchoMinimo + kJuntoAlNombre, entre + kPistas * AltoMinimo()) +
         QSize(2 * frameWidth(), 2 * frameWidth());
}

// The names of the last two groups, of three tracks and of two, stand as far apart as letters are high.
int RejaMapa::AltoMinimo() const {
  return std::max(kAnchoMinimo, (2 * (fontMetrics().height() - kEntreGrupos) + 4) / 5);
}

void RejaMapa::resizeEvent(QResizeEvent*) {
  Medir();
}

void RejaMapa::paintEvent(QPaintEvent* evento) {
  cambios_ = 0;
  QPainter pintor(viewport());
  const QRect zona = evento->rect();
  pintor.save();
  pintor.setClipRect(QRect(margen_ - kBordeCelda, 0, viewport()->width(), viewport()->height()), Qt::IntersectClip);
  for (int pista = 0; pista < kPistas; ++pista) PintarPista(pintor, pista, zona);
  pintor.setPen(QPen(palette().color(QPalette::Text), 1));
  pintor.drawRect(Celda(lugar_).adjusted(-1, -1, 0, 0));
  if (hasFocus()) pintor.drawRect(Celda(lugar_).adjusted(-2, -2, 1, 1));
  pintor.restore();
  PintarGrupos(pintor);
}

void RejaMapa::PintarPista(QPainter& pintor, int pista, const QRect& zona) const {
  const int arriba = Arriba(pista);
  if (arriba + alto_ < zona.top() || arriba > zona.bottom()) return;
  const int corrido = margen_ - horizontalScrollBar()->value();
  const int desde = std::clamp((zona.left() - corrido) / ancho_, 0, Columnas() - 1);
  const int hasta = std::clamp((zona.right() - corrido) / ancho_, 0, Columnas() - 1);
  for (int columna = desde; columna <= hasta; ++columna) {
    const LugarPagina lugar{pista, columna * PorCelda()};
    PintarEstado(pintor, Celda(lugar).adjusted(0, 0, -1, -1), mapa_.Peor(lugar, PorCelda()), palette());
  }
}

// The names stay at the left while the cells scroll, and lines part the groups.
void RejaMapa::PintarGrupos(QPainter& pintor) const {
  for (std::size_t i = 0; i < kGruposFlash.size(); ++i) {
    const GrupoFlash& grupo = kGruposFlash[i];
    const int arriba = Arriba(grupo.primera);
    const int abajo = Arriba(grupo.ultima) + alto_;
    pintor.setPen(palette().color(QPalette::Text));
    pintor.drawText(QRect(kJuntoAlNombre, arriba, margen_ - kJuntoAlNombre, abajo - arriba),
                    Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, Q(mapa_.NombreDeGrupo(i)));
    pintor.setPen(Gris(palette()));
    if (i > 0) pintor.drawLine(0, arriba - kEntreGrupos / 2, viewport()->width(), arriba - kEntreGrupos / 2);
  }
}

bool RejaMapa::LugarEn(const QPoint& punto, LugarPagina& lugar) const {
  const int columna = (punto.x() - margen_ + horizontalScrollBar()->value()) / ancho_;
  if (punto.x() < margen_ || columna >= Columnas()) return false;
  for (int pista = 0; pista < kPistas; ++pista) {
    if (punto.y() < Arriba(pista) || punto.y() >= Arriba(pista) + alto_) continue;
    lugar = {pista, columna * PorCelda()};
    return true;
  }
  return false;
}

void RejaMapa::Ir(LugarPagina lugar, bool a_la_vista) {
  lugar.pagina -= lugar.pagina % PorCelda();
  const bool otro = lugar != lugar_;
  RepintarActual();
  lugar_ = lugar;
  if (a_la_vista) {
    const QRect celda = Celda(lugar_);
    QScrollBar* barra = horizontalScrollBar();
    if (celda.left() < margen_) barra->setValue(barra->value() - (margen_ - celda.left()));
    if (celda.right() > viewport()->width()) barra->setValue(barra->value() + celda.right() - viewport()->width() + 1);
    QScrollBar* vertical = verticalScrollBar();
    if (celda.top() < 0) vertical->setValue(vertical->value() + celda.top());
    if (celda.bottom() > viewport()->height())
      vertical->setValue(vertical->value() + celda.bottom() - viewport()->height() + 1);
  }
  RepintarActual();
  if (otro) Q_EMIT LugarCambiado();
}

void RejaMapa::mouseMoveEvent(QMouseEvent* evento) {
  LugarPagina lugar;
  if (LugarEn(evento->pos(), lugar)) Ir(lugar, false);
}

void RejaMapa::mousePressEvent(QMouseEvent* evento) {
  mouseMoveEvent(evento);
}

void RejaMapa::mouseDoubleClickEvent(QMouseEvent* evento) {
  mouseMoveEvent(evento);
  Acercar(!cerca_);
}

void RejaMapa::wheelEvent(QWheelEvent* evento) {
  if (!evento->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(evento);
  if (evento->angleDelta().y() != 0) Acercar(evento->angleDelta().y() > 0);
  evento->accept();
}

void RejaMapa::keyPressEvent(QKeyEvent* evento) {
  LugarPagina lugar = lugar_;
  const int salto = PorCelda();
  switch (evento->key()) {
    case Qt::Key_Plus:
      return Acercar(true);
    case Qt::Key_Minus:
      return Acercar(false);
    case Qt::Key_Left:
      lugar.pagina -= salto;
      break;
    case Qt::Key_Right:
      lugar.pagina += salto;
      break;
    case Qt::Key_Up:
      lugar.pista -= 1;
      break;
    case Qt::Key_Down:
      lugar.pista += 1;
      break;
    case Qt::Key_PageUp:
      lugar.pista = kGruposFlash[GrupoDePista(std::max(0, lugar.pista - 1))].primera;
      break;
    case Qt::Key_PageDown:
      lugar.pista = kGruposFlash[GrupoDePista(lugar.pista)].ultima + 1;
      break;
    case Qt::Key_Home:
      lugar.pagina = 0;
      break;
    case Qt::Key_End:
      lugar.pagina = kPaginasPista - salto;
      break;
    default:
      return QAbstractScrollArea::keyPressEvent(evento);
  }
  lugar.pista = std::clamp(lugar.pista, 0, kPistas - 1);
  lugar.pagina = std::clamp(lugar.pagina, 0, kPaginasPista - salto);
  Ir(lugar, true);
}

void RejaMapa::focusInEvent(QFocusEvent* evento) {
  QAbstractScrollArea::focusInEvent(evento);
  RepintarActual();
}

void RejaMapa::focusOutEvent(QFocusEvent* evento) {
  QAbstractScrollArea::focusOutEvent(evento);
  RepintarActual();
}

}  // namespace utr
