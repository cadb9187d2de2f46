#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QImage>
#include <QPainter>
#include <QPicture>
#include <QTest>
#include <QWheelEvent>

#include "base/Fechas.h"
#include "plots/windows/BancoGraficos.h"
#include "plots/windows/Hidrograma.h"
#include "plots/windows/SalidaGrafico.h"
#include "widgets/Temas.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;

class PruebaHidrograma : public testing::Test {
 protected:
  PruebaHidrograma() {
    grafico.resize(600, 400);
    grafico.show();
    QObject::connect(&grafico, &Hidrograma::PuntoElegido,
                     [this](const Hidrograma::Punto& punto) { elegidos.push_back(punto.canal * 100 + punto.punto); });
  }

  void Teclas(std::initializer_list<Qt::Key> teclas) {
    for (const Qt::Key tecla : teclas) QTest::keyClick(&grafico, tecla);
  }
  double Largo() const { return grafico.Contenido().ventana->hasta - grafico.Contenido().ventana->desde; }
  // Words at the axes, those that have some.
  std::vector<std::string> Rotulos() const {
    std::vector<std::string> rotulos;
    for (const QObject* parte : grafico.findChildren<QObject*>()) {
      const QString rotulo = parte->property("label").toString();
      if (!rotulo.isEmpty()) rotulos.push_back(U(rotulo));
    }
    return rotulos;
  }
  QWidget& Lienzo() { return *grafico.findChild<QWidget*>(); }
  void Rueda(int pasos) {
    const QPointF centro = Lienzo().rect().center();
    QWheelEvent evento(centro, Lienzo().mapToGlobal(centro), {}, {0, 120 * pasos}, Qt::NoButton, Qt::NoModifier,
                       Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Lienzo(), &evento);
  }

  const CanalGrafico nivel = CanalDe("EA01", {{"10:00", "1"}, {"10:10", "N/D"}, {"10:20", "3"}, {"10:05", "4"}});
  const CanalGrafico lluvia = CanalDe("PLV", {{"10:00", "0"}, {"10:10", "2"}});
  Hidrograma grafico;
  std::vector<std::size_t> elegidos;
};

TEST_F(PruebaHidrograma, ElCursorVaDeRegistroEnRegistroYDeCanalEnCanal) {
  grafico.Mostrar(ContenidoDe({nivel, lluvia}));
  EXPECT_EQ(U(grafico.Hechos()), "");
  Teclas({Qt::Key_Right, Qt::Key_Right});
  EXPECT_EQ(U(grafico.Hechos()), "EA01 Nivel: 15/03/2026 10:10:00, N/D") << "records without value count";
  Teclas({Qt::Key_End, Qt::Key_Right});
  EXPECT_THAT(U(grafico.Hechos()), HasSubstr("10:05:00, 4 m")) << "the last record, not the latest";
  Teclas({Qt::Key_Down});
  EXPECT_EQ(U(grafico.Hechos()), "PLV Nivel: 15/03/2026 10:00:00, 0 m");
  Teclas({Qt::Key_Up, Qt::Key_Home, Qt::Key_Left});
  EXPECT_THAT(elegidos, ElementsAre(0, 1, 3, 3, 100, 0, 0, 0));
  EXPECT_EQ(U(grafico.accessibleDescription()), U(grafico.Hechos()));
  grafico.SinCursor();
  EXPECT_EQ(U(grafico.accessibleDescription()), "");
}

