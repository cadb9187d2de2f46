#include "configuration/CambiosConfiguracion.h"

#include <cmath>
#include <optional>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/CamposSensor.h"
#include "configuration/Canales.h"
#include "configuration/FilasDeCanales.h"

namespace utr {
namespace {

constexpr std::string_view kCanal = "Canal";
constexpr std::string_view kFlags = "Flags";
constexpr std::string_view kModificado = "Modificado";

// Those that are no field with a text of the sensor dialog.
constexpr struct {
  std::string_view columna;
  const char* rotulo;
} kRotulos[] = {
    {"Tipo", "Tipo de Sensor:"},
    {"Pila", "Pila"},
    {"Rango", "Rango"},
    {"Pagina", "Página"},
    {"Resolucion", "Resolución:"},
    {"Descripcion", "Descripción"},
    {"Parametro", "Parámetro:"},
    {"Unidad", "Unidad:"},
    {"RangoNegativo", "Pendiente"},
};

// The field of the sensor dialog that edits a column.
std::optional<CampoSensor> CampoDeColumna(std::size_t columna) {
  const MiembroConfig& miembro = MiembroDeColumna(columna);
  if (std::holds_alternative<double Config::*>(miembro)) return CampoSensor::kPluviometro;
  const auto* texto = std::get_if<std::string Config::*>(&miembro);
  for (std::size_t i = 0; texto != nullptr && i < kCamposDeTexto; ++i) {
    const auto campo = static_cast<CampoSensor>(i);
    if (DatosDe(campo).valor == *texto) return campo;
  }
  return std::nullopt;
}

// --- Codes as words; empty: the code has none ------------------------------------------------------------------------

struct Codigo {
  std::string_view texto;
  std::int16_t canal;
  Catalogo& catalogo;
};

std::string PalabraTipo(const Codigo& codigo) {
  return DescripcionTipo(codigo.texto, codigo.canal);
}
std::string PalabraParametro(const Codigo& codigo) {
  if (MismoValor(codigo.texto, "0")) return "(ninguno)";
  return codigo.catalogo.DescripcionParametro(codigo.texto, 6);  // a kind without a word of its own
}
std::string PalabraUnidad(const Codigo& codigo) {
  const std::string palabra = MismoValor(codigo.texto, "0") ? "-" : codigo.catalogo.DescripcionUnidad(codigo.texto);
  return palabra == " - " ? std::string() : palabra;
}
std::string PalabraResolucion(const Codigo& codigo) {
  for (const Resolucion& resolucion : Resoluciones()) {
    if (MismoValor(codigo.texto, std::to_string(resolucion.codigo))) return resolucion.texto;
  }
  return {};
}
std::string PalabraPendiente(const Codigo& codigo) {
  return MismoValor(codigo.texto, "55") ? "PEND.NEG" : "PEND.POS";
}

constexpr struct {
  std::string_view columna;
  std::string (*palabra)(const Codigo& codigo);
} kPalabras[] = {{"Tipo", PalabraTipo},
                 {"Parametro", PalabraParametro},
                 {"Unidad", PalabraUnidad},
                 {"Resolucion", PalabraResolucion},
                 {"RangoNegativo", PalabraPendiente}};

std::string EnPalabras(std::string_view columna, const Codigo& codigo) {
  for (const auto& p : kPalabras) {
    if (p.columna != columna || codigo.texto.empty()) continue;
    if (std::string palabra = p.palabra(codigo); !palabra.empty()) return palabra;
  }
  return std::string(codigo.texto);
}

// --- Options of Flags
// --------------------------------------------------------------------------------------------------

struct Opcion {
  std::uint8_t valor;
  const char* rotulo;
  std::optional<TipoSensor> tipos[2];  // the kinds on which the option is that; none: on the others
  const char* no = "No";
  const char* si = "Si";
};
constexpr Opcion kOpcionesDeFlags[] = {
    {1, "Habilitado", {}},
    {2, "Habilitar Alarmas (se evaluan cada TEval) :", {}},
    {4, "Estado Normal:", {}, "12 V  |  Cerrado", "0 V  |  Abierto"},
    {8, "Registro Diferencial", {TipoSensor::kNivel, TipoSensor::kMeteorologico}},
    {8, "Pluviometro 3 hilos", {}},
    {16, "Registro Diferencial", {TipoSensor::kPluviometro}},
    {16, "Filtro de Olas", {}},
};
constexpr unsigned kOpcionesConNombre = 32;

bool EsDelTipo(const Opcion& opcion, std::optional<TipoSensor> tipo) {
  return !opcion.tipos[0] || opcion.tipos[0] == tipo || (opcion.tipos[1] && opcion.tipos[1] == tipo);
}

class Comparador {
 public:
  explicit Comparador(Catalogo& catalogo) : catalogo_(catalogo) {}

  void Comparar(std::int16_t canal, const Config& antes, const Config& ahora) {
    canal_ = canal;
    for (std::size_t i = 0; i < kColumnasDeCanal.size(); ++i) {
      const std::string_view columna = kColumnasDeCanal[i].nombre;
      const std::string viejo = TextoDeColumna(antes, i);
      const std::string nuevo = TextoDeColumna(ahora, i);
      if (columna == kModificado || columna == kCanal || MismoValor(viejo, nuevo)) continue;
      if (columna == kFlags) {
        CompararFlags(viejo, nuevo, LeerTipo(ahora.Tipo));
      } else {
        Anotar(Rotulo(i, ahora), EnPalabras(columna, {viejo, canal, catalogo_}), viejo,
               EnPalabras(columna, {nuevo, canal, catalogo_}), nuevo);
      }
    }
  }

