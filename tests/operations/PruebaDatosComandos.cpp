// What the frames of the commands hold and say, without a unit: flags, ranges, fields, states.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "operations/Comandos.h"
#include "operations/EstadoMarco.h"

namespace utr {
namespace {

TEST(DatosComandos, LasBanderasSeLeenYSeEscribenConDosDisposiciones) {
  const struct {
    std::size_t casilla;
    std::int32_t leida;
  } kCasos[] = {{7, 0x4000}, {6, 0x0200}, {5, 0x0040}, {4, 0x0100}, {3, 0x0080}, {2, 0x0020}, {1, 0}, {0, 0}};
  std::int32_t todas = 0;
  for (const auto& caso : kCasos) {
    Banderas una{};
    una[caso.casilla] = caso.leida != 0;
    EXPECT_EQ(BanderasDe(caso.leida), una) << caso.casilla;
    una[caso.casilla] = true;
    EXPECT_EQ(ValorDe(una), 1 << caso.casilla);
    todas |= caso.leida;
  }
  EXPECT_EQ(BanderasDe(~todas), Banderas{}) << "no other bit ticks a box";
  EXPECT_EQ(ValorDe({true, true, true, true, true, true, true, true}), 255);
  EXPECT_EQ(TextoDeBanderas({}), "ninguna");
}

TEST(DatosComandos, DeLasPruebasDeRangoSoloLaDeRepeticionesPuedeFallar) {
  for (const double valor : {-1.0, 0.0, 4.0, 65.0, 66.0, 255.0, 1441.0, 40000.0, 65536.0}) {
    for (const CampoComando campo : {CampoComando::kRetardo, CampoComando::kIdentificador, CampoComando::kVentana}) {
      EXPECT_EQ(FueraDeRango(campo, valor), nullptr) << valor;
    }
    EXPECT_EQ(FueraDeRango(CampoComando::kRepeticiones, valor) != nullptr, valor > 255) << valor;
  }
}

TEST(DatosComandos, ElRetardoSeCorrigeAlSalirYSeGuardaEnDecenas) {
  EXPECT_EQ(RetardoAlSalir("1000"), "1000");
  EXPECT_EQ(RetardoAlSalir("1001"), "0");
  EXPECT_EQ(RetardoAlSalir("-1"), "0");
  EXPECT_EQ(RetardoAlSalir(""), "");
  const std::pair<const char*, const char*> kRedondeos[] = {{"25", "20"}, {"35", "40"}, {"255", "260"}, {"4", "0"}};
  for (const auto& [escrito, guardado] : kRedondeos) EXPECT_EQ(Redondear({escrito, "0"}).delay, guardado);
}

TEST(DatosComandos, ElEstadoDeUnMarcoDiceDeCuandoEsLoQueMuestra) {
  const FechaHora hora{2026, 3, 15, 10, 32, 5};
  EstadoMarco estado("|");
  EXPECT_EQ(estado.Texto("|"), "sin leer");
  EXPECT_EQ(estado.Texto("7|"), "sin leer, modificado");
  estado.Leido(hora, "70|30");
  EXPECT_EQ(estado.Texto("70|30"), "leído 10:32:05");
  EXPECT_EQ(estado.Texto("80|30"), "modificado");
  estado.Grabado(hora, "75|30", "quedó 80");
  EXPECT_EQ(estado.Texto("75|30"), "grabado 10:32:05, quedó 80");
  estado.NoConfirmado(hora, "75|30");
  EXPECT_EQ(estado.Texto("75|30"), "no confirmado 10:32:05");
  estado.Olvidar("");
  EXPECT_EQ(estado.Texto(""), "sin leer");
}

}  // namespace
}  // namespace utr
