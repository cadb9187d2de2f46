#include <algorithm>
#include <functional>
#include <memory>
#include <pugixml.hpp>

#include "base/Error.h"
#include "base/Texto.h"
#include "tables/BytesPersistidos.h"
#include "tables/LectorDirecto.h"
#include "tables/LectorEsquema.h"
#include "tables/Persistido.h"
#include "tables/ReceptorFilas.h"
#include "tables/XmlPersistido.h"

namespace utr {
namespace {

using namespace xml;

// Attribute values keep their white space and line ends as they are; entities are resolved.
constexpr unsigned kLectura = pugi::parse_escapes;

[[noreturn]] void NoEsTabla(const std::string& nombre, const std::string& motivo) {
  throw Error(error::kArchivo, "Tabla", "El archivo " + nombre + " no es una tabla válida: " + motivo);
}

constexpr int kEnvolturas = 50;  // how deep wrappers are looked into

// The rows of a document that anybody may have written.
class LectorArbol {
 public:
  LectorArbol(ReceptorFilas& receptor, std::string elemento, std::string archivo)
      : receptor_(receptor), elemento_(std::move(elemento)), archivo_(std::move(archivo)) {}

  // All rows below rs:data. New rows of pending inserts wait for the end.
  void LeerDatos(pugi::xml_node nodo, int envolturas = 0) {
    for (const auto hijo : nodo.children()) {
      if (EsFila(hijo)) {
        Tomar(hijo, &ReceptorFilas::Llana);
      } else if (Es(hijo, uri::kRowset, "insert")) {
        nuevas_.push_back(hijo);
      } else if (Es(hijo, uri::kRowset, "update")) {
        LeerCambio(hijo);
      } else if (Es(hijo, uri::kRowset, "delete")) {
        for (const auto fila : FilasDe(hijo)) Tomar(fila, &ReceptorFilas::Borrada);
      } else {
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
    for (const auto nodo : nuevas_) {
      for (const auto fila : FilasDe(nodo)) Tomar(fila, &ReceptorFilas::Nueva);
    }
  }

 private:
  static constexpr const char* kInalcanzable = "tiene registros fuera de su lugar";

  bool EsFila(pugi::xml_node nodo) {
    const std::string_view nombre = nodo.name();
    if (nombre == nombre_fila_) return true;
    if (!IgualSinCaso(Local(nombre), elemento_) && !IgualSinCaso(Local(nombre), "row")) return false;
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

  // The old row whole, then what was set in it; without either of them the other one is a plain row.
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
    const std::size_t pares = std::min(originales.size(), nuevas.size());
    for (std::size_t i = 0; i < pares; ++i) {
      Leer(originales[i], fila_);
      Leer(nuevas[i], nueva_);
      receptor_.Cambiada(fila_, nueva_);
    }
    auto& sueltas = originales.size() > pares ? originales : nuevas;
    for (std::size_t i = pares; i < sueltas.size(); ++i) Tomar(sueltas[i], &ReceptorFilas::Llana);
  }

  void Tomar(pugi::xml_node nodo, void (ReceptorFilas::*tomar)(const FilaLeida&)) {
    Leer(nodo, fila_);
    (receptor_.*tomar)(fila_);
  }

  void Leer(pugi::xml_node nodo, FilaLeida& fila) {
    fila.Vaciar();
    for (const auto a : nodo.attributes()) {
      const std::string_view nombre = a.name();
      if (nombre.ends_with(kForzados) && EsDe(nodo, nombre, uri::kRowset)) {
        fila.forzados = a.value();
      } else {
        fila.atributos.push_back({nombre, a.value()});
      }
    }
    for (const auto hijo : nodo.children()) ExigirSinFilas(hijo);
  }

  static constexpr std::string_view kForzados = ":forcenull";

  ReceptorFilas& receptor_;
  std::string elemento_;
  std::string archivo_;
  std::string nombre_fila_ = "\n";  // the name of a row in this file, once one was seen
  std::vector<pugi::xml_node> nuevas_;
  FilaLeida fila_;
  FilaLeida nueva_;
};

// Takes the rows that were taken out of a document, or says that they can't be taken so.
using LeerAparte = std::function<bool(ReceptorFilas&)>;

// The table of a document, with rows that stand elsewhere if there are such; nothing when these can't be read.
std::shared_ptr<DatosTabla> LeerDocumento(const pugi::xml_document& documento, const std::string& nombre,
                                          const LeerAparte& leer_aparte) {
  const auto raiz = documento.document_element();
  const auto esquema = BuscarHijo(raiz, uri::kEsquema, "Schema");
  if (!esquema) NoEsTabla(nombre, "falta el esquema");
  const auto elemento = BuscarHijo(esquema, uri::kEsquema, "ElementType");
  if (!elemento) NoEsTabla(nombre, "el esquema no describe registros");
  auto columnas = LeerColumnas(esquema, elemento);
  if (columnas.empty()) NoEsTabla(nombre, "el esquema no tiene campos");
  auto datos = std::make_shared<DatosTabla>();
  datos->de_tabla = LeerAtributosDeTabla(elemento);
  for (const auto& c : columnas) datos->AgregarCampo(c.campo, c.detalle);
  ReceptorFilas receptor(*datos, std::move(columnas));
  LectorArbol lector(receptor, std::string(Atributo(elemento, "", "name")), nombre);
  if (leer_aparte && (!BuscarHijo(raiz, uri::kRowset, "data") || !leer_aparte(receptor))) return nullptr;
  for (const auto otra : documento.children()) {
    if (otra != raiz) lector.ExigirSinFilas(otra);
  }
  for (const auto hijo : raiz.children()) {
    Es(hijo, uri::kRowset, "data") ? lector.LeerDatos(hijo) : lector.ExigirSinFilas(hijo);
  }
  lector.Terminar();
  receptor.Terminar();
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
enum class Modo { kDirecto, kEntero, kReparado };

// One reading of the file; nothing when it isn't of the layout that the mode allows.
std::shared_ptr<DatosTabla> Intentar(const std::filesystem::path& ruta, Modo modo) {
  const std::string nombre = ruta.filename().string();
  BytesPersistidos bytes = LeerBytes(ruta);
  pugi::xml_document documento;
  const auto cargar = [&](char* texto, std::size_t largo) -> bool {
    return static_cast<bool>(documento.load_buffer_inplace(texto, largo, kLectura, pugi::encoding_utf8));
  };
  if (modo == Modo::kEntero) {
    return cargar(bytes.Datos(), bytes.Largo()) ? LeerDocumento(documento, nombre, {}) : nullptr;
  }
  if (modo == Modo::kReparado) {
    std::string reparado = EscaparComillas(bytes.Vista());
    return cargar(reparado.data(), reparado.size()) ? LeerDocumento(documento, nombre, {}) : nullptr;
  }
  auto partes = Partir(bytes.Datos(), bytes.Largo());
  if (!partes || !cargar(partes->documento.data(), partes->documento.size())) return nullptr;
  return LeerDocumento(documento, nombre, [&](ReceptorFilas& receptor) { return LeerDirecto(*partes, receptor); });
}

}  // namespace

std::shared_ptr<DatosTabla> LeerPersistido(const std::filesystem::path& ruta) {
  try {
    for (const Modo modo : {Modo::kDirecto, Modo::kEntero, Modo::kReparado}) {
      if (auto datos = Intentar(ruta, modo)) return datos;
    }
    NoEsTabla(ruta.filename().string(), "el contenido está dañado o incompleto");
  } catch (const Error& e) {
    if (e.Numero() == error::kArchivo) throw;
    NoEsTabla(ruta.filename().string(), "contiene un valor que no corresponde al tipo de su campo");
  }
}

}  // namespace utr
