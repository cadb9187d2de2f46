#include "configuration/ConfigColl.h"

#include <algorithm>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"

namespace utr {

namespace {

// The field that holds each column of the channel table, in the order of the table.
constexpr struct {
  std::string_view columna;
  MiembroConfig miembro;
} kMiembros[] = {
    {"Tipo", &Config::Tipo},
    {"Pila", &Config::Pila},
    {"Flags", &Config::Flags},
    {"TMed", &Config::TMed},
    {"TRead", &Config::TRead},
    {"TEval", &Config::TEval},
    {"TStorage", &Config::TStorage},
    {"TDiscret", &Config::TDiscret},
    {"TCero", &Config::TCero},
    {"TResetAlarma", &Config::TResetAlarma},
    {"MaxValid", &Config::MaxValid},
    {"MinValid", &Config::MinValid},
    {"MaxSubVal", &Config::MaxSubVal},
    {"MaxBajVal", &Config::MaxBajVal},
    {"MaxSubTx", &Config::MaxSubTx},
    {"MaxBajTx", &Config::MaxBajTx},
    {"AMax", &Config::AMax},
    {"AMin", &Config::AMin},
    {"AlSub", &Config::AlSub},
    {"AlBaj", &Config::AlBaj},
    {"AlMaxPico", &Config::AlMaxPico},
    {"AlMinPico", &Config::AlMinPico},
    {"RangoMax", &Config::RangoMax},
    {"RangoMin", &Config::RangoMin},
    {"Rango", &Config::Rango},
    {"Span", &Config::Span},
    {"Cero", &Config::Cero},
    {"Bits", &Config::Bits},
    {"Pagina", &Config::Pagina},
    {"Canal", &Config::Canal},
    {"CtePluvi", &Config::CtePluvi},
    {"NivRefLmn", &Config::NivRefLmn},
    {"Resolucion", &Config::Resolucion},
    {"Descripcion", &Config::Descripcion},
    {"Modificado", &Config::Modificado},
    {"Parametro", &Config::Parametro},
    {"Unidad", &Config::Unidad},
    {"RangoNegativo", &Config::RangoNegativo},
};
static_assert(std::equal(std::begin(kMiembros), std::end(kMiembros), kColumnasDeCanal.begin(), kColumnasDeCanal.end(),
                         [](const auto& campo, const ColumnaCanal& columna) {
                           return campo.columna == columna.nombre;
                         }),
              "each column has its field");

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

// Each of the three ways in which a column is read into its field.
struct Lectura {
  const Tabla& registro;
  std::string_view columna;
  Config& config;

  void operator()(std::string Config::*campo) const { config.*campo = TextoPresente(registro, columna); }
  void operator()(double Config::*campo) const { config.*campo = LeerConstante(TextoPresente(registro, columna)); }
  void operator()(bool Config::*campo) const { config.*campo = LeerLogico(registro, columna); }
};

void EscribirFila(Tabla& tabla, const Config& config) {
  tabla.AddNew();
  for (std::size_t i = 0; i < std::size(kMiembros); ++i) {
    std::visit([&](auto campo) { tabla.Set(i, Valor{config.*campo}); }, kMiembros[i].miembro);
  }
  tabla.UpdateBatch();
}

}  // namespace

const MiembroConfig& MiembroDeColumna(std::size_t columna) {
  if (columna >= std::size(kMiembros)) Lanzar(error::kLlamada, "ConfigColl");
  return kMiembros[columna].miembro;
}

std::string TextoDeColumna(const Config& config, std::size_t columna) {
  return std::visit([&config](auto campo) { return TextoDe(Valor{config.*campo}); }, MiembroDeColumna(columna));
}

ConfigPtr ConfigColl::Add(std::int16_t canal, const Tabla& registro, std::string_view clave) {
  if (ConfigPtr presente = Item(canal)) return presente;
  auto config = std::make_shared<Config>();
  IgnorandoErrores([&] {
    if (registro.BuscarCampo("Nombre") >= 0) config->Nombre = registro.Texto("Nombre");
  });
  for (const auto& campo : kMiembros) {
    IgnorandoErrores([&] { std::visit(Lectura{registro, campo.columna, *config}, campo.miembro); });
  }
  config->Key = ClaveDe(std::to_string(canal));
  Add(config, clave);
  return config;
}

void ConfigColl::Add(ConfigPtr config, std::string_view clave) {
  std::string clave_final(clave.empty() ? config->Key : clave);
  if (Buscar(clave_final) != Count()) return;
  claves_.push_back(std::move(clave_final));
  elementos_.push_back(std::move(config));
}

ConfigPtr ConfigColl::Item(std::int16_t canal) const {
  return Item(std::to_string(canal));
}

ConfigPtr ConfigColl::Item(std::string_view canal) const {
  const std::size_t lugar = Buscar(ClaveDe(canal));
  return lugar == Count() ? nullptr : elementos_[lugar];
}

void ConfigColl::Remove(std::size_t posicion) {
  if (posicion < 1 || posicion > Count()) Lanzar(error::kLlamada, "ConfigColl");
  const auto lugar = static_cast<std::ptrdiff_t>(posicion - 1);
  elementos_.erase(elementos_.begin() + lugar);
  claves_.erase(claves_.begin() + lugar);
}

void ConfigColl::Remove(std::string_view clave) {
  Remove(Buscar(clave) + 1);
}

TablaPtr ConfigColl::GetRecMembers(RegistroErrores& registro) const {
  TablaPtr tabla;
  RegistrandoYRelanzando(registro, "ConfigColl", "GetRecMembers", [&] {
    auto nueva = std::make_shared<Tabla>();
    AgregarColumnasDeCanales(*nueva);
    nueva->Open();
    for (const ConfigPtr& config : elementos_) EscribirFila(*nueva, *config);
    if (nueva->RecordCount() > 0) nueva->MoveFirst();
    tabla = std::move(nueva);
  });
  return tabla;
}

std::size_t ConfigColl::Buscar(std::string_view clave) const {
  const auto lugar =
      std::find_if(claves_.begin(), claves_.end(), [&](const std::string& una) { return IgualSinCaso(una, clave); });
  return static_cast<std::size_t>(lugar - claves_.begin());
}

}  // namespace utr
