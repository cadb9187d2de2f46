#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionGroupBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "widgets/Apariencia.h"
#include "widgets/Iconos.h"
#include "widgets/Recuerdos.h"
#include "widgets/Temas.h"

namespace utr {
namespace {

constexpr Tema kTemas[] = {Tema::kClaro, Tema::kOscuro, Tema::kExteriores};

// A text role and the ground that it is read on.
struct Pareja {
  QPalette::ColorGroup grupo;
  QPalette::ColorRole texto;
  QPalette::ColorRole fondo;
  double claro_u_oscuro;
  double exteriores;
};
constexpr Pareja kParejas[] = {
    {QPalette::Active, QPalette::WindowText, QPalette::Window, 4.5, 7},
    {QPalette::Active, QPalette::Text, QPalette::Base, 4.5, 7},
    {QPalette::Active, QPalette::Text, QPalette::AlternateBase, 4.5, 7},
    {QPalette::Active, QPalette::ButtonText, QPalette::Button, 4.5, 7},
    {QPalette::Active, QPalette::ButtonText, QPalette::Window, 4.5, 7},
    {QPalette::Active, QPalette::PlaceholderText, QPalette::Base, 4.5, 7},
    {QPalette::Active, QPalette::PlaceholderText, QPalette::Window, 4.5, 7},
    {QPalette::Active, QPalette::HighlightedText, QPalette::Highlight, 4.5, 7},
    {QPalette::Inactive, QPalette::HighlightedText, QPalette::Highlight, 4.5, 7},
    {QPalette::Active, QPalette::ToolTipText, QPalette::ToolTipBase, 4.5, 7},
    {QPalette::Active, QPalette::Link, QPalette::Window, 4.5, 7},
    {QPalette::Disabled, QPalette::WindowText, QPalette::Window, 3, 7},
    {QPalette::Disabled, QPalette::Text, QPalette::Base, 3, 7},
    {QPalette::Disabled, QPalette::ButtonText, QPalette::Button, 3, 7},
    {QPalette::Disabled, QPalette::HighlightedText, QPalette::Highlight, 3, 7},
};

TEST(Temas, CadaTextoSeLeeSobreSuFondo) {
  for (const Tema tema : kTemas) {
    const QPalette paleta = PaletaDe(tema);
    for (const Pareja& pareja : kParejas) {
      const double minimo = tema == Tema::kExteriores ? pareja.exteriores : pareja.claro_u_oscuro;
      EXPECT_GE(Contraste(paleta.color(pareja.grupo, pareja.texto), paleta.color(pareja.grupo, pareja.fondo)), minimo)
          << "tema " << static_cast<int>(tema) << ", grupo " << pareja.grupo << ", papel " << pareja.texto << " sobre "
          << pareja.fondo;
    }
    for (const auto papel : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button}) {
      for (const Matiz matiz :
           {Matiz::kAcento, Matiz::kAlerta, Matiz::kBien, Matiz::kMal, Matiz::kAviso, Matiz::kAparte}) {
        EXPECT_GE(Contraste(ColorDe(matiz, paleta), paleta.color(papel)), tema == Tema::kExteriores ? 7 : 4.5)
            << "tema " << static_cast<int>(tema) << ", matiz " << static_cast<int>(matiz) << " sobre " << papel;
      }
    }
    EXPECT_EQ(TemaDe(paleta), tema);
  }
  // Outdoors no text is grey, not even that of what is disabled.
  const QPalette exteriores = PaletaDe(Tema::kExteriores);
  for (const auto grupo : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
      EXPECT_EQ(exteriores.color(grupo, papel), QColor(Qt::black)) << grupo << ", " << papel;
  }
  EXPECT_EQ(Contraste(Qt::black, Qt::white), 21);
  EXPECT_NEAR(Contraste(QColor("#777777"), Qt::white), 4.48, 0.005);
}

// The colours that a drawing leaves on a clear ground, each wholly opaque.
std::vector<QColor> Colores(const QPixmap& dibujo) {
  const QImage imagen = dibujo.toImage().convertToFormat(QImage::Format_ARGB32);
  std::vector<QColor> colores;
  for (int y = 0; y < imagen.height(); ++y) {
    for (int x = 0; x < imagen.width(); ++x) {
      const QColor color = imagen.pixelColor(x, y);
      const bool nuevo = std::find(colores.begin(), colores.end(), color) == colores.end();
      if (color.alpha() == 255 && nuevo) colores.push_back(color);
    }
  }
  return colores;
}

TEST(Temas, LosIconosSeVenEnCadaTemaYApagadosNoParecenVivos) {
  for (const Tema tema : kTemas) {
    AplicarTema(tema);
    const QPalette paleta = PaletaDe(tema);
    for (const char* nombre : {"agenda", "aviso", "desconectar", "mensaje-aviso"}) {
      const QIcon icono = IconoDe(nombre);
      const QSize lado(96, 96);
      const auto apagado = Colores(icono.pixmap(lado, QIcon::Disabled));
      EXPECT_EQ(apagado, std::vector{paleta.color(QPalette::Disabled, QPalette::ButtonText)}) << nombre;
      const auto elegido = Colores(icono.pixmap(lado, QIcon::Selected));
      EXPECT_EQ(elegido, std::vector{paleta.color(QPalette::HighlightedText)}) << nombre;
      const auto vivo = Colores(icono.pixmap(lado));
      const auto acentos = std::count_if(vivo.begin(), vivo.end(), [&](const QColor& color) {
        return color == ColorDe(Matiz::kAcento, paleta) || color == ColorDe(Matiz::kAlerta, paleta) ||
               color == ColorDe(Matiz::kAviso, paleta);
      });
      EXPECT_EQ(acentos, 1) << nombre;
    }
  }
}

// What is disabled is told without any colour too.
TEST(Temas, EnExterioresLoApagadoSeDistinguePorSuForma) {
  AplicarTema(Tema::kExteriores);
  const auto de_negro = [](QPixmap dibujo) {
    QImage imagen = dibujo.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < imagen.height(); ++y) {
      for (int x = 0; x < imagen.width(); ++x) {
        const QColor color = imagen.pixelColor(x, y);
        if (color.alpha() > 127 && color.lightness() < 128) imagen.setPixelColor(x, y, Qt::black);
      }
    }
    return imagen;
  };
  QWidget ventana;
  auto* columna = new QVBoxLayout(&ventana);
  const std::vector<QWidget*> controles{new QLabel("Fecha"), new QPushButton("Traer"), new QCheckBox("Escalados"),
                                        new QLineEdit("120"), new QComboBox};
  for (QWidget* control : controles) columna->addWidget(control);
  ventana.show();
  for (QWidget* control : controles) {
    const QImage vivo = de_negro(control->grab());
    control->setEnabled(false);
    EXPECT_NE(de_negro(control->grab()), vivo) << control->metaObject()->className();
  }
  const QIcon icono = IconoDe("guardar");
  EXPECT_NE(de_negro(icono.pixmap(48, QIcon::Disabled)), de_negro(icono.pixmap(48)));
}

