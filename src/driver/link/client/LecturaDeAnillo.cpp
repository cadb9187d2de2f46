#include "driver/link/client/LecturaDeAnillo.h"

#include <algorithm>

#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::enlace {

namespace {

using namespace protocolo;

constexpr const char* kOrigen = "Comunicador";
constexpr std::uint32_t kCabecerasPorPedido = 25;
constexpr std::uint16_t kRegistrosDeCabecera = 3;
constexpr std::uint32_t kCercaBastante = 3;  // pages, which cost no more than another look at headers
constexpr int kPuestasAlDia = 5;

constexpr std::uint16_t ArchivoDePista(CualMemoria memoria, int pista) {
  const std::uint16_t primero = memoria == CualMemoria::kFlash ? archivo::kFlash : archivo::kCartucho;
  return static_cast<std::uint16_t>(primero + pista);
}

constexpr std::uint16_t RegistroDeAnillo(CualMemoria memoria, std::size_t anillo) {
  const std::uint16_t primero = memoria == CualMemoria::kFlash ? registro::kAnillos : registro::kAnillosDelCartucho;
  return static_cast<std::uint16_t>(primero + anillo * kRegistrosPorAnillo);
}

template <class Leido>
Leido Entendido(std::optional<Leido> leido) {
  if (!leido) throw Error(error_enlace::kOtraVersion, kOrigen, "La UTR describe una memoria que no se entiende");
  return *leido;
}

// The parts that ask for these pages; neighbours go together.
std::vector<PedidoDeArchivo> PartesDe(CualMemoria memoria, const std::vector<LugarEnMemoria>& lugares) {
  std::vector<PedidoDeArchivo> partes;
  for (std::size_t i = 0; i < lugares.size(); ++i) {
    const bool sigue =
        i > 0 && lugares[i].pista == lugares[i - 1].pista && lugares[i].pagina == lugares[i - 1].pagina + 1;
    if (sigue) {
      partes.back().registros = static_cast<std::uint16_t>(partes.back().registros + kRegistrosPorPagina);
    } else {
      partes.push_back({ArchivoDePista(memoria, lugares[i].pista), static_cast<std::uint16_t>(lugares[i].pagina),
                        kRegistrosPorPagina});
    }
  }
  return partes;
}

// The day that a header tells; nothing for one that can't be a header. Only the whole page tells whether it is true.
std::optional<std::int32_t> DiaDeCabecera(VistaBytes bytes) {
  Bytes pagina(bytes.begin(), bytes.end());
  pagina.resize(paginas::kBytesPagina, 0);
  const auto cabecera = paginas::LeerCabeceraAbierta(paginas::Pagina(pagina.data(), paginas::kBytesPagina));
  const bool conocida = cabecera.contenido == paginas::Contenido::kDatos ||
                        cabecera.contenido == paginas::Contenido::kEventos ||
                        cabecera.contenido == paginas::Contenido::kCola;
  if (!conocida || cabecera.dia == paginas::kDiaAusente) return std::nullopt;
  return cabecera.dia;
}

}  // namespace

std::optional<Cabezales> LeerCabezalesDe(UnidadRemota& unidad, CualMemoria memoria) {
  const auto registros = unidad.LeerRegistros(RegistroDeAnillo(memoria, 0), kRegistrosDeCabezales);
  if (!registros) return std::nullopt;
  return CabezalesDe(*registros);
}

Cabezales CabezalesDe(std::span<const std::uint16_t> registros) {
  return Entendido(LeerCabezales(registros));
}

std::vector<PaginaLeida> LeerPaginas(UnidadRemota& unidad, CualMemoria memoria,
                                     const std::vector<LugarEnMemoria>& lugares, AnilloAlLado* al_lado) {
  auto partes = PartesDe(memoria, lugares);
  if (al_lado != nullptr) {
    partes.push_back({archivo::kRegistros, RegistroDeAnillo(memoria, al_lado->anillo), kRegistrosPorAnillo});
    al_lado->cabezal.reset();
  }
  Leido leido = unidad.LeerArchivos(std::move(partes));
  if (al_lado != nullptr && leido.Bien()) {
    al_lado->cabezal = Entendido(LeerCabezal(al_lado->anillo, RegistrosDe(leido.partes.back())));
    leido.partes.pop_back();
  }
  std::vector<PaginaLeida> paginas;
  for (const Bytes& parte : leido.partes) {
    for (auto byte = parte.begin(); byte != parte.end(); byte += paginas::kBytesPagina) {
      paginas.emplace_back(Bytes(byte, byte + paginas::kBytesPagina));
    }
  }
  unidad.ContarPaginas(paginas.size());
  if (leido.Bien()) return paginas;
  if (lugares.size() == 1 && al_lado == nullptr) return {std::nullopt};
  for (const LugarEnMemoria& lugar : lugares) paginas.push_back(LeerPaginas(unidad, memoria, {lugar}).front());
  return paginas;
}

