#include "session/windows/FlujoLectura.h"

#include <QWidget>
#include <memory>

#include "session/AjustesEnlace.h"
#include "session/OperacionesEnlace.h"
#include "session/windows/frmPresentacion.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmPpal";

}  // namespace

std::string FlujoLectura::Titulo() const {
  return U(principal_.windowTitle());
}

// The parent of a dialog: none while the main window isn't seen yet, so that the dialog takes the middle of the screen.
QWidget* FlujoLectura::Encima() const {
  return principal_.isVisible() ? &principal_ : nullptr;
}

bool FlujoLectura::LeerConfiguracion(const PedidoConfiguracion& pedido) {
  std::unique_ptr<frmPresentacion> dialogo;
  const auto leer = [&] {
    dialogo = std::make_unique<frmPresentacion>(mod_, Encima());
    dialogo->FijarFuente(pedido.DesdeUTROnly);
    dialogo->bShowUCG = pedido.ShowUCG;
    dialogo->ActivarDesactivarControles();
    dialogo->exec();
    // A cancelled dialog may have closed or moved the link, so it is opened again as the settings say.
    dialogo->Acepto ? AceptarLectura(*dialogo) : mod_.conexion.ConectarSegunAjustes();
  };
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerConfiguracion", Titulo(),
                               Redaccion::kCompletada, [&] { AlFallar(leer, [&] { dialogo.reset(); }); });
}

void FlujoLectura::AceptarLectura(frmPresentacion& dialogo) {
  mod_.comunicador.PorIP(mod_.conexion.PorIP());
  if (mod_.conexion.PorIP()) {
    mod_.comunicador.DireccionIP(dialogo.Direccion());
    mod_.comunicador.PuertoIP(dialogo.Puerto());
  }
  mod_.conexion.Avisar();
  dialogo.MostrarLectura();
  {
    const Ocupacion ocupacion(dialogo, dialogo.AlLeer());
    lectura_.Preparar(dialogo.Fuente());
  }
  dialogo.hide();
  if (principal_.isVisible())
    principal_.activateWindow();  // a dialog seen for a blink may leave the keyboard to nobody
  CompararHoras(mod_);
  if (const auto titulo = TituloTrasLectura(mod_.propiedades)) principal_.setWindowTitle(Q(*titulo));
}

bool FlujoLectura::LeerConfiguracionDirectaUTR() {
  std::unique_ptr<frmPresentacion> dialogo;
  const auto leer = [&] {
    dialogo = std::make_unique<frmPresentacion>(mod_, Encima());
    dialogo->MostrarLectura();
    {
      const Ocupacion ocupacion(*dialogo, dialogo->AlLeer());
      lectura_.Preparar(std::string(kFuenteUTR));
    }
    dialogo.reset();
  };
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerConfiguracionDirectaUTR", Titulo(),
                               Redaccion::kCompletada, [&] { AlFallar(leer, [&] { dialogo.reset(); }); });
}

void FlujoLectura::OfrecerLectura() {
  if (!Preguntar(mod_.operador, Titulo(), "No se ha leido la configuración de la RTU\n¿Desea leerla ahora?")) return;
  const PunteroDeEspera espera(mod_.operador);
  lectura_.Preparar(std::string(kFuenteUTR));
}

void FlujoLectura::ExportarConfiguracion() {
  RegistrandoYRelanzando(mod_.registro, kModulo, "ExportarConfiguracion", [&] {
    if (!lectura_.LeidaDeLaUTR() && !LeerParaExportar()) return;
    PedidoArchivo pedido;
    pedido.titulo = "Guardar configuración...";
    pedido.filtro = "Configuración UTR (*.ucg)|*.ucg";
    pedido.carpeta = mod_.carpeta;
    const auto ruta = mod_.operador.ElegirGuardar(pedido);
    if (!ruta) return;
    lectura_.Guardar(*ruta);
    Informar(mod_.operador, Titulo(),
             "La configuración de la estación remota ha sido guardada satisfacoriamente\n"
             "Tenga en cuenta que la misma solamente debería ser utilizada\n"
             "para poner en marcha nuevamente esta misma estación remota");
  });
}

// True when the unit's configuration is at hand now and is to be exported. A read also ends well after a cancel, so the
// table itself is asked.
bool FlujoLectura::LeerParaExportar() {
  if (!Preguntar(mod_.operador, Titulo(),
                 "Debe leer la configuración desde la UTR previamente\n¿Desea leer la configuración ahora?"))
    return false;
  if (!LeerConfiguracion({.DesdeUTROnly = true}) || !lectura_.LeidaDeLaUTR()) return false;
  return Preguntar(mod_.operador, Titulo(), "Se ha leido la configuración desde la UTR\n¿Desea exportarla ahora?");
}

}  // namespace utr
