#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// A recovery file as its lines: each one with what it is and, where it is damaged, why. Nothing in a file makes the
// reader raise, and no line, however long, makes it hold more than a small buffer.
namespace utr {

inline constexpr int kPistasFlash = 32;
inline constexpr int kPaginasPorPista = 1024;
inline constexpr int kPistasDeDatos = 27;        // tracks 0 to 26: nine stacks of three
inline constexpr int kPrimeraPistaEventos = 30;  // 27 to 29 are the transmission queue

// A page text has one item more than the bytes that are taken from it, so that 66 items give 65.
inline constexpr std::size_t kItemsDePagina = 66;
inline constexpr std::size_t kBytesDeLinea = kItemsDePagina - 1;

enum class ClaseLinea : std::uint8_t {
  kEncabezado,  // first and last track, "27/31"
  kFinDePista,  // "EOT"
  kVacia,
  kCorta,    // any other of 50 characters or less, its quotes counted
  kPagina,   // track, page and bytes are told
  kDanada,   // more than 50 characters, and no page
  kCortada,  // what stands behind the last line end: a file that ends in the middle of a line
};

enum class DanoLinea : std::uint8_t {
  kNinguno,
  kLarga,         // far longer than any page: only its length is known
  kComillas,      // a quote is missing at one of its ends, or stands inside
  kSinPosicion,   // no "#"
  kPosiciones,    // more than one "#"
  kDemasiados,    // more than 66 items
  kSinNumero,     // an item that is no number
  kMayor,         // an item above 255
  kPistaErronea,  // not a whole number from 0 to 31
  kPaginaErronea  // not a whole number from 0 to 1023
};

// The damage in Spanish words that follow a line number: "no tiene posición".
std::string_view EnPalabras(DanoLinea dano);

struct LineaRecuperacion {
  ClaseLinea clase = ClaseLinea::kVacia;
  DanoLinea dano = DanoLinea::kNinguno;
  std::uint64_t numero = 0;  // from 1
  std::uint64_t largo = 0;   // characters, the quotes among them, the line end not

  // Of a page, and of a damaged line that tells its place all the same.
  bool con_lugar = false;
  std::int16_t pista = 0;
  std::int16_t pagina = 0;

  // Of a page alone.
  std::size_t cuantos = 0;                          // bytes, up to 65
  std::size_t borrados = 0;                         // how many of them are 255
  std::array<std::uint8_t, kBytesDeLinea> bytes{};  // those beyond `cuantos` mean nothing
  std::string_view texto;  // the page text as it stands, last item included; valid until the next line

  std::span<const std::uint8_t> Bytes() const { return {bytes.data(), cuantos}; }

  // 60 bytes or more are erased; up to five others may hold something all the same.
  bool EsBlanca() const { return borrados >= 60; }
};

// Reads one file from its beginning to its end. Lines end with CR LF or LF; a mark of UTF-8 at the beginning of the
// file is passed over. The quotes belong to the ends of a line; blanks around line, items and position don't count.
class LectorRecuperacion {
 public:
  // Opens the file; raises kArchivo when that can't be done.
  explicit LectorRecuperacion(const std::filesystem::path& ruta);

  // Reads a stream that outlives the reader.
  explicit LectorRecuperacion(std::istream& fuente);

  LectorRecuperacion(const LectorRecuperacion&) = delete;
  LectorRecuperacion& operator=(const LectorRecuperacion&) = delete;

  // The next line, valid until the next call; null behind the last one. Raises kArchivo when the disk refuses it.
  const LineaRecuperacion* Siguiente();

  // Of the lines read so far: there was none at all, and not even a piece of one.
  bool Vacio() const noexcept { return linea_.numero == 0; }

  // Of the lines read so far: some are longer than 50 characters, but none of them is a page. A piece of a line counts
  // as one only where nothing else says that this is a recovery file.
  bool EsAjeno() const noexcept;

  // The first damaged line, in words: "línea 3: no tiene posición". Empty without one.
  std::string PrimerDano() const;

 private:
  std::optional<std::string_view> Cortar();
  bool Cargar();
  void Clasificar(std::string_view texto);
  void Contar();

  std::filesystem::path ruta_;
  std::ifstream archivo_;
  std::istream& fuente_;
  std::vector<char> bufer_;
  std::size_t desde_ = 0;
  std::size_t hasta_ = 0;
  bool fin_ = false;
  bool entera_ = false;         // the line at hand has its line end
  std::uint64_t omitidos_ = 0;  // characters of it that were dropped, because it is far too long
  LineaRecuperacion linea_;

  bool con_marcas_ = false;  // a header or an "EOT" was there
  bool con_paginas_ = false;
  bool con_danadas_ = false;
  bool con_trozo_ = false;  // a piece of more than 50 characters
  std::uint64_t primera_danada_ = 0;
  DanoLinea primer_dano_ = DanoLinea::kNinguno;
};

// How many lines a file has, what stands behind the last line end not counted, and how many bytes. Raises kArchivo.
struct TamanoRecuperacion {
  std::uint64_t lineas = 0;
  std::uint64_t bytes = 0;
};
TamanoRecuperacion MedirRecuperacion(const std::filesystem::path& ruta);

}  // namespace utr
