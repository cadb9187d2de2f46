#pragma once

#include <gtest/gtest.h>

#include <cstdint>

#include "base/Error.h"

namespace utr::prueba {

// The number of the error that an action raises, 0 without one. An error has to say something, whatever its number.
template <class Accion>
std::int32_t NumeroDeError(Accion accion) {
  try {
    accion();
  } catch (const Error& error) {
    EXPECT_FALSE(error.Descripcion().empty()) << error.Numero();
    return error.Numero();
  }
  return 0;
}

}  // namespace utr::prueba
