#include "schedule/windows/ControlesHorario.h"

#include <QCheckBox>
#include <QVBoxLayout>
#include <algorithm>

#include "schedule/FDLHoraro.h"

namespace utr {
namespace {

constexpr int kMinutosHora = 60;

}  // namespace

CampoHorario::CampoHorario(const char* nombre, QWidget* parent) : CampoFecha(parent) {
  setObjectName(QString::fromLatin1(nombre));
  setTimeSpec(Qt::UTC);  // no hour of the day is missing or doubled there
  setDateTime(QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC));
  setDisplayFormat(QStringLiteral("HH:mm"));
  setWrapping(true);
}

std::int16_t CampoHorario::Minuto() const {
  return static_cast<std::int16_t>(time().hour() * kMinutosHora + time().minute());
}

void CampoHorario::Minuto(int minuto) {
  const int del_dia = MinutoDelDia(minuto);
  setTime(QTime(del_dia / kMinutosHora, del_dia % kMinutosHora));
}

// Left to itself, the picker takes an emptied hour or minute for 00.
void CampoHorario::fixup(QString& escrito) const {
  const QStringList partes = escrito.split(':');
  if (std::any_of(partes.begin(), partes.end(), [](const QString& parte) { return parte.trimmed().isEmpty(); }))
    escrito = textFromDateTime(dateTime());
  CampoFecha::fixup(escrito);
}

TiposTransmision::TiposTransmision(const QString& titulo, QWidget* parent)
    : QGroupBox(titulo, parent),
      chkTWind(new QCheckBox("Transmisión por &Ventana (TxWind)")),
      chkTxOblig(new QCheckBox("Transmisión &Obligatoria (TxOblig)")),
      chkCond(new QCheckBox("Transmisión &Condicional (TxCond)")) {
  chkTWind->setObjectName("chkTWind");
  chkTxOblig->setObjectName("chkTxOblig");
  chkCond->setObjectName("chkCond");
  auto* columna = new QVBoxLayout(this);
  for (QCheckBox* caja : {chkTWind, chkTxOblig, chkCond}) columna->addWidget(caja);
}

}  // namespace utr
