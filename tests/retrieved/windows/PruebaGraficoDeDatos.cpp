#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>
#include <QTimerEvent>
#include <QTreeView>

#include "plots/windows/Hidrograma.h"
#include "plots/windows/MiniCurvas.h"
#include "plots/windows/PanelGrafico.h"
#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmDatos.h"
#include "retrieved/windows/frmVisualizador.h"
#include "session/SituacionDelEnlace.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PruebaGraficoDeDatos : public BancoVistas, public testing::Test {
 protected:
  PruebaGraficoDeDatos() { driver.Devuelve("LeerDatos", Datos(kNivel)); }

  static TablaPtr CanalesConLimites() {
    return TablaDeCanales({{{"Canal", "1"},
                            {"Parametro", "3"},
                            {"Unidad", "1"},
                            {"Flags", "3"},
                            {"TStorage", "10"},
                            {"AMax", "7"},
                            {"AMin", "1"}},
                           {{"Canal", "15"}, {"Tipo", "5"}, {"CtePluvi", "0.2"}}});
  }
  static TablaPtr Instantaneos(const char* primero) {
    std::vector<Celdas> filas(38, Celdas{"0"});
    filas[0] = {primero};
    return TablaDeTextos({"Valor"}, filas);
  }

  static Hidrograma& Grafico(const QWidget& ventana) { return *ventana.findChild<Hidrograma*>(); }
  static const std::vector<CanalGrafico>& Graficados(const QWidget& ventana) {
    return Grafico(ventana).Contenido().canales;
  }
  static void Agregar(const QWidget& ventana, int cual) {
    ventana.findChild<PanelGrafico*>()->findChild<QMenu*>()->actions().at(cual)->trigger();
  }

  const std::vector<Celdas> kNivel = {{"", "00:10:00", "1", "2048", "4096", "0", "1", "0"},
                                      {"", "00:20:00", "1", "N/D", "", "", "0", "0"},
                                      {"", "00:30:00", "1", "1024", "1024", "1024", "1", "0"}};
  frmDatos ventana{banco.mod, CanalesConLimites()};
};

TEST_F(PruebaGraficoDeDatos, LoLeidoSeGraficaConSusLimitesSalvoEnCuentas) {
  Pulsar(ventana, "cmd(0)");
  ASSERT_EQ(Graficados(ventana).size(), 1U);
  EXPECT_THAT(Graficados(ventana)[0].serie->Tramos(), ElementsAre(TramoSerie{0, 1}, TramoSerie{2, 3}));
  EXPECT_EQ(Graficados(ventana)[0].limites.size(), 2U);
  EXPECT_EQ(Graficados(ventana)[0].serie->Minutos(), 10);
  Hijo<QCheckBox>(ventana, "CheckEscalados")->setChecked(false);
  Pulsar(ventana, "cmd(0)");
  EXPECT_EQ(Graficados(ventana)[0].serie->Valores()[0], 2048);
  EXPECT_THAT(Graficados(ventana)[0].limites, IsEmpty());
  driver.Devuelve("LeerDatos", TablaPtr{});
  Pulsar(ventana, "cmd(0)");
  EXPECT_THAT(Graficados(ventana), IsEmpty());
}

TEST_F(PruebaGraficoDeDatos, CursorYRenglonVanJuntos) {
  Pulsar(ventana, "cmd(0)");
  Lista(ventana).Ordenar(1, false);
  emit Grafico(ventana).PuntoElegido({0, 2});
  EXPECT_EQ(Lista(ventana).FilaActual(), 0U) << "the last record stands first";
  Lista(ventana).Elegir(2);
  EXPECT_EQ(Grafico(ventana).Cursor(), (Hidrograma::Punto{0, 0}));
  EXPECT_THAT(Texto(ventana, "GraficoHechos"), HasSubstr("14/03/2026 00:10:00, 5"));
  Lista(ventana).CampoFiltro()->setText("00:10");
  Grafico(ventana).Senalar({0, 2});
  emit Grafico(ventana).PuntoElegido({0, 2});
  EXPECT_EQ(Texto(ventana, "GraficoHechos"),
            "El filtro de la lista oculta el renglón de este registro.\n" + U(Grafico(ventana).Hechos()));
}

