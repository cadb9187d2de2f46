#include <QApplication>
#include <QComboBox>
#include <QRadioButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeView>

#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmDatos.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PruebaFrmDatos : public BancoVistas, public testing::Test {
 protected:
  PruebaFrmDatos() { ventana.show(); }

  // A frame of 38 raw values, the first one 2048 and that of the rain gauge 7.
  static TablaPtr Instantaneos() {
    std::vector<Celdas> filas(38, Celdas{"0"});
    filas[0] = {"2048"};
    filas[28] = {"7"};
    return TablaDeTextos({"Valor"}, filas);
  }

  frmDatos ventana{banco.mod, Canales()};
};

TEST_F(PruebaFrmDatos, SoloSeOfrecenLosHabilitadosConHistoria) {
  auto* canales = Hijo<QComboBox>(ventana, "Canales");
  ASSERT_EQ(canales->count(), 2);
  EXPECT_TRUE(canales->itemText(0).startsWith("EA01_"));
  EXPECT_EQ(U(canales->itemText(1)), "PLV_Pluviómetro");
  canales->setCurrentIndex(1);
  Pulsar(ventana, "cmd(0)");
  EXPECT_EQ(driver.llamadas.back(), "LeerDatos(15/03/2026,15/03/2026,14)");
}

TEST_F(PruebaFrmDatos, LosValoresVienenEnUnidadesSalvoQueSePidanCuentas) {
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "1", "2048", "4096", "", "0", "1"}}));
  Pulsar(ventana, "cmd(0)");
  EXPECT_THAT(Filas(ventana)[0], HasSubstr("|5.000|"));
  EXPECT_THAT(Filas(ventana)[0], HasSubstr("|10.000|N/D|No|Si"));
  Hijo<QCheckBox>(ventana, "CheckEscalados")->setChecked(false);
  Pulsar(ventana, "cmd(0)");
  EXPECT_EQ(Filas(ventana)[0], "14/03/2026|00:10:00|EA01|-|2048|-|4096|N/D|No|Si");
}

TEST_F(PruebaFrmDatos, DebajoDeLaListaDiceLoQueHayYMarcaLoQueNoVale) {
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "1", "2048", "", "", "1", "1"},
                                      {"", "00:20:00", "1", "4096", "", "", "0", "1"},
                                      {"", "00:30:00", "1", "", "", "", "1", "1"}}));
  Pulsar(ventana, "cmd(0)");
  EXPECT_EQ(Texto(ventana, "lblCifras"),
            "Primero: 14/03/2026 00:10:00, último: 14/03/2026 00:30:00; 3 registros, 1 sin valor, 1 sin validar, 1 "
            "hueco; mínimo 5, máximo 10, media 7.500");
  std::vector<std::string> marcas;
  const QAbstractItemModel* modelo = Lista(ventana).Arbol()->model();
  for (int fila = 0; fila < 3; ++fila)
    marcas.push_back(U(modelo->index(fila, 0).data(Qt::AccessibleDescriptionRole).toString()));
  EXPECT_THAT(marcas, ElementsAre("", "Sin validar", "Sin valor"));
  driver.Devuelve("LeerInstantaneos", Instantaneos());
  Pulsar(ventana, "DatosInst");
  EXPECT_TRUE(Hijo<QLabel>(ventana, "lblCifras")->isHidden());
}

TEST_F(PruebaFrmDatos, LasColumnasEntranAlLadoDelGraficoHastaQueSeMueveLaDivision) {
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "1", "2048", "4096", "1024", "1", "1"}}));
  ventana.resize(1500, 700);
  ventana.show();
  Pulsar(ventana, "cmd(0)");
  QApplication::processEvents();
  auto* division = Hijo<QSplitter>(ventana, "Division");
  EXPECT_EQ(Lista(ventana).Arbol()->horizontalScrollBar()->maximum(), 0) << division->width();
  division->setSizes({500, 900});
  emit division->splitterMoved(500, 1);
  const QList<int> suyos = division->sizes();
  Pulsar(ventana, "cmd(0)");
  EXPECT_EQ(division->sizes(), suyos);
}

