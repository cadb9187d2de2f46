#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPlainTextEdit>

#include "ConPpal.h"

namespace utr {
namespace {

using testing::HasSubstr;

constexpr const char* kElegir = "Debe seleccionar la configuración\nque le quiere aplicar a los datos";
constexpr const char* kVerAhora =
    "La información solicitada ha sido procesada satisfactoriamente\n¿Desea visualizar la información obtenida ahora?";
constexpr const char* kTitulo = "Administración y configuración - KV7340";

// The road from the main window to the processing and on to the viewer.
class ProcesarDatos : public ConPpal {
 protected:
  void EsperarClave() {
    ventanas.Espera("frmLogin", [](QDialog& d) {
      Hallar<QLineEdit>(d, "txtPassword").setText("Pampas");
      Pulsar(d, "CmdOK");
    });
  }
  void Avanzada(int cual) { Ejecutar(qPrintable(QString("mnuAccAvanzadas(%1)").arg(cual))); }
  void EsperarEleccion(const char* boton) {
    EsperarClave();
    operador.Espera(Mensaje{kElegir, kTitulo, Icono::kInformacion, Botones::kAceptarCancelar}, Respuesta::kAceptar);
    ventanas.Espera("frmPresentacion", [boton](QDialog& d) { Pulsar(d, boton); });
  }
  void EsperarProceso(const char* archivo, const char* marca = "leída el 15/03/2026 10:00:00") {
    prueba::EscribirTodo(carpeta / archivo, "\"0/31\"\r\n\"EOT\"\r\n");
    ventanas.Espera("frmProcesar", [this, archivo, marca](QDialog& d) {
      EXPECT_THAT(Hallar<QLabel>(d, "lblConfiguracion").text().toStdString(), testing::EndsWith(marca));
      Hallar<QLineEdit>(d, "ArchivoAProcesar").setText(QString::fromStdString((carpeta / archivo).string()));
      Pulsar(d, "cmd(0)");
    });
  }
  void EsperarPregunta(Respuesta respuesta) {
    operador.Espera(Mensaje{kVerAhora, kTitulo, Icono::kPregunta, Botones::kSiNo}, respuesta);
  }
};

TEST_F(ProcesarDatos, SePideLaConfiguracionYAlFinalSeOfreceVer) {
  Cargar();
  EsperarEleccion("AceptarLecturaCFG");
  EsperarProceso("rio.bkp");
  EsperarPregunta(Respuesta::kNo);
  Avanzada(3);
  EXPECT_THAT(Panel("Panel1"), HasSubstr("rioInforme.txt"));
  EsperarEleccion("CancelarLecturaCFG");
  EsperarProceso("rio.bkp", "(la que estaba de antes: la elección se canceló o falló)");
  EsperarPregunta(Respuesta::kSi);
  ventanas.Espera("frmVisualizador", [](QDialog& d) {
    EXPECT_FALSE(Hallar<QPlainTextEdit>(d, "txtInforme").toPlainText().isEmpty()) << "no result, but a report";
    d.close();
  });
  Avanzada(3);
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(ProcesarDatos, SinConfiguracionNoSeProcesaYSeDiceEnLaBarra) {
  CargarYOlvidar(false);
  EsperarEleccion("CancelarLecturaCFG");
  Avanzada(3);
  EXPECT_EQ(Panel("Panel1"), "No hay una configuración para aplicar a los datos");
  EsperarClave();
  operador.Espera(kElegir, Respuesta::kCancelar);
  Avanzada(3);
}

TEST_F(ProcesarDatos, ElVisualizadorSeAbreSinEquipoNiConfiguracion) {
  CargarYOlvidar(false);
  EsperarClave();
  ventanas.Espera("frmVisualizador", [](QDialog& d) {
    EXPECT_EQ(Hallar<QLineEdit>(d, "lblFile").text(), "");
    d.close();
  });
  Avanzada(4);
}

}  // namespace
}  // namespace utr
