#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "operations/ConfiguracionAsistente.h"
#include "operations/PasosAsistente.h"
#include "support/ModPrueba.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::vector<std::string> CanalesEn(const ConfigColl& coleccion) {
  std::vector<std::string> canales;
  for (const ConfigPtr& config : coleccion) canales.push_back(config->Canal);
  return canales;
}

class ConfiguracionAsistente : public prueba::ModPrueba, public testing::Test {
 protected:
  LecturaConfiguracion lectura{mod};
};

TEST(PasosAsistente, TerminarSeHabilitaAlLlegarAlUltimoPasoYNoAlPasarPorLosAnteriores) {
  EstadoAsistente estado;
  const LlegadasAsistente llegadas{[](bool) { return true; }, [](bool) { return true; }};
  const struct {
    std::int16_t paso;
    Direccion direccion;
    bool fin;
  } pasos[] = {{1, Direccion::kAdelante, false}, {2, Direccion::kAdelante, false}, {3, Direccion::kAdelante, true},
               {2, Direccion::kAtras, true},     {1, Direccion::kAtras, true},     {2, Direccion::kAdelante, false},
               {3, Direccion::kAdelante, true},  {2, Direccion::kAtras, true},     {3, Direccion::kAdelante, true}};
  for (const auto& uno : pasos) {
    EXPECT_TRUE(SetStep(estado, uno.paso, uno.direccion, llegadas));
    EXPECT_EQ(estado.paso, uno.paso);
    EXPECT_EQ(estado.fin_habilitado, uno.fin) << uno.paso;
  }
}

TEST_F(ConfiguracionAsistente, LasDosColeccionesCompartenSusCanales) {
  const TablaPtr tabla = TablaDeCanales({{{"Canal", "4"}, {"Flags", "0"}},
                                         {{"Canal", "1"}, {"AMax", "9"}},
                                         {{"Canal", " 1 "}, {"AMax", "8"}},
                                         {{"Canal", "1"}, {"AMax", "7"}},
                                         {{"Canal", "16"}, {"Flags", "3"}},
                                         {{"Canal", "0"}},
                                         {{"Canal", "nada"}}});
  tabla->Filter("Flags='0'");  // neither filter nor sort tell what goes to the unit
  const CanalesAsistente canales = CanalesDe(tabla);
  EXPECT_THAT(CanalesEn(canales.ColeccionConfigCompleta), ElementsAre("4", "1", "16", "0", "nada"));
  EXPECT_THAT(CanalesEn(canales.ColeccionConfig), ElementsAre("1", "16"));
  EXPECT_THAT(canales.avisos,
              ElementsAre("Hay canales repetidos: EA01 (canal 1). Vale la primera fila de cada uno.",
                          "Filas sin un número de canal: 2. La UTR puede rechazar la configuración por ellas."));
  (*canales.ColeccionConfig.begin())->AMax = "77";
  const TablaPtr escrita = canales.ColeccionConfigCompleta.GetRecMembers(registro);
  EXPECT_THAT(Filas(*escrita, {"Canal", "AMax"}), ElementsAre("4|", "1|77", "16|", "0|", "nada|"));
}

TEST_F(ConfiguracionAsistente, OtraVelocidadQueLaDelEnlaceSeAvisa) {
  for (const std::int64_t enlace : {9600, 1200}) {
    propiedades.Escribir(clave::kVelocidad, Propiedad{enlace}, Propiedad{std::int64_t{9600}});
    EXPECT_EQ(AvisoDeVelocidad(mod, static_cast<std::int32_t>(enlace)), "");
    EXPECT_EQ(AvisoDeVelocidad(mod, 4800), "La UTR pasará a 4800 bps");
  }
}

