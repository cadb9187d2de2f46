#include "driver/simulated/unit/Hidrologia.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/Fechas.h"

namespace utr::simulada {

namespace {

constexpr std::int64_t kDia = kSegundosDia;
constexpr double kVuelta = 2 * std::numbers::pi;
constexpr std::int64_t kMemoriaDelRio = 20;  // days after which a storm no longer shows
constexpr std::int64_t kEntreCrecidas = 11;  // days; each such block has one large storm
constexpr std::int64_t kEntreFallas = 10;
constexpr std::int64_t kEntreHuecos = 13;
constexpr std::int64_t kEntreVisitas = 9;
constexpr int kCanalQueFalla = 5;

// What is wired to each channel.
enum class Sensor {
  kNivel,
  kVelocidad,
  kDireccion,
  kTemperatura,
  kHumedad,
  kPresion,
  kRadiacion,
  kNapa,
  kAgua,
  kBateria,
  kLluvia,
  kPuerta,
  kBoya,
  kNada
};

constexpr Sensor kSensores[] = {Sensor::kNivel,   Sensor::kVelocidad, Sensor::kDireccion, Sensor::kTemperatura,
                                Sensor::kHumedad, Sensor::kPresion,   Sensor::kRadiacion, Sensor::kNapa,
                                Sensor::kAgua,    Sensor::kBateria,   Sensor::kNada,      Sensor::kNada,
                                Sensor::kNada,    Sensor::kNada,      Sensor::kLluvia,    Sensor::kPuerta,
                                Sensor::kBoya,    Sensor::kNada,      Sensor::kNada,      Sensor::kNada,
                                Sensor::kNada,    Sensor::kNada,      Sensor::kNada};

constexpr double kBoyaEn = 4.0;  // metres at which the float lifts

std::int64_t DiaDelMomento(std::int64_t momento) {
  return momento >= 0 ? momento / kDia : (momento - kDia + 1) / kDia;
}

double HoraDelMomento(std::int64_t momento) {
  return static_cast<double>(momento - DiaDelMomento(momento) * kDia) / 3600.0;
}

double Suave(double parte) {
  const double p = std::clamp(parte, 0.0, 1.0);
  return p * p * (3 - 2 * p);
}

// The block of `largo` days in which a moment lies, and the day of that block that chance has marked.
std::uint64_t Bloque(std::int64_t dia, std::int64_t largo) {
  return static_cast<std::uint64_t>(dia / largo);
}

}  // namespace

Hidrologia::Hidrologia(Opciones opciones) : opciones_(std::move(opciones)) {}

// A well-mixed number of the seed and two more: SplitMix64's finisher.
std::uint64_t Hidrologia::Azar(std::uint64_t a, std::uint64_t b) const {
  std::uint64_t x = opciones_.semilla + 0x9E3779B97F4A7C15U * (a + 1) + 0xD1B54A32D192ED03U * (b + 1);
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
  return x ^ (x >> 31);
}

double Hidrologia::Ruido(int canal, std::int64_t momento) const {
  const std::uint64_t azar = Azar(static_cast<std::uint64_t>(canal) + 1000, static_cast<std::uint64_t>(momento));
  return static_cast<double>(azar >> 11) / 4503599627370496.0 - 1.0;  // 2^52: -1 to 1
}

std::optional<Hidrologia::Tormenta> Hidrologia::TormentaDelDia(std::int64_t dia) const {
  const bool grande =
      Azar(1, Bloque(dia, kEntreCrecidas)) % kEntreCrecidas == static_cast<std::uint64_t>(dia % kEntreCrecidas);
  const std::uint64_t azar = Azar(2, static_cast<std::uint64_t>(dia));
  if (!grande && azar % 100 >= 20) return std::nullopt;
  Tormenta t;
  t.inicio = dia * kDia + static_cast<std::int64_t>((azar >> 8) % 20) * 3600 +
             static_cast<std::int64_t>((azar >> 16) % 60) * 60;
  const double parte = static_cast<double>((azar >> 24) % 1000) / 1000.0;
  t.duracion = (grande ? 10 + 6 * parte : 2 + 5 * parte) * 3600;
  t.milimetros = (grande ? 75 + 45 * parte : 3 + 20 * parte) * opciones_.crecidas;
  t.tandas = {0.15 + 0.1 * parte, 0.4, 0.6 + 0.1 * parte, 1.0};
  return t;
}

const std::vector<Hidrologia::Tormenta>& Hidrologia::TormentasHasta(std::int64_t dia) const {
  if (dia == dia_a_mano_) return a_mano_;
  a_mano_.clear();
  for (std::int64_t d = dia - kMemoriaDelRio; d <= dia; ++d) {
    if (const auto tormenta = TormentaDelDia(d)) a_mano_.push_back(*tormenta);
  }
  dia_a_mano_ = dia;
  return a_mano_;
}

// Millimetres that a storm has left up to a moment: its bursts are of equal depth and different length.
double Hidrologia::Acumulado(const Tormenta& tormenta, std::int64_t momento) const {
  const double parte = static_cast<double>(momento - tormenta.inicio) / tormenta.duracion;
  if (parte <= 0) return 0;
  if (parte >= 1) return tormenta.milimetros;
  double desde = 0;
  double suma = 0;
  for (const double hasta : tormenta.tandas) {
    suma += Suave((parte - desde) / (hasta - desde));
    desde = hasta;
  }
  return tormenta.milimetros * suma / static_cast<double>(tormenta.tandas.size());
}

// What storms have set moving: each rises from `demora` seconds after its beginning and ebbs with the time constant.
double Hidrologia::Respuesta(std::int64_t momento, double demora, double constante) const {
  double suma = 0;
  for (const Tormenta& t : TormentasHasta(DiaDelMomento(momento))) {
    const double x = (static_cast<double>(momento - t.inicio) - demora) / constante;
    if (x > 0) suma += t.milimetros * x * std::exp(1 - x);
  }
  return suma;
}

double Hidrologia::Lluvia(std::int64_t momento) const {
  double suma = 0;
  for (const Tormenta& t : TormentasHasta(DiaDelMomento(momento))) {
    suma += Acumulado(t, momento) - Acumulado(t, momento - 1200);
  }
  return suma * 3;  // twenty minutes into an hour
}

int Hidrologia::VuelcosEntre(std::int64_t desde, std::int64_t hasta, double paso) const {
  if (paso <= 0) return 0;
  double antes = 0;
  double despues = 0;
  for (const Tormenta& t : TormentasHasta(DiaDelMomento(hasta))) {
    antes += std::floor(Acumulado(t, desde) / paso);
    despues += std::floor(Acumulado(t, hasta) / paso);
  }
  return static_cast<int>(std::min(despues - antes, 1e9));
}

double Hidrologia::Temperatura(std::int64_t momento) const {
  const double dias = static_cast<double>(momento) / kDia;
  const double hora = HoraDelMomento(momento);
  const double estacion = 6 * std::cos(kVuelta * (dias - 15) / 365.25);  // warmest in January
  return 16 + estacion + 7 * std::sin(kVuelta * (hora - 9) / 24) + 3 * std::sin(kVuelta * dias / 9.3) -
         std::min(4.0, 0.5 * Lluvia(momento)) + 0.3 * Ruido(4, momento);
}

double Hidrologia::Radiacion(std::int64_t momento) const {
  const double hora = HoraDelMomento(momento);
  const double sol = std::sin(std::numbers::pi * (hora - 6.5) / 12.5);
  if (hora < 6.5 || hora > 19 || sol <= 0) return 0;
  const double nubes = 1 / (1 + 0.6 * Lluvia(momento)) * (0.85 + 0.15 * Ruido(7, momento));
  return 960 * std::pow(sol, 1.3) * nubes;
}

double Hidrologia::Viento(std::int64_t momento) const {
  const double hora = HoraDelMomento(momento);
  const double brisa = 3.5 + 2 * std::sin(kVuelta * (hora - 10) / 24);
  return std::max(0.0, brisa + 1.5 * Ruido(2, momento) + std::min(14.0, 1.2 * Lluvia(momento)));
}

double Hidrologia::Valor(int canal, std::int64_t momento) const {
  if (const auto fijo = opciones_.fijos.find(canal); fijo != opciones_.fijos.end()) return fijo->second;
  const double dias = static_cast<double>(momento) / kDia;
  switch (canal >= 1 && canal <= 23 ? kSensores[canal - 1] : Sensor::kNada) {
    case Sensor::kNivel:
      return 1.2 + 0.045 * Respuesta(momento, 2 * 3600, 11 * 3600) + 0.01 * Ruido(canal, momento);
    case Sensor::kVelocidad:
      return Viento(momento);
    case Sensor::kDireccion:
      return std::fmod(540 + 110 * std::sin(kVuelta * dias / 5.2) + 25 * Ruido(canal, momento), 360);
    case Sensor::kTemperatura:
      return Temperatura(momento);
    case Sensor::kHumedad:
      return std::clamp(72 - 2.4 * (Temperatura(momento) - 16) + 4 * Lluvia(momento) + Ruido(canal, momento), 12.0,
                        100.0);
    case Sensor::kPresion:
      return 1011 + 6 * std::sin(kVuelta * dias / 6.7) + 0.8 * std::sin(2 * kVuelta * dias) -
             std::min(9.0, 0.6 * Lluvia(momento)) + 0.1 * Ruido(canal, momento);
    case Sensor::kRadiacion:
      return Radiacion(momento);
    case Sensor::kNapa:
      return std::clamp(2.8 - 0.009 * Respuesta(momento, 12 * 3600, 50 * 3600), 0.2, 4.8);
    case Sensor::kAgua:
      return 15 + 5 * std::cos(kVuelta * (dias - 30) / 365.25) + 1.2 * std::sin(kVuelta * dias);
    case Sensor::kBateria:
      return 12.5 + std::min(1.2, Radiacion(momento) / 500) - 0.013 * Respuesta(momento, 6 * 3600, 14 * 3600) +
             0.05 * Ruido(canal, momento);
    case Sensor::kLluvia:
      return Lluvia(momento);
    case Sensor::kPuerta: {
      const std::int64_t dia = DiaDelMomento(momento);
      const bool visita =
          Azar(3, Bloque(dia, kEntreVisitas)) % kEntreVisitas == static_cast<std::uint64_t>(dia % kEntreVisitas);
      const double hora = HoraDelMomento(momento);
      return visita && hora >= 10.25 && hora < 11 ? 1 : 0;
    }
    case Sensor::kBoya:
      return Valor(1, momento) >= kBoyaEn ? 1 : 0;
    case Sensor::kNada:
      break;
  }
  return 0;
}

Hidrologia::Extremos Hidrologia::ExtremosDe(int canal, std::int64_t momento) const {
  if (canal < 1 || canal > 23 || opciones_.fijos.count(canal) != 0) return {};
  const double azar = 0.5 + 0.5 * Ruido(canal + 100, momento);  // 0 to 1
  switch (kSensores[canal - 1]) {
    case Sensor::kVelocidad: {
      const double viento = Viento(momento);
      return {0.3 + viento * (0.25 + 0.45 * azar), viento * (0.2 + 0.3 * azar)};
    }
    case Sensor::kNivel:
      return {0.01 + 0.02 * azar, 0.01 + 0.02 * (1 - azar)};
    case Sensor::kTemperatura:
      return {0.1 + 0.4 * azar, 0.1 + 0.4 * (1 - azar)};
    case Sensor::kHumedad:
      return {0.5 + azar, 1.5 - azar};
    case Sensor::kPresion:
      return {0.1 + 0.2 * azar, 0.3 - 0.2 * azar};
    case Sensor::kRadiacion: {
      const double radiacion = Radiacion(momento);
      return {radiacion * 0.15 * azar, radiacion * 0.2 * (1 - azar)};
    }
    case Sensor::kNapa:
      return {0.003, 0.003};
    default:
      return {};
  }
}

bool Hidrologia::Falla(int canal, std::int64_t momento) const {
  if (!opciones_.falla_de_sensor || canal != kCanalQueFalla) return false;
  const std::int64_t dia = DiaDelMomento(momento);
  const double hora = HoraDelMomento(momento);
  return Azar(4, Bloque(dia, kEntreFallas)) % kEntreFallas == static_cast<std::uint64_t>(dia % kEntreFallas) &&
         hora >= 13 && hora < 20;
}

bool Hidrologia::Hueco(std::int64_t momento) const {
  if (!opciones_.hueco) return false;
  const std::int64_t dia = DiaDelMomento(momento);
  const double hora = HoraDelMomento(momento);
  return Azar(5, Bloque(dia, kEntreHuecos)) % kEntreHuecos == static_cast<std::uint64_t>(dia % kEntreHuecos) &&
         hora >= 2 && hora < 7;
}

}  // namespace utr::simulada
