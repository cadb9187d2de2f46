#include "retrieved/windows/MostrarVistas.h"

#include <memory>
#include <optional>
#include <utility>

#include "retrieved/windows/frmColaTransmicion.h"
#include "retrieved/windows/frmDatos.h"
#include "retrieved/windows/frmDescarga.h"
#include "retrieved/windows/frmEventos.h"
#include "retrieved/windows/frmProcesar.h"
#include "retrieved/windows/frmVisualizador.h"

namespace utr {
namespace {

// The viewer on a file, or on a report alone where there is no file.
void Visualizar(FlujoLectura& flujo, const std::filesystem::path& archivo, const std::filesystem::path& informe) {
  RegistrandoYRelanzando(flujo.Mod().registro, "frmPpal", "VisualizarArchivos", [&] {
    frmVisualizador visualizador(flujo.Mod(), &flujo.Principal());
    visualizador.MuestraArchivo(archivo);
    if (archivo.empty() && !informe.empty()) visualizador.MuestraInforme(informe);
    visualizador.exec();
  });
}

constexpr const char* kElegir = "Debe seleccionar la configuración\nque le quiere aplicar a los datos";
constexpr const char* kVerAhora =
    "La información solicitada ha sido procesada satisfactoriamente\n¿Desea visualizar la información obtenida ahora?";

// The configuration to apply, be it a former one; nothing when the operator doesn't want to, or when there is none.
std::optional<ConfiguracionAplicada> ElegirConfiguracion(FlujoLectura& flujo) {
  const Mensaje pedido{kElegir, flujo.Titulo(), Icono::kInformacion, Botones::kAceptarCancelar};
  if (flujo.Mod().operador.Mostrar(pedido) != Respuesta::kAceptar) return std::nullopt;
  const std::uint32_t lecturas = flujo.Lectura().Lecturas();
  flujo.LeerConfiguracion({.ShowUCG = true});
  if (!flujo.Lectura().TieneFilas()) {
    flujo.Estado("No hay una configuración para aplicar a los datos");
    return std::nullopt;
  }
  const LecturaConfiguracion& lectura = flujo.Lectura();
  return ConfiguracionAplicada{CopiarRecordset(*lectura.RecConfig()->Clone(), true), lectura.Descripcion(),
                               lectura.Lecturas() == lecturas};
}

}  // namespace

void MostrarEventos(FlujoLectura& flujo) {
  MostrarConConfiguracion(flujo, "MostrarEventos", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmEventos>(flujo.Mod(), rec_config->Clone(), &flujo.Principal());
  });
}

void MostrarDatos(FlujoLectura& flujo) {
  MostrarConConfiguracion(flujo, "MostrarDatos", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmDatos>(flujo.Mod(), rec_config->Clone(), &flujo.Principal());
  });
}

void ColaDeTransmicion(FlujoLectura& flujo) {
  MostrarConConfiguracion(flujo, "ColaDeTransmicion", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmColaTransmicion>(flujo.Mod(), CopiarRecordset(*rec_config->Clone(), true),
                                                &flujo.Principal());
  });
}

void DescargarTodo(FlujoLectura& flujo) {
  MostrarConConfiguracion(flujo, "DescargarTodo", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmDescarga>(flujo.Mod(), rec_config->Clone(), &flujo.Principal());
  });
}

void VisualizarArchivos(FlujoLectura& flujo, const std::filesystem::path& archivo) {
  Visualizar(flujo, archivo, {});
}

void ProcesarDatos(FlujoLectura& flujo) {
  ModRTU& mod = flujo.Mod();
  RegistrandoYRelanzando(mod.registro, "frmPpal", "ProcesarDatos", [&] {
    std::optional<ConfiguracionAplicada> configuracion = ElegirConfiguracion(flujo);
    if (!configuracion) return;
    frmProcesar procesar(mod, std::move(*configuracion), &flujo.Principal());
    procesar.exec();
    if (!procesar.Procesado) return;
    flujo.Estado("Informe de la recuperación: " + procesar.Informe.string());
    if (Preguntar(mod.operador, flujo.Titulo(), kVerAhora))
      Visualizar(flujo, procesar.ArchivoResultado, procesar.Informe);
  });
}

}  // namespace utr