TEST_F(PruebaFrmDatos, LosInstantaneosPidenDosLlamadasYEnSeguidaUna) {
  driver.Devuelve("LeerInstantaneos", Instantaneos());
  Pulsar(ventana, "DatosInst");
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerInstantaneos()", "Pausa(3)", "LeerInstantaneos()"));
  ASSERT_EQ(Filas(ventana).size(), 3u) << "the disabled channel isn't listed";
  EXPECT_TRUE(Filas(ventana)[0].starts_with("15/03/2026|10:00:00|EA01|")) << Filas(ventana)[0];
  EXPECT_THAT(Filas(ventana)[0], HasSubstr("|5.000|"));
  EXPECT_TRUE(Filas(ventana)[0].ends_with("|-|-|-|-"));
  banco.reloj.Adelantar(8.9);
  Hijo<QRadioButton>(ventana, "OpSinEscalar")->setChecked(true);
  Pulsar(ventana, "DatosInst");
  EXPECT_EQ(driver.llamadas.size(), 4u);
  EXPECT_THAT(Filas(ventana)[0], HasSubstr("|2048|"));
  banco.reloj.Adelantar(9);
  Pulsar(ventana, "DatosInst");
  EXPECT_EQ(driver.Cuantas("Pausa"), 2u);
}

TEST_F(PruebaFrmDatos, UnaLecturaFallidaNoEscondeCanalesDeLosInstantaneos) {
  TablaPtr canales = Canales();
  canales->Filter("Canal='15'");
  canales->Set("CtePluvi", "1e308");
  frmDatos otra(banco.mod, canales);
  ASSERT_EQ(Hijo<QComboBox>(otra, "Canales")->count(), 2) << "whatever the table's filter";
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "15", "2048", "", "", "0", "0"}}));
  driver.Devuelve("LeerInstantaneos", Instantaneos());
  operador.Espera("La operación solicitada no puede completarse\n[ " + DescripcionDe(error::kDesborde) + " ]");
  Pulsar(otra, "cmd(0)");
  Hijo<QRadioButton>(otra, "OpSinEscalar")->setChecked(true);
  Pulsar(otra, "DatosInst");
  EXPECT_EQ(Filas(otra).size(), 3u);
}

TEST_F(PruebaFrmDatos, LaInstantaneaVaciaTieneSuPanelYLaCortaSuMensaje) {
  Pulsar(ventana, "DatosInst");
  EXPECT_THAT(Paneles(ventana), ElementsAre("PicSinDatosInst"));
  EXPECT_EQ(U(Hijo<PanelAviso>(ventana, "PicSinDatosInst")->Texto()),
            "Sin datos en la lectura instantánea. Por favor intente de nuevo...");
  driver.Devuelve("LeerInstantaneos", TablaDeTextos({"Valor"}, {{"1"}}));
  operador.Espera(
      Mensaje{"La operación solicitada no puede completarse\n[ La lectura instantánea no llega hasta el canal PLV ]",
              "Datos de la UTR", Icono::kCritico, Botones::kAceptar});
  Pulsar(ventana, "DatosInst");
  EXPECT_THAT(Paneles(ventana), IsEmpty());
  EXPECT_THAT(banco.Errores(), HasSubstr("\"modRTU\",\"PresentacionDatosInstantaneos\""));
  driver.Falla("LeerInstantaneos", Error(error::kSinRespuesta, "Comunicador", "La UTR no responde"));
  operador.Espera(Mensaje{"La operación solicitada no puede completarse\n[ La UTR no responde ]", "Datos de la UTR",
                          Icono::kCritico, Botones::kAceptar});
  Pulsar(ventana, "DatosInst");
  EXPECT_THAT(Paneles(ventana), IsEmpty()) << "silence isn't an empty reading";
}

