#include "driver/Textos.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

// A whole number of decimal digits alone, at most `mayor`.
std::optional<std::uint32_t> LeerEnteroSolo(std::string_view texto, std::uint32_t mayor) {
  std::uint32_t numero = 0;
  const char* fin = texto.data() + texto.size();
  const auto [resto, falla] = std::from_chars(texto.data(), fin, numero);
  if (texto.empty() || falla != std::errc{} || resto != fin || numero > mayor) return std::nullopt;
  return numero;
}

// Reads every item as a byte.
std::optional<std::vector<std::uint8_t>> LeerBytes(std::string_view texto, char separador) {
  std::vector<std::uint8_t> bytes;
  for (const std::string_view item : Separar(texto, separador)) {
    const auto byte = LeerEnteroSolo(Recortar(item), 255);
    if (!byte) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(*byte));
  }
  return bytes;
}

}  // namespace

std::string TextoPagina(std::span<const std::uint8_t> bytes) {
  std::string texto;
  texto.reserve(bytes.size() * 4);
  char numero[4];
  for (const std::uint8_t byte : bytes) {
    if (!texto.empty()) texto += ',';
    texto.append(numero, std::to_chars(numero, numero + sizeof numero, byte).ptr);
  }
  return texto;
}

std::optional<std::vector<std::uint8_t>> LeerTextoPagina(std::string_view texto) {
  if (texto.empty()) return std::vector<std::uint8_t>{};
  return LeerBytes(texto, ',');
}

std::string TextoPar(std::uint16_t valor) {
  return std::to_string(valor & 0xFF) + '/' + std::to_string(valor >> 8);
}

std::optional<std::uint16_t> LeerPar(std::string_view texto) {
  const auto bytes = LeerBytes(texto, '/');
  if (!bytes || bytes->size() != 2) return std::nullopt;
  return static_cast<std::uint16_t>((*bytes)[0] | ((*bytes)[1] << 8));
}

std::optional<int> NumeroDePagina(std::string_view texto) {
  const double numero = EsNumerico(texto) ? LeerDoble(texto) : -1;
  if (numero < 0 || numero > 65535 || numero != std::floor(numero)) return std::nullopt;
  return static_cast<int>(numero);
}

int NumeroDePuerto(std::string_view texto) {
  const double numero = EsNumerico(texto) ? LeerDoble(texto) : 0;
  return numero >= 1 && numero <= 65535 ? static_cast<int>(numero) : 0;
}

std::optional<std::vector<int>> LeerNumeros(std::string_view texto, char separador, int mayor) {
  std::vector<int> numeros;
  if (texto.empty()) return numeros;
  if (texto.back() == separador) texto.remove_suffix(1);
  for (const std::string_view parte : Separar(texto, separador)) {
    const double numero = EsNumerico(parte) ? LeerDoble(parte) : 0;
    if (numero < 1 || numero > mayor || numero != static_cast<int>(numero)) return std::nullopt;
    numeros.push_back(static_cast<int>(numero));
  }
  return numeros;
}

std::optional<std::pair<std::uint16_t, std::uint16_t>> LeerDosPares(std::string_view texto) {
  const std::size_t primera = texto.find('/');
  const std::size_t mitad = primera == std::string_view::npos ? primera : texto.find('/', primera + 1);
  if (mitad == std::string_view::npos) return std::nullopt;
  const auto codigo = LeerPar(texto.substr(0, mitad));
  const auto valor = LeerPar(texto.substr(mitad + 1));
  if (!codigo || !valor) return std::nullopt;
  return std::pair{*codigo, *valor};
}

std::optional<Enlace> LeerEnlace(std::string_view texto) {
  constexpr std::string_view kTrama = "n,8,1";
  texto = Recortar(texto);
  if (!texto.ends_with(kTrama)) return std::nullopt;
  texto.remove_suffix(kTrama.size());
  const bool con_coma = texto.ends_with(',');
  if (con_coma) texto.remove_suffix(1);
  texto = Recortar(texto);
  if (con_coma && EsDireccionIP(texto)) return Enlace{true, 0, std::string(texto)};
  const auto velocidad = LeerEnteroSolo(texto, std::numeric_limits<std::int32_t>::max());
  if (!velocidad) return std::nullopt;
  return Enlace{false, static_cast<std::int32_t>(*velocidad), {}};
}

bool EsDireccionIP(std::string_view texto) {
  const auto partes = Separar(texto, '.');
  if (partes.size() != 4) return false;
  for (const std::string_view parte : partes) {
    // With a zero ahead some read it in base 8, and others not at all.
    if ((parte.size() > 1 && parte.front() == '0') || !LeerEnteroSolo(parte, 255)) return false;
  }
  return true;
}

}  // namespace utr
