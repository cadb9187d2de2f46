#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "retrieved/recovery/FilasCrudas.h"
#include "retrieved/recovery/LectorRecuperacion.h"
#include "retrieved/recovery/MemoriaFlash.h"

// What recovery files hold more than once: pages with the same text, and records that stand in two texts of one page.
// Internal to the processing of recovery files.
namespace utr {

// Finds things of a vector by what they hold, in constant time: an open table of their places.
class IndicePlano {
 public:
  IndicePlano() : ranuras_(1024) {}

  // The place of the one that `es` knows again among those of that hash; `lugar` is noted when there is none, and given
  // back.
  template <typename Es>
  std::uint32_t Buscar(std::uint64_t dispersion, std::uint32_t lugar, Es es) {
    if (++cuantos_ * 2 > ranuras_.size()) Crecer();
    Ranura* ranura = &Primera(dispersion);
    for (; ranura->lugar != kLibre; ranura = &Siguiente(ranura)) {
      if (ranura->marca != Marca(dispersion) || !es(ranura->lugar)) continue;
      --cuantos_;
      return ranura->lugar;
    }
    *ranura = {lugar, Marca(dispersion), dispersion};
    return lugar;
  }

 private:
  static constexpr std::uint32_t kLibre = 0xFFFFFFFF;
  struct Ranura {
    std::uint32_t lugar = kLibre;
    std::uint32_t marca = 0;
    std::uint64_t dispersion = 0;
  };
  static std::uint32_t Marca(std::uint64_t dispersion) { return static_cast<std::uint32_t>(dispersion >> 32); }
  Ranura& Primera(std::uint64_t dispersion) { return ranuras_[dispersion & (ranuras_.size() - 1)]; }
  Ranura& Siguiente(Ranura* ranura) {
    return ++ranura == ranuras_.data() + ranuras_.size() ? ranuras_.front() : *ranura;
  }
  void Crecer();

  std::vector<Ranura> ranuras_;  // a power of two
  std::size_t cuantos_ = 0;
};

class CopiasDePaginas {
 public:
  // Notes the text of a page. False: that page came with that text before.
  bool Anotar(const LugarPagina& lugar, std::span<const std::uint8_t> bytes);

  // Of the records of the page noted last, keeps those that no other text of that page holds already; a record that
  // stands n times in another text is dropped n times at most. `guardadas`: all records kept so far, behind which the
  // caller appends those of `filas`; `quitada` is told each one that is dropped.
  void QuitarRepetidas(std::vector<FilaCruda>& filas, const FilasDeFlujo& guardadas,
                       const std::function<void(const FilaCruda&)>& quitada);

 private:
  struct Copia {
    std::uint32_t lugar = 0;
    std::uint8_t cuantos = 0;
    std::array<std::uint8_t, kBytesDeLinea> bytes{};
    std::uint32_t filas = 0;
    std::uint64_t desde = 0;  // its records among those kept
  };

  // A day of a page. Few have a second text with records: of the others no record is looked up.
  struct Dia {
    std::uint32_t lugar = 0;
    std::uint32_t fecha = 0;
    std::uint32_t copia = 0;     // the first one with records of it
    bool con_registros = false;  // all of them are among `registros_`
  };

  // A record of a page, and how many times its texts hold it.
  struct Registro {
    std::uint32_t lugar = 0;
    FilaCruda fila{};
    std::uint32_t veces = 0;
    std::uint32_t copia = 0;  // the text that was looked at last, and how many of them were met there
    std::uint32_t de_copia = 0;
  };

  Dia& DiaDe(std::uint32_t fecha);
  bool EsRepetida(std::uint32_t copia, const FilaCruda& fila);

  std::vector<Copia> copias_;
  IndicePlano textos_;
  std::vector<Dia> dias_;
  IndicePlano indice_dias_;
  std::vector<Registro> registros_;
  IndicePlano indice_registros_;
};

}  // namespace utr
