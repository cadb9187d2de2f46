#include <array>
#include <cmath>
#include <span>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/ReglasSensor.h"

// The rules of the times, in three stages that all run.
namespace utr {
namespace {

using C = CampoSensor;

constexpr double kMinutosPorDia = 1440;

std::string Rotulo(C campo) {
  return DatosDe(campo).rotulo;
}

// A field with the one whose caption stands in the line.
struct CampoDicho {
  C campo;
  C rotulo;
};
constexpr CampoDicho De(C campo) {
  return {campo, campo};
}

constexpr std::array kDeHistoria{De(C::kTMed),     De(C::kTRead),    De(C::kTEval),
                                 De(C::kTStorage), De(C::kTDiscret), De(C::kTResetAlarma)};
// A bad reading period of a supervision is reported under the caption of the evaluation.
constexpr std::array kDeSupervision{CampoDicho{C::kTRead, C::kTEval}, De(C::kTEval), De(C::kTResetAlarma)};
constexpr std::array kDeLluvia{De(C::kTRead),    De(C::kTEval), De(C::kTStorage),
                               De(C::kTDiscret), De(C::kTCero), De(C::kTResetAlarma)};

std::span<const CampoDicho> CamposDe(std::int16_t tipo) {
  if (tipo >= 0 && tipo <= 3) return kDeHistoria;
  if (tipo == 4) return kDeSupervision;
  if (tipo == 5) return kDeLluvia;
  return {};
}

// One line for all fields that are wrong, their captions joined.
void Reunir(std::span<const CampoDicho> campos, const std::function<bool(C)>& mal, std::string_view cola,
            ResultadoReglas& resultado) {
  std::vector<std::string> rotulos;
  ReparoSensor reparo;
  for (const CampoDicho& campo : campos) {
    if (!mal(campo.campo)) continue;
    rotulos.push_back(Rotulo(campo.rotulo));
    reparo.campos.push_back(campo.campo);
  }
  if (rotulos.empty()) return;
  reparo.texto = Unir(rotulos, ", ") + std::string(cola);
  resultado.reparos.push_back(std::move(reparo));
}

void MayoresQueCero(std::int16_t tipo, const ValoresSensor& valores, ResultadoReglas& resultado) {
  std::span<const CampoDicho> campos = CamposDe(tipo);
  if (tipo == 5) campos = campos.first(campos.size() - 1);  // the gauge resets no alarm
  Reunir(
      campos, [&](C campo) { return valores.Numero(campo) <= 0; }, " no puede(n) ser menor(es) o igual(es) a cero",
      resultado);
}

void HastaUnDia(std::int16_t tipo, const ValoresSensor& valores, ResultadoReglas& resultado) {
  const auto mal = [&](C campo) {
    const double minutos = valores.Numero(campo);
    // Only here a whole day is too much, and only for the reset of a channel with a history.
    return tipo <= 3 && campo == C::kTResetAlarma ? minutos >= kMinutosPorDia : minutos > kMinutosPorDia;
  };
  Reunir(CamposDe(tipo), mal, " es mayor a un dia de medición (1440 minutos)", resultado);
}

// One relation of the third stage between the times `a` and `b`. Its line names them in the order of `primero` and
// `segundo`, where it names them.
enum class Clase { kNoMayor, kDivideElDia, kMultiplo, kIgual, kForzar };
struct Relacion {
  Clase clase;
  C a;
  C b;
  C primero;
  C segundo;
  const char* texto = nullptr;  // of kIgual
};
constexpr Relacion M(C a, C b) {
  return {Clase::kMultiplo, a, b, a, b};
}
// Reported the other way round.
constexpr Relacion MAlReves(C a, C b) {
  return {Clase::kMultiplo, a, b, b, a};
}
constexpr Relacion kMedEnRead{Clase::kNoMayor, C::kTMed, C::kTRead, C::kTMed, C::kTRead};
constexpr Relacion kReadEnElDia{Clase::kDivideElDia, C::kTRead, C::kTRead, C::kTRead, C::kTRead};

constexpr std::array kRelacionesDeNivel{kMedEnRead,
                                        kReadEnElDia,
                                        M(C::kTRead, C::kTEval),
                                        M(C::kTRead, C::kTDiscret),
                                        M(C::kTRead, C::kTResetAlarma),
                                        M(C::kTStorage, C::kTDiscret)};
constexpr std::array kRelacionesMeteorologicas{kMedEnRead,
                                               kReadEnElDia,
                                               M(C::kTRead, C::kTEval),
                                               M(C::kTRead, C::kTStorage),
                                               MAlReves(C::kTStorage, C::kTEval),
                                               M(C::kTRead, C::kTDiscret),
                                               M(C::kTRead, C::kTResetAlarma),
                                               M(C::kTStorage, C::kTDiscret)};
constexpr std::array kRelacionesDeSupervision{M(C::kTEval, C::kTResetAlarma),
                                              Relacion{Clase::kIgual, C::kTEval, C::kTRead, C::kTEval, C::kTRead,
                                                       "En los de supervisión el tread debe ser igual al teval"}};
constexpr std::array kRelacionesDeLluvia{kReadEnElDia,
                                         Relacion{Clase::kForzar, C::kTEval, C::kTRead, C::kTEval, C::kTRead},
                                         M(C::kTRead, C::kTStorage),
                                         M(C::kTRead, C::kTDiscret),
                                         M(C::kTEval, C::kTCero),
                                         M(C::kTStorage, C::kTDiscret),
                                         MAlReves(C::kTDiscret, C::kTCero),
                                         Relacion{Clase::kIgual, C::kTStorage, C::kTRead, C::kTStorage, C::kTRead,
                                                  "En los pluviometros el tread debe ser igual al tstorage"}};

std::span<const Relacion> RelacionesDe(std::int16_t tipo) {
  switch (tipo) {
    case 0:
      return kRelacionesDeNivel;
    case 1:
    case 2:
    case 3:
      return kRelacionesMeteorologicas;
    case 4:
      return kRelacionesDeSupervision;
    case 5:
      return kRelacionesDeLluvia;
    default:
      return {};
  }
}

// Nothing: it holds. Else its line.
std::string LineaRota(const Relacion& r, const ValoresSensor& valores) {
  const double a = valores.Numero(r.a);
  const double b = valores.Numero(r.b);
  switch (r.clase) {
    case Clase::kNoMayor:
      return b < a ? Rotulo(r.primero) + " debe estar entre 1 y " + Rotulo(r.segundo) + "(inclusive)" : std::string();
    case Clase::kDivideElDia:
      return a == 0 || std::fmod(kMinutosPorDia, a) != 0 ? Rotulo(r.primero) + " debe ser múltiplo de 1440"
                                                         : std::string();
    case Clase::kMultiplo:
      return EsMultiplo(valores[r.a], valores[r.b]) ? std::string()
                                                    : Rotulo(r.primero) + " debe ser múltiplo de " + Rotulo(r.segundo);
    case Clase::kIgual:
      return a == b ? std::string() : std::string(r.texto);
    case Clase::kForzar:
      break;
  }
  return {};
}

void Relacionar(std::int16_t tipo, ValoresSensor valores, ResultadoReglas& resultado) {
  for (const Relacion& relacion : RelacionesDe(tipo)) {
    if (relacion.clase == Clase::kForzar) {
      valores[relacion.a] = valores[relacion.b];
      resultado.forzados.push_back({relacion.a, valores[relacion.b]});
      continue;
    }
    std::string linea = LineaRota(relacion, valores);
    if (linea.empty()) continue;
    std::vector<C> campos{relacion.a};
    if (relacion.b != relacion.a) campos.push_back(relacion.b);
    resultado.reparos.push_back({std::move(linea), std::move(campos)});
  }
}

}  // namespace

bool EsMultiplo(std::string_view a, std::string_view b) {
  const double divisor = Val(a);
  const double valor = Val(b);
  return divisor != 0 && valor >= divisor && std::fmod(valor, divisor) == 0;
}

void ValidarTiempos(const EntradaReglas& entrada, ResultadoReglas& resultado) {
  MayoresQueCero(entrada.tipo, entrada.valores, resultado);
  HastaUnDia(entrada.tipo, entrada.valores, resultado);
  Relacionar(entrada.tipo, entrada.valores, resultado);
}

}  // namespace utr
