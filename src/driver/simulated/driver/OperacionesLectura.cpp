#include <algorithm>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/ArchivosDelControlador.h"
#include "driver/Dias.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/InteriorSimulado.h"

namespace utr {

using simulada::Cabecera;
using simulada::Contenido;
using simulada::FilasMuestras;
using simulada::FilasSucesos;
using simulada::Memoria;
using simulada::Rango;
using simulada::VistaPagina;

namespace {

constexpr std::size_t kEncabezadoRespuesta = 13;  // bytes of a reply frame ahead of the page

// Five numbers joined by "#"; what they say beyond their form the pages say themselves.
bool EsDescriptor(std::string_view descriptor) {
  const auto partes = Separar(descriptor, '#');
  return partes.size() == 5 && std::all_of(partes.begin(), partes.end(), EsNumerico);
}

// The page inside a reply frame and its header, where the frame holds a whole page.
std::optional<std::pair<VistaPagina, Cabecera>> PaginaDeRespuesta(std::span<const std::uint8_t> respuesta,
                                                                  std::string_view descriptor) {
  if (respuesta.size() < kEncabezadoRespuesta + simulada::kBytesPagina || !EsDescriptor(descriptor))
    return std::nullopt;
  const VistaPagina pagina{respuesta.data() + kEncabezadoRespuesta, simulada::kBytesPagina};
  const auto cabecera = simulada::LeerCabecera(pagina);
  if (!cabecera) return std::nullopt;
  return std::pair{pagina, *cabecera};
}

TablaPtr DatosDe(const Memoria& memoria, const simulada::Canales& canales, const Rango& rango, int canal) {
  FilasMuestras filas;
  const int pila = canal >= 1 && canal <= simulada::kCanales ? canales.PilaDe(canal) : simulada::kSinPila;
  if (pila < simulada::kPilas) {
    memoria.RecorrerPila(pila, [&](VistaPagina pagina, const Cabecera& cabecera) {
      // A stack that changed hands still holds pages of its former channel.
      if (cabecera.canal == canal) filas.Agregar(pagina, cabecera, rango, {});
    });
  }
  return filas.Terminar();
}

TablaPtr ColaDe(const Memoria& memoria, const Rango& rango) {
  FilasMuestras filas;
  memoria.RecorrerCola(
      [&](VistaPagina pagina, const Cabecera& cabecera) { filas.Agregar(pagina, cabecera, rango, {}); });
  return filas.Terminar();
}

TablaPtr SucesosDe(const Memoria& memoria, const Rango& rango) {
  FilasSucesos filas;
  memoria.RecorrerSucesos(
      [&](VistaPagina pagina, const Cabecera& cabecera) { filas.Agregar(pagina, cabecera, rango, {}); });
  return filas.Terminar();
}

std::string TextoRango(std::string_view desde, std::string_view hasta) {
  return Citar(desde) + ", " + Citar(hasta);
}

bool EsPendiente(std::string_view desde, std::string_view hasta) {
  return desde.empty() && hasta.empty();
}

}  // namespace

TablaPtr ComunicadorSimulado::DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                std::string_view fecha) {
  const std::string argumentos = fmt::format("{} bytes, {}, {}", pagina.size(), Citar(descriptor), Citar(fecha));
  return interior_->Operar(Op::kDecodificarPagina, argumentos, [&]() -> TablaPtr {
    const auto hallada = PaginaDeRespuesta(pagina, descriptor);
    if (!hallada || hallada->second.contenido == Contenido::kCola) return nullptr;
    if (hallada->second.contenido == Contenido::kEventos) {
      FilasSucesos filas;
      filas.Agregar(hallada->first, hallada->second, Rango{}, fecha);
      return filas.Terminar();
    }
    FilasMuestras filas;
    filas.Agregar(hallada->first, hallada->second, Rango{}, fecha);
    return filas.Terminar();
  });
}

TablaPtr ComunicadorSimulado::DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                    std::string_view fecha) {
  const std::string argumentos = fmt::format("{} bytes, {}, {}", pagina.size(), Citar(descriptor), Citar(fecha));
  return interior_->Operar(Op::kDecodificarPaginaCola, argumentos, [&]() -> TablaPtr {
    const auto hallada = PaginaDeRespuesta(pagina, descriptor);
    if (!hallada || hallada->second.contenido != Contenido::kCola) return nullptr;
    FilasMuestras filas;
    filas.Agregar(hallada->first, hallada->second, Rango{}, fecha);
    return filas.Terminar();
  });
}

TablaPtr ComunicadorSimulado::LeerInstantaneos() {
  return interior_->Operar(Op::kLeerInstantaneos, "", [&]() -> TablaPtr {
    interior_->ExigirRespuesta();
    const auto atraso = static_cast<std::int64_t>(interior_->atraso);
    return simulada::TablaInstantaneos(interior_->Unidad().Instantaneos(interior_->ahora, atraso));
  });
}

TablaPtr ComunicadorSimulado::LeerAgenda() {
  return interior_->Operar(Op::kLeerAgenda, "", [&]() -> TablaPtr {
    return interior_->Responde() ? interior_->Unidad().agenda.ComoTabla() : nullptr;
  });
}

