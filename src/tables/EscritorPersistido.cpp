#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <ostream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/Texto.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

constexpr std::size_t kAnchoLinea = 108;  // a line with that many bytes takes no further attribute
constexpr std::size_t kTramo = 1U << 20;

constexpr bool EsEspecial(unsigned char b) {
  return b < 0x20 || b == '&' || b == '<' || b == '>' || b == '\'' || b == '"';
}

// Bytes that don't go to the file as they stand, or only where they are UTF-8.
constexpr auto kDudosos = [] {
  std::array<bool, 256> dudosos{};
  for (unsigned b = 0; b < 256; ++b) dudosos[b] = b >= 0x80 || EsEspecial(static_cast<unsigned char>(b));
  return dudosos;
}();

bool EsLlano(std::string_view texto) {
  bool dudoso = false;
  for (const char c : texto) dudoso = dudoso || kDudosos[static_cast<unsigned char>(c)];
  return !dudoso;
}

// The text as an attribute's value. Characters of control other than tab and line ends have no place in XML and are
// left out; bytes that are no UTF-8 are read as ComoUtf8 does.
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

bool EsNombreSimple(std::string_view nombre) {
  if (nombre.empty() || (nombre.front() >= '0' && nombre.front() <= '9')) return false;
  for (const char c : nombre) {
    if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_')) return false;
  }
  return true;
}

// Elements and attributes in the layout of the recordset service, through a buffer that is written when it is full.
class Renglones {
 public:
  explicit Renglones(std::ostream& salida) : salida_(salida), buffer_(kTramo) {}

  void Crudo(std::string_view texto) {
    if (texto.size() > buffer_.size() - usados_) Volcar();
    if (texto.size() > buffer_.size()) buffer_.resize(texto.size());
    texto.copy(buffer_.data() + usados_, texto.size());
    usados_ += texto.size();
    en_linea_ += texto.size();
  }

  void Elemento(std::size_t sangria, std::string_view nombre) {
    sangria_ = sangria;
    en_linea_ = 0;
    Tabuladores(sangria);
    Crudo("<");
    Crudo(nombre);
  }

  // `nombre` with its "=": the value is written as it is.
  void Atributo(std::string_view nombre, std::string_view valor, std::size_t extra) {
    Separar(extra);
    Crudo(nombre);
    Crudo("'");
    Crudo(valor);
    Crudo("'");
  }

  // A whole attribute with the blank ahead of it. kHolgura bytes can be read from its beginning on.
  void Hecho(const char* atributo, std::size_t largo, std::size_t extra) {
    Cortar(extra);
    CrudoConHolgura(atributo, largo);
  }

  // The same in two parts, of which the second is a value without its closing quote.
  void Hecho(const char* comienzo, std::size_t largo, std::string_view valor, std::size_t extra) {
    Cortar(extra);
    CrudoConHolgura(comienzo, largo);
    Crudo(valor);
    Crudo("'");
  }

  // How far behind its end a text may be read, so that short ones are copied without a look at their length.
  static constexpr std::size_t kHolgura = 64;

  // A value that brings line ends of its own: what follows is counted from the last one on.
  void AtributoEnvuelto(std::string_view nombre, std::string_view valor, std::size_t extra) {
    Atributo(nombre, valor, extra);
    const auto salto = valor.find_last_of('\n');
    const auto resto = salto == valor.npos ? valor.npos : valor.find_first_not_of("\t\n", salto);
    if (resto != valor.npos) en_linea_ = valor.size() - resto + 1;
  }

  void Cerrar(std::string_view fin) {
    Crudo(fin);
    Crudo("\r\n");
  }

  void Volcar() {
    salida_.write(buffer_.data(), static_cast<std::streamsize>(usados_));
    usados_ = 0;
  }

 private:
  void Tabuladores(std::size_t cuantos) {
    while (cuantos-- > 0) Crudo("\t");
  }

