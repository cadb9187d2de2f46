#pragma once

#include "retrieved/windows/VistaRegistros.h"

class QCheckBox;

namespace utr {

// How a view that reads by date or what is pending differs from its sibling. Written with its fields named.
struct PalabrasPorFechas {
  const char* marco_fechas = nullptr;  // name and title of the two frames
  const char* titulo_fechas = nullptr;
  const char* marco_pendientes = nullptr;
  const char* titulo_pendientes = nullptr;
  const char* boton_fechas = nullptr;  // name and text of their buttons
  const char* texto_fechas = nullptr;
  const char* boton_pendientes = nullptr;
  const char* texto_pendientes = nullptr;
  const char* formato = nullptr;    // of the pickers
  bool dia_entero = false;          // the end starts at the last minute of today
  const char* cartucho = nullptr;   // text of the box
  const char* sin_datos = nullptr;  // texts of the panels
  const char* sin_cola = nullptr;
  const char* contador_fechas = nullptr;  // words ahead of the count
  const char* contador_pendientes = nullptr;
  const char* procedimiento_fechas = nullptr;  // in the error log
  const char* procedimiento_pendientes = nullptr;
  const char* titulo_al_reves = nullptr;  // of the message about dates the wrong way round; null: that of the window
  Icono icono_al_reves = Icono::kInformacion;
  bool conservar_al_reves = false;  // the list stays then
};

// What the views of events and of the transmission queue share: one frame reads by date, from the unit or its
// cartridge, the other one what is pending.
class VistaPorFechas : public VistaRegistros {
  Q_OBJECT

 protected:
  VistaPorFechas(ModRTU& mod, const DescripcionLista& descripcion, const PalabrasPorFechas& palabras, Columnas columnas,
                 QPushButton* cerrar, QWidget* parent);

  virtual FinLectura LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) = 0;
  virtual FinLectura LeerPendientes() = 0;

  // What the buttons of the two frames do, for the entries of the menu.
  void TraerPorFecha();
  void TraerPendientes();

 private:
  QWidget* ArmarMarcos();
  QWidget* ArmarPorFecha();
  QWidget* ArmarPendientes();

  PalabrasPorFechas palabras_;
  PanelAviso* picSinDatos_;
  PanelAviso* PicSinDatosColaTx_;
  QCheckBox* chkCartucho_;
};

}  // namespace utr
