#include "tables/LectorEsquema.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "base/Texto.h"
#include "tables/Persistido.h"
#include "tables/XmlPersistido.h"

namespace utr {
namespace {

using namespace xml;

// What a column declares and a Campo holds, beside the flags of kMarcasDeCampo. Anything else is kept as it stands.
constexpr std::array<std::string_view, 9> kConocidos = {"name",        "number", "dbtype",    "scale", "precision",
                                                        "fixedlength", "long",   "maybenull", "hidden"};

bool EsConocido(std::string_view local) {
  const auto igual = [&](std::string_view otro) { return IgualSinCaso(otro, local); };
  return std::any_of(kConocidos.begin(), kConocidos.end(), igual) ||
         std::any_of(kMarcasDeCampo.begin(), kMarcasDeCampo.end(), [&](const auto& m) { return igual(m.nombre); });
}

// The attributes of the rowset namespace that `otros` takes, in their order.
template <typename Otros>
std::vector<AtributoAjeno> Ajenos(pugi::xml_node nodo, Otros otros) {
  std::vector<AtributoAjeno> ajenos;
  for (const auto a : nodo.attributes()) {
    const auto local = Local(a.name());
    if (EsNombreXml(local) && EsDe(nodo, a.name(), uri::kRowset) && otros(local)) {
      ajenos.push_back({std::string(local), a.value()});
    }
  }
  return ajenos;
}

// The declaration of a type stands in s:datatype or on the AttributeType itself, which wins.
std::string_view Declarado(pugi::xml_node tipo, pugi::xml_node datos, std::string_view espacio,
                           std::string_view local) {
  const auto propio = Atributo(tipo, espacio, local);
  return propio.empty() && datos ? Atributo(datos, espacio, local) : propio;
}

unsigned LeerAtributos(pugi::xml_node tipo, pugi::xml_node datos) {
  unsigned a = 0;
  for (const auto& marca : kMarcasDeCampo) {
    if (Marca(Atributo(tipo, uri::kRowset, marca.nombre), false)) a |= marca.atributo;
  }
  if (Marca(Declarado(tipo, datos, uri::kRowset, "maybenull"), true)) a |= atributo::kPuedeSerNulo;
  if (Marca(Declarado(tipo, datos, uri::kRowset, "long"), false)) a |= atributo::kLargo;
  return a;
}

// A precision or a scale, up to 255.
std::uint16_t Cifras(std::string_view texto) {
  if (texto.empty()) return kSinDeclarar;
  return static_cast<std::uint16_t>(std::min<std::uint32_t>(Cantidad(texto), 255));
}

ColumnaEntrada LeerColumna(pugi::xml_node tipo) {
  const pugi::xml_node datos = BuscarHijo(tipo, uri::kEsquema, "datatype");
  ColumnaEntrada c;
  c.detalle.nombre_xml = Atributo(tipo, "", "name");
  c.detalle.otros = Ajenos(tipo, [](std::string_view local) { return !EsConocido(local); });
  const auto nombre = Atributo(tipo, uri::kRowset, "name");
  c.campo.nombre = nombre.empty() ? c.detalle.nombre_xml : std::string(nombre);
  c.orden = Cantidad(Atributo(tipo, uri::kRowset, "number"));
  const auto largo = Declarado(tipo, datos, uri::kTipos, "maxLength");
  const bool memo = Marca(Declarado(tipo, datos, uri::kRowset, "long"), false);
  const bool fijo = Marca(Declarado(tipo, datos, uri::kRowset, "fixedlength"), false);
  c.campo.tipo = TipoDeDeclaracion(Declarado(tipo, datos, uri::kTipos, "type"),
                                   Declarado(tipo, datos, uri::kRowset, "dbtype"), fijo, memo, !largo.empty());
  const auto propio = DescripcionDeTipo(c.campo.tipo).largo;
  c.campo.tamano = propio != 0 ? propio : Cantidad(largo);
  c.campo.atributos = LeerAtributos(tipo, datos);
  c.campo.precision = Cifras(Declarado(tipo, datos, uri::kRowset, "precision"));
  c.campo.escala = Cifras(Declarado(tipo, datos, uri::kRowset, "scale"));
  return c;
}

// A key column that only the cursor needed, or one without a name, which no value can belong to.
bool EsOculta(pugi::xml_node tipo) {
  return Marca(Atributo(tipo, uri::kRowset, "hidden"), false) || Atributo(tipo, "", "name").empty();
}

std::vector<pugi::xml_node> Hijos(pugi::xml_node nodo, std::string_view local) {
  std::vector<pugi::xml_node> hijos;
  for (const auto hijo : nodo.children()) {
    if (Es(hijo, uri::kEsquema, local)) hijos.push_back(hijo);
  }
  return hijos;
}

std::vector<ColumnaEntrada> LeerReferidas(const std::vector<pugi::xml_node>& referencias,
                                          const std::vector<pugi::xml_node>& tipos) {
  std::unordered_map<std::string_view, pugi::xml_node, DispersionSinCaso, IgualdadSinCaso> por_nombre;
  for (const auto tipo : tipos) por_nombre.emplace(Atributo(tipo, "", "name"), tipo);
  std::vector<ColumnaEntrada> columnas;
  for (const auto referencia : referencias) {
    const auto tipo = por_nombre.find(Atributo(referencia, "", "type"));
    if (tipo != por_nombre.end() && !EsOculta(tipo->second)) columnas.push_back(LeerColumna(tipo->second));
  }
  return columnas;
}

}  // namespace

std::vector<ColumnaEntrada> LeerColumnas(pugi::xml_node esquema, pugi::xml_node elemento) {
  auto tipos = Hijos(elemento, "AttributeType");
  if (const auto referencias = Hijos(elemento, "attribute"); !referencias.empty()) {
    const auto sueltos = Hijos(esquema, "AttributeType");
    tipos.insert(tipos.end(), sueltos.begin(), sueltos.end());
    return LeerReferidas(referencias, tipos);
  }
  std::vector<ColumnaEntrada> columnas;
  for (const auto tipo : tipos) {
    if (!EsOculta(tipo)) columnas.push_back(LeerColumna(tipo));
  }
  if (std::all_of(columnas.begin(), columnas.end(), [](const auto& c) { return c.orden > 0; })) {
    std::stable_sort(columnas.begin(), columnas.end(), [](const auto& a, const auto& b) { return a.orden < b.orden; });
  }
  return columnas;
}

std::vector<AtributoAjeno> LeerAtributosDeTabla(pugi::xml_node elemento) {
  return Ajenos(elemento, [](std::string_view) { return true; });
}

}  // namespace utr
