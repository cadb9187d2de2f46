#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <chrono>

#include "support/Carpeta.h"
#include "support/GuionVentanas.h"
#include "widgets/OperadorQt.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

// Runs `accion` on the next modal dialog, once it is on the screen.
template <typename Accion>
void AlAbrirse(Accion accion) {
  QTimer::singleShot(0, qApp, [accion] {
    QWidget* dialogo = QApplication::activeModalWidget();
    ASSERT_NE(dialogo, nullptr);
    accion(dialogo);
  });
}

void Pulsar(QWidget* dialogo, const QString& texto) {
  for (QPushButton* boton : dialogo->findChildren<QPushButton*>()) {
    if (boton->text().remove('&') == texto) return boton->click();
  }
  ADD_FAILURE() << "no button " << texto.toStdString();
  static_cast<QDialog*>(dialogo)->reject();
}

struct CasoRespuesta {
  Botones botones;
  const char* boton;  // null: the key Esc
  Respuesta respuesta;
};

class PruebaRespuestas : public testing::TestWithParam<CasoRespuesta> {};

TEST_P(PruebaRespuestas, LaRespuestaEsElBotonPulsado) {
  const CasoRespuesta& caso = GetParam();
  OperadorQt operador;
  AlAbrirse([&caso](QWidget* dialogo) {
    if (caso.boton == nullptr) {
      QTest::keyClick(dialogo, Qt::Key_Escape);
    } else {
      Pulsar(dialogo, QString::fromUtf8(caso.boton));
    }
  });
  Mensaje mensaje{"¿Desea continuar?", "Título", Icono::kPregunta, caso.botones};
  mensaje.opciones = {"Sólo los 3", "Todos"};
  EXPECT_EQ(operador.Mostrar(mensaje), caso.respuesta);
}

INSTANTIATE_TEST_SUITE_P(Botones, PruebaRespuestas,
                         testing::Values(CasoRespuesta{Botones::kAceptar, "Aceptar", Respuesta::kAceptar},
                                         CasoRespuesta{Botones::kAceptar, nullptr, Respuesta::kAceptar},
                                         CasoRespuesta{Botones::kAceptarCancelar, "Aceptar", Respuesta::kAceptar},
                                         CasoRespuesta{Botones::kAceptarCancelar, "Cancelar", Respuesta::kCancelar},
                                         CasoRespuesta{Botones::kAceptarCancelar, nullptr, Respuesta::kCancelar},
                                         CasoRespuesta{Botones::kSiNo, "Sí", Respuesta::kSi},
                                         CasoRespuesta{Botones::kSiNo, "No", Respuesta::kNo},
                                         CasoRespuesta{Botones::kSiNo, nullptr, Respuesta::kCerrado},
                                         CasoRespuesta{Botones::kOpciones, "Sólo los 3", Respuesta::kPrimera},
                                         CasoRespuesta{Botones::kOpciones, "Todos", Respuesta::kSegunda},
                                         CasoRespuesta{Botones::kOpciones, "Cancelar", Respuesta::kCancelar},
                                         CasoRespuesta{Botones::kOpciones, nullptr, Respuesta::kCancelar},
                                         CasoRespuesta{Botones::kAceptarOpcion, "Aceptar", Respuesta::kAceptar},
                                         CasoRespuesta{Botones::kAceptarOpcion, "Sólo los 3", Respuesta::kPrimera},
                                         CasoRespuesta{Botones::kAceptarOpcion, nullptr, Respuesta::kAceptar}));

TEST(PruebaOperadorQt, EnterRespondeLoQueElMensajeDice) {
  const struct {
    Botones botones;
    std::optional<Respuesta> defecto;
    Respuesta respuesta;
  } casos[] = {{Botones::kSiNo, std::nullopt, Respuesta::kSi},
               {Botones::kSiNo, Respuesta::kNo, Respuesta::kNo},
               {Botones::kSiNo, Respuesta::kCancelar, Respuesta::kSi},  // no button of the box
               {Botones::kAceptarCancelar, Respuesta::kCancelar, Respuesta::kCancelar},
               {Botones::kOpciones, Respuesta::kSegunda, Respuesta::kSegunda}};
  OperadorQt operador;
  for (const auto& caso : casos) {
    AlAbrirse([](QWidget* dialogo) { QTest::keyClick(dialogo, Qt::Key_Return); });
    EXPECT_EQ(operador.Mostrar({"¿?", "T", Icono::kPregunta, caso.botones, {"Una", "Otra"}, caso.defecto}),
              caso.respuesta);
  }
}