TEST_F(PruebaHidrograma, UnaBarraDeVariosRegistrosEsSuSumaYSeDiceLoMismo) {
  std::vector<std::string> horas;
  for (int i = 0; i < 1440; ++i) horas.push_back(TextoHora({.hora = i / 60, .minuto = i % 60}));
  std::vector<Celdas> filas;
  for (const std::string& hora : horas) filas.push_back({"15/03/2026", hora.c_str(), "PLV", "0.2", "Lluvia", "mm"});
  const auto tabla = TablaDeTextos({"Fecha", "Hora", "Canal", "Valor", "Descripcion", "Unidad"}, filas);
  const CanalGrafico canal{std::make_shared<const Serie>(*tabla, OpcionesSerie{{}, 1.0}), {}};
  grafico.Mostrar(ContenidoDe({canal}));
  const VentanaTiempo& ventana = *grafico.Contenido().ventana;
  EXPECT_NEAR(ExtensionDe(canal, ventana).arriba * 0.45, 2, 1e-9) << "ten records of 0.2";
  const auto mediodia = static_cast<double>(canal.serie->Tiempos()[720]);
  EXPECT_EQ(U(grafico.HechosEn(mediodia - 30)),
            "PLV Lluvia: 15/03/2026 11:50:00 a 15/03/2026 12:00:00, 2.000 mm en 10 registros");
  grafico.Senalar({0, 720});
  EXPECT_EQ(U(grafico.Hechos()),
            "PLV Lluvia: 15/03/2026 12:00:00, 0.2 mm\n"
            "PLV Lluvia: 15/03/2026 11:50:00 a 15/03/2026 12:00:00, 2.000 mm en 10 registros");
  EXPECT_THAT(Rotulos(), ElementsAre("PLV Lluvia (mm en 10 min)"));
  grafico.Ver({mediodia - 1800, mediodia + 1800});
  EXPECT_NEAR(ExtensionDe(canal, ventana).arriba * 0.45, 0.2, 1e-9) << "a bar for each";
  EXPECT_EQ(U(grafico.HechosEn(mediodia - 10)), "PLV Lluvia: 15/03/2026 12:00:00, 0.2 mm");
  EXPECT_EQ(U(grafico.accessibleDescription()), "PLV Lluvia: 15/03/2026 12:00:00, 0.2 mm");
  EXPECT_THAT(Rotulos(), ElementsAre("PLV Lluvia (mm)"));
}

TEST_F(PruebaHidrograma, SeAcercaYSeAlejaSinSalirDeLoLeido) {
  grafico.Mostrar(ContenidoDe({nivel}));
  const double todo = Largo();
  Rueda(1);
  EXPECT_LT(Largo(), todo);
  Rueda(-5);
  EXPECT_EQ(Largo(), todo);
  for (int i = 0; i < 30; ++i) Teclas({Qt::Key_Plus});
  EXPECT_EQ(Largo(), 60);
  Teclas({Qt::Key_End});
  const double momento = static_cast<double>(nivel.serie->Tiempos()[3]);
  EXPECT_TRUE(grafico.Contenido().ventana->desde <= momento && momento <= grafico.Contenido().ventana->hasta)
      << "the cursor is brought into sight";
  for (int i = 0; i < 100; ++i) Teclas({Qt::Key_PageDown});
  EXPECT_GE(grafico.Contenido().ventana->hasta, static_cast<double>(*nivel.serie->Cifras().ultimo));
  EXPECT_EQ(Largo(), 60);
  grafico.Ultimas(300);
  EXPECT_NEAR(Largo(), 300, 300 * 0.05);
  grafico.Todo();
  EXPECT_EQ(Largo(), todo);
}

TEST_F(PruebaHidrograma, UnClicEligeElRegistroMasCercanoYUnArrastreAcerca) {
  grafico.Mostrar(ContenidoDe({CanalDe("EA01", {{"10:00", "1"}, {"10:10", "2"}, {"10:20", "3"}})}));
  QTest::mouseClick(&Lienzo(), Qt::LeftButton, {}, Lienzo().rect().center());
  EXPECT_THAT(elegidos, ElementsAre(1));
  const double todo = Largo();
  QTest::mousePress(&Lienzo(), Qt::LeftButton, {}, {200, 100});
  for (int x = 200; x <= 400; x += 50) {
    QMouseEvent mover(QEvent::MouseMove, QPointF(x, 120), Lienzo().mapToGlobal(QPointF(x, 120)), Qt::NoButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Lienzo(), &mover);
  }
  QTest::mouseRelease(&Lienzo(), Qt::LeftButton, {}, {400, 120});
  EXPECT_LT(Largo(), todo / 2);
  EXPECT_EQ(elegidos.size(), 1U) << "a drag picks nothing";
}

