#include "operations/windows/MostrarOperaciones.h"

#include "operations/windows/frmComandos.h"
#include "operations/windows/frmSalidasDigitales.h"
#include "session/AjustesEnlace.h"
#include "widgets/TextoQt.h"

namespace utr {

void MostrarSalidasDigitales(FlujoLectura& flujo) {
  MostrarConConfiguracion(flujo, "MostrarSalidasDigitales", [&](const TablaPtr&) {
    return std::make_unique<frmSalidasDigitales>(flujo.Mod(), &flujo.Principal());
  });
}

void MostrarComandos(FlujoLectura& flujo) {
  ModRTU& mod = flujo.Mod();
  frmComandos(mod, &flujo.Principal()).exec();
  if (const auto titulo = TituloTrasComandos(mod.propiedades)) flujo.Principal().setWindowTitle(Q(*titulo));
  mod.conexion.Avisar();
}

}  // namespace utr
