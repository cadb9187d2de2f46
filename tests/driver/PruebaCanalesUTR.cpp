#include <gtest/gtest.h>

#include <set>

#include "driver/CanalesUTR.h"

namespace utr {
namespace {

constexpr const char* kNombres[] = {"EA01", "EA02", "EA03", "EA04", "EA05", "EA06", "EA07", "EA08", "EA09",
                                    "EA10", "EA11", "EA12", "EA13", "EA14", "PLV",  "ED1",  "ED2",  "ED5",
                                    "ED6",  "ED7",  "ED8",  "EA15", "EA16", "SD1",  "SD2",  "SD3"};

TEST(NombreCanal, TodosYLosDeAfuera) {
  for (std::int16_t canal = 1; canal <= 26; ++canal) EXPECT_EQ(NombreCanal(canal), kNombres[canal - 1]);
  for (const int canal : {0, -1, 27, 32767, -32768}) EXPECT_EQ(NombreCanal(static_cast<std::int16_t>(canal)), "N/D");
}

TEST(NumeroCanal, SoloAnalogicosYLluvia) {
  const std::pair<const char*, int> casos[] = {{"EA15", 22}, {"EA16", 23}, {"EA17", 0}, {"EA01", 1},  {"EA14", 14},
                                               {"ea07", 0},  {"plv", 15},  {"PLV", 15}, {"7", 7},     {"15", 22},
                                               {"ED1", 0},   {"SD1", 0},   {"", 0},     {"EA", 0},    {"EA0", 0},
                                               {"EAEA3", 3}, {"N/D", 0},   {"EA-1", 0}, {"EA2.5", 0}, {"1e9", 0}};
  for (const auto& [nombre, canal] : casos) EXPECT_EQ(NumeroCanal(nombre), canal) << nombre;
}

TEST(NumeroDeNombre, EsInversaDeNombreCanal) {
  for (std::int16_t canal = 1; canal <= 26; ++canal) EXPECT_EQ(NumeroDeNombre(NombreCanal(canal)), canal);
  EXPECT_EQ(NumeroDeNombre("N/D"), 0);
  EXPECT_EQ(NumeroDeNombre("ED3"), 0);
}

TEST(TipoSensor, SeLeePorSuNumeroYDiceSiGuardaHistoria) {
  const struct {
    const char* texto;
    std::optional<TipoSensor> tipo;
    bool historia;
  } casos[] = {{"0", TipoSensor::kNivel, true},
               {"", TipoSensor::kNivel, true},
               {"1", TipoSensor::kMeteorologico, true},
               {" 2", TipoSensor::kVelocidadViento, true},
               {"3 viento", TipoSensor::kDireccionViento, true},
               {"4", TipoSensor::kSupervisionAnalogica, false},
               {"5", TipoSensor::kPluviometro, true},
               {"6", std::nullopt, false},
               {"7", TipoSensor::kSupervisionDigital, false},
               {"-1", std::nullopt, false},
               {"2.5", std::nullopt, false},
               {"256", std::nullopt, false}};
  for (const auto& caso : casos) {
    EXPECT_EQ(LeerTipo(caso.texto), caso.tipo) << caso.texto;
    EXPECT_EQ(GuardaHistoria(LeerTipo(caso.texto)), caso.historia) << caso.texto;
  }
  EXPECT_EQ(TextoTipo(TipoSensor::kSupervisionDigital), "7");
}

TEST(LugarEnTrama, CadaCanalTieneElSuyo) {
  std::set<std::size_t> lugares;
  for (std::int16_t canal = 1; canal <= 26; ++canal) lugares.insert(LugarEnTrama(canal).value());
  EXPECT_EQ(lugares.size(), 26U);
  const std::pair<std::int16_t, std::size_t> casos[] = {{1, 0},   {14, 13}, {15, 28}, {16, 29}, {21, 34},
                                                        {22, 14}, {23, 15}, {24, 35}, {26, 37}};
  for (const auto& [canal, lugar] : casos) EXPECT_EQ(LugarEnTrama(canal), lugar) << canal;
  for (const int canal : {0, -1, 27}) EXPECT_EQ(LugarEnTrama(static_cast<std::int16_t>(canal)), std::nullopt);
}

}  // namespace
}  // namespace utr
