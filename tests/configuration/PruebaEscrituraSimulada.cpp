#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "configuration/CambiosConfiguracion.h"
#include "configuration/Escritura.h"
#include "configuration/FilasDeCanales.h"
#include "configuration/VerificacionEscritura.h"
#include "driver/BancoSimulado.h"
#include "session/Respaldos.h"

namespace utr {
namespace {

// Both sequences against the simulated station, and what it gives back behind them.
class EscrituraSimulada : public testing::TestWithParam<ModoEscritura> {
 protected:
  EscrituraSimulada() { banco.Conectar(); }

  Comunicador& Driver() { return banco.Driver(); }
  FilasDeCanales Cuales() const {
    return GetParam() == ModoEscritura::kConfiguracion ? FilasDeCanales::kTodas : FilasDeCanales::kHabilitadas;
  }
  ResultadoEscritura Correr(const ConfigColl& coleccion) {
    SinProgreso progreso;
    CanalesModificar modificar;
    modificar.Agregar("1");
    return Escribir({GetParam(), coleccion, modificar}, Driver(), registro, progreso);
  }

  prueba::BancoSimulado banco;
  RegistroErrores registro{banco.carpeta / "AdminUTR.err", banco.reloj};
  Catalogo catalogo{banco.carpeta.Ruta()};
};

TEST_P(EscrituraSimulada, LoEscritoVuelveIgual) {
  const TablaPtr leida = Driver().ConfiguracionAlmacenada(true);
  const ConfigColl inicial = ColeccionDe(*leida, Cuales());
  const ConfigColl coleccion = ColeccionDe(*leida, Cuales());
  ASSERT_GT(coleccion.Count(), 0U);
  EXPECT_TRUE(CambiosDe(inicial, coleccion, catalogo).empty());
  coleccion.Item(1)->MaxValid = "7.25";
  EXPECT_EQ(CambiosDe(inicial, coleccion, catalogo).size(), 1U);

  const ResultadoEscritura resultado = Correr(coleccion);
  EXPECT_TRUE(resultado.Completa());
  Driver().Pausa(7);
  const TablaPtr releida = Driver().ConfiguracionAlmacenada(true);
  const VerificacionEscritura verificacion = Verificar(*resultado.tabla, *releida);
  EXPECT_EQ(AvisoDeVerificacion(verificacion, resultado.fallo, ""), "");
  EXPECT_GT(verificacion.valores, 100U);
  EXPECT_EQ(ColeccionDe(*releida, Cuales()).Item(1)->MaxValid, "7.25");
}

TEST_P(EscrituraSimulada, LaMismaTablaSeRespaldaUnaVez) {
  const Propiedades propiedades(banco.carpeta / "AdminUTR.dll");
  Respaldos respaldos(banco.carpeta.Ruta(), propiedades, banco.reloj, registro);
  EXPECT_FALSE(respaldos.Guardar(*Driver().ConfiguracionAlmacenada(true), MotivoRespaldo::kLectura).repetido);
  EXPECT_TRUE(respaldos.Guardar(*Driver().ConfiguracionAlmacenada(true), MotivoRespaldo::kEscritura).repetido);
}

TEST_P(EscrituraSimulada, UnaUTRMudaNoSeDaPorEscrita) {
  const ConfigColl coleccion = ColeccionDe(*Driver().ConfiguracionAlmacenada(true), Cuales());
  banco.Enmudecer(true);
  const ResultadoEscritura resultado = Correr(coleccion);
  EXPECT_EQ(resultado.fallo, PasoEscritura::kCanalesModificar);
  EXPECT_FALSE(resultado.Grabado || resultado.Aceptado);
}

INSTANTIATE_TEST_SUITE_P(Modos, EscrituraSimulada,
                         testing::Values(ModoEscritura::kConfiguracion, ModoEscritura::kParametrizacion));

}  // namespace
}  // namespace utr