TEST_F(PruebaHidrograma, LosEventosSeRecorrenConElTecladoYTodosSeDicen) {
  grafico.Mostrar(ContenidoDe({CanalDe("EA01", {{"10:00", "1"}, {"10:10", "2"}, {"10:20", "3"}})}));
  const auto momento = grafico.Contenido().canales[0].serie->Tiempos()[1];
  grafico.PonerEventos({{momento, "Lluvia"}, {momento, "Puerta"}, {momento, "Reinicio"}, {momento + 7200, "Otro"}});
  EXPECT_TRUE(grafico.VeTodo()) << "an event behind the last record is in sight too";
  grafico.Ultimas(300);
  EXPECT_LE(grafico.Contenido().ventana->desde, static_cast<double>(momento + 600)) << "records stay in sight";
  grafico.Todo();
  const auto con_control = [this](Qt::Key tecla) { QTest::keyClick(&grafico, tecla, Qt::ControlModifier); };
  con_control(Qt::Key_Right);
  EXPECT_EQ(U(grafico.Hechos()),
            "15/03/2026 10:10:00, Lluvia\n15/03/2026 10:10:00, Puerta\n15/03/2026 10:10:00, Reinicio");
  EXPECT_EQ(U(grafico.accessibleDescription()), U(grafico.Hechos()));
  grafico.Ver({0, 1});
  con_control(Qt::Key_Right);
  EXPECT_EQ(U(grafico.Hechos()), "15/03/2026 12:10:00, Otro");
  EXPECT_GE(grafico.Contenido().ventana->hasta, static_cast<double>(momento + 7200));
  con_control(Qt::Key_Right);
  EXPECT_EQ(U(grafico.Hechos()), "15/03/2026 12:10:00, Otro") << "there is none behind it";
  con_control(Qt::Key_Left);
  EXPECT_THAT(U(grafico.Hechos()), HasSubstr("Puerta"));
  EXPECT_TRUE(elegidos.empty()) << "no row belongs to an event";
  Teclas({Qt::Key_Right});
  EXPECT_THAT(elegidos, ElementsAre(1)) << "on to the record nearest to it";
  con_control(Qt::Key_Left);
  grafico.PonerEventos({});
  EXPECT_EQ(U(grafico.Hechos()), "");
}

TEST_F(PruebaHidrograma, NadaSinDatosNiConUnoSolo) {
  for (const auto& contenido :
       {ContenidoDe({}), ContenidoDe({CanalDe("EA01", {})}), ContenidoDe({CanalDe("EA01", {{"10:00", "N/D"}})})}) {
    grafico.Mostrar(contenido);
    Teclas({Qt::Key_Right, Qt::Key_Down, Qt::Key_Plus, Qt::Key_Minus, Qt::Key_PageUp});
    Rueda(2);
    grafico.Ultimas(60);
    grafico.Redibujar();
  }
  EXPECT_THAT(elegidos, ElementsAre(0, 0)) << "the one record, by Right and by Down";
  grafico.Mostrar(ContenidoDe({CanalDe("EA01", {{"10:00", "7"}})}));
  EXPECT_GT(Largo(), 600) << "one record has no span of its own";
  EXPECT_FALSE(grafico.Cursor());
}

// How many pixels differ from the ground.
int Pintados(const QImage& imagen) {
  int pintados = 0;
  for (int y = 0; y < imagen.height(); ++y) {
    for (int x = 0; x < imagen.width(); ++x) pintados += imagen.pixel(x, y) != qRgb(255, 255, 255) ? 1 : 0;
  }
  return pintados;
}

TEST_F(PruebaHidrograma, LoVistoSePintaDeNuevoSinSuVentana) {
  GraficosALaVista vistos;
  {
    Hidrograma otro;
    ContenidoGrafico contenido = ContenidoDe({nivel});
    contenido.periodo = QStringLiteral("Desde: 14/03/2026");
    otro.Mostrar(contenido);
    vistos.Poner("frmDatos", VistoDe(otro.Contenido()));
    vistos.Poner("frmVisualizador", VistoDe(ContenidoDe({lluvia})));
    vistos.Poner("frmDatos", VistoDe(otro.Contenido()));
  }
  ASSERT_EQ(vistos.Todos().size(), 2U);
  const GraficoVisto& visto = vistos.Todos().back().second;
  EXPECT_EQ(U(visto.titulo), "Datos de prueba");
  EXPECT_EQ(U(visto.periodo), "Desde: 14/03/2026    A la vista: 15/03/2026 10:00:00 a 15/03/2026 10:20:00");
  QImage imagen(500, 300, QImage::Format_RGB32);
  imagen.fill(Qt::white);
  QPainter pintor(&imagen);
  visto.pintar(pintor, QRectF(250, 150, 250, 150));
  EXPECT_TRUE(pintor.transform().isIdentity());
  pintor.end();
  EXPECT_GT(Pintados(imagen.copy(250, 150, 250, 150)), 500);
  EXPECT_EQ(Pintados(imagen.copy(0, 0, 500, 145)), 0) << "nothing outside its rectangle";
}

struct CasoEjes {
  QSize tamano;
  int letra = 0;  // pixels
  const char* rotulo = "";
};

