#include <gtest/gtest.h>

#include "base/Error.h"
#include "base/Fechas.h"

namespace utr {
namespace {

TEST(Fechas, TextosQueSonFechaYQueNo) {
  const struct {
    const char* texto;
    const char* leida;  // empty: no date
  } casos[] = {
      {"01/02/2006", "01/02/2006 00:00:00"},
      {" 1/2/2006 ", "01/02/2006 00:00:00"},
      {"15/03/2005 23:59", "15/03/2005 23:59:00"},
      {"15-03-2005 1:02:03", "15/03/2005 01:02:03"},
      {"03/15/2005", "15/03/2005 00:00:00"},
      {"2006-12-31", "31/12/2006 00:00:00"},
      {"2006/12/31 08:00:00", "31/12/2006 08:00:00"},
      {"29/02/2004", "29/02/2004 00:00:00"},
      {"1/1/29", "01/01/2029 00:00:00"},
      {"1/1/30", "01/01/1930 00:00:00"},
      {"10:25", "30/12/1899 10:25:00"},
      {"29/02/2005", ""},
      {"31/04/2005", ""},
      {"13/13/2005", ""},
      {"", ""},
      {" ", ""},
      {"12", ""},
      {"1/2", ""},
      {"24:00:00", ""},
      {"10:60", ""},
      {"01/01/2005 10:00 x", ""},
      {"01/01/200", ""},
      {"aa/bb/cccc", ""},
      {"-1/02/2005", ""},
      {"10:25 10:26", ""},
  };
  for (const auto& c : casos) {
    const auto leida = LeerFecha(c.texto);
    EXPECT_EQ(leida ? TextoFechaHora(*leida) : "", c.leida) << '"' << c.texto << '"';
    EXPECT_EQ(EsFecha(c.texto), leida.has_value());
  }
  EXPECT_THROW(ConvertirAFecha("ayer"), Error);
}

TEST(Fechas, LosSegundosVuelvenALaMismaFecha) {
  for (const char* texto : {"01/01/1970 00:00:00", "31/12/1969 23:59:59", "29/02/2000 12:34:56", "01/01/2001 00:00:01",
                            "31/12/9999 23:59:59", "01/03/1900 00:00:00"}) {
    EXPECT_EQ(TextoFechaHora(FechaDeSegundos(Segundos(ConvertirAFecha(texto)))), texto);
  }
  EXPECT_EQ(Segundos(ConvertirAFecha("01/01/2000")), 946684800);
  EXPECT_LT(ConvertirAFecha("31/12/2005 23:59"), ConvertirAFecha("01/01/2006"));
}

}  // namespace
}  // namespace utr
