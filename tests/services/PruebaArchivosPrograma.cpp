#include <gtest/gtest.h>

#include "base/Error.h"
#include "services/ArchivosPrograma.h"
#include "support/Carpeta.h"
#include "support/RelojFalso.h"

namespace utr {
namespace {

class PruebaArchivosPrograma : public testing::Test {
 protected:
  prueba::Carpeta carpeta_;
  RelojFalso reloj_;
  RegistroErrores registro_{carpeta_ / "utr.err", reloj_};
};

TEST_F(PruebaArchivosPrograma, CadaByteComoEsta) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  bytes += "\r\n\r\n";
  prueba::EscribirTodo(carpeta_ / "a.bkp", bytes);
  EXPECT_EQ(LeerArchivoBinario(registro_, carpeta_ / "a.bkp"), bytes);
  EXPECT_EQ(LeerArchivoPrograma(registro_, carpeta_.Ruta(), "a.bkp"), bytes);
}

TEST_F(PruebaArchivosPrograma, SinArchivoEsVacioYNoLoCrea) {
  EXPECT_EQ(LeerArchivoBinario(registro_, carpeta_ / "no.bkp"), "");
  EXPECT_EQ(LeerArchivoPrograma(registro_, carpeta_.Ruta(), "comandosAT.dat"), "");
  prueba::EscribirTodo(carpeta_ / "vacio.dat", "");
  EXPECT_EQ(LeerArchivoPrograma(registro_, carpeta_.Ruta(), "vacio.dat"), "");
  EXPECT_EQ(carpeta_.Cuantos(), 1U);
}

TEST_F(PruebaArchivosPrograma, LoQueNoSePuedeLeerSeRegistraYSeRelanza) {
  std::filesystem::create_directory(carpeta_ / "x.dat");
  EXPECT_THROW(LeerArchivoPrograma(registro_, carpeta_.Ruta(), "x.dat"), Error);
  EXPECT_NE(prueba::LeerTodo(carpeta_ / "utr.err").find("\"modRTU\",\"leyendo archivo de bkp\""), std::string::npos)
      << prueba::LeerTodo(carpeta_ / "utr.err");
  EXPECT_THROW(LeerArchivoBinario(registro_, carpeta_ / "x.dat"), Error);
  EXPECT_NE(prueba::LeerTodo(carpeta_ / "utr.err").find("\"modRTU\",\"LeerArchivoBinario\""), std::string::npos);
}

}  // namespace
}  // namespace utr
