#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "driver/Pagina.h"
#include "tables/Tabla.h"

namespace utr::simulada {

using namespace paginas;

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

  // The page text.
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

  // Where a ring stands, for a reader that fetches its pages one by one.
  struct Situacion {
    std::uint32_t siguiente = 0;               // place of the page to be opened next
    bool lleno = false;                        // else the oldest page stands at place 0
    bool asciende = true;                      // from the oldest page to the newest no day goes back
    std::optional<std::uint32_t> pendiente{};  // place of the oldest page with a pending record
    std::uint32_t cuantas = 0;
  };
  Situacion SituacionDe(std::size_t anillo) const;

  // Takes the mark kPendiente from all records of the queue or of the events.
  void MarcarColaTransmitida() { MarcarTransmitido(anillos_[kPilas]); }
  void MarcarSucesosTransmitidos() { MarcarTransmitido(anillos_[kPilas + 1]); }

  static constexpr std::size_t kAnillos = kPilas + 2;  // the stacks, the queue, the events

  // For saving and loading: all bytes in the order of tracks, and the rings.
  std::span<std::uint8_t> Bytes() { return bytes_; }
  std::span<Anillo> Anillos() { return anillos_; }

 private:
  Pagina PaginaDe(const Anillo& anillo, std::uint32_t lugar);
  Pagina PaginaPara(Anillo& anillo, Contenido contenido, std::uint8_t canal, std::uint16_t dia);
  void Recorrer(const Anillo& anillo, const Visita& visita) const;
  void MarcarTransmitido(const Anillo& anillo);

  std::vector<std::uint8_t> bytes_;
  std::array<Anillo, kAnillos> anillos_;
};

// What is pending among the events of a memory, up to the midnight of `hoy` (a day number).
TablaPtr SucesosPendientes(const Memoria& memoria, std::int32_t hoy);

}  // namespace utr::simulada
