#include "base/Texto.h"

#include <array>
#include <cstring>

namespace utr {
namespace {

constexpr std::uint32_t kSustituto = 0xFFFD;  // stands for what is no character
constexpr std::uint64_t kNoAscii = 0x8080808080808080ULL;

// The code points of the bytes 0x80 to 0x9F in the code page 1252 (0 where the page has none).
constexpr std::array<std::uint16_t, 32> kCp1252 = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                   0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// In UTF-8 the capitals À to Þ are C3 80 to C3 9E and their small letters C3 A0 to C3 BE; × (C3 97) and ÷ (C3 B7) are
// no letters.
std::string CambiarCaso(std::string_view texto, bool a_mayusculas) {
  std::string s(texto);
  for (std::size_t i = 0; i < s.size(); ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (a_mayusculas ? (c >= 'a' && c <= 'z') : (c >= 'A' && c <= 'Z')) {
      s[i] = static_cast<char>(c ^ 0x20);
    } else if (c == 0xC3 && i + 1 < s.size()) {
      const auto d = static_cast<unsigned char>(s[++i]);
      const unsigned desde = a_mayusculas ? 0xA0 : 0x80;
      if (d >= desde && d <= desde + 0x1E && d != desde + 0x17) s[i] = static_cast<char>(d ^ 0x20);
    }
  }
  return s;
}

// The length of the well-formed UTF-8 sequence at `i`, or 0.
std::size_t Secuencia(std::string_view b, std::size_t i) {
  const auto en = [&](std::size_t k) { return k < b.size() ? static_cast<unsigned char>(b[k]) : 0U; };
  const auto sigue = [&](std::size_t k) { return (en(k) & 0xC0U) == 0x80U; };
  const unsigned c = en(i);
  if (c < 0x80) return 1;
  if (c >= 0xC2 && c <= 0xDF) return sigue(i + 1) ? 2 : 0;
  if (c >= 0xE0 && c <= 0xEF) {
    if (!sigue(i + 1) || !sigue(i + 2)) return 0;
    if (c == 0xE0 && en(i + 1) < 0xA0) return 0;
    if (c == 0xED && en(i + 1) > 0x9F) return 0;
    return 3;
  }
  if (c >= 0xF0 && c <= 0xF4) {
    if (!sigue(i + 1) || !sigue(i + 2) || !sigue(i + 3)) return 0;
    if (c == 0xF0 && en(i + 1) < 0x90) return 0;
    if (c == 0xF4 && en(i + 1) > 0x8F) return 0;
    return 4;
  }
  return 0;
}

// The first place from `i` on that isn't ASCII, or the end.
std::size_t SaltarAscii(std::string_view bytes, std::size_t i) {
  std::uint64_t ocho = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    std::memcpy(&ocho, bytes.data() + i, 8);
    if ((ocho & kNoAscii) != 0) break;
  }
  while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80) ++i;
  return i;
}

// Whether there is a whole character beyond ASCII.
bool TieneUtf8(std::string_view bytes) {
  std::size_t i = 0;
  for (;;) {
    i = SaltarAscii(bytes, i);
    if (i >= bytes.size()) return false;
    if (Secuencia(bytes, i) != 0) return true;
    ++i;
  }
}

}  // namespace

std::string_view Recortar(std::string_view texto) {
  while (!texto.empty() && texto.front() == ' ') texto.remove_prefix(1);
  while (!texto.empty() && texto.back() == ' ') texto.remove_suffix(1);
  return texto;
}

std::vector<std::string_view> Separar(std::string_view texto, char separador) {
  std::vector<std::string_view> partes;
  for (;;) {
    const auto fin = texto.find(separador);
    partes.push_back(texto.substr(0, fin));
    if (fin == std::string_view::npos) return partes;
    texto.remove_prefix(fin + 1);
  }
}

std::string Unir(std::span<const std::string> partes, std::string_view separador) {
  std::string texto;
  for (std::size_t i = 0; i < partes.size(); ++i) {
    if (i > 0) texto += separador;
    texto += partes[i];
  }
  return texto;
}

std::string Reemplazar(std::string_view texto, std::string_view buscado, std::string_view nuevo) {
  std::string resultado;
  for (;;) {
    const auto fin = texto.find(buscado);
    resultado += texto.substr(0, fin);
    if (fin == std::string_view::npos) return resultado;
    resultado += nuevo;
    texto.remove_prefix(fin + buscado.size());
  }
}

