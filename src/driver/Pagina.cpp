#include "driver/Pagina.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "base/Fechas.h"

namespace utr::paginas {

namespace {

// Layout of the header; records follow from kPrimero on and the rest stays erased.
constexpr std::size_t kContenido = 0;
constexpr std::size_t kCanal = 1;
constexpr std::size_t kCuenta = 2;
constexpr std::size_t kVersion = 3;
constexpr std::size_t kDia = 4;
constexpr std::size_t kControl = 6;
constexpr std::size_t kPrimero = 8;
constexpr std::uint8_t kVersionActual = 1;

// A sample takes 9 bytes: marks, minute, value, maximum, minimum; in the queue the channel follows. An event takes 9
// too: marks, code, second of the day in three bytes, two values.
constexpr std::size_t Largo(Contenido contenido) {
  return contenido == Contenido::kCola ? 10 : 9;
}

std::uint16_t LeerDos(VistaPagina pagina, std::size_t lugar) {
  return static_cast<std::uint16_t>(pagina[lugar] | (pagina[lugar + 1] << 8));
}

void EscribirDos(Pagina pagina, std::size_t lugar, unsigned valor) {
  pagina[lugar] = static_cast<std::uint8_t>(valor & 0xFF);
  pagina[lugar + 1] = static_cast<std::uint8_t>((valor >> 8) & 0xFF);
}

constexpr std::array<std::uint16_t, 256> TablaDeControl() {
  std::array<std::uint16_t, 256> tabla{};
  for (unsigned i = 0; i < 256; ++i) {
    unsigned resto = i << 8;
    for (int bit = 0; bit < 8; ++bit) resto = (resto & 0x8000) != 0 ? (resto << 1) ^ 0x1021 : resto << 1;
    tabla[i] = static_cast<std::uint16_t>(resto & 0xFFFF);
  }
  return tabla;
}

// 16-bit cyclic check of every byte but its own two: it tells any flip of up to three bits and any burst up to 16.
std::uint16_t Control(VistaPagina pagina) {
  static constexpr auto kTabla = TablaDeControl();
  unsigned resto = 0xFFFF;
  const auto sumar = [&resto](std::uint8_t byte) { resto = ((resto << 8) & 0xFFFF) ^ kTabla[(resto >> 8) ^ byte]; };
  for (std::size_t i = 0; i < kControl; ++i) sumar(pagina[i]);
  for (std::size_t i = kPrimero; i < kBytesPagina; ++i) sumar(pagina[i]);
  return static_cast<std::uint16_t>(resto);
}

bool EsContenido(std::uint8_t byte) {
  return byte == static_cast<std::uint8_t>(Contenido::kDatos) || byte == static_cast<std::uint8_t>(Contenido::kCola) ||
         byte == static_cast<std::uint8_t>(Contenido::kEventos);
}

std::size_t Lugar(Contenido contenido, unsigned indice) {
  return kPrimero + indice * Largo(contenido);
}

// "0," to "255,", four bytes each so that one copy of fixed length writes any of them.
struct TextoByte {
  char texto[4];
  std::uint8_t largo;
};

std::array<TextoByte, 256> TextosDeBytes() {
  std::array<TextoByte, 256> textos{};
  for (int i = 0; i < 256; ++i) {
    TextoByte& texto = textos[static_cast<std::size_t>(i)];
    char* fin = std::to_chars(texto.texto, texto.texto + sizeof texto.texto, i).ptr;
    *fin = ',';
    texto.largo = static_cast<std::uint8_t>(fin + 1 - texto.texto);
  }
  return textos;
}

}  // namespace

std::string TextoDe(VistaPagina pagina) {
  static const auto kTextos = TextosDeBytes();
  char texto[4 * kBytesPagina + 8];
  char* fin = texto;
  for (const std::uint8_t byte : pagina) {
    const TextoByte& item = kTextos[byte];
    std::memcpy(fin, item.texto, sizeof item.texto);
    fin += item.largo;
  }
  std::memcpy(fin, "0,0", 3);
  return {texto, fin + 3};
}

unsigned Capacidad(Contenido contenido) {
  return static_cast<unsigned>((kBytesPagina - kPrimero) / Largo(contenido));
}

void PrepararPagina(Pagina pagina, Contenido contenido, std::uint8_t canal, std::uint16_t dia) {
  std::fill(pagina.begin(), pagina.end(), std::uint8_t{255});
  pagina[kContenido] = static_cast<std::uint8_t>(contenido);
  pagina[kCanal] = canal;
  pagina[kCuenta] = 0;
  pagina[kVersion] = kVersionActual;
  EscribirDos(pagina, kDia, dia);
}

void AgregarMuestra(Pagina pagina, const Muestra& muestra) {
  const auto contenido = static_cast<Contenido>(pagina[kContenido]);
  const std::size_t lugar = Lugar(contenido, pagina[kCuenta]);
  pagina[lugar] = muestra.marcas;
  EscribirDos(pagina, lugar + 1, muestra.minuto);
  EscribirDos(pagina, lugar + 3, muestra.valor);
  EscribirDos(pagina, lugar + 5, muestra.maximo);
  EscribirDos(pagina, lugar + 7, muestra.minimo);
  if (contenido == Contenido::kCola) pagina[lugar + 9] = muestra.canal;
  ++pagina[kCuenta];
}

void AgregarSuceso(Pagina pagina, const Suceso& suceso) {
  const std::size_t lugar = Lugar(Contenido::kEventos, pagina[kCuenta]);
  const bool negativo = suceso.valor2 < 0;
  pagina[lugar] = static_cast<std::uint8_t>(suceso.marcas | (negativo ? marca::kNegativo : 0));
  pagina[lugar + 1] = suceso.codigo;
  EscribirDos(pagina, lugar + 2, suceso.segundo);
  pagina[lugar + 4] = static_cast<std::uint8_t>((suceso.segundo >> 16) & 0xFF);
  EscribirDos(pagina, lugar + 5, suceso.valor1);
  EscribirDos(pagina, lugar + 7, static_cast<unsigned>(negativo ? -suceso.valor2 : suceso.valor2));
  ++pagina[kCuenta];
}

void CambiarMarcas(Pagina pagina, unsigned indice, std::uint8_t marcas) {
  pagina[Lugar(static_cast<Contenido>(pagina[kContenido]), indice)] = marcas;
}

void SellarPagina(Pagina pagina) {
  EscribirDos(pagina, kControl, Control(pagina));
}

void CambiarDia(Pagina pagina, std::uint16_t dia) {
  EscribirDos(pagina, kDia, dia);
  SellarPagina(pagina);
}

std::optional<Cabecera> LeerCabecera(VistaPagina pagina) {
  if (!EsContenido(pagina[kContenido]) || pagina[kVersion] != kVersionActual) return std::nullopt;
  const Cabecera cabecera = LeerCabeceraAbierta(pagina);
  if (cabecera.cuenta > Capacidad(cabecera.contenido)) return std::nullopt;
  if (LeerDos(pagina, kControl) != Control(pagina)) return std::nullopt;
  return cabecera;
}

Cabecera LeerCabeceraAbierta(VistaPagina pagina) {
  return {static_cast<Contenido>(pagina[kContenido]), pagina[kCanal], pagina[kCuenta], LeerDos(pagina, kDia)};
}

Muestra LeerMuestra(VistaPagina pagina, const Cabecera& cabecera, unsigned indice) {
  const std::size_t lugar = Lugar(cabecera.contenido, indice);
  return {.minuto = LeerDos(pagina, lugar + 1),
          .canal = cabecera.contenido == Contenido::kCola ? pagina[lugar + 9] : cabecera.canal,
          .marcas = pagina[lugar],
          .valor = LeerDos(pagina, lugar + 3),
          .maximo = LeerDos(pagina, lugar + 5),
          .minimo = LeerDos(pagina, lugar + 7)};
}

Suceso LeerSuceso(VistaPagina pagina, unsigned indice) {
  const std::size_t lugar = Lugar(Contenido::kEventos, indice);
  const std::int32_t valor2 = LeerDos(pagina, lugar + 7);
  return {.segundo = LeerDos(pagina, lugar + 2) | (static_cast<std::uint32_t>(pagina[lugar + 4]) << 16),
          .codigo = pagina[lugar + 1],
          .marcas = pagina[lugar],
          .valor1 = LeerDos(pagina, lugar + 5),
          .valor2 = (pagina[lugar] & marca::kNegativo) != 0 ? -valor2 : valor2};
}

}  // namespace utr::paginas
