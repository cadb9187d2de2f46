#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <QWhatsThis>
#include <QWindow>

#include "help/windows/AyudanteQt.h"
#include "session/windows/frmPuerto.h"
#include "shell/windows/AccionesPpal.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

frmAyuda* VentanaDeAyuda() {
  const auto ventanas = QApplication::topLevelWidgets();
  for (QWidget* ventana : ventanas) {
    if (auto* ayuda = qobject_cast<frmAyuda*>(ventana)) return ayuda;
  }
  return nullptr;
}

class Ayuda : public testing::Test {
 protected:
  Ayuda() { base_.mod.archivo_ayuda = ARCHIVO_AYUDA; }

  QString Cache() const { return Q((base_.carpeta.Ruta() / "cache").string()); }
  static QString PaginaALaVista() { return VentanaDeAyuda()->findChild<QTextBrowser*>("Pagina")->source().fileName(); }

  prueba::ModPrueba base_;
  AyudanteQt ayudante_{base_.mod.archivo_ayuda, base_.operador, Cache()};
};

TEST_F(Ayuda, F1AbreLaPaginaDeLaVentanaYAtiendeAlLadoDeUnDialogo) {
  frmPuerto dialogo(base_.mod);
  dialogo.setModal(true);
  dialogo.show();
  auto& boton = Hallar<QPushButton>(dialogo, "cmdAyuda");
  EXPECT_TRUE(boton.isEnabled());
  boton.click();
  ASSERT_NE(VentanaDeAyuda(), nullptr);
  EXPECT_EQ(PaginaALaVista(), "puerto.html");
  // A window of its dialog is not shut out by it.
  EXPECT_EQ(VentanaDeAyuda()->windowHandle()->transientParent(), dialogo.windowHandle());

  QDialog sin_pagina(&dialogo);  // of a window that no page is about: that of its window
  QLineEdit campo(&sin_pagina);
  sin_pagina.setModal(true);
  sin_pagina.show();
  AbrirAyuda(base_.mod.archivo_ayuda, sin_pagina, EntradaAyuda::kContenido);
  EXPECT_EQ(PaginaALaVista(), "inicio.html");
  EXPECT_EQ(VentanaDeAyuda()->windowHandle()->transientParent(), sin_pagina.windowHandle());
  QTest::keyClick(&campo, Qt::Key_F1);
  EXPECT_EQ(PaginaALaVista(), "puerto.html");
  QMessageBox caja(&sin_pagina);
  caja.show();
  QTest::keyClick(&caja, Qt::Key_F1);
  EXPECT_EQ(PaginaALaVista(), "mensajes.html");
}

TEST_F(Ayuda, UnDialogoQueSeAbreDespuesNoLaDejaAfuera) {
  QWidget ventana;
  ventana.show();
  AbrirAyuda(base_.mod.archivo_ayuda, ventana);
  QDialog dialogo(&ventana);
  dialogo.setModal(true);
  dialogo.show();
  QCoreApplication::processEvents();
  EXPECT_EQ(VentanaDeAyuda()->windowHandle()->transientParent(), dialogo.windowHandle());
}

TEST_F(Ayuda, CadaControlDiceQueEs) {
  frmPuerto dialogo(base_.mod);
  ayudante_.Explicar(dialogo);
  EXPECT_EQ(dialogo.whatsThis(), "Cambia por dónde se llega a la UTR, sin leer nada de ella.");
  EXPECT_TRUE(Hallar<QWidget>(dialogo, "CVelocidad").whatsThis().contains("19200"));
  EXPECT_FALSE(Hallar<QWidget>(dialogo, "cmdAyuda").whatsThis().isEmpty());
}

// Also where the key is that of a command.
TEST_F(Ayuda, LaTeclaDiceQueEsElControlQueTieneElTeclado) {
  QWidget ventana;
  ventana.setObjectName("frmDatos");
  QLineEdit campo(&ventana);
  campo.setObjectName("Canales");
  int pedidos = 0;
  const QShortcut atajo(QKeySequence::WhatsThis, &ventana, &ventana, [&] { ++pedidos; });
  ventana.show();
  QTest::keyClick(&campo, Qt::Key_F1, Qt::ShiftModifier);
  EXPECT_EQ(campo.whatsThis(), "Los canales habilitados que guardan historia.");
  EXPECT_EQ(pedidos, 0);
  QWhatsThis::hideText();
}