std::string Mayusculas(std::string_view texto) {
  return CambiarCaso(texto, true);
}
std::string Minusculas(std::string_view texto) {
  return CambiarCaso(texto, false);
}

bool IgualSinCaso(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a == b || Minusculas(a) == Minusculas(b));
}

std::size_t Largo(std::string_view texto) {
  std::size_t n = 0;
  for (std::size_t i = 0; i < texto.size(); ++n) {
    const std::size_t largo = Secuencia(texto, i);
    i += largo == 0 ? 1 : largo;
  }
  return n;
}

void AgregarUtf8(std::string& destino, std::uint32_t codigo) {
  if (codigo < 0x80) {
    destino.push_back(static_cast<char>(codigo));
  } else if (codigo < 0x800) {
    destino.push_back(static_cast<char>(0xC0 | (codigo >> 6)));
    destino.push_back(static_cast<char>(0x80 | (codigo & 0x3F)));
  } else if (codigo < 0x10000) {
    destino.push_back(static_cast<char>(0xE0 | (codigo >> 12)));
    destino.push_back(static_cast<char>(0x80 | ((codigo >> 6) & 0x3F)));
    destino.push_back(static_cast<char>(0x80 | (codigo & 0x3F)));
  } else {
    destino.push_back(static_cast<char>(0xF0 | (codigo >> 18)));
    destino.push_back(static_cast<char>(0x80 | ((codigo >> 12) & 0x3F)));
    destino.push_back(static_cast<char>(0x80 | ((codigo >> 6) & 0x3F)));
    destino.push_back(static_cast<char>(0x80 | (codigo & 0x3F)));
  }
}

std::string DesdeCp1252(std::string_view bytes) {
  std::string texto;
  texto.reserve(bytes.size() + bytes.size() / 8);
  for (const char b : bytes) {
    const auto c = static_cast<unsigned char>(b);
    if (c >= 0x80 && c <= 0x9F) {
      const auto codigo = kCp1252[c - 0x80U];
      AgregarUtf8(texto, codigo == 0 ? kSustituto : codigo);
    } else {
      AgregarUtf8(texto, c);
    }
  }
  return texto;
}

std::string DesdeUtf16(std::string_view bytes, bool alto_primero) {
  std::string texto;
  texto.reserve(bytes.size() / 2 + bytes.size() / 8);
  const auto unidad = [&](std::size_t i) {
    const auto a = static_cast<unsigned char>(bytes[i]);
    const auto b = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<std::uint32_t>(alto_primero ? a << 8 | b : b << 8 | a);
  };
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    std::uint32_t codigo = i + 1 < bytes.size() ? unidad(i) : kSustituto;
    if (codigo >= 0xD800 && codigo <= 0xDFFF) {
      const std::uint32_t segunda = codigo <= 0xDBFF && i + 3 < bytes.size() ? unidad(i + 2) : 0;
      const bool par = segunda >= 0xDC00 && segunda <= 0xDFFF;
      codigo = par ? 0x10000 + ((codigo - 0xD800) << 10) + (segunda - 0xDC00) : kSustituto;
      if (par) i += 2;
    }
    AgregarUtf8(texto, codigo);
  }
  return texto;
}

std::string ReparadoUtf8(std::string_view bytes) {
  std::string texto;
  texto.reserve(bytes.size() + bytes.size() / 8);
  for (;;) {
    const std::size_t bien = PrefijoUtf8(bytes);
    texto += bytes.substr(0, bien);
    if (bien == bytes.size()) return texto;
    AgregarUtf8(texto, kSustituto);
    bytes.remove_prefix(bien + 1);
  }
}

std::string ComoUtf8(std::string_view bytes) {
  return TieneUtf8(bytes) ? ReparadoUtf8(bytes) : DesdeCp1252(bytes);
}

std::size_t PrefijoUtf8(std::string_view bytes) {
  std::size_t i = 0;
  for (;;) {
    i = SaltarAscii(bytes, i);
    const std::size_t largo = i < bytes.size() ? Secuencia(bytes, i) : 0;
    if (largo == 0) return i;
    i += largo;
  }
}

bool EsUtf8(std::string_view bytes) {
  return PrefijoUtf8(bytes) == bytes.size();
}

}  // namespace utr
