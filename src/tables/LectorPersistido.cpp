#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <pugixml.hpp>

#include "base/Error.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "tables/BytesPersistidos.h"
#include "tables/Persistido.h"

namespace utr {
namespace {

// Attribute values keep their white space and line ends as they are; entities are resolved.
constexpr unsigned kLectura = pugi::parse_escapes;

std::string_view Local(std::string_view nombre) {
  const auto dos_puntos = nombre.find(':');
  return dos_puntos == std::string_view::npos ? nombre : nombre.substr(dos_puntos + 1);
}

std::string_view Prefijo(std::string_view nombre) {
  const auto dos_puntos = nombre.find(':');
  return dos_puntos == std::string_view::npos ? std::string_view{} : nombre.substr(0, dos_puntos);
}

// The namespace of a prefix, looked up from the element outwards.
std::string_view Espacio(pugi::xml_node nodo, std::string_view prefijo) {
  const std::string clave = prefijo.empty() ? "xmlns" : "xmlns:" + std::string(prefijo);
  for (; nodo; nodo = nodo.parent()) {
    if (const auto a = nodo.attribute(clave.c_str())) return a.value();
  }
  return {};
}

bool Es(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  return IgualSinCaso(Local(nodo.name()), local) && Espacio(nodo, Prefijo(nodo.name())) == espacio;
}

// An attribute by namespace and local name; with an empty namespace, one without a prefix.
std::string_view Atributo(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  for (const auto a : nodo.attributes()) {
    if (!IgualSinCaso(Local(a.name()), local)) continue;
    const auto prefijo = Prefijo(a.name());
    if (prefijo.empty() ? espacio.empty() : Espacio(nodo, prefijo) == espacio) return a.value();
  }
  return {};
}

bool Marca(std::string_view texto, bool defecto) {
  if (texto.empty()) return defecto;
  return IgualSinCaso(texto, "true") || texto == "1" || texto == "-1";
}

std::uint32_t Cantidad(std::string_view texto) {
  const double n = EsNumerico(texto) ? LeerDoble(texto) : 0;
  return n > 0 && n <= 4294967295.0 ? static_cast<std::uint32_t>(n) : 0;
}

bool EsTextoLibre(TipoCampo tipo) {
  const auto& dt = DescripcionDeTipo(tipo).dt;
  return dt == "string" || dt == "date" || dt == "time" || dt == "uuid";
}

// A column of the file: its XML name is the key of its values.
struct ColumnaEntrada {
  std::string nombre_xml;
  Campo campo;
  std::uint32_t orden = 0;
  bool libre = false;                // a text that is kept as it stands
  std::string_view ultimo{"\0", 1};  // the last text read and its number: most columns repeat it row by row
  std::uint32_t numero_ultimo = 0;
};

// The declaration of a type stands in s:datatype or on the AttributeType itself, which wins.
std::string_view Declarado(pugi::xml_node tipo, pugi::xml_node datos, std::string_view espacio,
                           std::string_view local) {
  const auto propio = Atributo(tipo, espacio, local);
  return propio.empty() && datos ? Atributo(datos, espacio, local) : propio;
}

unsigned LeerAtributos(pugi::xml_node tipo, pugi::xml_node datos) {
  unsigned a = 0;
  if (Marca(Atributo(tipo, uri::kRowset, "nullable"), false)) a |= atributo::kAnulable;
  if (Marca(Atributo(tipo, uri::kRowset, "write"), false)) a |= atributo::kActualizable;
  if (Marca(Atributo(tipo, uri::kRowset, "writeunknown"), false)) a |= atributo::kActualizableDesconocido;
  if (Marca(Declarado(tipo, datos, uri::kRowset, "maybenull"), true)) a |= atributo::kPuedeSerNulo;
  if (Marca(Declarado(tipo, datos, uri::kRowset, "long"), false)) a |= atributo::kLargo;
  return a;
}

ColumnaEntrada LeerColumna(pugi::xml_node tipo) {
  pugi::xml_node datos;
  for (const auto hijo : tipo.children()) {
    if (Es(hijo, uri::kEsquema, "datatype")) datos = hijo;
  }
  ColumnaEntrada c;
  c.nombre_xml = Atributo(tipo, "", "name");
  const auto nombre = Atributo(tipo, uri::kRowset, "name");
  c.campo.nombre = nombre.empty() ? c.nombre_xml : std::string(nombre);
  c.orden = Cantidad(Atributo(tipo, uri::kRowset, "number"));
  const auto largo = Declarado(tipo, datos, uri::kTipos, "maxLength");
  const bool memo = Marca(Declarado(tipo, datos, uri::kRowset, "long"), false);
  const bool fijo = Marca(Declarado(tipo, datos, uri::kRowset, "fixedlength"), false);
  c.campo.tipo = TipoDeDeclaracion(Declarado(tipo, datos, uri::kTipos, "type"),
                                   Declarado(tipo, datos, uri::kRowset, "dbtype"), fijo, memo, !largo.empty());
  c.campo.tamano = DescripcionDeTipo(c.campo.tipo).largo != 0 ? DescripcionDeTipo(c.campo.tipo).largo : Cantidad(largo);
  c.campo.atributos = LeerAtributos(tipo, datos);
  const auto precision = Declarado(tipo, datos, uri::kRowset, "precision");
  c.campo.precision = precision.empty() ? kSinPrecision : static_cast<std::uint8_t>(Cantidad(precision));
  c.campo.escala = static_cast<std::uint8_t>(Cantidad(Declarado(tipo, datos, uri::kRowset, "scale")));
  c.libre = ClaseDe(c.campo.tipo) == Clase::kTexto && EsTextoLibre(c.campo.tipo);
  return c;
}

// A key column that only the cursor needed, or one without a name, which no value can belong to.
bool EsOculta(pugi::xml_node tipo) {
  return Marca(Atributo(tipo, uri::kRowset, "hidden"), false) || Atributo(tipo, "", "name").empty();
}

// Columns in their order: rs:number where every one has it, else as they stand. References inside the ElementType,
// where there are any, decide which columns there are and in which order.
std::vector<ColumnaEntrada> LeerColumnas(pugi::xml_node esquema, pugi::xml_node elemento) {
  std::vector<pugi::xml_node> tipos;
  std::vector<pugi::xml_node> referencias;
  for (const auto hijo : elemento.children()) {
    if (Es(hijo, uri::kEsquema, "AttributeType")) tipos.push_back(hijo);
    if (Es(hijo, uri::kEsquema, "attribute")) referencias.push_back(hijo);
  }
  for (const auto hijo : esquema.children()) {
    if (!referencias.empty() && Es(hijo, uri::kEsquema, "AttributeType")) tipos.push_back(hijo);
  }
  std::vector<ColumnaEntrada> columnas;
  for (const auto referencia : referencias) {
    const auto nombre = Atributo(referencia, "", "type");
    const auto tipo = std::find_if(tipos.begin(), tipos.end(),
                                   [&](pugi::xml_node t) { return IgualSinCaso(Atributo(t, "", "name"), nombre); });
    if (tipo != tipos.end() && !EsOculta(*tipo)) columnas.push_back(LeerColumna(*tipo));
  }
  if (!referencias.empty()) return columnas;
  for (const auto tipo : tipos) {
    if (!EsOculta(tipo)) columnas.push_back(LeerColumna(tipo));
  }
  if (std::all_of(columnas.begin(), columnas.end(), [](const auto& c) { return c.orden > 0; })) {
    std::stable_sort(columnas.begin(), columnas.end(), [](const auto& a, const auto& b) { return a.orden < b.orden; });
  }
  return columnas;
}

// The exact text of a type that is held as text but isn't free text: dates as "2001-02-03T04:05:06", decimal numbers
// without grouping, bytes in small hex digits without white space.
std::string Canonico(TipoCampo tipo, std::string_view texto);

std::string FechaCanonica(std::string_view texto) {
  std::string t(Recortar(texto));
  if (!t.empty() && t.back() == 'Z') t.pop_back();
  const auto corte = t.find_first_of("T ");
  std::string dia = t.substr(0, corte);
  std::string hora = corte == std::string::npos ? "" : t.substr(corte + 1);
  if (dia.find(':') != std::string::npos) {
    hora = dia;
    dia = "1899-12-30";
  }
  if (hora.empty()) hora = "00:00:00";
  const auto punto = hora.find('.');
  const bool con_fraccion = punto == std::string::npos || hora.find_first_not_of("0123456789", punto + 1) == hora.npos;
  if (dia.empty() || !con_fraccion || !EsFecha(dia + " " + hora.substr(0, punto))) Lanzar(error::kTipos, "Tabla");
  return dia + "T" + hora;
}

std::string Canonico(TipoCampo tipo, std::string_view texto) {
  switch (tipo) {
    case TipoCampo::kFecha:
    case TipoCampo::kMarcaDeTiempo:
    case TipoCampo::kFechaArchivo:
      return FechaCanonica(texto);
    case TipoCampo::kMoneda:
    case TipoCampo::kDecimal:
    case TipoCampo::kNumerico:
    case TipoCampo::kNumericoVariable:
    case TipoCampo::kEntero64SinSigno:
      if (!EsNumerico(texto)) Lanzar(error::kTipos, "Tabla");
      return Reemplazar(Recortar(texto), ",", "");
    case TipoCampo::kBinario:
    case TipoCampo::kVarBinario:
    case TipoCampo::kLongVarBinario: {
      std::string s = Minusculas(texto);
      std::erase_if(s, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
      return s;
    }
    default:
      return std::string(texto);
  }
}

// What plain rows look like in a file that the recordset service wrote.
constexpr std::string_view kDatosPropios = "<rs:data>\r\n\t<z:row ";
constexpr std::string_view kRenglonFila = "\r\n\t<z:row ";
constexpr std::string_view kFilaPropia = "z:row";
constexpr std::size_t kTramoFilas = 256 * 1024;

// The first stretch of rows, cut where a row begins.
std::string_view CortarTramo(std::string_view filas) {
  if (filas.size() <= kTramoFilas) return filas;
  auto corte = filas.rfind(kRenglonFila, kTramoFilas);
  if (corte == filas.npos || corte == 0) corte = filas.find(kRenglonFila, kTramoFilas);
  return filas.substr(0, corte);
}

[[noreturn]] void NoEsTabla(const std::string& nombre, const std::string& motivo) {
  throw Error(error::kArchivo, "Tabla", "El archivo " + nombre + " no es una tabla válida: " + motivo);
}

constexpr int kEnvolturas = 50;  // how deep wrappers are looked into

class LectorFilas {
 public:
  LectorFilas(DatosTabla& datos, std::vector<ColumnaEntrada> columnas, std::string elemento, std::string archivo)
      : datos_(datos), columnas_(std::move(columnas)), elemento_(std::move(elemento)), archivo_(std::move(archivo)) {}

  // Plain rows that stand in text of their own, a stretch at a time, so that neither time nor memory goes into a tree
  // of the whole file. False: something else than plain rows stood there.
  bool LeerTramos(std::string_view filas_en_texto, char* inicio) {
    pugi::xml_document tramo;
    while (!filas_en_texto.empty()) {
      const std::string_view trozo = CortarTramo(filas_en_texto);
      filas_en_texto.remove_prefix(trozo.size());
      if (!tramo.load_buffer_inplace(inicio, trozo.size(), kLectura | pugi::parse_fragment, pugi::encoding_utf8)) {
        return false;
      }
      inicio += trozo.size();
      for (auto fila = tramo.first_child(); fila; fila = fila.next_sibling()) {
        if (fila.name() != kFilaPropia || fila.first_child()) return false;
        LeerFila(fila, nullptr);
      }
    }
    return true;
  }

  // All rows below rs:data. New rows of pending inserts go to the end, since they stay pending.
  void LeerDatos(pugi::xml_node nodo, int envolturas = 0) {
    for (const auto hijo : nodo.children()) {
      if (EsFila(hijo)) {
        LeerFila(hijo, nullptr);
      } else if (Es(hijo, uri::kRowset, "insert")) {
        pendientes_.push_back(hijo);
      } else if (Es(hijo, uri::kRowset, "update")) {
        LeerCambio(hijo);
      } else if (!Es(hijo, uri::kRowset, "delete")) {
        // A wrapper that isn't ours: its rows are plain.
        envolturas < kEnvolturas ? LeerDatos(hijo, envolturas + 1) : ExigirSinFilas(hijo);
      }
    }
  }

  // Raises kArchivo when the node is a row or has one below, where nothing reads it: it would vanish without a word.
  void ExigirSinFilas(pugi::xml_node raiz) {
    if (EsFila(raiz)) NoEsTabla(archivo_, kInalcanzable);
    for (auto nodo = raiz.first_child(); nodo;) {
      if (EsFila(nodo)) NoEsTabla(archivo_, kInalcanzable);
      if (nodo.first_child()) {
        nodo = nodo.first_child();
        continue;
      }
      while (nodo != raiz && !nodo.next_sibling()) nodo = nodo.parent();
      nodo = nodo == raiz ? pugi::xml_node() : nodo.next_sibling();
    }
  }

  void Terminar() {
    datos_.publicadas = datos_.filas;
    for (const auto nodo : pendientes_) {
      for (const auto fila : FilasDe(nodo)) LeerFila(fila, nullptr);
    }
  }

 private:
  static constexpr const char* kInalcanzable = "tiene registros fuera de su lugar";

  bool EsFila(pugi::xml_node nodo) {
    const std::string_view nombre = nodo.name();
    if (nombre == nombre_fila_) return true;
    if (!IgualSinCaso(Local(nombre), elemento_) && !IgualSinCaso(Local(nombre), Local(kFilaPropia))) return false;
    const auto espacio = Espacio(nodo, Prefijo(nombre));
    if (espacio.empty() && !Prefijo(nombre).empty()) NoEsTabla(archivo_, kInalcanzable);  // of no known kind
    if (espacio != uri::kFila) return false;
    nombre_fila_ = nombre;
    return true;
  }

  std::vector<pugi::xml_node> FilasDe(pugi::xml_node nodo) {
    std::vector<pugi::xml_node> filas;
    for (const auto hijo : nodo.children()) {
      if (EsFila(hijo)) {
        filas.push_back(hijo);
      } else {
        ExigirSinFilas(hijo);
      }
    }
    return filas;
  }

  // The old row whole, then the new values over it; without either of them the other one is a plain row.
  void LeerCambio(pugi::xml_node nodo) {
    std::vector<pugi::xml_node> originales;
    std::vector<pugi::xml_node> nuevas;
    for (const auto hijo : nodo.children()) {
      if (EsFila(hijo)) {
        nuevas.push_back(hijo);
      } else if (Es(hijo, uri::kRowset, "original")) {
        const auto filas = FilasDe(hijo);
        originales.insert(originales.end(), filas.begin(), filas.end());
      } else {
        ExigirSinFilas(hijo);
      }
    }
    for (std::size_t i = 0; i < std::max(originales.size(), nuevas.size()); ++i) {
      const auto* nueva = i < nuevas.size() ? &nuevas[i] : nullptr;
      i < originales.size() ? LeerFila(originales[i], nueva) : LeerFila(*nueva, nullptr);
    }
  }

  void LeerFila(pugi::xml_node fila, const pugi::xml_node* cambio) {
    datos_.AgregarFila();
    LeerValores(fila);
    for (const auto hijo : fila.children()) ExigirSinFilas(hijo);
    if (cambio == nullptr) return;
    AnularForzados(*cambio);
    LeerValores(*cambio);
    for (const auto hijo : cambio->children()) ExigirSinFilas(hijo);
  }

  void LeerValores(pugi::xml_node fila) {
    std::size_t esperada = 0;
    for (auto a = fila.first_attribute(); a; a = a.next_attribute()) {
      if (esperada >= columnas_.size() || std::strcmp(columnas_[esperada].nombre_xml.c_str(), a.name()) != 0) {
        const auto otra = BuscarColumna(a.name(), esperada);
        if (!otra) continue;
        esperada = *otra;
      }
      Escribir(esperada, a.value());
      ++esperada;
    }
    for (const auto& e : en_espera_) {
      ColumnaEntrada& entrada = columnas_[e.columna];
      entrada.numero_ultimo = datos_.columnas[e.columna].Textos().Numero(e.texto, e.clave);
      entrada.ultimo = e.texto;
      datos_.columnas[e.columna].EscribirIndice(datos_.filas - 1, entrada.numero_ultimo);
    }
    en_espera_.clear();
  }

  // Most rows skip only columns that are null, so the search goes on from the place at hand.
  std::optional<std::size_t> BuscarColumna(std::string_view nombre, std::size_t desde) const {
    const std::size_t n = columnas_.size();
    for (std::size_t k = 0; k < n; ++k) {
      const std::size_t i = (desde + k) % n;
      if (columnas_[i].nombre_xml == nombre) return i;
    }
    for (std::size_t i = 0; i < n; ++i) {
      if (IgualSinCaso(columnas_[i].nombre_xml, nombre)) return i;
    }
    return std::nullopt;
  }

  void AnularForzados(pugi::xml_node fila) {
    for (const auto nombre : Separar(Atributo(fila, uri::kRowset, "forcenull"), ' ')) {
      if (nombre.empty()) continue;
      if (const auto i = BuscarColumna(nombre, 0)) datos_.columnas[*i].Escribir(datos_.filas - 1, Valor{});
    }
  }

  void Escribir(std::size_t i, const char* valor) {
    const std::size_t fila = datos_.filas - 1;
    auto& columna = datos_.columnas[i];
    ColumnaEntrada& entrada = columnas_[i];
    if (entrada.libre) {
      const std::string_view texto = valor;
      if (texto == entrada.ultimo) return columna.EscribirIndice(fila, entrada.numero_ultimo);
      en_espera_.push_back({i, texto, Diccionario::ClaveDe(texto)});
      columna.Textos().Anticipar(en_espera_.back().clave);
    } else if (columna.DeClase() == Clase::kTexto) {
      columna.EscribirTexto(fila, Canonico(entrada.campo.tipo, valor));
    } else {
      columna.Escribir(fila, Valor{std::string_view{valor}});
    }
  }

  // A text of the row at hand that is still to be looked up: the slots of all of them are fetched meanwhile.
  struct EnEspera {
    std::size_t columna;
    std::string_view texto;
    Diccionario::Clave clave;
  };

  DatosTabla& datos_;
  std::vector<ColumnaEntrada> columnas_;
  std::vector<EnEspera> en_espera_;
  std::string elemento_;
  std::string archivo_;
  std::string nombre_fila_ = "\n";  // the name of a row in this file, once one was seen
  std::vector<pugi::xml_node> pendientes_;
};

pugi::xml_node BuscarHijo(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  for (const auto hijo : nodo.children()) {
    if (Es(hijo, espacio, local)) return hijo;
  }
  return {};
}

// A file as it goes to the parser: the document, and the plain rows that were taken out of it.
struct Partes {
  std::string documento;
  char* filas = nullptr;
  std::size_t largo_filas = 0;
};

// Takes the plain rows of the service's own layout out of the document. They end where any other element begins.
Partes Partir(char* datos, std::size_t largo) {
  const std::string_view v(datos, largo);
  Partes partes;
  const auto inicio = v.find(kDatosPropios);
  const bool solo_uno = inicio != v.npos && v.find("<rs:data") == inicio &&
                        v.find("xmlns:z='#RowsetSchema'") < inicio &&
                        v.find("xmlns:rs='urn:schemas-microsoft-com:rowset'") < inicio;
  if (!solo_uno) return partes;
  const auto desde = inicio + std::string_view("<rs:data>").size();
  const auto fin = std::min(v.find("</", desde), v.find("<rs:", desde));
  if (fin == v.npos) return partes;
  const auto hasta = v.rfind('>', fin);
  if (hasta == v.npos || hasta < desde) return partes;
  partes.documento = v.substr(0, desde);
  partes.documento += v.substr(hasta + 1);
  partes.filas = datos + desde;
  partes.largo_filas = hasta + 1 - desde;
  return partes;
}

// The table of a document, with rows that were taken out of it ahead of those in it; nothing when these rows turn out
// to be more than plain ones.
std::shared_ptr<DatosTabla> LeerDocumento(const pugi::xml_document& documento, const std::string& nombre,
                                          const Partes& partes) {
  const auto raiz = documento.document_element();
  const auto esquema = BuscarHijo(raiz, uri::kEsquema, "Schema");
  if (!esquema) NoEsTabla(nombre, "falta el esquema");
  const auto elemento = BuscarHijo(esquema, uri::kEsquema, "ElementType");
  if (!elemento) NoEsTabla(nombre, "el esquema no describe registros");
  auto columnas = LeerColumnas(esquema, elemento);
  if (columnas.empty()) NoEsTabla(nombre, "el esquema no tiene campos");
  auto datos = std::make_shared<DatosTabla>();
  datos->actualizable = Marca(Atributo(elemento, uri::kRowset, "updatable"), false);
  for (const auto& c : columnas) datos->AgregarCampo(c.campo);
  LectorFilas lector(*datos, std::move(columnas), std::string(Atributo(elemento, "", "name")), nombre);
  if (!lector.LeerTramos({partes.filas, partes.largo_filas}, partes.filas)) return nullptr;
  for (const auto otra : documento.children()) {
    if (otra != raiz) lector.ExigirSinFilas(otra);
  }
  for (const auto hijo : raiz.children()) {
    if (Es(hijo, uri::kRowset, "data")) {
      lector.LeerDatos(hijo);
    } else {
      lector.ExigirSinFilas(hijo);
    }
  }
  lector.Terminar();
  for (auto& columna : datos->columnas) columna.Ajustar();
  return datos;
}

// Files written by hand hold apostrophes within their apostrophes: one that doesn't end its value becomes an entity.
std::string EscaparComillas(std::string_view documento) {
  std::string s;
  char comilla = '\0';
  bool en_etiqueta = false;
  for (std::size_t i = 0; i < documento.size(); ++i) {
    const char c = documento[i];
    if (comilla == '\0') {
      if (c == '<' || c == '>') en_etiqueta = c == '<';
      if (en_etiqueta && (c == '\'' || c == '"')) comilla = c;
    } else if (c == comilla) {
      const auto sigue = documento.substr(i + 1, 1);
      if (!sigue.empty() && std::string_view(" \t\r\n/>?").find(sigue) == std::string_view::npos) {
        s += c == '"' ? "&#x22;" : "&#x27;";
        continue;
      }
      comilla = '\0';
    }
    s.push_back(c);
  }
  return s;
}

// The ways to read a file, from the quickest to the most patient one.
enum class Modo { kTramos, kEntero, kReparado };

// One reading of the file; nothing when it isn't of the layout that the mode allows.
std::shared_ptr<DatosTabla> Intentar(const std::filesystem::path& ruta, Modo modo) {
  BytesPersistidos bytes = LeerBytes(ruta);
  Partes partes;
  if (modo == Modo::kTramos) partes = Partir(bytes.Datos(), bytes.Largo());
  if (modo == Modo::kTramos && partes.filas == nullptr) return nullptr;
  if (modo == Modo::kReparado) partes.documento = EscaparComillas(bytes.Vista());
  pugi::xml_document documento;
  const bool propio = modo == Modo::kEntero;
  const auto resultado =
      documento.load_buffer_inplace(propio ? bytes.Datos() : partes.documento.data(),
                                    propio ? bytes.Largo() : partes.documento.size(), kLectura, pugi::encoding_utf8);
  if (!resultado) return nullptr;
  return LeerDocumento(documento, ruta.filename().string(), partes);
}

}  // namespace

std::shared_ptr<DatosTabla> LeerPersistido(const std::filesystem::path& ruta) {
  try {
    for (const Modo modo : {Modo::kTramos, Modo::kEntero, Modo::kReparado}) {
      if (auto datos = Intentar(ruta, modo)) return datos;
    }
    NoEsTabla(ruta.filename().string(), "el contenido está dañado o incompleto");
  } catch (const Error& e) {
    if (e.Numero() == error::kArchivo) throw;
    NoEsTabla(ruta.filename().string(), "contiene un valor que no corresponde al tipo de su campo");
  }
}

}  // namespace utr
