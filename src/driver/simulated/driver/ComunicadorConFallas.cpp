#include "driver/simulated/driver/ComunicadorConFallas.h"

#include <algorithm>
#include <concepts>
#include <type_traits>

#include "base/Error.h"
#include "driver/TablasRegistros.h"
#include "driver/Textos.h"

namespace utr {

using simulada::Contexto;
using simulada::Falla;
using simulada::Fallas;
using simulada::Op;
using simulada::TipoFalla;

namespace {

constexpr double kPasoDeLlamada = 0.1;  // seconds between two looks at whether the call was abandoned

// What an operation gives that didn't succeed.
template <class Resultado>
Resultado Fallido() {
  if constexpr (std::same_as<Resultado, std::int32_t>) {
    return -1;
  } else {
    return Resultado();
  }
}

void Estropear(const std::vector<Falla>& fallas, TablaPtr& tabla) {
  for (const Falla& falla : fallas) {
    if (tabla) tabla = simulada::Estropear(falla, *tabla);
  }
}

void Estropear(const std::vector<Falla>& fallas, std::string& texto) {
  for (const Falla& falla : fallas) {
    if (!texto.empty()) texto = simulada::Estropear(falla, std::move(texto));
  }
}

}  // namespace

// A fault that takes the place of the answer keeps the operation from being carried out, unless only the answer is
// lost; and a table without rows is the table that would have come.
template <class Hacer>
auto ComunicadorConFallas::Sufrir(Op op, Contexto contexto, Hacer hacer) -> decltype(hacer()) {
  using Resultado = decltype(hacer());
  Fallas& fallas = entorno_.Mirar(op);
  if (fallas.Ninguna(op)) {  // the way of the 32,768 pages of a whole reading
    entorno_.Disponer(false, {});
    return hacer();
  }
  if (contexto.puerto == 0) contexto.puerto = por_ip_ ? puerto_ip_ : puerto_;
  if (contexto.velocidad == 0) contexto.velocidad = velocidad_;
  Fallas::Efecto efecto = fallas.Para(op, contexto);
  entorno_.Disponer(efecto.bloquea, efecto.atraso);
  if (!Demorar(op, efecto.demora)) efecto.respuesta.reset();
  if (efecto.respuesta) {
    const Falla& falla = *efecto.respuesta;
    if (falla.respuesta_perdida) hacer();
    if (falla.tipo == TipoFalla::kError) throw Error(falla.numero, falla.origen, falla.texto);
    if (falla.tipo != TipoFalla::kSinFilas) return Fallido<Resultado>();
  }
  if constexpr (std::same_as<Resultado, TablaPtr> || std::same_as<Resultado, std::string>) {
    Resultado resultado = hacer();
    if constexpr (std::same_as<Resultado, TablaPtr>) {
      if (resultado && efecto.respuesta) resultado = CopiarRecordset(*resultado, false);
    }
    Estropear(efecto.de_datos, resultado);
    return resultado;
  } else {
    return hacer();
  }
}

template <class Hacer>
auto ComunicadorConFallas::Sufrir(Op op, Hacer hacer) -> decltype(hacer()) {
  return Sufrir(op, Contexto{}, std::move(hacer));
}

// False: the call that is delayed was abandoned meanwhile.
bool ComunicadorConFallas::Demorar(Op op, double segundos) {
  if (segundos <= 0) return true;
  if (op != Op::kLlamarTelefono) {
    entorno_.Esperar(segundos);
    return true;
  }
  for (; segundos > 0 && llamar_; segundos -= kPasoDeLlamada) entorno_.Esperar(std::min(segundos, kPasoDeLlamada));
  return llamar_;
}

void ComunicadorConFallas::Conectar(std::string_view enlace, std::string_view puerto) {
  const auto pedido = LeerEnlace(enlace);
  const int numero = NumeroDePuerto(puerto);
  Sufrir(Op::kConectar, Contexto{.puerto = numero, .velocidad = pedido ? pedido->velocidad : 0}, [&] {
    if (pedido) por_ip_ = false;  // what was open is closed first
    Destino().Conectar(enlace, puerto);
    por_ip_ = pedido && pedido->por_ip;
    if (por_ip_) {
      puerto_ip_ = numero;
    } else {
      puerto_ = numero;
      velocidad_ = pedido ? pedido->velocidad : 0;
    }
  });
}

void ComunicadorConFallas::Desconectar() {
  Sufrir(Op::kDesconectar, [&] {
    Destino().Desconectar();
    por_ip_ = false;
  });
}

void ComunicadorConFallas::PorIP(bool activo) {
  Sufrir(Op::kPorIP, [&] {
    Destino().PorIP(activo);
    por_ip_ = activo;
  });
}

void ComunicadorConFallas::PuertoIP(std::string_view puerto) {
  Sufrir(Op::kPuertoIP, [&] {
    Destino().PuertoIP(puerto);
    puerto_ip_ = NumeroDePuerto(puerto);
  });
}

void ComunicadorConFallas::Cancelar(bool activo) {
  Sufrir(Op::kCancelar, [&] {
    Destino().Cancelar(activo);
    llamar_ = activo;
  });
}

void ComunicadorConFallas::IdEquipo(std::int32_t identificador) {
  return Sufrir(Op::kIdEquipo, [&] { return Destino().IdEquipo(identificador); });
}

bool ComunicadorConFallas::BorrarFlash() {
  return Sufrir(Op::kBorrarFlash, [&] { return Destino().BorrarFlash(); });
}

bool ComunicadorConFallas::ReiniciarAgenda(std::string_view comando) {
  return Sufrir(Op::kReiniciarAgenda, [&] { return Destino().ReiniciarAgenda(comando); });
}

bool ComunicadorConFallas::ReiniciarUTR(std::string_view comando) {
  return Sufrir(Op::kReiniciarUTR, [&] { return Destino().ReiniciarUTR(comando); });
}

TablaPtr ComunicadorConFallas::DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                 std::string_view fecha) {
  return Sufrir(Op::kDecodificarPagina, [&] { return Destino().DecodificarPagina(pagina, descriptor, fecha); });
}

