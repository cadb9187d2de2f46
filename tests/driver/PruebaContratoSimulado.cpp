#include <optional>
#include <vector>

#include "driver/BancoSimulado.h"
#include "driver/Contrato.h"

namespace utr::prueba {

INSTANTIATE_TEST_SUITE_P(Simulado, Contrato,
                         testing::Values(FabricaDeBanco{"en el proceso", []() -> std::unique_ptr<Banco> {
                                                          return std::make_unique<BancoSimulado>();
                                                        }}));

TEST(ComunicadorSimulado, CadaLlamadaDiceSiLaUnidadContesto) {
  BancoSimulado banco;
  std::vector<std::optional<bool>> dichas;
  banco.Simulado().AlContestar([&](std::optional<bool> contesta) { dichas.push_back(contesta); });
  banco.por_ip = true;
  banco.Conectar();
  EXPECT_TRUE(dichas.empty()) << "the unit isn't asked";
  banco.Driver().LeerFechaHora();
  banco.Enmudecer(true);
  banco.Driver().LeerFechaHora();
  banco.Enmudecer(false);
  EXPECT_FALSE(banco.Driver().ReiniciarAgenda("0")) << "a refusal";
  EXPECT_TRUE(banco.Driver().ReiniciarUTR("14"));
  EXPECT_EQ(dichas, (std::vector<std::optional<bool>>{true, false, true, true, std::nullopt}));
}

}  // namespace utr::prueba
