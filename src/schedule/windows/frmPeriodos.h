#pragma once

#include <QDialog>
#include <cstdint>

#include "services/Operador.h"

namespace utr {

class CampoDigitos;
class CampoHorario;
class TiposTransmision;

// "Horarios Periódicos": a run of times, its step and the kinds that all of them take.
class frmPeriodos : public QDialog {
  Q_OBJECT

 public:
  explicit frmPeriodos(Operador& operador, QWidget* parent = nullptr);

  bool Acepto = false;

  // Minutes of the day. Setting the start, any minute modulo a day, proposes a run of six hours.
  std::int16_t HoraDeInicio() const;
  void HoraDeInicio(int minuto);
  std::int16_t HoraDeFin() const;

  // Minutes from one time to the next. Raises kDesborde for more than 16 bits hold.
  std::int16_t PeriodoDeAgenda() const;

  bool TxCWind() const;
  bool TxCOblig() const;
  bool TxCCond() const;

 private:
  double PeriodoEscrito() const;
  void Aceptar();

  Operador& operador_;
  CampoHorario* HorarioInicio_;
  CampoHorario* HorarioFin_;
  CampoDigitos* PeriodoAgenda_;
  TiposTransmision* tipos_;
};

}  // namespace utr
