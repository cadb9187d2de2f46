#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Error.h"
#include "services/RegistroErrores.h"
#include "session/DatosVisita.h"
#include "support/Carpeta.h"
#include "support/DispositivoLleno.h"
#include "support/NumeroDeError.h"

namespace utr {

TEST(DatosDeLaVisita, SonLosDeCadaDiaYLoQueNoSeEntiendeSeRespeta) {
  const prueba::Carpeta carpeta;
  const FechaHora hoy{2026, 3, 15, 9, 30, 0};
  const DatosVisita datos{"Ana \"Nita\" Paz", "Se cambió la pila.\n\tVolver."};
  EXPECT_EQ(LeerDatosVisita(carpeta / "70", hoy), DatosVisita());
  GuardarDatosVisita(carpeta / "70", hoy, datos);
  EXPECT_EQ(LeerDatosVisita(carpeta / "70", {2026, 3, 15, 23, 0, 0}), datos);
  EXPECT_EQ(LeerDatosVisita(carpeta / "70", {2026, 3, 16}), DatosVisita());
  const auto archivo = carpeta / "70/Visita-2026-03-15.toml";
  const std::string escrito = prueba::LeerTodo(archivo);
  {
    const DispositivoLleno lleno(3);
    EXPECT_EQ(prueba::NumeroDeError([&] { GuardarDatosVisita(carpeta / "70", hoy, {"x", "y"}); }), error::kArchivo);
  }
  EXPECT_EQ(prueba::NumeroDeError([&] { GuardarDatosVisita(carpeta / "70", hoy, {"\xff", ""}); }), error::kArchivo);
  EXPECT_EQ(prueba::LeerTodo(archivo), escrito);
  for (const char* malo : {"operador = \"a", "\noperador = 5", "\nclave = \"x\""}) {
    prueba::EscribirTodo(archivo, malo);
    const auto falla = FallaDe([&] { LeerDatosVisita(carpeta / "70", hoy); });
    ASSERT_TRUE(falla) << malo;
    EXPECT_THAT(falla->Descripcion(), testing::StartsWith("Visita-2026-03-15.toml: línea ")) << malo;
  }
}

}  // namespace utr
