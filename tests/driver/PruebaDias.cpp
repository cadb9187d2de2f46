#include <gtest/gtest.h>

#include "base/Fechas.h"
#include "driver/Dias.h"

namespace utr {
namespace {

TEST(Dias, SeCuentanDesdeEl2000) {
  const struct {
    FechaHora fecha;
    int dia;
  } casos[] = {{{2000, 1, 1, 0, 0, 0}, 0},
               {{1999, 12, 31, 23, 59, 59}, -1},
               {{2001, 1, 1, 12, 0, 0}, 366},
               {{1960, 2, 29, 0, 0, 1}, -14551}};
  for (const auto& caso : casos) {
    EXPECT_EQ(DiaDe(Segundos(caso.fecha)), caso.dia);
    EXPECT_EQ(FechaDeSegundos(SegundosDeDia(caso.dia)).dia, caso.fecha.dia);
    EXPECT_EQ(FechaDeDia(caso.dia), TextoFecha(caso.fecha));
  }
}

}  // namespace
}  // namespace utr
