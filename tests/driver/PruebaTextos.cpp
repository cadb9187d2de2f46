#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "driver/Textos.h"

namespace utr {
namespace {

TEST(TextoPagina, IdaYVuelta) {
  const std::vector<std::uint8_t> bytes = {0, 7, 10, 99, 100, 255};
  EXPECT_EQ(TextoPagina(bytes), "0,7,10,99,100,255");
  EXPECT_EQ(LeerTextoPagina("0,7,10,99,100,255"), bytes);
  EXPECT_EQ(TextoPagina({}), "");
  EXPECT_EQ(LeerTextoPagina(""), std::vector<std::uint8_t>{});
}

TEST(TextoPagina, SoloBytes) {
  for (const char* texto : {"1,,2", "1,2,", "256", "-1", "1.5", "a", "1,0x2", "99999999999"})
    EXPECT_EQ(LeerTextoPagina(texto), std::nullopt) << texto;
}

TEST(TextoPar, ByteBajoDelante) {
  const std::pair<std::uint16_t, const char*> casos[] = {{0, "0/0"},     {300, "44/1"}, {1440, "160/5"},
                                                         {255, "255/0"}, {256, "0/1"},  {65535, "255/255"}};
  for (const auto& [valor, texto] : casos) {
    EXPECT_EQ(TextoPar(valor), texto);
    EXPECT_EQ(LeerPar(texto), valor);
  }
  for (const char* texto : {"", "1", "1/2/3", "256/0", "a/b", "/"}) EXPECT_EQ(LeerPar(texto), std::nullopt) << texto;
}

struct CasoEnlace {
  const char* texto;
  bool por_ip;
  std::int32_t velocidad;
  const char* direccion;
};

TEST(Enlace, FormasQueSeEntienden) {
  const CasoEnlace casos[] = {{"9600,n,8,1", false, 9600, ""},
                              {"9600n,8,1", false, 9600, ""},
                              {" 19200,n,8,1", false, 19200, ""},
                              {"192.168.0.1,n,8,1", true, 0, "192.168.0.1"}};
  for (const CasoEnlace& caso : casos) {
    const auto enlace = LeerEnlace(caso.texto);
    ASSERT_TRUE(enlace) << caso.texto;
    EXPECT_EQ(enlace->por_ip, caso.por_ip) << caso.texto;
    EXPECT_EQ(enlace->velocidad, caso.velocidad) << caso.texto;
    EXPECT_EQ(enlace->direccion, caso.direccion) << caso.texto;
  }
}

TEST(Enlace, OtrasFormasNo) {
  for (const char* texto : {"", "9600", "9600,e,7,1", ",n,8,1", "n,8,1", "rapido,n,8,1", "192.168.0.256,n,8,1",
                            "192.168.0,n,8,1", "9600,n,8,1,", "-9600,n,8,1", "99999999999,n,8,1"})
    EXPECT_FALSE(LeerEnlace(texto)) << texto;
}

}  // namespace
}  // namespace utr
