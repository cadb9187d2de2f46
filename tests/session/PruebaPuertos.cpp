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
  bool EsSimulado(int) override { return false; }
  std::vector<PuertoSerie> puertos;
  bool falla = false;
};

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

TEST(Puertos, LosFijosLlevanElNombreDelQueHayYDetrasVanLosDemas) {
  Lista lista;
  lista.puertos = {{2, "b"}, {7, "g"}, {11, "k"}};
  EXPECT_THAT(Textos(PuertosFijos(lista)), ElementsAre("COM 1=", "COM 2=b", "COM 3=", "COM 4=", "COM 5=", "COM 7=g"));
  lista.falla = true;
  EXPECT_EQ(PuertosFijos(lista).size(), 5U);
}

}  // namespace
}  // namespace utr
