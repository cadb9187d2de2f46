#include "driver/link/client/InteriorEnlace.h"

#include "base/Fechas.h"
#include "driver/CanalesUTR.h"
#include "driver/Dias.h"
#include "driver/TablasDeUnidad.h"

namespace utr {

using namespace protocolo;
using enlace::CualMemoria;
using enlace::DiasPedidos;
using enlace::LecturaDeAnillo;
using enlace::LugarEnMemoria;
using paginas::Cabecera;
using paginas::Rango;
using paginas::VistaPagina;

namespace {

constexpr const char* kOrigen = "Comunicador";
constexpr int kPilas = 9;

// The days of a range; its ends may be open.
DiasPedidos DiasDe(const Rango& rango) {
  DiasPedidos dias;
  if (rango.desde != Rango{}.desde) dias.desde = DiaDe(rango.desde);
  if (rango.hasta != Rango{}.hasta) dias.hasta = DiaDe(rango.hasta);
  return dias;
}

}  // namespace

ComunicadorEnlace::Interior::Interior(Partes unas)
    : partes(std::move(unas)),
      espera(partes.reloj, partes.atender),
      via(partes.tendido, partes.dispositivos, espera, partes.plazos),
      unidad(via, espera, partes.reloj, partes.plazos, partes.avisos) {}

bool ComunicadorEnlace::Interior::Ordenar(bool valida, Codigo codigo, const std::vector<std::uint16_t>& argumentos) {
  return valida && Preguntar(false, [&] { return unidad.Ordenar(codigo, argumentos); });
}

// What can't be sent isn't asked: a table that no unit could hold is refused here.
bool ComunicadorEnlace::Interior::Entregar(Codigo codigo, const Tabla& tabla) {
  std::optional<Bytes> imagen;
  if (codigo == Codigo::kTomarAgenda) {
    const auto entradas = LeerEntradasDeAgenda(tabla);
    if (entradas) imagen = ImagenDe(*entradas);
  } else {
    imagen = ImagenDe(FilasDeTabla(tabla));
  }
  return imagen && Preguntar(false, [&] { return unidad.Entregar(codigo, *imagen); });
}

TablaPtr ComunicadorEnlace::Interior::LeerCanales() {
  const auto imagen = unidad.LeerImagen(archivo::kCanales);
  if (!imagen) return nullptr;
  const auto filas = LeerImagenDeCanales(*imagen);
  if (!filas) throw Error(error_enlace::kOtraVersion, kOrigen, "La UTR da una tabla de canales que no se entiende");
  return TablaDeCanales(filas->filas);
}

// In one request where the unit takes it, else what can be had of it. Nothing: the unit doesn't have that memory.
std::optional<ComunicadorEnlace::Interior::Cabezas> ComunicadorEnlace::Interior::LeerCabezas(CualMemoria memoria) {
  const std::uint16_t anillos = memoria == CualMemoria::kFlash ? registro::kAnillos : registro::kAnillosDelCartucho;
  const enlace::Leido leido = unidad.LeerArchivos({{archivo::kRegistros, anillos, kRegistrosDeCabezales},
                                                   {archivo::kRegistros, registro::kPilas, kLargoDePilas},
                                                   {archivo::kRegistros, registro::kReloj, kLargoDeReloj}});
  if (leido.Bien()) {
    return Cabezas{enlace::CabezalesDe(RegistrosDe(leido.partes[0])), RegistrosDe(leido.partes[1]),
                   LeerReloj(RegistrosDe(leido.partes[2]))};
  }
  const auto solos = enlace::LeerCabezalesDe(unidad, memoria);
  if (!solos) return std::nullopt;
  const auto reloj = unidad.LeerRegistros(registro::kReloj, kLargoDeReloj);
  return Cabezas{*solos, std::nullopt, reloj ? LeerReloj(*reloj) : std::nullopt};
}

// The ring of a channel; nothing for one without a stack. Where nobody tells, no record of it would read as "no data".
std::optional<std::size_t> ComunicadorEnlace::Interior::AnilloDe(int canal, const Cabezas& cabezas) {
  const auto pilas = cabezas.pilas ? cabezas.pilas : unidad.LeerRegistros(registro::kPilas, kLargoDePilas);
  if (!pilas) throw Error(error_enlace::kLecturaNegada, kOrigen, "La UTR no dice en qué pila está cada canal");
  const auto lugar = static_cast<std::size_t>(canal) - 1;
  const bool tiene = lugar < pilas->size() && (*pilas)[lugar] < kPilas;
  return tiene ? std::optional<std::size_t>((*pilas)[lugar]) : std::nullopt;
}

TablaPtr ComunicadorEnlace::Interior::LeerDatos(CualMemoria memoria, std::string_view desde, std::string_view hasta,
                                                int canal) {
  const Rango rango = paginas::LeerRango(desde, hasta);
  const auto cabezas = LeerCabezas(memoria);
  if (!cabezas) return nullptr;
  paginas::FilasMuestras filas;
  if (const auto anillo = AnilloDe(canal, *cabezas)) {
    LecturaDeAnillo(unidad, memoria, *anillo)
        .Leer(cabezas->anillos[*anillo], DiasDe(rango), [&](VistaPagina pagina, const Cabecera& cabecera) {
          // A stack that changed hands still holds pages of its former channel.
          if (cabecera.canal == canal) filas.Agregar(pagina, cabecera, rango, {});
        });
  }
  return filas.Terminar();
}

TablaPtr ComunicadorEnlace::Interior::LeerCola(CualMemoria memoria, std::string_view desde, std::string_view hasta,
                                               bool pendiente) {
  Rango rango = paginas::LeerRango(desde, hasta);
  rango.solo_pendiente = pendiente;
  const auto cabezas = LeerCabezas(memoria);
  if (!cabezas) return nullptr;
  paginas::FilasMuestras filas;
  DiasPedidos dias = DiasDe(rango);
  dias.solo_pendiente = pendiente;
  LecturaDeAnillo(unidad, memoria, kAnilloDeCola)
      .Leer(cabezas->anillos[kAnilloDeCola], dias,
            [&](VistaPagina pagina, const Cabecera& cabecera) { filas.Agregar(pagina, cabecera, rango, {}); });
  return filas.Terminar();
}

TablaPtr ComunicadorEnlace::Interior::LeerEventos(CualMemoria memoria, std::string_view desde, std::string_view hasta) {
  const Rango rango = paginas::LeerRango(desde, hasta);
  const auto cabezas = LeerCabezas(memoria);
  if (!cabezas) return nullptr;
  paginas::FilasSucesos filas;
  LecturaDeAnillo(unidad, memoria, kAnilloDeSucesos)
      .Leer(cabezas->anillos[kAnilloDeSucesos], DiasDe(rango),
            [&](VistaPagina pagina, const Cabecera& cabecera) { filas.Agregar(pagina, cabecera, rango, {}); });
  return filas.Terminar();
}

TablaPtr ComunicadorEnlace::Interior::LeerPendientes() {
  const auto cabezas = LeerCabezas(CualMemoria::kFlash);
  if (!cabezas) return nullptr;
  paginas::FilasPendientes filas;
  DiasPedidos dias;
  dias.solo_pendiente = true;
  LecturaDeAnillo(unidad, CualMemoria::kFlash, kAnilloDeSucesos)
      .Leer(cabezas->anillos[kAnilloDeSucesos], dias,
            [&](VistaPagina pagina, const Cabecera& cabecera) { filas.Agregar(pagina, cabecera); });
  const FechaHora hoy = cabezas->reloj.value_or(partes.reloj.Ahora());
  return filas.Terminar(DiaDe(Segundos(hoy)));
}

// Three pages at a time, since the next ones are what is asked for next.
std::string ComunicadorEnlace::Interior::LeerPaginaFlash(int pista, int pagina) {
  const auto lugar = std::pair{pista, pagina};
  const auto vieja = [&](const Adelantada& a) { return espera.Ahora() - a.leida >= partes.plazos.adelantadas; };
  if (const auto hallada = adelantadas_.find(lugar); hallada != adelantadas_.end() && !vieja(hallada->second)) {
    const Bytes bytes = std::move(hallada->second.bytes);
    adelantadas_.erase(hallada);
    return paginas::TextoDe(VistaPagina(bytes.data(), paginas::kBytesPagina));
  }
  adelantadas_.clear();
  std::vector<LugarEnMemoria> lugares;
  for (int p = pagina; p < pagina + kPaginasPorPedido && p < kPaginasPorPista; ++p) lugares.push_back({pista, p});
  const auto leidas = enlace::LeerPaginas(unidad, CualMemoria::kFlash, lugares);
  for (std::size_t i = 1; i < leidas.size(); ++i) {
    if (leidas[i]) adelantadas_[{pista, lugares[i].pagina}] = {*leidas[i], espera.Ahora()};
  }
  if (!leidas.front()) return {};
  return paginas::TextoDe(VistaPagina(leidas.front()->data(), paginas::kBytesPagina));
}

}  // namespace utr
