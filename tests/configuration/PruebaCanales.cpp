#include <gtest/gtest.h>

#include "configuration/Canales.h"

namespace utr {
namespace {

TEST(TipoEntrada, PorTramos) {
  for (std::int16_t canal = -1; canal <= 28; ++canal) {
    const bool analogica = (canal >= 1 && canal <= 14) || canal == 22 || canal == 23;
    const char* clase = analogica                    ? "Entrada Analógica"
                        : canal == 15                ? "Pluviométrico"
                        : canal >= 16 && canal <= 21 ? "Entrada Digital"
                                                     : "N/D";
    EXPECT_EQ(TipoEntrada(canal), clase) << canal;
  }
}

struct CasoTipo {
  const char* tipo;
  int canal;
  const char* palabra;
};

TEST(DescripcionTipo, PorTipoYCanal) {
  const CasoTipo casos[] = {{"0", 1, "Limnimetro"},
                            {"0", 2, "Analógico"},
                            {"0", 23, "Analógico"},
                            {"0", 24, " - "},
                            {"0", 0, " - "},
                            {"", 1, "Limnimetro"},
                            {"abc", 3, "Analógico"},
                            {"1", 1, "Meteorologico"},
                            {"2", 2, "Velocidad de Viento"},
                            {"3 viento", 3, "Direccion de Viento"},
                            {"4", 5, "Supervisión Analogica"},
                            {" 5", 15, "Pluviómetro"},
                            {"6", 3, ""},
                            {"7", 16, "Supervisión Digital"},
                            {"8", 1, ""},
                            {"-1", 1, ""}};
  for (const CasoTipo& caso : casos)
    EXPECT_EQ(DescripcionTipo(caso.tipo, static_cast<std::int16_t>(caso.canal)), caso.palabra) << caso.tipo;
}

TEST(Flags, BitsDeCanalYAlarma) {
  EXPECT_TRUE(CanalHabilitado(LeerFlags("1")));
  EXPECT_TRUE(CanalHabilitado(LeerFlags(" 31")));
  EXPECT_FALSE(CanalHabilitado(LeerFlags("30")));
  EXPECT_FALSE(CanalHabilitado(LeerFlags("")));
  EXPECT_FALSE(CanalHabilitado(LeerFlags("9999999999999999999999")));
  EXPECT_TRUE(AlarmaHabilitada(LeerFlags("2")));
  EXPECT_FALSE(AlarmaHabilitada(LeerFlags("29")));
}

TEST(FechaHoraTexto, TodoMenosElAnioConDosCifras) {
  EXPECT_EQ(FechaHoraTexto({2005, 3, 7, 4, 5, 6}), "07/03/2005 04:05:06");
  EXPECT_EQ(FechaHoraTexto({2005, 12, 31, 0, 0, 0}), "31/12/2005 00:00:00");
}

}  // namespace
}  // namespace utr