TEST_F(PruebaGraficoDeDatos, TrasUnaLecturaElCursorEstaEnElRenglonActual) {
  Lista(ventana).Ordenar(1, false);
  Pulsar(ventana, "cmd(0)");
  EXPECT_EQ(Lista(ventana).FilaActual(), 0U);
  EXPECT_EQ(Grafico(ventana).Cursor(), (Hidrograma::Punto{0, 2}));
}

TEST_F(PruebaGraficoDeDatos, SinSpanLosRegistrosQuedanEnCuentasYSinLimites) {
  frmDatos otra(banco.mod, TablaDeCanales({{{"Canal", "1"}, {"Flags", "3"}, {"Span", "0"}, {"AMax", "7"}}}));
  Pulsar(otra, "cmd(0)");
  EXPECT_EQ(Graficados(otra)[0].serie->Valores()[0], 2048);
  EXPECT_THAT(Graficados(otra)[0].limites, IsEmpty());
}

TEST_F(PruebaGraficoDeDatos, RecordarGuardaLasColumnasDeCadaMarco) {
  const auto titulos = [](const QWidget& vista) { return Lista(vista).Arbol()->header(); };
  const auto ir_a = [](const QWidget& vista, int marco) {
    Hijo<QTabWidget>(vista, "fraDatos")->setCurrentIndex(marco);
  };
  {
    frmDatos dejada(banco.mod, CanalesConLimites());
    dejada.show();
    Hijo<QAbstractButton>(dejada, "chkRecordar")->setChecked(true);
    titulos(dejada)->moveSection(9, 0);
    ir_a(dejada, 1);
    EXPECT_EQ(titulos(dejada)->logicalIndex(0), 0) << "a list of its own";
    titulos(dejada)->moveSection(4, 0);
    dejada.close();
  }
  frmDatos otra(banco.mod, CanalesConLimites());
  EXPECT_EQ(titulos(otra)->logicalIndex(0), 9);
  ir_a(otra, 1);
  EXPECT_EQ(titulos(otra)->logicalIndex(0), 4);
}

TEST_F(PruebaGraficoDeDatos, OtroCanalSeLeeDelMismoPeriodoParaElGraficoSolo) {
  Pulsar(ventana, "cmd(0)");
  Fecha(ventana, "FechaInicio", Dia(1));  // what the pickers say since doesn't count
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "15", "3", "", "", "1", "0"}}));
  const auto antes = Filas(ventana);
  Agregar(ventana, 0);
  EXPECT_EQ(driver.llamadas.back(), "LeerDatos(15/03/2026,15/03/2026,14)");
  EXPECT_EQ(Filas(ventana), antes);
  ASSERT_EQ(Graficados(ventana).size(), 2U);
  EXPECT_TRUE(Graficados(ventana)[1].serie->EsLluvia());
}

TEST_F(PruebaGraficoDeDatos, UnCanalSinDatosOQueFallaNoCambiaElGrafico) {
  Pulsar(ventana, "cmd(0)");
  driver.Devuelve("LeerDatos", TablaPtr{});
  operador.Espera("Sin datos para el canal durante las fechas seleccionada");
  Agregar(ventana, 0);
  driver.Falla("LeerDatos", Error(8020, "x", "No responde"));
  operador.Espera("La operación solicitada no puede completarse\n[ No responde ]");
  Agregar(ventana, 0);
  EXPECT_EQ(Graficados(ventana).size(), 1U);
  EXPECT_EQ(Filas(ventana).size(), 3U);
}