std::string ComunicadorSimulado::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  Interior& i = *interior_;
  const bool existe = pista >= 0 && pista < simulada::kPistas && pagina >= 0 && pagina < simulada::kPaginasPista;
  // The way of the 32,768 pages of a whole reading; whatever is out of the ordinary takes the common one.
  i.ComenzarPagina();
  if (existe && i.fallas.Ninguna(Op::kLeerPaginaFlash) && i.Llega()) {
    i.enlace.caido = false;
    std::string datos = i.Unidad().memoria.TextoDePagina(pista, pagina);
    i.Transferir(Op::kLeerPaginaFlash, 0);
    i.bitacora.PaginaFlash(i.fecha, pista, pagina, datos.size());
    return datos;
  }
  const Contexto contexto{.pista = pista, .pagina = pagina};
  return i.Operar(Op::kLeerPaginaFlash, fmt::format("{}, {}", pista, pagina), contexto, [&]() -> std::string {
    if (!existe || !i.Responde()) return {};
    return i.Unidad().memoria.TextoDePagina(pista, pagina);
  });
}

TablaPtr ComunicadorSimulado::ConfiguracionAlmacenada(bool desdeUTR) {
  return interior_->Operar(Op::kConfiguracionAlmacenada, desdeUTR ? "si" : "no", [&]() -> TablaPtr {
    interior_->ExigirRespuesta();
    return interior_->Unidad().canales.ComoTabla();
  });
}

TablaPtr ComunicadorSimulado::LeerArchivoConfiguracion(std::string_view ruta) {
  return interior_->Operar(Op::kLeerArchivoConfiguracion, Citar(ruta), [&] { return LeerIcf(ruta); });
}

TablaPtr ComunicadorSimulado::CargarConfiguracion(std::string_view ruta) {
  return interior_->Operar(Op::kCargarConfiguracion, Citar(ruta), [&] { return LeerIcf(ruta); });
}

TablaPtr ComunicadorSimulado::LeerEventos(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerEventos, TextoRango(desde, hasta), [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    simulada::Estacion& unidad = interior_->Unidad();
    if (!EsPendiente(desde, hasta)) return SucesosDe(unidad.memoria, rango);
    return simulada::SucesosPendientes(unidad.memoria, DiaDe(unidad.Reloj(interior_->ahora)));
  });
}

TablaPtr ComunicadorSimulado::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  const Contexto contexto{.canal = canal + 1};
  const std::string argumentos = TextoRango(desde, hasta) + ", " + std::to_string(canal);
  return interior_->Operar(Op::kLeerDatos, argumentos, contexto, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    return DatosDe(interior_->Unidad().memoria, interior_->Unidad().canales, rango, canal + 1);
  });
}

TablaPtr ComunicadorSimulado::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerColaTx, TextoRango(desde, hasta), [&]() -> TablaPtr {
    Rango rango = simulada::LeerRango(desde, hasta);
    rango.solo_pendiente = EsPendiente(desde, hasta);
    interior_->ExigirRespuesta();
    return ColaDe(interior_->Unidad().memoria, rango);
  });
}

TablaPtr ComunicadorSimulado::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  const Contexto contexto{.canal = canal + 1};
  const std::string argumentos = TextoRango(desde, hasta) + ", " + std::to_string(canal);
  return interior_->Operar(Op::kLeerDatosCartucho, argumentos, contexto, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    if (!interior_->Unidad().TieneCartucho()) return nullptr;
    return DatosDe(interior_->Unidad().cartucho, interior_->Unidad().canales, rango, canal + 1);
  });
}

TablaPtr ComunicadorSimulado::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerEventosCartucho, TextoRango(desde, hasta), [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    if (!interior_->Unidad().TieneCartucho()) return nullptr;
    return SucesosDe(interior_->Unidad().cartucho, rango);
  });
}

TablaPtr ComunicadorSimulado::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerColaTxCartucho, TextoRango(desde, hasta), [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    if (!interior_->Unidad().TieneCartucho()) return nullptr;
    return ColaDe(interior_->Unidad().cartucho, rango);
  });
}

std::string ComunicadorSimulado::LeerFechaHora() {
  return interior_->Operar(Op::kLeerFechaHora, "", [&]() -> std::string {
    if (!interior_->Responde()) return {};
    return TextoFechaHora(FechaDeSegundos(interior_->Unidad().Reloj(interior_->ahora)));
  });
}

std::int32_t ComunicadorSimulado::LeerEstado() {
  return interior_->Operar(Op::kLeerEstado, "",
                           [&]() -> std::int32_t { return interior_->Responde() ? interior_->Unidad().Estado() : -1; });
}

std::string ComunicadorSimulado::LeerPagina(std::string_view pagina, bool silencioso) {
  const auto numero = simulada::NumeroDePagina(pagina);
  const Contexto contexto{.pagina = numero};
  const std::string argumentos = Citar(pagina) + (silencioso ? ", si" : ", no");
  return interior_->Operar(Op::kLeerPagina, argumentos, contexto, [&]() -> std::string {
    if (!numero || !interior_->Responde()) return {};
    return TextoPagina(interior_->Unidad().LeerPagina(*numero));
  });
}

std::int32_t ComunicadorSimulado::DescribirCodigo(std::string_view fecha) {
  return interior_->Operar(Op::kDescribirCodigo, Citar(fecha),
                           [&]() -> std::int32_t { return DiaDe(Segundos(ConvertirAFecha(fecha))); });
}

}  // namespace utr
