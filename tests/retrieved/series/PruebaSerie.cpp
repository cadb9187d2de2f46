#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "base/Fechas.h"
#include "retrieved/series/Serie.h"
#include "retrieved/series/TextoSerie.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using prueba::NumeroDeError;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<const char*> kCampos = {"Fecha",  "Hora",       "Canal",  "Valor",       "Maximo",
                                          "Minimo", "Validacion", "ColaTX", "Descripcion", "Unidad"};

// Records of EA01 on one day, from "HH:mm value" on.
struct Registro {
  const char* hora;
  const char* valor;
  const char* validacion = "1";
};

TablaPtr Registros(const std::vector<Registro>& registros) {
  std::vector<Celdas> filas;
  for (const Registro& uno : registros)
    filas.push_back(
        {"15/03/2026", uno.hora, "EA01", uno.valor, uno.valor, uno.valor, uno.validacion, "0", "Nivel", "m"});
  return TablaDeTextos(kCampos, filas);
}

std::int64_t A(int hora, int minuto) {
  return Segundos({2026, 3, 15, hora, minuto, 0});
}

std::vector<std::string> Huecos(const Serie& serie) {
  std::vector<std::string> textos;
  for (const HuecoSerie& hueco : serie.Huecos())
    textos.push_back(TextoMomento(hueco.desde).substr(11, 5) + "-" + TextoMomento(hueco.hasta).substr(11, 5));
  return textos;
}

struct CasoDePartir {
  const char* que;
  std::vector<Registro> registros;
  std::optional<double> minutos;
  std::vector<TramoSerie> tramos;
  std::vector<std::string> huecos;
  std::vector<std::size_t> retrocesos;
  std::size_t faltan;
};

TEST(PruebaSerie, UneSoloLoQueEstaSeguido) {
  const std::vector<CasoDePartir> casos = {
      {"without records", {}, 10, {}, {}, {}, 0},
      {"one record", {{"10:00", "1"}}, 10, {{0, 1}}, {}, {}, 0},
      {"one record without value", {{"10:00", "N/D"}}, 10, {}, {"10:00-10:00"}, {}, 0},
      {"1.5 times the interval is none", {{"10:00", "1"}, {"10:15", "2"}}, 10, {{0, 2}}, {}, {}, 0},
      {"just above it", {{"10:00", "1"}, {"10:15:01", "2"}}, 10, {{0, 1}, {1, 2}}, {"10:00-10:15"}, {}, 1},
      {"an hour lost", {{"10:00", "1"}, {"11:00", "2"}, {"11:10", "3"}}, 10, {{0, 1}, {1, 3}}, {"10:00-11:00"}, {}, 5},
      {"N/D between values",
       {{"10:00", "1"}, {"10:10", "N/D"}, {"10:20", ""}, {"10:30", "4"}},
       10,
       {{0, 1}, {3, 4}},
       {"10:00-10:30"},
       {},
       0},
      {"N/D and lost records are one gap",
       {{"10:00", "1"}, {"10:10", "N/D"}, {"11:10", "3"}},
       10,
       {{0, 1}, {2, 3}},
       {"10:00-11:10"},
       {},
       5},
      {"1.5 times the interval behind N/D loses none",
       {{"10:00", "1"}, {"10:10", "N/D"}, {"10:25", "3"}},
       10,
       {{0, 1}, {2, 3}},
       {"10:00-10:25"},
       {},
       0},
      {"N/D at both ends",
       {{"10:00", "N/D"}, {"10:10", "1"}, {"10:20", "N/D"}},
       10,
       {{1, 2}},
       {"10:00-10:10", "10:10-10:20"},
       {},
       0},
      {"the clock went back",
       {{"10:00", "1"}, {"10:10", "2"}, {"10:05", "3"}, {"10:15", "4"}},
       10,
       {{0, 2}, {2, 4}},
       {},
       {2},
       0},
      {"the clock went back over N/D",
       {{"10:00", "1"}, {"10:10", "N/D"}, {"09:00", "N/D"}, {"09:10", "4"}},
       10,
       {{0, 1}, {3, 4}},
       {"10:00-10:10", "09:00-09:10"},
       {2},
       0},
      {"two of one moment stay together", {{"10:00", "1"}, {"10:00", "2"}}, 10, {{0, 2}}, {}, {}, 0},
      {"by the commonest interval",
       {{"10:00", "1"}, {"10:05", "1"}, {"10:10", "1"}, {"10:20", "1"}, {"10:25", "1"}},
       std::nullopt,
       {{0, 3}, {3, 5}},
       {"10:10-10:20"},
       {},
       1},
      {"of two as common, by the shorter one",
       {{"10:00", "1"}, {"10:30", "1"}, {"10:35", "1"}},
       std::nullopt,
       {{0, 1}, {1, 3}},
       {"10:00-10:30"},
       {},
       5},
      {"a told interval of 0 tells nothing", {{"10:00", "1"}, {"11:00", "2"}}, 0.0, {{0, 2}}, {}, {}, 0},
  };
  for (const CasoDePartir& caso : casos) {
    SCOPED_TRACE(caso.que);
    const Serie serie(*Registros(caso.registros), {.canal = {}, .minutos = caso.minutos});
    EXPECT_EQ(serie.Tramos(), caso.tramos);
    EXPECT_EQ(Huecos(serie), caso.huecos);
    EXPECT_EQ(serie.Retrocesos(), caso.retrocesos);
    EXPECT_EQ(serie.Cifras().faltan, caso.faltan);
    EXPECT_EQ(serie.Cifras().huecos, caso.huecos.size());
    EXPECT_EQ(serie.Cifras().retrocesos, caso.retrocesos.size());
  }
}

