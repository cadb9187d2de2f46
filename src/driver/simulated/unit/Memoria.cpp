#include "driver/simulated/unit/Memoria.h"

#include <algorithm>

#include "driver/TablasRegistros.h"

namespace utr::simulada {

namespace {

constexpr std::uint32_t kPistasPila = 3;
constexpr std::uint32_t kPistasSucesos = 2;

std::uint8_t MarcasDe(VistaPagina pagina, const Cabecera& cabecera, unsigned registro) {
  return cabecera.contenido == Contenido::kEventos ? LeerSuceso(pagina, registro).marcas
                                                   : LeerMuestra(pagina, cabecera, registro).marcas;
}

bool TienePendientes(VistaPagina pagina, const Cabecera& cabecera) {
  if (cabecera.contenido == Contenido::kDatos) return false;  // samples of the history never are
  for (unsigned r = 0; r < std::min<unsigned>(cabecera.cuenta, Capacidad(cabecera.contenido)); ++r) {
    if ((MarcasDe(pagina, cabecera, r) & marca::kPendiente) != 0) return true;
  }
  return false;
}

std::uint16_t DiaDePagina(std::int32_t dia) {
  return static_cast<std::uint16_t>(std::clamp<std::int32_t>(dia, 0, kDiaAusente - 1));
}

}  // namespace

Memoria::Memoria() : bytes_(std::size_t{kPistas} * kPaginasPista * kBytesPagina, 255) {
  Borrar();
}

void Memoria::Borrar() {
  std::fill(bytes_.begin(), bytes_.end(), std::uint8_t{255});
  std::uint32_t primera = 0;
  for (std::size_t i = 0; i < anillos_.size(); ++i) {
    const std::uint32_t pistas = i + 1 == anillos_.size() ? kPistasSucesos : kPistasPila;
    anillos_[i] = {.primera = primera, .cuantas = pistas * kPaginasPista};
    primera += anillos_[i].cuantas;
  }
}

VistaPagina Memoria::PaginaEn(int pista, int pagina) const {
  const auto lugar = static_cast<std::size_t>(pista * kPaginasPista + pagina) * kBytesPagina;
  return VistaPagina{bytes_.data() + lugar, kBytesPagina};
}

std::string Memoria::TextoDePagina(int pista, int pagina) const {
  return TextoDe(PaginaEn(pista, pagina));
}

void Memoria::Anotar(int pila, std::int32_t dia, const Muestra& muestra) {
  Anillo& anillo = anillos_[static_cast<std::size_t>(pila)];
  AgregarMuestra(PaginaPara(anillo, Contenido::kDatos, muestra.canal, DiaDePagina(dia)), muestra);
}

void Memoria::AnotarEnCola(std::int32_t dia, const Muestra& muestra) {
  AgregarMuestra(PaginaPara(anillos_[kPilas], Contenido::kCola, 0, DiaDePagina(dia)), muestra);
}

void Memoria::AnotarSuceso(std::int32_t dia, const Suceso& suceso) {
  AgregarSuceso(PaginaPara(anillos_[kPilas + 1], Contenido::kEventos, 0, DiaDePagina(dia)), suceso);
}

void Memoria::Sellar() {
  for (const Anillo& anillo : anillos_) {
    if (anillo.abierta >= 0) SellarPagina(PaginaDe(anillo, static_cast<std::uint32_t>(anillo.abierta)));
  }
}

Pagina Memoria::PaginaDe(const Anillo& anillo, std::uint32_t lugar) {
  return Pagina{bytes_.data() + std::size_t{anillo.primera + lugar} * kBytesPagina, kBytesPagina};
}

// The open page of the ring where it suits and has room, else the next one, begun anew.
Pagina Memoria::PaginaPara(Anillo& anillo, Contenido contenido, std::uint8_t canal, std::uint16_t dia) {
  if (anillo.abierta >= 0) {
    const Pagina abierta = PaginaDe(anillo, static_cast<std::uint32_t>(anillo.abierta));
    const Cabecera cabecera = LeerCabeceraAbierta(abierta);
    const bool suya = cabecera.canal == canal && cabecera.dia == dia;
    if (suya && cabecera.cuenta < Capacidad(contenido)) return abierta;
    SellarPagina(abierta);
  }
  const Pagina nueva = PaginaDe(anillo, anillo.siguiente);
  PrepararPagina(nueva, contenido, canal, dia);
  anillo.abierta = static_cast<std::int32_t>(anillo.siguiente);
  anillo.siguiente = (anillo.siguiente + 1) % anillo.cuantas;
  if (anillo.siguiente == 0) anillo.lleno = true;
  return nueva;
}

void Memoria::Recorrer(const Anillo& anillo, const Visita& visita) const {
  const std::uint32_t cuantas = anillo.lleno ? anillo.cuantas : anillo.siguiente;
  const std::uint32_t desde = anillo.lleno ? anillo.siguiente : 0;
  for (std::uint32_t i = 0; i < cuantas; ++i) {
    const std::size_t lugar = anillo.primera + (desde + i) % anillo.cuantas;
    const VistaPagina pagina{bytes_.data() + lugar * kBytesPagina, kBytesPagina};
    if (const auto cabecera = LeerCabecera(pagina)) visita(pagina, *cabecera);
  }
}

// Looked for in the pages themselves: a picture that is always right, and cheap beside a request over a line.
Memoria::Situacion Memoria::SituacionDe(std::size_t anillo_pedido) const {
  const Anillo& anillo = anillos_[anillo_pedido];
  Situacion situacion{.siguiente = anillo.siguiente, .lleno = anillo.lleno, .cuantas = anillo.cuantas};
  std::uint16_t dia = 0;
  const std::uint32_t cuantas = anillo.lleno ? anillo.cuantas : anillo.siguiente;
  for (std::uint32_t i = 0; i < cuantas; ++i) {
    const std::uint32_t lugar = ((anillo.lleno ? anillo.siguiente : 0) + i) % anillo.cuantas;
    const VistaPagina pagina{bytes_.data() + std::size_t{anillo.primera + lugar} * kBytesPagina, kBytesPagina};
    const Cabecera cabecera = LeerCabeceraAbierta(pagina);
    situacion.asciende = situacion.asciende && cabecera.dia >= dia;
    dia = cabecera.dia;
    if (!situacion.pendiente && TienePendientes(pagina, cabecera)) situacion.pendiente = lugar;
  }
  return situacion;
}

// Goes back from the newest page and stops at the first one without anything pending: what lies ahead of it was marked
// by an earlier transmission.
void Memoria::MarcarTransmitido(const Anillo& anillo) {
  const std::uint32_t cuantas = anillo.lleno ? anillo.cuantas : anillo.siguiente;
  for (std::uint32_t i = 1; i <= cuantas; ++i) {
    const Pagina pagina = PaginaDe(anillo, (anillo.siguiente + anillo.cuantas - i) % anillo.cuantas);
    const auto cabecera = LeerCabecera(pagina);
    if (!cabecera) continue;
    bool alguno = false;
    for (unsigned r = 0; r < cabecera->cuenta; ++r) {
      const std::uint8_t marcas = MarcasDe(pagina, *cabecera, r);
      if ((marcas & marca::kPendiente) == 0) continue;
      CambiarMarcas(pagina, r, static_cast<std::uint8_t>(marcas & ~marca::kPendiente));
      alguno = true;
    }
    if (!alguno) return;
    SellarPagina(pagina);
  }
}

TablaPtr SucesosPendientes(const Memoria& memoria, std::int32_t hoy) {
  FilasPendientes filas;
  memoria.RecorrerSucesos([&](VistaPagina pagina, const Cabecera& cabecera) { filas.Agregar(pagina, cabecera); });
  return filas.Terminar(hoy);
}

}  // namespace utr::simulada
