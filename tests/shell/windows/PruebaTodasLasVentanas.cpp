#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeView>
#include <filesystem>
#include <memory>
#include <utility>

#include "driver/BancoSimulado.h"
#include "help/windows/AyudanteQt.h"
#include "shell/windows/frmPpal.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/RevisionTeclado.h"
#include "support/RevisionVentana.h"
#include "widgets/Temas.h"
#include "widgets/TextoQt.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

// Every window of the program over the simulated station, each looked at as the operator finds it.
class TodasLasVentanas : public testing::TestWithParam<std::pair<int, Tema>> {
 protected:
  TodasLasVentanas() : conexion_(banco_.Driver(), base_.propiedades) {
    mod_.eleccion_impresora.nombre = "Oficina";
    fs::create_directory(base_.carpeta / "Ayuda");
    fs::copy_file(ARCHIVO_AYUDA, base_.carpeta / "Ayuda/AdminUTR.hlp");
    for (const auto& archivo : fs::directory_iterator(CARPETA_DATOS)) {
      if (archivo.is_regular_file() && archivo.path().extension() != ".icf")
        fs::copy_file(archivo, base_.carpeta / archivo.path().filename());
    }
    banco_.Escenario(prueba::LeerTodo(fs::path(CARPETA_DATOS) / "UTRSimulada.toml"));
    QFont letra = letra_;
    letra.setPointSizeF(letra.pointSizeF() * GetParam().first / 100);
    QApplication::setFont(letra);
    AplicarTema(GetParam().second);
    ventana_ = std::make_unique<frmPpal>(mod_);
    Al("frmPresentacion", [](QDialog& d) { Pulsar(d, "AceptarLecturaCFG"); });
    ventana_->Cargar();
    ventana_->show();
    Mirar(*ventana_);
  }
  ~TodasLasVentanas() override {
    ventana_.reset();
    QApplication::setFont(letra_);
    AplicarTema(Tema::kClaro);
  }

  static void Pulsar(QObject& donde, const char* nombre) { Hallar<QAbstractButton>(donde, nombre).click(); }
  static void Accionar(QObject& donde, const char* nombre) {
    auto& accion = Hallar<QAction>(donde, nombre);
    EXPECT_TRUE(accion.isEnabled()) << nombre;
    accion.trigger();
  }
  static void Cerrar(QDialog& d) { d.reject(); }
  void Ejecutar(const char* nombre) { Accionar(*ventana_, nombre); }

  // The next window that opens; what is done in it, once it was looked at.
  void Al(const char* nombre, std::function<void(QDialog&)> paso = Cerrar) {
    ventanas_.Espera(nombre, [this, paso = std::move(paso)](QDialog& d) {
      Mirar(d);
      paso(d);
    });
  }
  void DarClave() {
    Al("frmLogin", [](QDialog& d) {
      Hallar<QLineEdit>(d, "txtPassword").setText("Pampas");
      Pulsar(d, "CmdOK");
    });
  }
  // An action that asks for the password and opens a window.
  void ConClave(const char* accion, const char* nombre, std::function<void(QDialog&)> paso = Cerrar) {
    DarClave();
    Al(nombre, std::move(paso));
    Ejecutar(accion);
  }
  void Mirar(QWidget& ventana) {
    QCoreApplication::processEvents();
    const std::string nombre = ventana.objectName().toStdString();
    for (const std::string& reparo : ReparosDeAcceso(ventana)) ADD_FAILURE() << nombre << ": " << reparo;
    for (const std::string& reparo : ReparosDeTamano(ventana)) ADD_FAILURE() << nombre << ": " << reparo;
    for (const std::string& reparo : ReparosDeTeclado(ventana)) ADD_FAILURE() << nombre << ": " << reparo;
    ayudante_.Explicar(ventana);
    for (const std::string& reparo : SinExplicacion(ventana)) ADD_FAILURE() << nombre << ": " << reparo;
  }

  prueba::BancoSimulado banco_;
  prueba::ModPrueba base_;
  Conexion conexion_;
  ModRTU mod_ = prueba::ModSobre(banco_.Driver(), banco_.reloj, conexion_, base_, base_.diario, base_.bitacora);
  AyudanteQt ayudante_{mod_.archivo_ayuda, base_.operador, Q((base_.carpeta / "cache").string())};
  GuionVentanas ventanas_;
  QFont letra_ = QApplication::font();
  std::unique_ptr<frmPpal> ventana_;
};