TEST_F(PruebaGraficoDeDatos, CadaMarcoVuelveConSuGraficoSusCifrasYSusColumnas) {
  const auto ir_a = [this](int marco) { Hijo<QTabWidget>(ventana, "fraDatos")->setCurrentIndex(marco); };
  auto* grafico = Hijo<QStackedWidget>(ventana, "GraficoDeDatos");
  Pulsar(ventana, "cmd(0)");
  Agregar(ventana, 0);
  const std::string cifras = Texto(ventana, "lblCifras");
  Lista(ventana).Ordenar(1, false);
  const QStringList columnas = Lista(ventana).Disposicion();
  driver.Devuelve("LeerInstantaneos", Instantaneos("2048"));
  Pulsar(ventana, "DatosInst");
  const auto puntos = [grafico] { return grafico->findChild<MiniCurvas*>()->Curvas().Curvas().at(0).puntos.size(); };
  EXPECT_EQ(puntos(), 1U);
  EXPECT_EQ(grafico->currentIndex(), 1);
  EXPECT_EQ(Texto(ventana, "lblCifras"), "");
  ir_a(0);
  EXPECT_EQ(grafico->currentIndex(), 0);
  EXPECT_EQ(Graficados(ventana).size(), 2U) << "the channel that was added came from the unit";
  EXPECT_EQ(Texto(ventana, "lblCifras"), cifras);
  EXPECT_EQ(Lista(ventana).Disposicion(), columnas);
  ir_a(1);
  EXPECT_EQ(grafico->currentIndex(), 1);
  EXPECT_EQ(puntos(), 1U) << "nothing was read";
}

TEST_F(PruebaGraficoDeDatos, LosEventosDelPeriodoConUnaSolaLectura) {
  Pulsar(ventana, "cmd(0)");
  driver.Devuelve("LeerEventos", Eventos({{"", "10:00:00", "31", "2", "5"}}));
  auto* marca = Hijo<QCheckBox>(ventana, "GraficoEventos");
  marca->setChecked(true);
  EXPECT_EQ(driver.llamadas.back(), "LeerEventos(15/03/2026 00:00:00,15/03/2026 23:59:59)");
  EXPECT_EQ(Grafico(ventana).Contenido().eventos.size(), 1U);
  marca->setChecked(false);
  EXPECT_THAT(Grafico(ventana).Contenido().eventos, IsEmpty());
  driver.Falla("LeerEventos", Error(8020, "x", "No responde"));
  operador.Espera("La operación solicitada no puede completarse\n[ No responde ]");
  marca->setChecked(true);
  EXPECT_FALSE(marca->isChecked());
  EXPECT_EQ(driver.Cuantas("LeerEventos"), 2U);
}

TEST_F(PruebaGraficoDeDatos, ElGraficoSePliegaYAsiSeVuelveAHallar) {
  ventana.show();
  EXPECT_TRUE(ventana.findChild<PanelGrafico*>()->isVisible());
  Elegir(ventana, "mnuVerGrafico");
  EXPECT_FALSE(ventana.findChild<PanelGrafico*>()->isVisible());
  frmDatos otra(banco.mod, CanalesConLimites());
  otra.show();
  EXPECT_FALSE(otra.findChild<PanelGrafico*>()->isVisible());
  Elegir(otra, "mnuVerGrafico");
  EXPECT_TRUE(otra.findChild<PanelGrafico*>()->isVisible());
}

class PruebaActualizar : public PruebaGraficoDeDatos {
 protected:
  PruebaActualizar() { driver.Devuelve("LeerInstantaneos", Instantaneos("2048")); }

  QCheckBox* Seguido() { return Hijo<QCheckBox>(ventana, "chkActualizar"); }
  QTimer* Turno() { return ventana.findChild<QTimer*>("turno"); }
  // The time between two turns is over.
  void Esperar() {
    QTimerEvent fin(Turno()->timerId());
    QApplication::sendEvent(Turno(), &fin);
  }
};

