#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "base/Texto.h"
#include "retrieved/recovery/MemoriaFlash.h"
#include "support/ComunicadorFalso.h"

namespace utr::prueba {

// The text of a page of 64 bytes that are all `valor`.
inline const std::string& TextoDePagina(int valor) {
  static std::map<int, std::string> textos;
  std::string& texto = textos[valor];
  if (!texto.empty()) return texto;
  for (int i = 0; i < 64; ++i) texto += std::to_string(valor) + ",";
  return texto += "0,0";
}

// A unit whose flash is told page by page: what isn't told is blank.
class UnidadConFlash : public ComunicadorFalso {
 public:
  std::map<LugarPagina, int> datos;   // the value of all bytes of a page
  std::map<LugarPagina, int> fallas;  // how many times a page can't be read; below 0: never
  std::vector<LugarPagina> pedidas;   // every try
  std::function<void(const LugarPagina&)> al_pedir;

  void Llenar(int pista, int desde, int hasta, int valor) {
    for (int pagina = desde; pagina <= hasta; ++pagina) datos[{pista, pagina}] = valor;
  }

  std::string LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) override {
    const LugarPagina lugar{pista, pagina};
    pedidas.push_back(lugar);
    if (al_pedir) al_pedir(lugar);
    const auto falla = fallas.find(lugar);
    if (falla != fallas.end() && falla->second != 0) {
      --falla->second;
      return {};
    }
    const auto dato = datos.find(lugar);
    return TextoDePagina(dato == datos.end() ? 255 : dato->second);
  }
};

// The bytes of a recovery file in short: words parted by blanks, each one a line. "0/31" and "EOT" are themselves, and
// "7@3,17" is page 17 of track 3 with all bytes 7; "7@3,0-2" are its pages 0 to 2.
inline std::string Volcado(const std::string& en_corto) {
  std::istringstream palabras(en_corto);
  std::string texto;
  for (std::string palabra; palabras >> palabra;) {
    int valor = 0, pista = 0, desde = 0, hasta = 0;
    const int leidos = std::sscanf(palabra.c_str(), "%d@%d,%d-%d", &valor, &pista, &desde, &hasta);
    if (leidos < 3) texto += '"' + palabra + "\"\r\n";
    for (int pagina = desde; leidos >= 3 && pagina <= (leidos == 3 ? desde : hasta); ++pagina) {
      texto += '"' + TextoDePagina(valor) + "#" + std::to_string(pista) + "," + std::to_string(pagina) + "\"\r\n";
    }
  }
  return texto;
}

// The other way round, for messages that can be read: the lines of a file in short.
inline std::string EnCorto(const std::string& texto) {
  std::string corto;
  for (const std::string_view linea : Separar(texto, '\n')) {
    const std::size_t coma = linea.find(',');
    const std::size_t lugar = linea.find('#');
    if (linea.size() < 3) continue;
    corto +=
        std::string(lugar == std::string_view::npos ? linea.substr(1, linea.size() - 3) : linea.substr(1, coma - 1));
    if (lugar != std::string_view::npos) corto += "@" + std::string(linea.substr(lugar + 1, linea.size() - lugar - 3));
    corto += " ";
  }
  return corto;
}

}  // namespace utr::prueba
