#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "schedule/AnotacionAgenda.h"
#include "schedule/CargaAgenda.h"
#include "schedule/EdicionAgenda.h"
#include "schedule/EscrituraAgenda.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/NumeroDeError.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using prueba::NumeroDeError;
using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(EdicionAgenda, AceptarTomaHasta49HorariosYUnaVentanaDe5A1440) {
  const std::string limite =
      "Se excedio el límite de entradas en la agenda.\nComo máximo se admiten 50 hasta entradas horarias";
  const std::string ventana = "Debe ingresar un valor válido de ventana";
  const struct {
    std::size_t filas;
    const char* duracion;
    std::string reparo;
    std::int32_t minutos = 0;
  } casos[] = {
      {0, "x", "Sin datos para grabar"},
      {49, "5", "", 5},
      {50, "x", limite},
      {1, "1440", "", 1440},
      {1, "5,5", "", 55},
      {1, "6.5", "", 6},
      {1, "4", ventana},
      {1, "4.9", ventana},
      {1, "1440.1", ventana},
      {1, "1441", ventana},
      {1, "", ventana},
      {1, "10 min", ventana},
      {1, "-10", ventana},
      {1, "1,440", "", 1440},
      {1, "1e999", ventana},
  };
  for (const auto& caso : casos) {
    const auto reparo = ReparoDeAgenda(caso.filas, caso.duracion);
    EXPECT_EQ(reparo ? reparo->texto : "", caso.reparo) << caso.duracion;
    EXPECT_TRUE(reparo || DuracionDe(caso.duracion) == caso.minutos) << caso.duracion;
  }
  EXPECT_EQ(ReparoDeAgenda(1, "4")->icono, Icono::kInformacion);
  EXPECT_EQ(ReparoDeAgenda(50, "4")->icono, Icono::kExclamacion);
}

TEST(EdicionAgenda, UnPeriodoAgregaODaSusTiposALosQueEstaban) {
  FDLHorarios agenda;
  agenda.Add(510)->Horario = 600;
  const ResultadoPeriodo resultado =
      AgregarPeriodo(agenda, {.desde = 480, .hasta = 540, .paso = 30, .TWind = true, .TOblig = true});
  EXPECT_EQ(TextoDePeriodo(resultado), "Se agregaron 2 horarios. Ya estaba y tomó estos tipos: 10:00");
  EXPECT_THAT(Filas(*agenda.GetRecMembers(), {"key", "Horario", "TOblig", "TWind", "TCond"}),
              ElementsAre("480|08:00:00|Si|Si|No", "540|09:00:00|Si|Si|No", "510|10:00:00|Si|Si|No"));
}

// As short as a line has to be: equally spaced ones by their ends, and what is left is counted.
TEST(EdicionAgenda, LosQueTomaronLosTiposSeDicenEnPocasPalabras) {
  const auto texto = [](std::vector<std::int16_t> cambiados) {
    return TextoDePeriodo({.agregados = 1, .cambiados = std::move(cambiados)});
  };
  EXPECT_EQ(texto({480, 510, 540}), "Se agregó un horario. Ya estaban y tomaron estos tipos: 08:00, 08:30, 09:00");
  EXPECT_EQ(texto({0, 480, 510, 540, 570, 571, 570}),
            "Se agregó un horario. Ya estaban y tomaron estos tipos: 00:00, 08:00 a 09:30 cada 30 min, 09:31, 09:30");
  std::vector<std::int16_t> dispares;
  for (int i = 0; i < 30; ++i) dispares.push_back(static_cast<std::int16_t>(i * i));
  EXPECT_THAT(texto(dispares), testing::EndsWith(", 08:49... (30 en total)"));
  dispares.resize(24);
  EXPECT_THAT(texto(dispares), testing::EndsWith(", 08:49")) << "as many as a line holds";
}

// Start, end, step and how many entries are there afterwards: the end counts where a step lands on it.
TEST(EdicionAgenda, UnPeriodoTerminaConCualquierPaso) {
  const struct {
    std::int16_t desde, hasta, paso;
    std::int32_t quedan;
  } casos[] = {{480, 480, 30, 1}, {480, 539, 30, 2}, {0, 1439, 1, 1440}, {1430, 1439, 32767, 1}, {0, 32767, 32767, 2}};
  for (const auto& caso : casos) {
    FDLHorarios agenda;
    AgregarPeriodo(agenda, {.desde = caso.desde, .hasta = caso.hasta, .paso = caso.paso});
    EXPECT_EQ(agenda.Count(), caso.quedan) << caso.desde << " " << caso.paso;
  }
  for (const std::int16_t paso : {std::int16_t{0}, std::int16_t{-30}}) {
    FDLHorarios agenda;
    EXPECT_EQ(NumeroDeError([&] { AgregarPeriodo(agenda, {.desde = 0, .hasta = 60, .paso = paso}); }), error::kLlamada);
    EXPECT_EQ(agenda.Count(), 0);
  }
}

