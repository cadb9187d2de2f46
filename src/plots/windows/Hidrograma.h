#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "plots/windows/ColoresGrafico.h"
#include "plots/windows/ContenidoGrafico.h"

class QCPAxis;
class QCPAxisRect;
class QCustomPlot;
class QPicture;

namespace utr {

class BanderasEventos;
class CurvaSerie;
class CursorGrafico;
class LimitesGrafico;
class LeyendaVacia;

// Up to three channels over one time axis, each with an axis of values of its own, which follows what is in sight.
//
// The wheel zooms around the pointer, a drag over a span zooms to it, and with Shift or the middle button it moves the
// span; a click picks the nearest point. By keys: Left and Right go from record to record of the channel at hand, Up
// and Down to another channel, Home and End to its first and last record, with Ctrl Left and Right from event to event,
// + and - zoom, PageUp and PageDown move the span.
class Hidrograma : public QWidget {
  Q_OBJECT

 public:
  explicit Hidrograma(QWidget* parent = nullptr);

  QSize sizeHint() const override;

  // Shows that, from its window on or else all of it, without a cursor. Of more channels than kCurvas the first ones.
  void Mostrar(ContenidoGrafico contenido);
  // The same channels, with these flags.
  void PonerEventos(std::vector<EventoGrafico> eventos);

  // What is shown, with the window in sight.
  const ContenidoGrafico& Contenido() const noexcept { return contenido_; }
  // Nothing of it lies out of sight.
  bool VeTodo() const;

  void Ver(const VentanaTiempo& ventana);
  void Todo();
  void Ultimas(double segundos);  // of the records, whatever events lie beyond them

  // Puts the cursor on a point of a channel, or on the flag of an event, and brings it into sight.
  struct Punto {
    std::size_t canal = 0;
    std::size_t punto = 0;
    bool operator==(const Punto&) const = default;
  };
  void Senalar(const Punto& punto);
  void SenalarEvento(std::size_t evento);
  void SinCursor();
  const std::optional<Punto>& Cursor() const noexcept { return cursor_; }  // nothing while it is on an event

  // What the cursor stands at, in words: the point, or all events of that moment. Empty without one.
  QString Hechos() const;
  // What lies at that moment: the nearest record of each channel, or the bar of several. Empty where none is near.
  QString HechosEn(double momento) const;

  // Draws all of it anew at once, as a zoom does.
  void Redibujar();
  // Draws it so large, in pixels, by way of a picture that keeps lines as lines.
  QPicture Dibujo(const QSize& tamano);

 signals:
  // The operator picked a point by click or key.
  void PuntoElegido(const utr::Hidrograma::Punto& punto);
  // What is under the pointer, or else at the cursor, in words.
  void Dicho(const QString& texto);
  // Another span is in sight.
  void VentanaCambiada();

 protected:
  void changeEvent(QEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void focusOutEvent(QFocusEvent* evento) override;
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  void ArmarLienzo();
  void ArmarCurvas();
  QCPAxis* EjeDe(std::size_t canal);
  void Colorear();
  void AjustarRango();
  void AjustarValores();
  void Rotular(int alto);
  void FormatearTiempos();
  void ApretarBoton(const QPoint& lugar, bool mover);
  void Elegir(const QPoint& lugar);
  void MoverCursor(std::ptrdiff_t pasos);
  void CambiarDeCanal(int sentido);
  void IrAlMasCercano(std::size_t canal, double momento);
  void CambiarDeEvento(int sentido);
  void TraerALaVista();
  std::optional<double> MomentoDelCursor() const;
  void BajoElPuntero(int x);
  QString HechosDelEvento() const;
  QString HechosDeLaBarra(const Serie& serie, double momento) const;
  void Acercar(double factor);
  void Correr(double parte);
  void PonerCursor();
  double AlcanceEnSegundos(double pixeles) const;

  ContenidoGrafico contenido_;
  std::optional<Punto> cursor_;
  std::optional<std::size_t> evento_;  // where the cursor is, in place of a point
  QCustomPlot* lienzo_;
  QCPAxisRect* lugar_;
  std::array<QCPAxis*, kCurvas> ejes_{};
  std::vector<CurvaSerie*> curvas_;
  LimitesGrafico* limites_;
  BanderasEventos* banderas_;
  CursorGrafico* linea_;
  LeyendaVacia* leyenda_;
  QPoint apretado_;
  bool ajustando_ = false;
};

}  // namespace utr