std::optional<std::int32_t> LecturaDeAnillo::Tomada::Dia() const {
  if (!cabecera || cabecera->dia == paginas::kDiaAusente) return std::nullopt;
  return cabecera->dia;
}

std::uint32_t LecturaDeAnillo::Cuantas() const {
  return cabezal_.lleno ? cabezal_.paginas : cabezal_.siguiente;
}

std::uint32_t LecturaDeAnillo::EdadDe(std::uint16_t lugar) const {
  const std::uint32_t primera = cabezal_.lleno ? cabezal_.siguiente : 0;
  return (lugar + cabezal_.paginas - primera) % cabezal_.paginas;
}

LugarEnMemoria LecturaDeAnillo::LugarDe(std::uint32_t edad) const {
  const std::uint32_t primera = cabezal_.lleno ? cabezal_.siguiente : 0;
  const auto lugar = static_cast<int>((primera + edad) % cabezal_.paginas);
  return {PrimeraPista(anillo_) + lugar / kPaginasPorPista, lugar % kPaginasPorPista};
}

// The page of an age. One that isn't at hand is fetched together with those that follow it. Without a page that the
// unit refuses the records would have a hole that nobody sees.
const LecturaDeAnillo::Tomada& LecturaDeAnillo::Tomar(std::uint32_t edad) {
  if (!tomadas_.contains(edad)) {
    std::vector<LugarEnMemoria> lugares;
    for (std::uint32_t e = edad; e < edad + kPaginasPorPedido && e < Cuantas(); ++e) lugares.push_back(LugarDe(e));
    const auto leidas = LeerPaginas(unidad_, memoria_, lugares, &ahora_);
    for (std::uint32_t i = 0; i < leidas.size(); ++i) {
      Tomada tomada;
      if (leidas[i]) {
        tomada.bytes = *leidas[i];
        tomada.cabecera = paginas::LeerCabecera(paginas::VistaPagina(tomada.bytes.data(), paginas::kBytesPagina));
      }
      tomadas_[edad + i] = std::move(tomada);
    }
  }
  const Tomada& tomada = tomadas_[edad];
  if (tomada.bytes.empty()) {
    const LugarEnMemoria lugar = LugarDe(edad);
    throw Error(
        error_enlace::kPaginaNegada, kOrigen,
        "La UTR no entrega la página " + std::to_string(lugar.pagina) + " de la pista " + std::to_string(lugar.pista));
  }
  return tomada;
}

std::vector<std::optional<std::int32_t>> LecturaDeAnillo::LeerDias(const std::vector<std::uint32_t>& edades) {
  std::vector<PedidoDeArchivo> partes;
  for (const std::uint32_t edad : edades) {
    const LugarEnMemoria lugar = LugarDe(edad);
    partes.push_back(
        {ArchivoDePista(memoria_, lugar.pista), static_cast<std::uint16_t>(lugar.pagina), kRegistrosDeCabecera});
  }
  const Leido leido = unidad_.LeerArchivos(std::move(partes));
  std::vector<std::optional<std::int32_t>> dias;
  for (const Bytes& parte : leido.partes) dias.push_back(DiaDeCabecera(parte));
  dias.resize(edades.size());  // of a request that was refused none is known
  return dias;
}

// An age from which on no page of that day or a later one is missed, as far as headers tell: a damaged one gives way to
// its neighbours. Many headers are looked at in one request, so that few requests do.
std::uint32_t LecturaDeAnillo::Buscar(std::int32_t dia) {
  std::uint32_t desde = 0;
  std::uint32_t hasta = Cuantas();  // the first page that is known to be of the day or later
  while (hasta - desde > kCercaBastante) {
    const std::uint32_t tramo = hasta - desde;
    const std::uint32_t cuantas = std::min(tramo, kCabecerasPorPedido);
    std::vector<std::uint32_t> edades;
    for (std::uint32_t i = 1; i <= cuantas; ++i) edades.push_back(desde + (tramo * i) / (cuantas + 1));
    const auto dias = LeerDias(edades);
    const std::uint32_t antes = tramo;
    for (std::size_t i = 0; i < edades.size(); ++i) {
      if (!dias[i]) continue;
      if (*dias[i] >= dia) {
        hasta = edades[i];
        break;
      }
      desde = edades[i] + 1;
    }
    if (hasta - desde >= antes) break;
  }
  return desde;
}