class EjesDelHidrograma : public PruebaHidrograma, public testing::WithParamInterface<CasoEjes> {
 protected:
  // Pixels from each mark of an axis to the next one.
  static std::vector<double> EntreMarcas(const QCPAxis& eje) {
    std::vector<double> entre;
    QVector<double> marcas;
    eje.ticker()->generate(eje.range(), QLocale::c(), 'g', 8, marcas, nullptr, nullptr);
    marcas.removeIf([&](double marca) { return !eje.range().contains(marca); });
    for (qsizetype i = 1; i < marcas.size(); ++i)
      entre.push_back(std::abs(eje.coordToPixel(marcas[i]) - eje.coordToPixel(marcas[i - 1])));
    return entre;
  }
};

TEST_P(EjesDelHidrograma, NingunNumeroTapaAOtroYElRotuloCabe) {
  QFont letra = grafico.font();
  letra.setPixelSize(GetParam().letra);
  grafico.setFont(letra);
  grafico.resize(GetParam().tamano);
  auto& lienzo = dynamic_cast<QCustomPlot&>(Lienzo());
  for (const char* hasta : {"1.3", "2.6", "4", "7", "19", "998"}) {
    SCOPED_TRACE(hasta);
    grafico.Mostrar(ContenidoDe({CanalDe("EA01", {{"10:00", "0.2"}, {"10:10", hasta}, {"23:50", "1"}})}));
    grafico.Redibujar();
    const QCPAxis& valores = *lienzo.axisRect()->axis(QCPAxis::atLeft);
    const QFontMetricsF medida(valores.tickLabelFont());
    const auto alturas = EntreMarcas(valores);
    EXPECT_THAT(alturas, Each(Ge(medida.height())));
    EXPECT_GE(alturas.size(), valores.axisRect()->height() > 4 * medida.height() ? 1U : 0U);
    EXPECT_THAT(EntreMarcas(*lienzo.axisRect()->axis(QCPAxis::atBottom)),
                Each(Ge(medida.horizontalAdvance("00/00/0000"))));
    EXPECT_LE(medida.horizontalAdvance(valores.label()), valores.axisRect()->height());
    EXPECT_EQ(U(valores.label()), GetParam().rotulo);
  }
}

INSTANTIATE_TEST_SUITE_P(Tamanos, EjesDelHidrograma,
                         testing::Values(CasoEjes{{900, 400}, 13, "EA01 Nivel (m)"},
                                         CasoEjes{{900, 400}, 26, "EA01 Nivel (m)"},
                                         CasoEjes{{500, 216}, 26, "EA01 (m)"}, CasoEjes{{400, 170}, 26, "EA01"}));

// Words about limits beyond the axis: where the newest values peak they stand at the other side.
TEST_F(PruebaHidrograma, LasPalabrasDeUnLimiteNoTapanLaCurva) {
  const std::vector<LimiteSerie> lejos{{ClaseLimite::kValidacion, "VMax", "Máximo válido", 2000},
                                       {ClaseLimite::kValidacion, "VMax", "Otro máximo", 2000},
                                       {ClaseLimite::kAlarma, "AMax", "Alarma de máxima", 1000}};
  const auto partes = [&](const Muestras& muestras) {
    QImage imagen(900, 400, QImage::Format_RGB32);
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    PintarGrafico(ContenidoDe({CanalDe("EA01", muestras, lejos)}), pintor, imagen.rect());
    std::pair<int, int> mitades;
    const QRgb rojo = ColoresDeGrafico(PaletaDe(Tema::kClaro)).alarma.rgb();
    for (int y = 0; y < imagen.height(); ++y) {
      for (int x = 0; x < imagen.width(); ++x) {
        if (imagen.pixel(x, y) == rojo) ++(x < imagen.width() / 2 ? mitades.first : mitades.second);
      }
    }
    return mitades;
  };
  const auto sube = partes({{"10:00", "1"}, {"10:10", "1"}, {"10:20", "1"}, {"10:30", "1"}, {"10:40", "9"}});
  EXPECT_GT(sube.first, 0);
  EXPECT_EQ(sube.second, 0);
  const auto baja = partes({{"10:00", "9"}, {"10:10", "1"}, {"10:20", "1"}, {"10:30", "1"}, {"10:40", "1"}});
  EXPECT_EQ(baja.first, 0);
  EXPECT_GT(baja.second, 0);
}

}  // namespace
}  // namespace utr
