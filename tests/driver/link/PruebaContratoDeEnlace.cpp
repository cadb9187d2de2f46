#include "driver/Contrato.h"
#include "driver/link/BancoEnlace.h"
#include "driver/link/BancoProceso.h"

namespace utr::prueba {

INSTANTIATE_TEST_SUITE_P(EnMemoria, Contrato,
                         testing::Values(FabricaDeBanco{"enlace en memoria", []() -> std::unique_ptr<Banco> {
                                                          return std::make_unique<BancoEnlace>();
                                                        }}));
INSTANTIATE_TEST_SUITE_P(PorTcp, Contrato,
                         testing::Values(FabricaDeBanco{"enlace por TCP", []() -> std::unique_ptr<Banco> {
                                                          return std::make_unique<BancoProceso>(true);
                                                        }}));
INSTANTIATE_TEST_SUITE_P(PorTerminal, Contrato,
                         testing::Values(FabricaDeBanco{"enlace por terminal", []() -> std::unique_ptr<Banco> {
                                                          return std::make_unique<BancoProceso>(false);
                                                        }}));

}  // namespace utr::prueba
