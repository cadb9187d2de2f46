#include "driver/ComunicadorAnotado.h"

#include <fmt/format.h>

#include <type_traits>

#include "base/Error.h"
#include "driver/TablasEntregadas.h"

namespace utr {

namespace {

std::string DecirSimple(bool valor) {
  return valor ? "si" : "no";
}
template <class Numero>
requires std::is_integral_v<Numero> std::string DecirSimple(Numero numero) {
  return std::to_string(numero);
}
std::string DecirSimple(std::string_view texto) {
  return Citar(texto);
}
std::string DecirSimple(const std::string& texto) {
  return Citar(texto);
}
std::string DecirSimple(std::span<const std::uint8_t> bytes) {
  return fmt::format("{} bytes", bytes.size());
}

}  // namespace

std::string ComunicadorAnotado::DecirTabla(const char* operacion, const Tabla& tabla) {
  if (!tabla.Abierta()) return "tabla cerrada";
  std::string texto = fmt::format("tabla de {} filas y {} campos", tabla.RecordCount(), tabla.FieldCount());
  if (tablas_enteras_ && tablas_enteras_()) texto += ", " + bitacora_.GuardarTabla(operacion, *CopiarALaVista(tabla));
  return texto;
}

template <class Dato>
std::string ComunicadorAnotado::Decir(const char* operacion, const Dato& dato) {
  if constexpr (std::is_same_v<Dato, Tabla>) {
    return DecirTabla(operacion, dato);
  } else if constexpr (std::is_same_v<Dato, TablaPtr>) {
    return dato ? DecirTabla(operacion, *dato) : "sin tabla";
  } else {
    return DecirSimple(dato);
  }
}

template <class Hacer, class... Argumentos>
auto ComunicadorAnotado::Anotar(const char* operacion, Hacer hacer, const Argumentos&... argumentos)
    -> decltype(hacer()) {
  const FechaHora momento = reloj_.Ahora();
  const bool espera = std::string_view(operacion).starts_with("Decodificar");  // as pages do
  std::string dichos;
  ((dichos += (dichos.empty() ? "" : ", ") + Decir(operacion, argumentos)), ...);
  try {
    if constexpr (std::is_void_v<decltype(hacer())>) {
      hacer();
      bitacora_.Llamada(momento, operacion, dichos, "hecho");
    } else {
      auto resultado = hacer();
      bitacora_.Llamada(momento, operacion, dichos, Decir(operacion, resultado), espera);
      return resultado;
    }
  } catch (...) {
    const Error falla = ErrorActual();
    const std::string fin = fmt::format("error {} [{}] {}", falla.Numero(), falla.Origen(), falla.Descripcion());
    bitacora_.Llamada(momento, operacion, dichos, fin);
    throw falla;
  }
}

// Pages come by the thousand: their lines wait for the next other one.
std::string ComunicadorAnotado::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  const FechaHora momento = reloj_.Ahora();
  try {
    std::string datos = Destino().LeerPaginaFlash(pista, pagina);
    bitacora_.PaginaFlash(momento, pista, pagina, datos.size());
    return datos;
  } catch (...) {
    const Error falla = ErrorActual();
    return Anotar(
        "LeerPaginaFlash", [&]() -> std::string { throw falla; }, pista, pagina);
  }
}

void ComunicadorAnotado::IdEquipo(std::int32_t identificador) {
  return Anotar(
      "IdEquipo", [&] { return Destino().IdEquipo(identificador); }, identificador);
}

bool ComunicadorAnotado::BorrarFlash() {
  return Anotar("BorrarFlash", [&] { return Destino().BorrarFlash(); });
}

bool ComunicadorAnotado::ReiniciarAgenda(std::string_view comando) {
  return Anotar(
      "ReiniciarAgenda", [&] { return Destino().ReiniciarAgenda(comando); }, comando);
}

bool ComunicadorAnotado::ReiniciarUTR(std::string_view comando) {
  return Anotar(
      "ReiniciarUTR", [&] { return Destino().ReiniciarUTR(comando); }, comando);
}

TablaPtr ComunicadorAnotado::DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                               std::string_view fecha) {
  return Anotar(
      "DecodificarPagina", [&] { return Destino().DecodificarPagina(pagina, descriptor, fecha); }, pagina, descriptor,
      fecha);
}