  void Separar(std::size_t extra) {
    const bool corta = Cortar(extra);
    Crudo(" ");
    if (corta) en_linea_ = 0;
  }

  // Ends a line that is full. The blank that opens the next one doesn't count there.
  bool Cortar(std::size_t extra) {
    if (en_linea_ < kAnchoLinea) return false;
    Crudo("\r\n");
    Tabuladores(sangria_ + extra);
    en_linea_ = static_cast<std::size_t>(-1);
    return true;
  }

  void CrudoConHolgura(const char* texto, std::size_t largo) {
    if (largo > kHolgura || buffer_.size() - usados_ < kHolgura) return Crudo({texto, largo});
    std::memcpy(buffer_.data() + usados_, texto, kHolgura);
    usados_ += largo;
    en_linea_ += largo;
  }

  std::ostream& salida_;
  std::vector<char> buffer_;
  std::size_t usados_ = 0;
  std::size_t sangria_ = 0;
  std::size_t en_linea_ = 0;  // bytes on the present line, as the service counts them
};

// What a column's values look like in the file. The attributes of texts that repeat are put together once.
struct ColumnaSalida {
  const Columna* columna = nullptr;
  TipoCampo tipo = TipoCampo::kVarChar;
  std::string nombre_xml;
  std::string atributo;  // XML name and "="
  // How an attribute begins, up to its value; of a column whose texts repeat, all attributes follow, and kHolgura
  // bytes.
  std::string hechos;
  std::size_t comienzo = 0;
  std::vector<std::size_t> finales;  // where the attribute of each text ends, by its number; 0 has none
};

std::string ComoValor(std::string_view texto) {
  return EsLlano(texto) ? std::string(texto) : Escapar(texto);
}

void PrepararTextos(ColumnaSalida& c) {
  constexpr std::size_t kRepeticiones = 4;
  const Diccionario& textos = c.columna->Textos();
  const std::string comienzo = " " + c.atributo + "'";
  c.hechos = comienzo;
  c.comienzo = comienzo.size();
  if (textos.Cantidad() * kRepeticiones <= c.columna->Lugares()) {
    c.finales.push_back(c.hechos.size());
    for (std::uint32_t n = 1; n <= textos.Cantidad(); ++n) {
      c.hechos += comienzo;
      c.hechos += ComoValor(textos.Texto(n));
      c.hechos += '\'';
      c.finales.push_back(c.hechos.size());
    }
  }
  c.hechos.append(Renglones::kHolgura, '\0');
}

using NombresXml = std::unordered_set<std::string, DispersionSinCaso, IgualdadSinCaso>;

// The XML name of a column whose own can't be one, where no other column bears it.
std::string NombreSupletorio(const DatosTabla& datos, const NombresXml& tomados, std::size_t i) {
  std::string nombre = "c" + std::to_string(i);
  while (datos.Buscar(nombre) >= 0 || tomados.contains(nombre)) nombre += '_';
  return nombre;
}

// The names that the columns have in the file: those with which they came, else their own, where that can be.
std::vector<std::string> RepartirNombres(const DatosTabla& datos) {
  std::vector<std::string> nombres(datos.campos.size());
  NombresXml tomados;
  for (const bool de_archivo : {true, false}) {
    for (std::size_t i = 0; i < nombres.size(); ++i) {
      const std::string& nombre = de_archivo ? datos.detalles[i].nombre_xml : datos.campos[i].nombre;
      const bool sirve = de_archivo ? EsNombreXml(nombre) : EsNombreSimple(nombre);
      if (nombres[i].empty() && sirve && tomados.insert(nombre).second) nombres[i] = nombre;
    }
  }
  for (std::size_t i = 0; i < nombres.size(); ++i) {
    if (!nombres[i].empty()) continue;
    nombres[i] = NombreSupletorio(datos, tomados, i);
    tomados.insert(nombres[i]);
  }
  return nombres;
}

