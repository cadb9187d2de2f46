#include "support/ComunicadorFalso.h"

#include <algorithm>

#include "base/Texto.h"
#include "driver/TablasEntregadas.h"

namespace utr {
namespace {

using Argumentos = std::initializer_list<std::string>;

std::string T(std::string_view texto) {
  return std::string(texto);
}
std::string N(long numero) {
  return std::to_string(numero);
}
std::string L(bool valor) {
  return valor ? "si" : "no";
}

}  // namespace

void ComunicadorFalso::Devuelve(std::string operacion, bool valor) {
  logicos_[std::move(operacion)] = valor;
}

void ComunicadorFalso::Devuelve(std::string operacion, const char* texto) {
  textos_[std::move(operacion)] = [fijo = std::string(texto)](const std::string&) { return fijo; };
}

void ComunicadorFalso::Devuelve(std::string operacion, std::int32_t numero) {
  numeros_[std::move(operacion)] = numero;
}

void ComunicadorFalso::Devuelve(std::string operacion, std::function<std::string(const std::string&)> texto) {
  textos_[std::move(operacion)] = std::move(texto);
}

void ComunicadorFalso::Devuelve(std::string operacion, std::function<TablaPtr(const std::string&)> tabla) {
  tablas_[std::move(operacion)] = std::move(tabla);
}

void ComunicadorFalso::Devuelve(std::string operacion, TablaPtr tabla) {
  tablas_[std::move(operacion)] = [tabla = std::move(tabla)](const std::string&) { return tabla; };
}

void ComunicadorFalso::Falla(std::string operacion, Error error, int veces) {
  fallas_.insert_or_assign(std::move(operacion), FallaPedida{std::move(error), veces});
}

std::vector<std::string> ComunicadorFalso::De(std::string_view operacion) const {
  std::vector<std::string> suyas;
  std::copy_if(llamadas.begin(), llamadas.end(), std::back_inserter(suyas),
               [&](const std::string& llamada) { return llamada.substr(0, llamada.find('(')) == operacion; });
  return suyas;
}

std::vector<TablaPtr> ComunicadorFalso::Recibidas(std::string_view operacion) const {
  const auto suyas = recibidas_.find(operacion);
  return suyas == recibidas_.end() ? std::vector<TablaPtr>() : suyas->second;
}

void ComunicadorFalso::Recibir(const char* operacion, const Tabla& tabla) {
  recibidas_[operacion].push_back(tabla.Abierta() ? CopiarALaVista(tabla) : nullptr);
}

std::string ComunicadorFalso::Anotar(std::string_view operacion, Argumentos argumentos) {
  const std::vector<std::string> partes(argumentos);
  const std::string llamada = T(operacion) + '(' + Unir(partes, ",") + ')';
  llamadas.push_back(llamada);
  if (al_llamar) al_llamar(llamada);
  if (const auto falla = fallas_.find(operacion); falla != fallas_.end() && falla->second.veces != 0) {
    if (falla->second.veces > 0) --falla->second.veces;
    throw falla->second.error;
  }
  return llamada;
}

bool ComunicadorFalso::Logico(std::string_view operacion, Argumentos argumentos) {
  Anotar(operacion, argumentos);
  const auto orden = logicos_.find(operacion);
  return orden == logicos_.end() || orden->second;
}

std::int32_t ComunicadorFalso::Numero(std::string_view operacion, Argumentos argumentos) {
  Anotar(operacion, argumentos);
  const auto orden = numeros_.find(operacion);
  return orden == numeros_.end() ? 0 : orden->second;
}

std::string ComunicadorFalso::Texto(std::string_view operacion, Argumentos argumentos) {
  const std::string llamada = Anotar(operacion, argumentos);
  const auto orden = textos_.find(operacion);
  return orden == textos_.end() ? std::string() : orden->second(llamada);
}

TablaPtr ComunicadorFalso::UnaTabla(std::string_view operacion, Argumentos argumentos) {
  const std::string llamada = Anotar(operacion, argumentos);
  const auto orden = tablas_.find(operacion);
  return orden == tablas_.end() ? nullptr : orden->second(llamada);
}

void ComunicadorFalso::EscribirLog(std::string_view linea) noexcept {
  log.emplace_back(linea);
}

void ComunicadorFalso::IdEquipo(std::int32_t identificador) {
  Anotar("IdEquipo", {N(identificador)});
}

bool ComunicadorFalso::BorrarFlash() {
  return Logico("BorrarFlash");
}

bool ComunicadorFalso::ReiniciarAgenda(std::string_view comando) {
  return Logico("ReiniciarAgenda", {T(comando)});
}

bool ComunicadorFalso::ReiniciarUTR(std::string_view comando) {
  return Logico("ReiniciarUTR", {T(comando)});
}

TablaPtr ComunicadorFalso::DecodificarPagina(std::span<const std::uint8_t>, std::string_view descriptor,
                                             std::string_view fecha) {
  return UnaTabla("DecodificarPagina", {"bytes", T(descriptor), T(fecha)});
}

TablaPtr ComunicadorFalso::DecodificarPaginaCola(std::span<const std::uint8_t>, std::string_view descriptor,
                                                 std::string_view fecha) {
  return UnaTabla("DecodificarPaginaCola", {"bytes", T(descriptor), T(fecha)});
}

TablaPtr ComunicadorFalso::LeerInstantaneos() {
  return UnaTabla("LeerInstantaneos");
}

std::string ComunicadorFalso::ConvertirA(std::int16_t numero) {
  return Texto("ConvertirA", {N(numero)});
}

std::string ComunicadorFalso::ConvertirDe(std::int16_t valor) {
  return Texto("ConvertirDe", {N(valor)});
}

std::int32_t ComunicadorFalso::DescribirCodigo(std::string_view fecha) {
  return Numero("DescribirCodigo", {T(fecha)});
}

TablaPtr ComunicadorFalso::LeerAgenda() {
  return UnaTabla("LeerAgenda");
}

std::string ComunicadorFalso::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  return Texto("LeerPaginaFlash", {N(pista), N(pagina)});
}