class EscrituraAgenda : public testing::Test {
 protected:
  EscrituraAgenda() {
    agenda.Add(600)->TCond = false;
    agenda.Add(480);
    agenda.DuracionVentana = 300;
    comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0,9");
    comunicador.Devuelve("ConvertirDe", "44/1");
  }
  prueba::Carpeta carpeta;
  RelojFalso reloj;
  ComunicadorFalso comunicador;
  RegistroErrores registro{carpeta / "utr.err", reloj};
  Propiedades propiedades{carpeta / "utr.dll"};
  Diario diario{propiedades, reloj};
  FDLHorarios agenda;
};

TEST_F(EscrituraAgenda, CadaPasoQueFallaTerminaConLoSuyo) {
  const std::vector<std::string> todas = {"GrabarAgenda(tabla)", "LeerPagina(0,no)", "ConvertirDe(300)",
                                          "EscribirPagina(0,4,7,3,120,0,1,44,1,9)", "ReiniciarAgenda(41)"};
  const struct {
    const char* operacion;
    bool grabado;
    const char* mensaje;
    std::size_t llamadas;
  } casos[] = {{"", true, "", 5},
               {"GrabarAgenda", false, "Error grabando agenda", 1},
               {"EscribirPagina", false, "Error grabando duración de ventana de agenda", 4},
               {"ReiniciarAgenda", true, "Error reiniciando agenda", 5}};
  for (const auto& caso : casos) {
    for (const bool con_error : {false, true}) {
      comunicador.llamadas.clear();
      if (con_error) {
        comunicador.Falla(caso.operacion, Error(8020, "driver", "sin respuesta"));
      } else {
        comunicador.Devuelve(caso.operacion, false);
      }
      const ResultadoAgenda resultado = EscribirAgenda(agenda, {comunicador, registro});
      comunicador.NoFalla(caso.operacion);
      comunicador.Devuelve(caso.operacion, true);
      const bool error = con_error && *caso.operacion != 0;
      EXPECT_EQ(resultado.Grabado, caso.grabado) << caso.operacion;
      EXPECT_EQ(resultado.mensaje, error ? "" : caso.mensaje);
      EXPECT_EQ(resultado.error.has_value(), error) << caso.operacion;
      Diario::Tarea tarea(diario);
      AnotarAgenda(tarea, reloj.Ahora(), std::nullopt, agenda, resultado);
      const Asiento& asiento = diario.Asientos().back();
      EXPECT_EQ(asiento.antes, "sin leer");
      EXPECT_EQ(asiento.escrito, "2 horarios (08:00 TOblig TCond TWind, 10:00 TOblig TWind), ventana de 300 min.");
      const std::string fin = error ? "[sin respuesta]" : caso.mensaje;
      EXPECT_EQ(asiento.resultado, fin.empty() ? "hecho" : fin + "; no confirmado");
      EXPECT_THAT(comunicador.llamadas,
                  ElementsAreArray(todas.begin(), todas.begin() + static_cast<int>(caso.llamadas)));
    }
  }
  EXPECT_THAT(Filas(*comunicador.Recibidas("GrabarAgenda").front(), {"HorarioInteger", "TOblig", "TWind", "TCond"}),
              ElementsAre("480|Si|Si|Si", "600|Si|Si|No"));
}

TEST_F(EscrituraAgenda, SinHorariosNoSeMandaNada) {
  const ResultadoAgenda resultado = EscribirAgenda(FDLHorarios(), {comunicador, registro});
  EXPECT_FALSE(resultado.Grabado);
  Diario::Tarea tarea(diario);
  AnotarAgenda(tarea, reloj.Ahora(), agenda, FDLHorarios(), resultado);
  EXPECT_THAT(diario.Asientos(), testing::IsEmpty());
  EXPECT_THAT(comunicador.llamadas, testing::IsEmpty());
}

TEST_F(EscrituraAgenda, LaVentanaSeLeeDeUnaPaginaEntera) {
  const TablaPtr tabla = TablaDeTextos({"HorarioInteger", "Descripcion", "TCond", "TOblig", "TWind"}, {{"480", "No"}});
  comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,44,1,9");
  CargarAgenda(agenda, *tabla, comunicador);
  EXPECT_EQ(agenda.DuracionVentana, 300);
  for (const char* mala : {"", "1", "4,7,3,120,0,1,44", "4,7,3,120,0,1,44,x", "Sin respuesta"}) {
    comunicador.Devuelve("LeerPagina", mala);
    EXPECT_EQ(FallaDe([&] { CargarAgenda(agenda, *tabla, comunicador); })->Descripcion(), "La página 0 no pudo leerse");
  }
}

}  // namespace
}  // namespace utr
