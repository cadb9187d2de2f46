#include "schedule/windows/frmPeriodos.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/Numeros.h"
#include "schedule/windows/ControlesHorario.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr int kMinutosPropuestos = 360;
constexpr int kCifrasPeriodo = 9;

}  // namespace

frmPeriodos::frmPeriodos(Operador& operador, QWidget* parent)
    : QDialog(parent),
      operador_(operador),
      HorarioInicio_(new CampoHorario("HorarioInicio")),
      HorarioFin_(new CampoHorario("HorarioFin")),
      PeriodoAgenda_(new CampoDigitos("PeriodoAgenda", kCifrasPeriodo)),
      tipos_(new TiposTransmision("Tipo de Transmisión (para todos los horarios): ")) {
  setObjectName("frmPeriodos");
  setWindowTitle("Horarios Periódicos");
  auto* reja = new QGridLayout;
  reja->addWidget(Rotulo("lblInicio", "Horario &inicio:", HorarioInicio_), 0, 0);
  reja->addWidget(HorarioInicio_, 0, 1);
  reja->addWidget(Rotulo("lblFin", "Horario &fin:", HorarioFin_), 1, 0);
  reja->addWidget(HorarioFin_, 1, 1);
  reja->addWidget(Rotulo("lblPeriodo", "&Periodo:", PeriodoAgenda_), 2, 0);
  reja->addWidget(PeriodoAgenda_, 2, 1);
  reja->addWidget(new QLabel("(minutos)"), 2, 2);
  reja->setColumnStretch(2, 1);
  PeriodoAgenda_->setMaximumWidth(HorarioInicio_->sizeHint().width());
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addWidget(new QLabel("Defina el período de horarios de la agenda:"));
  cuerpo->addLayout(reja);
  cuerpo->addWidget(tipos_);
  QPushButton* aceptar = Boton("cmd(0)", "Aceptar");
  QPushButton* cancelar = Boton("cmd(1)", "Cancelar");
  connect(aceptar, &QPushButton::clicked, this, &frmPeriodos::Aceptar);
  connect(cancelar, &QPushButton::clicked, this, &frmPeriodos::reject);
  ArmarDialogo(*this, cuerpo, {.aceptar = aceptar, .cancelar = cancelar},
               {HorarioInicio_, HorarioFin_, PeriodoAgenda_, tipos_->chkTWind, tipos_->chkTxOblig, tipos_->chkCond});
  HorarioInicio_->setFocus();
  AjustarTamano(*this);
}

std::int16_t frmPeriodos::HoraDeInicio() const {
  return HorarioInicio_->Minuto();
}

void frmPeriodos::HoraDeInicio(int minuto) {
  HorarioInicio_->Minuto(minuto);
  HorarioFin_->Minuto(minuto + kMinutosPropuestos);
}

std::int16_t frmPeriodos::HoraDeFin() const {
  return HorarioFin_->Minuto();
}

std::int16_t frmPeriodos::PeriodoDeAgenda() const {
  return Entero16(PeriodoEscrito());
}

bool frmPeriodos::TxCWind() const {
  return tipos_->chkTWind->isChecked();
}

bool frmPeriodos::TxCOblig() const {
  return tipos_->chkTxOblig->isChecked();
}

bool frmPeriodos::TxCCond() const {
  return tipos_->chkCond->isChecked();
}

double frmPeriodos::PeriodoEscrito() const {
  return Val(U(PeriodoAgenda_->text()));
}

void frmPeriodos::Aceptar() {
  if (HoraDeInicio() > HoraDeFin())
    return Informar(operador_, U(windowTitle()), "El horario de inicio debe ser inferior al horario de finalización");
  if (PeriodoEscrito() == 0) {
    Informar(operador_, U(windowTitle()), "Debe ingresar un período mayor que cero");
    return PeriodoAgenda_->setFocus();
  }
  Acepto = true;
  accept();
}

}  // namespace utr
