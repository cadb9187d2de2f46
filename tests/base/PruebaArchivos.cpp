#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>

#include "base/Archivos.h"
#include "base/Error.h"
#include "support/Carpeta.h"

namespace utr {
namespace {

using prueba::Carpeta;

std::size_t Cuantos(const Carpeta& carpeta) {
  std::size_t n = 0;
  for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(carpeta.Ruta())) ++n;
  return n;
}

TEST(Archivos, UnaFallaEnElMedioDejaElArchivoAnterior) {
  const Carpeta carpeta;
  const auto ruta = carpeta / "lista.txt";
  prueba::EscribirTodo(ruta, "anterior");
  EXPECT_THROW(EscribirEntero(ruta,
                              [](std::ostream& s) {
                                s << "mitad";
                                throw std::runtime_error("corte");
                              }),
               std::runtime_error);
  EXPECT_THROW(EscribirEntero(ruta, [](std::ostream& s) { s.setstate(std::ios::badbit); }), Error);
  EXPECT_EQ(prueba::LeerTodo(ruta), "anterior");
  EXPECT_EQ(Cuantos(carpeta), 1U);
  EscribirEntero(ruta, [](std::ostream& s) { s << "nuevo"; });
  EXPECT_EQ(prueba::LeerTodo(ruta), "nuevo");
  EXPECT_EQ(Cuantos(carpeta), 1U);
}

TEST(Archivos, UnaCarpetaQueNoExisteEsUnErrorClaro) {
  const Carpeta carpeta;
  try {
    EscribirEntero(carpeta / "no" / "x.txt", [](std::ostream& s) { s << "x"; });
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(e.Numero(), error::kArchivo);
    EXPECT_NE(e.Descripcion().find("x.txt"), std::string::npos);
  }
}

}  // namespace
}  // namespace utr