TEST_F(Ayuda, BuscaPalabrasSinMirarAcentos) {
  LibroAyuda libro;
  ASSERT_EQ(libro.Abrir(base_.mod.archivo_ayuda, Cache()), "");
  frmAyuda ventana(libro);
  QSignalSpy buscado(&ventana, &frmAyuda::Buscado);
  auto& lista = Hallar<QListWidget>(ventana, "Hallados");
  const auto buscar = [&](const char* palabras) {
    Hallar<QLineEdit>(ventana, "txtBuscar").setText(palabras);
    Hallar<QPushButton>(ventana, "cmdBuscar").click();
    while (Hallar<QLabel>(ventana, "lblHallados").text() == "Buscando...") buscado.wait();
  };
  buscar("contrasena MODIFICAR");
  ASSERT_EQ(lista.findItems("Modificar contraseña", Qt::MatchExactly).size(), 1);
  emit lista.itemActivated(lista.findItems("Modificar contraseña", Qt::MatchExactly).front());
  EXPECT_EQ(Hallar<QTextBrowser>(ventana, "Pagina").source().fileName(), "cambiar-contrasena.html");
  const auto en_el_contenido = [&] {
    return Hallar<QTreeView>(ventana, "Contenido").currentIndex().data().toString().toStdString();
  };
  EXPECT_EQ(en_el_contenido(), "Modificar contraseña");  // as the page on show
  ventana.IrA(libro.Portada());
  EXPECT_EQ(en_el_contenido(), "AdminUTR");
  buscar("frmPuerto");  // what the operator can't read isn't searched
  EXPECT_EQ(lista.count(), 0);
  buscar("\"*(xyzzy -");  // signs are no words
  EXPECT_EQ(lista.count(), 0);
  EXPECT_EQ(Hallar<QLabel>(ventana, "lblHallados").text(), "Ninguna página tiene esas palabras.");
}

TEST_F(Ayuda, CadaEnlaceDelArchivoLlevaAUnaPagina) {
  LibroAyuda libro;
  ASSERT_EQ(libro.Abrir(base_.mod.archivo_ayuda, Cache()), "");
  static const QRegularExpression enlace("href=\"([^\"]*)\"");
  QList<QUrl> paginas{libro.Portada()};
  for (qsizetype i = 0; i < paginas.size(); ++i) {
    const QByteArray texto = libro.Leer(paginas[i]);
    EXPECT_FALSE(texto.isEmpty()) << paginas[i].toString().toStdString();
    auto enlaces = enlace.globalMatch(QString::fromUtf8(texto));
    while (enlaces.hasNext()) {
      const QUrl destino = paginas[i].resolved(enlaces.next().captured(1));
      if (!paginas.contains(destino)) paginas.append(destino);
    }
  }
  EXPECT_GT(paginas.size(), 30);
}

struct AyudaRota {
  const char* que;
  const char* archivo;  // what is in it
  bool cache_ocupado;   // a file stands where the folder should be
  const char* dice;
};

class AyudasRotas : public testing::TestWithParam<AyudaRota> {};

TEST_P(AyudasRotas, SeDicenYNadaMas) {
  prueba::Carpeta carpeta;
  OperadorGuion operador;
  std::filesystem::path archivo = carpeta / "AdminUTR.hlp";
  if (GetParam().archivo == nullptr) {
    std::filesystem::copy_file(ARCHIVO_AYUDA, archivo);
  } else {
    prueba::EscribirTodo(archivo, GetParam().archivo);
  }
  if (GetParam().cache_ocupado) prueba::EscribirTodo(carpeta / "ocupado", "");
  AyudanteQt ayudante(archivo, operador, Q((carpeta / "ocupado" / "cache").string()));
  QWidget ventana;
  operador.EsperaParte(GetParam().dice);
  AbrirAyuda(archivo, ventana);
  EXPECT_EQ(VentanaDeAyuda(), nullptr);
  ayudante.Explicar(ventana);  // says nothing
}

INSTANTIATE_TEST_SUITE_P(Casos, AyudasRotas,
                         testing::Values(AyudaRota{"garbage", "esto no es una ayuda", false, "está dañado"},
                                         AyudaRota{"empty", "", false, "está dañado"},
                                         AyudaRota{"no cache", nullptr, true, "No se puede escribir en la carpeta"}));

// The page of the keyboard is written by hand; the keys are those of the table of actions.
TEST(TecladoDeLaAyuda, TieneLasTeclasDeCadaAccion) {
  const std::string pagina = prueba::LeerTodo(std::filesystem::path(CARPETA_DATOS) / "ayuda" / "teclado.xml");
  const auto comprobar = [&](const auto& acciones) {
    for (const AccionPpal& accion : acciones) {
      const std::string fila = "<td>" + U(QString(accion.tecla).replace("Shift", "Mayús")) + "</td><td>" +
                               U(QString(accion.texto).remove('&')) + "</td>";
      EXPECT_NE(pagina.find(fila), std::string::npos) << fila;
    }
  };
  comprobar(kAcciones);
  comprobar(kAvanzadas);
  comprobar(kVisita);
}

TEST(AyudaSinArchivo, NoSeOfrece) {
  prueba::ModPrueba base;
  base.mod.archivo_ayuda = base.carpeta / "AdminUTR.hlp";
  const AyudanteQt ayudante(base.mod.archivo_ayuda, base.operador);
  frmPuerto dialogo(base.mod);
  EXPECT_FALSE(Hallar<QPushButton>(dialogo, "cmdAyuda").isEnabled());
  QTest::keyClick(&dialogo, Qt::Key_F1);
  EXPECT_EQ(VentanaDeAyuda(), nullptr);
}

}  // namespace
}  // namespace utr
