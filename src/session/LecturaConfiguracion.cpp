#include "session/LecturaConfiguracion.h"

#include <fmt/format.h>

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

TablaPtr AbrirExportada(const std::filesystem::path& ruta) {
  auto leida = std::make_shared<Tabla>();
  leida->Open(ruta);
  return leida;
}

TablaPtr LeerArchivoDeCanales(Comunicador& comunicador, const std::string& ruta) {
  if (EsExportada(ruta)) return AbrirExportada(ruta);
  TablaPtr leida = comunicador.LeerArchivoConfiguracion(ruta);
  if (!leida) Lanzar(error::kArchivo, "LeerArchivoConfiguracion");
  return leida;
}

bool LecturaConfiguracion::Preparar(const std::string& fuente) {
  RegistrandoYRelanzando(mod_.registro, "frmPPal", "Cargando Configuracion", [&] {
    AlFallar([&] { fuente == kFuenteUTR ? PrepararUTR() : PrepararArchivo(fuente); },
             [&] { mod_.conexion.MarcarConectado(false); });
  });
  return true;
}

TablaPtr LecturaConfiguracion::LeerArchivo(const std::string& ruta) const {
  return LeerArchivoDeCanales(mod_.comunicador, ruta);
}

void LecturaConfiguracion::PrepararArchivo(const std::string& ruta) {
  configuracion_leida_ = false;
  rec_config_ = LeerArchivo(ruta);
  Anotar(ruta);
}

void LecturaConfiguracion::Anotar(const std::string& fuente) {
  fuente_ = fuente;
  leida_el_ = mod_.reloj.Ahora();
  ++lecturas_;
}

std::string LecturaConfiguracion::Descripcion() const {
  if (!leida_el_) return {};
  const std::string cuando = ", leída el " + TextoFechaHora(*leida_el_);
  if (fuente_ != kFuenteUTR) return "del archivo " + fuente_ + cuando;
  const std::int32_t identificador = equipo_leido_.identificador;
  return "de la UTR, " + (identificador == 0 ? "sin identificador" : "identificador " + std::to_string(identificador)) +
         cuando;
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
  Anotar(std::string(kFuenteUTR));
  equipo_leido_ = EquipoActual();
  respaldo_.reset();
  if (!TieneFilas()) return;
  Respaldar(*rec_config_);
  respaldo_ = ultimo_respaldo_;
}

TablaPtr LecturaConfiguracion::LeerDeLaUTR() {
  TablaPtr leida = mod_.comunicador.ConfiguracionAlmacenada(true);
  if (leida && leida->Abierta() && leida->RecordCount() > 0) Respaldar(*leida);
  return leida;
}

ResultadoRespaldo LecturaConfiguracion::Guardar(const Tabla& tabla, MotivoRespaldo motivo) {
  ResultadoRespaldo resultado = respaldos_.Guardar(tabla, motivo);
  const std::string fin = !resultado.Guardado() ? "[" + resultado.falla + "]"
                          : resultado.repetido  ? "ya estaba guardado"
                                                : std::string(asiento::kHecho);
  mod_.diario.Anotar({.momento = mod_.reloj.Ahora(),
                      .comando = fmt::format("Respaldo ({})", TextoDe(motivo)),
                      .antes = asiento::kNada,
                      .escrito = resultado.Guardado() ? resultado.archivo.filename().string() : asiento::kNada,
                      .resultado = fin,
                      .clase = ClaseAsiento::kRespaldo});
  return resultado;
}

void LecturaConfiguracion::Respaldar(const Tabla& tabla) {
  ultimo_respaldo_ = Guardar(tabla, MotivoRespaldo::kLectura);
  equipo_respaldado_ = EquipoActual();
}

std::optional<ResultadoRespaldo> LecturaConfiguracion::RespaldoDelEquipo() const {
  return equipo_respaldado_ == EquipoActual() ? ultimo_respaldo_ : std::nullopt;
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
  return Guardar(*rec_config_, MotivoRespaldo::kEscritura);
}

void LecturaConfiguracion::Guardar(const std::filesystem::path& ruta) const {
  rec_config_->GuardarSobre(ruta);
}

void LecturaConfiguracion::Liberar() {
  if (rec_config_) rec_config_->Close();
  rec_config_.reset();
}

}  // namespace utr
