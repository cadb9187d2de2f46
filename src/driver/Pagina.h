#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

// The 64 bytes of a flash page of a unit, written and read in one place: what a station stores, what reads by date give
// and what a recovered page decodes to are the same bytes, by whatever driver. docs/simulated-station.md shows one.
namespace utr::paginas {

inline constexpr std::size_t kBytesPagina = 64;
using Pagina = std::span<std::uint8_t, kBytesPagina>;
using VistaPagina = std::span<const std::uint8_t, kBytesPagina>;

// What a page holds is told by its first byte, since the descriptors that come with a page don't tell events from data.
enum class Contenido : std::uint8_t { kDatos = 0xD1, kEventos = 0xE2, kCola = 0xC3 };

// The page text of a page of flash: 64 bytes and two more items, "0,0". Readers drop the last item, and take a page for
// blank when all items but two are 255: 66 is the one count for which both hold.
std::string TextoDe(VistaPagina pagina);

inline constexpr std::uint16_t kDiaAusente = 0xFFFF;  // a page without a date of its own

// Bits of a record.
namespace marca {
inline constexpr unsigned kValidado = 1;
inline constexpr unsigned kEnCola = 2;
inline constexpr unsigned kPendiente = 4;  // not transmitted yet
inline constexpr unsigned kSinValor = 8;   // nothing was measured; of an event: it has no values
inline constexpr unsigned kSinExtremos = 16;
inline constexpr unsigned kNegativo = 32;  // the second value of an event is below zero
}  // namespace marca

struct Cabecera {
  Contenido contenido = Contenido::kDatos;
  std::uint8_t canal = 0;  // 1 to 23; 0 on pages of events and queue
  std::uint8_t cuenta = 0;
  std::uint16_t dia = kDiaAusente;  // days from 01/01/2000
};

// One sample, of the history or of the transmission queue.
struct Muestra {
  std::uint16_t minuto = 0;  // of the day
  std::uint8_t canal = 0;
  std::uint8_t marcas = 0;
  std::uint16_t valor = 0;
  std::uint16_t maximo = 0;
  std::uint16_t minimo = 0;
};

struct Suceso {
  std::uint32_t segundo = 0;  // of the day
  std::uint8_t codigo = 0;
  std::uint8_t marcas = 0;
  std::uint16_t valor1 = 0;
  std::int32_t valor2 = 0;  // -65535 to 65535
};

// How many records a page of that content takes.
unsigned Capacidad(Contenido contenido);

// Makes an empty page: header, no records, the rest erased. It isn't sealed.
void PrepararPagina(Pagina pagina, Contenido contenido, std::uint8_t canal, std::uint16_t dia);

// Writes a record behind the last one and counts it; the page must have room. Seal the page afterwards.
void AgregarMuestra(Pagina pagina, const Muestra& muestra);
void AgregarSuceso(Pagina pagina, const Suceso& suceso);

// Rewrites the marks of record `indice`. Seal the page afterwards.
void CambiarMarcas(Pagina pagina, unsigned indice, std::uint8_t marcas);

// Writes the check over the other bytes.
void SellarPagina(Pagina pagina);

// Gives the page another day (kDiaAusente takes it away) and seals it.
void CambiarDia(Pagina pagina, std::uint16_t dia);

// The header of a page that is whole: known content, count within its room, check right. Nothing for any other page.
std::optional<Cabecera> LeerCabecera(VistaPagina pagina);

// The header of a page that is being written, without a look at its check.
Cabecera LeerCabeceraAbierta(VistaPagina pagina);

// Records of a page whose header was read; `indice` below its count.
Muestra LeerMuestra(VistaPagina pagina, const Cabecera& cabecera, unsigned indice);
Suceso LeerSuceso(VistaPagina pagina, unsigned indice);

}  // namespace utr::paginas