TEST(PruebaOperadorQt, UnMensajeEsTextoLlanoYSuPrimerBotonElPredeterminado) {
  OperadorQt operador;
  AlAbrirse([](QWidget* dialogo) {
    auto* caja = qobject_cast<QMessageBox*>(dialogo);
    ASSERT_NE(caja, nullptr);
    EXPECT_EQ(caja->textFormat(), Qt::PlainText);
    EXPECT_EQ(U(caja->text()), "<b>uno</b>\n[ dos ]");
    EXPECT_EQ(caja->icon(), QMessageBox::Critical);
    EXPECT_EQ(U(caja->defaultButton()->text()), "Aceptar");
    int visibles = 0;
    for (QPushButton* boton : caja->findChildren<QPushButton*>()) visibles += boton->isVisible() ? 1 : 0;
    EXPECT_EQ(visibles, 1);
    caja->accept();
  });
  operador.Mostrar({"<b>uno</b>\n[ dos ]", "Atención", Icono::kCritico, Botones::kAceptar});
}

TEST(PruebaOperadorQt, ElDetalleSeVeEntreElTextoYLosBotones) {
  OperadorQt operador;
  AlAbrirse([](QWidget* dialogo) {
    const auto& campo = Hallar<QPlainTextEdit>(*dialogo, "Detalle");
    EXPECT_EQ(U(campo.toPlainText()), "uno\ndos");
    EXPECT_TRUE(campo.isReadOnly());
    const auto* texto = dialogo->findChild<QLabel*>("qt_msgbox_label");
    EXPECT_LT(texto->geometry().bottom(), campo.geometry().top());
    EXPECT_LT(campo.geometry().bottom(), dialogo->findChild<QDialogButtonBox*>()->geometry().top());
    EXPECT_EQ(dialogo->focusWidget(), static_cast<QMessageBox*>(dialogo)->defaultButton());
    Pulsar(dialogo, "Aceptar");
  });
  Mensaje mensaje{"Errores", "T", Icono::kInformacion, Botones::kAceptarOpcion, {"Otra vez", {}}};
  mensaje.detalle = "uno\ndos";
  EXPECT_EQ(operador.Mostrar(mensaje), Respuesta::kAceptar);
}

TEST(PruebaOperadorQt, ElRelojDeArenaDejaLugarALaCajaYVuelve) {
  OperadorQt operador;
  operador.PunteroOcupado(true);
  operador.PunteroOcupado(true);
  AlAbrirse([](QWidget* dialogo) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    Pulsar(dialogo, "Aceptar");
  });
  operador.Mostrar({"x", "y"});
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  operador.PunteroOcupado(false);
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  operador.PunteroOcupado(false);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  operador.PunteroOcupado(false);  // one too many does nothing
}

TEST(PruebaOperadorQt, LoTecleadoAntesDeVerLaCajaSePierde) {
  QDialog madre;
  auto* boton = new QPushButton("Leer", &madre);
  int leidas = 0;
  QObject::connect(boton, &QPushButton::clicked, [&leidas] { ++leidas; });
  madre.show();
  madre.activateWindow();
  boton->setFocus();
  QApplication::processEvents();
  ASSERT_EQ(QApplication::activeWindow(), &madre);
  EncolarTecla(boton, Qt::Key_Space, " ");
  GuionVentanas ventanas;
  ventanas.Espera("", [](QDialog& caja) { Pulsar(&caja, "No"); });
  OperadorQt operador;
  EXPECT_EQ(operador.Mostrar({"¿Desea continuar?", "Título", Icono::kPregunta, Botones::kSiNo}), Respuesta::kNo);
  ventanas.Comprobar();
  EXPECT_EQ(leidas, 0);
}

struct CasoFiltro {
  const char* filtro;
  const char* qt;
};

TEST(PruebaOperadorQt, LosFiltrosSeTomanComoElSistemaLosEscribe) {
  const CasoFiltro casos[] = {
      {"Texto (delimitado por tabuladores)(*.txt)|*.txt", "Texto (delimitado por tabuladores) (*.txt)"},
      {"Archivo para insercion manual(*.imp)|*.imp", "Archivo para insercion manual (*.imp)"},
      {"Configuración|*.icf;*.ucg", "Configuración (*.icf *.ucg)"},
      {"Uno|*.a|Todos|*.*", "Uno (*.a);;Todos (*.*)"},
      {"Todos|*.*", "Todos (*.*)"},
      {"", ""},
  };
  for (const CasoFiltro& caso : casos) EXPECT_EQ(U(FiltroQt(caso.filtro)), caso.qt);
}

struct CasoExtension {
  const char* nombre;
  const char* filtro;
  int cual;
  const char* completo;
};

