#pragma once

#include "retrieved/windows/VistaRegistros.h"

class QCheckBox;

namespace utr {

// How a view that reads by date or what is pending differs from its sibling.
struct PalabrasPorFechas {
  const char* marco_fechas;  // name and title of the two frames
  const char* titulo_fechas;
  const char* marco_pendientes;
  const char* titulo_pendientes;
  const char* boton_fechas;  // name and text of their buttons
  const char* texto_fechas;
  const char* boton_pendientes;
  const char* texto_pendientes;
  const char* formato;    // of the pickers
  bool dia_entero;        // the end starts at the last minute of today
  const char* cartucho;   // text of the box
  const char* sin_datos;  // texts of the panels
  const char* sin_cola;
  const char* contador_fechas;  // words ahead of the count
  const char* contador_pendientes;
  const char* procedimiento_fechas;  // in the error log
  const char* procedimiento_pendientes;
  const char* titulo_al_reves;  // of the message about dates the wrong way round; null: that of the window
  Icono icono_al_reves;
  bool conservar_al_reves;  // the list stays then
};

// What the views of events and of the transmission queue share: one frame reads by date, from the unit or its
// cartridge, the other one what is pending.
class VistaPorFechas : public VistaRegistros {
  Q_OBJECT

 protected:
  VistaPorFechas(ModRTU& mod, const DescripcionVista& descripcion, const PalabrasPorFechas& palabras, Columnas columnas,
                 QPushButton* cerrar, QWidget* parent);

  virtual FinLectura LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) = 0;
  virtual FinLectura LeerPendientes() = 0;

  void Marco(int cual) override;
  const Fechas& LasFechas() const { return fechas_; }

 private:
  QWidget* ArmarMarcos();
  QWidget* ArmarPorFecha();
  QWidget* ArmarPendientes();
  void TraerPorFecha();
  void TraerPendientes();

  const PalabrasPorFechas& palabras_;
  PanelAviso* picSinDatos_;
  PanelAviso* PicSinDatosColaTx_;
  Fechas fechas_{};
  QCheckBox* chkCartucho_;
};

}  // namespace utr
