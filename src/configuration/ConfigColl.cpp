#include "configuration/ConfigColl.h"

#include <algorithm>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"

namespace utr {

namespace {

struct ColumnaTexto {
  const char* nombre;
  std::uint32_t ancho;
  std::string Config::*miembro;
};

// The text columns in the order of the table, parted where the two columns of another type stand.
constexpr ColumnaTexto kHastaCanal[] = {
    {"Tipo", 5, &Config::Tipo},
    {"Pila", 5, &Config::Pila},
    {"Flags", 5, &Config::Flags},
    {"TMed", 10, &Config::TMed},
    {"TRead", 10, &Config::TRead},
    {"TEval", 10, &Config::TEval},
    {"TStorage", 10, &Config::TStorage},
    {"TDiscret", 10, &Config::TDiscret},
    {"TCero", 10, &Config::TCero},
    {"TResetAlarma", 10, &Config::TResetAlarma},
    {"MaxValid", 20, &Config::MaxValid},
    {"MinValid", 20, &Config::MinValid},
    {"MaxSubVal", 20, &Config::MaxSubVal},
    {"MaxBajVal", 20, &Config::MaxBajVal},
    {"MaxSubTx", 20, &Config::MaxSubTx},
    {"MaxBajTx", 20, &Config::MaxBajTx},
    {"AMax", 20, &Config::AMax},
    {"AMin", 20, &Config::AMin},
    {"AlSub", 20, &Config::AlSub},
    {"AlBaj", 20, &Config::AlBaj},
    {"AlMaxPico", 20, &Config::AlMaxPico},
    {"AlMinPico", 20, &Config::AlMinPico},
    {"RangoMax", 20, &Config::RangoMax},
    {"RangoMin", 20, &Config::RangoMin},
    {"Rango", 20, &Config::Rango},
    {"Span", 20, &Config::Span},
    {"Cero", 20, &Config::Cero},
    {"Bits", 5, &Config::Bits},
    {"Pagina", 5, &Config::Pagina},
    {"Canal", 30, &Config::Canal},
};
constexpr ColumnaTexto kHastaDescripcion[] = {
    {"NivRefLmn", 20, &Config::NivRefLmn},
    {"Resolucion", 30, &Config::Resolucion},
    {"Descripcion", 30, &Config::Descripcion},
};
constexpr ColumnaTexto kHastaElFin[] = {
    {"Parametro", 4, &Config::Parametro},
    {"Unidad", 4, &Config::Unidad},
    {"RangoNegativo", 4, &Config::RangoNegativo},
};
constexpr const char* kCtePluvi = "CtePluvi";
constexpr const char* kModificado = "Modificado";

std::string ClaveDe(std::string_view canal) {
  return "C" + std::string(Recortar(canal));
}

// A value that is missing or null can't be read into a field.
std::string TextoPresente(const Tabla& registro, std::string_view columna) {
  if (registro.EsNulo(columna)) Lanzar(error::kTipos, "ConfigColl");
  return registro.Texto(columna);
}

// Files written on a machine with the other decimal separator are read on this one.
double LeerConstante(std::string_view texto) {
  return LeerDoble(Reemplazar(texto, ",", "."));
}

bool LeerLogico(const Tabla& registro, std::string_view columna) {
  const std::string texto = TextoPresente(registro, columna);
  if (IgualSinCaso(texto, "True")) return true;
  if (IgualSinCaso(texto, "False")) return false;
  return LeerDoble(texto) != 0;
}

template <std::size_t N>
void CopiarColumnas(const Tabla& registro, const ColumnaTexto (&columnas)[N], Config& config) {
  for (const ColumnaTexto& columna : columnas)
    IgnorandoErrores([&] { config.*columna.miembro = TextoPresente(registro, columna.nombre); });
}

template <std::size_t N>
void AgregarTextos(Tabla& tabla, const ColumnaTexto (&columnas)[N]) {
  for (const ColumnaTexto& columna : columnas) tabla.Append(columna.nombre, TipoCampo::kVarChar, columna.ancho);
}

template <std::size_t N>
void EscribirColumnas(Tabla& tabla, const ColumnaTexto (&columnas)[N], const Config& config) {
  for (const ColumnaTexto& columna : columnas) tabla.Set(columna.nombre, config.*columna.miembro);
}

void EscribirFila(Tabla& tabla, const Config& config) {
  tabla.AddNew();
  EscribirColumnas(tabla, kHastaCanal, config);
  tabla.Set(kCtePluvi, Valor{config.CtePluvi});
  EscribirColumnas(tabla, kHastaDescripcion, config);
  tabla.Set(kModificado, Valor{config.Modificado});
  EscribirColumnas(tabla, kHastaElFin, config);
  tabla.UpdateBatch();
}

}  // namespace

void AgregarColumnasDeCanales(Tabla& tabla) {
  AgregarTextos(tabla, kHastaCanal);
  tabla.Append(kCtePluvi, TipoCampo::kDoble);
  AgregarTextos(tabla, kHastaDescripcion);
  tabla.Append(kModificado, TipoCampo::kLogico);
  AgregarTextos(tabla, kHastaElFin);
}

ConfigPtr ConfigColl::Add(std::int16_t canal, const Tabla& registro, std::string_view clave) {
  if (ConfigPtr presente = Item(canal)) return presente;
  auto config = std::make_shared<Config>();
  IgnorandoErrores([&] {
    if (registro.BuscarCampo("Nombre") >= 0) config->Nombre = registro.Texto("Nombre");
  });
  CopiarColumnas(registro, kHastaCanal, *config);
  IgnorandoErrores([&] { config->CtePluvi = LeerConstante(TextoPresente(registro, kCtePluvi)); });
  CopiarColumnas(registro, kHastaDescripcion, *config);
  IgnorandoErrores([&] { config->Modificado = LeerLogico(registro, kModificado); });
  CopiarColumnas(registro, kHastaElFin, *config);
  config->Key = ClaveDe(std::to_string(canal));
  const std::string clave_final = clave.empty() ? config->Key : std::string(clave);
  if (Buscar(clave_final) == elementos_.end()) elementos_.emplace_back(clave_final, config);
  return config;
}

ConfigPtr ConfigColl::Item(std::int16_t canal) const {
  return Item(std::to_string(canal));
}

ConfigPtr ConfigColl::Item(std::string_view canal) const {
  const auto lugar = Buscar(ClaveDe(canal));
  return lugar == elementos_.end() ? nullptr : lugar->second;
}

void ConfigColl::Remove(std::size_t posicion) {
  if (posicion < 1 || posicion > elementos_.size()) Lanzar(error::kLlamada, "ConfigColl");
  elementos_.erase(elementos_.begin() + static_cast<std::ptrdiff_t>(posicion - 1));
}

void ConfigColl::Remove(std::string_view clave) {
  const auto lugar = Buscar(clave);
  if (lugar == elementos_.end()) Lanzar(error::kLlamada, "ConfigColl");
  elementos_.erase(lugar);
}

TablaPtr ConfigColl::GetRecMembers(RegistroErrores& registro) const {
  TablaPtr tabla;
  RegistrandoYRelanzando(registro, "ConfigColl", "GetRecMembers", [&] {
    auto nueva = std::make_shared<Tabla>();
    AgregarColumnasDeCanales(*nueva);
    nueva->Open();
    for (const auto& [clave, config] : elementos_) EscribirFila(*nueva, *config);
    if (nueva->RecordCount() > 0) nueva->MoveFirst();
    tabla = std::move(nueva);
  });
  return tabla;
}

ConfigColl::Elementos::const_iterator ConfigColl::Buscar(std::string_view clave) const {
  return std::find_if(elementos_.begin(), elementos_.end(),
                      [&](const auto& elemento) { return IgualSinCaso(elemento.first, clave); });
}

}  // namespace utr