TEST_F(PruebaFrmDatos, CadaMarcoTieneSuListaYSuDocumento) {
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "1", "1", "1", "1", "0", "0"}}));
  driver.Devuelve("LeerInstantaneos", Instantaneos());
  Pulsar(ventana, "cmd(0)");
  const std::string periodo = Texto(ventana, "lblPeriodo");
  Elegir(ventana, "mnuDatosInst");
  EXPECT_TRUE(Hijo<QWidget>(ventana, "DatosInst")->isVisible());
  EXPECT_FALSE(Hijo<QWidget>(ventana, "cmd(0)")->isVisible());
  EXPECT_TRUE(Hijo<QAction>(ventana, "mnuDatosInst")->isChecked());
  EXPECT_EQ(Filas(ventana).size(), 0u);
  EXPECT_EQ(Texto(ventana, "lblPeriodo"), "");
  EXPECT_FALSE(Hijo<QAction>(ventana, "mnuExportData")->isEnabled());
  Pulsar(ventana, "DatosInst");
  EXPECT_EQ(Filas(ventana).size(), 3u);
  Lista(ventana).CampoFiltro()->setText("PLV");
  Elegir(ventana, "mnuDatHistoricos");
  EXPECT_EQ(U(Lista(ventana).CampoFiltro()->text()), "") << "what narrows one list doesn't narrow the other";
  Elegir(ventana, "mnuDatosInst");
  EXPECT_EQ(U(Lista(ventana).CampoFiltro()->text()), "PLV");
  EXPECT_EQ(Filas(ventana).size(), 1u);
  Lista(ventana).CampoFiltro()->clear();
  const std::pair<int, std::string> marcos[] = {
      {0, "Datos históricos de la UTR\r\nDesde: 15/03/2026"},
      {1, "Datos instantáneos de la UTR\r\nFecha: 15/03/2026\r\nFecha\tHora"}};
  for (const auto& [marco, comienzo] : marcos) {
    Hijo<QTabWidget>(ventana, "fraDatos")->setCurrentIndex(marco);
    EXPECT_EQ(Filas(ventana).size(), marco == 0 ? 1u : 3u);
    EXPECT_EQ(Texto(ventana, "lblPeriodo") == periodo, marco == 0);
    const auto ruta = banco.carpeta / "lista.txt";
    operador.EsperaGuardar("Guardar como ...", ruta);
    operador.Espera("La lista ha sido exportada con éxito");
    Pulsar(ventana, "Save");
    EXPECT_TRUE(prueba::LeerTodo(ruta).starts_with(comienzo)) << prueba::LeerTodo(ruta);
  }
  EXPECT_EQ(operador.pedidos[0].nombre, "Datos EA01 15-03-2026 a 15-03-2026.txt");
  EXPECT_EQ(operador.pedidos[1].nombre, "Datos instantáneos de la UTR 15-03-2026.txt");
}

TEST_F(PruebaFrmDatos, AbrirSigueALaListaYLoQueFaltaSeVeComoGuion) {
  GuionVentanas guion;
  QAction* abrir = Hijo<QAction>(ventana, "mnuDatosAbrir");
  EXPECT_FALSE(abrir->isEnabled());
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "1", "1", "1", "1", "0", "0"}, {"", "00:20:00", "1", "2"}}));
  Pulsar(ventana, "cmd(0)");
  EXPECT_TRUE(abrir->isEnabled());
  guion.Espera("frmItemLista", [](QDialog& detalle) {
    EXPECT_EQ(U(detalle.windowTitle()), "Detalles: EA01");
    EXPECT_EQ(Texto(detalle, "lblDato(0)"), "14/03/2026");
    EXPECT_EQ(Texto(detalle, "lblColumna(4)"), "Valor : ");
    detalle.reject();
  });
  abrir->trigger();  // the first row is current behind a read
}

TEST_F(PruebaFrmDatos, ElFiltroDiceCuantasFilasSeVen) {
  driver.Devuelve("LeerDatos", Datos({{"", "00:10:00", "1", "1", "1", "1", "0", "0"},
                                      {"", "00:20:00", "1", "2", "1", "1", "0", "0"}}));
  Pulsar(ventana, "cmd(0)");
  Lista(ventana).CampoFiltro()->setText("00:20");
  EXPECT_EQ(Texto(ventana, "lblFiltradas"), "A la vista: 1 (Exportar los lleva todos)");
  EXPECT_EQ(Texto(ventana, "lblCantRegistros"), "Cantidad de Registros Cargados: 2");
  EXPECT_TRUE(Hijo<QAction>(ventana, "mnuDatosGuardarComo")->isEnabled());
  Lista(ventana).CampoFiltro()->setText("nada");
  EXPECT_FALSE(Hijo<QAction>(ventana, "mnuDatosGuardarComo")->isEnabled()) << "no row is left to save";
  EXPECT_TRUE(Hijo<QAction>(ventana, "mnuExportData")->isEnabled()) << "the export takes the whole table";
  Lista(ventana).CampoFiltro()->clear();
  EXPECT_EQ(Texto(ventana, "lblFiltradas"), "");
  EXPECT_TRUE(Hijo<QAction>(ventana, "mnuDatosGuardarComo")->isEnabled());
}

}  // namespace
}  // namespace utr
