#pragma once

#include <QStringList>
#include <QWidget>
#include <optional>

#include "plots/windows/ContenidoGrafico.h"
#include "plots/windows/GraficosALaVista.h"
#include "services/ContextoListas.h"

class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QScrollArea;

namespace utr {

class EtiquetaCopiable;
class Hidrograma;

// What a window tells of itself to its plot.
struct OpcionesPanelGrafico {
  QString ventana;                     // object name of the window
  QString titulo;                      // title of messages
  bool con_eventos = false;            // there is a unit that can be asked for them
  bool una_tabla = false;              // all channels come from the table in the list; else the first one alone
  GraficosALaVista* vistos = nullptr;  // is told what is on show; null: nobody asks
};

// A hydrograph with its commands over it and, below, in words, what is under the pointer or at the cursor. It shows and
// forwards; where channels and events come from is the window's own.
class PanelGrafico : public QWidget {
  Q_OBJECT

 public:
  PanelGrafico(const ContextoListas& contexto, OpcionesPanelGrafico opciones, QWidget* parent = nullptr);

  // Another read is on show: its first channel, no events.
  void Mostrar(ContenidoGrafico contenido);
  void Vaciar();

  // The channels that may be added, as texts; those that are on show already aren't offered twice.
  void Ofrecer(const QStringList& canales);
  // Adds what the operator asked for. What is in sight stays in sight.
  void Agregar(const QString& texto, CanalGrafico canal);

  void PonerEventos(std::vector<EventoGrafico> eventos);
  void DesmarcarEventos();

  // The row of the list that is current: its point gets the cursor. Nothing, or a row without a point: no cursor.
  void SenalarFila(std::optional<std::size_t> fila);

  // Says that ahead of the facts of the cursor, until there is another one.
  void Avisar(const QString& aviso);

  Hidrograma& Grafico() { return *grafico_; }

 signals:
  // The operator picked the point of that row.
  void FilaElegida(std::size_t fila);
  // The operator wants that channel too, as it was offered.
  void CanalPedido(const QString& texto);
  // The operator wants the events of the span; when he doesn't any more they go by themselves.
  void EventosPedidos();

 protected:
  void resizeEvent(QResizeEvent* evento) override;
  void changeEvent(QEvent* evento) override;
  void showEvent(QShowEvent* evento) override;

 private:
  QPushButton* NuevoBoton(const char* nombre, const char* texto, const char* ayuda, const std::function<void()>& hacer);
  void Armar();
  void ActualizarBotones();
  void QuitarAgregados();
  void MostrarOtros(ContenidoGrafico contenido);
  void AjustarLetra();
  void ElegidoPunto(std::size_t canal, std::size_t punto);
  void MarcarEventos(bool marcado);
  void Anotar();
  void Decir(const QString& texto);
  void Intentar(std::string_view procedimiento, const std::function<void()>& accion);
  void Imprimir();
  std::string NombrePropuesto() const;
  void Guardar();

  ContextoListas contexto_;
  OpcionesPanelGrafico opciones_;
  Hidrograma* grafico_;
  QMenu* canales_;
  QList<QPushButton*> botones_;  // of no use without anything on show
  QPushButton* agregar_ = nullptr;
  QPushButton* quitar_ = nullptr;
  QCheckBox* eventos_;
  EtiquetaCopiable* hechos_;
  QScrollArea* sitio_;  // of these
  QStringList ofrecidos_;
  QStringList agregados_;
  bool senalando_ = false;
};

}  // namespace utr
