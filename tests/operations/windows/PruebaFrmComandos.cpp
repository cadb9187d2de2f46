#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include "driver/Textos.h"
#include "operations/windows/frmComandos.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class FrmComandos : public prueba::ModPrueba, public testing::Test {
 protected:
  FrmComandos() {
    comunicador.Devuelve("LeerPagina", "4,7,3,120,0,1,10,0");
    const std::function<std::string(const std::string&)> par = [](const std::string& llamada) {
      return TextoPar(static_cast<std::uint16_t>(std::stoi(llamada.substr(llamada.find('(') + 1))));
    };
    comunicador.Devuelve("ConvertirDe", par);
    Abrir();
  }
  void Abrir() {
    ventana = std::make_unique<frmComandos>(mod);
    ventana->show();
  }

  template <class Control>
  Control& De(const char* nombre) {
    return Hallar<Control>(*ventana, nombre);
  }
  void Pulsar(const char* nombre) { De<QPushButton>(nombre).click(); }
  std::string Campo(const char* nombre) { return De<QLineEdit>(nombre).text().toStdString(); }
  void Escribir(const char* nombre, const char* texto) { De<QLineEdit>(nombre).setText(texto); }
  std::string Estado(const char* marco) {
    return De<QLabel>(("lblEstado" + std::string(marco)).c_str()).text().toStdString();
  }
  QCheckBox& Casilla(int cual) { return De<QCheckBox>(qPrintable(QStringLiteral("Check1(%1)").arg(cual))); }
  int Marcadas() {
    int marcadas = 0;
    for (int cual = 0; cual < 8; ++cual) marcadas |= Casilla(cual).isChecked() ? 1 << cual : 0;
    return marcadas;
  }

  std::unique_ptr<frmComandos> ventana;
};

constexpr const char* kMarcos[] = {"RTS", "Puerto", "Identificador", "Estado", "Ventana", "Pagina", "Hora"};

TEST_F(FrmComandos, LoQueNoSeLeyoSeVeYLaVelocidadSoloSeCambiaPorPuertoPropio) {
  for (const char* marco : kMarcos) EXPECT_THAT(Estado(marco), testing::StartsWith("sin leer")) << marco;
  EXPECT_EQ(Estado("Estado"), "sin leer: Grabar envía las ocho casillas como están");
  EXPECT_TRUE(De<QPushButton>("GrabarBPS").isEnabled());
  EXPECT_EQ(De<QPushButton>("RTS").text(), "RTS Apagado");
  EXPECT_THAT(comunicador.llamadas, IsEmpty()) << "nothing is read unasked";
  for (const QPushButton* boton : ventana->findChildren<QPushButton*>())
    EXPECT_FALSE(boton->isDefault() || boton->autoDefault()) << boton->objectName().toStdString();
  conexion.Llamar("4112233", "");
  Abrir();
  EXPECT_FALSE(De<QPushButton>("GrabarBPS").isEnabled());
}

TEST_F(FrmComandos, CadaLecturaLlenaSuMarcoYLoEscritoLoModifica) {
  comunicador.Devuelve("LeerFechaHora", "05/03/2026 23:59:58");
  comunicador.Devuelve("LeerEstado", 0x4020);
  Escribir("NumDePagina", "35");
  for (const char* boton :
       {"LeerDelay", "LeerBPS", "LeerIdentificador", "LeerCS", "LeerAgenda", "LeerPaginaB", "ActualizarHora"}) {
    Pulsar(boton);
  }
  for (const char* marco : kMarcos) EXPECT_THAT(Estado(marco), testing::StartsWith("leído 10:00:00")) << marco;
  EXPECT_EQ(Campo("Delay") + " " + Campo("ContDelay"), "70 30");
  EXPECT_EQ(De<QComboBox>("CVelocidadP").currentText(), "9600");
  EXPECT_EQ(Campo("TIdUTR"), "120");
  EXPECT_EQ(Campo("VentanaAgenda"), "10");
  EXPECT_EQ(Marcadas(), 132);
  EXPECT_EQ(De<QPlainTextEdit>("DatosDePagina").toPlainText(), "4,7,3,120,0,1,10,0");
  EXPECT_EQ(Estado("Pagina"), "leído 10:00:00, página 35");
  EXPECT_EQ(De<QDateTimeEdit>("HoraRemota").text(), "23:59:58");
  EXPECT_EQ(De<QDateTimeEdit>("FechaRemota").text(), "05/03/2026");

  Escribir("ContDelay", "40");
  Casilla(0).setChecked(true);
  Escribir("NumDePagina", "34");
  for (const char* marco : {"RTS", "Estado", "Pagina"}) EXPECT_EQ(Estado(marco), "modificado");
  Escribir("ContDelay", "30");
  EXPECT_EQ(Estado("RTS"), "leído 10:00:00");
}

