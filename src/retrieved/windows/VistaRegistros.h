#pragma once

#include <functional>

#include "retrieved/CifrasRegistros.h"
#include "retrieved/Lectores.h"
#include "session/ModRTU.h"
#include "widgets/VentanaLista.h"

class QDateTimeEdit;
class QFormLayout;

namespace utr {

class BarraPeriodos;
class ControlesRecordados;
class EsperaDeUnidad;
class EtiquetaCopiable;

// Pixels between controls that stand one over the other, and between columns of them.
inline constexpr int kEntreControles = 6;
inline constexpr int kEntreColumnas = 24;

// What the views of data, events and transmission queue share: two frames that read, counters, the span that was read,
// and the way a read runs. While a read runs the window can neither be used nor closed; where the driver can end it,
// the operator can.
class VistaRegistros : public VentanaLista {
  Q_OBJECT

 protected:
  // One read: what to do and what to say about each outcome.
  struct PedidoLectura {
    std::string procedimiento;  // in the error log
    std::function<FinLectura()> leer;
    PanelAviso* sin_datos = nullptr;  // what is seen when nothing came
    const char* contador = nullptr;   // words ahead of the count
    bool por_fechas = false;          // by the dates of the pickers; else of the moment
    Mensaje al_reves{};               // said about dates the wrong way round
    bool conservar = false;           // the list stays when the dates are the wrong way round
  };

  // The names of the entries that the menus share; null: the view lacks it.
  struct NombresMenu {
    const char* abrir = nullptr;
    const char* guardar = nullptr;
    const char* exportar = nullptr;
    const char* configurar_impresora = nullptr;
    const char* imprimir = nullptr;
    const char* salir = nullptr;
  };

  VistaRegistros(ModRTU& mod, const DescripcionLista& descripcion, Columnas columnas, QWidget* parent);

  // Tells the commands: the two of the frames, then those that the views share.
  void ComandosDeVista(const std::vector<MenuVentana>& menus, std::vector<ComandoVentana> comandos,
                       const NombresMenu& nombres);

  // Puts the window together: the frames over the list, the button that closes it below.
  void ArmarVista(QWidget* marcos, QPushButton* cerrar);

  // True: it ended without a failure, and the operator didn't end it.
  bool Leer(const PedidoLectura& pedido);

  // What a reader calls between the calls of one read. Raises kCancelada once the operator has cancelled it: the driver
  // hears of that only in the middle of a call.
  Atender AtenderLectura();

  // Reads something that isn't for the list, in the same way.
  bool LeerAparte(const std::string& procedimiento, const std::function<void()>& leer);

  // A read brought the rows of the reader to the list, or took away what an earlier one had brought. Not when another
  // frame's rows come back into sight.
  virtual void Listado() {}
  virtual void Vaciado() {}

  // The pair of date pickers, both at today, added to the form with their labels. Once a view.
  void AgregarFechas(QFormLayout& caja, const char* formato);
  QDateTimeEdit* CampoFin() { return fin_; }
  // The row of spans that goes with them, and at its end the tick "Recordar". Once, behind AgregarFechas.
  QWidget* NuevaBarraPeriodos();
  // The view is found as it was left where that tick is on: pickers, these fields, columns. When all of them are
  // filled.
  void Recordar(QList<QWidget*> campos);
  // How columns stood that aren't on show, as ControlesRecordados::Columnas.
  QStringList RecordarColumnas(const QString& nombre, std::function<QStringList()> disposicion);
  FechaHora Desde() const;
  FechaHora Hasta() const;

  // "Desde: " and "Hasta: " with the pickers as they stood when the read on show began, as they are printed.
  std::vector<std::string> LineasDesdeHasta() const;
  // "Fecha: " and today.
  std::string LineaFecha() const;
  // What is said as information about dates the wrong way round.
  Mensaje FechasAlReves() const;

  ModRTU& Mod() const { return mod_; }
  ContextoRegistros Contexto() const { return {mod_.comunicador, mod_.reloj, mod_.catalogo, mod_.registro}; }

  void done(int resultado) override;

  // The table of channels that goes with what is on show, or null.
  virtual const Tabla* Canales() const = 0;
  virtual bool AIntervalos() const { return true; }  // its channels record at regular intervals
  virtual const LectorRegistros& Lector() const = 0;
  TablaPtr TablaDeImp() const override { return visto_.tabla; }

  // The texts of the pickers.
  struct Periodo {
    QString desde;
    QString hasta;
  };

  // All that a read left on show, so that each of several frames may keep its own.
  struct Visto {
    TablaPtr tabla{};             // null: nothing was read
    PanelAviso* panel = nullptr;  // why there is no list
    QString cuenta{};
    QString periodo{};
    SeriesDeTabla series{};  // of the table
    QString cifras{};
    Periodo leido{};  // for documents
  };
  const Visto& LoVisto() const { return visto_; }
  // Shows it in place of what is seen; the default is an empty list.
  void Ver(const Visto& visto);

 private:
  Periodo PeriodoElegido() const;
  QString TextoPeriodo(const Periodo& periodo, bool por_fechas) const;
  void Listar(FinLectura fin, const PedidoLectura& pedido, const Periodo& periodo);
  void MostrarTabla();
  void Limpiar();
  bool Llamar(EsperaDeUnidad& espera, const std::function<void()>& llamada);

  ModRTU& mod_;
  QLabel* lblCantRegistros_;
  QLabel* lblPeriodo_;
  EtiquetaCopiable* lblCifras_;
  PanelAviso* picCancelada_;
  QDateTimeEdit* inicio_ = nullptr;
  QDateTimeEdit* fin_ = nullptr;
  BarraPeriodos* periodos_ = nullptr;
  ControlesRecordados* recordar_ = nullptr;
  Visto visto_;
  const EsperaDeUnidad* espera_ = nullptr;  // of the read that runs
};

}  // namespace utr
