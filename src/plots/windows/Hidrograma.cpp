#include "plots/windows/Hidrograma.h"

#include <qcustomplot.h>

#include <QFontInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPicture>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "plots/windows/CurvaSerie.h"
#include "plots/windows/EjesGrafico.h"
#include "plots/windows/LimitesGrafico.h"
#include "plots/windows/MarcasGrafico.h"
#include "retrieved/series/BarrasLluvia.h"
#include "retrieved/series/TextoSerie.h"
#include "widgets/Accesibilidad.h"
#include "widgets/Temas.h"
#include "widgets/TextoQt.h"
#include "widgets/frmTeclado.h"

namespace utr {
namespace {

constexpr double kDia = 86400;
constexpr double kMinimoEnVista = 60;   // seconds
constexpr double kMargenTiempo = 0.02;  // of the span, at both ends
constexpr int kClic = 4;                // pixels that a click may move
constexpr double kAlcanceClic = 60;     // pixels from the pointer to what it picks
constexpr double kPasoZoom = 0.6;
constexpr int kMarcoDeFoco = 2;  // pixels around the canvas
constexpr int kAnchoMinimo = 160;
constexpr int kRenglonesMinimos = 5;  // of letters, which the axes take a good part of
constexpr int kRenglonesDeseados = 12;
constexpr const char* kCapaCursor = "cursor";

// What a bar stands for where it isn't one record's.
std::optional<std::int64_t> LapsoDeBarra(const Serie& serie, const VentanaTiempo& ventana) {
  return serie.EsLluvia() ? SegundosPorBarra(serie, ventana) : std::nullopt;
}

std::vector<CanalGrafico> ConLimites(std::vector<CanalGrafico> canales, const VentanaTiempo& ventana) {
  for (CanalGrafico& canal : canales) canal.limites = LimitesALaVista(canal, ventana);
  return canales;
}

// Caption of the axis of a series, the whole one first and then what is left where it has no room.
QStringList RotulosDe(const Serie& serie, const VentanaTiempo& ventana) {
  QStringList entre;
  if (!serie.Unidad().empty() && serie.Unidad() != "-") entre.append(Q(serie.Unidad()));
  if (const auto lapso = LapsoDeBarra(serie, ventana))
    entre.append(QStringLiteral("en ") + Q(TextoLapsoDeBarra(*lapso)));
  const QString unidad = entre.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(entre.join(' '));
  return {Q(TituloSerie(serie)) + unidad, Q(serie.Canal()) + unidad, Q(serie.Canal())};
}

QString TextoEvento(const EventoGrafico& evento) {
  return Q(TextoMomento(evento.momento)) + QStringLiteral(", ") + evento.texto;
}

// One record has no span: an hour around it.
VentanaTiempo ConAire(VentanaTiempo ventana) {
  const double aire = ventana.hasta > ventana.desde ? (ventana.hasta - ventana.desde) * kMargenTiempo : 1800;
  return {ventana.desde - aire, ventana.hasta + aire};
}

}  // namespace

Hidrograma::Hidrograma(QWidget* parent) : QWidget(parent), lienzo_(new QCustomPlot(this)), lugar_(lienzo_->axisRect()) {
  setObjectName("Hidrograma");
  setFocusPolicy(Qt::StrongFocus);
  DarRol(*this, QAccessible::Chart);
  setAccessibleName(QStringLiteral("Gráfico"));
  setWhatsThis(
      QStringLiteral("Los registros en el tiempo. La rueda acerca y aleja; arrastrar acerca a lo marcado, con "
                     "Mayús corre el período; un clic elige el registro más cercano. Con el teclado: flechas, "
                     "Inicio, Fin, + y -, Av Pág y Re Pág; con Ctrl, izquierda y derecha van de evento en evento."));
  DecirTeclas(*this, {{"Pasar de un registro a otro", "Izquierda, Derecha, Inicio, Fin"},
                      {"Pasar de un canal a otro", "Arriba, Abajo"},
                      {"Pasar de un evento a otro", "Ctrl+Izquierda, Ctrl+Derecha"},
                      {"Acercar, alejar", "+, -"},
                      {"Correr el período", "Re Pág, Av Pág"}});
  auto* caja = new QVBoxLayout(this);
  caja->setContentsMargins(kMarcoDeFoco, kMarcoDeFoco, kMarcoDeFoco, kMarcoDeFoco);
  caja->addWidget(lienzo_);
  lienzo_->setFocusPolicy(Qt::NoFocus);
  lienzo_->setLocale(QLocale::c());
  lienzo_->installEventFilter(this);
  lienzo_->setMouseTracking(true);
  ArmarLienzo();
  limites_ = new LimitesGrafico(lugar_);
  banderas_ = new BanderasEventos(lugar_);
  leyenda_ = new LeyendaVacia(lugar_);
  lienzo_->addLayer(QString::fromLatin1(kCapaCursor), lienzo_->layer(QStringLiteral("overlay")), QCustomPlot::limBelow);
  lienzo_->layer(QString::fromLatin1(kCapaCursor))->setMode(QCPLayer::lmBuffered);
  linea_ = new CursorGrafico(lugar_, QString::fromLatin1(kCapaCursor));
  Mostrar({});
}

void Hidrograma::ArmarLienzo() {
  QCPAxis* tiempo = lugar_->axis(QCPAxis::atBottom);
  const auto marcas = QSharedPointer<MarcasDeTiempo>::create(tiempo);
  marcas->setDateTimeSpec(Qt::UTC);  // as the unit wrote them
  tiempo->setTicker(marcas);
  ejes_ = {lugar_->axis(QCPAxis::atLeft), lugar_->axis(QCPAxis::atRight), lugar_->addAxis(QCPAxis::atRight)};
  for (QCPAxis* eje : ejes_) {
    eje->setTicker(QSharedPointer<MarcasDeValores>::create(eje));
    eje->setNumberFormat(QStringLiteral("g"));
    eje->setNumberPrecision(8);
    eje->grid()->setVisible(eje == ejes_.front());
  }
  lugar_->setRangeZoom(Qt::Horizontal);
  lugar_->setRangeDrag(Qt::Horizontal);
  lugar_->setRangeZoomAxes(tiempo, nullptr);
  lugar_->setRangeDragAxes(tiempo, nullptr);
  lienzo_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
  lienzo_->setNoAntialiasingOnDrag(true);
  connect(tiempo, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &Hidrograma::AjustarRango);
}

void Hidrograma::Mostrar(ContenidoGrafico contenido) {
  contenido_ = std::move(contenido);
  if (contenido_.canales.size() > kCurvas) contenido_.canales.resize(kCurvas);
  cursor_.reset();
  evento_.reset();
  ArmarCurvas();
  banderas_->Poner(contenido_.eventos);
  leyenda_->Decir(PorQueNada(contenido_));
  Colorear();
  PonerCursor();
  if (contenido_.ventana) {
    Ver(*contenido_.ventana);
  } else {
    Todo();
  }
}

void Hidrograma::ArmarCurvas() {
  for (CurvaSerie* curva : curvas_) lienzo_->removePlottable(curva);
  curvas_.clear();
  for (std::size_t i = 0; i < kCurvas; ++i) {
    const bool hay = i < contenido_.canales.size();
    QCPAxis* eje = ejes_[i];
    eje->setVisible(hay);
    if (!hay) eje->setLabel({});
    eje->setRangeReversed(hay && contenido_.canales[i].serie->EsLluvia());
    if (hay) curvas_.push_back(new CurvaSerie(lugar_->axis(QCPAxis::atBottom), eje, contenido_.canales[i]));
  }
  // The time axis and the grid stand even where there is nothing to draw.
  ejes_.front()->setVisible(true);
  ejes_.front()->setTickLabels(!contenido_.canales.empty());
  lugar_->axis(QCPAxis::atBottom)->setTickLabels(!contenido_.canales.empty());
}

void Hidrograma::PonerEventos(std::vector<EventoGrafico> eventos) {
  const bool todo = VeTodo();
  contenido_.eventos = std::move(eventos);
  banderas_->Poner(contenido_.eventos);
  evento_.reset();
  todo ? Todo() : AjustarRango();
  Redibujar();
  PonerCursor();
}

// What it would have where there is room; it makes do with less.
QSize Hidrograma::sizeHint() const {
  return {QWidget::sizeHint().width(), kRenglonesDeseados * fontMetrics().lineSpacing()};
}

// --- Looks -----------------------------------------------------------------------------------------------------------

void Hidrograma::Colorear() {
  const ColoresGrafico colores = ColoresDeGrafico(palette());
  QFont letra = font();
  letra.setPixelSize(std::max(9, QFontInfo(font()).pixelSize() * 9 / 10));
  lienzo_->setBackground(QBrush(colores.fondo));
  lienzo_->setMinimumSize(kAnchoMinimo, kRenglonesMinimos * fontMetrics().lineSpacing());
  const auto vestir = [&](QCPAxis* eje, const QColor& color) {
    eje->setTickLabelFont(letra);
    eje->setLabelFont(letra);
    eje->setTickLabelColor(color);
    eje->setLabelColor(color);
    for (const auto& poner : {&QCPAxis::setBasePen, &QCPAxis::setTickPen, &QCPAxis::setSubTickPen})
      (eje->*poner)(QPen(color, 1));
    eje->grid()->setPen(QPen(colores.reja, 1, Qt::DotLine));
    eje->grid()->setZeroLinePen(QPen(colores.reja, 1));
  };
  vestir(lugar_->axis(QCPAxis::atBottom), colores.texto);
  for (std::size_t i = 0; i < kCurvas; ++i) vestir(ejes_[i], colores.curvas[i]);
  for (std::size_t i = 0; i < curvas_.size(); ++i) curvas_[i]->Colorear(colores, i);
  limites_->Colorear(colores);
  banderas_->Colorear(colores);
  linea_->Colorear(colores);
  leyenda_->Colorear(colores);
}

void Hidrograma::changeEvent(QEvent* evento) {
  QWidget::changeEvent(evento);
  if (evento->type() != QEvent::PaletteChange && evento->type() != QEvent::FontChange) return;
  Colorear();
  Rotular(lienzo_->height());
  Redibujar();
}

void Hidrograma::Redibujar() {
  lienzo_->replot(QCustomPlot::rpImmediateRefresh);
}

QPicture Hidrograma::Dibujo(const QSize& tamano) {
  QPicture dibujo;
  QCPPainter pintor(&dibujo);
  pintor.setMode(QCPPainter::pmVectorized);
  pintor.setMode(QCPPainter::pmNoCaching);
  Rotular(tamano.height());
  lienzo_->toPainter(&pintor, tamano.width(), tamano.height());
  pintor.end();
  Rotular(lienzo_->height());
  return dibujo;
}

// --- The span in sight -----------------------------------------------------------------------------------------------

void Hidrograma::Ver(const VentanaTiempo& ventana) {
  lugar_->axis(QCPAxis::atBottom)->setRange(ventana.desde, ventana.hasta);
  AjustarRango();
  lienzo_->replot(QCustomPlot::rpQueuedReplot);
}

void Hidrograma::Todo() {
  Ver(ConAire(TodoElTiempo(contenido_).value_or(VentanaTiempo{0, kDia})));
}

bool Hidrograma::VeTodo() const {
  const auto todo = TodoElTiempo(contenido_);
  return !todo || (contenido_.ventana->desde <= todo->desde && contenido_.ventana->hasta >= todo->hasta);
}

void Hidrograma::Ultimas(double segundos) {
  const auto todo = TiempoDeRegistros(contenido_);
  if (!todo) return;
  Ver(ConAire({std::max(todo->desde, todo->hasta - segundos), todo->hasta}));
}

// Neither out of the records nor closer than a minute; axes and dates follow.
void Hidrograma::AjustarRango() {
  if (ajustando_) return;
  ajustando_ = true;
  QCPAxis* tiempo = lugar_->axis(QCPAxis::atBottom);
  const VentanaTiempo todo = ConAire(TodoElTiempo(contenido_).value_or(VentanaTiempo{0, kDia}));
  const QCPRange rango = tiempo->range();
  const double largo =
      std::clamp(rango.size(), std::min(kMinimoEnVista, todo.hasta - todo.desde), todo.hasta - todo.desde);
  // All of it in sight: rounding may put the last start that fits ahead of the first one.
  const double ultima = std::max(todo.desde, todo.hasta - largo);
  const double desde = std::clamp(rango.size() == largo ? rango.lower : rango.center() - largo / 2, todo.desde, ultima);
  tiempo->setRange(desde, desde + largo);
  contenido_.ventana = VentanaTiempo{desde, desde + largo};
  FormatearTiempos();
  AjustarValores();
  ajustando_ = false;
  // A record of rain may have got a bar of its own, or lost it.
  if (cursor_ && contenido_.canales[cursor_->canal].serie->EsLluvia()) PonerCursor();
  emit VentanaCambiada();
}

void Hidrograma::AjustarValores() {
  for (std::size_t i = 0; i < curvas_.size(); ++i) {
    const Extension extension = ExtensionDe(contenido_.canales[i], *contenido_.ventana);
    ejes_[i]->setRange(extension.abajo, extension.arriba);
  }
  Rotular(lienzo_->height());
  limites_->Poner(ConLimites(contenido_.canales, *contenido_.ventana), {ejes_.begin(), ejes_.end()});
}

void Hidrograma::Rotular(int alto) {
  for (std::size_t i = 0; i < curvas_.size(); ++i) {
    const QFont letra = ejes_[i]->labelFont();
    ejes_[i]->setLabel(
        RotuloQueCabe(RotulosDe(*contenido_.canales[i].serie, *contenido_.ventana), letra, AltoDeValores(alto, letra)));
  }
}

void Hidrograma::FormatearTiempos() {
  const double largo = contenido_.ventana->hasta - contenido_.ventana->desde;
  const auto marcas = lugar_->axis(QCPAxis::atBottom)->ticker().staticCast<QCPAxisTickerDateTime>();
  const char* formato = largo < 600 ? "HH:mm:ss\ndd/MM/yyyy" : largo < 5 * kDia ? "HH:mm\ndd/MM/yyyy" : "dd/MM\nyyyy";
  marcas->setDateTimeFormat(QString::fromLatin1(formato));
}

void Hidrograma::Acercar(double factor) {
  const VentanaTiempo& vista = *contenido_.ventana;
  double centro = (vista.desde + vista.hasta) / 2;
  if (const auto momento = MomentoDelCursor(); momento && *momento >= vista.desde && *momento <= vista.hasta)
    centro = *momento;
  const double medio = (vista.hasta - vista.desde) / 2 * factor;
  Ver({centro - medio, centro + medio});
}

void Hidrograma::Correr(double parte) {
  const VentanaTiempo vista = *contenido_.ventana;
  const double lejos = (vista.hasta - vista.desde) * parte;
  Ver({vista.desde + lejos, vista.hasta + lejos});
}

// --- Cursor ----------------------------------------------------------------------------------------------------------

void Hidrograma::Senalar(const Punto& punto) {
  if (punto.canal >= contenido_.canales.size() || punto.punto >= contenido_.canales[punto.canal].serie->Cantidad())
    return;
  cursor_ = punto;
  evento_.reset();
  TraerALaVista();
  PonerCursor();
}

void Hidrograma::SenalarEvento(std::size_t evento) {
  if (evento >= contenido_.eventos.size()) return;
  cursor_.reset();
  evento_ = evento;
  TraerALaVista();
  PonerCursor();
}

void Hidrograma::SinCursor() {
  cursor_.reset();
  evento_.reset();
  PonerCursor();
}

std::optional<double> Hidrograma::MomentoDelCursor() const {
  if (evento_) return static_cast<double>(contenido_.eventos[*evento_].momento);
  if (cursor_) return static_cast<double>(contenido_.canales[cursor_->canal].serie->Tiempos()[cursor_->punto]);
  return std::nullopt;
}

void Hidrograma::TraerALaVista() {
  const double momento = *MomentoDelCursor();
  const VentanaTiempo& vista = *contenido_.ventana;
  const double medio = (vista.hasta - vista.desde) / 2;
  if (momento < vista.desde || momento > vista.hasta) Ver({momento - medio, momento + medio});
}

void Hidrograma::PonerCursor() {
  std::optional<CursorGrafico::Sitio> sitio;
  if (const auto momento = MomentoDelCursor()) sitio = {*momento, std::nan(""), ejes_.front()};
  if (cursor_) {
    // A record among others of one bar has no height of its own.
    const Serie& serie = *contenido_.canales[cursor_->canal].serie;
    if (!LapsoDeBarra(serie, *contenido_.ventana)) sitio->valor = serie.Valores()[cursor_->punto];
    sitio->valores = ejes_[cursor_->canal];
  }
  linea_->Poner(sitio);
  lienzo_->layer(QString::fromLatin1(kCapaCursor))->replot();
  setAccessibleDescription(Hechos());
  emit Dicho(Hechos());
}

QString Hidrograma::Hechos() const {
  if (evento_) return HechosDelEvento();
  if (!cursor_) return {};
  const Serie& serie = *contenido_.canales[cursor_->canal].serie;
  const QString hechos = Q(TextoPunto(serie, cursor_->punto));
  const QString barra = HechosDeLaBarra(serie, static_cast<double>(serie.Tiempos()[cursor_->punto]));
  return barra.isEmpty() ? hechos : hechos + '\n' + barra;
}

// Empty where no bar of several records stands there.
QString Hidrograma::HechosDeLaBarra(const Serie& serie, double momento) const {
  const auto lapso = LapsoDeBarra(serie, *contenido_.ventana);
  const auto barra = lapso ? BarraEn(serie, momento, *lapso) : std::nullopt;
  return barra ? Q(TextoBarra(serie, *barra)) : QString();
}

// Flags of one moment are drawn on one another, and only words tell them apart.
QString Hidrograma::HechosDelEvento() const {
  QStringList hechos;
  for (const EventoGrafico& evento : contenido_.eventos) {
    if (evento.momento == contenido_.eventos[*evento_].momento) hechos.append(TextoEvento(evento));
  }
  return hechos.join('\n');
}

QString Hidrograma::HechosEn(double momento) const {
  QStringList hechos;
  for (const CanalGrafico& canal : contenido_.canales) {
    if (LapsoDeBarra(*canal.serie, *contenido_.ventana)) {
      const QString barra = HechosDeLaBarra(*canal.serie, momento);
      if (!barra.isEmpty()) hechos.append(barra);
      continue;
    }
    const double alcance = std::max(AlcanceEnSegundos(kAlcanceClic / 2), canal.serie->Minutos().value_or(0) * 60);
    if (const auto punto = canal.serie->MasCercano(momento, alcance))
      hechos.append(Q(TextoPunto(*canal.serie, *punto)));
  }
  return hechos.join('\n');
}

double Hidrograma::AlcanceEnSegundos(double pixeles) const {
  const QCPRange rango = lugar_->axis(QCPAxis::atBottom)->range();
  return rango.size() / std::max(1, lugar_->width()) * pixeles;
}

// The point whose moment is nearest, of the channel whose curve is.
void Hidrograma::Elegir(const QPoint& lugar) {
  const double momento = lugar_->axis(QCPAxis::atBottom)->pixelToCoord(lugar.x());
  std::optional<Punto> elegido;
  double cerca = 0;
  for (std::size_t i = 0; i < contenido_.canales.size(); ++i) {
    const Serie& serie = *contenido_.canales[i].serie;
    const auto punto = serie.MasCercano(momento, AlcanceEnSegundos(kAlcanceClic));
    if (!punto) continue;
    const double lejos = std::abs(ejes_[i]->coordToPixel(serie.Valores()[*punto]) - lugar.y());
    if (elegido && lejos >= cerca) continue;
    elegido = Punto{i, *punto};
    cerca = lejos;
  }
  if (!elegido) return;
  Senalar(*elegido);
  emit PuntoElegido(*elegido);
}

void Hidrograma::MoverCursor(std::ptrdiff_t pasos) {
  const std::size_t canal = cursor_ ? cursor_->canal : 0;
  if (canal >= contenido_.canales.size()) return;
  const auto cuantos = static_cast<std::ptrdiff_t>(contenido_.canales[canal].serie->Cantidad());
  if (cuantos == 0) return;
  if (evento_) return IrAlMasCercano(canal, *MomentoDelCursor());
  const std::ptrdiff_t desde = cursor_ ? static_cast<std::ptrdiff_t>(cursor_->punto) : (pasos > 0 ? -1 : cuantos);
  const Punto punto{canal, static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(desde + pasos, 0, cuantos - 1))};
  Senalar(punto);
  emit PuntoElegido(punto);
}

