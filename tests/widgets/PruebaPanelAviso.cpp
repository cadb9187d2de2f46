#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "widgets/Iconos.h"
#include "widgets/PanelAviso.h"
#include "widgets/Tamanos.h"

namespace utr {
namespace {

TEST(PruebaZonaLista, SeVenLosPanelesDichosOSiNoLaLista) {
  auto* lista = new QLabel("lista");
  ZonaLista zona(lista);
  PanelAviso* uno = zona.Agregar("picInfo", "Espere...");
  PanelAviso* otro = zona.Agregar("picSinDatos", "Sin datos");
  zona.show();
  EXPECT_TRUE(lista->isVisible());
  EXPECT_FALSE(uno->isVisible());
  zona.Mostrar({uno});
  EXPECT_TRUE(uno->isVisible());
  EXPECT_FALSE(otro->isVisible());
  EXPECT_FALSE(lista->isVisible());
  zona.Mostrar({uno, otro});
  EXPECT_TRUE(uno->isVisible() && otro->isVisible());
  zona.Mostrar({});
  EXPECT_TRUE(lista->isVisible());
  EXPECT_FALSE(uno->isVisible() || otro->isVisible());
}

constexpr int kRondas = 10;  // of events, until the layouts and what waits for them have settled

// A screen too small for the window: the body scrolls, and the button that ends the wait comes last.
TEST(PruebaZonaLista, UnPanelBajoElBordeSeTraeALaVistaConSuBoton) {
  QScrollArea area;
  auto* cuerpo = new QWidget;
  auto* columna = new QVBoxLayout(cuerpo);
  auto* encima = new QLabel("campos");
  encima->setMinimumHeight(400);
  auto* zona = new ZonaLista(new QLabel("lista"));
  PanelAviso* panel = zona->Agregar("picInfo", "Espere...");
  columna->addWidget(encima);
  columna->addWidget(zona);
  area.setWidget(cuerpo);
  area.setWidgetResizable(true);
  area.resize(500, 300);
  area.show();
  const auto a_la_vista = [&area](QWidget* cual) {
    for (int ronda = 0; ronda < kRondas; ++ronda) QCoreApplication::processEvents();
    const QRect lugar(cual->mapTo(area.viewport(), QPoint()), cual->size());
    return area.viewport()->rect().contains(lugar);
  };
  zona->Mostrar({panel});
  EXPECT_TRUE(a_la_vista(panel));
  panel->Boton("cmdCancelar", "Cancelar")->show();
  EXPECT_TRUE(a_la_vista(panel->Boton("cmdCancelar", "Cancelar")));
}

QRgb ColorMasOscuro(const QImage& imagen) {
  QRgb oscuro = qRgb(255, 255, 255);
  for (int y = 0; y < imagen.height(); ++y) {
    for (int x = 0; x < imagen.width(); ++x) {
      const QRgb punto = imagen.pixel(x, y);
      if (qAlpha(punto) > 200 && qGray(punto) < qGray(oscuro)) oscuro = punto;
    }
  }
  return oscuro;
}

TEST(PruebaIconos, LosIconosSiguenElColorDeLaPaleta) {
  const QPalette antes = QApplication::palette();
  const QIcon icono = IconoDe("guardar");
  QPalette clara = antes;
  clara.setColor(QPalette::ButtonText, QColor(10, 20, 30));
  QApplication::setPalette(clara);
  const QRgb oscuro = ColorMasOscuro(icono.pixmap(48, 48).toImage());
  EXPECT_LT(qGray(oscuro), 60);
  QPalette oscura = antes;
  oscura.setColor(QPalette::ButtonText, QColor(240, 240, 240));
  QApplication::setPalette(oscura);
  EXPECT_GT(qGray(ColorMasOscuro(icono.pixmap(48, 48).toImage())), qGray(oscuro) + 40);
  QApplication::setPalette(antes);
  EXPECT_TRUE(IconoDe("no-existe").isNull());
}

TEST(PruebaTamanos, UnaVentanaVuelveConElTamanoConQueQuedo) {
  const auto abrir = [](const char* nombre, const QSize& cambio) {
    QWidget ventana;
    ventana.setObjectName(nombre);
    ventana.resize(320, 200);
    RecordarTamano(&ventana);
    ventana.show();
    const QSize hallado = ventana.size();
    ventana.resize(cambio);
    ventana.close();
    return hallado;
  };
  EXPECT_EQ(abrir("frmPrueba", QSize(500, 340)), QSize(320, 200));
  EXPECT_EQ(abrir("frmPrueba", QSize(510, 350)), QSize(500, 340));
  EXPECT_EQ(abrir("frmOtra", QSize(5000, 400)), QSize(320, 200));
  EXPECT_LT(abrir("frmOtra", QSize(400, 400)).width(), QGuiApplication::primaryScreen()->availableSize().width())
      << "it was closed on a larger screen";
}

TEST(PruebaTamanos, UnDialogoVuelveSobreSuMadre) {
  QWidget madre;
  madre.setGeometry(200, 150, 400, 300);
  const auto abrir = [&](const QPoint& lugar) {
    QDialog dialogo(&madre);
    dialogo.setObjectName("frmCentrado");
    dialogo.resize(200, 100);
    RecordarTamano(&dialogo);
    dialogo.show();
    const QPoint hallado = dialogo.geometry().center();
    dialogo.move(lugar);
    dialogo.close();
    return hallado;
  };
  const QPoint primero = abrir(QPoint(0, 0));
  EXPECT_EQ(abrir(QPoint(500, 400)), primero);
}

}  // namespace
}  // namespace utr
