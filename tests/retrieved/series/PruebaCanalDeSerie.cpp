#include <gtest/gtest.h>

#include "retrieved/series/CanalDeSerie.h"
#include "support/Tablas.h"

namespace utr {
namespace {

std::string Limites(const CanalDeSerie& canal) {
  std::string texto;
  for (const LimiteSerie& limite : canal.limites) {
    texto +=
        std::string(texto.empty() ? "" : " ") + limite.campo + "=" + std::to_string(static_cast<int>(limite.valor));
  }
  return texto;
}

TEST(PruebaCanalDeSerie, LimitesQueElTipoTiene) {
  struct Caso {
    const char* canal;
    const char* tipo;
    const char* flags;
    const char* maximo;
    const char* limites;
    const char* span = "4096";
  };
  constexpr Caso kCasos[] = {
      {"1", "0", "3", "9", "AMax=7 AMin=2 MaxValid=9 MinValid=1"},
      {"1", "0", "1", "9", "MaxValid=9 MinValid=1"},  // alarms not enabled
      {"2", "0", "3", "1", "AMax=7 AMin=2"},          // nothing between the limits: never set
      {"4", "1", "3", "9", "AMax=7 AMin=2 AlMaxPico=8 AlMinPico=3 MaxValid=9 MinValid=1"},
      {"15", "5", "3", "9", "MaxValid=9", "0"},
      {"15", "5", "3", "0", ""},      // never set
      {"1", "0", "3", "9", "", "0"},  // without a span the records stay counts
      {"4", "1", "3", "9", "", "-4096"},
      {"4", "4", "3", "9", ""},  // a kind without a history
      {"16", "7", "3", "9", ""},
      {"2", "6", "3", "9", ""},  // a kind that is none
  };
  for (const Caso& caso : kCasos) {
    const auto tabla = TablaDeCanales({{{"Canal", caso.canal},
                                        {"Tipo", caso.tipo},
                                        {"Flags", caso.flags},
                                        {"Span", caso.span},
                                        {"MaxValid", caso.maximo},
                                        {"MinValid", "1"},
                                        {"AMax", "7"},
                                        {"AMin", "2"},
                                        {"AlMaxPico", "8"},
                                        {"AlMinPico", "3"}}});
    EXPECT_EQ(Limites(LeerCanalDeSerie(*tabla, static_cast<std::int16_t>(std::stoi(caso.canal)))), caso.limites)
        << caso.canal << " " << caso.tipo << " " << caso.flags;
  }
}

TEST(PruebaCanalDeSerie, LaPrimeraFilaDelCanalYNadaSinElla) {
  const auto tabla = TablaDeCanales({{{"Canal", "2"}, {"TStorage", "5"}},
                                     {{"Canal", " 3 "}, {"TStorage", "10"}},
                                     {{"Canal", "3"}, {"TStorage", "15"}},
                                     {{"Canal", "4"}, {"TStorage", "0"}},
                                     {{"Canal", "5"}, {"TStorage", "x"}, {"AMax", "x"}, {"Flags", "3"}}});
  tabla->Filter("Canal='2'");
  EXPECT_EQ(LeerCanalDeSerie(*tabla, 3).minutos, 10);
  for (const std::int16_t canal : std::initializer_list<std::int16_t>{4, 5, 6})
    EXPECT_EQ(LeerCanalDeSerie(*tabla, canal).minutos, std::nullopt) << canal;
  EXPECT_EQ(Limites(LeerCanalDeSerie(*tabla, 5)).find("AMax"), std::string::npos);
  EXPECT_EQ(tabla->RecordCount(), 1U);
  EXPECT_EQ(LeerCanalDeSerie(*TablaDeTextos({"Nada"}, {{"1"}}), 1).minutos, std::nullopt);
}

}  // namespace
}  // namespace utr