void Hidrograma::CambiarDeCanal(int sentido) {
  if (!cursor_ || contenido_.canales.size() < 2) return MoverCursor(1);
  const std::size_t cuantos = contenido_.canales.size();
  const std::size_t otro = (cursor_->canal + cuantos + static_cast<std::size_t>(sentido + 1) - 1) % cuantos;
  IrAlMasCercano(otro, *MomentoDelCursor());
}

void Hidrograma::IrAlMasCercano(std::size_t canal, double momento) {
  const auto punto = contenido_.canales[canal].serie->MasCercano(momento, std::numeric_limits<double>::infinity());
  if (!punto) return;
  Senalar({canal, *punto});
  emit PuntoElegido({canal, *punto});
}

// To the nearest event of another moment, seen from the cursor or else from the end of what is in sight.
void Hidrograma::CambiarDeEvento(int sentido) {
  const auto& eventos = contenido_.eventos;
  const double desde = MomentoDelCursor().value_or(sentido > 0 ? contenido_.ventana->desde : contenido_.ventana->hasta);
  const double hito = evento_ ? desde : desde - sentido;  // from a record an event of its own moment counts too
  const auto detras = [&](const EventoGrafico& uno) { return static_cast<double>(uno.momento) > hito; };
  const auto delante = [&](const EventoGrafico& uno) { return static_cast<double>(uno.momento) < hito; };
  if (sentido > 0) {
    const auto cual = std::find_if(eventos.begin(), eventos.end(), detras);
    if (cual != eventos.end()) SenalarEvento(static_cast<std::size_t>(cual - eventos.begin()));
  } else {
    const auto cual = std::find_if(eventos.rbegin(), eventos.rend(), delante);
    if (cual != eventos.rend()) SenalarEvento(static_cast<std::size_t>(eventos.rend() - cual) - 1);
  }
}

