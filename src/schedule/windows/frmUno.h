#pragma once

#include <QDialog>

#include "schedule/FDLHoraro.h"

class QLabel;

namespace utr {

class CampoHorario;
class TiposTransmision;

// "Ingreso de Horarios": time and kinds of one entry of the schedule. Aceptar writes them into the entry; any other way
// out leaves it as it is.
class frmUno : public QDialog {
  Q_OBJECT

 public:
  explicit frmUno(QWidget* parent = nullptr);

  bool Acepto = false;

  // The entry that is edited. Handing it over fills the controls.
  FDLHoraroPtr Horario() const { return horario_; }
  void Horario(FDLHoraroPtr horario);

  // The entry was in the schedule before it was asked for as a new one, and Cancelar takes it out: says so.
  void AvisarQueEstaba();

 private:
  void Aceptar();

  FDLHoraroPtr horario_;
  QLabel* lblEstaba_;
  CampoHorario* HorarioInicio_;
  TiposTransmision* tipos_;
};

}  // namespace utr
