#include "configuration/CalculosSensor.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {
namespace {

using C = CampoSensor;

constexpr double kMinutosPorDia = 1440;
constexpr double kCentesimos = 100;
constexpr double kUltimoCentesimo = 32767;  // the stepper counts in 16 bits

const std::vector<std::int16_t>& DivisoresDelDia() {
  static const std::vector<std::int16_t> divisores = Divisores(static_cast<std::int16_t>(kMinutosPorDia));
  return divisores;
}

// The divisor next to a number of minutes, in one direction or the other; the number itself beyond the last one.
double DivisorTras(double valor, int hacia) {
  const auto& todos = DivisoresDelDia();
  if (hacia > 0) {
    const auto mayor = std::ranges::find_if(todos, [valor](double divisor) { return divisor > valor; });
    return mayor == todos.end() ? valor : *mayor;
  }
  const auto primero = std::ranges::find_if(todos, [valor](double divisor) { return divisor >= valor; });
  return primero == todos.begin() ? valor : *std::prev(primero);
}

// The width of the ends as 16-bit whole numbers; nothing beyond them.
std::optional<std::int16_t> AnchoEntero(const ValoresSensor& valores) {
  try {
    const int maximo = Entero16(valores.Numero(C::kRangoMax));
    const int minimo = Entero16(valores.Numero(C::kRangoMin));
    return Entero16(std::abs(Entero16(maximo - minimo)));
  } catch (const Error&) {
    return std::nullopt;
  }
}

std::string Suma(const std::string& texto, double cuanto) {
  return TextoGeneral(Val(texto) + cuanto);
}

}  // namespace

double AQuinceCifras(double numero) {
  return Val(TextoGeneral(numero));
}

double ATresDecimales(double numero) {
  return AQuinceCifras(std::nearbyint(AQuinceCifras(numero * 1000)) / 1000);
}

std::optional<std::int16_t> CalcularBits(double rango_max, double rango_min, double resolucion) {
  const double ancho = std::fabs(rango_max - rango_min);
  if (ancho == 0 || resolucion <= 0) return std::nullopt;
  const double bits = (std::log10(ancho) - std::log10(resolucion)) / std::log10(2.0) + 1;
  if (!(std::fabs(bits) < 32767)) return std::nullopt;
  return static_cast<std::int16_t>(std::trunc(bits));
}

std::vector<std::int16_t> Divisores(std::int16_t numero) {
  std::vector<std::int16_t> divisores;
  for (std::int16_t divisor = 1; divisor <= numero; ++divisor) {
    if (numero % divisor == 0) divisores.push_back(divisor);
  }
  return divisores;
}

std::string TextoRango(const ValoresSensor& valores) {
  return TextoGeneral(std::fabs(valores.Numero(C::kRangoMin) - valores.Numero(C::kRangoMax)));
}

std::string CodigoPendiente(const ValoresSensor& valores) {
  return valores.Numero(C::kRangoMin) > valores.Numero(C::kRangoMax) ? "55" : "66";
}

std::vector<ValorForzado> SeguirRango(CampoSensor extremo, const ValoresSensor& valores) {
  constexpr std::array kMinimos{C::kAlMinPico, C::kAMin, C::kMinValid};
  constexpr std::array kMaximos{C::kAlMaxPico, C::kAMax, C::kMaxValid};
  std::vector<ValorForzado> cambios;
  for (const C campo : extremo == C::kRangoMin ? kMinimos : kMaximos) cambios.push_back({campo, valores[extremo]});
  const auto ancho = AnchoEntero(valores);
  if (!ancho) return cambios;
  for (const C campo : {C::kAlBaj, C::kAlSub, C::kMaxSubVal, C::kMaxBajVal, C::kMaxSubTx, C::kMaxBajTx}) {
    cambios.push_back({campo, std::to_string(*ancho)});
  }
  return cambios;
}