// --- Input -----------------------------------------------------------------------------------------------------------

void Hidrograma::keyPressEvent(QKeyEvent* evento) {
  constexpr std::ptrdiff_t kMuchos = std::numeric_limits<std::int32_t>::max();
  switch (evento->key()) {
    case Qt::Key_Left:
      return (evento->modifiers() & Qt::ControlModifier) != 0 ? CambiarDeEvento(-1) : MoverCursor(-1);
    case Qt::Key_Right:
      return (evento->modifiers() & Qt::ControlModifier) != 0 ? CambiarDeEvento(1) : MoverCursor(1);
    case Qt::Key_Home:
      return MoverCursor(-kMuchos);
    case Qt::Key_End:
      return MoverCursor(kMuchos);
    case Qt::Key_Up:
      return CambiarDeCanal(-1);
    case Qt::Key_Down:
      return CambiarDeCanal(1);
    case Qt::Key_Plus:
      return Acercar(kPasoZoom);
    case Qt::Key_Minus:
      return Acercar(1 / kPasoZoom);
    case Qt::Key_PageUp:
      return Correr(-0.5);
    case Qt::Key_PageDown:
      return Correr(0.5);
    default:
      QWidget::keyPressEvent(evento);
  }
}

// The canvas covers all but a rim, which tells who has the keyboard.
void Hidrograma::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  pintor.fillRect(rect(), hasFocus() ? ColorDe(Matiz::kAcento, palette()) : palette().color(QPalette::Base));
}

