#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "retrieved/recovery/MemoriaFlash.h"
#include "tables/Tabla.h"

namespace utr {

// What is known of a page, the least alarming first: of several in one place the last one in this order is shown.
enum class EstadoPagina : std::uint8_t {
  kVacia,      // blank
  kAnterior,   // taken from the earlier file
  kDatos,      // holds data
  kSalteada,   // left out of a read: not asked for, or behind the blank pages that end its group
  kPendiente,  // not read yet; of a file: it holds no line for it
  kSinCanal,   // of a stack that no channel has
  kDaniada,    // its line is damaged, or the driver can't decode it
  kFallida,    // couldn't be read from the unit
};
inline constexpr std::size_t kEstadosPagina = 8;

// What the map is made of, which tells the states that it can have and their words.
enum class UsoMapa : std::uint8_t { kLectura, kProceso };

// The state of every page of the flash, for whoever shows it.
class MapaMemoria {
 public:
  static constexpr int kPaginasCelda = 8;
  static constexpr int kCeldasPista = kPaginasPista / kPaginasCelda;

  // All pages are kPendiente.
  explicit MapaMemoria(UsoMapa uso);

  // Tracks go from 0 to 31 and pages from 0 to 1023. A page is written a million times without a cost that counts.
  void Poner(const LugarPagina& lugar, EstadoPagina estado);
  void PonerPista(int pista, EstadoPagina estado);
  EstadoPagina Estado(const LugarPagina& lugar) const { return estados_[IndiceDePagina(lugar)]; }

  // What is shown of so many pages of a track from `pagina` on.
  EstadoPagina Peor(const LugarPagina& lugar, int cuantas) const;

  std::size_t Cuantas(EstadoPagina estado) const { return cuentas_[static_cast<std::size_t>(estado)]; }

  // Called at each page whose state changes, with its place; empty: nobody is told.
  void AlCambiar(std::function<void(const LugarPagina&)> aviso) { aviso_ = std::move(aviso); }

  // The channels that store in the stacks, by the columns Pila and Canal of a table of channels, in its rows whatever
  // its filter and sort; null: none is known.
  void NombrarCanales(const Tabla* configuracion);

  UsoMapa Uso() const noexcept { return uso_; }

  // The states that this map can have, in the order of a legend, and the words of one for so many pages.
  std::vector<EstadoPagina> Leyenda() const;
  std::string Palabra(EstadoPagina estado, std::size_t cuantas = 1) const;

  // "Pila 2: EA03", "Pila 2" where no channel is known, "Cola de transmisión", "Eventos".
  std::string NombreDeGrupo(std::size_t grupo) const;

  // "Pista 7, página 12 (Pila 2: EA03): con datos"; of several pages "páginas 8 a 15" and how many are in which state.
  std::string Describir(const LugarPagina& lugar, int cuantas = 1) const;

  // How many pages are in which state, in words: "1024 con datos, 2 vacías, 31742 todavía sin leer".
  std::string Cuenta() const;

 private:
  using Cuentas = std::array<std::size_t, kEstadosPagina>;
  std::string EnPalabras(const Cuentas& cuentas) const;

  UsoMapa uso_;
  std::vector<EstadoPagina> estados_;
  Cuentas cuentas_{};
  std::array<std::string, kGrupoCola> canales_;
  std::function<void(const LugarPagina&)> aviso_;
};

}  // namespace utr