TablaPtr ComunicadorConFallas::DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                     std::string_view fecha) {
  return Sufrir(Op::kDecodificarPaginaCola, [&] { return Destino().DecodificarPaginaCola(pagina, descriptor, fecha); });
}

TablaPtr ComunicadorConFallas::LeerInstantaneos() {
  return Sufrir(Op::kLeerInstantaneos, [&] { return Destino().LeerInstantaneos(); });
}

std::string ComunicadorConFallas::ConvertirA(std::int16_t numero) {
  return Sufrir(Op::kConvertirA, [&] { return Destino().ConvertirA(numero); });
}

std::string ComunicadorConFallas::ConvertirDe(std::int16_t valor) {
  return Sufrir(Op::kConvertirDe, [&] { return Destino().ConvertirDe(valor); });
}

std::int32_t ComunicadorConFallas::DescribirCodigo(std::string_view fecha) {
  return Sufrir(Op::kDescribirCodigo, [&] { return Destino().DescribirCodigo(fecha); });
}

TablaPtr ComunicadorConFallas::LeerAgenda() {
  return Sufrir(Op::kLeerAgenda, [&] { return Destino().LeerAgenda(); });
}

std::string ComunicadorConFallas::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  return Sufrir(Op::kLeerPaginaFlash, Contexto{.pista = pista, .pagina = pagina},
                [&] { return Destino().LeerPaginaFlash(pista, pagina); });
}

void ComunicadorConFallas::Pausa(std::int16_t segundos) {
  return Sufrir(Op::kPausa, [&] { return Destino().Pausa(segundos); });
}

bool ComunicadorConFallas::GrabarAgenda(Tabla& tabla) {
  return Sufrir(Op::kGrabarAgenda, [&] { return Destino().GrabarAgenda(tabla); });
}

TablaPtr ComunicadorConFallas::ConfiguracionAlmacenada(bool desdeUTR) {
  return Sufrir(Op::kConfiguracionAlmacenada, [&] { return Destino().ConfiguracionAlmacenada(desdeUTR); });
}

TablaPtr ComunicadorConFallas::LeerArchivoConfiguracion(std::string_view ruta) {
  return Sufrir(Op::kLeerArchivoConfiguracion, [&] { return Destino().LeerArchivoConfiguracion(ruta); });
}

bool ComunicadorConFallas::GrabarParametrizacion(Tabla& tabla) {
  return Sufrir(Op::kGrabarParametrizacion, [&] { return Destino().GrabarParametrizacion(tabla); });
}

TablaPtr ComunicadorConFallas::LeerEventos(std::string_view desde, std::string_view hasta) {
  return Sufrir(Op::kLeerEventos, [&] { return Destino().LeerEventos(desde, hasta); });
}

TablaPtr ComunicadorConFallas::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return Sufrir(Op::kLeerDatos, Contexto{.canal = canal + 1}, [&] { return Destino().LeerDatos(desde, hasta, canal); });
}