void Hidrograma::focusOutEvent(QFocusEvent* evento) {
  QWidget::focusOutEvent(evento);
  update();
}

void Hidrograma::focusInEvent(QFocusEvent* evento) {
  QWidget::focusInEvent(evento);
  update();
  setAccessibleDescription(Hechos());
}

void Hidrograma::ApretarBoton(const QPoint& lugar, bool mover) {
  apretado_ = lugar;
  setFocus(Qt::MouseFocusReason);
  lienzo_->setSelectionRectMode(mover ? QCP::srmNone : QCP::srmZoom);
}

void Hidrograma::BajoElPuntero(int x) {
  QString hechos = HechosEn(lugar_->axis(QCPAxis::atBottom)->pixelToCoord(x));
  for (const EventoGrafico* bandera : banderas_->Cerca(x)) hechos += '\n' + TextoEvento(*bandera);
  emit Dicho(hechos.isEmpty() ? Hechos() : hechos.trimmed());
}

bool Hidrograma::eventFilter(QObject* objeto, QEvent* evento) {
  if (objeto != lienzo_) return QWidget::eventFilter(objeto, evento);
  const auto* raton = dynamic_cast<QMouseEvent*>(evento);
  switch (evento->type()) {
    case QEvent::MouseButtonPress:
      ApretarBoton(raton->pos(), raton->button() == Qt::MiddleButton || (raton->modifiers() & Qt::ShiftModifier) != 0);
      break;
    case QEvent::MouseButtonRelease:
      if (raton->button() == Qt::LeftButton && (raton->pos() - apretado_).manhattanLength() <= kClic) Elegir(apretado_);
      break;
    case QEvent::MouseMove:
      if (raton->buttons() == Qt::NoButton) BajoElPuntero(raton->pos().x());
      break;
    case QEvent::Leave:
      emit Dicho(Hechos());
      break;
    case QEvent::Resize:
      Rotular(dynamic_cast<QResizeEvent*>(evento)->size().height());
      break;
    default:
      break;
  }
  return QWidget::eventFilter(objeto, evento);
}

}  // namespace utr
