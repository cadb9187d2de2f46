#pragma once

#include <QComboBox>

#include "session/AjustesEnlace.h"
#include "session/ModRTU.h"
#include "session/NumerosDePuerto.h"

namespace utr {

// The serial devices of this machine, through Qt's serial port library.
std::vector<Dispositivo> DispositivosDelEquipo();

// Fills a drop-down list with ports: "COM n", its number with the entry, the system name as tip.
void CargarPuertos(QComboBox& lista, const std::vector<PuertoSerie>& puertos);

// Makes the port and the speed of an entry current; one that its list doesn't offer is added at its end, marked. Where
// the entry has none, nothing is chosen. Over IP the lists stand at their defaults.
void ElegirEnlace(QComboBox& puertos, QComboBox& velocidades, const EntradaEnlace& entrada);

}  // namespace utr