// Of one that isn't ticked nothing but its outline is seen.
TEST(Temas, LoQueNoEstaMarcadoSeHallaPorSuContorno) {
  const std::pair<QStyle::PrimitiveElement, QStyle::PixelMetric> marcas[] = {
      {QStyle::PE_IndicatorCheckBox, QStyle::PM_IndicatorWidth},
      {QStyle::PE_IndicatorRadioButton, QStyle::PM_ExclusiveIndicatorWidth}};
  for (const Tema tema : kTemas) {
    AplicarTema(tema);
    const QPalette paleta = QApplication::palette();
    for (const auto& [elemento, medida] : marcas) {
      for (const bool activa : {true, false}) {
        QStyleOptionButton opcion;
        opcion.palette = paleta;
        opcion.state = QStyle::State_Off | (activa ? QStyle::State_Enabled : QStyle::State_None);
        const int lado = QApplication::style()->pixelMetric(medida, &opcion);
        opcion.rect = QRect(0, 0, lado, lado);
        const QColor fondo = paleta.color(QPalette::Window);
        QImage imagen(lado, lado, QImage::Format_RGB32);
        imagen.fill(fondo);
        QPainter pintor(&imagen);
        QApplication::style()->drawPrimitive(elemento, &opcion, &pintor);
        pintor.end();
        int claros = 0;  // of what is drawn around it, looked at from its four sides
        for (int i = lado / 4; i < lado * 3 / 4; ++i) {
          for (const QPoint& punto : {QPoint(i, 0), QPoint(i, lado - 1), QPoint(0, i), QPoint(lado - 1, i)})
            claros += Contraste(imagen.pixelColor(punto), fondo) >= 3 ? 1 : 0;
        }
        // Smoothed where it is round, and dashed outdoors where it is off.
        const bool entero = elemento == QStyle::PE_IndicatorCheckBox && (tema != Tema::kExteriores || activa);
        EXPECT_GE(claros, entero ? lado : lado / 2) << static_cast<int>(tema) << ' ' << elemento << ' ' << activa;
      }
    }
  }
}

