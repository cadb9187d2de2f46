#include "tables/EscritorFilas.h"

#include <charconv>
#include <cstring>
#include <limits>

#include "base/Texto.h"

namespace utr {
namespace {

constexpr bool EsEspecial(unsigned char b) {
  return b < 0x20 || b == '&' || b == '<' || b == '>' || b == '\'' || b == '"';
}

constexpr std::uint64_t kUnos = 0x0101010101010101ULL;
constexpr std::uint64_t kAltos = 0x8080808080808080ULL;

// Not 0 when one of the eight bytes is that one.
constexpr std::uint64_t Tiene(std::uint64_t ocho, unsigned char b) {
  const std::uint64_t x = ocho ^ (kUnos * b);
  return (x - kUnos) & ~x & kAltos;
}

// Not 0 when one of the eight bytes is special or no ASCII. One bit tells '&' from the apostrophe, and '<' from '>'.
constexpr std::uint64_t Dudosos(std::uint64_t ocho) {
  const std::uint64_t de_control = (ocho - kUnos * 0x20) & ~ocho & kAltos;
  return (ocho & kAltos) | de_control | Tiene(ocho, '"') | Tiene(ocho | kUnos, '\'') | Tiene(ocho | kUnos * 2, '>');
}

// Whether texts go to the file as they stand.
bool EsLlano(std::string_view texto) {
  std::uint64_t ocho = 0;
  std::uint64_t dudosos = 0;
  const std::size_t enteros = texto.size() / 8 * 8;
  for (std::size_t i = 0; i < enteros; i += 8) {
    std::memcpy(&ocho, texto.data() + i, 8);
    dudosos |= Dudosos(ocho);
  }
  ocho = kUnos * '0';
  std::memcpy(&ocho, texto.data() + enteros, texto.size() - enteros);
  return (dudosos | Dudosos(ocho)) == 0;
}

constexpr unsigned kRanuraMenor = 3;

// The texts of a column as the file has them; none where they were longer than their places can tell.
void HacerTextos(ColumnaSalida& c) {
  const Diccionario& textos = c.columna->Textos();
  c.finales.reserve(textos.Cantidad() + 1);
  c.finales.push_back(0);
  for (std::uint32_t n = 1; n <= textos.Cantidad(); ++n) {
    const std::string_view texto = textos.Texto(n);
    if (c.entera) c.hechos.append(c.comienzo, 0, c.largo_comienzo);
    c.llana || EsLlano(texto) ? c.hechos.append(texto) : c.hechos.append(Escapar(texto));
    c.hechos.push_back('\'');
    if (c.hechos.size() > std::numeric_limits<std::uint32_t>::max()) {
      c.finales.clear();
      c.hechos.clear();
      return;
    }
    c.finales.push_back(static_cast<std::uint32_t>(c.hechos.size()));
  }
  c.hechos.append(Renglones::kHolgura, '\0');
}

// The places of one size that take so many bytes each, and their number behind them; 0 where these are too many.
unsigned RanuraPara(std::size_t bytes) {
  constexpr unsigned kMayor = 6;
  unsigned ranura = kRanuraMenor;
  while (ranura <= kMayor && bytes >= std::size_t{1} << ranura) ++ranura;
  return ranura <= kMayor ? ranura : 0;
}

// Plain values straight to their places: a column of measurements has them by the ten thousand.
void HacerEnRanuras(ColumnaSalida& c, unsigned ranura) {
  constexpr std::size_t kDeUnaVez = Diccionario::kHolgura;
  const Diccionario& textos = c.columna->Textos();
  const std::size_t paso = std::size_t{1} << ranura;
  c.hechos.resize((textos.Cantidad() + 1) * paso + Renglones::kHolgura);
  c.ranura = ranura;
  for (std::uint32_t n = 1; n <= textos.Cantidad(); ++n) {
    const std::string_view texto = textos.Texto(n);
    char* const suya = c.hechos.data() + n * paso;
    // What follows a short text is overwritten by the next one's.
    std::memcpy(suya, texto.data(), kDeUnaVez);
    if (texto.size() > kDeUnaVez) std::memcpy(suya, texto.data(), texto.size());
    suya[texto.size()] = '\'';
    suya[paso - 1] = static_cast<char>(texto.size() + 1);
  }
}

// Gives the texts made ready places of one size, so that each is found in one step; none where they are too long.
void Acomodar(ColumnaSalida& c) {
  const unsigned ranura = RanuraPara(c.mayor);
  if (ranura == 0) return;
  const std::size_t paso = std::size_t{1} << ranura;
  std::string ranuras(c.finales.size() * paso + Renglones::kHolgura, '\0');
  for (std::uint32_t n = 1; n < c.finales.size(); ++n) {
    const std::string_view hecho = c.Hecho(n);
    std::memcpy(ranuras.data() + n * paso, hecho.data(), hecho.size());
    ranuras[(n + 1) * paso - 1] = static_cast<char>(hecho.size());
  }
  c.hechos = std::move(ranuras);
  c.ranura = ranura;
  std::vector<std::uint32_t>().swap(c.finales);
}

// Makes a text column ready, where enough rows use each of its texts, and finds out whether these are plain.
void PrepararTextos(ColumnaSalida& c) {
  constexpr std::size_t kRepeticiones = 4;
  constexpr std::size_t kPocos = 2048;
  const Diccionario& textos = c.columna->Textos();
  if (!c.columna->Rala()) c.lugares = c.columna->IndicesDensos();
  c.llana = true;
  textos.CadaTramo([&](std::string_view tramo) { c.llana = c.llana && EsLlano(tramo); });
  const bool se_repiten = textos.Cantidad() * kRepeticiones <= c.columna->Lugares();
  c.entera = se_repiten && textos.Cantidad() <= kPocos;
  if (se_repiten && c.llana && !c.entera) {
    for (std::uint32_t n = 1; n <= textos.Cantidad(); ++n) c.mayor = std::max(c.mayor, textos.Texto(n).size() + 1);
    if (const unsigned ranura = RanuraPara(c.mayor); ranura != 0) return HacerEnRanuras(c, ranura);
  }
  if (se_repiten) HacerTextos(c);
  c.entera = c.entera && c.EstaHecha();
  if (!c.llana && !c.EstaHecha()) return;
  for (std::uint32_t n = 1; n <= textos.Cantidad(); ++n) c.mayor = std::max(c.mayor, c.Hecho(n).size());
  if (c.EstaHecha()) Acomodar(c);
}

std::string TextoReal(double numero, int cifras) {
  char buf[40];
  const auto r = std::to_chars(buf, buf + sizeof buf, numero, std::chars_format::general, cifras);
  std::string texto(buf, r.ptr);
  for (char& c : texto) {
    if (c == 'e') c = 'E';
  }
  return texto;
}

// One of the shortest places as a whole, and no byte beyond it: the next place may lie in memory that isn't near.
inline void PonerRanura(Renglones::Punta& punta, const char* ranura) {
  constexpr std::size_t kBytes = std::size_t{1} << kRanuraMenor;
  std::memcpy(punta.lugar, ranura, kBytes);
  punta.lugar += static_cast<unsigned char>(ranura[kBytes - 1]);
}

// An attribute of a column whose texts are made ready or plain, in room that there is already.
inline void Agregar(const Renglones& r, Renglones::Punta& punta, const ColumnaSalida& c, std::uint32_t numero) {
  r.Cortar(punta, 1);
  if (!c.entera) punta.Poner({c.comienzo.data(), c.largo_comienzo});
  if (c.ranura == kRanuraMenor) return PonerRanura(punta, c.hechos.data() + (std::size_t{numero} << kRanuraMenor));
  punta.Poner(c.Hecho(numero));
  if (!c.EstaHecha()) punta.Poner('\'');
}

// The room that Agregar takes at most.
std::size_t Sitio(const ColumnaSalida& c) {
  return Renglones::kBytesAtributo + c.largo_comienzo + c.mayor;
}

void EscribirTexto(Renglones& r, const ColumnaSalida& c, std::uint32_t numero) {
  if (c.llana || c.EstaHecha()) {
    Renglones::Punta punta = r.Tomar(Renglones::kBytesAtributo + c.largo_comienzo + c.Hecho(numero).size());
    Agregar(r, punta, c, numero);
    return r.Dejar(punta);
  }
  const auto texto = c.columna->Textos().Texto(numero);
  EsLlano(texto) ? r.Atributo(c.atributo, texto, 1) : r.Atributo(c.atributo, Escapar(texto), 1);
}

// The value of a column of numbers or truth values, or of a thin one.
void EscribirOtro(Renglones& r, const ColumnaSalida& c, std::size_t fila) {
  if (c.columna->EsNulo(fila)) return;
  if (c.columna->DeClase() == Clase::kTexto) return EscribirTexto(r, c, c.columna->Indice(fila));
  if (c.columna->DeClase() == Clase::kDoble) {
    const int cifras = c.columna->Tipo() == TipoCampo::kSimple ? 8 : 17;
    return r.Atributo(c.atributo, TextoReal(c.columna->Numero(fila), cifras), 1);
  }
  r.Atributo(c.atributo, TextoDe(c.columna->Leer(fila)), 1);
}

std::vector<ColumnaSalida> PrepararColumnas(const DatosTabla& datos, const std::vector<std::string>& nombres) {
  std::vector<ColumnaSalida> columnas;
  columnas.reserve(nombres.size());
  for (std::size_t i = 0; i < nombres.size(); ++i) columnas.emplace_back(datos.columnas[i], nombres[i]);
  return columnas;
}

}  // namespace

std::string Escapar(std::string_view original) {
  const std::string convertido = EsUtf8(original) ? std::string(original) : ComoUtf8(original);
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string s;
  for (const char c : convertido) {
    const auto b = static_cast<unsigned char>(c);
    if (b < 0x20 && b != '\t' && b != '\n' && b != '\r') continue;
    if (!EsEspecial(b)) {
      s.push_back(c);
      continue;
    }
    s += "&#x";
    if (b >= 0x10) s.push_back(kHex[b >> 4]);
    s.push_back(kHex[b & 15]);
    s.push_back(';');
  }
  return s;
}

ColumnaSalida::ColumnaSalida(const Columna& de_columna, const std::string& nombre)
    : columna(&de_columna), nombre_xml(nombre), atributo(nombre + "="), comienzo(" " + atributo + "'") {
  largo_comienzo = comienzo.size();
  comienzo.append(Renglones::kHolgura, '\0');
  if (columna->DeClase() == Clase::kTexto) PrepararTextos(*this);
}

// --- ColumnasLlenas --------------------------------------------------------------------------------------------------

ColumnasLlenas::ColumnasLlenas(const DatosTabla& datos) : datos_(datos) {
  for (std::uint32_t i = 0; i < datos.columnas.size(); ++i) {
    const Columna& columna = datos.columnas[i];
    if (!columna.Rala()) densas_.push_back(i);
    for (std::size_t l = 0; columna.Rala() && l < columna.Lugares(); ++l) ralas_.emplace_back(columna.FilaDe(l), i);
  }
  std::sort(ralas_.begin(), ralas_.end());
}

void ColumnasLlenas::QuitarAcabadas(std::size_t fila) {
  std::erase_if(densas_, [&](std::uint32_t i) { return datos_.columnas[i].Lugares() <= fila; });
  vigentes_hasta_ = datos_.filas;
  for (const std::uint32_t i : densas_) vigentes_hasta_ = std::min(vigentes_hasta_, datos_.columnas[i].Lugares());
}

// --- EscritorFilas ---------------------------------------------------------------------------------------------------

EscritorFilas::EscritorFilas(Renglones& renglones, const DatosTabla& datos, const std::vector<std::string>& nombres)
    : r_(renglones), datos_(datos), columnas_(PrepararColumnas(datos, nombres)), llenas_(datos) {
  constexpr std::size_t kMuchos = 4096;
  constexpr std::size_t kFilaCorta = std::size_t{32} * 1024;
  for (const auto& c : columnas_) {
    const std::size_t textos = c.columna->Textos().Cantidad();
    const bool en_orden = textos * 2 > c.columna->Lugares();  // most rows brought a text of their own
    if (textos > kMuchos && !en_orden) dispersas_.push_back(&c);
    solo_textos_ = solo_textos_ && c.columna->DeClase() == Clase::kTexto && (c.llana || c.EstaHecha());
    mayor_fila_ += Sitio(c);
  }
  solo_textos_ = solo_textos_ && mayor_fila_ <= kFilaCorta;
}

void EscritorFilas::Fila(std::size_t sangria, std::size_t fila) {
  Valores(sangria, fila);
  r_.Crudo("/>\r\n");
}

void EscritorFilas::Nueva(std::size_t fila, const FilaPendiente* pendiente) {
  const bool completa = Valores(2, fila);
  if (completa) return r_.Crudo("/>\r\n");
  if (pendiente != nullptr) {
    for (const std::uint32_t i : pendiente->puestas) AnotarNulo(fila, i);
  } else {
    for (std::size_t i = 0; i < columnas_.size(); ++i) AnotarNulo(fila, i);
  }
  CerrarConNulos();
}

void EscritorFilas::Cambio(std::size_t fila, const FilaPendiente& pendiente) {
  r_.Elemento(2, "z:row");
  for (const std::uint32_t i : pendiente.puestas) {
    Valor(fila, i);
    AnotarNulo(fila, i);
  }
  CerrarConNulos();
}

bool EscritorFilas::Valores(std::size_t sangria, std::size_t fila) {
  Anticipar(fila);
  const auto* densas = solo_textos_ && datos_.envueltos.empty() ? llenas_.SoloDensas(fila) : nullptr;
  if (densas != nullptr) return Textos(sangria, fila, *densas);
  r_.Elemento(sangria, "z:row");
  llenas_.ParaCada(fila, [&](std::size_t i) { Valor(fila, i); });
  return false;
}

// A table of records is millions of short texts: the place where they go doesn't leave its registers here.
bool EscritorFilas::Textos(std::size_t sangria, std::size_t fila, const std::vector<std::uint32_t>& columnas) {
  Renglones::Punta punta = r_.Abrir(sangria, mayor_fila_);
  std::size_t nulos = columnas_.size() - columnas.size();
  for (const std::uint32_t i : columnas) {
    const ColumnaSalida& c = columnas_[i];
    const std::uint32_t numero = c.lugares[fila];
    if (numero == 0) {
      ++nulos;
    } else {
      Agregar(r_, punta, c, numero);
    }
  }
  r_.Dejar(punta);
  return nulos == 0;
}

// What the rows to come need is called for.
void EscritorFilas::Anticipar(std::size_t fila) const {
  constexpr std::size_t kCerca = 8;
  for (const ColumnaSalida* c : dispersas_) {
    if (fila + 2 * kCerca >= c->lugares.size()) continue;
    const std::uint32_t lejano = c->lugares[fila + 2 * kCerca];
    const std::uint32_t cercano = c->lugares[fila + kCerca];
    if (c->ranura != 0) {
      __builtin_prefetch(c->hechos.data() + (std::size_t{cercano} << c->ranura));
      continue;
    }
    if (!c->finales.empty()) {
      __builtin_prefetch(c->finales.data() + lejano);
      __builtin_prefetch(c->hechos.data() + c->finales[cercano]);
      continue;
    }
    if (lejano != 0) c->columna->Textos().AnticiparEntrada(lejano);
    if (cercano != 0) c->columna->Textos().AnticiparTexto(cercano);
  }
}

inline void EscritorFilas::Valor(std::size_t fila, std::size_t i) {
  if (!datos_.envueltos.empty() && EscribirEnvuelto(fila, i)) return;
  const ColumnaSalida& c = columnas_[i];
  if (fila >= c.lugares.size()) return EscribirOtro(r_, c, fila);
  if (c.lugares[fila] != 0) EscribirTexto(r_, c, c.lugares[fila]);
}

bool EscritorFilas::EscribirEnvuelto(std::size_t fila, std::size_t i) {
  const auto e = datos_.envueltos.find({static_cast<std::uint32_t>(fila), static_cast<std::uint32_t>(i)});
  if (e == datos_.envueltos.end() || e->second.numero != columnas_[i].columna->Indice(fila)) return false;
  r_.AtributoEnvuelto(columnas_[i].atributo, e->second.crudo, 1);
  return true;
}

void EscritorFilas::AnotarNulo(std::size_t fila, std::size_t i) {
  const ColumnaSalida& c = columnas_[i];
  if (fila < c.lugares.size() ? c.lugares[fila] != 0 : !c.columna->EsNulo(fila)) return;
  if (!nulos_.empty()) nulos_ += ' ';
  nulos_ += c.nombre_xml;
}

void EscritorFilas::CerrarConNulos() {
  if (!nulos_.empty()) r_.Atributo("rs:forcenull=", nulos_, 1);
  nulos_.clear();
  r_.Cerrar("/>");
}

}  // namespace utr
