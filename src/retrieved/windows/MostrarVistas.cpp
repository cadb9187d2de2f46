#include "retrieved/windows/MostrarVistas.h"

#include <functional>
#include <memory>

#include "retrieved/windows/frmColaTransmicion.h"
#include "retrieved/windows/frmDatos.h"
#include "retrieved/windows/frmEventos.h"

namespace utr {
namespace {

using CrearVista = std::function<std::unique_ptr<QDialog>(const TablaPtr& rec_config)>;

void MostrarVista(FlujoLectura& flujo, const char* procedimiento, const CrearVista& crear) {
  ModRTU& mod = flujo.Mod();
  RegistrandoYMostrando(mod.registro, mod.operador, "frmPpal", procedimiento, flujo.Titulo(), Redaccion::kCompletarse,
                        [&] {
                          if (!flujo.Lectura().LeidaDeLaUTR()) return flujo.OfrecerLectura();
                          std::unique_ptr<QDialog> vista;
                          {
                            const PunteroDeEspera espera(mod.operador);
                            vista = crear(flujo.Lectura().RecConfig());
                          }
                          vista->exec();
                        });
}

}  // namespace

void MostrarEventos(FlujoLectura& flujo) {
  MostrarVista(flujo, "MostrarEventos", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmEventos>(flujo.Mod(), rec_config->Clone(), &flujo.Principal());
  });
}

void MostrarDatos(FlujoLectura& flujo) {
  MostrarVista(flujo, "MostrarDatos", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmDatos>(flujo.Mod(), rec_config->Clone(), &flujo.Principal());
  });
}

void ColaDeTransmicion(FlujoLectura& flujo) {
  MostrarVista(flujo, "ColaDeTransmicion", [&](const TablaPtr& rec_config) {
    return std::make_unique<frmColaTransmicion>(flujo.Mod(), CopiarRecordset(*rec_config->Clone(), true),
                                                &flujo.Principal());
  });
}

}  // namespace utr
