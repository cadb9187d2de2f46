#include <gtest/gtest.h>

#include "base/Texto.h"

namespace utr {
namespace {

TEST(Texto, SepararYUnirSonInversos) {
  for (const char* texto : {"", ",", "1,2,3", "a,,b", ",x,"}) {
    std::vector<std::string> partes;
    for (const auto p : Separar(texto, ',')) partes.emplace_back(p);
    EXPECT_EQ(Unir(partes, ","), texto);
  }
  EXPECT_EQ(Separar("", ',').size(), 1U);
  EXPECT_EQ(Separar("3#7#", '#').size(), 3U);
}

TEST(Texto, ElCasoAlcanzaALasLetrasDelEspanol) {
  EXPECT_EQ(Minusculas("ÁÉÍÓÚÑÜ EA×"), "áéíóúñü ea×");
  EXPECT_EQ(Mayusculas("áéíóúñü plv÷"), "ÁÉÍÓÚÑÜ PLV÷");
  EXPECT_TRUE(IgualSinCaso("CAÑADA", "cañada"));
  EXPECT_FALSE(IgualSinCaso("canada", "cañada"));
  EXPECT_FALSE(IgualSinCaso("[", "{"));
}

TEST(Texto, Utf8SeReconoceYSeCuenta) {
  const struct {
    const char* bytes;
    bool valido;
    std::size_t largo;
  } casos[] = {{"", true, 0},
               {"agua", true, 4},
               {"ñandú", true, 5},
               {"\xE2\x82\xAC", true, 1},
               {"\xF0\x9F\x92\xA7", true, 1},
               {"\xF1o", false, 2},
               {"\xC0\xAF", false, 2},
               {"\xED\xA0\x80", false, 3},
               {"a\xC3", false, 2}};
  for (const auto& c : casos) {
    EXPECT_EQ(EsUtf8(c.bytes), c.valido);
    EXPECT_EQ(Largo(c.bytes), c.largo);
  }
  EXPECT_EQ(DesdeCp1252("Estaci\xF3n \x80"), "Estación €");
}

TEST(Texto, RecortarSoloQuitaBlancos) {
  EXPECT_EQ(Recortar("  a b "), "a b");
  EXPECT_EQ(Recortar("\ta "), "\ta");
  EXPECT_EQ(Recortar("   "), "");
  EXPECT_EQ(Reemplazar("a.bkp.bkp", ".bkp", ".ucg"), "a.ucg.ucg");
}

}  // namespace
}  // namespace utr
