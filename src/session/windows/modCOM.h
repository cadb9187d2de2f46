#pragma once

#include <QComboBox>

#include "session/ModRTU.h"

namespace utr {

// The serial ports of this machine, through Qt's serial port library.
class PuertosDelEquipo : public ListaDePuertos {
 public:
  std::vector<PuertoSerie> Listar() override;
};

// Fills a drop-down list with ports: "COM n", its number with the entry, the system name as tip.
void CargarPuertos(QComboBox& lista, const std::vector<PuertoSerie>& puertos);

}  // namespace utr
