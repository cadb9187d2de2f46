#pragma once

#include <QGroupBox>
#include <cstdint>

#include "widgets/CampoFecha.h"

class QCheckBox;

namespace utr {

// A picker of a time of the day, without seconds. An hour or a minute that is left empty stays what it was.
class CampoHorario : public CampoFecha {
  Q_OBJECT

 public:
  explicit CampoHorario(const char* nombre, QWidget* parent = nullptr);

  // The minute of the day, 0 to 1439; any minute is taken modulo a day.
  std::int16_t Minuto() const;
  void Minuto(int minuto);

 protected:
  void fixup(QString& escrito) const override;
};

// The boxes of the three kinds of transmission: "chkTWind", "chkTxOblig", "chkCond".
class TiposTransmision : public QGroupBox {
  Q_OBJECT

 public:
  explicit TiposTransmision(const QString& titulo, QWidget* parent = nullptr);

  QCheckBox* chkTWind;
  QCheckBox* chkTxOblig;
  QCheckBox* chkCond;
};

}  // namespace utr