TEST_F(PruebaActualizar, CadaTurnoEsLaLecturaEnteraHastaQueUnaFalla) {
  EXPECT_FALSE(Seguido()->isChecked());
  EXPECT_EQ(Hijo<QSpinBox>(ventana, "ActualizarCada")->minimum(), 10);
  EXPECT_EQ(Hijo<QSpinBox>(ventana, "ActualizarCada")->maximum(), 3600);
  Hijo<QSpinBox>(ventana, "ActualizarCada")->setValue(15);
  Seguido()->setChecked(true);
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerInstantaneos()", "Pausa(3)", "LeerInstantaneos()"));
  EXPECT_EQ(Turno()->interval(), 15000);
  banco.reloj.Adelantar(15);
  driver.Devuelve("LeerInstantaneos", Instantaneos("1024"));
  Esperar();
  EXPECT_EQ(driver.Cuantas("Pausa"), 2U) << "whole, with its second call";
  const auto& curvas = ventana.findChild<MiniCurvas*>()->Curvas().Curvas();
  ASSERT_EQ(curvas.size(), 2U);
  EXPECT_EQ(curvas[0].puntos.size(), 2U);
  driver.Falla("LeerInstantaneos", Error(8020, "x", "No responde"));
  operador.Espera("La operación solicitada no puede completarse\n[ No responde ]");
  Esperar();
  EXPECT_FALSE(Seguido()->isChecked());
  EXPECT_FALSE(Turno()->isActive());
}

TEST_F(PruebaActualizar, TrasUnaPausaOUnTurnoFallidoLaCurvaSeCorta) {
  Hijo<QSpinBox>(ventana, "ActualizarCada")->setValue(10);
  const auto ultimo_sigue = [this] {
    return ventana.findChild<MiniCurvas*>()->Curvas().Curvas().at(0).puntos.back().sigue;
  };
  const auto tras = [&](int segundos) {
    banco.reloj.Adelantar(segundos);
    Pulsar(ventana, "DatosInst");
    return ultimo_sigue();
  };
  EXPECT_FALSE(tras(0)) << "the first one";
  EXPECT_TRUE(tras(10));
  EXPECT_TRUE(tras(15));
  EXPECT_FALSE(tras(16)) << "a turn was missed";
  EXPECT_TRUE(tras(1));
  driver.Falla("LeerInstantaneos", Error(8020, "x", "No responde"), 1);
  operador.Espera("La operación solicitada no puede completarse\n[ No responde ]");
  Pulsar(ventana, "DatosInst");
  driver.Devuelve("LeerInstantaneos", Instantaneos("1024"));
  EXPECT_FALSE(tras(1));
}

TEST_F(PruebaActualizar, UnTurnoEsperaMientrasElOperadorMiraOtraCosa) {
  ventana.show();
  Seguido()->setChecked(true);
  const std::size_t antes = driver.llamadas.size();
  Hijo<QTabWidget>(ventana, "fraDatos")->setCurrentIndex(0);
  Esperar();
  EXPECT_EQ(driver.llamadas.size(), antes);
  EXPECT_EQ(Hijo<QTabWidget>(ventana, "fraDatos")->currentIndex(), 0);
  EXPECT_TRUE(Turno()->isActive());
  Hijo<QTabWidget>(ventana, "fraDatos")->setCurrentIndex(1);
  QMenu desplegado(&ventana);
  desplegado.addAction("uno");
  desplegado.popup(QPoint(10, 10));
  Esperar();
  EXPECT_EQ(driver.llamadas.size(), antes) << "nor under a menu";
  desplegado.close();
  Esperar();
  EXPECT_GT(driver.llamadas.size(), antes);
  EXPECT_TRUE(Seguido()->isChecked());
}

TEST_F(PruebaActualizar, UnTurnoDejaFiltroRenglonYEleccionDondeEstaban) {
  Seguido()->setChecked(true);
  Lista(ventana).CampoFiltro()->setText("PLV");
  Lista(ventana).Elegir(0);
  Esperar();
  EXPECT_EQ(U(Lista(ventana).CampoFiltro()->text()), "PLV");
  ASSERT_EQ(Filas(ventana).size(), 1U);
  EXPECT_EQ(Lista(ventana).FilaActual(), 0U);
  Lista(ventana).CampoFiltro()->clear();
  Lista(ventana).Elegir(1);
  driver.Devuelve("LeerInstantaneos", Instantaneos("1024"));
  Esperar();
  EXPECT_EQ(Lista(ventana).FilaActual(), 1U);
  EXPECT_THAT(Lista(ventana).FilasElegidas(), ElementsAre(1U));
}

