#include <algorithm>
#include <charconv>
#include <ostream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/Texto.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

constexpr std::size_t kAnchoLinea = 108;  // a line with that many bytes takes no further attribute
constexpr std::size_t kTramo = 1U << 20;

bool NecesitaEscape(std::string_view texto) {
  for (const char c : texto) {
    const auto b = static_cast<unsigned char>(c);
    if (b < 0x20 || b == '&' || b == '<' || b == '>' || b == '\'' || b == '"') return true;
  }
  return false;
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
    if (!NecesitaEscape({&c, 1})) {
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

// Elements and attributes in the layout of the recordset service.
class Renglones {
 public:
  explicit Renglones(std::ostream& salida) : salida_(salida) { texto_.reserve(kTramo + 65536); }

  void Crudo(std::string_view texto) { texto_ += texto; }

  void Elemento(std::size_t sangria, std::string_view nombre) {
    sangria_ = sangria;
    linea_ = texto_.size();
    texto_.append(sangria, '\t');
    texto_ += '<';
    texto_ += nombre;
  }

  // `nombre` with its "=": the value is written as it is.
  void Atributo(std::string_view nombre, std::string_view valor, std::size_t extra) {
    Separar(extra);
    texto_ += nombre;
    texto_ += '\'';
    texto_ += valor;
    texto_ += '\'';
  }

  void Cerrar(std::string_view fin) {
    texto_ += fin;
    texto_ += "\r\n";
    if (texto_.size() >= kTramo) Volcar();
  }

  void Volcar() {
    salida_.write(texto_.data(), static_cast<std::streamsize>(texto_.size()));
    texto_.clear();
  }

 private:
  void Separar(std::size_t extra) {
    if (texto_.size() - linea_ < kAnchoLinea) {
      texto_ += ' ';
      return;
    }
    texto_ += "\r\n";
    texto_.append(sangria_ + extra, '\t');
    texto_ += ' ';
    linea_ = texto_.size();
  }

  std::ostream& salida_;
  std::string texto_;
  std::size_t sangria_ = 0;
  std::size_t linea_ = 0;  // where the present line's count starts
};

// What a column's values look like in the file: for texts, which of the distinct ones have to be escaped.
struct ColumnaSalida {
  const Columna* columna = nullptr;
  TipoCampo tipo = TipoCampo::kVarChar;
  std::string atributo;  // XML name and "="
  std::string nombre_xml;
  std::vector<std::string> escapados;     // the escaped form of those that need it
  std::vector<std::uint32_t> por_numero;  // 0, or 1 + place in `escapados`; empty when none needs it
};

void PrepararTextos(ColumnaSalida& c) {
  const Diccionario& textos = c.columna->Textos();
  for (std::uint32_t n = 1; n <= textos.Cantidad(); ++n) {
    const auto texto = textos.Texto(n);
    if (!NecesitaEscape(texto) && EsUtf8(texto)) continue;
    if (c.por_numero.empty()) c.por_numero.assign(textos.Cantidad() + 1, 0);
    c.escapados.push_back(Escapar(texto));
    c.por_numero[n] = static_cast<std::uint32_t>(c.escapados.size());
  }
}

// The XML name of a column whose own can't be one, where no other column bears it.
std::string NombreSupletorio(const DatosTabla& datos, std::size_t i) {
  std::string nombre = "c" + std::to_string(i);
  while (datos.Buscar(nombre) >= 0) nombre += '_';
  return nombre;
}

std::vector<ColumnaSalida> PrepararColumnas(const DatosTabla& datos) {
  std::vector<ColumnaSalida> columnas(datos.campos.size());
  for (std::size_t i = 0; i < columnas.size(); ++i) {
    auto& c = columnas[i];
    const Campo& campo = datos.campos[i];
    const bool repetido = datos.Buscar(campo.nombre) != static_cast<int>(i);
    c.columna = &datos.columnas[i];
    c.tipo = campo.tipo;
    c.nombre_xml = EsNombreSimple(campo.nombre) && !repetido ? campo.nombre : NombreSupletorio(datos, i);
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

void EscribirValor(Renglones& r, const ColumnaSalida& c, std::size_t fila) {
  if (c.columna->EsNulo(fila)) return;
  if (c.columna->DeClase() == Clase::kTexto) {
    const std::uint32_t numero = c.columna->Indice(fila);
    const bool escapado = !c.por_numero.empty() && c.por_numero[numero] != 0;
    r.Atributo(c.atributo,
               escapado ? std::string_view(c.escapados[c.por_numero[numero] - 1]) : c.columna->Textos().Texto(numero),
               1);
    return;
  }
  if (c.columna->DeClase() == Clase::kDoble) {
    r.Atributo(c.atributo, TextoReal(c.columna->Numero(fila), c.tipo == TipoCampo::kSimple ? 8 : 17), 1);
    return;
  }
  r.Atributo(c.atributo, TextoDe(c.columna->Leer(fila)), 1);
}

void EscribirFila(Renglones& r, const std::vector<ColumnaSalida>& columnas, std::size_t fila, bool pendiente) {
  r.Elemento(pendiente ? 2 : 1, "z:row");
  std::string nulos;
  for (const auto& c : columnas) {
    EscribirValor(r, c, fila);
    if (pendiente && c.columna->EsNulo(fila)) nulos += (nulos.empty() ? "" : " ") + c.nombre_xml;
  }
  if (!nulos.empty()) r.Atributo("rs:forcenull=", nulos, 1);
  r.Cerrar("/>");
}

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
  if (t.con_escala) r.Atributo("rs:scale=", std::to_string(campo.escala), 0);
  if (t.con_precision && campo.precision != kSinPrecision) {
    r.Atributo("rs:precision=", std::to_string(campo.precision), 0);
  }
  if (t.fijo) r.Atributo("rs:fixedlength=", "true", 0);
  if (memo || t.largo_memo || (campo.atributos & atributo::kLargo) != 0) r.Atributo("rs:long=", "true", 0);
  if ((campo.atributos & atributo::kPuedeSerNulo) == 0) r.Atributo("rs:maybenull=", "false", 0);
  r.Cerrar("/>");
}

void EscribirCampo(Renglones& r, const DatosTabla& datos, std::size_t i, const std::string& nombre_xml) {
  const Campo& campo = datos.campos[i];
  r.Elemento(2, "s:AttributeType");
  r.Atributo("name=", nombre_xml, 1);
  if (nombre_xml != campo.nombre) r.Atributo("rs:name=", Escapar(campo.nombre), 1);
  r.Atributo("rs:number=", std::to_string(i + 1), 1);
  if ((campo.atributos & atributo::kAnulable) != 0) r.Atributo("rs:nullable=", "true", 1);
  if ((campo.atributos & atributo::kActualizable) != 0) r.Atributo("rs:write=", "true", 1);
  if ((campo.atributos & atributo::kActualizableDesconocido) != 0) r.Atributo("rs:writeunknown=", "true", 1);
  r.Cerrar(">");
  EscribirTipo(r, campo, datos.columnas[i]);
  r.Crudo("\t\t</s:AttributeType>\r\n");
}

void EscribirEsquema(Renglones& r, const DatosTabla& datos, const std::vector<ColumnaSalida>& columnas) {
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
  if (datos.actualizable) r.Atributo("rs:updatable=", "true", 0);
  r.Cerrar(">");
  for (std::size_t i = 0; i < datos.campos.size(); ++i) EscribirCampo(r, datos, i, columnas[i].nombre_xml);
  r.Crudo("\t\t<s:extends type='rs:rowbase'/>\r\n\t</s:ElementType>\r\n</s:Schema>\r\n");
}

void EscribirTodo(const DatosTabla& datos, std::ostream& salida) {
  const auto columnas = PrepararColumnas(datos);
  Renglones r(salida);
  EscribirEsquema(r, datos, columnas);
  r.Crudo("<rs:data>\r\n");
  for (std::size_t fila = 0; fila < datos.publicadas; ++fila) EscribirFila(r, columnas, fila, false);
  if (datos.publicadas < datos.filas) {
    r.Crudo("\t<rs:insert>\r\n");
    for (std::size_t fila = datos.publicadas; fila < datos.filas; ++fila) EscribirFila(r, columnas, fila, true);
    r.Crudo("\t</rs:insert>\r\n");
  }
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
