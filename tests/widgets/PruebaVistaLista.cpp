#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTreeView>

#include "support/GuionVentanas.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"
#include "widgets/TextoQt.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

using testing::ElementsAre;

const Columnas kColumnas = {
    {"Fecha", "Fecha", Presentacion::kTalCual, ClaseOrden::kFecha},
    {"Canal", "Canal"},
    {"Valor ", "Valor", Presentacion::kTalCual, ClaseOrden::kNumero},
};

TablaPtr Muestra() {
  return TablaDeTextos({"Fecha", "Canal", "Valor"}, {{"02/01/2026", "EA1", "9.500"},
                                                     {"10/12/2025", "PLV", "10.000"},
                                                     {"01/02/2026", "EA2", "-3.000"},
                                                     {"05/01/2026", "ED1", "N/D"}});
}

class PruebaVistaLista : public testing::Test {
 protected:
  PruebaVistaLista() {
    vista.resize(600, 300);
    vista.show();
    QApplication::setActiveWindow(&vista);
  }

  std::vector<std::string> Columna(std::size_t columna) const {
    std::vector<std::string> textos;
    for (std::size_t i = 0; i < vista.Lista().Cantidad(); ++i) textos.push_back(vista.Lista().Texto(i, columna));
    return textos;
  }

  void ClicEnTitulo(int columna) {
    QHeaderView* titulos = vista.Arbol()->header();
    const QPoint punto(titulos->sectionViewportPosition(columna) + 5, titulos->height() / 2);
    QTest::mouseClick(titulos->viewport(), Qt::LeftButton, Qt::NoModifier, punto);
  }

  // What F9 on the list opens, with what is done in it.
  void EnColumnas(const std::function<void(QDialog&)>& paso) {
    ventanas.Espera("frmColumnas", [&](QDialog& d) {
      QApplication::setActiveWindow(&d);
      paso(d);
    });
    QApplication::setActiveWindow(&vista);
    vista.Arbol()->setFocus();
    QTest::keyClick(vista.Arbol(), Qt::Key_F9);
    ventanas.Comprobar();
  }

  GuionVentanas ventanas;
  VistaLista vista{kColumnas};
};

