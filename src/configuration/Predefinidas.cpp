#include "configuration/Predefinidas.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/Utilidades.h"

namespace utr {
namespace {

using C = CampoSensor;

constexpr char kSeparador = '#';
constexpr std::string_view kExtension = ".ipf";
constexpr const char* kColumnas[] = {"Id", "Nombre", "Fecha", "IdDescripcionSensores", "Parametros"};

// Captions by position. Their spelling is that of the central stations.
constexpr const char* kAnalogica[] = {
    "TReadLmn",    "TEvalLmn",    "TStorageLmn",    "TDiscretLmn",       "TMedLmn",           "TResetAlarmLmn",
    "MaxLmn",      "MinLmn",      "MaxDeltaAscLmn", "MaxDeltaDesLmn",    "AlarmLmn",          "AlarmHighLmn",
    "AlarmLowLmn", "AlarmAscLmn", "AlarmDesLmn",    "DeltaAscTxCondLmn", "DeltaDesTxCondLmn", "NivRefLmn"};
constexpr const char* kMeteorologica[] = {
    "TReadMtr",       "TStorageMtr",     "TEvalMtr",       "TDiscretMTr",     "TMedMtr",        "TResetAlarmMtr",
    "HabilAlaramMtr", "MaxMtr",          "MinMtr",         "AlarmHighMtr",    "AlarmLowMtr",    "AlarmAscMtr",
    "AlarmDesMtr",    "AlarmHighMtrMax", "AlarmLowMtrMin", "AlarmPicoMtrMax", "AlarmPicoMtrMin"};
constexpr const char* kSupervisionAnalogica[] = {"TEvalAls", "TResetAlarmAls", "HabilAlarmAls", "MaxAls",
                                                 "MinAls",   "AlarmHighAls",   "AlarmLowAls"};
constexpr const char* kPluviometrica[] = {"TReadPlv", "TStoragePlv", "TEvalPlv",      "TDiscretPlv",
                                          "TCeroPlv", "MaxPlv",      "DeltaTxCondPlv"};
constexpr const char* kSupervisionDigital[] = {"TEvalDls", "TResetAlarmDls", "HabilAlarmDls", "EstNormalDls"};

constexpr std::array<FamiliaSensor, kFamilias> kDatos{{
    {"lblDatos", "Analógico", kAnalogica},
    {"lblDatosMtr", "Meteorológico", kMeteorologica},
    {"lblDatosAnaSuper", "Supervisión Analógica", kSupervisionAnalogica},
    {"lblDatosDigPluvio", "Pluviométrico", kPluviometrica},
    {"lblDatosDigSuper", "Supervisión Digital", kSupervisionDigital},
}};

// Where a field takes its text from: a position as it stands, or no further than an end of the range; or a fixed text.
enum class Origen : std::uint8_t { kPosicion, kHastaMaximo, kHastaMinimo, kFijo };
struct Toma {
  C campo;
  Origen origen;
  std::size_t posicion;
  const char* texto = nullptr;
};
constexpr Toma De(C campo, std::size_t posicion) {
  return {campo, Origen::kPosicion, posicion};
}
constexpr Toma Max(C campo, std::size_t posicion) {
  return {campo, Origen::kHastaMaximo, posicion};
}
constexpr Toma Min(C campo, std::size_t posicion) {
  return {campo, Origen::kHastaMinimo, posicion};
}
constexpr Toma Fijo(C campo, const char* texto = "0") {
  return {campo, Origen::kFijo, 0, texto};
}

// Lower limits and alarms, too, take the smaller one of the value and the end of the range.
constexpr Toma kTomasAnalogica[] = {
    De(C::kTMed, 4),      De(C::kTRead, 0),    De(C::kTEval, 1),        De(C::kTStorage, 2),
    De(C::kTDiscret, 3),  Fijo(C::kTCero),     De(C::kTResetAlarma, 5), Max(C::kMaxValid, 6),
    Min(C::kMinValid, 7), Max(C::kAMax, 11),   Min(C::kAMin, 12),       Max(C::kAlSub, 13),
    Min(C::kAlBaj, 14),   Fijo(C::kAlMaxPico), Fijo(C::kAlMinPico),     De(C::kNivRefLmn, 17),
};
constexpr Toma kTomasMeteorologica[] = {
    De(C::kTMed, 4),   De(C::kTRead, 0),        De(C::kTEval, 2),     De(C::kTStorage, 1),    De(C::kTDiscret, 3),
    Fijo(C::kTCero),   De(C::kTResetAlarma, 5), Max(C::kMaxValid, 7), Min(C::kMinValid, 8),   Max(C::kAMax, 9),
    Min(C::kAMin, 10), Max(C::kAlSub, 11),      Min(C::kAlBaj, 12),   Max(C::kAlMaxPico, 13), Min(C::kAlMinPico, 14),
};
constexpr Toma kTomasSupervisionAnalogica[] = {
    Fijo(C::kTMed, "2"), De(C::kTRead, 0),        De(C::kTEval, 0),     De(C::kTStorage, 0),  De(C::kTDiscret, 0),
    Fijo(C::kTCero),     De(C::kTResetAlarma, 1), Max(C::kMaxValid, 3), Min(C::kMinValid, 4), Max(C::kAMax, 5),
    Min(C::kAMin, 6),    Fijo(C::kAlSub),         Fijo(C::kAlBaj),      Fijo(C::kAlMaxPico),  Fijo(C::kAlMinPico),
};
constexpr Toma kTomasPluviometrica[] = {
    Fijo(C::kTMed, "2"), De(C::kTRead, 0),       De(C::kTEval, 0),     De(C::kTStorage, 1), De(C::kTDiscret, 3),
    De(C::kTCero, 4),    Fijo(C::kTResetAlarma), Max(C::kMaxValid, 5), Fijo(C::kMinValid),  Fijo(C::kAMax),
    Fijo(C::kAMin),      Fijo(C::kAlSub),        Fijo(C::kAlBaj),      Fijo(C::kAlMaxPico), Fijo(C::kAlMinPico),
};
constexpr Toma kTomasSupervisionDigital[] = {
    Fijo(C::kTMed, "2"), De(C::kTRead, 0),        De(C::kTEval, 0),   De(C::kTStorage, 0), De(C::kTDiscret, 0),
    Fijo(C::kTCero),     De(C::kTResetAlarma, 1), Fijo(C::kMaxValid), Fijo(C::kMinValid),  Fijo(C::kAMax),
    Fijo(C::kAMin),      Fijo(C::kAlSub),         Fijo(C::kAlBaj),    Fijo(C::kAlMaxPico), Fijo(C::kAlMinPico),
};

// What a family does with its values. An option without a position isn't the set's to decide.
struct Reparto {
  std::span<const Toma> tomas;
  std::optional<std::size_t> alarma{};
  std::optional<std::size_t> estado_normal{};
  bool sin_alarma = false;  // the alarm goes off
};
constexpr std::array<Reparto, kFamilias> kRepartos{{
    {.tomas = kTomasAnalogica, .alarma = 10},
    {.tomas = kTomasMeteorologica, .alarma = 6},
    {.tomas = kTomasSupervisionAnalogica, .alarma = 2},
    {.tomas = kTomasPluviometrica, .sin_alarma = true},
    {.tomas = kTomasSupervisionDigital, .alarma = 2, .estado_normal = 3},
}};

bool EsDeTexto(TipoCampo tipo) {
  constexpr std::array kTextos{TipoCampo::kBstr,     TipoCampo::kVariante,    TipoCampo::kChar,
                               TipoCampo::kWChar,    TipoCampo::kVarChar,     TipoCampo::kLongVarChar,
                               TipoCampo::kVarWChar, TipoCampo::kLongVarWChar};
  return std::ranges::find(kTextos, tipo) != kTextos.end();
}

bool Aplica(const Reparto& reparto, std::size_t posicion) {
  return reparto.alarma == posicion || reparto.estado_normal == posicion ||
         std::ranges::any_of(reparto.tomas, [posicion](const Toma& toma) {
           return toma.origen != Origen::kFijo && toma.posicion == posicion;
         });
}

void ExigirValores(const FamiliaSensor& familia, const std::vector<std::string>& valores) {
  if (valores.size() < familia.rotulos.size()) Lanzar(error::kSubindice, "AplicarPredefinida");
  for (std::size_t i = 0; i < familia.rotulos.size(); ++i) {
    if (EsNumeroSimple(valores[i])) continue;
    throw Error(
        error::kTipos, "AplicarPredefinida",
        fmt::format("El valor de la posición {} ({}) no es un número: \"{}\"", i, familia.rotulos[i], valores[i]));
  }
}

std::string TextoDeToma(const Toma& toma, const std::vector<std::string>& pedidos, const ValoresSensor& valores,
                        std::vector<ValorRebajado>& rebajados) {
  if (toma.origen == Origen::kFijo) return toma.texto;
  const std::string& pedido = pedidos[toma.posicion];
  if (toma.origen == Origen::kPosicion) {
    // Times are typed as digits alone, and the unit cuts what stands behind a point.
    if (!DatosDe(toma.campo).decimal && pedido.find_first_not_of("0123456789") != std::string::npos) {
      throw Error(error::kTipos, "AplicarPredefinida",
                  fmt::format("El valor de la posición {} no es un número entero: \"{}\"", toma.posicion, pedido));
    }
    return pedido;
  }
  const double rango = valores.Numero(toma.origen == Origen::kHastaMaximo ? C::kRangoMax : C::kRangoMin);
  const double puesto = Minimo({rango, Val(pedido)});
  std::string texto = TextoGeneral(puesto);
  if (puesto < Val(pedido)) rebajados.push_back({toma.campo, pedido, texto});
  return texto;
}

AplicacionPredefinida TodoEnCero() {
  AplicacionPredefinida aplicacion;
  for (const auto campos : {Periodos(), Validaciones(), Alarmas()}) {
    for (const CampoSensor campo : campos) aplicacion.valores.push_back({campo, "0"});
  }
  return aplicacion;
}

}  // namespace

const FamiliaSensor* FamiliaDe(int numero) {
  return numero >= 1 && numero <= kFamilias ? &kDatos.at(static_cast<std::size_t>(numero - 1)) : nullptr;
}

int FamiliaDeTipo(std::int16_t tipo) {
  constexpr std::array kPorTipo{1, 2, 2, 2, 3, 4, 0, 5};
  return tipo >= 0 && static_cast<std::size_t>(tipo) < kPorTipo.size() ? kPorTipo.at(static_cast<std::size_t>(tipo))
                                                                       : 0;
}

TablaPtr LeerPredefinidas(const std::filesystem::path& ruta) {
  auto conjuntos = std::make_shared<Tabla>();
  conjuntos->Open(ruta);
  for (const char* columna : kColumnas) conjuntos->IndiceCampo(columna);
  return conjuntos;
}

void FiltrarFamilia(Tabla& conjuntos, int familia) {
  conjuntos.Filter("");
  conjuntos.Filter(fmt::format("IdDescripcionSensores= {}", familia));
}

std::optional<std::string> CampoDelSensor(const Tabla& conjuntos) {
  for (std::size_t i = 0; i < conjuntos.FieldCount(); ++i) {
    const Campo& campo = conjuntos.Field(i);
    const bool conocida =
        std::ranges::any_of(kColumnas, [&campo](const char* columna) { return IgualSinCaso(columna, campo.nombre); });
    if (!conocida && EsDeTexto(campo.tipo)) return campo.nombre;
  }
  return std::nullopt;
}

std::filesystem::path JuntoAlPrograma(const std::filesystem::path& archivo, const std::filesystem::path& carpeta) {
  namespace fs = std::filesystem;
  if (fs::weakly_canonical(fs::absolute(archivo).parent_path()) == fs::weakly_canonical(carpeta)) return archivo;
  if (!IgualSinCaso(archivo.extension().string(), kExtension)) Lanzar(error::kLlamada, "JuntoAlPrograma");
  fs::path copia = carpeta / archivo.filename();
  EscribirEntero(copia, [&archivo](std::ostream& salida) {
    errno = 0;
    std::ifstream entrada(archivo, std::ios::binary);
    if (!entrada || !(salida << entrada.rdbuf()))
      throw Error(error::kArchivo, "JuntoAlPrograma", "No se puede copiar el archivo " + archivo.string(), errno);
  });
  return copia;
}

std::vector<std::string> ValoresDePredefinida(std::string_view parametros) {
  std::vector<std::string> valores;
  if (parametros.empty()) return valores;
  for (const std::string_view valor : Separar(parametros, kSeparador)) valores.emplace_back(Recortar(valor));
  return valores;
}

AplicacionPredefinida AplicarPredefinida(std::int16_t tipo, std::string_view parametros, const ValoresSensor& valores) {
  const int numero = FamiliaDeTipo(tipo);
  const FamiliaSensor* familia = FamiliaDe(numero);
  if (familia == nullptr) return TodoEnCero();
  const std::vector<std::string> pedidos = ValoresDePredefinida(parametros);
  ExigirValores(*familia, pedidos);

  const Reparto& reparto = kRepartos.at(static_cast<std::size_t>(numero - 1));
  AplicacionPredefinida aplicacion;
  for (const Toma& toma : reparto.tomas)
    aplicacion.valores.push_back({toma.campo, TextoDeToma(toma, pedidos, valores, aplicacion.rebajados)});
  if (reparto.sin_alarma) aplicacion.alarma = false;
  if (reparto.alarma) aplicacion.alarma = Val(pedidos[*reparto.alarma]) != 0;
  if (reparto.estado_normal) aplicacion.estado_normal = Val(pedidos[*reparto.estado_normal]) == 1;
  for (std::size_t i = 0; i < familia->rotulos.size(); ++i) {
    if (!Aplica(reparto, i)) aplicacion.sin_aplicar.push_back({familia->rotulos[i], pedidos[i]});
  }
  return aplicacion;
}

std::vector<std::string> RotulosSinAplicar(int familia) {
  std::vector<std::string> rotulos;
  const FamiliaSensor* datos = FamiliaDe(familia);
  if (datos == nullptr) return rotulos;
  const Reparto& reparto = kRepartos.at(static_cast<std::size_t>(familia - 1));
  for (std::size_t i = 0; i < datos->rotulos.size(); ++i) {
    if (!Aplica(reparto, i)) rotulos.emplace_back(datos->rotulos[i]);
  }
  return rotulos;
}

std::string AvisoDePredefinida(const AplicacionPredefinida& aplicacion) {
  std::vector<std::string> lineas;
  for (const ValorRebajado& valor : aplicacion.rebajados)
    lineas.push_back(fmt::format("{} {} en lugar de {}, por el rango del sensor", DatosDe(valor.campo).rotulo,
                                 valor.puesto, valor.pedido));
  std::vector<std::string> sueltos;
  for (const ValorSinAplicar& valor : aplicacion.sin_aplicar)
    sueltos.push_back(fmt::format("{} ({})", valor.rotulo, valor.valor));
  if (!sueltos.empty()) lineas.push_back("No se aplican: " + Unir(sueltos, ", "));
  return Unir(lineas, "\n");
}

}  // namespace utr
