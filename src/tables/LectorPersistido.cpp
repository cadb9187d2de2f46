#include <algorithm>
#include <fstream>
#include <optional>
#include <pugixml.hpp>

#include "base/Error.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
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

// A column of the file: its XML name is the key of its values.
struct ColumnaEntrada {
  std::string nombre_xml;
  Campo campo;
  std::uint32_t orden = 0;
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
  return c;
}

bool EsOculta(pugi::xml_node tipo) {
  return Marca(Atributo(tipo, uri::kRowset, "hidden"), false);
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
  if (!EsFecha(dia + " " + hora.substr(0, punto))) Lanzar(error::kTipos, "Tabla");
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

bool EsTextoLibre(TipoCampo tipo) {
  const auto& dt = DescripcionDeTipo(tipo).dt;
  return dt == "string" || dt == "date" || dt == "time" || dt == "uuid";
}

class LectorFilas {
 public:
  LectorFilas(DatosTabla& datos, std::vector<ColumnaEntrada> columnas, std::string elemento)
      : datos_(datos), columnas_(std::move(columnas)), elemento_(std::move(elemento)) {}

  // All rows below rs:data. New rows of pending inserts go to the end, since they stay pending.
  void LeerDatos(pugi::xml_node nodo) {
    for (const auto hijo : nodo.children()) {
      if (EsFila(hijo)) {
        LeerFila(hijo, nullptr);
      } else if (Es(hijo, uri::kRowset, "insert")) {
        pendientes_.push_back(hijo);
      } else if (Es(hijo, uri::kRowset, "update")) {
        LeerCambio(hijo);
      } else if (!Es(hijo, uri::kRowset, "delete")) {
        LeerDatos(hijo);  // a wrapper that isn't ours: its rows are plain
      }
    }
  }

  void Terminar() {
    datos_.publicadas = datos_.filas;
    for (const auto nodo : pendientes_) {
      for (const auto hijo : nodo.children()) {
        if (EsFila(hijo)) LeerFila(hijo, nullptr);
      }
    }
  }

 private:
  bool EsFila(pugi::xml_node nodo) {
    const std::string_view nombre = nodo.name();
    if (nombre == nombre_fila_) return true;
    if (!IgualSinCaso(Local(nombre), elemento_) || Espacio(nodo, Prefijo(nombre)) != uri::kFila) return false;
    nombre_fila_ = nombre;
    return true;
  }

  // The old row whole, then the new values over it; without either of them the other one is a plain row.
  void LeerCambio(pugi::xml_node nodo) {
    pugi::xml_node original;
    pugi::xml_node nueva;
    for (const auto hijo : nodo.children()) {
      if (EsFila(hijo)) nueva = hijo;
      if (!Es(hijo, uri::kRowset, "original")) continue;
      for (const auto nieto : hijo.children()) {
        if (EsFila(nieto)) original = nieto;
      }
    }
    if (original) LeerFila(original, &nueva);
    if (!original && nueva) LeerFila(nueva, nullptr);
  }

  void LeerFila(pugi::xml_node fila, const pugi::xml_node* cambio) {
    datos_.AgregarFila();
    LeerValores(fila);
    if (cambio == nullptr || !*cambio) return;
    AnularForzados(*cambio);
    LeerValores(*cambio);
  }

  void LeerValores(pugi::xml_node fila) {
    std::size_t esperada = 0;
    for (auto a = fila.first_attribute(); a; a = a.next_attribute()) {
      const std::string_view nombre = a.name();
      if (esperada >= columnas_.size() || columnas_[esperada].nombre_xml != nombre) {
        const auto otra = BuscarColumna(nombre, esperada);
        if (!otra) continue;
        esperada = *otra;
      }
      Escribir(esperada, a.value());
      ++esperada;
    }
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
    if (columna.DeClase() != Clase::kTexto) {
      columna.Escribir(fila, Valor{std::string_view{valor}});
    } else if (EsTextoLibre(columnas_[i].campo.tipo)) {
      columna.EscribirTexto(fila, valor);
    } else {
      columna.EscribirTexto(fila, Canonico(columnas_[i].campo.tipo, valor));
    }
  }

  DatosTabla& datos_;
  std::vector<ColumnaEntrada> columnas_;
  std::string elemento_;
  std::string nombre_fila_ = "\n";  // the name of a row in this file, once one was seen
  std::vector<pugi::xml_node> pendientes_;
};

[[noreturn]] void NoEsTabla(const std::string& nombre, const std::string& motivo) {
  throw Error(error::kArchivo, "Tabla", "El archivo " + nombre + " no es una tabla válida: " + motivo);
}

pugi::xml_encoding PrepararBytes(std::string& bytes) {
  const std::string_view v = bytes;
  if (v.starts_with("\xFF\xFE") || v.starts_with("\xFE\xFF") || v.starts_with(std::string_view("<\0", 2)) ||
      v.starts_with(std::string_view("\0<", 2))) {
    return pugi::encoding_auto;
  }
  std::replace(bytes.begin(), bytes.end(), '\0', ' ');  // a zero byte would end the text
  const std::string_view cabeza = std::string_view(bytes).substr(0, 200);
  if (!EsUtf8(bytes)) {
    bytes = DesdeCp1252(bytes);
    return pugi::encoding_utf8;
  }
  return cabeza.starts_with("<?xml") ? pugi::encoding_auto : pugi::encoding_utf8;
}

pugi::xml_node BuscarHijo(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  for (const auto hijo : nodo.children()) {
    if (Es(hijo, espacio, local)) return hijo;
  }
  return {};
}

std::size_t ContarFilas(pugi::xml_node datos) {
  const auto hijos = datos.children();
  return static_cast<std::size_t>(std::distance(hijos.begin(), hijos.end()));
}

std::shared_ptr<DatosTabla> LeerDocumento(const pugi::xml_document& documento, const std::string& nombre) {
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
  LectorFilas lector(*datos, std::move(columnas), std::string(Atributo(elemento, "", "name")));
  for (const auto hijo : raiz.children()) {
    if (!Es(hijo, uri::kRowset, "data")) continue;
    for (auto& columna : datos->columnas) columna.Reservar(datos->filas + ContarFilas(hijo));
    lector.LeerDatos(hijo);
  }
  lector.Terminar();
  return datos;
}

}  // namespace