void ComunicadorFalso::Pausa(std::int16_t segundos) {
  Anotar("Pausa", {N(segundos)});
}

bool ComunicadorFalso::GrabarAgenda(Tabla& tabla) {
  Recibir("GrabarAgenda", tabla);
  return Logico("GrabarAgenda", {"tabla"});
}

TablaPtr ComunicadorFalso::ConfiguracionAlmacenada(bool desdeUTR) {
  return UnaTabla("ConfiguracionAlmacenada", {L(desdeUTR)});
}

TablaPtr ComunicadorFalso::LeerArchivoConfiguracion(std::string_view ruta) {
  return UnaTabla("LeerArchivoConfiguracion", {T(ruta)});
}

bool ComunicadorFalso::GrabarParametrizacion(Tabla& tabla) {
  Recibir("GrabarParametrizacion", tabla);
  return Logico("GrabarParametrizacion", {"tabla"});
}

TablaPtr ComunicadorFalso::LeerEventos(std::string_view desde, std::string_view hasta) {
  return UnaTabla("LeerEventos", {T(desde), T(hasta)});
}

TablaPtr ComunicadorFalso::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return UnaTabla("LeerDatos", {T(desde), T(hasta), N(canal)});
}

TablaPtr ComunicadorFalso::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return UnaTabla("LeerColaTx", {T(desde), T(hasta)});
}

std::string ComunicadorFalso::LeerFechaHora() {
  return Texto("LeerFechaHora");
}

std::int32_t ComunicadorFalso::LeerEstado() {
  return Numero("LeerEstado");
}

bool ComunicadorFalso::GrabarFechaHora() {
  return Logico("GrabarFechaHora");
}

bool ComunicadorFalso::GrabarEstado(std::string_view flags) {
  return Logico("GrabarEstado", {T(flags)});
}

bool ComunicadorFalso::EscribirPagina(std::string_view pagina, std::string_view datos) {
  return Logico("EscribirPagina", {T(pagina), T(datos)});
}

bool ComunicadorFalso::GrabarEvento(std::string_view comando, std::string_view datos) {
  return Logico("GrabarEvento", {T(comando), T(datos)});
}

bool ComunicadorFalso::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  return Logico("GrabarPilaCanal", {T(comando), T(datos)});
}

bool ComunicadorFalso::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  return Logico("GrabarCanalesModificar", {T(comando), T(datos)});
}

std::string ComunicadorFalso::LeerPagina(std::string_view pagina, bool silencioso) {
  return Texto("LeerPagina", {T(pagina), L(silencioso)});
}

void ComunicadorFalso::Conectar(std::string_view enlace, std::string_view puerto) {
  Anotar("Conectar", {T(enlace), T(puerto)});
}

bool ComunicadorFalso::ModoConexion(bool activo) {
  return Logico("ModoConexion", {L(activo)});
}

bool ComunicadorFalso::ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) {
  Recibir("ExportarImp", tabla);
  return Logico("ExportarImp", {"tabla", T(ruta), N(tipo)});
}

TablaPtr ComunicadorFalso::CargarConfiguracion(std::string_view ruta) {
  return UnaTabla("CargarConfiguracion", {T(ruta)});
}

std::string ComunicadorFalso::ObtenerPuertos() {
  return Texto("ObtenerPuertos");
}

void ComunicadorFalso::Desconectar() {
  Anotar("Desconectar", {});
}

bool ComunicadorFalso::EstadoPuerto() {
  return Logico("EstadoPuerto");
}

void ComunicadorFalso::DireccionIP(std::string_view direccion) {
  Anotar("DireccionIP", {T(direccion)});
}

void ComunicadorFalso::PuertoIP(std::string_view puerto) {
  Anotar("PuertoIP", {T(puerto)});
}

bool ComunicadorFalso::EstadoEnlace() {
  return Logico("EstadoEnlace");
}

void ComunicadorFalso::PorIP(bool activo) {
  Anotar("PorIP", {L(activo)});
}

bool ComunicadorFalso::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  return Logico("LlamarTelefono", {T(numero), T(comandos)});
}

void ComunicadorFalso::Cancelar(bool activo) {
  Anotar("Cancelar", {L(activo)});
}

bool ComunicadorFalso::GrabarSalidaDigital(int salida, bool encender) {
  return Logico("GrabarSalidaDigital", {N(salida), L(encender)});
}

TablaPtr ComunicadorFalso::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return UnaTabla("LeerDatosCartucho", {T(desde), T(hasta), N(canal)});
}

TablaPtr ComunicadorFalso::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return UnaTabla("LeerEventosCartucho", {T(desde), T(hasta)});
}

TablaPtr ComunicadorFalso::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return UnaTabla("LeerColaTxCartucho", {T(desde), T(hasta)});
}

bool ComunicadorFalso::BorrarCartucho() {
  return Logico("BorrarCartucho");
}

bool ComunicadorFalso::GrabarConfiguracion(Tabla& tabla) {
  Recibir("GrabarConfiguracion", tabla);
  return Logico("GrabarConfiguracion", {"tabla"});
}

}  // namespace utr
