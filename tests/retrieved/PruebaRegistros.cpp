#include <random>

#include "base/Numeros.h"
#include "configuration/Canales.h"
#include "retrieved/Banco.h"
#include "retrieved/Escalado.h"
#include "retrieved/Registros.h"

namespace utr {
namespace {

using prueba::NumeroDeError;

const std::vector<const char*> kOrigen = {"Fecha",  "Hora",   "Canal",      "Valor",
                                          "Maximo", "Minimo", "Validacion", "ColaTX"};
const std::vector<const char*> kTodos = {"Fecha",  "Hora",       "Canal",  "Valor",       "Maximo",
                                         "Minimo", "Validacion", "ColaTX", "Descripcion", "Unidad"};

class PruebaRegistros : public Banco {
 protected:
  TablaPtr Estacion() const {
    return TablaDeCanales({{{"Canal", "1"}, {"Tipo", "0"}, {"NivRefLmn", "100"}, {"Parametro", "2"}, {"Unidad", "1"}},
                           {{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.2"}, {"Parametro", "999"}, {"Unidad", ""}},
                           {{"Canal", "18"}, {"Tipo", "7"}, {"Parametro", "10"}}});
  }
};

TEST_F(PruebaRegistros, EsquemaDelResultado) {
  const TablaPtr tabla = CrearRegistrosDatos();
  const std::uint32_t tamanos[] = {20, 15, 10, 50, 50, 50, 3, 3, 50, 15};
  ASSERT_EQ(tabla->FieldCount(), kTodos.size());
  for (std::size_t i = 0; i < kTodos.size(); ++i) {
    EXPECT_EQ(tabla->Field(i).nombre, kTodos[i]);
    EXPECT_EQ(tabla->Field(i).tipo, TipoCampo::kVarChar);
    EXPECT_EQ(tabla->Field(i).tamano, tamanos[i]);
    EXPECT_NE(tabla->Field(i).atributos & atributo::kAnulable, 0U);
  }
}

TEST_F(PruebaRegistros, UnaFilaPorMuestra) {
  const auto origen = TablaDeTextos(kOrigen, {{nullptr, "00:05:00", "1", "2048", "4096", "0", "1", "0"},
                                              {"01/02/2005", "10:00:00", "1", "9", "9", "9", "9", "9"},
                                              {"02/02/2005"},
                                              {"", "00:10:00", "15", "7", "", "N/A", "0", "1"},
                                              {"x", "1", "1", "1", "1", "1", "1", "1"},
                                              {"", nullptr, "1", "1", "1", "1", "1", "1"},
                                              {"", "12", " 18 ", "1", "5,5", nullptr, nullptr, "0"},
                                              {"", "12:00", "40", "5,5", "-3", "1e2", "2", "0"}});
  const auto estacion = Estacion();
  const TablaPtr resultado = ArmarRegistrosDatos(origen, estacion.get(), contexto_);
  EXPECT_TRUE(resultado->Eof());
  EXPECT_EQ(resultado->Pendientes(), 0U);
  EXPECT_EQ(Filas(*resultado, kTodos),
            (std::vector<std::string>{"|00:05:00|EA01|105.000|110.000|100.000|1|0|Nivel del río|m",
                                      "02/02/2005|00:10:00|PLV| 1.4|N/D|N/D|0|1|Pluviómetro| - ",
                                      "02/02/2005|12|ED5|1|5,5|N/D|(nulo)|0|Puerta del gabinete| - ",
                                      "02/02/2005|12:00|N/D|5,5|-3|1e2|2|0|-|-"}));
  EXPECT_EQ(estacion->Filter(), "");
}

TEST_F(PruebaRegistros, SinConfiguracionSonCuentas) {
  const auto origen = TablaDeTextos(kOrigen, {{"", "00:05:00", "1", "2048", "abc", "0", "1", "0"}});
  const TablaPtr resultado = ArmarRegistrosDatos(origen, nullptr, contexto_);
  EXPECT_EQ(Filas(*resultado, kTodos), (std::vector<std::string>{"|00:05:00|EA01|2048|N/D|0|1|0|-|-"}));
}

TEST_F(PruebaRegistros, EnLaColaUnaFilaPuedeLlevarFechaYMuestra) {
  const auto origen = TablaDeTextos(kOrigen, {{"01/02/2005", "10:00:00", "1", "0", "0", "0", "1", "1"},
                                              {"", "10:05:00", "1", "4096", "0", "0", "1", "1"},
                                              {"02/02/2005", "", "1", "0", "0", "0", "1", "1"},
                                              {"03/02/2005", "7", "1", "0", "0", "0", "1", "1"},
                                              {"", "10:10:00", "1", "0", "0", "0", "1", "1"}});
  const auto estacion = Estacion();
  EXPECT_EQ(Filas(*ArmarRegistrosCola(origen, estacion.get(), contexto_), {"Fecha", "Hora", "Valor"}),
            (std::vector<std::string>{"01/02/2005|10:00:00|100.000", "01/02/2005|10:05:00|110.000",
                                      "03/02/2005|10:10:00|100.000"}));
  EXPECT_EQ(Filas(*ArmarRegistrosDatos(origen, estacion.get(), contexto_), {"Fecha", "Hora"}),
            (std::vector<std::string>{"01/02/2005|10:05:00", "03/02/2005|10:10:00"}));
}

TEST_F(PruebaRegistros, SinOrigenOSinFilas) {
  EXPECT_EQ(ArmarRegistrosDatos(nullptr, nullptr, contexto_), nullptr);
  EXPECT_EQ(ArmarRegistrosCola(nullptr, nullptr, contexto_), nullptr);
  const auto estacion = Estacion();
  estacion->Filter("Canal='15'");
  const auto marcador = TablaDeTextos(kOrigen, {{"01/02/2005", "10:00:00", "1", "1", "1", "1", "1", "1"}});
  for (const TablaPtr& origen : {TablaDeTextos({"Fecha"}), marcador}) {
    const TablaPtr vacio = ArmarRegistrosDatos(origen, estacion.get(), contexto_);
    EXPECT_EQ(vacio->FieldCount(), 10U);
    EXPECT_EQ(vacio->RecordCount(), 0U);
    EXPECT_TRUE(vacio->Eof());
    EXPECT_EQ(estacion->Filter(), "Canal='15'") << "nothing was built";
  }
}

TEST_F(PruebaRegistros, CadaEscaladoSinSpanDejaSuLinea) {
  const auto sin_span = TablaDeCanales({{{"Canal", "2"}, {"Span", "0"}}});
  const auto origen = TablaDeTextos(
      kOrigen, {{"", "00:05:00", "2", "8", "8", "x", "1", "1"}, {"", "00:10:00", "2", "8", "8", "8", "1", "1"}});
  EXPECT_EQ(Filas(*ArmarRegistrosDatos(origen, sin_span.get(), contexto_), {"Valor", "Maximo", "Minimo"}),
            (std::vector<std::string>{"8|8|N/D", "8|8|8"}));
  EXPECT_EQ(comunicador_.log.size(), 5U);
}

TEST_F(PruebaRegistros, CamposNumericosDelConductor) {
  const auto origen = TablaCon({{"Fecha", TipoCampo::kVarChar, 20},
                                {"Hora", TipoCampo::kVarChar, 20},
                                {"Canal", TipoCampo::kEntero, 4},
                                {"Valor", TipoCampo::kDoble, 8},
                                {"Maximo", TipoCampo::kEntero, 4},
                                {"Minimo", TipoCampo::kVarChar, 20},
                                {"Validacion", TipoCampo::kEntero, 4},
                                {"ColaTX", TipoCampo::kLogico, 2}},
                               {{"01/02/2005"}, {nullptr, "00:05:00", "15", "7", nullptr, "7", "1", "True"}});
  const auto estacion = Estacion();
  EXPECT_EQ(Filas(*ArmarRegistrosDatos(origen, estacion.get(), contexto_),
                  {"Fecha", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"}),
            (std::vector<std::string>{"01/02/2005|PLV| 1.4|N/D| 1.4|1|True"}));
}

TEST_F(PruebaRegistros, SigueFiltroYOrdenDelOrigen) {
  const auto origen = TablaDeTextos(kOrigen, {{"", "11:00", "1", "0", "0", "0", "1", "1"},
                                              {"", "12:00", "15", "0", "0", "0", "1", "1"},
                                              {"", "10:00", "1", "0", "0", "0", "1", "1"}});
  origen->Filter("Canal='1'");
  origen->Sort("Hora ASC");
  EXPECT_EQ(Filas(*ArmarRegistrosDatos(origen, nullptr, contexto_), {"Hora"}),
            (std::vector<std::string>{"10:00", "11:00"}));
}

TEST_F(PruebaRegistros, LoQueFallaSube) {
  for (const char* falta : kOrigen) {
    auto campos = kOrigen;
    std::erase(campos, falta);
    EXPECT_EQ(NumeroDeError([&] { ArmarRegistrosDatos(TablaDeTextos(campos, {{"x"}}), nullptr, contexto_); }),
              error::kCampo)
        << falta;
  }
  const auto canal_malo = TablaDeTextos(kOrigen, {{"", "11:00", "EA01", "0", "0", "0", "1", "1"}});
  EXPECT_EQ(NumeroDeError([&] { ArmarRegistrosDatos(canal_malo, nullptr, contexto_); }), error::kTipos);
}

// The builder works out texts once and remembers them: it must say of every value what the plain functions say.
TEST_F(PruebaRegistros, DiceLoMismoQueLasFuncionesSueltas) {
  const auto estacion =
      TablaDeCanales({{{"Canal", "1"}, {"Tipo", "0"}, {"NivRefLmn", "3.5"}, {"Unidad", "1"}},
                      {{"Canal", "2"}, {"Tipo", "2"}, {"RangoMax", "60"}, {"Parametro", "5"}, {"Unidad", "5"}},
                      {{"Canal", "4"}, {"Tipo", "4"}},
                      {{"Canal", "5"}, {"Tipo", "1"}, {"Span", "-1"}},
                      {{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.2"}, {"Unidad", "2"}}});
  std::mt19937 azar(7);
  const char* canales[] = {"1", "2", "4", "5", "15", "9", " 1"};
  const char* rarezas[] = {"", "N/D", "-", " 12 ", "1e3", "-7"};
  auto origen = TablaDeTextos(kOrigen);
  for (int i = 0; i < 2000; ++i) {
    origen->AddNew();
    origen->Set("Hora", "10:00");
    origen->Set("Canal", canales[azar() % std::size(canales)]);
    for (const char* campo : {"Valor", "Maximo", "Minimo"})
      origen->Set(campo,
                  azar() % 5 == 0 ? std::string(rarezas[azar() % std::size(rarezas)]) : std::to_string(azar() % 300));
  }
  const TablaPtr resultado = ArmarRegistrosDatos(origen, estacion.get(), contexto_);
  const std::size_t lineas = comunicador_.log.size();
  comunicador_.log.clear();
  ASSERT_EQ(resultado->RecordCount(), 2000U);
  for (std::size_t fila = 0; fila < 2000; ++fila) {
    origen->IrAFila(fila);
    resultado->IrAFila(fila);
    const std::string canal = origen->Texto("Canal");
    EXPECT_EQ(resultado->Texto("Canal"), NombreCanal(LeerEntero16(canal)));
    EXPECT_EQ(resultado->Texto("Unidad"), UnidadDeCanal(canal, estacion.get(), catalogo_));
    EXPECT_EQ(resultado->Texto("Descripcion"), DescripcionDeCanal(canal, estacion.get(), catalogo_));
    for (const char* campo : {"Valor", "Maximo", "Minimo"}) {
      const std::string crudo = origen->Texto(campo);
      const std::string esperado = EsNumerico(crudo) ? EscalarValor(crudo, canal, estacion.get(), contexto_) : "N/D";
      ASSERT_EQ(resultado->Texto(campo), esperado) << canal << " " << crudo;
    }
  }
  EXPECT_EQ(lineas, comunicador_.log.size());
  EXPECT_GT(lineas, 0U);
}

TEST_F(PruebaRegistros, UnidadYDescripcionLimpianElFiltro) {
  const auto estacion = Estacion();
  for (const char* canal : {"1", "7"}) {
    estacion->Filter("Canal='18'");
    UnidadDeCanal(canal, estacion.get(), catalogo_);
    EXPECT_EQ(estacion->Filter(), "");
    estacion->Filter("Canal='18'");
    DescripcionDeCanal(canal, estacion.get(), catalogo_);
    EXPECT_EQ(estacion->Filter(), "");
  }
  EXPECT_EQ(UnidadDeCanal(" 1", estacion.get(), catalogo_), "m");
  EXPECT_EQ(UnidadDeCanal("7", estacion.get(), catalogo_), "-");
  EXPECT_EQ(DescripcionDeCanal("1", nullptr, catalogo_), "-");
}

}  // namespace
}  // namespace utr
