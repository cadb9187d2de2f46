#pragma once

#include <gtest/gtest.h>

#include "retrieved/ContextoRegistros.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {

// What every test of this folder works with: a recording driver, a still clock (15/03/2026 10:00:00) and the catalogues
// that the program ships.
class Banco : public testing::Test {
 protected:
  prueba::Carpeta carpeta_;
  RelojFalso reloj_;
  ComunicadorFalso comunicador_;
  Catalogo catalogo_{CARPETA_DATOS};
  RegistroErrores registro_{carpeta_ / "utr.err", reloj_};
  ContextoRegistros contexto_{comunicador_, reloj_, catalogo_, registro_};
};

}  // namespace utr
