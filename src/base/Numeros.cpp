#include "base/Numeros.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "base/Error.h"

namespace utr {
namespace {

bool EsDigito(char c) {
  return c >= '0' && c <= '9';
}
bool EsBlanco(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool EsExponente(char c) {
  return c == 'e' || c == 'E' || c == 'd' || c == 'D';
}

// The length of the longest prefix of the form [sign] digits [. digits] [e [sign] digits]; 0 when it holds no digit.
std::size_t LargoNumero(std::string_view t) {
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
  const std::size_t mantisa = i;
  while (i < t.size() && EsDigito(t[i])) ++i;
  std::size_t digitos = i - mantisa;
  if (i < t.size() && t[i] == '.') {
    const std::size_t punto = i++;
    while (i < t.size() && EsDigito(t[i])) ++i;
    digitos += i - punto - 1;
  }
  if (digitos == 0) return 0;
  if (i < t.size() && EsExponente(t[i])) {
    std::size_t j = i + 1;
    if (j < t.size() && (t[j] == '+' || t[j] == '-')) ++j;
    const std::size_t exponente = j;
    while (j < t.size() && EsDigito(t[j])) ++j;
    if (j > exponente) i = j;
  }
  return i;
}

// A number digit by digit: 0.c1c2c3... × 10^punto, without zeros at either end of the digits; 0 has no digits.
struct Exacto {
  bool negativo = false;
  std::string cifras;
  std::int64_t punto = 0;

  int Signo() const { return cifras.empty() ? 0 : (negativo ? -1 : 1); }
};

// What stands behind the "e". Far beyond any double it doesn't grow further, so that sums with it stay in range.
std::int64_t Exponente(std::string_view cifras) {
  constexpr std::int64_t kTope = std::int64_t{1} << 62;
  if (cifras.starts_with('+')) cifras.remove_prefix(1);
  std::int64_t exponente = 0;
  const auto leido = std::from_chars(cifras.data(), cifras.data() + cifras.size(), exponente);
  if (leido.ec != std::errc()) return cifras.starts_with('-') ? -kTope : kTope;
  return std::clamp(exponente, -kTope, kTope);
}

// The digits of a text that LargoNumero took whole.
Exacto Descomponer(std::string_view t) {
  Exacto x;
  const auto e = static_cast<std::size_t>(std::find_if(t.begin(), t.end(), EsExponente) - t.begin());
  std::string_view mantisa = t.substr(0, e);
  x.negativo = mantisa.starts_with('-');
  if (x.negativo || mantisa.starts_with('+')) mantisa.remove_prefix(1);
  const auto punto = std::min(mantisa.find('.'), mantisa.size());
  x.cifras = mantisa;
  if (punto < mantisa.size()) x.cifras.erase(punto, 1);
  const auto primera = std::min(x.cifras.find_first_not_of('0'), x.cifras.size());
  x.cifras.erase(0, primera);
  x.cifras.erase(x.cifras.find_last_not_of('0') + 1);
  if (x.cifras.empty()) return x;
  x.punto = static_cast<std::int64_t>(punto) - static_cast<std::int64_t>(primera);
  if (e < t.size()) x.punto += Exponente(t.substr(e + 1));
  return x;
}

// The value of a text that LargoNumero took whole. Beyond a double: infinite, or 0 for what is too small.
double Convertir(std::string_view t) {
  std::string copia;
  if (t.find_first_of("dD") != std::string_view::npos) {
    copia = t;
    std::replace_if(
        copia.begin(), copia.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
    t = copia;
  }
  if (!t.empty() && t.front() == '+') t.remove_prefix(1);
  double valor = 0;
  const auto [fin, problema] = std::from_chars(t.data(), t.data() + t.size(), valor);
  if (problema != std::errc::result_out_of_range) return valor;
  const Exacto x = Descomponer(t);
  if (x.cifras.empty() || x.punto < 0) return 0;  // too small rather than too big
  return t.front() == '-' ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
}

std::string_view SinBlancos(std::string_view t) {
  while (!t.empty() && EsBlanco(t.front())) t.remove_prefix(1);
  while (!t.empty() && EsBlanco(t.back())) t.remove_suffix(1);
  return t;
}

// The text of one number without its thousands separators, or nothing when it isn't one.
std::optional<std::string> Normalizar(std::string_view texto) {
  texto = SinBlancos(texto);
  std::string limpio;
  limpio.reserve(texto.size());
  bool entera = true;
  for (std::size_t i = 0; i < texto.size(); ++i) {
    const char c = texto[i];
    if (c == '.' || c == 'e' || c == 'E' || c == 'd' || c == 'D') entera = false;
    // A separator counts only behind a digit and ahead of the decimal point.
    if (c == ',' && entera && i > 0 && (EsDigito(texto[i - 1]) || texto[i - 1] == ',') && !limpio.empty() &&
        EsDigito(limpio.back())) {
      continue;
    }
    limpio.push_back(c);
  }
  if (limpio.empty() || LargoNumero(limpio) != limpio.size()) return std::nullopt;
  return limpio;
}

bool SoloDigitos(std::string_view t) {
  return !t.empty() && t.size() <= 15 && std::all_of(t.begin(), t.end(), EsDigito);
}

// The value of a text of so few digits that a double holds all of them.
double DeDigitos(std::string_view t) {
  std::int64_t valor = 0;
  for (const char c : t) valor = valor * 10 + (c - '0');
  return static_cast<double>(valor);
}

// 15 significant decimal digits of a finite number and the place of the point: 0.d1d2d3... × 10^punto.
struct Decimal {
  char digitos[16];
  int punto;
};

Decimal QuinceDigitos(double numero) {
  char buf[32];
  const auto r = std::to_chars(buf, buf + sizeof buf, numero, std::chars_format::scientific, 14);
  Decimal d{};
  d.digitos[0] = buf[0];
  std::copy(buf + 2, buf + 16, d.digitos + 1);
  const char* e = buf + 17;
  if (*e == '+') ++e;
  std::from_chars(e, r.ptr, d.punto);
  ++d.punto;
  return d;
}

double RedondearPar(double numero) {
  const double piso = std::floor(numero);
  const double resto = numero - piso;
  if (resto < 0.5) return piso;
  if (resto > 0.5) return piso + 1;
  return std::fmod(piso, 2.0) == 0 ? piso : piso + 1;
}

// The whole part of a number, and how what is left of it compares with a half.
struct ParteEntera {
  std::uint64_t entero = 0;
  int contra_la_mitad = -1;
  bool exacta = true;
};

// Nothing for a whole part of 20 digits or more.
std::optional<ParteEntera> Partir(const Exacto& x) {
  ParteEntera parte;
  parte.exacta = x.punto >= static_cast<std::int64_t>(x.cifras.size());
  if (x.punto < 0 || x.cifras.empty()) return parte;
  if (x.punto > 19) return std::nullopt;
  const auto n = static_cast<std::size_t>(x.punto);
  std::string enteras = x.cifras.substr(0, n);
  enteras.resize(n, '0');
  std::from_chars(enteras.data(), enteras.data() + n, parte.entero);
  if (parte.exacta) return parte;
  parte.contra_la_mitad = x.cifras.compare(n, std::string::npos, "5");
  return parte;
}

std::optional<std::int64_t> ConSigno(std::uint64_t magnitud, bool negativo) {
  constexpr auto kMayor = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (magnitud > kMayor + (negativo ? 1U : 0U)) return std::nullopt;
  return static_cast<std::int64_t>(negativo ? ~magnitud + 1 : magnitud);
}

std::optional<std::int64_t> EnteroLlano(std::string_view texto) {
  texto = SinBlancos(texto);
  std::int64_t numero = 0;
  const auto [fin, problema] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
  const bool todo = problema == std::errc() && fin == texto.data() + texto.size();
  return todo ? std::optional(numero) : std::nullopt;
}

Exacto LeerExacto(std::string_view texto) {
  const auto limpio = Normalizar(texto);
  if (!limpio) Lanzar(error::kTipos, "LeerDoble");
  return Descomponer(*limpio);
}

template <typename Entero>
Entero AEntero(double numero) {
  const double redondo = RedondearPar(numero);
  if (!(redondo >= static_cast<double>(std::numeric_limits<Entero>::min()) &&
        redondo <= static_cast<double>(std::numeric_limits<Entero>::max()))) {
    Lanzar(error::kDesborde, "Entero");
  }
  return static_cast<Entero>(redondo);
}

}  // namespace

double Val(std::string_view texto) {
  if (SoloDigitos(texto)) return DeDigitos(texto);
  std::string limpio;
  for (const char c : texto) {
    if (EsBlanco(c)) continue;
    if (!EsDigito(c) && !EsExponente(c) && c != '+' && c != '-' && c != '.') break;
    limpio.push_back(c);
  }
  const std::size_t largo = LargoNumero(limpio);
  if (largo == 0) return 0;
  return Convertir(std::string_view(limpio).substr(0, largo));
}

bool EsNumerico(std::string_view texto) {
  if (SoloDigitos(texto)) return true;
  const auto limpio = Normalizar(texto);
  return limpio && std::isfinite(Convertir(*limpio));
}

double LeerDoble(std::string_view texto) {
  const auto limpio = Normalizar(texto);
  if (!limpio) Lanzar(error::kTipos, "LeerDoble");
  const double valor = Convertir(*limpio);
  if (!std::isfinite(valor)) Lanzar(error::kDesborde, "LeerDoble");
  return valor;
}

std::int16_t LeerEntero16(std::string_view texto) {
  return Entero16(LeerDoble(texto));
}
std::int32_t LeerEntero32(std::string_view texto) {
  return Entero32(LeerDoble(texto));
}
std::int64_t LeerEntero64(std::string_view texto) {
  if (const auto llano = EnteroLlano(texto)) return *llano;
  const Exacto x = LeerExacto(texto);
  auto parte = Partir(x);
  if (!parte) Lanzar(error::kDesborde, "LeerEntero64");
  const bool impar = (parte->entero & 1U) != 0;
  if (parte->contra_la_mitad > 0 || (parte->contra_la_mitad == 0 && impar)) ++parte->entero;
  const auto numero = ConSigno(parte->entero, x.negativo);
  if (!numero) Lanzar(error::kDesborde, "LeerEntero64");
  return *numero;
}

std::optional<std::int64_t> EnteroExacto(std::string_view texto) {
  if (const auto llano = EnteroLlano(texto)) return llano;
  const auto limpio = Normalizar(texto);
  if (!limpio) return std::nullopt;
  const Exacto x = Descomponer(*limpio);
  const auto parte = Partir(x);
  return parte && parte->exacta ? ConSigno(parte->entero, x.negativo) : std::nullopt;
}

std::strong_ordering CompararNumeros(std::string_view a, std::string_view b) {
  const Exacto x = LeerExacto(a);
  const Exacto y = LeerExacto(b);
  if (x.Signo() != y.Signo() || x.Signo() == 0) return x.Signo() <=> y.Signo();
  const auto orden = x.punto != y.punto ? x.punto <=> y.punto : x.cifras <=> y.cifras;
  return x.Signo() > 0 ? orden : 0 <=> orden;
}

std::int16_t Entero16(double numero) {
  return AEntero<std::int16_t>(numero);
}
std::int32_t Entero32(double numero) {
  return AEntero<std::int32_t>(numero);
}

std::string TextoGeneral(double numero) {
  char buf[40];
  const auto r = std::to_chars(buf, buf + sizeof buf, numero, std::chars_format::general, 15);
  std::string texto(buf, r.ptr);
  for (char& c : texto) {
    if (c == 'e') c = 'E';
  }
  return texto == "-0" ? "0" : texto;
}

std::string TextoPlano(double numero) {
  std::string texto = TextoGeneral(numero);
  if (texto.front() != '-') texto.insert(texto.begin(), ' ');
  return texto;
}

namespace {

// The thousandths of a number, rounded as FormatoFijo does, where a look at the number itself tells them: it is far
// smaller than what fifteen digits hold, and so far from a half that neither they nor the product make a difference.
std::optional<std::uint64_t> MilesimosClaros(double magnitud) {
  constexpr double kGrande = 1e6;
  constexpr double kMargen = 1e-5;
  if (!(magnitud < kGrande)) return std::nullopt;
  const double milesimos = magnitud * 1000;
  const auto enteros = static_cast<std::uint64_t>(milesimos);
  const double contra_la_mitad = milesimos - static_cast<double>(enteros) - 0.5;
  if (std::fabs(contra_la_mitad) < kMargen) return std::nullopt;
  return enteros + (contra_la_mitad > 0 ? 1 : 0);
}

std::string TextoDeMilesimos(std::uint64_t milesimos, bool negativo) {
  char texto[24];
  char* fin = texto;
  if (negativo && milesimos != 0) *fin++ = '-';
  fin = std::to_chars(fin, texto + sizeof texto, milesimos / 1000).ptr;
  *fin++ = '.';
  for (std::uint64_t resto = milesimos % 1000, unidad = 100; unidad > 0; resto %= unidad, unidad /= 10)
    *fin++ = static_cast<char>('0' + resto / unidad);
  return {texto, fin};
}

}  // namespace

std::string FormatoFijo(double numero) {
  if (!std::isfinite(numero)) Lanzar(error::kDesborde, "FormatoFijo");
  if (const auto claros = MilesimosClaros(std::fabs(numero))) return TextoDeMilesimos(*claros, std::signbit(numero));
  const Decimal d = QuinceDigitos(std::fabs(numero));
  // The digits kept are those up to the third decimal; the next one decides, away from zero.
  char cuerpo[340];
  std::size_t largo = 0;
  const int enteros = std::max(d.punto, 1);
  const int primero = d.punto - enteros;  // 0, or negative when zeros stand ahead of the first digit
  const auto digito = [&](int i) { return i >= 0 && i < 15 ? d.digitos[i] : '0'; };
  cuerpo[largo++] = '0';  // room for a carry
  for (int i = 0; i < enteros + 3; ++i) cuerpo[largo++] = digito(primero + i);
  if (digito(primero + enteros + 3) >= '5') {
    std::size_t i = largo;
    while (cuerpo[--i] == '9') cuerpo[i] = '0';
    ++cuerpo[i];
  }
  std::string texto;
  texto.reserve(largo + 3);
  const bool cero = std::all_of(cuerpo, cuerpo + largo, [](char c) { return c == '0'; });
  if (std::signbit(numero) && !cero) texto.push_back('-');
  const std::size_t desde = cuerpo[0] == '0' ? 1 : 0;
  texto.append(cuerpo + desde, largo - 3 - desde);
  texto.push_back('.');
  texto.append(cuerpo + largo - 3, 3);
  return texto;
}

}  // namespace utr
