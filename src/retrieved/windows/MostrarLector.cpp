#include "retrieved/windows/MostrarLector.h"

#include "retrieved/windows/frmLectorFlash.h"

namespace utr {

void RecuperarDatos(FlujoLectura& flujo) {
  ModRTU& mod = flujo.Mod();
  RegistrandoYRelanzando(mod.registro, "frmPpal", "RecuperarDatos", [&] {
    // The channels of another unit would give its stacks the wrong names.
    const LecturaConfiguracion& lectura = flujo.Lectura();
    frmLectorFlash dialogo(mod, lectura.EsDelEquipoActual() ? lectura.RecConfig().get() : nullptr, &flujo.Principal());
    dialogo.exec();
  });
}

}  // namespace utr
