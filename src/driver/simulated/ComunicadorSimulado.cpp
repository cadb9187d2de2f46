#include "driver/simulated/ComunicadorSimulado.h"

namespace utr {

struct ComunicadorSimulado::Interior {
  std::filesystem::path carpeta;
  Reloj& reloj;
  Atender atender;
};

ComunicadorSimulado::ComunicadorSimulado(std::filesystem::path carpeta, Reloj& reloj, Atender atender)
    : interior_(std::make_unique<Interior>(std::move(carpeta), reloj, std::move(atender))) {}
ComunicadorSimulado::~ComunicadorSimulado() = default;

std::vector<std::pair<int, std::string>> ComunicadorSimulado::Puertos() const {
  return {{1, "simulado"}};
}

// No unit is attached yet: every operation answers as an open line with nobody at its other end.
void ComunicadorSimulado::IdEquipo(std::int32_t) {}
bool ComunicadorSimulado::BorrarFlash() {
  return false;
}
bool ComunicadorSimulado::ReiniciarAgenda(std::string_view) {
  return false;
}
bool ComunicadorSimulado::ReiniciarUTR(std::string_view) {
  return false;
}
TablaPtr ComunicadorSimulado::DecodificarPagina(std::span<const std::uint8_t>, std::string_view, std::string_view) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::DecodificarPaginaCola(std::span<const std::uint8_t>, std::string_view, std::string_view) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::LeerInstantaneos() {
  return nullptr;
}
std::string ComunicadorSimulado::ConvertirA(std::int16_t) {
  return {};
}
std::string ComunicadorSimulado::ConvertirDe(std::int16_t) {
  return {};
}
void ComunicadorSimulado::EscribirLog(std::string_view) noexcept {}
std::int32_t ComunicadorSimulado::DescribirCodigo(std::string_view) {
  return -1;
}
TablaPtr ComunicadorSimulado::LeerAgenda() {
  return nullptr;
}
std::string ComunicadorSimulado::LeerPaginaFlash(std::int16_t, std::int16_t) {
  return {};
}
void ComunicadorSimulado::Pausa(std::int16_t) {}
bool ComunicadorSimulado::GrabarAgenda(Tabla&) {
  return false;
}
TablaPtr ComunicadorSimulado::ConfiguracionAlmacenada(bool) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::LeerArchivoConfiguracion(std::string_view) {
  return nullptr;
}
bool ComunicadorSimulado::GrabarParametrizacion(Tabla&) {
  return false;
}
TablaPtr ComunicadorSimulado::LeerEventos(std::string_view, std::string_view) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::LeerDatos(std::string_view, std::string_view, std::int16_t) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::LeerColaTx(std::string_view, std::string_view) {
  return nullptr;
}
std::string ComunicadorSimulado::LeerFechaHora() {
  return {};
}
std::int32_t ComunicadorSimulado::LeerEstado() {
  return -1;
}
bool ComunicadorSimulado::GrabarFechaHora() {
  return false;
}
bool ComunicadorSimulado::GrabarEstado(std::string_view) {
  return false;
}
bool ComunicadorSimulado::EscribirPagina(std::string_view, std::string_view) {
  return false;
}
bool ComunicadorSimulado::GrabarEvento(std::string_view, std::string_view) {
  return false;
}
bool ComunicadorSimulado::GrabarPilaCanal(std::string_view, std::string_view) {
  return false;
}
bool ComunicadorSimulado::GrabarCanalesModificar(std::string_view, std::string_view) {
  return false;
}
std::string ComunicadorSimulado::LeerPagina(std::string_view, bool) {
  return {};
}
void ComunicadorSimulado::Conectar(std::string_view, std::string_view) {}
bool ComunicadorSimulado::ModoConexion(bool) {
  return false;
}
bool ComunicadorSimulado::ExportarImp(Tabla&, std::string_view, int) {
  return false;
}
TablaPtr ComunicadorSimulado::CargarConfiguracion(std::string_view) {
  return nullptr;
}
std::string ComunicadorSimulado::ObtenerPuertos() {
  return {};
}
void ComunicadorSimulado::Desconectar() {}
bool ComunicadorSimulado::EstadoPuerto() {
  return false;
}
void ComunicadorSimulado::DireccionIP(std::string_view) {}
void ComunicadorSimulado::PuertoIP(std::string_view) {}
bool ComunicadorSimulado::EstadoEnlace() {
  return false;
}
void ComunicadorSimulado::PorIP(bool) {}
bool ComunicadorSimulado::LlamarTelefono(std::string_view, std::string_view) {
  return false;
}
void ComunicadorSimulado::Cancelar(bool) {}
bool ComunicadorSimulado::GrabarSalidaDigital(int, bool) {
  return false;
}
TablaPtr ComunicadorSimulado::LeerDatosCartucho(std::string_view, std::string_view, std::int16_t) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::LeerEventosCartucho(std::string_view, std::string_view) {
  return nullptr;
}
TablaPtr ComunicadorSimulado::LeerColaTxCartucho(std::string_view, std::string_view) {
  return nullptr;
}
bool ComunicadorSimulado::BorrarCartucho() {
  return false;
}
bool ComunicadorSimulado::GrabarConfiguracion(Tabla&) {
  return false;
}

}  // namespace utr
