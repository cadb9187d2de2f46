#include "driver/simulated/unit/Canales.h"

#include <algorithm>
#include <cmath>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/TablasEntregadas.h"
#include "driver/simulated/unit/CanalesDeFabrica.h"

namespace utr::simulada {

namespace {

constexpr int kPilaDelPluviometro = 8;
constexpr double kMayorEntero = 65535;  // of the unit's own numbers
// "Name=text" pairs joined by ";" into the row.
void PonerPares(std::vector<std::string>& fila, std::string_view pares) {
  for (const std::string_view par : Separar(pares, ';')) {
    const std::size_t igual = par.find('=');
    fila[LugarDeColumna(par.substr(0, igual))] = par.substr(igual + 1);
  }
}

std::vector<std::string> FilaDeFabrica(int canal) {
  std::vector<std::string> fila(ColumnasDeUnidad().size());
  PonerPares(fila, kComunesDeFabrica);
  PonerPares(fila, kCanalesDeFabrica[static_cast<std::size_t>(canal - 1)]);
  fila[LugarDeColumna("Canal")] = std::to_string(canal);
  return fila;
}

// The channel that a row names, 0 for none of the 23.
int CanalDeFila(const Tabla& tabla, std::size_t campo) {
  const double numero = Val(tabla.Texto(campo));
  return numero >= 1 && numero <= kCanales && numero == std::floor(numero) ? static_cast<int>(numero) : 0;
}

double Numero(const std::vector<std::string>& fila, std::string_view columna) {
  return NumeroDeTexto(fila[LugarDeColumna(columna)]);
}

int NumeroEntero(const std::vector<std::string>& fila, const char* columna) {
  return static_cast<int>(std::clamp(Numero(fila, columna), 0.0, kMayorEntero));
}

// The kinds in which the unit works with a column. Of a digital input it knows the flags alone.
using Tipo = std::optional<TipoSensor>;
bool EnTodos(Tipo /*tipo*/) {
  return true;
}
bool EnLosMedidos(Tipo tipo) {
  return tipo != TipoSensor::kSupervisionDigital;
}
bool EnLluvia(Tipo tipo) {
  return tipo == TipoSensor::kPluviometro;
}
bool EnLosDeCurva(Tipo tipo) {
  return GuardaHistoria(tipo) && !EnLluvia(tipo);
}
bool EnLosDeAlarma(Tipo tipo) {
  return EnLosMedidos(tipo) && !EnLluvia(tipo);
}

// What the unit asks of a column: a number in these kinds, and one that isn't negative where it counts minutes or holds
// bits. In any other kind the column may hold anything.
constexpr struct {
  std::string_view columna;
  bool (*cuenta)(Tipo);
  bool con_signo;
} kExigencias[] = {
    {"Flags", EnTodos, false},         {"TMed", EnLosDeCurva, false},          {"TRead", EnLosMedidos, false},
    {"TEval", EnLosMedidos, false},    {"TStorage", GuardaHistoria, false},    {"TDiscret", GuardaHistoria, false},
    {"TCero", EnLluvia, false},        {"TResetAlarma", EnLosDeAlarma, false}, {"MaxValid", EnLosMedidos, true},
    {"MinValid", EnLosMedidos, true},  {"MaxSubVal", EnLosMedidos, true},      {"MaxBajVal", EnLosMedidos, true},
    {"MaxSubTx", EnLosMedidos, true},  {"MaxBajTx", EnLosMedidos, true},       {"AMax", EnLosMedidos, true},
    {"AMin", EnLosMedidos, true},      {"AlSub", EnLosMedidos, true},          {"AlBaj", EnLosMedidos, true},
    {"AlMaxPico", EnLosMedidos, true}, {"AlMinPico", EnLosMedidos, true},      {"RangoMax", EnLosMedidos, true},
    {"RangoMin", EnLosMedidos, true},  {"Span", EnLosMedidos, true},           {"Cero", EnLosMedidos, true},
    {"Bits", EnLosMedidos, true},      {"CtePluvi", EnLosMedidos, true},       {"NivRefLmn", EnLosMedidos, true},
};

// A text that can be read as a number, if only as 0: an empty one, and what begins like a number.
bool EsLegible(std::string_view texto) {
  texto = Recortar(texto);
  return texto.empty() || std::string_view{"0123456789+-.,"}.find(texto.front()) != std::string_view::npos;
}

// The unit takes a row that it can work with: of a kind that it knows, with numbers where it needs them.
bool EsAceptable(const std::vector<std::string>& fila) {
  const std::string& texto_tipo = fila[LugarDeColumna("Tipo")];
  const auto tipo = LeerTipo(texto_tipo);
  if (!tipo || !EsLegible(texto_tipo)) return false;
  return std::all_of(std::begin(kExigencias), std::end(kExigencias), [&](const auto& exigencia) {
    if (!exigencia.cuenta(tipo)) return true;
    const double numero = Numero(fila, exigencia.columna);
    const bool en_rango = exigencia.con_signo ? std::isfinite(numero) : numero >= 0 && numero <= kMayorEntero;
    return en_rango && EsLegible(fila[LugarDeColumna(exigencia.columna)]);
  });
}

ParametrosCanal LeerParametros(const std::vector<std::string>& fila, int canal) {
  ParametrosCanal p;
  p.canal = canal;
  p.tipo = LeerTipo(fila[LugarDeColumna("Tipo")]);
  p.pila = fila[LugarDeColumna("Pila")].empty() ? kSinPila : NumeroEntero(fila, "Pila");
  p.flags = static_cast<unsigned>(NumeroEntero(fila, "Flags"));
  p.t_read = NumeroEntero(fila, "TRead");
  p.t_eval = NumeroEntero(fila, "TEval");
  p.t_storage = NumeroEntero(fila, "TStorage");
  p.t_discret = NumeroEntero(fila, "TDiscret");
  p.t_cero = NumeroEntero(fila, "TCero");
  p.rango_min = Numero(fila, "RangoMin");
  p.rango_max = Numero(fila, "RangoMax");
  p.cero = Numero(fila, "Cero");
  p.span = Numero(fila, "Span");
  p.cte_pluvi = Numero(fila, "CtePluvi");
  p.max_valid = Numero(fila, "MaxValid");
  p.min_valid = Numero(fila, "MinValid");
  p.max_sub_tx = Numero(fila, "MaxSubTx");
  p.max_baj_tx = Numero(fila, "MaxBajTx");
  p.a_max = Numero(fila, "AMax");
  p.a_min = Numero(fila, "AMin");
  p.al_sub = Numero(fila, "AlSub");
  p.al_baj = Numero(fila, "AlBaj");
  p.al_max_pico = Numero(fila, "AlMaxPico");
  p.al_min_pico = Numero(fila, "AlMinPico");
  p.referencia = Numero(fila, "NivRefLmn");
  return p;
}

}  // namespace

std::uint16_t ParametrosCanal::Cuentas(double valor) const {
  const double rango = Rango();
  const double cuentas = rango == 0 ? cero : cero + (valor - rango_min) * span / rango;
  return static_cast<std::uint16_t>(std::lround(std::clamp(cuentas, 0.0, 65535.0)));
}

Canales::Canales() {
  for (int canal = 1; canal <= kCanales; ++canal) filas_.push_back(FilaDeFabrica(canal));
  RehacerParametros();
}

void Canales::RehacerParametros() {
  for (std::size_t i = 0; i < parametros_.size(); ++i) {
    parametros_[i] = LeerParametros(filas_[i], static_cast<int>(i) + 1);
  }
}

bool Canales::Mezclar(Tabla& tabla) {
  const TablaPtr clon = ALaVista(tabla);
  const std::size_t campo_canal = clon->IndiceCampo("Canal");
  auto filas = filas_;
  for (; !clon->Eof(); clon->MoveNext()) {
    const int canal = CanalDeFila(*clon, campo_canal);
    if (canal == 0) return false;
    auto& fila = filas[static_cast<std::size_t>(canal - 1)];
    for (std::size_t c = 0; c < fila.size(); ++c) {
      const int campo = clon->BuscarCampo(ColumnasDeUnidad()[c].nombre);
      if (campo >= 0) fila[c] = clon->Texto(static_cast<std::size_t>(campo));
    }
    fila[LugarDeColumna("Canal")] = std::to_string(canal);
    if (!EsAceptable(fila)) return false;
  }
  filas_ = std::move(filas);
  RehacerParametros();
  RepartirPilas();
  return true;
}

bool Canales::Reemplazar(Tabla& tabla) {
  auto antes = filas_;
  for (auto& fila : filas_) fila[LugarDeColumna("Flags")] = "0";
  bool bien = false;
  try {
    bien = Mezclar(tabla);
  } catch (...) {
    filas_ = std::move(antes);
    throw;
  }
  if (!bien) filas_ = std::move(antes);
  return bien;
}

bool Canales::AsignarPilas(const std::vector<int>& canales) {
  if (canales.size() > kPilas) return false;
  std::array<int, kCanales + 1> pila_de{};
  pila_de.fill(kSinPila);
  for (std::size_t i = 0; i < canales.size(); ++i) {
    const int canal = canales[i];
    if (canal < 1 || canal > kCanales || pila_de[static_cast<std::size_t>(canal)] != kSinPila) return false;
    pila_de[static_cast<std::size_t>(canal)] = static_cast<int>(i);
  }
  const std::size_t columna = LugarDeColumna("Pila");
  for (std::size_t i = 0; i < filas_.size(); ++i) filas_[i][columna] = std::to_string(pila_de[i + 1]);
  RehacerParametros();
  return true;
}

std::string Canales::Texto(int canal, std::string_view columna) const {
  const std::size_t lugar = LugarDeColumna(columna);
  if (canal < 1 || canal > kCanales || lugar == ColumnasDeUnidad().size()) return {};
  return filas_[static_cast<std::size_t>(canal - 1)][lugar];
}

bool Canales::Poner(int canal, std::string_view columna, std::string_view texto) {
  const std::size_t lugar = LugarDeColumna(columna);
  if (canal < 1 || canal > kCanales || lugar == ColumnasDeUnidad().size() || lugar == LugarDeColumna("Canal"))
    return false;
  filas_[static_cast<std::size_t>(canal - 1)][lugar] = texto;
  RehacerParametros();
  RepartirPilas();
  return true;
}

std::string Canales::TextoDeFabrica(int canal, std::string_view columna) {
  const std::size_t lugar = LugarDeColumna(columna);
  return lugar == ColumnasDeUnidad().size() ? std::string{} : FilaDeFabrica(canal)[lugar];
}

// Every channel with a history gets a stack of its own while there are any: those that hold one keep it, the others get
// a free one, then one of a channel that isn't measured any more. Nobody else keeps a stack that somebody took.
void Canales::RepartirPilas() {
  std::array<int, kPilas> duenio{};
  const auto libre = [&duenio](int pila) {
    return pila >= 0 && pila < kPilas && duenio[static_cast<std::size_t>(pila)] == 0;
  };
  const auto tomar = [&duenio](int pila, int canal) { duenio[static_cast<std::size_t>(pila)] = canal; };
  for (const auto& p : parametros_) {
    if (p.TieneHistoria() && libre(p.pila)) tomar(p.pila, p.canal);
  }
  const auto con_pila = [&duenio](int canal) { return std::find(duenio.begin(), duenio.end(), canal) != duenio.end(); };
  const auto en_reserva = [this](int pila) {
    return std::any_of(parametros_.begin(), parametros_.end(),
                       [pila](const ParametrosCanal& p) { return !p.TieneHistoria() && p.pila == pila; });
  };
  for (const auto& p : parametros_) {
    if (!p.TieneHistoria() || con_pila(p.canal)) continue;
    int elegida = p.tipo == TipoSensor::kPluviometro && libre(kPilaDelPluviometro) ? kPilaDelPluviometro : -1;
    for (int pila = 0; pila < kPilas && elegida < 0; ++pila) elegida = libre(pila) && !en_reserva(pila) ? pila : -1;
    for (int pila = 0; pila < kPilas && elegida < 0; ++pila) elegida = libre(pila) ? pila : -1;
    if (elegida >= 0) tomar(elegida, p.canal);
  }
  for (const auto& p : parametros_) {
    if (!p.TieneHistoria() && GuardaHistoria(p.tipo) && libre(p.pila)) tomar(p.pila, p.canal);
  }
  const std::size_t columna = LugarDeColumna("Pila");
  for (auto& fila : filas_) fila[columna] = std::to_string(kSinPila);
  for (std::size_t pila = 0; pila < duenio.size(); ++pila) {
    if (duenio[pila] != 0) filas_[static_cast<std::size_t>(duenio[pila] - 1)][columna] = std::to_string(pila);
  }
  RehacerParametros();
}

}  // namespace utr::simulada
