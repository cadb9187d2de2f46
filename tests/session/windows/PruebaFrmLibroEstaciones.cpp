#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <memory>

#include "session/windows/frmLibroEstaciones.h"
#include "session/windows/frmPresentacion.h"
#include "session/windows/frmPuerto.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

using prueba::EscribirTodo;
using prueba::LeerTodo;

class Libro : public prueba::ModPrueba, public testing::Test {
 protected:
  static void Escribir(QDialog& ventana, const char* campo, const char* texto) {
    Hallar<QLineEdit>(ventana, campo).setText(texto);
  }
  static void Pulsar(QDialog& ventana, const char* boton) { Hallar<QPushButton>(ventana, boton).click(); }
  void Ordenar(const char* comando) { Hallar<QAction>(*ventana, comando).trigger(); }
  void Abrir() {
    ventana = std::make_unique<frmLibroEstaciones>(mod);
    ventana->show();
  }
  std::vector<std::string> Nombres() const {
    LibroEstaciones libro(archivo);
    libro.Leer();
    std::vector<std::string> nombres;
    for (const Estacion& estacion : libro.Estaciones()) nombres.push_back(estacion.nombre);
    return nombres;
  }

  GuionVentanas ventanas;
  std::filesystem::path archivo = carpeta / "Estaciones.toml";
  std::unique_ptr<frmLibroEstaciones> ventana;
};

const char* const kDos =
    "version = 1\n[[estacion]]\nnombre = \"Arroyo\"\nidentificador = 70\nenlace = \"telefono\"\npuerto = 3\n"
    "velocidad = 1200\ntelefono = \"4912345\"\ncomandos = \"ATZ\"\n"
    "[[estacion]]\nnombre = \"Monte\"\nidentificador = 8\nenlace = \"ip\"\ndireccion = \"10.0.0.9\"\npuerto_ip = "
    "4001\n";

TEST_F(Libro, SeAgregaSeModificaYSeBorra) {
  Abrir();
  EXPECT_FALSE(Hallar<QAction>(*ventana, "mnuLibBorrar").isEnabled()) << "there is none";
  ventanas.Espera("frmEstacion", [this](QDialog& dialogo) {
    operador.Espera(
        "Debe completar lo siguiente:\nDebe indicar un nombre para la estación\n"
        "Debe especificar un número de teléfono");
    Hallar<QComboBox>(dialogo, "cboMedio").setCurrentText("Teléfono");
    Pulsar(dialogo, "CmdOK");
    Escribir(dialogo, "txtNombre", "Monte");
    Escribir(dialogo, "txtTelefono", "123");
    EXPECT_FALSE(Hallar<QLineEdit>(dialogo, "txtDireccion").isEnabled());
    Pulsar(dialogo, "CmdOK");
  });
  Ordenar("mnuLibNueva");
  ventanas.Espera("frmEstacion", [this](QDialog& dialogo) {
    operador.EsperaParte("Ya hay otra estación con ese nombre");
    Escribir(dialogo, "txtNombre", "MONTE");
    Pulsar(dialogo, "CmdOK");
    dialogo.reject();
  });
  Ordenar("mnuLibNueva");
  ventanas.Espera("frmEstacion", [](QDialog& dialogo) {
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "txtTelefono").text(), "123");
    Escribir(dialogo, "txtNombre", "MONTE");
    Hallar<QPlainTextEdit>(dialogo, "txtNotas").setPlainText("una\notra");
    Pulsar(dialogo, "CmdOK");
  });
  Ordenar("mnuLibModificar");
  EXPECT_THAT(Nombres(), testing::ElementsAre("MONTE"));
  EXPECT_THAT(LeerTodo(archivo), testing::HasSubstr("notas = \"una\\notra\""));
  operador.EsperaParte("Se borra del libro la estación MONTE", Respuesta::kNo);
  Ordenar("mnuLibBorrar");
  operador.EsperaParte("Se borra del libro la estación MONTE", Respuesta::kSi);
  Ordenar("mnuLibBorrar");
  EXPECT_THAT(Nombres(), testing::IsEmpty());
  EXPECT_FALSE(Hallar<QPushButton>(*ventana, "cmdElegir").isEnabled());
}

TEST_F(Libro, UnLibroDeBasuraSeDiceYNoSeToca) {
  EscribirTodo(archivo, "basura [");
  operador.EsperaParte("Estaciones.toml: línea 1: no se entiende");
  Abrir();
  for (const char* comando : {"mnuLibNueva", "mnuLibModificar", "mnuLibBorrar", "mnuLibImportar", "mnuLibExportar"})
    EXPECT_FALSE(Hallar<QAction>(*ventana, comando).isEnabled()) << comando;
  EXPECT_FALSE(Hallar<QPushButton>(*ventana, "cmdElegir").isEnabled());
  EXPECT_EQ(LeerTodo(archivo), "basura [");
}

