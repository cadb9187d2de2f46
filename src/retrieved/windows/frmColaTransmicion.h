#pragma once

#include "retrieved/windows/VistaPorFechas.h"

namespace utr {

// "Cola de transmisión": what the unit holds for sending, by day or pending.
class frmColaTransmicion : public VistaPorFechas {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own copy, or null. Show it with exec().
  frmColaTransmicion(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);

 protected:
  FinLectura LeerPorFecha(const FechaHora& desde, const FechaHora& hasta, bool cartucho) override;
  FinLectura LeerPendientes() override;
  EncabezadoLista Encabezado(bool para_imprimir) const override;
  const LectorRegistros& Lector() const override { return lector_; }
  const Tabla* Canales() const override { return configuracion_.get(); }
  bool AIntervalos() const override { return false; }

 private:
  TablaPtr configuracion_;
  LectorCola lector_;
};

}  // namespace utr
