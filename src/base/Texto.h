#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Small operations on UTF-8 text.
namespace utr {

// The text without blanks (only the character 32) at its ends.
std::string_view Recortar(std::string_view texto);

// The parts of a text between separators. An empty text gives one empty part; n separators give n + 1 parts.
std::vector<std::string_view> Separar(std::string_view texto, char separador);

// The parts joined with the separator between them; nothing behind the last one.
std::string Unir(std::span<const std::string> partes, std::string_view separador);

// Every occurrence of `buscado` (not empty) replaced.
std::string Reemplazar(std::string_view texto, std::string_view buscado, std::string_view nuevo);

// Capitals and small letters of ASCII and of the letters of Latin-1 (so that "ñ" and "Ñ" match); other characters stay.
std::string Mayusculas(std::string_view texto);
std::string Minusculas(std::string_view texto);

// True when both texts are equal but for the case that Minusculas removes.
bool IgualSinCaso(std::string_view a, std::string_view b);

// The number of characters (code points) of a UTF-8 text; a stray byte counts as one.
std::size_t Largo(std::string_view texto);

// Appends a character, given as its code point of at most U+10FFFF.
void AgregarUtf8(std::string& destino, std::uint32_t codigo);

// Bytes in the code page 1252 as UTF-8.
std::string DesdeCp1252(std::string_view bytes);

// UTF-16 as UTF-8; half a pair and a last single byte become U+FFFD.
std::string DesdeUtf16(std::string_view bytes, bool alto_primero);

// UTF-8 with every byte that isn't part of a character replaced by U+FFFD.
std::string ReparadoUtf8(std::string_view bytes);

// Bytes of an unknown encoding as UTF-8: with at least one whole character beyond ASCII they are damaged UTF-8 and are
// repaired, with none they are code page 1252.
std::string ComoUtf8(std::string_view bytes);

// How many bytes from the first on are well-formed UTF-8, in whole characters.
std::size_t PrefijoUtf8(std::string_view bytes);

// True when the bytes are well-formed UTF-8.
bool EsUtf8(std::string_view bytes);

}  // namespace utr