TEST_F(Libro, ImportarPreguntaPorLasQueYaEstan) {
  EscribirTodo(carpeta / "otro.toml", kDos);
  EscribirTodo(archivo, "version = 1\n[[estacion]]\nnombre = \"arroyo\"\n");
  Abrir();
  operador.EsperaAbrir("Importar estaciones...", carpeta / "otro.toml");
  operador.EsperaParte("1 estación del archivo", Respuesta::kNo);
  operador.Espera("Agregadas: 1 estación\nComo estaban: 1 estación");
  Ordenar("mnuLibImportar");
  EXPECT_THAT(Nombres(), testing::ElementsAre("arroyo", "Monte"));
  operador.EsperaAbrir("Importar estaciones...", carpeta / "no_esta.toml");
  operador.EsperaParte("no_esta.toml: no está");
  Ordenar("mnuLibImportar");
  operador.EsperaGuardar("Exportar estaciones...", carpeta / "copia.toml");
  operador.EsperaParte("ha sido exportado con éxito");
  Ordenar("mnuLibExportar");
  EXPECT_EQ(LeerTodo(carpeta / "copia.toml"), LeerTodo(archivo));
}

TEST_F(Libro, UnPuertoQueAquiEsOtraCosaSeAdvierte) {
  EscribirTodo(archivo,
               "version = 1\n[[estacion]]\nnombre = \"Arroyo\"\npuerto = 3\n"
               "[[estacion]]\nnombre = \"Práctica\"\nenlace = \"simulado\"\npuerto = 2\n");
  puertos.simulados = {3};
  const auto elegir = [this](int lugar) {
    Abrir();
    auto& arbol = Hallar<QTreeView>(*ventana, "Lista");
    arbol.setCurrentIndex(arbol.model()->index(lugar, 0));
    Pulsar(*ventana, "cmdElegir");
    return ventana->Elegida().has_value();
  };
  operador.EsperaParte("En esta máquina COM 3 es de la estación simulada: lo que se lea no viene de Arroyo",
                       Respuesta::kNo);
  EXPECT_FALSE(elegir(0));
  operador.EsperaParte("En esta máquina COM 2 no es de la estación simulada", Respuesta::kNo);
  EXPECT_FALSE(elegir(1));
  operador.EsperaParte("¿Desea elegirla de todos modos?", Respuesta::kSi);
  EXPECT_TRUE(elegir(1));
  puertos.simulados = {2};
  EXPECT_TRUE(elegir(0));
  EXPECT_TRUE(elegir(1));
}

// Picks the station of that place in the book, from inside a dialog of the connection.
void Elegir(GuionVentanas& ventanas, QDialog& dialogo, int lugar) {
  ventanas.Espera("frmLibroEstaciones", [lugar](QDialog& libro) {
    auto& arbol = Hallar<QTreeView>(libro, "Lista");
    arbol.setCurrentIndex(arbol.model()->index(lugar, 0));
    Hallar<QPushButton>(libro, "cmdElegir").click();
  });
  Hallar<QPushButton>(dialogo, "cmdEstaciones").click();
}

TEST_F(Libro, LaElegidaLlenaLosCamposDeLaConexionYNadaMas) {
  EscribirTodo(archivo, kDos);
  const auto antes = propiedades.Contenido();
  ventanas.Espera("frmPresentacion", [this](QDialog& dialogo) {
    comunicador.llamadas.clear();
    Elegir(ventanas, dialogo, 0);
    EXPECT_EQ(Hallar<QComboBox>(dialogo, "cboPuertos").currentText(), "COM 3");
    EXPECT_EQ(Hallar<QComboBox>(dialogo, "CVelocidad").currentText(), "1200");
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "txtTelefono").text(), "4912345");
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "txtComandos").text(), "ATZ");
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "txtIdentificador").text(), "70");
    Elegir(ventanas, dialogo, 1);
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "DireccionIP").text(), "10.0.0.9");
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "PuertoIP").text(), "4001");
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "txtIdentificador").text(), "8");
    EXPECT_EQ(Hallar<QComboBox>(dialogo, "cboPuertos").currentText(), "COM 3") << "what isn't its own stays";
    EXPECT_THAT(comunicador.llamadas, testing::IsEmpty());
    dialogo.close();
  });
  frmPresentacion(mod).exec();
  ventanas.Espera("frmPuerto", [this](QDialog& dialogo) {
    comunicador.llamadas.clear();
    Elegir(ventanas, dialogo, 0);
    EXPECT_EQ(Hallar<QComboBox>(dialogo, "CPuerto").currentText(), "COM 3");
    EXPECT_EQ(Hallar<QComboBox>(dialogo, "CVelocidad").currentText(), "1200");
    Elegir(ventanas, dialogo, 1);
    EXPECT_EQ(Hallar<QLineEdit>(dialogo, "DireccionIP").text(), "10.0.0.9");
    EXPECT_THAT(comunicador.llamadas, testing::IsEmpty());
    dialogo.close();
  });
  frmPuerto(mod).exec();
  EXPECT_EQ(propiedades.Contenido(), antes);
  EXPECT_FALSE(conexion.PorIP());
}

}  // namespace
}  // namespace utr