TablaPtr ComunicadorConFallas::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return Sufrir(Op::kLeerColaTx, [&] { return Destino().LeerColaTx(desde, hasta); });
}

std::string ComunicadorConFallas::LeerFechaHora() {
  return Sufrir(Op::kLeerFechaHora, [&] { return Destino().LeerFechaHora(); });
}

std::int32_t ComunicadorConFallas::LeerEstado() {
  return Sufrir(Op::kLeerEstado, [&] { return Destino().LeerEstado(); });
}

bool ComunicadorConFallas::GrabarFechaHora() {
  return Sufrir(Op::kGrabarFechaHora, [&] { return Destino().GrabarFechaHora(); });
}

bool ComunicadorConFallas::GrabarEstado(std::string_view flags) {
  return Sufrir(Op::kGrabarEstado, [&] { return Destino().GrabarEstado(flags); });
}

bool ComunicadorConFallas::EscribirPagina(std::string_view pagina, std::string_view datos) {
  return Sufrir(Op::kEscribirPagina, Contexto{.pagina = NumeroDePagina(pagina)},
                [&] { return Destino().EscribirPagina(pagina, datos); });
}

bool ComunicadorConFallas::GrabarEvento(std::string_view comando, std::string_view datos) {
  return Sufrir(Op::kGrabarEvento, [&] { return Destino().GrabarEvento(comando, datos); });
}

bool ComunicadorConFallas::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  return Sufrir(Op::kGrabarPilaCanal, [&] { return Destino().GrabarPilaCanal(comando, datos); });
}

bool ComunicadorConFallas::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  return Sufrir(Op::kGrabarCanalesModificar, [&] { return Destino().GrabarCanalesModificar(comando, datos); });
}

std::string ComunicadorConFallas::LeerPagina(std::string_view pagina, bool silencioso) {
  return Sufrir(Op::kLeerPagina, Contexto{.pagina = NumeroDePagina(pagina)},
                [&] { return Destino().LeerPagina(pagina, silencioso); });
}

bool ComunicadorConFallas::ModoConexion(bool activo) {
  return Sufrir(Op::kModoConexion, [&] { return Destino().ModoConexion(activo); });
}

bool ComunicadorConFallas::ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) {
  return Sufrir(Op::kExportarImp, [&] { return Destino().ExportarImp(tabla, ruta, tipo); });
}

TablaPtr ComunicadorConFallas::CargarConfiguracion(std::string_view ruta) {
  return Sufrir(Op::kCargarConfiguracion, [&] { return Destino().CargarConfiguracion(ruta); });
}

std::string ComunicadorConFallas::ObtenerPuertos() {
  return Sufrir(Op::kObtenerPuertos, [&] { return Destino().ObtenerPuertos(); });
}

bool ComunicadorConFallas::EstadoPuerto() {
  return Sufrir(Op::kEstadoPuerto, [&] { return Destino().EstadoPuerto(); });
}

void ComunicadorConFallas::DireccionIP(std::string_view direccion) {
  return Sufrir(Op::kDireccionIP, [&] { return Destino().DireccionIP(direccion); });
}

bool ComunicadorConFallas::EstadoEnlace() {
  return Sufrir(Op::kEstadoEnlace, [&] { return Destino().EstadoEnlace(); });
}

bool ComunicadorConFallas::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  return Sufrir(Op::kLlamarTelefono, [&] { return Destino().LlamarTelefono(numero, comandos); });
}

bool ComunicadorConFallas::GrabarSalidaDigital(int salida, bool encender) {
  return Sufrir(Op::kGrabarSalidaDigital, [&] { return Destino().GrabarSalidaDigital(salida, encender); });
}

TablaPtr ComunicadorConFallas::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return Sufrir(Op::kLeerDatosCartucho, Contexto{.canal = canal + 1},
                [&] { return Destino().LeerDatosCartucho(desde, hasta, canal); });
}

TablaPtr ComunicadorConFallas::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return Sufrir(Op::kLeerEventosCartucho, [&] { return Destino().LeerEventosCartucho(desde, hasta); });
}

TablaPtr ComunicadorConFallas::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return Sufrir(Op::kLeerColaTxCartucho, [&] { return Destino().LeerColaTxCartucho(desde, hasta); });
}

bool ComunicadorConFallas::BorrarCartucho() {
  return Sufrir(Op::kBorrarCartucho, [&] { return Destino().BorrarCartucho(); });
}

bool ComunicadorConFallas::GrabarConfiguracion(Tabla& tabla) {
  return Sufrir(Op::kGrabarConfiguracion, [&] { return Destino().GrabarConfiguracion(tabla); });
}

}  // namespace utr