std::vector<ColumnaSalida> PrepararColumnas(const DatosTabla& datos, const std::vector<std::string>& nombres) {
  std::vector<ColumnaSalida> columnas(datos.campos.size());
  for (std::size_t i = 0; i < columnas.size(); ++i) {
    auto& c = columnas[i];
    c.columna = &datos.columnas[i];
    c.tipo = datos.campos[i].tipo;
    c.nombre_xml = nombres[i];
    c.atributo = c.nombre_xml + "=";
    if (c.columna->DeClase() == Clase::kTexto) PrepararTextos(c);
  }
  return columnas;
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

void EscribirTexto(Renglones& r, const ColumnaSalida& c, std::uint32_t numero) {
  if (!c.finales.empty()) {
    const std::size_t desde = c.finales[numero - 1];
    return r.Hecho(c.hechos.data() + desde, c.finales[numero] - desde, 1);
  }
  const auto texto = c.columna->Textos().Texto(numero);
  if (EsLlano(texto)) return r.Hecho(c.hechos.data(), c.comienzo, texto, 1);
  r.Hecho(c.hechos.data(), c.comienzo, Escapar(texto), 1);
}

void EscribirValor(Renglones& r, const ColumnaSalida& c, std::size_t fila) {
  if (c.columna->DeClase() == Clase::kTexto) {
    const std::uint32_t numero = c.columna->Indice(fila);
    if (numero != 0) EscribirTexto(r, c, numero);
  } else if (c.columna->EsNulo(fila)) {
    return;
  } else if (c.columna->DeClase() == Clase::kDoble) {
    r.Atributo(c.atributo, TextoReal(c.columna->Numero(fila), c.tipo == TipoCampo::kSimple ? 8 : 17), 1);
  } else {
    r.Atributo(c.atributo, TextoDe(c.columna->Leer(fila)), 1);
  }
}

// Which columns may have a value in a row, without a look at all columns for each row: those that are full enough to be
// looked at, and of the thin ones those that do.
class ColumnasLlenas {
 public:
  explicit ColumnasLlenas(const DatosTabla& datos) : datos_(datos) {
    for (std::uint32_t i = 0; i < datos.columnas.size(); ++i) {
      const Columna& columna = datos.columnas[i];
      if (!columna.Rala()) densas_.push_back(i);
      for (std::size_t l = 0; columna.Rala() && l < columna.Lugares(); ++l) ralas_.emplace_back(columna.FilaDe(l), i);
    }
    std::sort(ralas_.begin(), ralas_.end());
  }

  // Calls `hacer` with each of them in ascending order. The rows have to be asked in theirs.
  template <typename Hacer>
  void ParaCada(std::size_t fila, const Hacer& hacer) {
    if (fila >= vigentes_hasta_) QuitarAcabadas(fila);
    while (siguiente_ < ralas_.size() && ralas_[siguiente_].first < fila) ++siguiente_;
    for (const std::uint32_t i : densas_) {
      HacerRalas(fila, i, hacer);
      hacer(i);
    }
    HacerRalas(fila, datos_.columnas.size(), hacer);
  }

 private:
  template <typename Hacer>
  void HacerRalas(std::size_t fila, std::size_t antes_de, const Hacer& hacer) {
    while (siguiente_ < ralas_.size() && ralas_[siguiente_].first == fila && ralas_[siguiente_].second < antes_de) {
      hacer(ralas_[siguiente_++].second);
    }
  }

  // Columns whose last value lies ahead of the row aren't looked at any more.
  void QuitarAcabadas(std::size_t fila) {
    std::erase_if(densas_, [&](std::uint32_t i) { return datos_.columnas[i].Lugares() <= fila; });
    vigentes_hasta_ = datos_.filas;
    for (const std::uint32_t i : densas_) vigentes_hasta_ = std::min(vigentes_hasta_, datos_.columnas[i].Lugares());
  }

  const DatosTabla& datos_;
  std::vector<std::uint32_t> densas_;
  std::vector<std::pair<std::size_t, std::uint32_t>> ralas_;  // row and column of each value
  std::size_t siguiente_ = 0;
  std::size_t vigentes_hasta_ = 0;
};

// The rows of one table, whose columns are those of the schema.
class EscritorFilas {
 public:
  EscritorFilas(Renglones& renglones, const DatosTabla& datos, const std::vector<std::string>& nombres)
      : r_(renglones), datos_(datos), columnas_(PrepararColumnas(datos, nombres)), llenas_(datos) {
    constexpr std::size_t kMuchos = 4096;
    for (const auto& c : columnas_) {
      if (c.finales.empty() && c.columna->Textos().Cantidad() > kMuchos) dispersas_.push_back(c.columna);
    }
  }

  // All values of a row. Rows come in ascending order.
  void Fila(std::size_t sangria, std::size_t fila) {
    Anticipar(fila);
    r_.Elemento(sangria, "z:row");
    llenas_.ParaCada(fila, [&](std::size_t i) { Valor(fila, i); });
    r_.Cerrar("/>");
  }

  // A row that was added, with the names of the columns that were set to null: without account of it, all that are.
  void Nueva(std::size_t fila, const FilaPendiente* pendiente) {
    Anticipar(fila);
    r_.Elemento(2, "z:row");
    llenas_.ParaCada(fila, [&](std::size_t i) { Valor(fila, i); });
    if (pendiente != nullptr) {
      for (const std::uint32_t i : pendiente->puestas) AnotarNulo(fila, i);
    } else {
      for (std::size_t i = 0; i < columnas_.size(); ++i) AnotarNulo(fila, i);
    }
    CerrarConNulos();
  }

  // What was set in a row that was changed.
  void Cambio(std::size_t fila, const FilaPendiente& pendiente) {
    r_.Elemento(2, "z:row");
    for (const std::uint32_t i : pendiente.puestas) {
      Valor(fila, i);
      AnotarNulo(fila, i);
    }
    CerrarConNulos();
  }

 private:
  // The texts of columns of which few texts repeat lie all over the memory: those of the rows to come are called for.
  void Anticipar(std::size_t fila) const {
    constexpr std::size_t kCerca = 8;
    for (const Columna* columna : dispersas_) {
      if (const auto n = columna->Indice(fila + 2 * kCerca); n != 0) columna->Textos().AnticiparEntrada(n);
      if (const auto n = columna->Indice(fila + kCerca); n != 0) columna->Textos().AnticiparTexto(n);
    }
  }

  void Valor(std::size_t fila, std::size_t i) {
    if (!datos_.envueltos.empty() && EscribirEnvuelto(fila, i)) return;
    EscribirValor(r_, columnas_[i], fila);
  }

  bool EscribirEnvuelto(std::size_t fila, std::size_t i) {
    const auto e = datos_.envueltos.find({static_cast<std::uint32_t>(fila), static_cast<std::uint32_t>(i)});
    if (e == datos_.envueltos.end() || e->second.numero != columnas_[i].columna->Indice(fila)) return false;
    r_.AtributoEnvuelto(columnas_[i].atributo, e->second.crudo, 1);
    return true;
  }

  void AnotarNulo(std::size_t fila, std::size_t i) {
    if (!columnas_[i].columna->EsNulo(fila)) return;
    if (!nulos_.empty()) nulos_ += ' ';
    nulos_ += columnas_[i].nombre_xml;
  }

  void CerrarConNulos() {
    if (!nulos_.empty()) r_.Atributo("rs:forcenull=", nulos_, 1);
    nulos_.clear();
    r_.Cerrar("/>");
  }

  Renglones& r_;
  const DatosTabla& datos_;
  std::vector<ColumnaSalida> columnas_;
  ColumnasLlenas llenas_;
  std::vector<const Columna*> dispersas_;
  std::string nulos_;
};

void EscribirTipo(Renglones& r, const Campo& campo, const Columna& columna) {
  const TipoPersistido& t = DescripcionDeTipo(campo.tipo);
  r.Elemento(3, "s:datatype");
  r.Atributo("dt:type=", t.dt, 0);
  if (!t.dbtype.empty()) r.Atributo("rs:dbtype=", t.dbtype, 0);
  std::uint32_t largo = t.largo != 0 ? t.largo : campo.tamano;
  if (t.largo == 0 && largo != 0 && t.dt == "string") {
    // A value may be longer than its field was declared; the file declares what it holds.
    for (std::uint32_t n = 1; n <= columna.Textos().Cantidad(); ++n) {
      const auto texto = columna.Textos().Texto(n);
      if (texto.size() > largo) largo = std::max(largo, static_cast<std::uint32_t>(Largo(texto)));
    }
  }
  // A text field without a size is a memo; only a variant declares no length at all.
  const bool memo = t.dt == "string" && largo == 0 && campo.tipo != TipoCampo::kVariante;
  if (memo) largo = kLargoMemo;
  if (largo != 0) r.Atributo("dt:maxLength=", std::to_string(largo), 0);
  if (t.con_escala && campo.escala != kSinDeclarar) r.Atributo("rs:scale=", std::to_string(campo.escala), 0);
  if (t.con_precision && campo.precision != kSinDeclarar) {
    r.Atributo("rs:precision=", std::to_string(campo.precision), 0);
  }
  if (t.fijo) r.Atributo("rs:fixedlength=", "true", 0);
  if (memo || t.largo_memo || (campo.atributos & atributo::kLargo) != 0) r.Atributo("rs:long=", "true", 0);
  if ((campo.atributos & atributo::kPuedeSerNulo) == 0) r.Atributo("rs:maybenull=", "false", 0);
  r.Cerrar("/>");
}

std::string DeRowset(std::string_view nombre) {
  return "rs:" + std::string(nombre) + "=";
}

void EscribirAjenos(Renglones& r, const std::vector<AtributoAjeno>& ajenos, std::size_t extra) {
  for (const auto& ajeno : ajenos) r.Atributo(DeRowset(ajeno.nombre), Escapar(ajeno.valor), extra);
}

void EscribirCampo(Renglones& r, const DatosTabla& datos, std::size_t i, const std::string& nombre_xml) {
  const Campo& campo = datos.campos[i];
  r.Elemento(2, "s:AttributeType");
  r.Atributo("name=", nombre_xml, 1);
  if (nombre_xml != campo.nombre) r.Atributo("rs:name=", Escapar(campo.nombre), 1);
  r.Atributo("rs:number=", std::to_string(i + 1), 1);
  for (const auto& marca : kMarcasDeCampo) {
    if ((campo.atributos & marca.atributo) != 0) r.Atributo(DeRowset(marca.nombre), "true", 1);
  }
  EscribirAjenos(r, datos.detalles[i].otros, 1);
  r.Cerrar(">");
  EscribirTipo(r, campo, datos.columnas[i]);
  r.Crudo("\t\t</s:AttributeType>\r\n");
}

void EscribirEsquema(Renglones& r, const DatosTabla& datos, const std::vector<std::string>& nombres) {
  r.Crudo("<xml xmlns:s='");
  r.Crudo(uri::kEsquema);
  r.Crudo("'\r\n\txmlns:dt='");
  r.Crudo(uri::kTipos);
  r.Crudo("'\r\n\txmlns:rs='");
  r.Crudo(uri::kRowset);
  r.Crudo("'\r\n\txmlns:z='");
  r.Crudo(uri::kFila);
  r.Crudo("'>\r\n<s:Schema id='RowsetSchema'>\r\n");
  r.Elemento(1, "s:ElementType");
  r.Atributo("name=", "row", 0);
  r.Atributo("content=", "eltOnly", 0);
  EscribirAjenos(r, datos.de_tabla, 0);
  r.Cerrar(">");
  for (std::size_t i = 0; i < datos.campos.size(); ++i) EscribirCampo(r, datos, i, nombres[i]);
  r.Crudo("\t\t<s:extends type='rs:rowbase'/>\r\n\t</s:ElementType>\r\n</s:Schema>\r\n");
}

// The rows with their changes in the order of the service: what was changed where it stands, what was added behind it,
// what was taken away at the end.
class EscritorDatos {
 public:
  EscritorDatos(Renglones& renglones, const DatosTabla& datos, const std::vector<std::string>& nombres)
      : r_(renglones), datos_(datos), nombres_(nombres), filas_(renglones, datos, nombres) {}

  void Escribir() {
    if (datos_.originales) originales_.emplace(r_, *datos_.originales, nombres_);
    for (std::size_t fila = 0; fila < datos_.publicadas; ++fila) {
      const FilaPendiente* pendiente = Pendiente(fila);
      pendiente != nullptr ? Cambio(fila, *pendiente) : filas_.Fila(1, fila);
    }
    if (datos_.publicadas < datos_.filas) {
      r_.Crudo("\t<rs:insert>\r\n");
      for (std::size_t fila = datos_.publicadas; fila < datos_.filas; ++fila) filas_.Nueva(fila, Pendiente(fila));
      r_.Crudo("\t</rs:insert>\r\n");
    }
    if (datos_.borradas) Borradas(*datos_.borradas);
  }

 private:
  // Asked for the rows in their order.
  const FilaPendiente* Pendiente(std::size_t fila) {
    const auto& pendientes = datos_.pendientes;
    if (siguiente_ == pendientes.size() || pendientes[siguiente_].fila != fila) return nullptr;
    return &pendientes[siguiente_++];
  }

  void Cambio(std::size_t fila, const FilaPendiente& pendiente) {
    r_.Crudo("\t<rs:update>\r\n\t\t<rs:original>\r\n");
    originales_->Fila(3, *pendiente.original);
    r_.Crudo("\t\t</rs:original>\r\n");
    filas_.Cambio(fila, pendiente);
    r_.Crudo("\t</rs:update>\r\n");
  }

  void Borradas(const DatosTabla& borradas) {
    EscritorFilas escritor(r_, borradas, nombres_);
    r_.Crudo("\t<rs:delete>\r\n");
    for (std::size_t fila = 0; fila < borradas.filas; ++fila) escritor.Fila(2, fila);
    r_.Crudo("\t</rs:delete>\r\n");
  }

  Renglones& r_;
  const DatosTabla& datos_;
  const std::vector<std::string>& nombres_;
  EscritorFilas filas_;
  std::optional<EscritorFilas> originales_;
  std::size_t siguiente_ = 0;
};

void EscribirTodo(const DatosTabla& datos, std::ostream& salida) {
  const auto nombres = RepartirNombres(datos);
  Renglones r(salida);
  EscribirEsquema(r, datos, nombres);
  r.Crudo("<rs:data>\r\n");
  EscritorDatos(r, datos, nombres).Escribir();
  r.Crudo("</rs:data>\r\n</xml>");
  r.Volcar();
}

}  // namespace

void EscribirPersistido(const DatosTabla& datos, const std::filesystem::path& ruta, bool reemplazar) {
  // No reader takes a table without fields for one.
  if (datos.campos.empty()) throw Error(error::kLlamada, "Tabla", "No se puede guardar una tabla sin campos");
  const auto escribir = [&](std::ostream& salida) { EscribirTodo(datos, salida); };
  reemplazar ? EscribirEntero(ruta, escribir) : EscribirNuevo(ruta, escribir);
}

}  // namespace utr
