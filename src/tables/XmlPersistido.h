#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "base/Numeros.h"
#include "base/Texto.h"

// Names, namespaces and marks of a parsed document. Prefixes are whatever the file declares. Internal to the reader.
namespace utr::xml {

inline std::string_view Local(std::string_view nombre) {
  const auto dos_puntos = nombre.find(':');
  return dos_puntos == std::string_view::npos ? nombre : nombre.substr(dos_puntos + 1);
}

inline std::string_view Prefijo(std::string_view nombre) {
  const auto dos_puntos = nombre.find(':');
  return dos_puntos == std::string_view::npos ? std::string_view{} : nombre.substr(0, dos_puntos);
}

// The namespace of a prefix, looked up from the element outwards.
inline std::string_view Espacio(pugi::xml_node nodo, std::string_view prefijo) {
  const std::string clave = prefijo.empty() ? "xmlns" : "xmlns:" + std::string(prefijo);
  for (; nodo; nodo = nodo.parent()) {
    if (const auto a = nodo.attribute(clave.c_str())) return a.value();
  }
  return {};
}

inline bool Es(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  return IgualSinCaso(Local(nodo.name()), local) && Espacio(nodo, Prefijo(nodo.name())) == espacio;
}

// Whether the attribute stands in that namespace; with an empty one, whether it has no prefix.
inline bool EsDe(pugi::xml_node nodo, std::string_view nombre, std::string_view espacio) {
  const auto prefijo = Prefijo(nombre);
  return prefijo.empty() ? espacio.empty() : Espacio(nodo, prefijo) == espacio;
}

// The value of an attribute by namespace and local name.
inline std::string_view Atributo(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  for (const auto a : nodo.attributes()) {
    if (IgualSinCaso(Local(a.name()), local) && EsDe(nodo, a.name(), espacio)) return a.value();
  }
  return {};
}

inline bool Marca(std::string_view texto, bool defecto) {
  if (texto.empty()) return defecto;
  return IgualSinCaso(texto, "true") || texto == "1" || texto == "-1";
}

inline std::uint32_t Cantidad(std::string_view texto) {
  const double n = EsNumerico(texto) ? LeerDoble(texto) : 0;
  return n > 0 && n <= 4294967295.0 ? static_cast<std::uint32_t>(n) : 0;
}

inline pugi::xml_node BuscarHijo(pugi::xml_node nodo, std::string_view espacio, std::string_view local) {
  for (const auto hijo : nodo.children()) {
    if (Es(hijo, espacio, local)) return hijo;
  }
  return {};
}

}  // namespace utr::xml
