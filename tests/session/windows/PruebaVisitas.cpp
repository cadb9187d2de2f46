#include <gtest/gtest.h>

#include "session/SituacionDelEnlace.h"
#include "session/windows/Visitas.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

constexpr double kHora = 3600;

TEST(Visitas, LaAnteriorEsLaQueTerminoAntesDeLaDeAhora) {
  prueba::ModPrueba banco;
  banco.propiedades.Escribir(clave::kIdentificador, std::int64_t{70}, std::int64_t{0});
  const auto anterior = [&] { return Visitas(banco.mod).FinDeLaAnterior(); };
  EXPECT_FALSE(anterior());
  const FechaHora primera = banco.reloj.Ahora();
  Visitas(banco.mod).Anotar();
  EXPECT_FALSE(anterior()) << "the visit of now isn't the one before";
  banco.reloj.Adelantar(5 * kHora);
  const FechaHora fin = banco.reloj.Ahora();
  Visitas(banco.mod).Anotar();
  EXPECT_FALSE(anterior()) << "it goes on";
  banco.reloj.Adelantar(48 * kHora);
  EXPECT_EQ(anterior(), fin);
  Visitas(banco.mod).Anotar();
  EXPECT_EQ(anterior(), fin) << "also once the next one has begun";
  banco.reloj.Adelantar(kHora);
  Visitas(banco.mod).Anotar();
  EXPECT_EQ(anterior(), fin);
  EXPECT_LT(primera, fin);
}

TEST(Visitas, CadaEstacionTieneLasSuyasYLasDePracticaNoCuentan) {
  prueba::ModPrueba banco;
  SituacionDelEnlace situacion;
  banco.mod.situacion = &situacion;
  const auto estacion = [&](std::int64_t identificador, ClaseDeUnidad clase) {
    banco.propiedades.Escribir(clave::kIdentificador, identificador, std::int64_t{0});
    situacion.PonerClase(clase);
    return Visitas(banco.mod);
  };
  estacion(70, ClaseDeUnidad::kSimulada).Anotar();
  estacion(71, ClaseDeUnidad::kReal).Anotar();
  banco.reloj.Adelantar(24 * kHora);
  EXPECT_FALSE(estacion(70, ClaseDeUnidad::kReal).FinDeLaAnterior());
  EXPECT_TRUE(estacion(70, ClaseDeUnidad::kDePractica).FinDeLaAnterior());
  EXPECT_TRUE(estacion(71, ClaseDeUnidad::kReal).FinDeLaAnterior());
  banco.reloj.Adelantar(-72 * kHora);
  EXPECT_FALSE(estacion(71, ClaseDeUnidad::kReal).FinDeLaAnterior()) << "a visit of the future is none";
}

}  // namespace
}  // namespace utr