TEST(PruebaOperadorQt, UnNombreTomaLaExtensionDeSuFiltroSiLeFalta) {
  constexpr const char* kTexto = "Texto (*.txt)|*.txt";
  constexpr const char* kVarios = "Uno|*.a|Dos|*.icf;*.ucg|Todos|*.*";
  const CasoExtension casos[] = {
      {"datos", kTexto, 0, "datos.txt"},
      {"datos 01.11.2026", kTexto, 0, "datos 01.11.2026.txt"},
      {"datos.txt", kTexto, 0, "datos.txt"},
      {"DATOS.TXT", kTexto, 0, "DATOS.TXT"},
      {"datos.imp", kTexto, 0, "datos.imp.txt"},
      {"datostxt", kTexto, 0, "datostxt.txt"},
      {"datos", kTexto, -1, "datos.txt"},
      {"x", kVarios, 0, "x.a"},
      {"x", kVarios, 1, "x.icf"},
      {"x.UCG", kVarios, 1, "x.UCG"},
      {"x.1", kVarios, 2, "x.1"},
      {"x.icf", kVarios, 0, "x.icf"},
      {"x.png", "Documento PDF (*.pdf)|*.pdf|Imagen PNG (*.png)|*.png", 0, "x.png"},
      {"x.png.txt", "Documento PDF (*.pdf)|*.pdf|Imagen PNG (*.png)|*.png", 1, "x.png.txt.png"},
      {"x", "", 0, "x"},
      {"", kTexto, 0, ""},
  };
  for (const CasoExtension& caso : casos) {
    EXPECT_EQ(U(ConExtension(QString::fromUtf8(caso.nombre), caso.filtro, caso.cual)), caso.completo);
  }
}

PedidoArchivo Pedido(const prueba::Carpeta& carpeta) {
  return {"Exportar ...", "Texto (delimitado por tabuladores)(*.txt)|*.txt", carpeta.Ruta(), {}};
}

void Escribir(QWidget* dialogo, const QString& nombre) {
  auto* campo = dialogo->findChild<QLineEdit*>("fileNameEdit");
  ASSERT_NE(campo, nullptr);
  campo->setText(nombre);
}

TEST(PruebaOperadorQt, GuardarAgregaLaExtensionYPreguntaAntesDeReemplazar) {
  const prueba::Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "lista.txt", "viejo");
  OperadorQt operador;
  bool preguntado = false;
  AlAbrirse([&preguntado](QWidget* dialogo) {
    EXPECT_EQ(U(dialogo->windowTitle()), "Exportar ...");
    Escribir(dialogo, "lista");
    AlAbrirse([&preguntado](QWidget* pregunta) {
      preguntado = qobject_cast<QMessageBox*>(pregunta) != nullptr;
      QTest::keyClick(pregunta, Qt::Key_Escape);
    });
    Pulsar(dialogo, "Guardar");
    EXPECT_TRUE(dialogo->isVisible()) << "the operator didn't want to replace the file";
    Pulsar(dialogo, "Cancelar");
  });
  EXPECT_FALSE(operador.ElegirGuardar(Pedido(carpeta)).has_value());
  EXPECT_TRUE(preguntado);
  for (const auto& [escrito, guardado] :
       {std::pair{"otra", "otra.txt"}, {"datos 01.11.2026", "datos 01.11.2026.txt"}, {"nueva.TXT", "nueva.TXT"}}) {
    AlAbrirse([escrito = escrito](QWidget* dialogo) {
      Escribir(dialogo, escrito);
      Pulsar(dialogo, "Guardar");
    });
    EXPECT_EQ(operador.ElegirGuardar(Pedido(carpeta)), carpeta / guardado);
  }
  PedidoArchivo sin_carpeta = Pedido(carpeta);
  sin_carpeta.carpeta.clear();
  AlAbrirse([&carpeta](QWidget* dialogo) {
    Escribir(dialogo, Q((carpeta / "honda" / "una.txt").string()));
    Pulsar(dialogo, "Guardar");
  });
  std::filesystem::create_directory(carpeta / "honda");
  EXPECT_TRUE(operador.ElegirGuardar(sin_carpeta).has_value());
  AlAbrirse([&carpeta](QWidget* dialogo) {
    Escribir(dialogo, Q(carpeta.Ruta().string()));
    Pulsar(dialogo, "Open");
    EXPECT_TRUE(dialogo->isVisible()) << "a folder is gone to";
    EXPECT_EQ(U(dialogo->findChild<QLineEdit*>("fileNameEdit")->text()), "");
    static_cast<QDialog*>(dialogo)->reject();
  });
  EXPECT_FALSE(operador.ElegirGuardar(sin_carpeta).has_value());
  AlAbrirse([](QWidget* dialogo) {
    Escribir(dialogo, "dos");
    Pulsar(dialogo, "Guardar");
  });
  EXPECT_EQ(operador.ElegirGuardar(sin_carpeta), carpeta / "honda" / "dos.txt") << "the folder of the last file";
}