std::vector<ValorForzado> SeguirNivel(std::int16_t tipo, const std::string& anterior, const ValoresSensor& valores) {
  const double nivel = valores.Numero(C::kNivRefLmn);
  const double corrido = nivel - Val(anterior);
  std::vector<ValorForzado> cambios;
  const std::string a_max = Suma(valores[C::kAMax], corrido);
  const std::string a_min = Suma(valores[C::kAMin], corrido);
  cambios = {{C::kAMax, a_max}, {C::kAMin, a_min}};
  if (tipo != 1) {
    cambios.push_back({C::kAlMaxPico, a_max});
    cambios.push_back({C::kAlMinPico, a_min});
  }
  cambios.push_back({C::kMaxValid, Suma(valores[C::kMaxValid], corrido)});
  cambios.push_back({C::kMinValid, Suma(valores[C::kMinValid], corrido)});
  if (nivel != 0) return cambios;
  for (const C campo : {C::kAMax, C::kMaxValid}) cambios.push_back({campo, valores[C::kRangoMax]});
  for (const C campo : {C::kAMin, C::kMinValid}) cambios.push_back({campo, valores[C::kRangoMin]});
  return cambios;
}

std::optional<ValorForzado> SeguirEscala(const ValoresSensor& valores, const std::string& resolucion) {
  const auto bits = CalcularBits(valores.Numero(C::kRangoMax), valores.Numero(C::kRangoMin), Val(resolucion));
  if (!bits) return std::nullopt;
  return ValorForzado{C::kBits, std::to_string(*bits)};
}

double LimitesPaso::Cercano(double valor) const {
  if (paso <= 0) return valor;
  const double ultimo = minimo + std::floor(std::max(0.0, maximo - minimo) / paso) * paso;
  const double cercano = minimo + std::nearbyint((valor - minimo) / paso) * paso;
  return std::clamp(cercano, minimo, std::max(minimo, ultimo));
}

double LimitesPaso::Tras(double valor, int hacia) const {
  if (paso <= 0) return valor;
  const double pasos = (valor - minimo) / paso;
  const double siguiente = minimo + (hacia > 0 ? std::floor(pasos) + 1 : std::ceil(pasos) - 1) * paso;
  const double legal = Cercano(siguiente);
  // Beyond a limit a step leads back to it, never further away, and never against its direction.
  return (legal - valor) * hacia > 0 ? legal : valor;
}

LimitesPaso LimitesDe(CampoSensor tiempo, const ValoresSensor& valores) {
  const auto desde = [&](C base) {
    const double minutos = valores.Numero(base);
    return LimitesPaso{minutos, kMinutosPorDia, minutos};
  };
  switch (tiempo) {
    case C::kTMed:
      return {1, std::max(1.0, valores.Numero(C::kTRead)), 1};
    case C::kTRead:
      return {1, static_cast<double>(DivisoresDelDia().size()), 1};
    case C::kTEval:
    case C::kTDiscret:
      return desde(C::kTStorage);
    case C::kTCero:
      return desde(C::kTDiscret);
    default:  // TStorage and TResetAlarma
      return desde(C::kTRead);
  }
}

bool DivideElDia(const std::string& minutos) {
  const double valor = Val(minutos);
  return std::ranges::any_of(DivisoresDelDia(), [valor](std::int16_t divisor) { return divisor == valor; });
}

std::optional<std::string> Pasar(CampoSensor campo, int hacia, const ValoresSensor& valores) {
  const double valor = valores.Numero(campo);
  double nuevo = 0;
  if (campo == C::kTRead) {
    nuevo = DivisorTras(valor, hacia);
  } else if (campo == C::kPluviometro) {
    const double escrito = Val(Reemplazar(valores[campo], ",", "."));
    nuevo = std::clamp(std::nearbyint(escrito * kCentesimos) + hacia, 1.0, kUltimoCentesimo) / kCentesimos;
  } else {
    nuevo = LimitesDe(campo, valores).Tras(valor, hacia);
  }
  const std::string texto = TextoGeneral(nuevo);
  return Val(texto) == valor ? std::nullopt : std::optional(texto);
}

std::vector<ValorForzado> AjustarTiempos(const ValoresSensor& valores,
                                         const std::function<bool(CampoSensor)>& habilitado) {
  ValoresSensor nuevos = valores;
  std::vector<ValorForzado> cambios;
  for (const C tiempo : {C::kTMed, C::kTCero, C::kTResetAlarma, C::kTStorage, C::kTDiscret, C::kTEval}) {
    if (!habilitado(tiempo)) continue;
    const double valor = nuevos.Numero(tiempo);
    const double legal = LimitesDe(tiempo, nuevos).Cercano(valor);
    if (legal == valor) continue;
    nuevos[tiempo] = TextoGeneral(legal);
    cambios.push_back({tiempo, nuevos[tiempo]});
  }
  return cambios;
}

}  // namespace utr
