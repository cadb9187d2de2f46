#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The forms of text that cross the driver's contract.
namespace utr {

// Page text: decimal bytes joined by ",". The empty text for no bytes.
std::string TextoPagina(std::span<const std::uint8_t> bytes);

// The bytes of a page text, or nothing when an item isn't a whole number from 0 to 255. An empty text has no bytes.
std::optional<std::vector<std::uint8_t>> LeerTextoPagina(std::string_view texto);

// Pair text of a 16-bit value, low byte first: 300 is "44/1".
std::string TextoPar(std::uint16_t valor);

// The value of a pair text, or nothing.
std::optional<std::uint16_t> LeerPar(std::string_view texto);

// Number of a page of the unit, 0 to 65535, or nothing for a text that is none.
std::optional<int> NumeroDePagina(std::string_view texto);

// Number of a serial or TCP port, 1 to 65535; 0 for a text that is none.
int NumeroDePuerto(std::string_view texto);

// Whole numbers from 1 to `mayor`, each followed by the separator; behind the last one it may be missing. Nothing for a
// text that isn't that; an empty one has no numbers.
std::optional<std::vector<int>> LeerNumeros(std::string_view texto, char separador, int mayor);

// Two pair texts joined by "/", the number of an event and its value; nothing for another text.
std::optional<std::pair<std::uint16_t, std::uint16_t>> LeerDosPares(std::string_view texto);

// A link settings text taken apart.
struct Enlace {
  bool por_ip = false;
  std::int32_t velocidad = 0;  // bits per second of a serial link
  std::string direccion;       // dotted address over IP
};

// Reads "9600,n,8,1", "9600n,8,1" and "192.168.0.1,n,8,1"; nothing for any other form.
std::optional<Enlace> LeerEnlace(std::string_view texto);

// True for four decimal numbers from 0 to 255 joined by ".", without zeros ahead of them.
bool EsDireccionIP(std::string_view texto);

}  // namespace utr