TEST_F(PruebaActualizar, CancelarEnLaPausaTerminaLaLectura) {
  SituacionDelEnlace situacion;
  situacion.PonerClase(ClaseDeUnidad::kReal);
  banco.mod.situacion = &situacion;
  driver.al_llamar = [&](const std::string& llamada) {
    if (llamada == "Pausa(3)") Pulsar(ventana, "CancelarLectura");
  };
  Seguido()->setChecked(true);
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerInstantaneos()", "Pausa(3)", "Cancelar(no)"));
  EXPECT_THAT(Paneles(ventana), ElementsAre("picCancelada"));
  EXPECT_FALSE(Seguido()->isChecked());
}

TEST_F(PruebaActualizar, LeerLosHistoricosLoDetieneYOtraFormaEmpiezaCurvasNuevas) {
  Seguido()->setChecked(true);
  Hijo<QAbstractButton>(ventana, "OpSinEscalar")->setChecked(true);
  Pulsar(ventana, "DatosInst");
  EXPECT_EQ(ventana.findChild<MiniCurvas*>()->Curvas().Curvas()[0].puntos.size(), 1U);
  Pulsar(ventana, "cmd(0)");
  EXPECT_FALSE(Seguido()->isChecked());
  EXPECT_FALSE(Turno()->isActive());
}

TEST_F(PruebaGraficoDeDatos, ElVisorGraficaLosCanalesDelArchivo) {
  const auto tabla =
      TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Validacion"}, {{"14/03/2026", "10:00:00", "EA01", "1", "1"},
                                                                        {"14/03/2026", "10:00:00", "PLV", "0.2", "1"},
                                                                        {"14/03/2026", "10:10:00", "EA01", "2", "0"},
                                                                        {"14/03/2026", "11:00:00", "EA01", "3", "1"},
                                                                        {"14/03/2026", "11:10:00", "EA01", "3", "1"}});
  tabla->Save(banco.carpeta / "rio.xml");
  frmVisualizador visor(banco.mod);
  visor.MuestraArchivo(banco.carpeta / "rio.xml");
  ASSERT_EQ(Graficados(visor).size(), 1U);
  EXPECT_THAT(Graficados(visor)[0].serie->Tramos(), ElementsAre(TramoSerie{0, 2}, TramoSerie{2, 4}));
  EXPECT_EQ(U(Grafico(visor).Contenido().estacion), "Archivo rio.xml");
  EXPECT_TRUE(visor.findChild<QCheckBox*>("GraficoEventos")->isHidden());
  EXPECT_EQ(Grafico(visor).Cursor(), (Hidrograma::Punto{0, 0})) << "the row that is current";
  EXPECT_EQ(
      Texto(visor, "lblCifras"),
      "Primero: 14/03/2026 10:00:00, último: 14/03/2026 11:10:00; 5 registros, 1 sin validar, faltan 4, 1 hueco; 2 "
      "canales");
  const auto* modelo = Lista(visor).Arbol()->model();
  EXPECT_EQ(U(modelo->index(2, 0).data(Qt::AccessibleDescriptionRole).toString()), "Sin validar");
  Agregar(visor, 0);
  ASSERT_EQ(Graficados(visor).size(), 2U);
  Lista(visor).Elegir(1);
  EXPECT_EQ(Grafico(visor).Cursor(), (Hidrograma::Punto{1, 0})) << "a row of the added channel";
  EXPECT_THAT(driver.llamadas, IsEmpty());

  TablaDeTextos({"Fecha", "Hora", "Codigo"}, {{"14/03/2026", "10:00:00", "3"}})->Save(banco.carpeta / "ev.xml");
  visor.MuestraArchivo(banco.carpeta / "ev.xml");
  EXPECT_THAT(Graficados(visor), IsEmpty());
  EXPECT_EQ(Texto(visor, "lblCifras"), "Primero: 14/03/2026 10:00:00, último: 14/03/2026 10:00:00; 1 evento");
}

}  // namespace
}  // namespace utr
