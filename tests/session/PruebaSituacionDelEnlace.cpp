#include <gtest/gtest.h>

#include "session/SituacionDelEnlace.h"

namespace utr {

// What counts is what was on show when the operator acted, not what has turned out since.
TEST(SituacionDelEnlace, SeEscribeEnLaClaseDeUnidadQueEstabaALaVista) {
  using C = ClaseDeUnidad;
  const struct {
    C a_la_vista;
    bool en_practica;
    bool en_real;
  } casos[] = {{C::kSimulada, true, false},
               {C::kDePractica, true, false},
               {C::kReal, false, true},
               {C::kDesconocida, true, true}};
  for (const auto& caso : casos) {
    SituacionDelEnlace situacion;
    situacion.PonerConexion(caso.a_la_vista);
    EXPECT_TRUE(situacion.Consiente(true) && situacion.Consiente(false)) << "nobody has done anything yet";
    situacion.ActuaElOperador();
    for (const C ahora : {C::kDesconocida, C::kReal, C::kDePractica}) {
      situacion.PonerClase(ahora);
      EXPECT_EQ(situacion.Consiente(true), caso.en_practica) << TextoDe(caso.a_la_vista);
      EXPECT_EQ(situacion.Consiente(false), caso.en_real) << TextoDe(caso.a_la_vista);
    }
  }
}

// Silence in the middle of a write isn't another unit on show, whatever is clicked meanwhile; a new connection is.
TEST(SituacionDelEnlace, ElSilencioNoEsOtraUnidadALaVista) {
  SituacionDelEnlace situacion;
  situacion.PonerConexion(ClaseDeUnidad::kDesconocida);
  situacion.PonerClase(ClaseDeUnidad::kDePractica);
  situacion.ActuaElOperador();
  situacion.PonerClase(ClaseDeUnidad::kDesconocida);
  situacion.ActuaElOperador();
  EXPECT_FALSE(situacion.Consiente(false));
  situacion.PonerConexion(ClaseDeUnidad::kDesconocida);
  EXPECT_FALSE(situacion.Consiente(false)) << "it was begun before";
  situacion.ActuaElOperador();
  EXPECT_TRUE(situacion.Consiente(false));
}

}  // namespace utr
