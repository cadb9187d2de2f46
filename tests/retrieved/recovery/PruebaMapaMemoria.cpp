#include <gtest/gtest.h>

#include "driver/CanalesUTR.h"
#include "retrieved/recovery/MapaMemoria.h"

namespace utr {
namespace {

TablaPtr Canales(std::initializer_list<std::array<const char*, 3>> filas) {
  auto tabla = std::make_shared<Tabla>();
  AgregarColumnasDeCanales(*tabla);
  tabla->Open();
  for (const auto& [canal, tipo, pila] : filas) {
    tabla->AddNew();
    tabla->Set("Canal", canal);
    tabla->Set("Tipo", tipo);
    tabla->Set("Pila", pila);
  }
  tabla->UpdateBatch();
  return tabla;
}

TEST(MapaMemoria, CuentaCadaPaginaEnUnSoloEstado) {
  MapaMemoria mapa(UsoMapa::kLectura);
  std::vector<LugarPagina> avisos;
  mapa.AlCambiar([&](const LugarPagina& lugar) { avisos.push_back(lugar); });
  EXPECT_EQ(mapa.Cuenta(), "32768 todavía sin leer");
  mapa.Poner({0, 0}, EstadoPagina::kDatos);
  mapa.Poner({0, 0}, EstadoPagina::kDatos);
  mapa.Poner({31, 1023}, EstadoPagina::kFallida);
  mapa.Poner({31, 1023}, EstadoPagina::kVacia);
  mapa.PonerPista(30, EstadoPagina::kSalteada);
  EXPECT_EQ(avisos.size(), 3U + 1024U);
  EXPECT_EQ(mapa.Cuenta(), "1 con datos, 1 vacía, 1024 salteadas, 31742 todavía sin leer");
}

TEST(MapaMemoria, DeVariasPaginasSeVeLaPeor) {
  MapaMemoria mapa(UsoMapa::kLectura);
  for (int pagina = 8; pagina < 16; ++pagina) mapa.Poner({4, pagina}, EstadoPagina::kVacia);
  EXPECT_EQ(mapa.Peor({4, 8}, 8), EstadoPagina::kVacia);
  mapa.Poner({4, 15}, EstadoPagina::kDatos);
  EXPECT_EQ(mapa.Peor({4, 8}, 8), EstadoPagina::kDatos);
  mapa.Poner({4, 9}, EstadoPagina::kFallida);
  EXPECT_EQ(mapa.Peor({4, 8}, 8), EstadoPagina::kFallida);
  EXPECT_EQ(mapa.Peor({4, 10}, 6), EstadoPagina::kDatos);
  EXPECT_EQ(mapa.Describir({4, 8}, 8), "Pista 4, páginas 8 a 15 (Pila 1): 1 con datos, 6 vacías, 1 no se pudo leer");
}

TEST(MapaMemoria, LosCanalesSonLosDeLaColumnaPila) {
  MapaMemoria mapa(UsoMapa::kProceso);
  const TablaPtr canales = Canales(
      {{"3", "0", "0"}, {"1", "1", ""}, {"2", "1", "255"}, {"5", "4", "4"}, {"15", "5", " 8"}, {"6", "2", "1.5"}});
  mapa.NombrarCanales(canales.get());
  EXPECT_EQ(mapa.NombreDeGrupo(0), "Pila 0: EA03");
  EXPECT_EQ(mapa.NombreDeGrupo(4), "Pila 4");
  EXPECT_EQ(mapa.NombreDeGrupo(1), "Pila 1");
  EXPECT_EQ(mapa.NombreDeGrupo(8), "Pila 8: PLV");
  EXPECT_EQ(mapa.Describir({26, 3}), "Pista 26, página 3 (Pila 8: PLV): no está en el archivo");
  EXPECT_EQ(mapa.Describir({29, 3}), "Pista 29, página 3 (Cola de transmisión): no está en el archivo");
  EXPECT_EQ(mapa.Describir({30, 3}), "Pista 30, página 3 (Eventos): no está en el archivo");
  mapa.NombrarCanales(nullptr);
  EXPECT_EQ(mapa.NombreDeGrupo(0), "Pila 0");
}

}  // namespace
}  // namespace utr