TEST_F(FrmComandos, LaLecturaQueFallaNoDejaLoAnteriorDondeSeTomariaPorLeido) {
  comunicador.Devuelve("LeerEstado", 0x4020);
  comunicador.Devuelve("LeerPagina", "6,7,3,120,0,1,10,0");
  Pulsar("LeerCS");
  Escribir("NumDePagina", "0");
  Pulsar("LeerPaginaB");
  Pulsar("LeerBPS");
  EXPECT_EQ(De<QComboBox>("CVelocidadP").currentIndex(), -1);
  EXPECT_EQ(Estado("Puerto"), "leído 10:00:00, código 6");

  comunicador.Devuelve("LeerEstado", -1);
  comunicador.Devuelve("LeerPagina", "");
  operador.EsperaParte("Sin datos");
  Pulsar("LeerCS");
  EXPECT_EQ(Marcadas(), 0);
  EXPECT_THAT(Estado("Estado"), testing::StartsWith("sin leer"));
  operador.EsperaParte("No se puede leer la página solicitada");
  Pulsar("LeerPaginaB");
  EXPECT_EQ(De<QPlainTextEdit>("DatosDePagina").toPlainText(), "");
  EXPECT_EQ(Estado("Pagina"), "sin leer");
  operador.EsperaParte("No pudo leer la fecha y hora");
  Pulsar("ActualizarHora");
  EXPECT_EQ(De<QDateTimeEdit>("HoraRemota").dateTime(), QDateTime(QDate(2001, 1, 1), QTime(0, 0)));
  EXPECT_EQ(De<QDateTimeEdit>("FechaRemota").date(), QDate(2000, 1, 1));
}

TEST_F(FrmComandos, BajoLosDatosSeCuentanLosBytesYNoEntranSaltosDeLinea) {
  auto& datos = De<QPlainTextEdit>("DatosDePagina");
  const std::pair<const char*, const char*> kCasos[] = {{"", "0 bytes"},
                                                        {"7", "1 byte"},
                                                        {"1,2,255", "3 bytes"},
                                                        {"1,2,256", "no es texto de página"},
                                                        {"1,2,", "no es texto de página"}};
  for (const auto& [texto, cuenta] : kCasos) {
    datos.setPlainText(texto);
    EXPECT_EQ(De<QLabel>("lblBytes").text().toStdString(), cuenta) << texto;
  }
  datos.clear();
  datos.setFocus();
  QApplication::clipboard()->setText("1,2,\r\n3");
  QTest::keyClick(&datos, Qt::Key_V, Qt::ControlModifier);
  QTest::keyClick(&datos, Qt::Key_Return);
  EXPECT_EQ(datos.toPlainText(), "1,2,3");
}

// Its mnemonic presses a button without taking the focus from the delay.
TEST_F(FrmComandos, ElRetardoSeCorrigeAntesDeCualquierOrdenYLoRedondeadoSeDice) {
  Escribir("Delay", "5000");
  Escribir("ContDelay", "25");
  operador.EsperaParte("¿Desea continuar?", Respuesta::kSi);
  operador.Espera("Delay grabado");
  Pulsar("GrabarDelay");
  EXPECT_EQ(comunicador.llamadas.back(), "EscribirPagina(0,4,0,2,120,0,1,10,0)");
  EXPECT_EQ(Campo("Delay"), "0");
  EXPECT_EQ(Estado("RTS"), "grabado 10:00:00, quedó 0 y 20");
  auto* pasos = De<QWidget>("UpDDelayRTS").findChildren<QToolButton*>().front();
  for (int i = 0; i < 101; ++i) pasos->click();
  EXPECT_EQ(Campo("Delay"), "1000");
}

TEST_F(FrmComandos, LoQueFaltaDevuelveElFoco) {
  ventana->activateWindow();
  for (const auto& [boton, campo] : {std::pair{"GrabarBPS", "CVelocidadP"}, {"GrabarIdentificador", "TIdUTR"}}) {
    De<QPushButton>(boton).setFocus();
    operador.EsperaParte("Debe ");
    Pulsar(boton);
    EXPECT_EQ(ventana->focusWidget()->objectName().toStdString(), campo);
  }
  EXPECT_THAT(comunicador.llamadas, IsEmpty());
}