TablaPtr ComunicadorAnotado::DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                   std::string_view fecha) {
  return Anotar(
      "DecodificarPaginaCola", [&] { return Destino().DecodificarPaginaCola(pagina, descriptor, fecha); }, pagina,
      descriptor, fecha);
}

TablaPtr ComunicadorAnotado::LeerInstantaneos() {
  return Anotar("LeerInstantaneos", [&] { return Destino().LeerInstantaneos(); });
}

std::string ComunicadorAnotado::ConvertirA(std::int16_t numero) {
  return Anotar(
      "ConvertirA", [&] { return Destino().ConvertirA(numero); }, numero);
}

std::string ComunicadorAnotado::ConvertirDe(std::int16_t valor) {
  return Anotar(
      "ConvertirDe", [&] { return Destino().ConvertirDe(valor); }, valor);
}

std::int32_t ComunicadorAnotado::DescribirCodigo(std::string_view fecha) {
  return Anotar(
      "DescribirCodigo", [&] { return Destino().DescribirCodigo(fecha); }, fecha);
}

TablaPtr ComunicadorAnotado::LeerAgenda() {
  return Anotar("LeerAgenda", [&] { return Destino().LeerAgenda(); });
}

void ComunicadorAnotado::Pausa(std::int16_t segundos) {
  return Anotar(
      "Pausa", [&] { return Destino().Pausa(segundos); }, segundos);
}

bool ComunicadorAnotado::GrabarAgenda(Tabla& tabla) {
  return Anotar(
      "GrabarAgenda", [&] { return Destino().GrabarAgenda(tabla); }, tabla);
}

TablaPtr ComunicadorAnotado::ConfiguracionAlmacenada(bool desdeUTR) {
  return Anotar(
      "ConfiguracionAlmacenada", [&] { return Destino().ConfiguracionAlmacenada(desdeUTR); }, desdeUTR);
}

TablaPtr ComunicadorAnotado::LeerArchivoConfiguracion(std::string_view ruta) {
  return Anotar(
      "LeerArchivoConfiguracion", [&] { return Destino().LeerArchivoConfiguracion(ruta); }, ruta);
}

bool ComunicadorAnotado::GrabarParametrizacion(Tabla& tabla) {
  return Anotar(
      "GrabarParametrizacion", [&] { return Destino().GrabarParametrizacion(tabla); }, tabla);
}

TablaPtr ComunicadorAnotado::LeerEventos(std::string_view desde, std::string_view hasta) {
  return Anotar(
      "LeerEventos", [&] { return Destino().LeerEventos(desde, hasta); }, desde, hasta);
}

TablaPtr ComunicadorAnotado::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return Anotar(
      "LeerDatos", [&] { return Destino().LeerDatos(desde, hasta, canal); }, desde, hasta, canal);
}

TablaPtr ComunicadorAnotado::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return Anotar(
      "LeerColaTx", [&] { return Destino().LeerColaTx(desde, hasta); }, desde, hasta);
}

std::string ComunicadorAnotado::LeerFechaHora() {
  return Anotar("LeerFechaHora", [&] { return Destino().LeerFechaHora(); });
}

std::int32_t ComunicadorAnotado::LeerEstado() {
  return Anotar("LeerEstado", [&] { return Destino().LeerEstado(); });
}

bool ComunicadorAnotado::GrabarFechaHora() {
  return Anotar("GrabarFechaHora", [&] { return Destino().GrabarFechaHora(); });
}

bool ComunicadorAnotado::GrabarEstado(std::string_view flags) {
  return Anotar(
      "GrabarEstado", [&] { return Destino().GrabarEstado(flags); }, flags);
}

bool ComunicadorAnotado::EscribirPagina(std::string_view pagina, std::string_view datos) {
  return Anotar(
      "EscribirPagina", [&] { return Destino().EscribirPagina(pagina, datos); }, pagina, datos);
}

bool ComunicadorAnotado::GrabarEvento(std::string_view comando, std::string_view datos) {
  return Anotar(
      "GrabarEvento", [&] { return Destino().GrabarEvento(comando, datos); }, comando, datos);
}

