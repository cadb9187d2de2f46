#include "driver/ArchivosDelControlador.h"
#include "driver/Dias.h"
#include "driver/TablasRegistros.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/ComunicadorEnProceso.h"
#include "driver/simulated/driver/InteriorSimulado.h"

namespace utr {

using simulada::Cabecera;
using simulada::FilasMuestras;
using simulada::FilasSucesos;
using simulada::Memoria;
using simulada::Op;
using simulada::Rango;
using simulada::VistaPagina;

namespace {

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

bool EsPendiente(std::string_view desde, std::string_view hasta) {
  return desde.empty() && hasta.empty();
}

}  // namespace

TablaPtr ComunicadorEnProceso::DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                 std::string_view fecha) {
  return paginas::DecodificarPagina(pagina, descriptor, fecha);
}

TablaPtr ComunicadorEnProceso::DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                     std::string_view fecha) {
  return paginas::DecodificarPaginaCola(pagina, descriptor, fecha);
}

TablaPtr ComunicadorEnProceso::LeerInstantaneos() {
  return interior_->Operar(Op::kLeerInstantaneos, [&]() -> TablaPtr {
    interior_->ExigirRespuesta();
    const auto atraso = static_cast<std::int64_t>(interior_->atraso);
    return simulada::TablaInstantaneos(interior_->Unidad().Instantaneos(interior_->ahora, atraso));
  });
}

TablaPtr ComunicadorEnProceso::LeerAgenda() {
  return interior_->Operar(Op::kLeerAgenda, [&]() -> TablaPtr {
    return interior_->Responde() ? interior_->Unidad().agenda.ComoTabla() : nullptr;
  });
}

std::string ComunicadorEnProceso::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  const bool existe = pista >= 0 && pista < simulada::kPistas && pagina >= 0 && pagina < simulada::kPaginasPista;
  return interior_->Operar(Op::kLeerPaginaFlash, [&]() -> std::string {
    if (!existe || !interior_->Responde()) return {};
    return interior_->Unidad().memoria.TextoDePagina(pista, pagina);
  });
}

TablaPtr ComunicadorEnProceso::ConfiguracionAlmacenada(bool /*desdeUTR*/) {
  return interior_->Operar(Op::kConfiguracionAlmacenada, [&]() -> TablaPtr {
    interior_->ExigirRespuesta();
    return interior_->Unidad().canales.ComoTabla();
  });
}

TablaPtr ComunicadorEnProceso::LeerArchivoConfiguracion(std::string_view ruta) {
  return LeerIcf(ruta);
}

TablaPtr ComunicadorEnProceso::CargarConfiguracion(std::string_view ruta) {
  return LeerIcf(ruta);
}

TablaPtr ComunicadorEnProceso::LeerEventos(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerEventos, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    simulada::Estacion& unidad = interior_->Unidad();
    if (!EsPendiente(desde, hasta)) return SucesosDe(unidad.memoria, rango);
    return simulada::SucesosPendientes(unidad.memoria, DiaDe(unidad.Reloj(interior_->ahora)));
  });
}

TablaPtr ComunicadorEnProceso::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return interior_->Operar(Op::kLeerDatos, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    return DatosDe(interior_->Unidad().memoria, interior_->Unidad().canales, rango, canal + 1);
  });
}

TablaPtr ComunicadorEnProceso::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerColaTx, [&]() -> TablaPtr {
    Rango rango = simulada::LeerRango(desde, hasta);
    rango.solo_pendiente = EsPendiente(desde, hasta);
    interior_->ExigirRespuesta();
    return ColaDe(interior_->Unidad().memoria, rango);
  });
}

TablaPtr ComunicadorEnProceso::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return interior_->Operar(Op::kLeerDatosCartucho, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    if (!interior_->Unidad().TieneCartucho()) return nullptr;
    return DatosDe(interior_->Unidad().cartucho, interior_->Unidad().canales, rango, canal + 1);
  });
}

TablaPtr ComunicadorEnProceso::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerEventosCartucho, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    if (!interior_->Unidad().TieneCartucho()) return nullptr;
    return SucesosDe(interior_->Unidad().cartucho, rango);
  });
}

TablaPtr ComunicadorEnProceso::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return interior_->Operar(Op::kLeerColaTxCartucho, [&]() -> TablaPtr {
    const Rango rango = simulada::LeerRango(desde, hasta);
    interior_->ExigirRespuesta();
    if (!interior_->Unidad().TieneCartucho()) return nullptr;
    return ColaDe(interior_->Unidad().cartucho, rango);
  });
}

std::string ComunicadorEnProceso::LeerFechaHora() {
  return interior_->Operar(Op::kLeerFechaHora, [&]() -> std::string {
    if (!interior_->Responde()) return {};
    return TextoFechaHora(FechaDeSegundos(interior_->Unidad().Reloj(interior_->ahora)));
  });
}

std::int32_t ComunicadorEnProceso::LeerEstado() {
  return interior_->Operar(Op::kLeerEstado,
                           [&]() -> std::int32_t { return interior_->Responde() ? interior_->Unidad().Estado() : -1; });
}

std::string ComunicadorEnProceso::LeerPagina(std::string_view pagina, bool /*silencioso*/) {
  const auto numero = NumeroDePagina(pagina);
  return interior_->Operar(Op::kLeerPagina, [&]() -> std::string {
    if (!numero || !interior_->Responde()) return {};
    return TextoPagina(interior_->Unidad().LeerPagina(*numero));
  });
}

}  // namespace utr
