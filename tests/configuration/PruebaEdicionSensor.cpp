#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "base/Numeros.h"
#include "configuration/CalculosSensor.h"
#include "configuration/EdicionSensor.h"

namespace utr {
namespace {

using C = CampoSensor;

using Fila = std::map<std::string, std::string, std::less<>>;

// A channel by the names of its fields, `Modificado` apart.
Fila FilaDe(const Config& c) {
  Fila fila{{"Tipo", c.Tipo},
            {"Pila", c.Pila},
            {"Flags", c.Flags},
            {"Rango", c.Rango},
            {"Pagina", c.Pagina},
            {"Descripcion", c.Descripcion},
            {"Canal", c.Canal},
            {"Resolucion", c.Resolucion},
            {"Key", c.Key},
            {"CtePluvi", std::to_string(c.CtePluvi)},
            {"Parametro", c.Parametro},
            {"Unidad", c.Unidad},
            {"Nombre", c.Nombre},
            {"RangoNegativo", c.RangoNegativo}};
  for (std::size_t i = 0; i < kCamposDeTexto; ++i) {
    const DatosCampo& dato = DatosDe(static_cast<C>(i));
    if (dato.valor != nullptr) fila[dato.control] = c.*dato.valor;
  }
  return fila;
}

// A channel of that kind whose values pass.
Config Buena(const std::string& tipo, const std::string& canal) {
  Config c;
  c.Tipo = tipo;
  c.Canal = canal;
  c.Flags = "3";
  c.Nombre = "Puente";
  c.Pila = "4";
  c.Pagina = "2";
  c.Descripcion = "río";
  c.TMed = "1";
  for (const auto campo : {&Config::TRead, &Config::TStorage}) c.*campo = "10";
  for (const auto campo : {&Config::TEval, &Config::TDiscret}) c.*campo = "60";
  if (tipo == "5") c.TEval = "10";
  c.TCero = "1440";
  c.TResetAlarma = "720";
  for (const C campo : {C::kMaxValid, C::kRangoMax}) c.*DatosDe(campo).valor = "100";
  for (const C campo : {C::kMinValid, C::kRangoMin, C::kCero}) c.*DatosDe(campo).valor = "0";
  for (const C campo : {C::kMaxSubVal, C::kMaxBajVal, C::kMaxSubTx, C::kMaxBajTx, C::kAlSub, C::kAlBaj}) {
    c.*DatosDe(campo).valor = "7.5";
  }
  for (const auto campo : {&Config::AMax, &Config::AlMaxPico}) c.*campo = "90";
  for (const auto campo : {&Config::AMin, &Config::AlMinPico}) c.*campo = "10";
  c.Span = "4095";
  c.Bits = "7";
  c.Resolucion = "1";
  c.CtePluvi = 0.2541;
  c.Unidad = "3";
  return c;
}

// Options as texts, and what accepting makes of them.
constexpr std::pair<const char*, const char*> kFlags[] = {
    {"3", "3"}, {"07", "07"}, {"", "0"}, {"abc", "0"}, {"300", "12"}, {"-3", "29"}, {"31", "31"}, {"99999999999", "0"}};

// What the rules and the ways of storing force on a channel that was opened and accepted as it is.
void Forzar(const Config& antes, bool solo_parametros, Fila& fila) {
  const std::string tipo = std::to_string(TipoDe(antes));
  if (tipo == "0") {
    fila["Alarmas(4)"] = antes.AMax;
    fila["Alarmas(5)"] = antes.AMin;
  }
  if (tipo == "1") fila["Validaciones(2)"] = fila["Validaciones(3)"] = fila["Validaciones(5)"] = "0";
  if (tipo == "5") fila["Periodos(2)"] = antes.TRead;
  for (const auto& [texto, guardado] : kFlags) {
    if (antes.Flags == texto) fila["Flags"] = guardado;
  }
  if (solo_parametros) return;
  const double minimo = Val(antes.RangoMin), maximo = Val(antes.RangoMax);
  fila["Rango"] = TextoGeneral(std::abs(minimo - maximo));
  fila["RangoNegativo"] = minimo > maximo ? "55" : "66";
  if (antes.CtePluvi == 0) fila["CtePluvi"] = std::to_string(0.25);
  if (Val(antes.Resolucion) <= 0) fila["Resolucion"] = "1";
  if (antes.Tipo.empty()) fila["Tipo"] = "0";
  if (tipo != "7") return;
  for (const char* cero :
       {"SensorCFG(0)", "SensorCFG(1)", "Rango", "SensorCFG(2)", "SensorCFG(3)", "SensorCFG(4)", "Validaciones(0)",
        "Validaciones(1)", "Alarmas(0)", "Alarmas(1)", "Alarmas(4)", "Alarmas(5)"}) {
    fila[cero] = "0";
  }
}

// Texts as damaged units and foreign files bring them.
Config AlAzar(std::mt19937& azar) {
  const auto uno_de = [&azar](const auto& lista) { return lista[azar() % std::size(lista)]; };
  constexpr std::pair<const char*, const char*> kCanales[] = {{"0", "1"},  {"1", "2"}, {"2", "2"},  {"3", "3"},
                                                              {"0", "22"}, {"1", "4"}, {"5", "15"}, {"7", "16"},
                                                              {"4", "5"},  {"6", "5"}, {"", "7"},   {"07", "21"}};
  const std::string cuarenta(40, '9');
  const std::string textos[] = {"",     "-",     "12,5", "abc", "1,5,", "10", "60", " 7 ",  "0", "-3",
                                "1440", "0.001", "5.",   "x\n", "1e2",  "66", "08", "\xff", "3", cuarenta};
  const auto [tipo, canal] = uno_de(kCanales);
  Config c = Buena(tipo, canal);
  std::string* sueltos[] = {&c.Resolucion, &c.Parametro, &c.Unidad, &c.Pila, &c.Pagina, &c.Rango};
  for (auto cuantos = azar() % 3; cuantos > 0; --cuantos) *uno_de(sueltos) = uno_de(textos);
  for (auto cuantos = azar() % 4; cuantos > 0; --cuantos) {
    const DatosCampo& dato = DatosDe(static_cast<C>(azar() % kCamposDeTexto));
    if (dato.valor != nullptr) c.*dato.valor = uno_de(textos);
  }
  if (azar() % 4 == 0) c.CtePluvi = 0;
  if (azar() % 8 == 0) std::swap(c.RangoMin, c.RangoMax);
  c.Flags = uno_de(kFlags).first;
  return c;
}

TEST(EdicionSensor, AceptarSinTocarNadaNoCambiaNada) {
  std::mt19937 azar(1);  // NOLINT(bugprone-random-generator-seed): the same cases at each run
  const auto todo = [](C) { return true; };
  int aceptadas = 0;
  for (int i = 0; i < 4000; ++i) {
    const Config antes = AlAzar(azar);
    const bool solo_parametros = azar() % 2 == 0;
    Config config = antes;
    EdicionSensor edicion = EdicionDe(config);
    if (!edicion.tipo) continue;
    Fila esperada = FilaDe(antes);
    const bool aceptada = AceptarEdicion(edicion, todo, solo_parametros, config).reparos.empty();
    if (aceptada) Forzar(antes, solo_parametros, esperada);
    ASSERT_EQ(FilaDe(config), esperada) << i << " tipo " << antes.Tipo << (aceptada ? " aceptada" : "");
    ASSERT_EQ(config.Modificado, aceptada);
    aceptadas += aceptada ? 1 : 0;
  }
  EXPECT_GT(aceptadas, 1000);
}

TEST(EdicionSensor, LoEditadoSeGuardaSegunElModo) {
  for (const bool solo_parametros : {false, true}) {
    Config config = Buena("1", "2");
    EdicionSensor edicion = EdicionDe(config);
    Aplicar(
        {{C::kTRead, "30"}, {C::kTStorage, "30"}, {C::kRangoMax, "200"}, {C::kPluviometro, "0,5"}, {C::kAMax, "95"}},
        edicion.valores);
    edicion.tipo = std::int16_t{2};
    edicion.flags = 25;
    edicion.parametro = 0;
    edicion.unidad = std::nullopt;
    edicion.resolucion = 4;
    const auto todo = [](C) { return true; };
    ASSERT_TRUE(AceptarEdicion(edicion, todo, solo_parametros, config).reparos.empty());
    EXPECT_EQ(config.TRead, "30");
    EXPECT_EQ(config.AMax, "95");
    EXPECT_EQ(config.Flags, "25");
    EXPECT_EQ(config.Unidad, "3");
    EXPECT_EQ(config.Tipo, solo_parametros ? "1" : "2");
    EXPECT_EQ(config.RangoMax, solo_parametros ? "100" : "200");
    EXPECT_EQ(config.Rango, solo_parametros ? "" : "200");
    EXPECT_EQ(config.Resolucion, solo_parametros ? "1" : "4");
    EXPECT_EQ(config.CtePluvi, solo_parametros ? 0.2541 : 0.5);
  }
}

TEST(EdicionSensor, UnReparoGuardaNadaYFuerzaLosCampos) {
  Config config = Buena("5", "15");
  config.TEval = "0";
  const Fila antes = FilaDe(config);
  EdicionSensor edicion = EdicionDe(config);
  const auto todo = [](C) { return true; };
  EXPECT_EQ(AceptarEdicion(edicion, todo, false, config).reparos.size(), 1U);
  EXPECT_EQ(FilaDe(config), antes);
  EXPECT_EQ(edicion.valores[C::kTEval], "10");
  EXPECT_TRUE(AceptarEdicion(edicion, todo, false, config).reparos.empty()) << "the second time it is mended";
}

TEST(EdicionSensor, QueRemediaUnCampoApagado) {
  using M = ModoEdicion;
  const std::tuple<C, CaraSensor, M, const char*> casos[] = {
      {C::kTRead, CaraSensor::kAnalogico, M::kSoloLectura, "\"Configurar\""},
      {C::kTRead, CaraSensor::kAnalogico, M::kSoloParametros, "\"Leer\" o \"Configurar\""},
      {C::kBits, CaraSensor::kAnalogico, M::kSoloParametros, "\"Configurar\""},
      {C::kNivRefLmn, CaraSensor::kLimnimetro, M::kSoloParametros, "\"Leer\" o \"Configurar\""},
      {C::kAMax, CaraSensor::kDireccion, M::kTodo, "\"Leer\""},
      {C::kMaxBajVal, CaraSensor::kAnalogico, M::kTodo, "\"Rango Mínimo (UI)\" o \"Rango Máximo (UI)\""},
      {C::kBits, CaraSensor::kSupervisionAnalogica, M::kTodo, ""},
  };
  for (const auto& [campo, cara, modo, remedio] : casos) {
    EXPECT_EQ(RemedioDe(campo, cara, modo), remedio) << DatosDe(campo).control;
  }
}

TEST(CalculosSensor, LosPasosVanAlSiguienteValorLegal) {
  struct Caso {
    C campo;
    const char* texto;
    const char* arriba;  // null: no step
    const char* abajo;
  };
  // TRead 10, TStorage 20.
  const Caso casos[] = {{C::kTMed, "10", nullptr, "9"},
                        {C::kTMed, "1", "2", nullptr},
                        {C::kTStorage, "25", "30", "20"},
                        {C::kTStorage, "1440", nullptr, "1430"},
                        {C::kTStorage, "", "10", nullptr},
                        {C::kTDiscret, "40", "60", "20"},
                        {C::kTEval, "2000", nullptr, "1440"},
                        {C::kTRead, "7", "8", "6"},
                        {C::kTRead, "1440", nullptr, "720"},
                        {C::kTRead, "1", "2", nullptr},
                        {C::kTRead, "2", "3", "1"},
                        {C::kTRead, "9999", nullptr, "1440"},
                        {C::kPluviometro, "0.254", "0.26", "0.24"},
                        {C::kPluviometro, "0,3", "0.31", "0.29"},
                        {C::kPluviometro, "0.01", "0.02", nullptr}};
  for (const Caso& caso : casos) {
    ValoresSensor valores;
    Aplicar({{C::kTRead, "10"}, {C::kTStorage, "20"}, {C::kTDiscret, "20"}}, valores);
    valores[caso.campo] = caso.texto;
    EXPECT_EQ(Pasar(caso.campo, 1, valores).value_or("-"), caso.arriba == nullptr ? "-" : caso.arriba) << caso.texto;
    EXPECT_EQ(Pasar(caso.campo, -1, valores).value_or("-"), caso.abajo == nullptr ? "-" : caso.abajo) << caso.texto;
  }
}

}  // namespace
}  // namespace utr
