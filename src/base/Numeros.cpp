#include "base/Numeros.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "base/Error.h"

namespace utr {
namespace {

constexpr std::size_t kMaximoPrefijo = 400;

bool EsDigito(char c) {
  return c >= '0' && c <= '9';
}
bool EsBlanco(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
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
  if (i < t.size() && (t[i] == 'e' || t[i] == 'E' || t[i] == 'd' || t[i] == 'D')) {
    std::size_t j = i + 1;
    if (j < t.size() && (t[j] == '+' || t[j] == '-')) ++j;
    const std::size_t exponente = j;
    while (j < t.size() && EsDigito(t[j])) ++j;
    if (j > exponente) i = j;
  }
  return i;
}

// Whether a number that lies beyond a double is too small rather than too big: its first digit other than 0 stands
// behind the decimal point once the exponent has moved it.
bool EsDiminuto(std::string_view t) {
  const auto e = std::min(t.find_first_of("eE"), t.size());
  const auto punto = std::min(t.find('.'), e);
  const auto cifra = t.find_first_of("123456789");
  const auto lugar = static_cast<std::int64_t>(punto) - static_cast<std::int64_t>(cifra);
  std::int64_t exponente = 0;
  if (e < t.size()) {
    std::string_view cifras = t.substr(e + 1);
    if (cifras.starts_with('+')) cifras.remove_prefix(1);
    const auto leido = std::from_chars(cifras.data(), cifras.data() + cifras.size(), exponente);
    if (leido.ec != std::errc()) return cifras.starts_with('-');
  }
  return lugar + exponente < 0;
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
  if (EsDiminuto(t)) return 0;
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
  std::string limpio;
  for (const char c : texto) {
    if (EsBlanco(c)) continue;
    limpio.push_back(c);
    if (limpio.size() == kMaximoPrefijo) break;
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

std::string FormatoFijo(double numero) {
  if (!std::isfinite(numero)) Lanzar(error::kDesborde, "FormatoFijo");
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