TEST_P(TodasLasVentanas, SeVenEnterasYSeDicen) {
  for (const char* vista : {"mnuViewLargeIcons", "mnuViewSmallIcons", "mnuViewList", "mnuViewDetails"}) {
    Ejecutar(vista);
    Mirar(*ventana_);
  }
  Al("frmAgendas", [this](QDialog& d) {
    Al("frmUno");
    Accionar(d, "mnuAgenHorarioNuevo");
    Al("frmPeriodos");
    Accionar(d, "mnuAgenPeriodoNuevo");
    d.reject();
  });
  Ejecutar("mnuAcciones(0)");
  Al("frmEventos", [this](QDialog& d) {
    Pulsar(d, "Periodo(3)");
    Accionar(d, "mnuEvTraerPor(0)");
    Mirar(d);
    Al("frmItemLista");
    Accionar(d, "mnuEvAbrir");
    d.reject();
  });
  Ejecutar("mnuAcciones(1)");
  Al("frmDatos", [this](QDialog& d) {
    Pulsar(d, "Periodo(3)");
    Pulsar(d, "cmd(0)");
    Mirar(d);
    Al("DialogoVistaPrevia");
    Accionar(d, "mnuVistaPrevia");
    Al("DialogoCsv");
    Accionar(d, "mnuGuardarCsv");
    Al("frmColumnas");
    Accionar(Hallar<QTreeView>(d, "Lista"), "Columnas");
    Al("frmDescarga");
    Accionar(d, "mnuDescargarTodo");
    d.findChild<QTabWidget*>()->setCurrentIndex(1);
    Pulsar(d, "DatosInst");
    Mirar(d);
    d.reject();
  });
  Ejecutar("mnuAcciones(2)");
  Al("frmParametrizacion", [this](QDialog& d) {
    DarClave();
    Al("frmParamCfg", [this](QDialog& sensor) {
      base_.operador.EsperaAbrir("Abrir parametrizaciones...", base_.carpeta / "ParametrizacionesEjemplo.ipf");
      Al("frmPredefinidas");
      Pulsar(sensor, "LeerParam");
      sensor.reject();
    });
    emit Hallar<QTreeView>(d, "Lista").doubleClicked(Hallar<QTreeView>(d, "Lista").currentIndex());
    d.reject();
  });
  Ejecutar("mnuAcciones(3)");
  Al("frmConfirmPass");
  Ejecutar("mnuAcciones(5)");
  Al("frmAsistRemota", [this](QDialog& d) {
    Pulsar(d, "cmdNav(3)");
    Mirar(d);
    Al("frmParamCfg", [](QDialog& sensor) { Pulsar(sensor, "cmdDejarRestantes"); });
    Pulsar(d, "cmdNav(3)");
    Mirar(d);
    Al("frmAgendas", [](QDialog& agenda) { Pulsar(agenda, "cmd(0)"); });
    Pulsar(d, "cmdNav(3)");
    Mirar(d);
    d.reject();
  });
  Ejecutar("mnuAcciones(6)");
  Al("frmPuerto", [this](QDialog& d) {
    Pulsar(d, "optIP");
    Mirar(d);
    d.reject();
  });
  Ejecutar("mnuAcciones(7)");
  Al("frmSalidasDigitales");
  Ejecutar("mnuAcciones(8)");
  ConClave("mnuAccAvanzadas(0)", "frmComandos", [this](QDialog& d) {
    if (auto* hojas = d.findChild<QTabWidget*>()) {
      for (int hoja = 0; hoja < hojas->count(); ++hoja) {
        hojas->setCurrentIndex(hoja);
        Mirar(d);
      }
    }
    d.reject();
  });
  ConClave("mnuAccAvanzadas(1)", "frmParametrizacion");
  ConClave("mnuAccAvanzadas(2)", "frmLectorFlash");
  ConClave("mnuAccAvanzadas(4)", "frmVisualizador");
  ConClave("mnuAccAvanzadas(5)", "frmColaTransmicion");
  Al("frmBitacora");
  Ejecutar("mnuVisita(0)");
  Al("frmLibroEstaciones", [this](QDialog& d) {
    Al("frmEstacion");
    Accionar(d, "mnuLibNueva");
    d.reject();
  });
  Ejecutar("mnuVisita(1)");
  Al("frmTeclado", [this](QDialog& d) {
    const QAbstractItemModel& teclas = *Hallar<QTreeView>(d, "Lista").model();
    for (const char* accion : {"mnuAcciones(2)", "mnuAccAvanzadas(0)", "mnuVisita(0)", "Conected", "mnuSalir"}) {
      const QString tecla = Hallar<QAction>(*ventana_, accion).shortcut().toString(QKeySequence::NativeText);
      EXPECT_EQ(teclas.match(teclas.index(0, 2), Qt::DisplayRole, tecla, -1, Qt::MatchExactly).size(), 1) << accion;
    }
    d.reject();
  });
  Ejecutar("mnuHelpKeyboard");
  Al("frmAbout");
  Ejecutar("mnuHelpAbout");
}

INSTANTIATE_TEST_SUITE_P(TextoYTema, TodasLasVentanas,
                         testing::Values(std::pair{100, Tema::kClaro}, std::pair{200, Tema::kOscuro},
                                         std::pair{100, Tema::kExteriores}));

}  // namespace
}  // namespace utr
