#include "tables/BytesPersistidos.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/Error.h"
#include "base/Texto.h"

namespace utr {
namespace {

// The encoding that a declaration at the beginning names, in small letters; empty without one.
std::string CodificacionDeclarada(std::string_view v) {
  constexpr std::size_t kLejos = 1024;
  if (v.starts_with("\xEF\xBB\xBF")) return "utf-8";
  const auto inicio = v.find_first_not_of(" \t\r\n");
  if (inicio == v.npos || !v.substr(inicio).starts_with("<?xml")) return {};
  v = v.substr(inicio, kLejos);
  v = v.substr(0, v.find("?>"));
  const auto desde = v.find("encoding");
  const auto comilla = desde == v.npos ? v.npos : v.find_first_of("'\"", desde);
  if (comilla == v.npos) return {};
  v.remove_prefix(comilla + 1);
  return Minusculas(v.substr(0, v.find_first_of("'\"")));
}

// The names under which a file declares the code page 1252, or the page that it holds all of.
bool EsAnsi(std::string_view declarada) {
  constexpr std::string_view kNombres[] = {"windows-1252", "cp1252",     "cp-1252", "iso-8859-1",
                                           "iso8859-1",    "iso_8859-1", "latin1",  "latin-1"};
  return std::find(std::begin(kNombres), std::end(kNombres), declarada) != std::end(kNombres);
}

// Whether a character reference names a character: the number between "&#" and ";".
bool EsCaracter(std::string_view numero) {
  int base = 10;
  if (numero.starts_with('x')) {
    base = 16;
    numero.remove_prefix(1);
  }
  std::uint32_t codigo = 0;
  const auto leido = std::from_chars(numero.data(), numero.data() + numero.size(), codigo, base);
  if (leido.ec == std::errc::result_out_of_range) return false;
  if (leido.ec != std::errc() || leido.ptr != numero.data() + numero.size()) return true;  // no reference at all
  if (codigo < 0x20) return codigo == '\t' || codigo == '\n' || codigo == '\r';
  return codigo <= 0xD7FF || (codigo >= 0xE000 && codigo <= 0xFFFD) || (codigo >= 0x10000 && codigo <= 0x10FFFF);
}

// The text with U+FFFD in place of references that name no character; empty when there are none.
std::string SinReferenciasImposibles(std::string_view v) {
  constexpr std::string_view kCifras = "0123456789abcdefABCDEFx";
  std::string reparado;
  std::size_t copiado = 0;
  for (auto i = v.find("&#"); i != v.npos; i = v.find("&#", i + 2)) {
    const auto fin = v.find_first_not_of(kCifras, i + 2);
    if (fin == v.npos || v[fin] != ';' || EsCaracter(v.substr(i + 2, fin - i - 2))) continue;
    reparado += v.substr(copiado, i - copiado);
    reparado += "\xEF\xBF\xBD";
    copiado = fin + 1;
  }
  if (copiado > 0) reparado += v.substr(copiado);
  return reparado;
}

}  // namespace

void BytesPersistidos::Agregar(std::size_t cuantos) {
  const std::string_view tramo(Lugar(), cuantos);
  con_ceros_ = con_ceros_ || tramo.find('\0') != tramo.npos;
  con_referencias_ = con_referencias_ || tramo.find('&') != tramo.npos;
  largo_ += cuantos;
  if (!utf8_) return;
  validos_ += PrefijoUtf8({datos_.get() + validos_, largo_ - validos_});
  utf8_ = largo_ - validos_ < 4;  // the last character may be waiting for its other bytes
}

void BytesPersistidos::Preparar() {
  Recodificar();
  if (con_ceros_) std::replace(datos_.get(), datos_.get() + largo_, '\0', ' ');  // a zero would end the text
  if (!con_referencias_) return;
  if (const std::string texto = SinReferenciasImposibles(Vista()); !texto.empty()) Reponer(texto);
}

void BytesPersistidos::Recodificar() {
  const std::string_view v = Vista();
  for (const bool alto_primero : {false, true}) {
    const bool con_marca = v.starts_with(alto_primero ? "\xFE\xFF" : "\xFF\xFE");
    const bool sin_marca = v.starts_with(alto_primero ? std::string_view("\0<", 2) : std::string_view("<\0", 2));
    if (con_marca || sin_marca) return Reponer(DesdeUtf16(v.substr(con_marca ? 2 : 0), alto_primero));
  }
  const std::string declarada = CodificacionDeclarada(v);
  if (EsAnsi(declarada)) return Reponer(DesdeCp1252(v));
  if (utf8_ && validos_ == largo_) return;
  Reponer(declarada == "utf-8" ? ReparadoUtf8(v) : ComoUtf8(v));
}

void BytesPersistidos::Reponer(std::string_view texto) {
  datos_ = std::make_unique_for_overwrite<char[]>(texto.size());
  largo_ = texto.copy(datos_.get(), texto.size());
}

BytesPersistidos LeerBytes(const std::filesystem::path& ruta) {
  constexpr std::size_t kTramo = 256 * 1024;
  std::error_code falla;
  const auto tamano = std::filesystem::file_size(ruta, falla);
  if (falla) throw Error(error::kArchivo, "Tabla", "No se puede abrir el archivo " + ruta.string(), falla.value());
  errno = 0;
  std::ifstream entrada(ruta, std::ios::binary);
  if (!entrada) throw Error(error::kArchivo, "Tabla", "No se puede abrir el archivo " + ruta.string(), errno);
  BytesPersistidos bytes(tamano);
  while (bytes.Largo() < tamano) {
    const std::size_t cuantos = std::min<std::size_t>(kTramo, tamano - bytes.Largo());
    if (!entrada.read(bytes.Lugar(), static_cast<std::streamsize>(cuantos))) {
      throw Error(error::kArchivo, "Tabla", "No se puede leer el archivo " + ruta.string(), errno);
    }
    bytes.Agregar(cuantos);
  }
  bytes.Preparar();
  return bytes;
}

}  // namespace utr