// Reads what isn't at hand of the pages that are wanted. Where days ascend, one whole page of an earlier day proves
// that all ahead of it are of earlier days, and one of a later day ends it; so a header that lied costs pages, not
// records.
void LecturaDeAnillo::LeerRango(const DiasPedidos& dias) {
  const bool por_dias = cabezal_.asciende && !dias.solo_pendiente;
  if (!primera_) {
    primera_ = dias.solo_pendiente ? EdadDe(cabezal_.pendiente) : por_dias && dias.desde ? Buscar(*dias.desde) : 0;
  }
  const std::uint32_t cuantas = Cuantas();
  std::uint32_t primera = std::min(*primera_, cuantas);
  const bool hay_limite = por_dias && dias.desde.has_value();
  const auto es_anterior = [&](const Tomada& pagina) { return pagina.Dia() && *pagina.Dia() < *dias.desde; };
  if (hay_limite && primera > 0) --primera;
  if (hay_limite && primera < cuantas) {
    while (primera > 0 && !es_anterior(Tomar(primera))) {
      const std::uint32_t abajo = primera - std::min<std::uint32_t>(primera, kPaginasPorPedido);
      Tomar(abajo);
      while (primera > abajo && !es_anterior(Tomar(primera))) --primera;
    }
  }
  primera_ = primera;
  for (std::uint32_t edad = primera; edad < cuantas; ++edad) {
    const auto dia = Tomar(edad).Dia();
    if (por_dias && dias.hasta && dia && *dia > *dias.hasta) return;
  }
}

// As the ring stood with the last pages that were read, or, without them, stands now.
Cabezal LecturaDeAnillo::Ahora() {
  if (!ahora_.cabezal) {
    const auto registros = unidad_.LeerRegistros(RegistroDeAnillo(memoria_, anillo_), kRegistrosPorAnillo);
    if (!registros) throw Error(error_enlace::kCambiante, kOrigen, "La UTR cambia mientras se la lee");
    ahora_.cabezal = Entendido(LeerCabezal(anillo_, *registros));
  }
  return *ahora_.cabezal;
}

// The ring as it stands now: what was overwritten goes, the page that was open is read again. False: it stands where it
// stood.
bool LecturaDeAnillo::PonerAlDia(const Cabezal& ahora) {
  const bool borrada = (cabezal_.lleno && !ahora.lleno) || (!ahora.lleno && ahora.siguiente < cabezal_.siguiente);
  if (borrada) {
    tomadas_.clear();
    primera_.reset();
    cabezal_ = ahora;
    return true;
  }
  const std::uint32_t paginas = cabezal_.paginas;
  const std::uint32_t nuevas = (ahora.siguiente + paginas - cabezal_.siguiente) % paginas;
  const std::uint32_t antes = Cuantas();
  const bool dejo_de_ascender = cabezal_.asciende && !ahora.asciende;
  cabezal_ = ahora;
  if (dejo_de_ascender) {
    tomadas_.clear();
    primera_.reset();
    return true;
  }
  if (nuevas == 0) return false;
  const std::uint32_t pisadas = antes + nuevas - Cuantas();
  tomadas_.erase(antes - 1);  // it was open
  std::map<std::uint32_t, Tomada> quedan;
  for (auto& [edad, tomada] : tomadas_) {
    if (edad >= pisadas) quedan[edad - pisadas] = std::move(tomada);
  }
  tomadas_ = std::move(quedan);
  if (primera_) primera_ = *primera_ - std::min(*primera_, pisadas);
  return true;
}

void LecturaDeAnillo::Leer(const Cabezal& cabezal, const DiasPedidos& dias, const Visita& visita) {
  cabezal_ = cabezal;
  primera_.reset();
  tomadas_.clear();
  ahora_.cabezal.reset();
  if (dias.solo_pendiente && cabezal.pendiente == kSinPendiente) return;
  for (int vez = 0;; ++vez) {
    LeerRango(dias);
    if (!PonerAlDia(Ahora())) break;
    if (vez == kPuestasAlDia) throw Error(error_enlace::kCambiante, kOrigen, "La UTR cambia mientras se la lee");
    if (dias.solo_pendiente && cabezal_.pendiente == kSinPendiente) return;
  }
  for (const auto& [edad, tomada] : tomadas_) {
    if (edad >= *primera_ && tomada.cabecera) {
      visita(paginas::VistaPagina(tomada.bytes.data(), paginas::kBytesPagina), *tomada.cabecera);
    }
  }
}

}  // namespace utr::enlace
