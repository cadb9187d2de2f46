#pragma once

#include "retrieved/windows/VistaRegistros.h"

class QCheckBox;

namespace utr {

// "Eventos de la UTR": events by date, from the unit or its cartridge, and the pending ones.
class frmEventos : public VistaRegistros {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own clone, or null. Show it with exec().
  frmEventos(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);

 protected:
  void Marco(int cual) override;
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  const LectorRegistros& Lector() const override { return lector_; }

 private:
  QWidget* ArmarMarcos();
  void TraerPorFecha();
  void TraerPendientes();

  LectorEventos lector_;
  PanelAviso* picSinDatos_;
  PanelAviso* PicSinDatosColaTx_;
  Fechas fechas_{};
  QCheckBox* chkCartucho_;
};

}  // namespace utr