// Beside the title, where nothing but the frame is drawn.
TEST(Temas, ElMarcoDeUnGrupoNoTocaNiSuTituloNiSuContenido) {
  const QFont comun = QApplication::font();
  for (const Tema tema : kTemas) {
    for (const int porciento : {100, 200}) {
      QFont letra = comun;
      letra.setPointSizeF(letra.pointSizeF() * porciento / 100);
      QApplication::setFont(letra);
      AplicarTema(tema);
      QGroupBox grupo("Tiempos...(Minutos)");
      grupo.resize(600, 200);
      QStyleOptionGroupBox opcion;
      opcion.initFrom(&grupo);
      opcion.text = grupo.title();
      opcion.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
      const auto lugar = [&](QStyle::SubControl parte) {
        return grupo.style()->subControlRect(QStyle::CC_GroupBox, &opcion, parte, &grupo);
      };
      const QImage imagen = grupo.grab().toImage();
      const QColor fondo = imagen.pixelColor(560, 1);
      int rayas = 0;
      for (int y = 0; y < 100; ++y) {
        if (Contraste(imagen.pixelColor(560, y), fondo) < 1.5) continue;
        ++rayas;
        EXPECT_GT(y, lugar(QStyle::SC_GroupBoxLabel).bottom()) << static_cast<int>(tema) << ", " << porciento;
        EXPECT_LT(y, lugar(QStyle::SC_GroupBoxContents).top()) << static_cast<int>(tema) << ", " << porciento;
      }
      EXPECT_TRUE(rayas > 0 || tema == Tema::kClaro) << static_cast<int>(tema);
    }
  }
  QApplication::setFont(comun);
}

TEST(Temas, UnBotonApretadoSeDistingueDeUnoSuelto) {
  for (const Tema tema : kTemas) {
    AplicarTema(tema);
    QToolButton boton;
    boton.setAutoRaise(true);
    boton.setCheckable(true);
    boton.resize(32, 32);
    boton.setChecked(true);
    const QColor borde = boton.grab().toImage().pixelColor(16, 0);
    EXPECT_GE(Contraste(borde, PaletaDe(tema).color(QPalette::Window)), 3) << static_cast<int>(tema);
    boton.setChecked(false);
    EXPECT_NE(boton.grab().toImage().pixelColor(16, 0), borde);
  }
}

TEST(Temas, TemaYTamanoDelTextoSeGuardanYRigenEnSeguida) {
  const QFont del_equipo = QApplication::font();
  const Tema suyo = TemaDe(QApplication::palette());
  {
    Apariencia apariencia;
    EXPECT_EQ(apariencia.Elegido(), std::nullopt);
    EXPECT_EQ(TemaDe(QApplication::palette()), suyo);
    apariencia.Elegir(Tema::kExteriores);
    apariencia.FijarTamanoTexto(175);
    apariencia.FijarTamanoTexto(1000);  // isn't offered
  }
  QApplication::setPalette(PaletaDe(Tema::kOscuro));
  QApplication::setFont(del_equipo);
  Apariencia apariencia;
  EXPECT_EQ(apariencia.Elegido(), Tema::kExteriores);
  EXPECT_EQ(TemaDe(QApplication::palette()), Tema::kExteriores);
  EXPECT_EQ(apariencia.TamanoTexto(), 175);
  EXPECT_NEAR(QApplication::font().pointSizeF(), del_equipo.pointSizeF() * 1.75, 0.05);
  apariencia.Elegir({});
  apariencia.FijarTamanoTexto(100);
  EXPECT_EQ(TemaDe(QApplication::palette()), Tema::kOscuro) << "as the platform was at the start";
  EXPECT_EQ(QApplication::font().pointSizeF(), del_equipo.pointSizeF());
  Recuerdos("apariencia").Guardar("tema", "de papel");
  Recuerdos("apariencia").Guardar("texto", 130);
  const Apariencia dudosa;
  EXPECT_EQ(dudosa.Elegido(), std::nullopt);
  EXPECT_EQ(dudosa.TamanoTexto(), 100);
}

TEST(Temas, LasCajasLlevanLosIconosDelPrograma) {
  AplicarTema(Tema::kClaro);
  const std::pair<QMessageBox::Icon, const char*> casos[] = {{QMessageBox::Information, "mensaje-informacion"},
                                                             {QMessageBox::Warning, "mensaje-aviso"},
                                                             {QMessageBox::Critical, "mensaje-error"},
                                                             {QMessageBox::Question, "mensaje-pregunta"}};
  for (const auto& [clase, nombre] : casos) {
    QMessageBox caja;
    caja.setIcon(clase);
    ASSERT_FALSE(caja.iconPixmap().isNull());
    EXPECT_EQ(caja.iconPixmap().toImage(), IconoDe(nombre).pixmap(caja.iconPixmap().size()).toImage()) << nombre;
  }
}

}  // namespace
}  // namespace utr
