#include <gtest/gtest.h>

#include "driver/Utilidades.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/NumeroDeError.h"

namespace utr {
namespace {

TEST(ExtraerDirectorio, SinSeparadorFinal) {
  const std::pair<const char*, const char*> casos[] = {{"/datos/utr/a.bkp", "/datos/utr"},
                                                       {"C:\\Datos\\a.bkp", "C:\\Datos"},
                                                       {"a.bkp", ""},
                                                       {"", ""},
                                                       {"/datos/", "/datos"}};
  for (const auto& [ruta, carpeta] : casos) EXPECT_EQ(ExtraerDirectorio(ruta), carpeta);
}

TEST(GrabarTexto, ReemplazaElArchivo) {
  const prueba::Carpeta carpeta;
  EXPECT_TRUE(GrabarTexto("uno que es largo", carpeta / "a.txt"));
  EXPECT_TRUE(GrabarTexto("ñandú\r\n", carpeta / "a.txt"));
  EXPECT_EQ(prueba::LeerTodo(carpeta / "a.txt"), "ñandú\r\n");
  EXPECT_EQ(carpeta.Cuantos(), 1U);
}

TEST(GrabarTexto, DiscoLlenoDejaElAnterior) {
  const prueba::Carpeta carpeta;
  ASSERT_TRUE(GrabarTexto("anterior", carpeta / "a.txt"));
  {
    const DispositivoLleno lleno(1000);
    EXPECT_FALSE(GrabarTexto(std::string(200000, 'x'), carpeta / "a.txt"));
  }
  EXPECT_EQ(prueba::LeerTodo(carpeta / "a.txt"), "anterior");
  EXPECT_EQ(carpeta.Cuantos(), 1U);
}

TEST(GrabarTexto, DestinoImposible) {
  const prueba::Carpeta carpeta;
  EXPECT_FALSE(GrabarTexto("x", carpeta / "no/existe/a.txt"));
  std::filesystem::create_directory(carpeta / "ocupado");
  prueba::EscribirTodo(carpeta / "ocupado/dentro", "x");
  EXPECT_FALSE(GrabarTexto("x", carpeta / "ocupado"));
  EXPECT_EQ(carpeta.Cuantos(), 1U);
}

TEST(Extremos, DeSusArgumentos) {
  EXPECT_EQ(Minimo({3, -2.5, 8}), -2.5);
  EXPECT_EQ(Maximo({3, -2.5, 8}), 8);
  EXPECT_EQ(Maximo({-1}), -1);
  for (auto* extremo : {&Minimo, &Maximo}) {
    EXPECT_EQ(prueba::NumeroDeError([extremo] { extremo({}); }), error::kLlamada);
  }
}

TEST(ExisteArchivo, ArchivosYCarpetas) {
  const prueba::Carpeta carpeta;
  EXPECT_TRUE(ExisteArchivo(carpeta.Ruta()));
  EXPECT_FALSE(ExisteArchivo(carpeta / "nada"));
  EXPECT_FALSE(ExisteArchivo(""));
  EXPECT_FALSE(ExisteArchivo(std::string(5000, 'a')));
}

}  // namespace
}  // namespace utr