TEST(PruebaSerie, CifrasDeLoQueHay) {
  const Serie serie(*Registros({{"10:00", "2.5"},
                                {"10:10", "-1.5", "0"},
                                {"10:20", "N/D", "0"},
                                {"10:30", "5,5"},
                                {"09:00", " 1.25"},
                                {"09:10", "1e400"},
                                {"09:20", "55"}}));
  const CifrasSerie& cifras = serie.Cifras();
  EXPECT_EQ(cifras.registros, 7U);
  EXPECT_EQ(cifras.sin_valor, 2U);
  EXPECT_EQ(cifras.no_validados, 1U);  // a record without value is not counted twice
  EXPECT_EQ(cifras.primero, A(9, 0));
  EXPECT_EQ(cifras.ultimo, A(10, 30));
  EXPECT_EQ(cifras.minimo, -1.5);
  EXPECT_EQ(cifras.maximo, 55);  // a comma parts thousands
  EXPECT_DOUBLE_EQ(cifras.media.value_or(0), (2.5 - 1.5 + 55 + 1.25 + 55) / 5);
  EXPECT_FALSE(cifras.lluvia);
}

TEST(PruebaSerie, NadaQueDecirSinValores) {
  for (const auto& registros : {std::vector<Registro>{}, {{"10:00", "N/D"}, {"10:10", "N/D"}}}) {
    const Serie serie(*Registros(registros));
    EXPECT_EQ(serie.Cifras().registros, registros.size());
    EXPECT_EQ(serie.Cifras().primero.has_value(), !registros.empty());
    EXPECT_FALSE(serie.Cifras().minimo || serie.Cifras().maximo || serie.Cifras().media || serie.Cifras().lluvia);
    EXPECT_FALSE(serie.MasCercano(static_cast<double>(A(10, 0)), 1e9));
  }
}

TEST(PruebaSerie, UnCanalDeVarios) {
  const auto tabla =
      TablaDeTextos(kCampos, {{"15/03/2026", "10:00", "EA01", "1", "2", "N/D", "1", "0", "Nivel", "m"},
                              {"15/03/2026", "10:00", "PLV", " 0.4", "N/D", "N/D", "1", "0", "Lluvia", "mm"},
                              {"ayer", "10:05", "PLV", "9", "9", "9", "1", "0", "Lluvia", "mm"},
                              {"15/03/2026", "x", " plv ", " 1.2", "N/D", "N/D", "0", "0", "", ""}});
  EXPECT_THAT(CanalesDeTabla(*tabla), ElementsAre("EA01", "PLV"));
  const Serie lluvia(*tabla, {.canal = "PLV", .minutos = 10});
  EXPECT_TRUE(lluvia.EsLluvia());
  EXPECT_EQ(TituloSerie(lluvia), "PLV Lluvia");
  EXPECT_THAT(lluvia.Tiempos(), ElementsAre(A(10, 0), A(0, 0)));
  EXPECT_EQ(lluvia.Cifras().registros, 3U);
  EXPECT_EQ(lluvia.Cifras().sin_fecha, 1U);
  EXPECT_DOUBLE_EQ(lluvia.Cifras().lluvia.value_or(0), 1.6);
  EXPECT_EQ(lluvia.Fila(0), 1U);
  EXPECT_EQ(lluvia.Fila(1), 3U);
  const std::optional<std::size_t> puntos[] = {std::nullopt, 0, std::nullopt, 1, std::nullopt};
  for (std::size_t fila = 0; fila < std::size(puntos); ++fila) EXPECT_EQ(lluvia.Punto(fila), puntos[fila]) << fila;
  EXPECT_EQ(TextoPunto(lluvia, 1), "PLV Lluvia: 15/03/2026 00:00:00, 1.2 mm, no validado");

  const Serie primera(*tabla);
  EXPECT_EQ(TextoPunto(primera, 0), "EA01 Nivel: 15/03/2026 10:00:00, 1 m (máximo 2)");
  EXPECT_TRUE(std::isnan(primera.Minimos()[0]));
  EXPECT_EQ(Serie(*tabla, {.canal = "EA02", .minutos = {}}).Cantidad(), 0U);
}

