#include "session/windows/FlujoLectura.h"

#include <QDialog>
#include <memory>

#include "lists/DocumentoLista.h"
#include "session/OperacionesEnlace.h"
#include "session/windows/Visitas.h"
#include "session/windows/frmPresentacion.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmPpal";

}  // namespace

void GuardarConfiguracion(ModRTU& mod, const std::string& titulo,
                          const std::function<void(const std::filesystem::path& ruta)>& guardar) {
  PedidoArchivo pedido;
  pedido.titulo = "Guardar configuración...";
  pedido.filtro = "Configuración UTR (*.ucg)|*.ucg";
  pedido.carpeta = mod.carpeta;
  pedido.nombre = NombreDeArchivo({mod.EstacionAMano(), {"Día: " + TextoFecha(mod.reloj.Ahora())}});
  const auto ruta = mod.operador.ElegirGuardar(pedido);
  if (!ruta) return;
  guardar(*ruta);
  Informar(mod.operador, titulo,
           "La configuración de la estación remota ha sido guardada satisfacoriamente\n"
           "Tenga en cuenta que la misma solamente debería ser utilizada\n"
           "para poner en marcha nuevamente esta misma estación remota");
}

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
    if (pedido.Estacion) dialogo->Tomar(*pedido.Estacion);
    dialogo->exec();
    // A cancelled dialog may have closed or moved the link, so it is opened again as the settings say.
    dialogo->Acepto ? AceptarLectura(*dialogo, pedido) : mod_.conexion.ConectarSegunAjustes();
  };
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerConfiguracion", Titulo(),
                               Redaccion::kCompletada, [&] { AlFallar(leer, [&] { dialogo.reset(); }); });
}

void FlujoLectura::AceptarLectura(frmPresentacion& dialogo, const PedidoConfiguracion& pedido) {
  mod_.comunicador.PorIP(mod_.conexion.PorIP());
  if (mod_.conexion.PorIP()) {
    mod_.comunicador.DireccionIP(dialogo.Direccion());
    mod_.comunicador.PuertoIP(dialogo.Puerto());
  }
  mod_.conexion.Avisar();
  dialogo.MostrarLectura();
  {
    const Ocupacion ocupacion(dialogo, dialogo.AlLeer());
    Preparar(dialogo.Fuente());
  }
  dialogo.hide();
  if (principal_.isVisible())
    principal_.activateWindow();  // a dialog seen for a blink may leave the keyboard to nobody
  if (pedido.MostrarConfig && servicios_.mostrar_canales) servicios_.mostrar_canales(pedido.SoloMostrarLaCFG);
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
      Preparar(std::string(kFuenteUTR));
    }
    dialogo.reset();
  };
  return RegistrandoYMostrando(mod_.registro, mod_.operador, kModulo, "LeerConfiguracionDirectaUTR", Titulo(),
                               Redaccion::kCompletada, [&] { AlFallar(leer, [&] { dialogo.reset(); }); });
}

void FlujoLectura::OfrecerLectura() {
  if (!Preguntar(mod_.operador, Titulo(), "No se ha leido la configuración de la RTU\n¿Desea leerla ahora?")) return;
  const PunteroDeEspera espera(mod_.operador);
  Preparar(std::string(kFuenteUTR));
}

bool FlujoLectura::Releer() {
  const PunteroDeEspera espera(mod_.operador);
  lectura_.OlvidarOrigen();
  const bool leida = IgnorandoErrores([&] { Preparar(std::string(kFuenteUTR)); }) && lectura_.TieneFilas();
  if (!leida) lectura_.OlvidarOrigen();
  return leida;
}

void FlujoLectura::Preparar(const std::string& fuente) {
  Verificacion({});
  lectura_.Preparar(fuente);
  if (lectura_.LeidaDeLaUTR()) Visitas(mod_).Anotar();
  if (servicios_.leida) servicios_.leida();
  const auto& respaldo = lectura_.RespaldoDeLectura();
  if (fuente == kFuenteUTR && respaldo && !respaldo->Guardado())
    Verificacion("Sin respaldo de lo leído", respaldo->falla);
}

void FlujoLectura::Estado(std::string_view texto) const {
  if (servicios_.estado) servicios_.estado(texto);
}

void FlujoLectura::Verificacion(std::string_view texto, std::string_view detalle) const {
  if (servicios_.verificacion) servicios_.verificacion(texto, detalle);
}

void FlujoLectura::ExportarConfiguracion() {
  RegistrandoYRelanzando(mod_.registro, kModulo, "ExportarConfiguracion", [&] {
    if (!lectura_.LeidaDeLaUTR() && !LeerParaExportar()) return;
    GuardarConfiguracion(mod_, Titulo(), [this](const std::filesystem::path& ruta) { lectura_.Guardar(ruta); });
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

void MostrarConConfiguracion(FlujoLectura& flujo, const char* procedimiento, const CrearVentana& crear) {
  ModRTU& mod = flujo.Mod();
  const auto mostrar = [&] {
    if (!flujo.Lectura().LeidaDeLaUTR()) return flujo.OfrecerLectura();
    std::unique_ptr<QDialog> ventana;
    {
      const PunteroDeEspera espera(mod.operador);
      ventana = crear(flujo.Lectura().RecConfig());
    }
    ventana->exec();
  };
  RegistrandoYMostrando(mod.registro, mod.operador, kModulo, procedimiento, flujo.Titulo(), Redaccion::kCompletarse,
                        mostrar);
}

}  // namespace utr
