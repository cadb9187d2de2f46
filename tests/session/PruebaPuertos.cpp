#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Error.h"
#include "session/Puertos.h"

namespace utr {
namespace {

using testing::ElementsAre;

std::vector<std::string> Textos(const std::vector<PuertoSerie>& puertos) {
  std::vector<std::string> textos;
  for (const PuertoSerie& puerto : puertos) textos.push_back(TextoPuerto(puerto.numero) + '=' + puerto.nombre);
  return textos;
}

class Lista : public ListaDePuertos {
 public:
  std::vector<PuertoSerie> Listar() override {
    if (falla) Lanzar(error::kLlamada, "Listar");
    return puertos;
  }
  std::vector<PuertoSerie> puertos;
  bool falla = false;
};

TEST(Puertos, LosNombresDelSistemaTomanNumero) {
  EXPECT_THAT(Textos(NumerarPuertos({"ttyS10", "ttyS2", "ttyS0"})),
              ElementsAre("COM 1=ttyS0", "COM 2=ttyS2", "COM 3=ttyS10"));
  EXPECT_THAT(Textos(NumerarPuertos({"COM7", "COM11", "COM3"})), ElementsAre("COM 3=COM3", "COM 7=COM7"));
  EXPECT_THAT(Textos(NumerarPuertos({"COM1", "ttyUSB0", "COMx"})),
              ElementsAre("COM 1=COM1", "COM 2=COMx", "COM 3=ttyUSB0"));
  EXPECT_TRUE(NumerarPuertos({}).empty());
}

TEST(Puertos, NingunNumeroPasaDeDiez) {
  std::vector<std::string> nombres;
  for (int i = 0; i < 32; ++i) nombres.push_back("ttyS" + std::to_string(i));
  const auto puertos = NumerarPuertos(nombres);
  ASSERT_EQ(puertos.size(), 10U);
  EXPECT_EQ(puertos.back().nombre, "ttyS9");
}

TEST(Puertos, SinPuertosSeOfrecenLosFijos) {
  const auto fijos = ElementsAre("COM 1=", "COM 2=", "COM 3=", "COM 4=", "COM 5=");
  Lista lista;
  EXPECT_THAT(Textos(PuertosOfrecidos(lista)), fijos);
  lista.puertos = {{12, "lejano"}};
  EXPECT_THAT(Textos(PuertosOfrecidos(lista)), fijos);
  lista.puertos = {{10, "a"}, {11, "b"}};
  EXPECT_THAT(Textos(PuertosOfrecidos(lista)), ElementsAre("COM 10=a"));
  lista.falla = true;
  EXPECT_THAT(Textos(PuertosOfrecidos(lista)), fijos);
}

}  // namespace
}  // namespace utr