TEST(PruebaSerie, NoDependeDelFiltroNiDelOrdenDeLaTabla) {
  const auto tabla = Registros({{"10:00", "3"}, {"10:10", "1"}, {"10:20", "2"}});
  tabla->Filter("Valor='1'");
  EXPECT_EQ(Serie(*tabla).Cantidad(), 3U);
  tabla->Filter("");
  tabla->Sort("Valor ASC");
  EXPECT_THAT(Serie(*tabla).Valores(), ElementsAre(3, 1, 2));
}

TEST(PruebaSerie, ArchivosDeOtros) {
  // A file for manual insertion: date and time in one field, no extremes in it, numbers held as numbers.
  const auto tabla = TablaCon(
      {{"Tipo", TipoCampo::kEntero},
       {"Fecha", TipoCampo::kVarChar, 30},
       {"canal", TipoCampo::kVarChar, 10},
       {"Valor", TipoCampo::kDoble},
       {"Validacion", TipoCampo::kEntero}},
      {{"1", "15/03/2026 10:00:00", "EA01", "1.5", "0"}, {"1", "15/03/2026 10:10:00", "EA01", nullptr, nullptr}});
  tabla->Filter("Valor=1.5");
  const Serie serie(*tabla);
  EXPECT_THAT(serie.Tiempos(), ElementsAre(A(10, 0), A(10, 10)));
  EXPECT_EQ(serie.Valores()[0], 1.5);
  EXPECT_FALSE(serie.TieneValor(1));
  EXPECT_FALSE(serie.Validado(0));
  EXPECT_THAT(serie.Minimos(), IsEmpty());

  const auto eventos = TablaDeTextos({"Fecha", "Hora", "Codigo"}, {{"15/03/2026", "10:00", "3"}});
  EXPECT_THAT(CanalesDeTabla(*eventos), IsEmpty());
  EXPECT_EQ(NumeroDeError([&] { Serie{*eventos}; }), 3265);
}

TEST(PruebaSerie, SoloLosGradosPasanPorElNorte) {
  for (const auto& [unidad, descripcion, pasa] : {std::tuple{"°", "Direccion", true},
                                                  {"-", "DIRECCION", false},  // counts, which end who knows where
                                                  {"m", "Nivel", false}}) {
    const TablaPtr tabla = TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Descripcion", "Unidad"},
                                         {{"15/03/2026", "10:00:00", "EA02", "358", descripcion, unidad}});
    const Serie serie(*tabla);
    EXPECT_EQ(serie.PasaPorElNorte(358, 0), pasa) << unidad;
    EXPECT_EQ(serie.PasaPorElNorte(0, 358), pasa) << unidad;
    EXPECT_FALSE(serie.PasaPorElNorte(90, 270)) << unidad;
  }
}

TEST(PruebaSerie, ElPuntoMasCercanoTieneValor) {
  const Serie serie(*Registros({{"10:00", "1"}, {"10:10", "N/D"}, {"10:20", "3"}, {"09:00", "4"}}));
  const auto cerca = [&](int hora, int minuto, double alcance) {
    return serie.MasCercano(static_cast<double>(A(hora, minuto)), alcance);
  };
  EXPECT_EQ(cerca(10, 9, 3600), 0U);
  EXPECT_EQ(cerca(10, 11, 3600), 2U);
  EXPECT_EQ(cerca(23, 0, 86400), 2U);
  EXPECT_EQ(cerca(9, 5, 300), 3U);
  EXPECT_EQ(cerca(9, 6, 300), std::nullopt);
}

}  // namespace
}  // namespace utr
