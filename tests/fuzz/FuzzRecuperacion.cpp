// Any bytes as a recovery file: the reader must keep its promises about them, whatever they are.
#include <algorithm>
#include <sstream>
#include <string>

#include "fuzz/Comun.h"
#include "retrieved/recovery/LectorRecuperacion.h"
#include "retrieved/recovery/MemoriaFlash.h"

namespace {

using utr::fuzz::Exigir;

void MirarPagina(const utr::LineaRecuperacion& linea) {
  Exigir(linea.con_lugar && linea.pista >= 0 && linea.pista < utr::kPistas, "the track of a page");
  Exigir(linea.pagina >= 0 && linea.pagina < utr::kPaginasPista, "the page of a page");
  Exigir(linea.cuantos < utr::kItemsDePagina, "the bytes of a page");
  const auto bytes = linea.Bytes();
  Exigir(static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), 255)) == linea.borrados, "its erased bytes");
  // What an own reading of the same text gives: as many commas as bytes, and each number before one of them.
  std::istringstream items{std::string(linea.texto)};
  std::string item;
  for (const unsigned byte : bytes) {
    Exigir(static_cast<bool>(std::getline(items, item, ',')) && std::stoul(item) == byte, "a byte of a page");
  }
  Exigir(std::count(linea.texto.begin(), linea.texto.end(), ',') == static_cast<std::ptrdiff_t>(linea.cuantos),
         "the items of a page");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t cuantos) {
  const std::string texto(reinterpret_cast<const char*>(bytes), cuantos);
  std::istringstream fuente(texto);
  utr::LectorRecuperacion lector(fuente);
  std::uint64_t enteras = 0;
  bool con_paginas = false;
  bool con_danadas = false;
  while (const utr::LineaRecuperacion* linea = lector.Siguiente()) {
    const bool cortada = linea->clase == utr::ClaseLinea::kCortada;
    const bool danada = linea->clase == utr::ClaseLinea::kDanada;
    enteras += cortada ? 0 : 1;
    Exigir(danada == (linea->dano != utr::DanoLinea::kNinguno), "damage of a damaged line");
    if (linea->clase == utr::ClaseLinea::kPagina) MirarPagina(*linea);
    con_paginas |= linea->clase == utr::ClaseLinea::kPagina;
    con_danadas |= danada;
    Exigir(linea->numero == enteras + (cortada ? 1 : 0), "the number of a line");
  }
  Exigir(enteras == static_cast<std::uint64_t>(std::count(texto.begin(), texto.end(), '\n')),
         "a line for each line end");
  Exigir(!(con_paginas && lector.EsAjeno()), "a file with a page is a recovery file");
  Exigir(con_danadas == !lector.PrimerDano().empty(), "the first damage");
  return 0;
}
