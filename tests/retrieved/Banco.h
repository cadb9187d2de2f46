#pragma once

#include <gtest/gtest.h>

#include "base/Error.h"
#include "retrieved/ContextoRegistros.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {

// What every test of this folder works with: a recording driver, a still clock (15/03/2026 10:00:00) and the catalogues
// that the program ships.
class Banco : public testing::Test {
 protected:
  // The number of the error that an action raises; 0 without one.
  template <typename Accion>
  static std::int32_t ErrorDe(Accion accion) {
    try {
      accion();
    } catch (const Error& error) {
      return error.Numero();
    }
    return 0;
  }

  prueba::Carpeta carpeta_;
  RelojFalso reloj_;
  ComunicadorFalso comunicador_;
  Catalogo catalogo_{CARPETA_DATOS};
  RegistroErrores registro_{carpeta_ / "utr.err", reloj_};
  ContextoRegistros contexto_{comunicador_, reloj_, catalogo_, registro_};
};

}  // namespace utr
