#include <gtest/gtest.h>

#include "configuration/DatosDeViento.h"
#include "support/Tablas.h"

namespace utr {
namespace {

TablaPtr Configuracion() {
  return TablaDeCanales({{{"Canal", "1"}}, {{"Canal", "2"}}, {{"Canal", "3"}}});
}

TEST(CopiarDatosDeViento, MarcaDireccionYVelocidad) {
  const auto configuracion = Configuracion();
  const auto marcas =
      TablaDeTextos({"Canal", "TDirV", "TVelV"}, {{"1", "No", "No"}, {"2", "No", "Si"}, {"3", "Si", "No"}});
  CopiarDatosDeViento(*configuracion, *marcas);
  EXPECT_EQ(Filas(*configuracion, {"Canal", "Tipo"}), (std::vector<std::string>{"1|1", "2|2", "3|3"}));
  EXPECT_EQ(configuracion->Filter(), "");
  EXPECT_EQ(marcas->RecordCount(), 3U);
}

TEST(CopiarDatosDeViento, SoloLaPrimeraFilaMarcada) {
  const auto configuracion = Configuracion();
  CopiarDatosDeViento(*configuracion, *TablaDeTextos({"Canal", "TDirV", "TVelV"}, {{"3", "Si", ""}, {"1", "Si", ""}}));
  EXPECT_EQ(Filas(*configuracion, {"Tipo"}), (std::vector<std::string>{"1", "1", "3"}));
}

TEST(CopiarDatosDeViento, LosErroresSeIgnoran) {
  const auto configuracion = Configuracion();
  // A channel that isn't there, a mark that can't be read, no marks at all.
  CopiarDatosDeViento(*configuracion,
                      *TablaDeTextos({"Canal", "TDirV", "TVelV"}, {{"9", "Si", "No"}, {"2", "", "Si"}}));
  CopiarDatosDeViento(*configuracion, *TablaDeTextos({"TDirV", "TVelV"}, {{"Si", "Si"}}));
  CopiarDatosDeViento(*configuracion, *TablaDeTextos({"Canal"}, {{"1"}}));
  EXPECT_EQ(Filas(*configuracion, {"Tipo"}), (std::vector<std::string>{"1", "2", "1"}));
  EXPECT_EQ(configuracion->RecordCount(), 3U);
}

}  // namespace
}  // namespace utr
