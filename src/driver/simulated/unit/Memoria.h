#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "driver/simulated/unit/Pagina.h"

namespace utr::simulada {

inline constexpr int kPistas = 32;
inline constexpr int kPaginasPista = 1024;
inline constexpr int kPilas = 9;

// A ring of pages inside a memory: the next page to be opened follows the last one, the oldest is overwritten.
struct Anillo {
  std::uint32_t primera = 0;    // page of the memory where the ring begins
  std::uint32_t cuantas = 0;    // pages of the ring
  std::uint32_t siguiente = 0;  // place in the ring of the page to be opened next
  std::int32_t abierta = -1;    // place of the page that takes records; -1 when none does
  bool lleno = false;           // the ring has gone round at least once
};

// 32 tracks of 1024 pages of 64 bytes, and where the unit writes in them: tracks 0 to 26 are nine stacks of three, 27
// to 29 the transmission queue, 30 and 31 the events. An erased byte is 255. The unit has two: its flash and its
// cartridge.
class Memoria {
 public:
  Memoria();

  // Everything erased, every ring at its beginning.
  void Borrar();

  VistaPagina PaginaEn(int pista, int pagina) const;

  // The page text: 64 bytes and two more items, "0,0". Readers drop the last item, and take a page for blank when all
  // items but two are 255: 66 is the one count for which both hold.
  std::string TextoDePagina(int pista, int pagina) const;

  // Appends a record; a new page begins with every day and channel. Call Sellar after the last one of a run.
  void Anotar(int pila, std::int32_t dia, const Muestra& muestra);
  void AnotarEnCola(std::int32_t dia, const Muestra& muestra);
  void AnotarSuceso(std::int32_t dia, const Suceso& suceso);
  void Sellar();

  // Visits the whole pages of a ring, oldest first; pages that aren't whole are passed over.
  using Visita = std::function<void(VistaPagina, const Cabecera&)>;
  void RecorrerPila(int pila, const Visita& visita) const {
    Recorrer(anillos_[static_cast<std::size_t>(pila)], visita);
  }
  void RecorrerCola(const Visita& visita) const { Recorrer(anillos_[kPilas], visita); }
  void RecorrerSucesos(const Visita& visita) const { Recorrer(anillos_[kPilas + 1], visita); }

  // Takes the mark kPendiente from all records of the queue or of the events.
  void MarcarColaTransmitida() { MarcarTransmitido(anillos_[kPilas]); }
  void MarcarSucesosTransmitidos() { MarcarTransmitido(anillos_[kPilas + 1]); }

  // For saving and loading: all bytes in the order of tracks, and the rings.
  std::span<std::uint8_t> Bytes() { return bytes_; }
  std::span<Anillo> Anillos() { return anillos_; }

 private:
  Pagina PaginaDe(const Anillo& anillo, std::uint32_t lugar);
  Pagina PaginaPara(Anillo& anillo, Contenido contenido, std::uint8_t canal, std::uint16_t dia);
  void Recorrer(const Anillo& anillo, const Visita& visita) const;
  void MarcarTransmitido(const Anillo& anillo);

  std::vector<std::uint8_t> bytes_;
  std::array<Anillo, kPilas + 2> anillos_;
};

// The text of a page of flash, as TextoDePagina gives it.
std::string TextoDe(VistaPagina pagina);

}  // namespace utr::simulada
