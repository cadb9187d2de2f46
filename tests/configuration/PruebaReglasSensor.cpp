#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "configuration/CalculosSensor.h"
#include "configuration/ReglasSensor.h"

namespace utr {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;
using C = CampoSensor;
using Cambios = std::vector<ValorForzado>;

// Values that pass every rule of their kind.
EntradaReglas Buena(std::int16_t tipo) {
  EntradaReglas entrada;
  entrada.tipo = tipo;
  entrada.canal = tipo == 5 ? 15 : 2;
  const std::pair<C, const char*> textos[] = {
      {C::kTMed, "1"},       {C::kTRead, "10"},         {C::kTEval, "60"},         {C::kTStorage, "10"},
      {C::kTDiscret, "60"},  {C::kTCero, "1440"},       {C::kTResetAlarma, "720"}, {C::kMaxValid, "100"},
      {C::kMinValid, "0"},   {C::kMaxSubVal, "10"},     {C::kMaxBajVal, "10"},     {C::kMaxSubTx, "10"},
      {C::kMaxBajTx, "10"},  {C::kAMax, "90"},          {C::kAMin, "10"},          {C::kAlSub, "5"},
      {C::kAlBaj, "5"},      {C::kAlMaxPico, "95"},     {C::kAlMinPico, "5"},      {C::kRangoMin, "0"},
      {C::kRangoMax, "100"}, {C::kCero, "0"},           {C::kSpan, "4095"},        {C::kBits, "7"},
      {C::kNivRefLmn, "0"},  {C::kPluviometro, "0.250"}};
  for (const auto& [campo, texto] : textos) entrada.valores[campo] = texto;
  if (tipo == 4) entrada.valores[C::kTEval] = "10";
  entrada.cargados = entrada.valores;
  return entrada;
}

std::vector<std::string> Lineas(const std::vector<ReparoSensor>& reparos) {
  std::vector<std::string> lineas;
  for (const ReparoSensor& reparo : reparos) lineas.push_back(reparo.texto);
  return lineas;
}

TEST(ReglasSensor, LosValoresDeCadaTipoPasan) {
  for (const int tipo : {0, 1, 2, 3, 4, 5, 7}) {
    EXPECT_THAT(Lineas(ReparosVivos(Buena(static_cast<std::int16_t>(tipo))).reparos), IsEmpty()) << tipo;
  }
}

struct CasoRegla {
  std::int16_t tipo;
  Cambios cambios;
  std::vector<std::string> lineas;  // that the box shows
  C primero;                        // the field that is marked first
};

// Captions by the field's own name.
const std::string kTMed = "Tiempo de Medición (TMed):", kTRead = "Período de Lectura (TRead):",
                  kTEval = "Evaluación de Alarmas (TEval):", kTStorage = "Período de Registro (TStorage):",
                  kTDiscret = "Período Transmisión (TDiscret):", kTCero = "Puesta a Cero del Pluviómetro (TCero):",
                  kTReset = "Reseteo de Alarmas (TRestAlarm):";
const std::string kCero = " no puede(n) ser menor(es) o igual(es) a cero";
const std::string kDia = " es mayor a un dia de medición (1440 minutos)";
const std::string kMultiplo = " debe ser múltiplo de ";

std::vector<CasoRegla> DeTiempos() {
  return {
      // Above zero: lists of captions.
      {0, {{C::kTMed, "0"}}, {kTMed + kCero}, C::kTMed},
      {0,
       {{C::kTMed, "0"}, {C::kTResetAlarma, "-1"}},
       {kTMed + ", " + kTReset + kCero, kTRead + kMultiplo + kTReset},
       C::kTMed},
      {3,
       {{C::kTEval, ""}, {C::kTDiscret, "-"}},
       {kTEval + ", " + kTDiscret + kCero, kTRead + kMultiplo + kTEval, kTEval + kMultiplo + kTStorage,
        kTRead + kMultiplo + kTDiscret, kTStorage + kMultiplo + kTDiscret},
       C::kTEval},
      {4, {{C::kTRead, "0"}}, {kTEval + kCero, "En los de supervisión el tread debe ser igual al teval"}, C::kTRead},
      {4,
       {{C::kTRead, "0"}, {C::kTEval, "0"}},
       {kTEval + ", " + kTEval + kCero, kTEval + kMultiplo + kTReset},
       C::kTRead},
      {5, {{C::kTCero, "0"}}, {kTCero + kCero, kTEval + kMultiplo + kTCero, kTCero + kMultiplo + kTDiscret}, C::kTCero},
      // A day at most; the reset of kinds 0 to 3 less than one.
      {0, {{C::kTResetAlarma, "1440"}}, {kTReset + kDia}, C::kTResetAlarma},
      {1, {{C::kTDiscret, "1450"}}, {kTDiscret + kDia}, C::kTDiscret},
      {4, {{C::kTResetAlarma, "1440"}}, {}, C::kTMed},
      {4,
       {{C::kTRead, "1450"}, {C::kTEval, "1450"}, {C::kTResetAlarma, "1450"}},
       {kTEval + ", " + kTEval + ", " + kTReset + kDia},
       C::kTRead},
      {5, {{C::kTResetAlarma, "1441"}}, {kTReset + kDia}, C::kTResetAlarma},
      {5, {{C::kTResetAlarma, "1440"}}, {}, C::kTMed},
      // Relations.
      {0, {{C::kTMed, "11"}}, {kTMed + " debe estar entre 1 y " + kTRead + "(inclusive)"}, C::kTMed},
      {0,
       {{C::kTRead, "7"}, {C::kTEval, "70"}, {C::kTDiscret, "70"}, {C::kTResetAlarma, "70"}},
       {kTRead + kMultiplo + "1440"},
       C::kTRead},
      {0,
       {{C::kTRead, "0"}},
       {kTRead + kCero, kTMed + " debe estar entre 1 y " + kTRead + "(inclusive)", kTRead + kMultiplo + "1440",
        kTRead + kMultiplo + kTEval, kTRead + kMultiplo + kTDiscret, kTRead + kMultiplo + kTReset},
       C::kTRead},
      {0, {{C::kTEval, "5"}}, {kTRead + kMultiplo + kTEval}, C::kTRead},
      {0, {{C::kTDiscret, "65"}}, {kTRead + kMultiplo + kTDiscret, kTStorage + kMultiplo + kTDiscret}, C::kTRead},
      {0, {{C::kTResetAlarma, "725"}}, {kTRead + kMultiplo + kTReset}, C::kTRead},
      {0, {{C::kTStorage, "40"}}, {kTStorage + kMultiplo + kTDiscret}, C::kTStorage},
      {1, {{C::kTStorage, "15"}}, {kTRead + kMultiplo + kTStorage}, C::kTRead},
      {2, {{C::kTStorage, "120"}, {C::kTDiscret, "120"}}, {kTEval + kMultiplo + kTStorage}, C::kTStorage},
      {4, {{C::kTEval, "20"}}, {"En los de supervisión el tread debe ser igual al teval"}, C::kTEval},
      {4, {{C::kTResetAlarma, "725"}}, {kTEval + kMultiplo + kTReset}, C::kTEval},
      {5, {{C::kTStorage, "20"}}, {"En los pluviometros el tread debe ser igual al tstorage"}, C::kTStorage},
      {5, {{C::kTDiscret, "70"}}, {kTCero + kMultiplo + kTDiscret}, C::kTDiscret},
      {5, {{C::kTCero, "65"}}, {kTEval + kMultiplo + kTCero, kTCero + kMultiplo + kTDiscret}, C::kTEval},
      {7, {{C::kTRead, "0"}, {C::kTMed, "9999"}}, {}, C::kTMed},
      {6, {{C::kTRead, "0"}}, {}, C::kTMed},
  };
}

std::vector<CasoRegla> DeLimites() {
  const std::string rango = " entre el Rango Maximo o el Rango Minimo mas el nivel de refencia";
  const std::string alarma = " entre el Rango Maximo y el Rango Minimo mas el Nivel de Referencia";
  const std::string amplitud = " debe ser menor o igual al valor absoluto de (Rango Maximo - Rango Minimo)";
  const auto mayor = [](const std::string& que, const std::string& cola) {
    return "El valor de " + que + " debe ser menor o igual al valor " + cola;
  };
  const auto menor = [](const std::string& que, const std::string& cola) {
    return "El valor de " + que + " debe ser mayor o igual al valor mínimo" + cola;
  };
  std::vector<CasoRegla> casos;
  for (const std::int16_t tipo : std::array<std::int16_t, 2>{0, 1}) {
    for (const auto& [campo, nombre] : {std::pair(C::kMaxValid, "MaxValid"), std::pair(C::kMinValid, "MinValid")}) {
      casos.push_back({tipo, {{campo, "100.001"}}, {mayor(nombre, "maximo" + rango)}, campo});
      casos.push_back({tipo, {{campo, "-0.001"}}, {menor(nombre, rango)}, campo});
    }
    for (const auto& [campo, nombre] : {std::pair(C::kAMax, "máxima"), std::pair(C::kAMin, "mínima")}) {
      casos.push_back(
          {tipo, {{campo, "101"}}, {mayor(std::string("la alarma de ") + nombre, "máximo" + alarma)}, campo});
      casos.push_back({tipo, {{campo, "-1"}}, {menor(std::string("la alarma de ") + nombre, alarma)}, campo});
    }
    for (const auto& [campo, nombre] : {std::pair(C::kAlSub, "Ascendente"), std::pair(C::kAlBaj, "Descendente")}) {
      casos.push_back({tipo,
                       {{campo, "100.5"}},
                       {std::string("El valor de la alarma de Variación ") + nombre +
                        " debe ser menor o igual al valor absoluto entre el Rango Maximo y el Rango Minimo"},
                       campo});
    }
  }
  for (const auto& [campo, nombre] :
       {std::pair(C::kAlMaxPico, "pico máximo"), std::pair(C::kAlMinPico, "pico mínimo")}) {
    casos.push_back({1, {{campo, "101"}}, {mayor(std::string("la alarma de ") + nombre, "máximo" + alarma)}, campo});
    casos.push_back({1, {{campo, "-1"}}, {menor(std::string("la alarma de ") + nombre, alarma)}, campo});
    casos.push_back({0, {{campo, "9999"}}, {}, campo});
  }
  for (const auto& [campo, nombre] : {std::pair(C::kMaxSubVal, "MaxSubVal"), std::pair(C::kMaxBajVal, "MaxBajVal"),
                                      std::pair(C::kMaxSubTx, "MaxSubTx"), std::pair(C::kMaxBajTx, "MaxBajTx")}) {
    casos.push_back({0, {{campo, "101"}}, {std::string("El valor de ") + nombre + amplitud}, campo});
  }
  const std::vector<CasoRegla> sueltos = {
      {5, {{C::kMaxValid, "0"}}, {"El valor de Valor Máximo  (MaxValid): debe ser mayor que cero"}, C::kMaxValid},
      {5,
       {{C::kMaxSubTx, "-1"}},
       {"El valor de Por Variación Ascendente (MaxSubTx): debe ser mayor que cero"},
       C::kMaxSubTx},
      {3, {{C::kBits, "17"}}, {"La cantidad de Bits a Enviar no puede ser superior a 16"}, C::kBits},
      {2,
       {{C::kBits, "x"}},
       {"La cantidad de Bits a Enviar no puede ser 0, verifique los parametros de escalado"},
       C::kBits},
      {0, {{C::kBits, "-2"}}, {}, C::kBits},
      {7, {{C::kBits, "0"}}, {}, C::kBits},
      {2,
       {{C::kAMax, "100.1"}, {C::kAlMaxPico, "101"}},
       {"El valor de Alarma de Máxima (AMax): menos el nivel de referncia debe ser menor o igual que el rango maximo"},
       C::kAMax},
      {3,
       {{C::kAMin, "-0.1"}},
       {"El valor de Alarma de Mínima (AMin): menos el nivel de referncia debe ser menor o igual que el rango mínimo"},
       C::kAMin},
      {2,
       {{C::kAlMinPico, "96"}},
       {"El valor de Alarma de Pico Máximo (AlMaxPico): debe ser mayor que el valor de Alarma de Pico Mínimo "
        "(AlMinPico):"},
       C::kAlMinPico},
      {2, {{C::kAlMinPico, "95"}, {C::kAMin, "90"}}, {}, C::kAMin},
      {3,
       {{C::kAMin, "91"}},
       {"El valor de Alarma de Máxima (AMax): debe ser mayor que el valor de Alarma de Mínima (AMin):"},
       C::kAMin},
      {4,
       {{C::kAMin, "91"}},
       {"El valor de Alarma de Máxima (AMax): debe ser mayor que el valor de Alarma de Mínima (AMin):"},
       C::kAMin},
      {3,
       {{C::kAlSub, "0"}, {C::kAlBaj, "-1"}, {C::kAlMaxPico, "0"}, {C::kAlMinPico, "0"}},
       {"El valor de Variación Ascendente (AlSub): debe ser mayor a cero",
        "El valor de Variación Descendente (AlBaj): debe ser mayor a cero",
        "El valor de Alarma de Pico Máximo (AlMaxPico): debe ser mayor a cero",
        "El valor de Alarma de Pico Mínimo (AlMinPico): debe ser mayor a cero"},
       C::kAlSub},
      {5, {{C::kAMin, "91"}}, {}, C::kAMin},
      // The reference level moves the range; a slope may be negative; sums count as their texts.
      {0,
       {{C::kNivRefLmn, "50"}, {C::kMinValid, "50"}, {C::kMaxValid, "150"}, {C::kAMin, "50"}, {C::kAMax, "150"}},
       {},
       C::kAMax},
      {0, {{C::kRangoMin, "100"}, {C::kRangoMax, "0"}}, {}, C::kAMax},
      {0, {{C::kRangoMin, "0.1"}, {C::kNivRefLmn, "0.2"}, {C::kMinValid, "0.3"}}, {}, C::kMinValid},
      {0, {{C::kMaxValid, "100.0005"}}, {}, C::kMaxValid},
      {0, {{C::kMaxValid, "100.0006"}}, {mayor("MaxValid", "maximo" + rango)}, C::kMaxValid},
  };
  casos.insert(casos.end(), sueltos.begin(), sueltos.end());
  return casos;
}

void Probar(const std::vector<CasoRegla>& casos) {
  for (const CasoRegla& caso : casos) {
    EntradaReglas entrada = Buena(caso.tipo);
    Aplicar(caso.cambios, entrada.valores);
    std::string nombre = "tipo " + std::to_string(caso.tipo);
    for (const ValorForzado& cambio : caso.cambios)
      nombre += std::string(" ") + DatosDe(cambio.campo).control + "=" + cambio.texto;
    const ResultadoReglas resultado = ValidarDatos(entrada);
    EXPECT_THAT(Lineas(resultado.reparos), ElementsAreArray(caso.lineas)) << nombre;
    if (!caso.lineas.empty() && !resultado.reparos.empty()) {
      EXPECT_EQ(resultado.reparos.front().campos.front(), caso.primero) << nombre;
    }
  }
}

TEST(ReglasSensor, CadaReglaDeTiemposConSuLinea) {
  Probar(DeTiempos());
}

TEST(ReglasSensor, CadaReglaDeLimitesYAlarmasConSuLinea) {
  Probar(DeLimites());
}

TEST(ReglasSensor, LaCajaSeDetieneEnElPrimerPasoYLasMarcasNo) {
  EntradaReglas entrada = Buena(0);
  Aplicar({{C::kTMed, "0"}, {C::kMaxValid, "101"}, {C::kAMax, "101"}}, entrada.valores);
  EXPECT_EQ(MensajeDeReparos(ValidarDatos(entrada).reparos), "Error en los valores ingresados\r\n" + kTMed + kCero);
  EXPECT_EQ(ReparosVivos(entrada).reparos.size(), 3U);
}

TEST(ReglasSensor, LoForzadoSeDiceYNoSeAplica) {
  struct Caso {
    std::int16_t tipo;
    std::int16_t canal;
    Cambios forzados;
  };
  const Caso casos[] = {
      {0, 1, {{C::kAlMaxPico, "90"}, {C::kAlMinPico, "10"}}},
      {1, 1, {{C::kMaxSubVal, "0"}, {C::kMaxBajVal, "0"}, {C::kMaxBajTx, "0"}}},
      {2, 2, {}},
      {5, 15, {{C::kTEval, "10"}}},
      {5,
       4,
       {{C::kTEval, "10"},
        {C::kMaxBajTx, "0"},
        {C::kMaxBajVal, "0"},
        {C::kMaxSubVal, "0"},
        {C::kMinValid, "0"},
        {C::kAlBaj, "0"},
        {C::kAlMaxPico, "0"},
        {C::kAlMinPico, "0"},
        {C::kAlSub, "0"},
        {C::kAMax, "0"},
        {C::kAMin, "0"}}},
      {7, 16, {}},
  };
  for (const Caso& caso : casos) {
    EntradaReglas entrada = Buena(caso.tipo);
    entrada.canal = caso.canal;
    const ValoresSensor antes = entrada.valores;
    const ResultadoReglas resultado = ValidarDatos(entrada);
    EXPECT_THAT(Lineas(resultado.reparos), IsEmpty()) << caso.tipo;
    EXPECT_EQ(resultado.forzados, caso.forzados) << caso.tipo;
    EXPECT_EQ(entrada.valores, antes);
  }
  // The disabled TEval of a gauge is mended even where another rule of its step is broken.
  EntradaReglas gauge = Buena(5);
  Aplicar({{C::kTEval, "0"}, {C::kTDiscret, "70"}}, gauge.valores);
  EXPECT_EQ(ValidarDatos(gauge).forzados, (Cambios{{C::kTEval, "10"}}));
}

TEST(ReglasSensor, LoTecleadoDebeSerUnNumero) {
  EntradaReglas entrada = Buena(1);
  entrada.habilitado = [](C campo) { return campo != C::kAMin; };
  Aplicar({{C::kCero, "12,5"}, {C::kAMin, "10,0"}, {C::kSpan, "4095.5"}, {C::kPluviometro, "0,3"}}, entrada.valores);
  const ResultadoReglas resultado = ValidarDatos(entrada);
  EXPECT_THAT(Lineas(resultado.reparos), testing::ElementsAre("Cero (Cuentas) no es un número"));
  entrada.cargados[C::kCero] = "12,5";
  EXPECT_THAT(Lineas(ValidarDatos(entrada).reparos), IsEmpty()) << "what came so from the unit isn't judged";
  for (const char* texto : {"5", "-5", "+5", ".5", "5.", " 5 "}) EXPECT_TRUE(EsNumeroSimple(texto)) << texto;
  for (const char* texto : {"", "-", ".", "1.5.", "1,5", "1e5", "5 5", "--5", "x"})
    EXPECT_FALSE(EsNumeroSimple(texto)) << texto;
}

TEST(CalculosSensor, BitsDelRango) {
  struct Caso {
    double maximo, minimo, resolucion;
    std::optional<std::int16_t> bits;
  };
  const Caso casos[] = {
      {5000, 0, 1, 13},       {0, 5000, 1, 13}, {65535, 0, 1, 16},           {65536, 0, 1, 17},
      {65.536, 0, 0.001, 17}, {0.1, 0, 1, -2},  {100, 100, 1, std::nullopt}, {100, 0, 0, std::nullopt}};
  for (const Caso& caso : casos)
    EXPECT_EQ(CalcularBits(caso.maximo, caso.minimo, caso.resolucion), caso.bits) << caso.maximo;
  EXPECT_EQ(Divisores(1440).size(), 36U);
  EXPECT_EQ(Divisores(12), (std::vector<std::int16_t>{1, 2, 3, 4, 6, 12}));
}

TEST(CalculosSensor, LosLimitesSiguenAlRangoYAlNivel) {
  ValoresSensor valores = Buena(0).valores;
  valores[C::kRangoMin] = "-12.6";
  EXPECT_EQ(SeguirRango(C::kRangoMin, valores), (Cambios{{C::kAlMinPico, "-12.6"},
                                                         {C::kAMin, "-12.6"},
                                                         {C::kMinValid, "-12.6"},
                                                         {C::kAlBaj, "113"},
                                                         {C::kAlSub, "113"},
                                                         {C::kMaxSubVal, "113"},
                                                         {C::kMaxBajVal, "113"},
                                                         {C::kMaxSubTx, "113"},
                                                         {C::kMaxBajTx, "113"}}));
  valores[C::kRangoMax] = "40000";
  EXPECT_EQ(SeguirRango(C::kRangoMax, valores),
            (Cambios{{C::kAlMaxPico, "40000"}, {C::kAMax, "40000"}, {C::kMaxValid, "40000"}}))
      << "a width beyond 16 bits";
  valores = Buena(0).valores;
  valores[C::kNivRefLmn] = "0.3";
  EXPECT_EQ(SeguirNivel(0, "0.1", valores), (Cambios{{C::kAMax, "90.2"},
                                                     {C::kAMin, "10.2"},
                                                     {C::kAlMaxPico, "90.2"},
                                                     {C::kAlMinPico, "10.2"},
                                                     {C::kMaxValid, "100.2"},
                                                     {C::kMinValid, "0.2"}}));
  EXPECT_EQ(SeguirNivel(1, "0.1", valores).size(), 4U) << "the peaks of a meteorological sensor stay";
  valores[C::kNivRefLmn] = "0";
  ValoresSensor tras = valores;
  Aplicar(SeguirNivel(0, "5", valores), tras);
  for (const auto& [campo, texto] :
       {std::pair(C::kAMax, "100"), std::pair(C::kMaxValid, "100"), std::pair(C::kAMin, "0"),
        std::pair(C::kMinValid, "0"), std::pair(C::kAlMaxPico, "85")}) {
    EXPECT_EQ(tras[campo], texto);
  }
}

TEST(CalculosSensor, RangoYPendiente) {
  ValoresSensor valores;
  const std::tuple<const char*, const char*, const char*, const char*> casos[] = {
      {"0", "5.5", "5.5", "66"}, {"5.5", "0", "5.5", "55"}, {"3", "3", "0", "66"}, {"-1", "0.5", "1.5", "66"}};
  for (const auto& [minimo, maximo, rango, pendiente] : casos) {
    valores[C::kRangoMin] = minimo;
    valores[C::kRangoMax] = maximo;
    EXPECT_EQ(TextoRango(valores), rango);
    EXPECT_EQ(CodigoPendiente(valores), pendiente);
  }
}

TEST(CalculosSensor, CadaTiempoTieneSusLimites) {
  ValoresSensor valores;
  valores[C::kTRead] = "15";
  valores[C::kTStorage] = "30";
  valores[C::kTDiscret] = "60";
  const std::tuple<C, double, double, double> casos[] = {{C::kTMed, 1, 15, 1},         {C::kTRead, 1, 36, 1},
                                                         {C::kTStorage, 15, 1440, 15}, {C::kTResetAlarma, 15, 1440, 15},
                                                         {C::kTEval, 30, 1440, 30},    {C::kTDiscret, 30, 1440, 30},
                                                         {C::kTCero, 60, 1440, 60}};
  for (const auto& [tiempo, minimo, maximo, paso] : casos) {
    const LimitesPaso limites = LimitesDe(tiempo, valores);
    EXPECT_EQ(std::tuple(limites.minimo, limites.maximo, limites.paso), std::tuple(minimo, maximo, paso))
        << static_cast<int>(tiempo);
  }
}

TEST(CalculosSensor, LosTiemposSeAjustanALoMasCercano) {
  ValoresSensor valores = Buena(5).valores;
  Aplicar({{C::kTRead, "15"}, {C::kTMed, "20"}, {C::kTStorage, "10"}, {C::kTDiscret, "100"}, {C::kTCero, "1440"}},
          valores);
  const auto todos = [](C) { return true; };
  ValoresSensor tras = valores;
  Aplicar(AjustarTiempos(valores, todos), tras);
  const std::pair<C, const char*> esperados[] = {{C::kTMed, "15"},    {C::kTStorage, "15"},      {C::kTDiscret, "105"},
                                                 {C::kTCero, "1400"}, {C::kTResetAlarma, "720"}, {C::kTEval, "60"}};
  for (const auto& [campo, texto] : esperados) EXPECT_EQ(tras[campo], texto) << DatosDe(campo).rotulo;
  EXPECT_THAT(AjustarTiempos(valores, [](C) { return false; }), IsEmpty());
}

// What can be edited under each face, told face by face where the program tells it field by field.
TEST(CamposSensor, CadaCaraConSusCampos) {
  const char* nombres[] = {"TMed",     "TRead",    "TEval",     "TStorage",  "TDiscret",  "TCero",      "TReset",
                           "MaxValid", "MinValid", "MaxSubVal", "MaxBajVal", "MaxSubTx",  "MaxBajTx",   "AMax",
                           "AMin",     "AlSub",    "AlBaj",     "AlMaxPico", "AlMinPico", "RangoMin",   "RangoMax",
                           "Cero",     "Span",     "Bits",      "NivRef",    "Pluvi",     "Alarma",     "3Hilos",
                           "Olas",     "Dif",      "CFG",       "Dig",       "Tipos",     "Parametros", "Opciones"};
  const auto activos = [&](CaraSensor cara) {
    std::string lista;
    for (std::size_t i = 0; i < kCamposDeSensor; ++i) {
      const Celda celda = CeldaDe(static_cast<C>(i), cara);
      if (celda == Celda::kActiva || celda == Celda::kReiniciada) lista += std::string(nombres[i]) + ' ';
    }
    return lista;
  };
  const std::string historia = "TMed TRead TEval TStorage TDiscret TReset ";
  const std::string escala = "RangoMin RangoMax Cero Span Bits ";
  const std::string resto = "CFG Tipos Parametros Opciones ";
  const std::pair<CaraSensor, std::string> caras[] = {
      {CaraSensor::kLimnimetro, historia +
                                    "MaxValid MinValid MaxSubVal MaxBajVal MaxSubTx MaxBajTx AMax AMin AlSub AlBaj " +
                                    escala + "NivRef Alarma Olas Dif " + resto},
      {CaraSensor::kAnalogico, historia + "MaxValid MinValid MaxSubVal MaxSubTx AMax AMin AlSub AlBaj " + escala +
                                   "NivRef Alarma Dif " + resto},
      {CaraSensor::kMeteorologico, historia + "MaxValid MinValid MaxSubTx AMax AMin AlSub AlBaj AlMaxPico AlMinPico " +
                                       escala + "Alarma Dif " + resto},
      {CaraSensor::kVelocidad,
       historia + "MaxValid MinValid AMax AMin AlSub AlBaj AlMaxPico AlMinPico " + escala + "NivRef Alarma " + resto},
      {CaraSensor::kDireccion, historia + escala + resto},
      {CaraSensor::kSupervisionAnalogica,
       "TRead TEval TReset MaxValid MinValid AMax AMin Alarma Tipos Parametros Opciones "},
      {CaraSensor::kPluviometro,
       "TRead TStorage TDiscret TCero MaxValid MaxSubTx " + escala + "Pluvi Alarma 3Hilos CFG Opciones "},
      {CaraSensor::kSupervisionDigital, "TEval TReset Alarma Dig Parametros "}};
  for (const auto& [cara, lista] : caras) EXPECT_EQ(activos(cara), lista) << static_cast<int>(cara);
  EXPECT_EQ(CeldaDe(C::kNivRefLmn, CaraSensor::kVelocidad), Celda::kReiniciada);
  EXPECT_EQ(CeldaDe(C::kFiltroOlas, CaraSensor::kSupervisionAnalogica), Celda::kOculta);
  EXPECT_EQ(CeldaDe(C::kTresHilos, CaraSensor::kVelocidad), Celda::kSinCambio);
  EXPECT_EQ(CaraDe(0, 1), CaraSensor::kLimnimetro);
  EXPECT_EQ(CaraDe(0, 2), CaraSensor::kAnalogico);
  EXPECT_FALSE(CaraDe(6, 2));
  EXPECT_FALSE(CaraDe(8, 2));
}

TEST(CamposSensor, LosTiposQueUnCanalPuedeTener) {
  const auto tipos = [](std::int16_t canal) {
    std::string lista;
    for (const TipoOfrecido& tipo : TiposDeCanal(canal)) lista += std::to_string(tipo.tipo) + tipo.texto + ";";
    return lista;
  };
  EXPECT_EQ(tipos(1), "0Limnimétrico;1Meteorológico;");
  EXPECT_EQ(tipos(2), "1Meteorológico;2Velocidad de Viento;0Analógico;");
  EXPECT_EQ(tipos(3), "1Meteorológico;3Dirección de Viento;0Analógico;");
  for (const int canal : {4, 14, 22, 23})
    EXPECT_EQ(tipos(static_cast<std::int16_t>(canal)), "1Meteorológico;0Analógico;");
  EXPECT_EQ(tipos(15), "5Pluviométrico;");
  for (const int canal : {16, 21}) EXPECT_EQ(tipos(static_cast<std::int16_t>(canal)), "7Supervisión Digital;");
  EXPECT_EQ(tipos(24), "");
}

}  // namespace
}  // namespace utr
