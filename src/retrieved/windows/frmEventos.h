#pragma once

#include "retrieved/windows/VistaPorFechas.h"

namespace utr {

// "Eventos de la UTR": events by date, from the unit or its cartridge, and the pending ones.
class frmEventos : public VistaPorFechas {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own clone, or null. Show it with exec().
  frmEventos(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);

 protected:
  FinLectura LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) override;
  FinLectura LeerPendientes() override;
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  const LectorRegistros& Lector() const override { return lector_; }
  const Tabla* Canales() const override { return configuracion_.get(); }

 private:
  TablaPtr configuracion_;
  LectorEventos lector_;
};

}  // namespace utr