TEST_F(ConfiguracionAsistente, CadaFuenteSeLeePorSuCamino) {
  lectura.Preparar("RTU");  // of a unit without a table
  const TablaPtr tabla = TablaDeCanales({{{"Canal", "1"}, {"Flags", "0"}}});
  tabla->Save(carpeta / "previa.xml");
  const std::tuple<FuenteAsistente, std::string, const char*, const char*> fuentes[] = {
      {FuenteAsistente::kUTR, "", "ConfiguracionAlmacenada", "ConfiguracionAlmacenada(si)"},
      {FuenteAsistente::kArchivo, "e.icf", "CargarConfiguracion", "CargarConfiguracion(e.icf)"},
      {FuenteAsistente::kPrevia, (carpeta / "previa.xml").string(), "", ""}};
  for (const auto& [fuente, ruta, operacion, llamada] : fuentes) {
    comunicador.Devuelve(operacion, tabla);
    comunicador.llamadas.clear();
    const CanalesAsistente canales = CargarConfiguracion(mod, lectura, fuente, ruta);
    EXPECT_THAT(CanalesEn(canales.ColeccionConfigCompleta), ElementsAre("1"));
    EXPECT_THAT(canales.avisos, ElementsAre("Ningún canal está habilitado."));
    EXPECT_EQ(comunicador.llamadas, *llamada ? std::vector<std::string>{llamada} : std::vector<std::string>{});
  }
  EXPECT_EQ(lectura.RecConfig(), nullptr);
  for (const TablaPtr& vacia : {TablaPtr(), TablaDeCanales({})}) {
    comunicador.Devuelve("CargarConfiguracion", vacia);
    const auto falla = FallaDe([&] { CargarConfiguracion(mod, lectura, FuenteAsistente::kArchivo, "e.icf"); });
    ASSERT_TRUE(falla);
    EXPECT_EQ(falla->Descripcion(), "La configuración no tiene canales");
  }
  comunicador.Devuelve("CargarConfiguracion", TablaDeTextos({"Canal", "Flags"}, {{"1", "1"}}));
  EXPECT_EQ(prueba::NumeroDeError([&] { CargarConfiguracion(mod, lectura, FuenteAsistente::kArchivo, "e.icf"); }),
            3265);
  EXPECT_NE(Errores().find("\"FrmAsistRemotas\",\"Cargando Configuracion\""), std::string::npos);
}

FilaDeCanal Viento(const char* canal, const char* tipo, const char* flags, const char* tread, const char* tstorage) {
  return {{"Canal", canal},    {"Tipo", tipo},  {"Flags", flags},   {"TRead", tread},       {"TStorage", tstorage},
          {"TMed", "1"},       {"TEval", "60"}, {"TDiscret", "60"}, {"TResetAlarma", "60"}, {"Resolucion", "1"},
          {"MaxValid", "100"}, {"Bits", "10"},  {"AMax", "90"}};
}

TEST_F(ConfiguracionAsistente, LaVeletaTomaLosTiemposDelAnemometro) {
  const struct {
    const char* que;
    std::vector<FilaDeCanal> canales;
    const char* forzada;  // the vane that was set; null: none
    std::vector<std::string> tiempos;
  } casos[] = {
      {"iguales como valores",
       {Viento("3", "3", "1", "10", "60"), Viento("2", "2", "1", "10.0", " 60")},
       nullptr,
       {"10/60", "10.0/ 60"}},
      {"TRead", {Viento("3", "3", "1", "20", "60"), Viento("2", "2", "1", "10", "60")}, "EA03", {"10/60", "10/60"}},
      {"TStorage", {Viento("2", "2", "1", "10", "30"), Viento("3", "3", "1", "10", "60")}, "EA03", {"10/30", "10/30"}},
      {"sin anemómetro", {Viento("3", "3", "1", "20", "60")}, nullptr, {"20/60"}},
      {"primera habilitada",
       {Viento("3", "3", "0", "1", "1"), Viento("4", "3", "1", "2", "2"), Viento("5", "2", "0", "5", "5"),
        Viento("6", "2", "1", "6", "6")},
       "EA04",
       {"1/1", "6/6", "5/5", "6/6"}},
      {"ninguna habilitada: la primera",
       {Viento("3", "3", "0", "1", "1"), Viento("4", "3", "0", "2", "2"), Viento("5", "2", "0", "5", "5"),
        Viento("6", "2", "0", "6", "6")},
       "EA03",
       {"5/5", "2/2", "5/5", "6/6"}},
  };
  for (const auto& caso : casos) {
    const CanalesAsistente canales = CanalesDe(TablaDeCanales(caso.canales));
    const AjusteViento ajuste = AjustarViento(canales.ColeccionConfigCompleta);
    EXPECT_EQ(ajuste.forzado, caso.forzada != nullptr) << caso.que;
    EXPECT_EQ(ajuste.veleta, caso.forzada == nullptr ? "" : caso.forzada) << caso.que;
    std::vector<std::string> tiempos;
    for (const ConfigPtr& c : canales.ColeccionConfigCompleta) tiempos.push_back(c->TRead + '/' + c->TStorage);
    EXPECT_EQ(tiempos, caso.tiempos) << caso.que;
  }
}

TEST_F(ConfiguracionAsistente, LoQueLaVeletaIncumpleDesdeEntoncesSeDice) {
  const auto ajustar = [](const char* tread) {
    return TextoDeReparos(
        AjustarViento(CanalesDe(TablaDeCanales({Viento("3", "3", "1", "10", "60"), Viento("2", "2", "1", tread, "60")}))
                          .ColeccionConfigCompleta));
  };
  EXPECT_EQ(ajustar("10"), "") << "nothing was forced";
  EXPECT_THAT(ajustar("20"), Not(HasSubstr("Período de Lectura")));
  EXPECT_THAT(ajustar("7"),
              StartsWith("La veleta (EA03) no cumple:\nPeríodo de Lectura (TRead): debe ser múltiplo de 1440\n"));
}

}  // namespace
}  // namespace utr
