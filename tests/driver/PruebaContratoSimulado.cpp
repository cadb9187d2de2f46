#include "driver/BancoSimulado.h"
#include "driver/Contrato.h"

namespace utr::prueba {

INSTANTIATE_TEST_SUITE_P(Simulado, Contrato,
                         testing::Values(FabricaDeBanco{"en el proceso", []() -> std::unique_ptr<Banco> {
                                                          return std::make_unique<BancoSimulado>();
                                                        }}));

}  // namespace utr::prueba