TEST(PruebaOperadorQt, LosArchivosSeVenConSuFechaElDiaPrimeroYLasCarpetasDelante) {
  const prueba::Carpeta carpeta;
  const auto momento = [](int dias) {
    return std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * dias);
  };
  for (const auto& [nombre, dias] : {std::pair{"a.txt", 3}, {"b.txt", 40}, {"c.txt", 1}}) {
    prueba::EscribirTodo(carpeta / nombre, "x");
    std::filesystem::last_write_time(carpeta / nombre, momento(dias));
  }
  std::filesystem::create_directory(carpeta / "z");
  OperadorQt operador;
  PedidoArchivo pedido = Pedido(carpeta);
  pedido.nombre = "propuesto.txt";
  AlAbrirse([](QWidget* dialogo) {
    EXPECT_EQ(U(dialogo->findChild<QLineEdit*>("fileNameEdit")->text()), "propuesto.txt");
    auto* vista = dialogo->findChild<QTreeView*>("treeView");
    EXPECT_TRUE(QTest::qWaitFor([&] { return vista->model()->rowCount(vista->rootIndex()) == 4; }));
    vista->sortByColumn(3, Qt::AscendingOrder);
    std::string nombres;
    for (int i = 0; i < 4; ++i) {
      const QModelIndex fila = vista->model()->index(i, 0, vista->rootIndex());
      nombres += U(fila.data().toString()) + " ";
      EXPECT_TRUE(QRegularExpression("^\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d$")
                      .match(fila.siblingAtColumn(3).data().toString())
                      .hasMatch());
    }
    EXPECT_EQ(nombres, "z b.txt a.txt c.txt ");
    Pulsar(dialogo, "Cancelar");
  });
  EXPECT_FALSE(operador.ElegirGuardar(pedido).has_value());
}

TEST(PruebaOperadorQt, NombreYFechaDeLosArchivosTienenLugarConLetrasGrandes) {
  const prueba::Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "a.txt", "x");
  const QFont comun = QApplication::font();
  for (const int pixeles : {13, 26, 40}) {
    QFont letra = comun;
    letra.setPixelSize(pixeles);
    QApplication::setFont(letra);
    OperadorQt operador;
    AlAbrirse([&](QWidget* dialogo) {
      const auto* vista = dialogo->findChild<QTreeView*>("treeView");
      const QFontMetrics medida = vista->fontMetrics();
      EXPECT_EQ(medida.height(), QFontMetrics(letra).height());
      EXPECT_GT(vista->columnWidth(3), medida.horizontalAdvance("24/11/2026 15:31")) << pixeles;
      EXPECT_GE(vista->columnWidth(0), 30 * medida.averageCharWidth()) << pixeles;
      Pulsar(dialogo, "Cancelar");
    });
    EXPECT_FALSE(operador.ElegirGuardar(Pedido(carpeta)).has_value());
  }
  QApplication::setFont(comun);
}

TEST(PruebaOperadorQt, UnDialogoCanceladoNoDaNada) {
  const prueba::Carpeta carpeta;
  OperadorQt operador;
  AlAbrirse([](QWidget* dialogo) { Pulsar(dialogo, "Cancelar"); });
  EXPECT_FALSE(operador.ElegirGuardar(Pedido(carpeta)).has_value());
  AlAbrirse([](QWidget* dialogo) { QTest::keyClick(dialogo, Qt::Key_Escape); });
  EXPECT_FALSE(operador.ElegirAbrir(Pedido(carpeta)).has_value());
  AlAbrirse([](QWidget* dialogo) {
    EXPECT_EQ(U(dialogo->windowTitle()), "Configurar Impresora");
    Pulsar(dialogo, "Cancelar");
  });
  EXPECT_FALSE(operador.ElegirImpresora("Configurar Impresora", {}).has_value());
}

TEST(PruebaOperadorQt, ElPapelSeEligeHayaONoImpresoraYLaQueFaltaSeDice) {
  OperadorQt operador;
  AlAbrirse([](QWidget* dialogo) {
    EXPECT_EQ(U(dialogo->findChild<QLabel*>("lblFalta")->text()), "La impresora \"Vendida\" ya no está instalada.");
    dialogo->findChild<QComboBox*>("cboPapel")->setCurrentIndex(1);
    QTest::mouseClick(dialogo->findChild<QRadioButton*>("optApaisado"), Qt::LeftButton);
    Pulsar(dialogo, "Aceptar");
  });
  const auto eleccion = operador.ElegirImpresora("Configurar Impresora", {"Vendida", 1});
  ASSERT_TRUE(eleccion.has_value());
  EXPECT_EQ(eleccion->papel, Papel::kCarta);
  EXPECT_TRUE(eleccion->apaisado);
  EXPECT_EQ(U(QPrinterInfo::availablePrinterNames().value(0)).empty(), eleccion->nombre.empty());
}

}  // namespace
}  // namespace utr
