#pragma once

#include <functional>
#include <optional>
#include <string>

#include "schedule/FDLHorarios.h"
#include "session/ModRTU.h"
#include "widgets/VentanaLista.h"

class QLabel;

namespace utr {

class CampoNumero;
class PanelProximas;

// "Configuración de Agenda": the schedule as a list, in which single times and runs of times are added, edited and
// taken out, with the length of the transmission window and a picture of the next 24 hours.
//
// The opener sets the mode, fills the window with LeerAgenda or with a schedule of its own and RecargarLista, runs
// exec(), and reads Acepto, Grabado and Horarios. In collection mode Aceptar only hands the schedule back; else it
// writes it to the unit. A schedule that is handed in is copied, entries and keys: who wants the edited one takes
// Horarios() back when Acepto is true, and after a cancel nothing has happened to its own.
class frmAgendas : public VentanaLista {
  Q_OBJECT

 public:
  explicit frmAgendas(ModRTU& mod, QWidget* parent = nullptr);
  ~frmAgendas() override;

  bool Acepto = false;         // the window was left by Aceptar; false by Cancelar, Esc and the close button
  bool Grabado = false;        // schedule and window reached the unit
  bool SoloColeccion = false;  // collection mode

  // The schedule on show, as edited so far.
  const FDLHorarios& Horarios() const noexcept { return horarios_; }
  // Takes a copy of a schedule; RecargarLista shows it.
  void Horarios(const FDLHorarios& horarios) { horarios_ = horarios; }

  // Reads schedule and window from the unit and shows them. False for a unit that gives no table, which is told in a
  // message, and for one without rows; the list is as it was then. Raises what the driver raises, and kSubindice for a
  // page of parameters that couldn't be read.
  bool LeerAgenda();

  // Fills the schedule from a table of the driver's LeerAgenda and the page of parameters, and shows it. In collection
  // mode the schedule starts anew, else the entries are added to those that are there. Raises as LeerAgenda does.
  void CargarColeccionAgenda(Tabla& tabla);

  // Shows the schedule in the order of the times. The field of the window takes the schedule's, another column's order
  // is dropped, and the last row gives the time that is proposed next.
  void RecargarLista(bool ascendente = true);

 protected:
  void Activar() override;
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  void reject() override;

 private:
  void ArmarComandos();
  QWidget* ArmarEncima();
  QWidget* ArmarNoLeida();
  QWidget* ArmarDebajo();

  void Editar(bool nuevo);
  void EditarHorario(bool nuevo);
  void EditarPeriodico();
  void BorrarHorarioAgenda();
  void BorrarListaAgenda(bool preguntar);

  void Aceptar();
  void Grabar();

  TablaPtr PedirAgenda();
  std::string ClaveDe(std::size_t posicion) const;
  void ElegirClave(const std::string& clave);
  void MostrarDuracion();
  void Reflejar();

  std::string Titulo() const;
  bool Intentar(const char* procedimiento, Redaccion redaccion, const std::function<void()>& hacer);

  ModRTU& mod_;
  FDLHorarios horarios_;
  std::optional<FDLHorarios> leida_;  // as the unit gave it
  TablaPtr filas_;                    // what the list shows
  std::int16_t proximo_ = 0;          // minute proposed for the next new entry
  std::string duracion_puesta_;       // what the field was given last
  std::string aviso_duracion_;        // a typed length that was replaced
  std::string aviso_periodo_;         // what the last period did
  CampoNumero* txtDuracion_;
  QWidget* no_leida_;
  QLabel* lblEstado_;
  PanelProximas* proximas_;
};

}  // namespace utr