  void Anotar(std::int16_t canal, std::string antes, std::string ahora) {
    cambios_.push_back({canal, RotuloDeColumna(kCanal), std::move(antes), std::move(ahora)});
  }

  std::vector<CambioConfiguracion> Cambios() { return std::move(cambios_); }

 private:
  // Two codes with one word are told apart by the code.
  void Anotar(const std::string& campo, std::string antes, const std::string& viejo, std::string ahora,
              const std::string& nuevo) {
    if (antes == ahora) {
      antes += " (" + viejo + ")";
      ahora += " (" + nuevo + ")";
    }
    cambios_.push_back({canal_, campo, std::move(antes), std::move(ahora)});
  }

  void CompararFlags(const std::string& viejo, const std::string& nuevo, std::optional<TipoSensor> tipo) {
    const std::uint8_t antes = LeerFlags(viejo);
    const std::uint8_t ahora = LeerFlags(nuevo);
    unsigned dichas = 0;  // options that one name was found for
    for (const Opcion& opcion : kOpcionesDeFlags) {
      if ((dichas & opcion.valor) != 0 || ((antes ^ ahora) & opcion.valor) == 0 || !EsDelTipo(opcion, tipo)) continue;
      dichas |= opcion.valor;
      const auto palabra = [&](unsigned flags) { return (flags & opcion.valor) != 0 ? opcion.si : opcion.no; };
      cambios_.push_back({canal_, opcion.rotulo, palabra(antes), palabra(ahora)});
    }
    const bool difiere_el_resto =
        std::floor(Val(viejo) / kOpcionesConNombre) != std::floor(Val(nuevo) / kOpcionesConNombre);
    if (dichas == 0 || difiere_el_resto) cambios_.push_back({canal_, std::string(kFlags), viejo, nuevo});
  }

  // The reference level is another thing on other kinds.
  std::string Rotulo(std::size_t columna, const Config& config) const {
    if (CampoDeColumna(columna) == CampoSensor::kNivRefLmn) {
      const auto tipo = LeerTipo(config.Tipo);
      const auto cara = tipo ? CaraDe(static_cast<std::int16_t>(*tipo), canal_) : std::nullopt;
      if (cara) return RotuloNivel(*cara);
    }
    return RotuloDeColumna(kColumnasDeCanal[columna].nombre);
  }

  Catalogo& catalogo_;
  std::int16_t canal_ = 0;
  std::vector<CambioConfiguracion> cambios_;
};

// A channel that holds nothing at all.
Config SinNada() {
  Config config;
  config.NivRefLmn.clear();
  config.Parametro.clear();
  return config;
}

std::int16_t NumeroDe(const Config& config) {
  return NumeroDeFila(config.Canal).value_or(std::int16_t{0});
}

}  // namespace

std::string RotuloDeColumna(std::string_view columna) {
  for (const auto& r : kRotulos) {
    if (IgualSinCaso(r.columna, columna)) return r.rotulo;
  }
  for (std::size_t i = 0; i < kColumnasDeCanal.size(); ++i) {
    if (!IgualSinCaso(kColumnasDeCanal[i].nombre, columna)) continue;
    if (const auto campo = CampoDeColumna(i)) return DatosDe(*campo).rotulo;
  }
  return std::string(columna);
}

bool MismoValor(std::string_view a, std::string_view b) {
  if (a == b) return true;
  const auto numero = [](std::string_view texto) {
    return texto.find(',') == std::string_view::npos && EsNumerico(texto);
  };
  return numero(a) && numero(b) && CompararNumeros(a, b) == std::strong_ordering::equal;
}

std::vector<CambioConfiguracion> CambiosDe(const ConfigColl& inicial, const ConfigColl& ahora, Catalogo& catalogo) {
  Comparador comparador(catalogo);
  for (const ConfigPtr& config : ahora) {
    const std::int16_t canal = NumeroDe(*config);
    const ConfigPtr antes = inicial.Item(canal);
    if (!antes) comparador.Anotar(canal, "no está", std::to_string(canal));
    comparador.Comparar(canal, antes ? *antes : SinNada(), *config);
  }
  for (const ConfigPtr& config : inicial) {
    const std::int16_t canal = NumeroDe(*config);
    if (!ahora.Item(canal)) comparador.Anotar(canal, std::to_string(canal), "no se escribe");
  }
  return comparador.Cambios();
}

TablaPtr TablaDeCambios(const std::vector<CambioConfiguracion>& cambios) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* columna : {"NroCanal", "Canal", "Campo", "ValorUTR", "ValorNuevo"})
    tabla->Append(columna, TipoCampo::kVarChar, 50);
  tabla->Open();
  for (const CambioConfiguracion& cambio : cambios) {
    tabla->AddNew();
    tabla->Set("NroCanal", std::to_string(cambio.canal));
    tabla->Set("Canal", NombreCanal(cambio.canal));
    tabla->Set("Campo", cambio.campo);
    tabla->Set("ValorUTR", cambio.en_la_utr);
    tabla->Set("ValorNuevo", cambio.nuevo);
  }
  tabla->UpdateBatch();
  if (!cambios.empty()) tabla->MoveFirst();
  return tabla;
}

}  // namespace utr
