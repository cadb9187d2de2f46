#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <filesystem>

#include "base/Error.h"
#include "plots/windows/BancoGraficos.h"
#include "plots/windows/Hidrograma.h"
#include "plots/windows/PanelGrafico.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class PruebaPanelGrafico : public testing::Test {
 protected:
  PruebaPanelGrafico() { panel.Mostrar(ContenidoDe({nivel})); }

  QAbstractButton& Boton(const char* nombre) { return Hallar<QAbstractButton>(panel, nombre); }
  std::vector<std::string> Ofrecidos() {
    std::vector<std::string> textos;
    for (const QAction* accion : panel.findChild<QMenu*>()->actions()) textos.push_back(U(accion->data().toString()));
    return textos;
  }
  std::string Guardado(const char* nombre) {
    const auto ruta = banco.carpeta / nombre;
    operador.EsperaGuardar("Guardar gráfico ...", ruta);
    operador.Espera("El gráfico ha sido guardado con éxito");
    Boton("GraficoGuardar").click();
    return prueba::LeerTodo(ruta);
  }

  prueba::ModPrueba banco;
  OperadorGuion& operador = banco.operador;
  GraficosALaVista vistos;
  const CanalGrafico nivel = CanalDe("EA01", {{"10:00", "1"}, {"10:10", "2"}, {"10:20", "3"}});
  PanelGrafico panel{banco.mod.Listas(),
                     {.ventana = "frmDatos", .titulo = "Datos de la UTR", .con_eventos = true, .vistos = &vistos}};
};

TEST_F(PruebaPanelGrafico, HastaTresCanalesYCadaUnoUnaVez) {
  panel.Ofrecer({"EA02_Presión", "EA03_Viento", "PLV_Lluvia"});
  panel.Agregar("EA02_Presión", CanalDe("EA02", {{"10:00", "9"}}));
  EXPECT_THAT(Ofrecidos(), ElementsAre("EA03_Viento", "PLV_Lluvia"));
  EXPECT_TRUE(Boton("GraficoAgregar").isEnabled());
  panel.Agregar("PLV_Lluvia", CanalDe("PLV", {{"10:00", "0"}}));
  EXPECT_FALSE(Boton("GraficoAgregar").isEnabled());
  Boton("GraficoQuitar").click();
  EXPECT_EQ(panel.Grafico().Contenido().canales.size(), 1U);
  EXPECT_EQ(Ofrecidos().size(), 3U);
  EXPECT_FALSE(Boton("GraficoQuitar").isEnabled());
  panel.Vaciar();
  for (const char* boton :
       {"GraficoTodo", "GraficoDia", "GraficoSemana", "GraficoImprimir", "GraficoGuardar", "GraficoAgregar"})
    EXPECT_FALSE(Boton(boton).isEnabled()) << boton;
}

TEST_F(PruebaPanelGrafico, OtroCanalNoMueveLoQueSeVe) {
  panel.Ofrecer({"EA02"});
  panel.Grafico().Ultimas(300);
  panel.SenalarFila(2);
  const VentanaTiempo antes = *panel.Grafico().Contenido().ventana;
  const auto igual = [&] {
    const VentanaTiempo& ahora = *panel.Grafico().Contenido().ventana;
    return ahora.desde == antes.desde && ahora.hasta == antes.hasta;
  };
  panel.Agregar("EA02", CanalDe("EA02", {{"09:00", "9"}}));
  EXPECT_TRUE(igual());
  Boton("GraficoQuitar").click();
  EXPECT_TRUE(igual());
  EXPECT_EQ(panel.Grafico().Cursor(), (Hidrograma::Punto{0, 2}));
  panel.Grafico().Todo();
  panel.Agregar("EA02", CanalDe("EA02", {{"09:00", "9"}}));
  EXPECT_TRUE(panel.Grafico().VeTodo()) << "and with all in sight all stays in sight";
}

TEST_F(PruebaPanelGrafico, SoloElCanalDeLaListaEligeSuFila) {
  std::vector<std::size_t> filas;
  QObject::connect(&panel, &PanelGrafico::FilaElegida, [&](std::size_t fila) { filas.push_back(fila); });
  panel.Agregar("EA02", CanalDe("EA02", {{"10:00", "9"}}));
  panel.SenalarFila(1);
  EXPECT_EQ(panel.Grafico().Cursor(), (Hidrograma::Punto{0, 1}));
  emit panel.Grafico().PuntoElegido({0, 2});
  emit panel.Grafico().PuntoElegido({1, 0});
  EXPECT_THAT(filas, ElementsAre(2));
  panel.SenalarFila(9);
  EXPECT_FALSE(panel.Grafico().Cursor());
}

TEST_F(PruebaPanelGrafico, LosEventosSePidenAlMarcarYSeVanConOtraLectura) {
  int pedidos = 0;
  QObject::connect(&panel, &PanelGrafico::EventosPedidos, [&] { ++pedidos; });
  auto& eventos = Hallar<QCheckBox>(panel, "GraficoEventos");
  EXPECT_FALSE(eventos.isChecked());
  eventos.setChecked(true);
  panel.PonerEventos({{nivel.serie->Tiempos()[0], "Lluvia"}});
  EXPECT_EQ(panel.Grafico().Contenido().eventos.size(), 1U);
  panel.Mostrar(ContenidoDe({nivel}));
  EXPECT_FALSE(eventos.isChecked());
  EXPECT_THAT(panel.Grafico().Contenido().eventos, IsEmpty());
  EXPECT_EQ(pedidos, 1);
}

TEST_F(PruebaPanelGrafico, SeGuardaEnteroODiceQueNo) {
  EXPECT_THAT(Guardado("uno.pdf"), StartsWith("%PDF-"));
  EXPECT_THAT(Guardado("uno.PNG"), StartsWith("\x89PNG"));
  operador.EsperaGuardar("Guardar gráfico ...", banco.carpeta / "falta" / "uno.pdf");
  operador.EsperaParte("La operación solicitada no puede completarse\n[ ");
  Boton("GraficoGuardar").click();
  operador.EsperaGuardar("Guardar gráfico ...", std::nullopt);
  Boton("GraficoGuardar").click();
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(PruebaPanelGrafico, LoQueEstaALaVistaQuedaAnotado) {
  ASSERT_EQ(vistos.Todos().size(), 1U);
  EXPECT_EQ(vistos.Todos()[0].first, "frmDatos");
  const QString antes = vistos.Todos()[0].second.periodo;
  panel.Grafico().Ultimas(300);
  ASSERT_EQ(vistos.Todos().size(), 1U);
  EXPECT_NE(vistos.Todos()[0].second.periodo, antes);
  panel.Vaciar();
  EXPECT_EQ(vistos.Todos().size(), 1U) << "the last one on show";
  vistos.SonDe("70");
  panel.Mostrar(ContenidoDe({nivel}));
  vistos.SonDe("70");
  EXPECT_EQ(vistos.Todos().size(), 1U);
  vistos.SonDe("71");
  EXPECT_THAT(vistos.Todos(), IsEmpty());
}

}  // namespace
}  // namespace utr
