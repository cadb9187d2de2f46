#pragma once

#include <QStackedWidget>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "retrieved/Lectores.h"
#include "retrieved/series/CanalDeSerie.h"
#include "retrieved/series/Serie.h"
#include "session/ModRTU.h"
#include "widgets/ComandoVentana.h"

namespace utr {

class MiniCurvas;
class PanelGrafico;
class VistaLista;

// What stands beside the list of the data view: the hydrograph of the records that were read, to which it reads other
// channels and the events of the same span, or the small curves of the present values.
class GraficoDeDatos : public QStackedWidget {
  Q_OBJECT

 public:
  // Runs a read of the window's, with its panel up and its failures told. True: it ended without a failure.
  using LeerAparte = std::function<bool(const std::string& procedimiento, const std::function<void()>& leer)>;

  struct Ventana {
    QString nombre;
    QString titulo;
  };

  // `configuracion`: the channel table or null, which is left as it is.
  GraficoDeDatos(ModRTU& mod, const TablaPtr& configuracion, const Ventana& ventana, LeerAparte leer);

  // The command that folds a plot away.
  static ComandoVentana ComandoVer();

  // Cursor of the plot and current row go together.
  void Enlazar(VistaLista& lista);

  // The records of a read, which are in the list already, or the present values of one.
  void VerRegistros(std::shared_ptr<const Serie> serie, const LectorDatos::Pedido& pedido);
  void VerInstantaneos(const Tabla& valores, bool escalados, bool con_nivel);
  // A read of the present values is missing ahead of the next one.
  void InterrumpirInstantaneos();
  // The list is empty. The curves of the present values stay for the next read of them.
  void Vaciar();

 private:
  void AgregarCanal(const QString& entrada);
  void TraerEventos();
  CanalDeSerie CanalDe(const std::string& entrada) const;
  QString Periodo() const;

  ModRTU& mod_;
  TablaPtr configuracion_;
  LeerAparte leer_;
  LectorDatos lector_;  // of added channels
  LectorDatos::Pedido pedido_;
  std::pair<bool, bool> forma_{};  // in which the present values were shown
  const VistaLista* lista_ = nullptr;
  PanelGrafico* panel_;
  MiniCurvas* minis_;
};

}  // namespace utr