bool ComunicadorAnotado::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  return Anotar(
      "GrabarPilaCanal", [&] { return Destino().GrabarPilaCanal(comando, datos); }, comando, datos);
}

bool ComunicadorAnotado::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  return Anotar(
      "GrabarCanalesModificar", [&] { return Destino().GrabarCanalesModificar(comando, datos); }, comando, datos);
}

std::string ComunicadorAnotado::LeerPagina(std::string_view pagina, bool silencioso) {
  return Anotar(
      "LeerPagina", [&] { return Destino().LeerPagina(pagina, silencioso); }, pagina, silencioso);
}

void ComunicadorAnotado::Conectar(std::string_view enlace, std::string_view puerto) {
  return Anotar(
      "Conectar", [&] { return Destino().Conectar(enlace, puerto); }, enlace, puerto);
}

bool ComunicadorAnotado::ModoConexion(bool activo) {
  return Anotar(
      "ModoConexion", [&] { return Destino().ModoConexion(activo); }, activo);
}

bool ComunicadorAnotado::ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) {
  return Anotar(
      "ExportarImp", [&] { return Destino().ExportarImp(tabla, ruta, tipo); }, tabla, ruta, tipo);
}

TablaPtr ComunicadorAnotado::CargarConfiguracion(std::string_view ruta) {
  return Anotar(
      "CargarConfiguracion", [&] { return Destino().CargarConfiguracion(ruta); }, ruta);
}

std::string ComunicadorAnotado::ObtenerPuertos() {
  return Anotar("ObtenerPuertos", [&] { return Destino().ObtenerPuertos(); });
}

void ComunicadorAnotado::Desconectar() {
  return Anotar("Desconectar", [&] { return Destino().Desconectar(); });
}

bool ComunicadorAnotado::EstadoPuerto() {
  return Anotar("EstadoPuerto", [&] { return Destino().EstadoPuerto(); });
}

void ComunicadorAnotado::DireccionIP(std::string_view direccion) {
  return Anotar(
      "DireccionIP", [&] { return Destino().DireccionIP(direccion); }, direccion);
}

void ComunicadorAnotado::PuertoIP(std::string_view puerto) {
  return Anotar(
      "PuertoIP", [&] { return Destino().PuertoIP(puerto); }, puerto);
}

bool ComunicadorAnotado::EstadoEnlace() {
  return Anotar("EstadoEnlace", [&] { return Destino().EstadoEnlace(); });
}

void ComunicadorAnotado::PorIP(bool activo) {
  return Anotar(
      "PorIP", [&] { return Destino().PorIP(activo); }, activo);
}

bool ComunicadorAnotado::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  return Anotar(
      "LlamarTelefono", [&] { return Destino().LlamarTelefono(numero, comandos); }, numero, comandos);
}

void ComunicadorAnotado::Cancelar(bool activo) {
  return Anotar(
      "Cancelar", [&] { return Destino().Cancelar(activo); }, activo);
}

bool ComunicadorAnotado::GrabarSalidaDigital(int salida, bool encender) {
  return Anotar(
      "GrabarSalidaDigital", [&] { return Destino().GrabarSalidaDigital(salida, encender); }, salida, encender);
}

TablaPtr ComunicadorAnotado::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return Anotar(
      "LeerDatosCartucho", [&] { return Destino().LeerDatosCartucho(desde, hasta, canal); }, desde, hasta, canal);
}

TablaPtr ComunicadorAnotado::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return Anotar(
      "LeerEventosCartucho", [&] { return Destino().LeerEventosCartucho(desde, hasta); }, desde, hasta);
}

TablaPtr ComunicadorAnotado::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return Anotar(
      "LeerColaTxCartucho", [&] { return Destino().LeerColaTxCartucho(desde, hasta); }, desde, hasta);
}

bool ComunicadorAnotado::BorrarCartucho() {
  return Anotar("BorrarCartucho", [&] { return Destino().BorrarCartucho(); });
}

bool ComunicadorAnotado::GrabarConfiguracion(Tabla& tabla) {
  return Anotar(
      "GrabarConfiguracion", [&] { return Destino().GrabarConfiguracion(tabla); }, tabla);
}

}  // namespace utr
