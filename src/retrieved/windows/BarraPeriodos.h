#pragma once

#include <QWidget>

#include "retrieved/Periodos.h"

class QCheckBox;
class QDateTimeEdit;

namespace utr {

class DisposicionEnFilas;
struct ModRTU;

// The row of spans that stands below a pair of date pickers: a click puts both. At its end the window may have what
// belongs to the pickers.
class BarraPeriodos : public QWidget {
  Q_OBJECT

 public:
  // What it puts them to is told by the clock and by the visits of the station that the settings point at.
  BarraPeriodos(const ModRTU& mod, QDateTimeEdit* inicio, QDateTimeEdit* fin);

  void Agregar(QWidget* control);

  // What is known of the visits may have changed.
  void Actualizar();

 private:
  std::optional<Lapso> LapsoAhora(Periodo periodo) const;
  void Poner(Periodo periodo);

  const ModRTU& mod_;
  QDateTimeEdit* inicio_;
  QDateTimeEdit* fin_;
  DisposicionEnFilas* fila_;
  QWidget* visita_ = nullptr;
};

// A picker of dates at today, in Spanish, and the date that one holds.
QDateTimeEdit* NuevoCampoFecha(const ModRTU& mod, const char* nombre, const char* formato);
FechaHora FechaDe(const QDateTimeEdit& campo);

}  // namespace utr