TEST_F(PruebaVistaLista, UnTituloOrdenaPorValorYCadaClicLoInvierte) {
  vista.Mostrar(Muestra());
  QSignalSpy ordenada(&vista, &VistaLista::Ordenada);
  ClicEnTitulo(2);
  EXPECT_THAT(Columna(2), ElementsAre("N/D", "-3.000", "9.500", "10.000"));
  ClicEnTitulo(2);
  EXPECT_THAT(Columna(2), ElementsAre("10.000", "9.500", "-3.000", "N/D"));
  ClicEnTitulo(0);
  EXPECT_THAT(Columna(0), ElementsAre("10/12/2025", "02/01/2026", "05/01/2026", "01/02/2026"));
  EXPECT_EQ(ordenada.size(), 3);
  EXPECT_EQ(vista.ColumnaOrdenada(), 0u);
  EXPECT_TRUE(vista.Arbol()->header()->isSortIndicatorShown());
  EXPECT_EQ(vista.Arbol()->header()->sortIndicatorSection(), 0);
  EXPECT_EQ(vista.Arbol()->header()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(PruebaVistaLista, ElOrdenComoTextoSeDiceYDuraHastaLaProximaLectura) {
  vista.Mostrar(Muestra());
  vista.OrdenarComoTexto(0, true);
  EXPECT_THAT(Columna(0), ElementsAre("01/02/2026", "02/01/2026", "05/01/2026", "10/12/2025"));
  const auto titulo = [this](int columna) {
    return U(vista.Arbol()->model()->headerData(columna, Qt::Horizontal).toString());
  };
  EXPECT_TRUE(vista.Arbol()->header()->isSortIndicatorShown());
  EXPECT_EQ(titulo(0), "Fecha (como texto)");
  EXPECT_FALSE(vista.ColumnaOrdenada().has_value());
  ClicEnTitulo(0);
  EXPECT_EQ(titulo(0), "Fecha");
  EXPECT_THAT(Columna(0), ElementsAre("01/02/2026", "05/01/2026", "02/01/2026", "10/12/2025"));
  vista.OrdenarComoTexto(1, false);
  EXPECT_EQ(titulo(1), "Canal") << "the order of a text is that of its letters";
  vista.Mostrar(Muestra());
  EXPECT_THAT(Columna(1), ElementsAre("EA1", "PLV", "EA2", "ED1"));
  EXPECT_FALSE(vista.Arbol()->header()->isSortIndicatorShown());
}

TEST_F(PruebaVistaLista, LaUltimaColumnaTomaLoQueSobraYNuncaMenosQueLoSuyo) {
  vista.Mostrar(Muestra());
  QHeaderView* titulos = vista.Arbol()->header();
  const auto borde = [titulos] { return titulos->sectionViewportPosition(2) + titulos->sectionSize(2); };
  const auto ancho = [this] { return vista.Arbol()->viewport()->width(); };
  EXPECT_EQ(borde(), ancho());
  vista.resize(900, 300);
  EXPECT_EQ(borde(), ancho());
  titulos->resizeSection(0, 200);
  EXPECT_EQ(borde(), ancho());
  titulos->resizeSection(0, 2000);
  EXPECT_GE(titulos->sectionSize(2), vista.Arbol()->fontMetrics().horizontalAdvance("10.000"));
}

TEST_F(PruebaVistaLista, UnFiltroSinAciertosLoDice) {
  auto* aviso = vista.findChild<QLabel*>("lblSinAciertos");
  vista.Vaciar();
  EXPECT_FALSE(aviso->isVisible()) << "an empty list isn't the filter's doing";
  vista.Mostrar(Muestra());
  vista.CampoFiltro()->setText("zz");
  EXPECT_TRUE(aviso->isVisible());
  EXPECT_TRUE(aviso->text().contains("\"zz\""));
  vista.CampoFiltro()->setText("EA");
  EXPECT_FALSE(aviso->isVisible());
}

// The row that opens is one in sight, and what a filter hid comes back with its rows unless the operator went
// elsewhere.
TEST_F(PruebaVistaLista, ElFiltroQueEscondeLaFilaActualNoLaPierde) {
  vista.Mostrar(Muestra());
  vista.Elegir(1);
  const auto lugar = [this] {
    std::vector<std::size_t> filas;
    if (vista.FilaActual()) filas.push_back(*vista.FilaActual());
    for (const std::size_t posicion : vista.FilasElegidas()) filas.push_back(posicion);
    return filas;
  };
  const auto filtrar = [this](const char* texto) { vista.CampoFiltro()->setText(texto); };
  filtrar("EA");
  EXPECT_THAT(lugar(), ElementsAre(0, 0)) << "the first one stands in for it";
  vista.Ordenar(2, true);
  filtrar("zz");
  EXPECT_THAT(lugar(), ElementsAre());
  filtrar("");
  EXPECT_THAT(lugar(), ElementsAre(3, 3)) << "PLV, which is last by value";
  filtrar("EA");
  vista.Elegir(1);
  filtrar("");
  EXPECT_THAT(lugar(), ElementsAre(2, 2)) << "EA1, where the operator went";
  filtrar("zz");
  vista.Mostrar(Muestra());
  EXPECT_THAT(lugar(), ElementsAre()) << "another read begins anew";
}

TEST_F(PruebaVistaLista, LaBarraRepiteElClicSoloDondeUnTituloLlevaIcono) {
  vista.Mostrar(Muestra());
  vista.RepetirOrden();
  EXPECT_THAT(Columna(1), ElementsAre("EA1", "PLV", "EA2", "ED1"));
  ClicEnTitulo(1);
  vista.RepetirOrden();
  EXPECT_THAT(Columna(1), ElementsAre("PLV", "ED1", "EA2", "EA1"));
}

TEST_F(PruebaVistaLista, UnaColumnaQueOrdenaLaVentanaNoMueveFilas) {
  vista.Mostrar(Muestra());
  vista.OrdenAjeno(1);
  vista.QuitarOrden(true);
  QSignalSpy ordenada(&vista, &VistaLista::Ordenada);
  ClicEnTitulo(1);
  EXPECT_THAT(Columna(1), ElementsAre("EA1", "PLV", "EA2", "ED1"));
  ASSERT_EQ(ordenada.size(), 1);
  EXPECT_FALSE(ordenada[0][1].toBool()) << "the table stood ascending, so the click asks for the other order";
  EXPECT_EQ(vista.ColumnaOrdenada(), 1u);
}

TEST_F(PruebaVistaLista, ElOrdenSobreviveALaTablaMostrada) {
  vista.Mostrar(Muestra());
  ClicEnTitulo(1);
  vista.Vaciar();
  vista.Mostrar(TablaDeTextos({"Fecha", "Canal", "Valor"}, {{"", "Z", ""}, {"", "A", ""}}));
  EXPECT_THAT(Columna(1), ElementsAre("A", "Z"));
}

TEST_F(PruebaVistaLista, LaFilaActualYLasElegidasSiguenASusFilas) {
  vista.Mostrar(Muestra());
  vista.Elegir(1);
  ClicEnTitulo(2);
  EXPECT_EQ(vista.FilaActual(), 3u);
  EXPECT_THAT(vista.FilasElegidas(), ElementsAre(3u));
  vista.CampoFiltro()->setText("PL");
  EXPECT_EQ(vista.FilaActual(), 0u);
}

TEST_F(PruebaVistaLista, MuchasElegidasSiguenASusFilas) {
  std::vector<Celdas> filas(30000, Celdas{"01/01/2026", "EA1", "1.000"});
  for (std::size_t i = 0; i < 15000; ++i) filas[i][1] = "PLV";
  vista.Mostrar(TablaDeTextos({"Fecha", "Canal", "Valor"}, filas));
  vista.ElegirTodas([](std::size_t fila) { return fila < 15000; });
  vista.Ordenar(1, true);  // "EA1" ahead of "PLV"
  const std::vector<std::size_t> elegidas = vista.FilasElegidas();
  ASSERT_EQ(elegidas.size(), 15000U);
  EXPECT_EQ(elegidas.front(), 15000U);
}

// Rows that stood together stand apart in another order, each a stretch of its own.
TEST_F(PruebaVistaLista, LasElegidasNoSePierdenPorQuedarSueltas) {
  constexpr std::size_t kFilas = 60000;
  std::vector<Celdas> filas;
  for (std::size_t i = 0; i < kFilas; ++i) filas.push_back({"01/01/2026", i % 2 == 0 ? "EA1" : "PLV", "1.000"});
  vista.Mostrar(TablaDeTextos({"Fecha", "Canal", "Valor"}, filas));
  vista.Ordenar(1, true);
  vista.ElegirTodas([](std::size_t fila) { return fila % 2 == 0; });
  vista.QuitarOrden(true);
  const std::vector<std::size_t> elegidas = vista.FilasElegidas();
  ASSERT_EQ(elegidas.size(), kFilas / 2);
  for (std::size_t i = 0; i < elegidas.size(); ++i) ASSERT_EQ(elegidas[i], 2 * i);
}

TEST_F(PruebaVistaLista, ConElTecladoSeOrdenaPorCualquierColumna) {
  vista.Mostrar(Muestra());
  vista.Arbol()->header()->setSectionsMovable(true);
  vista.Arbol()->header()->moveSection(2, 0);  // Valor, Fecha, Canal
  QSignalSpy ordenada(&vista, &VistaLista::Ordenada);
  vista.Arbol()->setFocus();
  QTest::keyClick(vista.Arbol(), Qt::Key_F7);
  EXPECT_THAT(Columna(2), ElementsAre("N/D", "-3.000", "9.500", "10.000"));
  QTest::keyClick(vista.Arbol(), Qt::Key_F7, Qt::ShiftModifier);
  EXPECT_THAT(Columna(2), ElementsAre("10.000", "9.500", "-3.000", "N/D"));
  QTest::keyClick(vista.Arbol(), Qt::Key_F7);
  EXPECT_THAT(Columna(0), ElementsAre("10/12/2025", "02/01/2026", "05/01/2026", "01/02/2026"));
  QTest::keyClick(vista.Arbol(), Qt::Key_F7);
  QTest::keyClick(vista.Arbol(), Qt::Key_F7);
  EXPECT_EQ(vista.ColumnaOrdenada(), 2U) << "after the last comes the first";
  EXPECT_EQ(ordenada.size(), 5);
}

TEST_F(PruebaVistaLista, CtrlFFiltraAlTeclearYEscVaciaElCampo) {
  vista.Mostrar(Muestra());
  vista.Arbol()->setFocus();
  QTest::keyClick(vista.Arbol(), Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(vista.CampoFiltro()->hasFocus());
  QTest::keyClicks(vista.CampoFiltro(), "ea");
  EXPECT_THAT(Columna(1), ElementsAre("EA1", "EA2"));
  QTest::keyClick(vista.CampoFiltro(), Qt::Key_Escape);
  EXPECT_EQ(Columna(1).size(), 4u);
  EXPECT_TRUE(vista.CampoFiltro()->text().isEmpty());
  vista.CampoFiltro()->setText("EA");
  vista.Mostrar(Muestra());
  EXPECT_EQ(Columna(1).size(), 4u) << "a new table is shown whole";
  EXPECT_TRUE(vista.CampoFiltro()->text().isEmpty());
}

TEST_F(PruebaVistaLista, LasColumnasVuelvenComoSeLasDejo) {
  vista.ConservarAnchos(true);
  vista.Mostrar(Muestra());
  vista.Arbol()->header()->moveSection(2, 0);
  vista.Arbol()->setColumnWidth(1, 222);
  vista.Ordenar(2, false);
  const QStringList dejada = vista.Disposicion();
  VistaLista otra(kColumnas);
  otra.ConservarAnchos(true);
  for (const QStringList& ajena : {QStringList{}, QStringList{"0:0", "1:0"}, QStringList{"0:0", "0:0", "1:0"},
                                   QStringList{"0:0", "1:0", "3:0"}, QStringList{"a", "b", "c"}}) {
    otra.Disponer(ajena);
    EXPECT_EQ(otra.Disposicion(), (QStringList{"0:0", "1:0", "2:0"})) << ajena.join(' ').toStdString();
  }
  otra.Disponer(dejada);
  otra.Mostrar(Muestra());
  EXPECT_EQ(otra.Disposicion(), dejada);
  EXPECT_EQ(otra.Arbol()->columnWidth(1), 222);
  EXPECT_EQ(otra.Lista().Texto(0, 0), "10/12/2025") << "ordered by its values";
  otra.Elegir(0);
  EXPECT_TRUE(otra.TextoElegido().starts_with("Fecha\tCanal\tValor")) << "documents know nothing of it";
  otra.ConservarAnchos(false);
  otra.Mostrar(Muestra());
  EXPECT_NE(otra.Arbol()->columnWidth(1), 222);
}

// With the keys that an operator without a mouse has.
TEST_F(PruebaVistaLista, LasColumnasSeOrdenanYEnsanchanConElTeclado) {
  vista.ConservarAnchos(true);
  vista.Mostrar(Muestra());
  const int de_fecha = vista.Arbol()->columnWidth(0);
  const int de_canal = vista.Arbol()->columnWidth(1);
  EnColumnas([](QDialog& d) {
    auto& columnas = Hallar<QTreeView>(d, "Columnas");
    EXPECT_FALSE(Hallar<QPushButton>(d, "cmdSubir").isEnabled());
    auto& bajar = Hallar<QPushButton>(d, "cmdBajar");
    bajar.setFocus();
    QTest::keyClick(&bajar, Qt::Key_Space);  // Canal, Fecha, Valor
    EXPECT_TRUE(bajar.hasFocus());
    QTest::keyClick(&bajar, Qt::Key_Space);
    EXPECT_FALSE(bajar.isEnabled());
    EXPECT_TRUE(columnas.hasFocus()) << "not its neighbour, which would undo it";
    QTest::keyClick(&columnas, Qt::Key_Home);
    EXPECT_EQ(columnas.currentIndex().data().toString(), "Canal");
    auto& ancho = Hallar<QSpinBox>(d, "txtAncho");
    ancho.selectAll();
    QTest::keyClicks(&ancho, "40");
    QTest::keyClick(&ancho, Qt::Key_Return);
  });
  EXPECT_THAT(vista.OrdenDeColumnas(), ElementsAre(1U, 2U, 0U));
  EXPECT_EQ(vista.LetrasDe(1), 40);
  const int ancho = vista.Arbol()->columnWidth(1);
  vista.Mostrar(Muestra());
  EXPECT_EQ(vista.Arbol()->columnWidth(1), ancho) << "it is as good as one that was dragged";
  EnColumnas([](QDialog& d) {
    Hallar<QPushButton>(d, "cmdPrincipio").click();
    Hallar<QPushButton>(d, "CmdCancel").click();
  });
  EXPECT_THAT(vista.OrdenDeColumnas(), ElementsAre(1U, 2U, 0U));
  EnColumnas([](QDialog& d) {
    Hallar<QPushButton>(d, "cmdPrincipio").click();
    EXPECT_EQ(Hallar<QTreeView>(d, "Columnas").currentIndex().row(), 1) << "the column stays chosen";
    Hallar<QPushButton>(d, "CmdOK").click();
  });
  EXPECT_EQ(vista.Disposicion(), (QStringList{"0:0", "1:0", "2:0"}));
  EXPECT_EQ(vista.Arbol()->columnWidth(0), de_fecha);
  EXPECT_EQ(vista.Arbol()->columnWidth(1), de_canal);
}

TEST_F(PruebaVistaLista, AceptarSinTocarNadaNoCambiaNingunAncho) {
  vista.ConservarAnchos(true);
  vista.Mostrar(Muestra());
  vista.Arbol()->setColumnWidth(1, 221);
  vista.Arbol()->header()->moveSection(2, 0);
  const QStringList antes = vista.Disposicion();
  const int de_fecha = vista.Arbol()->columnWidth(0);
  const int de_canal = vista.Arbol()->columnWidth(1);  // which is the last one now, and has the rest too
  EnColumnas([](QDialog& d) { d.findChild<QPushButton*>("CmdOK")->click(); });
  EXPECT_EQ(vista.Disposicion(), antes);
  EXPECT_EQ(vista.Arbol()->columnWidth(0), de_fecha);
  EXPECT_EQ(vista.Arbol()->columnWidth(1), de_canal);
}

TEST_F(PruebaVistaLista, SinColumnasMoviblesSoloSeOfreceElAncho) {
  vista.Mostrar(Muestra());
  EnColumnas([](QDialog& d) {
    EXPECT_FALSE(Hallar<QPushButton>(d, "cmdSubir").isVisible());
    EXPECT_FALSE(Hallar<QPushButton>(d, "cmdBajar").isVisible());
    Hallar<QSpinBox>(d, "txtAncho").setValue(30);
    Hallar<QPushButton>(d, "CmdOK").click();
  });
  EXPECT_EQ(vista.LetrasDe(0), 30);
}

TEST_F(PruebaVistaLista, LasMarcasSiguenASusFilasYNoAgreganTexto) {
  QPixmap punto(8, 8);
  punto.fill(Qt::red);
  vista.Marcar([](std::size_t fila) { return fila == 2 ? QString("Con cambios") : QString(); }, QIcon(punto));
  vista.Mostrar(Muestra());
  vista.ClicColumna(2);
  std::vector<std::string> marcados;
  for (int fila = 0; fila < 4; ++fila) {
    const QModelIndex celda = vista.Arbol()->model()->index(fila, 0);
    EXPECT_FALSE(celda.siblingAtColumn(1).data(Qt::DecorationRole).isValid());
    if (!celda.data(Qt::DecorationRole).isValid()) continue;
    marcados.push_back(U(celda.data().toString() + ':' + celda.data(Qt::AccessibleDescriptionRole).toString()));
  }
  EXPECT_THAT(marcados, ElementsAre("01/02/2026:Con cambios"));
  const auto alto = [this](int fila) {
    return vista.Arbol()->sizeHintForIndex(vista.Arbol()->model()->index(fila, 0));
  };
  EXPECT_EQ(alto(0).height(), alto(1).height());
  EXPECT_EQ(alto(1).height(), alto(2).height());
}

TEST_F(PruebaVistaLista, UnaListaSinFiltroDejaCtrlFALaOtra) {
  VistaLista otra(kColumnas, &vista);
  otra.SinFiltro();
  otra.show();
  QTest::keyClick(&vista, Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(vista.CampoFiltro()->hasFocus());
  EXPECT_FALSE(otra.CampoFiltro()->isVisible());
}

TEST_F(PruebaVistaLista, CtrlCCopiaLasElegidasEnElOrdenQueSeVe) {
  vista.Mostrar(Muestra());
  vista.Arbol()->setFocus();
  ClicEnTitulo(1);
  vista.Elegir(3);
  QTest::keyClick(vista.Arbol(), Qt::Key_Up, Qt::ShiftModifier);
  QTest::keyClick(vista.Arbol(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(U(QApplication::clipboard()->text()),
            "Fecha\tCanal\tValor \n05/01/2026\tED1\tN/D\n10/12/2025\tPLV\t10.000");
  vista.Arbol()->clearSelection();
  QTest::keyClick(vista.Arbol(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(QApplication::clipboard()->text().isEmpty()) << "nothing is selected: what was copied stays";
}

TEST_F(PruebaVistaLista, EnterYDobleClicActivanLaFila) {
  vista.Mostrar(Muestra());
  QSignalSpy activada(&vista, &VistaLista::Activada);
  QTest::keyClick(vista.Arbol(), Qt::Key_Return);
  EXPECT_EQ(activada.size(), 0) << "no row is current";
  vista.Elegir(2);
  QTest::keyClick(vista.Arbol(), Qt::Key_Return);
  const QPoint punto = vista.Arbol()->visualRect(vista.Arbol()->model()->index(1, 0)).center();
  QTest::mouseClick(vista.Arbol()->viewport(), Qt::LeftButton, Qt::NoModifier, punto);
  QTest::mouseDClick(vista.Arbol()->viewport(), Qt::LeftButton, Qt::NoModifier, punto);
  ASSERT_EQ(activada.size(), 2);
  EXPECT_EQ(activada[0][0].toULongLong(), 2u);
  EXPECT_EQ(activada[1][0].toULongLong(), 1u);
}

TEST_F(PruebaVistaLista, CadaAnchoAlcanzaAlTituloYAlTextoMasAncho) {
  const char* ancho = "Temperatura media del aire a la sombra, ñandú";
  vista.Mostrar(TablaDeTextos({"Fecha", "Canal", "Valor"}, {{"1", ancho, "1"}, {"1", "i", "22"}}));
  EXPECT_GT(vista.Arbol()->columnWidth(1), vista.Arbol()->fontMetrics().horizontalAdvance(ancho) + 4);
  EXPECT_GT(vista.Arbol()->columnWidth(0), vista.Arbol()->header()->fontMetrics().horizontalAdvance("Fecha"));
  vista.Vaciar();
  EXPECT_LT(vista.Arbol()->columnWidth(1), vista.Arbol()->fontMetrics().horizontalAdvance(ancho));
}

TEST_F(PruebaVistaLista, UnaTablaSinUnCampoFallaYDejaLaListaVaciaYUtil) {
  vista.Mostrar(Muestra());
  EXPECT_EQ(prueba::NumeroDeError([this] {
              vista.Mostrar(TablaDeTextos({"Fecha", "Canal"}, {{"1", "2"}}));
            }),
            error::kCampo);
  EXPECT_EQ(vista.Arbol()->model()->rowCount(), 0);
  vista.Mostrar(Muestra());
  EXPECT_EQ(vista.Arbol()->model()->rowCount(), 4);
}

TEST_F(PruebaVistaLista, UnMillonDeFilasLleganALaUltima) {
  auto tabla = std::make_shared<Tabla>();
  for (const char* campo : {"Fecha", "Canal", "Valor"}) tabla->Append(campo, TipoCampo::kVarChar, 20);
  tabla->Open();
  constexpr int kFilas = 1'000'000;
  tabla->Reservar(kFilas);
  for (int i = 0; i < kFilas; ++i) {
    tabla->AddNew();
    tabla->Set(std::size_t{2}, std::to_string(i % 4096));
  }
  tabla->UpdateBatch();
  vista.Mostrar(tabla);
  vista.Arbol()->scrollToBottom();
  const QRect ultima = vista.Arbol()->visualRect(vista.Arbol()->model()->index(kFilas - 1, 0));
  EXPECT_TRUE(vista.Arbol()->viewport()->rect().contains(ultima.center()));
}

}  // namespace
}  // namespace utr
