#include "session/LecturaConfiguracion.h"

#include <utility>

#include "base/Error.h"
#include "base/Texto.h"
#include "session/AjustesEnlace.h"

namespace utr {
namespace {

bool EsExportada(std::string_view ruta) {
  return ruta.size() >= 3 && Mayusculas(ruta.substr(ruta.size() - 3)) == "UCG";
}

}  // namespace

bool LecturaConfiguracion::Preparar(const std::string& fuente) {
  RegistrandoYRelanzando(mod_.registro, "frmPPal", "Cargando Configuracion", [&] {
    AlFallar([&] { fuente == kFuenteUTR ? PrepararUTR() : PrepararArchivo(fuente); },
             [&] { mod_.conexion.MarcarConectado(false); });
  });
  return true;
}

TablaPtr LecturaConfiguracion::LeerArchivo(const std::string& ruta) const {
  if (EsExportada(ruta)) {
    auto leida = std::make_shared<Tabla>();
    leida->Open(std::filesystem::path(ruta));
    return leida;
  }
  TablaPtr leida = mod_.comunicador.LeerArchivoConfiguracion(ruta);
  if (!leida) Lanzar(error::kArchivo, "LeerArchivoConfiguracion");
  return leida;
}

void LecturaConfiguracion::PrepararArchivo(const std::string& ruta) {
  configuracion_leida_ = false;
  rec_config_ = LeerArchivo(ruta);
  fuente_ = ruta;
}

void LecturaConfiguracion::PrepararUTR() {
  // A read that fails leaves the former table, so its origin stays what it was too.
  const bool anterior = std::exchange(configuracion_leida_, true);
  AlFallar(
      [&] {
        AbrirEnlace();
        mod_.comunicador.IdEquipo(mod_.propiedades.LeerEntero(clave::kIdentificador, 0));
        mod_.conexion.Avisar();
        rec_config_ = mod_.comunicador.ConfiguracionAlmacenada(true);
      },
      [&] { configuracion_leida_ = anterior; });
  fuente_ = kFuenteUTR;
  equipo_leido_ = EquipoActual();
  respaldo_.reset();
  if (TieneFilas()) respaldo_ = respaldos_.Guardar(*rec_config_, MotivoRespaldo::kLectura);
}

LecturaConfiguracion::Equipo LecturaConfiguracion::EquipoActual() const {
  const EntradaEnlace enlace = LeerEntrada(mod_.propiedades);
  Equipo equipo{.identificador = mod_.propiedades.LeerEntero(clave::kIdentificador, 0), .camino = {}};
  equipo.camino = enlace.por_ip ? enlace.direccion + ":" + enlace.puerto_ip
                                : std::to_string(enlace.puerto) + ":" + enlace.numero_telefono;
  return equipo;
}

bool LecturaConfiguracion::EsDelEquipoActual() const {
  return LeidaDeLaUTR() && equipo_leido_ == EquipoActual();
}

void LecturaConfiguracion::AbrirEnlace() {
  if (mod_.conexion.PorIP() || mod_.conexion.EnLlamada()) return;
  mod_.conexion.ConectarSegunAjustes();
}

bool LecturaConfiguracion::TieneFilas() const {
  return rec_config_ && rec_config_->Abierta() && rec_config_->RecordCount() > 0;
}

ResultadoRespaldo LecturaConfiguracion::RespaldarParaEscribir() {
  if (!rec_config_) return {.falla = "No hay una configuración leída"};
  return respaldos_.Guardar(*rec_config_, MotivoRespaldo::kEscritura);
}

void LecturaConfiguracion::Guardar(const std::filesystem::path& ruta) const {
  rec_config_->GuardarSobre(ruta);
}

void LecturaConfiguracion::Liberar() {
  if (rec_config_) rec_config_->Close();
  rec_config_.reset();
}

}  // namespace utr
