#include <gtest/gtest.h>

#include "session/Acceso.h"

namespace utr {
namespace {

using Resultado = Acceso::Resultado;

TEST(Acceso, LaTerceraEquivocacionEsLaUltima) {
  Acceso acceso("Pampas");
  EXPECT_EQ(acceso.Probar("pampas"), Resultado::kReintentar);
  EXPECT_EQ(acceso.Probar("Pampas "), Resultado::kReintentar);
  EXPECT_EQ(acceso.Probar(""), Resultado::kAgotada);
}

TEST(Acceso, AciertaHastaElTercerIntento) {
  Acceso acceso("Ñandú");
  EXPECT_EQ(acceso.Probar("Nandu"), Resultado::kReintentar);
  EXPECT_EQ(acceso.Probar("ñandú"), Resultado::kReintentar);
  EXPECT_EQ(acceso.Probar("Ñandú"), Resultado::kAceptada);
}

TEST(Acceso, ReglasDelCambioDeClave) {
  EXPECT_TRUE(PuedeCambiarClave("Pampas", "Pampas"));
  EXPECT_FALSE(PuedeCambiarClave("pampas", "Pampas"));
  EXPECT_FALSE(PuedeCambiarClave("Pampa", "Pampas"));
  EXPECT_FALSE(PuedeCambiarClave("", "")) << "an empty entry opens nothing, even against an empty password";
  EXPECT_TRUE(ClaveNuevaValida("a", "a"));
  EXPECT_FALSE(ClaveNuevaValida("a", "A"));
  EXPECT_FALSE(ClaveNuevaValida("", ""));
}

}  // namespace
}  // namespace utr
