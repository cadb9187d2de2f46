#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

#include "configuration/Predefinidas.h"
#include "configuration/windows/frmPredefinidas.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

const std::string kPedido = "Abrir parametrizaciones...";
const std::string kSinConjuntos = "No hay parametrizaciones definidas para este tipo de sensor";
const fs::path kEjemplo = fs::path(CARPETA_DATOS) / "ParametrizacionesEjemplo.ipf";

class Predefinidas : public prueba::ModPrueba, public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(usb);
    fs::copy_file(kEjemplo, usb / "Cuenca.ipf");
  }

  void Jugar(const std::function<void(QDialog&)>& paso) {
    ventanas.Espera("frmPredefinidas", paso);
    ventana.exec();
  }

  std::string Celda(int fila, int columna) {
    const QAbstractItemModel& modelo = *Hallar<QTreeView>(ventana, "Lista").model();
    return modelo.index(fila, columna).data().toString().toStdString();
  }
  std::string Dato(const char* nombre) { return Hallar<QLabel>(ventana, nombre).text().toStdString(); }

  const fs::path usb = carpeta / "usb";
  const fs::path copia = carpeta / "Cuenca.ipf";
  GuionVentanas ventanas;
  frmPredefinidas ventana{mod};
};

TEST_F(Predefinidas, UnArchivoElegidoQuedaEnUsoYSuCopiaJuntoAlPrograma) {
  operador.EsperaAbrir(kPedido, usb / "Cuenca.ipf");
  EXPECT_EQ(ventana.CargarParametrizaciones(2), 3);
  EXPECT_EQ(operador.pedidos.at(0).filtro, "Archivos de parametrización (*.ipf)|*.ipf");
  EXPECT_EQ(mod.ruta_predefinida, copia.string());
  EXPECT_EQ(prueba::LeerTodo(copia), prueba::LeerTodo(kEjemplo));
  Propiedades guardadas(propiedades.Archivo());
  guardadas.CargarPropiedades();
  EXPECT_EQ(guardadas.LeerTexto(clave::kParametrizaciones, ""), copia.string());
  EXPECT_EQ(Dato("lblArchivo"), "Cuenca.ipf");
  EXPECT_EQ(Errores(), "");
  // The second time it isn't asked for, nor is the key read.
  propiedades.Escribir(clave::kParametrizaciones, std::string("/otra.ipf"), std::string());
  EXPECT_EQ(ventana.CargarParametrizaciones(5), 2);
  EXPECT_EQ(Celda(0, 0), "Puerta de la casilla");
}

TEST_F(Predefinidas, SeEligeUnConjuntoDeLaFamilia) {
  mod.ruta_predefinida = kEjemplo.string();
  ASSERT_EQ(ventana.CargarParametrizaciones(4), 2);
  Jugar([this](QDialog& dialogo) {
    auto& lista = Hallar<QTreeView>(dialogo, "Lista");
    const char* titulos[] = {"Nombre", "Fecha de creación", "Tipo de sensor"};
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(lista.model()->headerData(i, Qt::Horizontal).toString().toStdString(), titulos[i]);
    EXPECT_EQ(Celda(0, 0) + "|" + Celda(0, 1) + "|" + Celda(0, 2), "Lluvia, cada 5 minutos|14/03/2026|Pluviométrico");
    EXPECT_EQ(lista.currentIndex().row(), 0);
    for (int i = 0; i < 5; ++i) {
      const std::string panel = "Panel(" + std::to_string(i) + ")";
      EXPECT_EQ(Hallar<QGroupBox>(dialogo, panel.c_str()).isVisible(), i == 3) << panel;
    }
    EXPECT_EQ(Dato("lblDatosDigPluvio(4)"), "1440");
    lista.setCurrentIndex(lista.model()->index(1, 0));
    EXPECT_EQ(Dato("lblDatosDigPluvio(0)") + " " + Dato("lblDatosDigPluvio(6)"), "1 0.5");
    // What the typed filter hides can't be taken.
    Hallar<QLineEdit>(dialogo, "txtFiltro").setText("nada");
    EXPECT_FALSE(Hallar<QPushButton>(dialogo, "cmd(0)").isEnabled());
    EXPECT_EQ(Dato("lblDatosDigPluvio(0)"), "");
    Hallar<QLineEdit>(dialogo, "txtFiltro").clear();
    lista.setCurrentIndex(lista.model()->index(1, 0));
    Hallar<QPushButton>(dialogo, "cmd(0)").click();
  });
  EXPECT_TRUE(ventana.Acepto);
  EXPECT_EQ(ventana.Parametros, "1#1#1#15#1440#20#0.5");
  Jugar([](QDialog& dialogo) { dialogo.close(); });
  EXPECT_FALSE(ventana.Acepto);
  EXPECT_EQ(ventana.Parametros, "");
}

TEST_F(Predefinidas, ConjuntosRarosSeMuestranSinMezclarse) {
  TablaDeTextos({"Id", "Nombre", "Fecha", "IdDescripcionSensores", "Parametros"},
                {{"1", "otra familia", "", "1", "9#9#9#9"},
                 {"1", "<b>con sobra</b>", "", "5", "1#2#3#4#5#6"},
                 {"1", "corto", "", "5", "7#8"},
                 {"1", "vacio", "", "5", nullptr}})
      ->Save(copia);
  mod.ruta_predefinida = copia.string();
  ASSERT_EQ(ventana.CargarParametrizaciones(5), 3);
  EXPECT_EQ(Celda(0, 0) + Celda(0, 2), "<b>con sobra</b>Supervisión Digital");
  const auto datos = [this] {
    std::string todos;
    for (const char* nombre :
         {"lblDatosDigSuper(0)", "lblDatosDigSuper(1)", "lblDatosDigSuper(2)", "lblDatosDigSuper(3)"})
      todos += Dato(nombre) + ";";
    return todos;
  };
  EXPECT_EQ(datos(), "1;2;3;4;");
  for (const auto& [fila, esperado] : {std::pair{1, "7;8;;;"}, {2, ";;;;"}}) {
    auto& lista = Hallar<QTreeView>(ventana, "Lista");
    lista.setCurrentIndex(lista.model()->index(fila, 0));
    EXPECT_EQ(datos(), esperado);
  }
}

