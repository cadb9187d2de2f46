#pragma once

#include "retrieved/windows/VistaRegistros.h"

class QCheckBox;

namespace utr {

// "Cola de transmisión": what the unit holds for sending, by day or pending.
class frmColaTransmicion : public VistaRegistros {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own copy, or null. Show it with exec().
  frmColaTransmicion(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);

 protected:
  void Marco(int cual) override;
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  const LectorRegistros& Lector() const override { return lector_; }

 private:
  QWidget* ArmarMarcos();
  void TraerPorDia();
  void TraerPendientes();

  LectorCola lector_;
  PanelAviso* picSinDatos_;
  PanelAviso* PicSinDatosColaTx_;
  Fechas fechas_{};
  QCheckBox* chkCartucho_;
};

}  // namespace utr