TEST_F(FrmComandos, CadaFinSeVeEnSuMarcoYEnElRegistro) {
  Casilla(7).setChecked(true);
  Casilla(2).setChecked(true);
  operador.EsperaParte("modificará el estado", Respuesta::kNo);
  Pulsar("GrabarCS");
  EXPECT_EQ(Estado("Estado"), "sin leer, modificado: Grabar envía las ocho casillas como están");
  operador.EsperaParte("modificará el estado", Respuesta::kSi);
  operador.Espera("Estado grabado");
  Pulsar("GrabarCS");
  EXPECT_EQ(comunicador.llamadas.back(), "GrabarEstado(132/0)");
  EXPECT_EQ(Estado("Estado"), "grabado 10:00:00");

  comunicador.Devuelve("EscribirPagina", false);
  Escribir("VentanaAgenda", "15");
  operador.Espera("No se pudo grabar la página");
  Pulsar("GrabarAgenda");
  EXPECT_EQ(Estado("Ventana"), "no confirmado 10:00:00");
  comunicador.Devuelve("GrabarFechaHora", false);
  operador.EsperaParte("No se pudo grabar la hora de la PC a la UTR");
  Pulsar("GrabarHoraB");
  EXPECT_EQ(Estado("Hora"), "no confirmado 10:00:00");

  comunicador.Devuelve("EscribirPagina", true);
  comunicador.Devuelve("ReiniciarUTR", false);
  Escribir("TIdUTR", "300");
  operador.EsperaParte("¿Confirma", Respuesta::kSi);
  operador.EsperaParte("Id de UTR grabada");
  operador.Espera("Error iniciando UTR");
  Pulsar("GrabarIdentificador");
  EXPECT_EQ(Estado("Identificador"), "grabado 10:00:00, sin reiniciar la UTR");

  EXPECT_EQ(De<QToolButton>("Diario").text(), "Registro de comandos: 4");
  De<QToolButton>("Diario").click();
  Pulsar("CopiarDiario");
  const std::string copia = QApplication::clipboard()->text().toStdString();
  EXPECT_THAT(copia, testing::StartsWith("Momento\tUTR\tComando\tAntes\tEscrito\tResultado\n15/03/2026 10:00:00\tsin "
                                         "identificador\tGrabar estado\tsin leer\tErrorFlash, TxOblig\thecho\n"));
  EXPECT_THAT(copia, HasSubstr("\t10 min.\t15 min.\tNo se pudo grabar la página; no confirmado\n"));
  Abrir();
  EXPECT_EQ(De<QToolButton>("Diario").text(), "Registro de comandos: 4") << "it is of the whole sitting";
}

TEST_F(FrmComandos, MientrasLaUnidadSeReiniciaLaVentanaNoSeTocaNiSeCierra) {
  De<QComboBox>("CVelocidadP").setCurrentText("1200");
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (llamada != "Pausa(20)") return;
    EXPECT_TRUE(De<QWidget>("picInfo").isVisible());
    EXPECT_FALSE(De<QPushButton>("LeerDelay").isEnabled());
    EXPECT_GT(operador.ocupado, 0);
    ventana->close();
    EncolarClic(&De<QPushButton>("cmdCerrar"));
    Pulsar("LeerIdentificador");
    QApplication::processEvents();
    EXPECT_TRUE(ventana->isVisible());
  };
  operador.EsperaParte("¿Desea continuar?", Respuesta::kSi);
  operador.EsperaParte("Velocidad grabada");
  operador.Espera("UTR iniciada");
  Pulsar("GrabarBPS");
  EXPECT_EQ(comunicador.Cuantas("LeerPagina"), 1U) << "no second command in the middle of one";
  EXPECT_FALSE(De<QWidget>("picInfo").isVisible());
  EXPECT_TRUE(De<QPushButton>("LeerDelay").isEnabled());
  EXPECT_EQ(operador.ocupado, 0);
  EXPECT_EQ(Estado("Puerto"), "grabado 10:00:00");
}

TEST_F(FrmComandos, LasAccionesYElRTS) {
  const std::pair<const char*, const char*> kAcciones[] = {{"cmdBorrarCartucho", "BorrarCartucho()"},
                                                           {"BorradoFlash", "BorrarFlash()"},
                                                           {"RiniciarRTU", "ReiniciarUTR(14)"},
                                                           {"ReinicioAgendaB", "ReiniciarAgenda(41)"}};
  for (const auto& [boton, llamada] : kAcciones) {
    EXPECT_FALSE(De<QPushButton>(boton).toolTip().isEmpty()) << boton;
    operador.EsperaParte("¿Desea", Respuesta::kSi);
    operador.EsperaParte("");
    Pulsar(boton);
    EXPECT_EQ(comunicador.llamadas.back(), llamada);
  }
  Pulsar("RTS");
  EXPECT_EQ(De<QPushButton>("RTS").text(), "RTS Prendido");
  comunicador.Devuelve("ModoConexion", false);
  Pulsar("RTS");
  EXPECT_EQ(De<QPushButton>("RTS").text(), "RTS Prendido");
  comunicador.Devuelve("LeerFechaHora", "05/03/2026 23:59:58");
  Pulsar("GrabarHoraB");
  EXPECT_EQ(comunicador.llamadas.back(), "LeerFechaHora()");
  EXPECT_EQ(De<QDateTimeEdit>("HoraRemota").text(), "23:59:58");
}

}  // namespace
}  // namespace utr