TEST_F(Predefinidas, NadaQuedaEnUsoHastaQueSeLeyoComoConjuntos) {
  operador.EsperaAbrir(kPedido, std::nullopt);
  EXPECT_EQ(ventana.CargarParametrizaciones(1), 0);
  EXPECT_EQ(mod.ruta_predefinida, "");
  EXPECT_EQ(Errores(), "");

  TablaDeTextos({"Id", "Nombre"})->Save(usb / "tabla.ipf");
  prueba::EscribirTodo(usb / "basura.ipf", "basura");
  for (const char* nombre : {"tabla.ipf", "basura.ipf", "no existe.ipf"}) {
    operador.EsperaAbrir(kPedido, usb / nombre);
    fs::remove(carpeta / "AdminUTR.err");
    const auto falla = FallaDe([&] { LeerPredefinidas(usb / nombre); });
    operador.Espera({.texto = TextoFalla(Redaccion::kCompletarse, falla->Descripcion()),
                     .titulo = "Parametrizaciones predefinidas",
                     .icono = Icono::kCritico,
                     .botones = Botones::kAceptar});
    EXPECT_EQ(ventana.CargarParametrizaciones(1), 0) << nombre;
    EXPECT_EQ(mod.ruta_predefinida, "") << nombre;
    EXPECT_FALSE(fs::exists(carpeta / nombre)) << nombre;
    EXPECT_NE(Errores().find("\"frmPpal\",\"CargarParametrizaciones\""), std::string::npos) << nombre;
  }
  EXPECT_FALSE(fs::exists(propiedades.Archivo()));
}

TEST_F(Predefinidas, SinCopiaQuedaElElegido) {
  fs::create_directory(copia);
  operador.EsperaAbrir(kPedido, usb / "Cuenca.ipf");
  EXPECT_EQ(ventana.CargarParametrizaciones(3), 2);
  EXPECT_EQ(mod.ruta_predefinida, (usb / "Cuenca.ipf").string());
  EXPECT_NE(Errores().find("\"frmPpal\",\"CargarParametrizaciones\""), std::string::npos);
  // Gone in the meantime: told, and the next time another can be chosen.
  fs::remove(usb / "Cuenca.ipf");
  const auto falla = FallaDe([&] { LeerPredefinidas(usb / "Cuenca.ipf"); });
  operador.Espera(TextoFalla(Redaccion::kCompletarse, falla->Descripcion()));
  EXPECT_EQ(ventana.CargarParametrizaciones(3), 0);
  EXPECT_EQ(mod.ruta_predefinida, "");
}

TEST_F(Predefinidas, OtroArchivoDejaElAnteriorSoloSiPuedeUsarse) {
  mod.ruta_predefinida = (usb / "Cuenca.ipf").string();
  ASSERT_EQ(ventana.CargarParametrizaciones(5), 2);
  prueba::EscribirTodo(usb / "basura.ipf", "basura");
  TablaDeTextos({"Id", "Nombre", "Fecha", "IdDescripcionSensores", "Parametros"},
                {{"1", "solo", "", "5", "1#2#3#4"}, {"2", "de nivel", "", "1", ""}})
      ->Save(carpeta / "otra.ipf");
  auto& otro = Hallar<QPushButton>(ventana, "cmdOtro");
  operador.EsperaAbrir(kPedido, std::nullopt);
  otro.click();
  operador.EsperaAbrir(kPedido, usb / "basura.ipf");
  operador.Espera(
      TextoFalla(Redaccion::kCompletarse, FallaDe([&] { LeerPredefinidas(usb / "basura.ipf"); })->Descripcion()));
  otro.click();
  EXPECT_EQ(mod.ruta_predefinida, (usb / "Cuenca.ipf").string());
  EXPECT_EQ(Celda(1, 0), "Flotante de nivel");
  EXPECT_EQ(Dato("lblDatosDigSuper(1)"), "60");

  operador.EsperaAbrir(kPedido, carpeta / "otra.ipf");
  otro.click();
  EXPECT_EQ(mod.ruta_predefinida, (carpeta / "otra.ipf").string());
  EXPECT_EQ(Celda(0, 0), "solo");
  EXPECT_EQ(Dato("lblDatosDigSuper(1)"), "2");

  ASSERT_EQ(ventana.CargarParametrizaciones(1), 1);
  operador.EsperaAbrir(kPedido, usb / "Cuenca.ipf");
  otro.click();
  EXPECT_EQ(Hallar<QTreeView>(ventana, "Lista").model()->rowCount(), 3);
  ASSERT_EQ(ventana.CargarParametrizaciones(2), 3);
  operador.EsperaAbrir(kPedido, carpeta / "otra.ipf");
  operador.Espera(kSinConjuntos);
  otro.click();
  EXPECT_FALSE(Hallar<QPushButton>(ventana, "cmd(0)").isEnabled());
  EXPECT_EQ(Dato("lblDatosMtr(0)"), "");
}

}  // namespace
}  // namespace utr
