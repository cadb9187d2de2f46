#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "base/Numeros.h"
#include "support/NumeroDeError.h"

namespace utr {
namespace {

using prueba::NumeroDeError;

TEST(Numeros, ValTomaElPrefijoNumericoMasLargo) {
  const struct {
    const char* texto;
    double valor;
  } casos[] = {
      {"", 0},        {"abc", 0},  {"5,5", 5},  {" 12.5", 12.5}, {"1 2 3", 123},   {"-3x", -3},
      {"+7", 7},      {".5", 0.5}, {"5.", 5},   {"1e3m", 1000},  {"1e", 1},        {"1e+", 1},
      {"1.2.3", 1.2}, {"--1", 0},  {"-", 0},    {".", 0},        {"\t4\r\n2", 42}, {"1D2", 100},
      {"1e-400", 0},  {"0x10", 0}, {"- 8", -8}, {"2048", 2048},  {"3.7E1 ", 37},   {"ñ1", 0},
  };
  for (const auto& c : casos) EXPECT_DOUBLE_EQ(Val(c.texto), c.valor) << '"' << c.texto << '"';
}

TEST(Numeros, LoQueNoCabeEnUnDobleEsCeroODesborda) {
  const std::string ceros(330, '0');
  for (const std::string& chico : {std::string("1e-400"), std::string("-1E-99999999999999999999"), "0." + ceros + "1",
                                   "0." + ceros + "1e5", "-." + ceros + "9E+1"}) {
    EXPECT_EQ(LeerDoble(chico), 0) << chico;
  }
  for (const std::string& grande :
       {std::string("1e400"), "1" + ceros, "12" + ceros + ".5e-3", std::string("1e99999999999999999999")}) {
    EXPECT_FALSE(EsNumerico(grande)) << grande;
  }
}

TEST(Numeros, ElExponenteMasLargoNoDaLaVuelta) {
  const double infinito = std::numeric_limits<double>::infinity();
  const std::string ceros(500, '0');
  const std::pair<std::string, double> casos[] = {{"1e9223372036854775807", infinito},
                                                  {"12.5e9223372036854775807", infinito},
                                                  {"-1e9223372036854775808", -infinito},
                                                  {"0.01e-9223372036854775808", 0},
                                                  {"0.01e-9223372036854775807", 0},
                                                  {"0e9223372036854775807", 0},
                                                  {"1" + ceros + "e-500", 1},
                                                  {"0." + ceros + "25e501", 2.5}};
  for (const auto& [texto, valor] : casos) EXPECT_EQ(Val(texto), valor) << texto;
}

TEST(Numeros, LosEnterosDe64BitsSonExactos) {
  const struct {
    const char* texto;
    std::optional<std::int64_t> leido;   // rounded
    std::optional<std::int64_t> exacto;  // only where it is whole
  } casos[] = {
      {"9007199254740993", 9007199254740993, 9007199254740993},
      {" +9,007,199,254,740,993.0 ", 9007199254740993, 9007199254740993},
      {"-90071992547409.93e2", -9007199254740993, -9007199254740993},
      {"9007199254740993.5", 9007199254740994, {}},
      {"9007199254740992.5", 9007199254740992, {}},
      {"9007199254740992.50001", 9007199254740993, {}},
      {"-2.5", -2, {}},
      {".5", 0, {}},
      {"0.04", 0, {}},
      {"4e2", 400, 400},
      {"-0.000", 0, 0},
      {"9223372036854775807.0", std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808.0", std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::min()},
      {"9223372036854775808", {}, {}},
      {"9223372036854775807.5", {}, {}},
      {"1e19", {}, {}},
      {"1e9223372036854775807", {}, {}},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(EnteroExacto(c.texto), c.exacto) << c.texto;
    if (c.leido) {
      EXPECT_EQ(LeerEntero64(c.texto), *c.leido) << c.texto;
    } else {
      EXPECT_EQ(NumeroDeError([&] { LeerEntero64(c.texto); }), error::kDesborde) << c.texto;
    }
  }
  EXPECT_EQ(NumeroDeError([] { LeerEntero64("x"); }), error::kTipos);
  EXPECT_FALSE(EnteroExacto(""));
}

TEST(Numeros, LaComparacionMiraTodasLasCifras) {
  // Each is more than the one before it; texts of one line are equal.
  const std::vector<std::vector<const char*>> orden = {
      {"-1e30"},
      {"-9007199254740993", "-9,007,199,254,740,993.0"},
      {"-9007199254740992"},
      {"-.010", "-1e-2"},
      {"-0.0099999999999999999999"},
      {"0", "-0.00", "0e5"},
      {"1e-400"},
      {"1"},
      {"1.0000000000000000000001"},
      {"18446744073709551614"},
      {"18446744073709551615", "1.8446744073709551615e19"},
  };
  for (std::size_t i = 0; i < orden.size(); ++i) {
    for (std::size_t j = 0; j < orden.size(); ++j) {
      for (const char* a : orden[i]) {
        for (const char* b : orden[j]) EXPECT_EQ(CompararNumeros(a, b), i <=> j) << a << " and " << b;
      }
    }
  }
  EXPECT_EQ(NumeroDeError([] { CompararNumeros("1", "N/D"); }), error::kTipos);
}

TEST(Numeros, PruebaYLecturaEstrictaCoinciden) {
  const struct {
    const char* texto;
    bool numerico;
    double valor;
  } casos[] = {
      {"5,5", true, 55},
      {"1,234.5", true, 1234.5},
      {" 7 ", true, 7},
      {"-0.5", true, -0.5},
      {"+1e2", true, 100},
      {"", false, 0},
      {" ", false, 0},
      {"5 5", false, 0},
      {"1.2,3", false, 0},
      {",5", false, 0},
      {"12abc", false, 0},
      {"N/D", false, 0},
      {"1e999", false, 0},
      {"1/2", false, 0},
      {"44", true, 44},
      {"000012", true, 12},
      {"123456789012345678", true, 123456789012345678.0},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(EsNumerico(c.texto), c.numerico) << '"' << c.texto << '"';
    if (c.numerico) {
      EXPECT_DOUBLE_EQ(LeerDoble(c.texto), c.valor) << c.texto;
    } else if (std::string_view(c.texto) != "1e999") {
      EXPECT_EQ(NumeroDeError([&] { LeerDoble(c.texto); }), error::kTipos) << '"' << c.texto << '"';
    }
  }
  EXPECT_EQ(NumeroDeError([] { LeerDoble("1e999"); }), error::kDesborde);
}

TEST(Numeros, EnterosRedondeanAlParYDesbordan) {
  const struct {
    double numero;
    std::int16_t entero;
  } casos[] = {{25 / 10.0, 2}, {35 / 10.0, 4}, {-2.5, -2},       {-3.5, -4},
               {2.51, 3},      {0.5, 0},       {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& c : casos) EXPECT_EQ(Entero16(c.numero), c.entero) << c.numero;
  EXPECT_EQ(NumeroDeError([] { Entero16(32767.5); }), error::kDesborde);
  EXPECT_EQ(NumeroDeError([] { LeerEntero16("40000"); }), error::kDesborde);
  EXPECT_EQ(NumeroDeError([] { Entero32(2147483648.0); }), error::kDesborde);
  EXPECT_EQ(NumeroDeError([] { LeerEntero16("x"); }), error::kTipos);
  EXPECT_EQ(LeerEntero32("65,535"), 65535);
}

TEST(Numeros, TextoPlanoLlevaElBlancoDeAdelante) {
  const struct {
    double numero;
    const char* texto;
  } casos[] = {{7 * 0.2, " 1.4"},
               {12.5, " 12.5"},
               {-3, "-3"},
               {0, " 0"},
               {-0.0, " 0"},
               {0.2, " 0.2"},
               {1e15, " 1E+15"},
               {123456789012345.0, " 123456789012345"},
               {1.0 / 3, " 0.333333333333333"},
               {100, " 100"}};
  for (const auto& c : casos) EXPECT_EQ(TextoPlano(c.numero), c.texto);
  EXPECT_EQ(TextoGeneral(0.5), "0.5");
}

TEST(Numeros, FormatoFijoRedondeaElTextoDecimalLejosDeCero) {
  const struct {
    double numero;
    const char* texto;
  } casos[] = {
      {105, "105.000"},
      {5, "5.000"},
      {1.0005, "1.001"},
      {-1.0005, "-1.001"},
      {-0.0004, "0.000"},
      {-0.0005, "-0.001"},
      {0, "0.000"},
      {0.0005, "0.001"},
      {0.00049999, "0.000"},
      {9.9995, "10.000"},
      {999.9996, "1000.000"},
      {1234567.8915, "1234567.892"},
      {2.0015, "2.002"},
      {1e15, "1000000000000000.000"},
      {0.1 + 0.2, "0.300"},
      {-12.3456, "-12.346"},
      {99999999999999.9, "99999999999999.900"},
      {1e-300, "0.000"},
      {1.5e20, "150000000000000000000.000"},
  };
  for (const auto& c : casos) EXPECT_EQ(FormatoFijo(c.numero), c.texto) << c.numero;
}

// Numbers of four decimals, a tenth of them right between two texts, on both sides of where the quick way ends.
TEST(Numeros, FormatoFijoRedondeaComoLosEnteros) {
  for (std::uint64_t diezmilesimos = 5; diezmilesimos < 100'000'000'000; diezmilesimos += 1 + diezmilesimos / 997 * 5) {
    const std::uint64_t milesimos = (diezmilesimos + 5) / 10;
    std::string decimales = std::to_string(1000 + milesimos % 1000);
    decimales.front() = '.';
    const std::string texto = std::to_string(milesimos / 1000) + decimales;
    ASSERT_EQ(FormatoFijo(static_cast<double>(diezmilesimos) / 10000), texto) << diezmilesimos;
  }
}

}  // namespace
}  // namespace utr
