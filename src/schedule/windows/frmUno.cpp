#include "schedule/windows/frmUno.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "schedule/windows/ControlesHorario.h"
#include "widgets/Campos.h"
#include "widgets/MarcoDialogo.h"
#include "widgets/TextoQt.h"

namespace utr {

frmUno::frmUno(QWidget* parent)
    : QDialog(parent),
      lblEstaba_(new QLabel),
      HorarioInicio_(new CampoHorario("HorarioInicio")),
      tipos_(new TiposTransmision("Tipo de Transmisión")) {
  setObjectName("frmUno");
  setWindowTitle("Ingreso de Horarios");
  lblEstaba_->setObjectName("lblEstaba");
  lblEstaba_->setWordWrap(true);
  QFont negrita = lblEstaba_->font();
  negrita.setBold(true);
  lblEstaba_->setFont(negrita);
  lblEstaba_->hide();
  auto* horario = new QHBoxLayout;
  horario->addWidget(
      Rotulo("lblHorario", "Defina un &horario para la agenda de la remota (desde 00:00 a 23:59):", HorarioInicio_));
  horario->addWidget(HorarioInicio_);
  horario->addStretch(1);
  auto* cuerpo = new QVBoxLayout;
  cuerpo->addWidget(lblEstaba_);
  cuerpo->addLayout(horario);
  cuerpo->addWidget(tipos_);
  QPushButton* aceptar = Boton("cmd(0)", "Aceptar");
  QPushButton* cancelar = Boton("cmd(1)", "Cancelar");
  connect(aceptar, &QPushButton::clicked, this, &frmUno::Aceptar);
  connect(cancelar, &QPushButton::clicked, this, &frmUno::reject);
  ArmarDialogo(*this, cuerpo, {.aceptar = aceptar, .cancelar = cancelar},
               {HorarioInicio_, tipos_->chkTWind, tipos_->chkTxOblig, tipos_->chkCond});
  HorarioInicio_->setFocus();
  AjustarTamano(*this);
}

void frmUno::Horario(FDLHoraroPtr horario) {
  horario_ = std::move(horario);
  HorarioInicio_->Minuto(horario_->Horario);
  tipos_->chkCond->setChecked(horario_->TCond);
  tipos_->chkTWind->setChecked(horario_->TWind);
  tipos_->chkTxOblig->setChecked(horario_->TOblig);
}

void frmUno::AvisarQueEstaba() {
  lblEstaba_->setText(QStringLiteral("Ya está en la agenda: se edita el horario %1; Cancelar lo quita")
                          .arg(Q(TextoHorario(horario_->Horario))));
  lblEstaba_->show();
}

void frmUno::Aceptar() {
  horario_->Horario = HorarioInicio_->Minuto();
  horario_->TCond = tipos_->chkCond->isChecked();
  horario_->TWind = tipos_->chkTWind->isChecked();
  horario_->TOblig = tipos_->chkTxOblig->isChecked();
  Acepto = true;
  accept();
}

}  // namespace utr