std::shared_ptr<DatosTabla> LeerPersistidoDe(std::string bytes, const std::string& nombre) {
  const auto codificacion = PrepararBytes(bytes);
  pugi::xml_document documento;
  const auto resultado = documento.load_buffer_inplace(bytes.data(), bytes.size(), kLectura, codificacion);
  if (!resultado) NoEsTabla(nombre, "el contenido está dañado o incompleto");
  try {
    return LeerDocumento(documento, nombre);
  } catch (const Error& e) {
    if (e.Numero() == error::kArchivo) throw;
    NoEsTabla(nombre, "contiene un valor que no corresponde al tipo de su campo");
  }
}

std::shared_ptr<DatosTabla> LeerPersistido(const std::filesystem::path& ruta) {
  std::ifstream entrada(ruta, std::ios::binary);
  std::error_code falla;
  const auto tamano = std::filesystem::file_size(ruta, falla);
  if (!entrada || falla) throw Error(error::kArchivo, "Tabla", "No se puede abrir el archivo " + ruta.string());
  std::string bytes(tamano, '\0');
  entrada.read(bytes.data(), static_cast<std::streamsize>(tamano));
  if (!entrada) throw Error(error::kArchivo, "Tabla", "No se puede leer el archivo " + ruta.string());
  return LeerPersistidoDe(std::move(bytes), ruta.filename().string());
}

}  // namespace utr
