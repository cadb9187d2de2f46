#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

// Decoded records of many pages in little room, until the builders take them. Internal to the processing of recovery
// files.
namespace utr {

// Texts by number from 1, each distinct one once; 0 stands for none. They come by the hundred thousand: those of counts
// have a place of their own, and others of up to eight bytes are looked up as a number.
class TextosCrudos {
 public:
  TextosCrudos();
  std::uint32_t Numero(std::string_view texto);
  std::string_view Texto(std::uint32_t numero) const noexcept {
    return numero == 0 ? std::string_view{} : std::string_view{textos_[numero - 1]};
  }
  std::size_t Cantidad() const noexcept { return textos_.size(); }

 private:
  struct Ranura {
    std::uint64_t bytes = 0;
    std::uint32_t numero = 0;  // 0: free
    std::uint32_t largo = 0;
  };
  std::uint32_t& LugarDe(std::string_view texto);
  std::uint32_t& LugarDeCorto(std::string_view texto);
  Ranura& Buscar(std::uint64_t bytes, std::uint32_t largo);
  void Crecer();

  std::deque<std::string> textos_;
  std::vector<std::uint32_t> cuentas_;  // by the count itself
  std::vector<Ranura> cortos_;          // a power of two
  std::size_t cuantos_cortos_ = 0;
  std::map<std::string, std::uint32_t, std::less<>> largos_;
  std::pair<const std::string, std::uint32_t>* ultimo_largo_ = nullptr;  // dates come many times in a row
};

enum class ClaseFlujo : std::uint8_t { kDatos, kCola, kEventos };

// The columns of the driver's rows that the builders read, the date and the time first.
std::span<const char* const> CamposDe(ClaseFlujo clase);
inline constexpr std::size_t kFechaCruda = 0;
inline constexpr std::size_t kHoraCruda = 1;
inline constexpr std::size_t kCanalCrudo = 2;  // of data and queue

// A record: its date, though the driver gave that on a row ahead of it, and its other fields, as numbers of texts.
inline constexpr std::size_t kCamposCrudos = 8;
using FilaCruda = std::array<std::uint32_t, kCamposCrudos>;
using FilasDeFlujo = std::deque<FilaCruda>;

// Records of data or queue, all of which have a date and a time, as an origin of the builder of RegistrosDatos.
TablaPtr ArmarRegistros(std::span<const FilaCruda> filas, const TextosCrudos& textos, Tabla* configuracion,
                        const ContextoRegistros& contexto);

// Records of events as the driver would give them all at once: a marker row ahead of each change of date.
TablaPtr ArmarFlujoEventos(const FilasDeFlujo& filas, const TextosCrudos& textos);

// Reads the tables that the driver makes of pages, one after the other: the date of a row may stand in a page before.
class LectorDeFlujo {
 public:
  LectorDeFlujo(ClaseFlujo clase, TextosCrudos& textos) : clase_(clase), textos_(textos) {}

  // The records of a table, in its order. A record without a date has 0 there, one without a time has 0 there; what the
  // table says of dates alone is no record. False: the table lacks a column that records of this kind have.
  bool Leer(const Tabla& tabla, std::vector<FilaCruda>& filas);

  // Another file begins: no date is at hand.
  void OlvidarFecha() noexcept { fecha_ = 0; }

 private:
  enum class Papel { kNinguno, kMarca, kMarcaYRegistro };
  Papel PapelDe(std::uint32_t fecha);
  bool UbicarCampos(const Tabla& tabla);
  std::uint32_t Numero(const Valor& valor);

  ClaseFlujo clase_;
  TextosCrudos& textos_;
  std::uint32_t fecha_ = 0;
  std::array<std::size_t, kCamposCrudos> lugares_{};
  std::uint32_t fecha_mirada_ = 0;  // the last one that was looked at, and what it was
  bool es_fecha_ = false;
};

}  // namespace utr
