#pragma once

#include <QFrame>
#include <QString>
#include <QTimer>

class QLabel;
class QPushButton;
class QStackedLayout;

namespace utr {

class ZonaLista;

// A panel that stands in the place of a list and says why: a wait, or a read that brought nothing.
class PanelAviso : public QFrame {
  Q_OBJECT

 public:
  // `nombre` is the object name ("picInfo").
  PanelAviso(const char* nombre, const QString& texto, QWidget* parent = nullptr);

  QString Texto() const;

  // A second, smaller line that tells how the work goes on; none when empty.
  void Detallar(const QString& texto);

  // Keeps the room of that line while it is empty, so that nothing moves when it comes.
  void ReservarDetalle();

  // A button below its texts: the one of that name, made and hidden when it is first asked for.
  QPushButton* Boton(const char* nombre, const QString& texto);

  // It has no room of its own: shown, it stands over the middle of its parent.
  void Flotar();

  // Shows it, in place of its list where it has one, or takes it away.
  void Ver(bool visto);

 protected:
  bool event(QEvent* evento) override;

 private:
  friend class ZonaLista;

  void TraerALaVista();

  QLabel* etiqueta_;
  QLabel* detalle_;
  QTimer traer_;  // runs out when there is nothing left to lay out
  ZonaLista* zona_ = nullptr;
  bool flota_ = false;
};

// The place of a list with its panels: exactly the panels that are told are seen, or the list when there are none.
class ZonaLista : public QWidget {
  Q_OBJECT

 public:
  explicit ZonaLista(QWidget* lista, QWidget* parent = nullptr);

  // Adds a panel, hidden at first.
  PanelAviso* Agregar(const char* nombre, const QString& texto);

  // Shows these panels and no other. Without any the list is seen.
  void Mostrar(std::initializer_list<PanelAviso*> paneles);

 private:
  QStackedLayout* pila_;
  QWidget* lista_;
  QWidget* fondo_;
  QList<PanelAviso*> paneles_;
};

}  // namespace utr
