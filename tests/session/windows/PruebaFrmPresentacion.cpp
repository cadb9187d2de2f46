#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWindow>

#include "session/AjustesEnlace.h"
#include "session/windows/frmPresentacion.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "widgets/PanelAviso.h"

namespace utr {
namespace {

using testing::ElementsAre;

// The dialog over stand-ins, driven by its controls' names.
class Presentacion : public prueba::ModPrueba, public testing::Test {
 protected:
  void Guardar(const char* nombre, const Propiedad& valor) { propiedades.Escribir(nombre, valor, Propiedad{"-"}); }
  void Abrir() { dialogo = std::make_unique<frmPresentacion>(mod); }

  template <class Control>
  Control& El(const char* nombre) {
    return Hallar<Control>(*dialogo, nombre);
  }
  void Pulsar(const char* nombre) { El<QAbstractButton>(nombre).click(); }
  void Poner(const char* nombre, const char* texto) { El<QLineEdit>(nombre).setText(texto); }
  std::string Ver(const char* nombre) { return El<QLineEdit>(nombre).text().toStdString(); }
  std::string Elegido(const char* nombre) { return El<QComboBox>(nombre).currentText().toStdString(); }
  bool Activo(const char* nombre) { return El<QWidget>(nombre).isEnabledTo(dialogo.get()); }

  // Names of the controls that can be used.
  std::string Activos() {
    std::string activos;
    for (const char* nombre : {"txtIdentificador", "optSerie", "cboPuertos", "CVelocidad", "CVerifVelocidad", "chkTel",
                               "txtTelefono", "txtComandos", "optIP", "DireccionIP", "PuertoIP"}) {
      if (Activo(nombre)) activos += std::string(nombre) + ' ';
    }
    return activos;
  }

  // Shows it, plays the step, and gives whether the dialog was accepted.
  bool Jugar(const std::function<void(QDialog&)>& paso) {
    ventanas.Espera("frmPresentacion", paso);
    dialogo->exec();
    return dialogo->Acepto;
  }

  GuionVentanas ventanas;
  std::unique_ptr<frmPresentacion> dialogo;
};

TEST_F(Presentacion, SinAjustesMuestraLosDefectos) {
  conexion.Llamar("1", "");
  Abrir();
  EXPECT_TRUE(El<QRadioButton>("OptionRTU").isChecked());
  EXPECT_TRUE(El<QRadioButton>("optSerie").isChecked());
  EXPECT_EQ(El<QComboBox>("cboPuertos").count(), 5);
  EXPECT_EQ(Elegido("cboPuertos"), "COM 1");
  EXPECT_EQ(El<QComboBox>("CVelocidad").count(), 3);
  EXPECT_EQ(Elegido("CVelocidad"), "9600");
  EXPECT_EQ(Ver("PuertoIP"), "1000");
  EXPECT_EQ(Ver("txtIdentificador"), "0");
  EXPECT_FALSE(conexion.EnLlamada());
  EXPECT_TRUE(El<PanelAviso>("picInfo").isHidden());
}

TEST_F(Presentacion, OfreceLosPuertosDelEquipoConSuNombre) {
  puertos.puertos = {{2, "ttyS1"}, {4, "ttyUSB0"}};
  Guardar("PUERTO", Propiedad{std::int64_t{4}});
  Abrir();
  auto& lista = El<QComboBox>("cboPuertos");
  ASSERT_EQ(lista.count(), 2);
  EXPECT_EQ(lista.itemText(0), "COM 2");
  EXPECT_EQ(lista.itemData(0, Qt::ToolTipRole).toString(), "ttyS1");
  EXPECT_EQ(Elegido("cboPuertos"), "COM 4");
}

TEST_F(Presentacion, LosAjustesPorIPSeMuestran) {
  Guardar("PUERTO", Propiedad{std::int64_t{2000}});
  Guardar("Velocidad", Propiedad{std::string("10.1.2.3")});
  Guardar("COMIDENT", Propiedad{std::int64_t{44}});
  Abrir();
  EXPECT_TRUE(El<QRadioButton>("optIP").isChecked());
  EXPECT_EQ(Ver("DireccionIP"), "10.1.2.3");
  EXPECT_EQ(Ver("PuertoIP"), "2000");
  EXPECT_EQ(Elegido("cboPuertos"), "COM 1");
  EXPECT_EQ(Elegido("CVelocidad"), "9600");
  EXPECT_EQ(Ver("txtIdentificador"), "44");
}

TEST_F(Presentacion, UnEnlaceGuardadoQueElEquipoNoOfreceQueda) {
  puertos.puertos = {{1, "ttyS0"}, {3, "ttyS2"}};
  Guardar("PUERTO", Propiedad{std::int64_t{5}});
  Guardar("Velocidad", Propiedad{std::int64_t{4800}});
  Abrir();
  for (const auto& [nombre, texto] : {std::pair("cboPuertos", "COM 5"), std::pair("CVelocidad", "4800")}) {
    auto& lista = El<QComboBox>(nombre);
    EXPECT_EQ(lista.currentText(), texto);
    EXPECT_EQ(lista.currentIndex(), lista.count() - 1) << "at the end";
    EXPECT_FALSE(lista.itemIcon(lista.currentIndex()).isNull());
    EXPECT_EQ(lista.toolTip(), "No está entre los de este equipo");
    EXPECT_EQ(lista.findText(texto), lista.currentIndex()) << "once";
  }
  Pulsar("CVerifVelocidad");
  EXPECT_THAT(comunicador.De("Conectar"), ElementsAre("Conectar(9600,n,8,1,5)", "Conectar(19200,n,8,1,5)"))
      << "the told speeds alone, on the stored port";
  El<QComboBox>("CVelocidad").setCurrentText("4800");
  EXPECT_TRUE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_EQ(propiedades.LeerEntero(clave::kPuerto, 1), 5);
  EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, 9600), 4800);
}

TEST_F(Presentacion, SinEleccionNadaSeConectaNiSeGuarda) {
  puertos.puertos = {{1, "ttyS0"}};
  Guardar("PUERTO", Propiedad{std::int64_t{0}});
  Guardar("Velocidad", Propiedad{std::string("192.168.0.1")});
  Abrir();
  EXPECT_EQ(Elegido("CVelocidad"), "");
  EXPECT_EQ(Elegido("cboPuertos"), "");
  Poner("txtIdentificador", "");
  operador.Espera(
      "Debe completar lo siguiente:\nDebe indicar un identificador de UTR o cero (0) si desconoce el mismo\n"
      "Debe elegir un puerto de comunicaciones\nDebe elegir una velocidad");
  operador.Espera("Debe completar lo siguiente:\nDebe elegir un puerto de comunicaciones");
  EXPECT_FALSE(Jugar([&](QDialog&) {
    Pulsar("AceptarLecturaCFG");
    Pulsar("CVerifVelocidad");
    Pulsar("CancelarLecturaCFG");
  }));
  EXPECT_TRUE(comunicador.De("Conectar").empty());
  EXPECT_FALSE(std::filesystem::exists(propiedades.Archivo()));
}

TEST_F(Presentacion, UnaDireccionIPNoLlamaPorTelefono) {
  Abrir();
  Pulsar("chkTel");
  Poner("txtTelefono", "411");
  El<QRadioButton>("optIP").setChecked(true);  // as an assistive tool does, without a click
  EXPECT_FALSE(El<QCheckBox>("chkTel").isChecked());
  EXPECT_EQ(Ver("txtTelefono"), "");
  EXPECT_TRUE(Activo("DireccionIP"));
  El<QRadioButton>("optSerie").setChecked(true);
  EXPECT_TRUE(El<QCheckBox>("chkTel").isChecked());
  EXPECT_EQ(Ver("txtTelefono"), "411");
  El<QRadioButton>("optIP").setChecked(true);
  Poner("DireccionIP", "10.0.0.9");
  EXPECT_TRUE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_TRUE(comunicador.llamadas.empty()) << "no call";
}

TEST_F(Presentacion, LosCamposDeUnaLineaNoTomanSaltos) {
  Abrir();
  Pulsar("chkTel");
  const std::pair<const char*, const char*> casos[] = {
      {"txtTelefono", "411 22"}, {"txtComandos", "411 22"}, {"DireccionIP", "411 22"}};
  for (const auto& [nombre, queda] : casos) {
    auto& campo = El<QLineEdit>(nombre);
    campo.clear();
    campo.insert("\n411\r\n22\r\n");
    EXPECT_EQ(campo.text(), queda) << nombre;
  }
  Poner("txtIdentificador", "");
  El<QLineEdit>("txtIdentificador").insert("\n70\r\n");
  EXPECT_EQ(Ver("txtIdentificador"), "70");
  Pulsar("optIP");
  for (const auto& [pegado, queda] : {std::pair("\r\n12345", "12345"), std::pair("123456", "")}) {
    Poner("PuertoIP", "");
    El<QLineEdit>("PuertoIP").insert(pegado);
    EXPECT_EQ(Ver("PuertoIP"), queda) << "whole or not at all";
  }
}

TEST_F(Presentacion, LosControlesSiguenALasOpciones) {
  Abrir();
  const std::string serie = "txtIdentificador optSerie cboPuertos CVelocidad CVerifVelocidad chkTel optIP ";
  EXPECT_EQ(Activos(), serie);
  Pulsar("chkTel");
  EXPECT_EQ(Activos(),
            "txtIdentificador optSerie cboPuertos CVelocidad CVerifVelocidad chkTel txtTelefono txtComandos optIP ");
  Poner("txtTelefono", "411");
  Pulsar("chkTel");
  EXPECT_EQ(Ver("txtTelefono"), "");
  Pulsar("optIP");
  EXPECT_EQ(Activos(), "txtIdentificador optSerie optIP DireccionIP PuertoIP ");
  Poner("txtIdentificador", "55");
  Pulsar("OptionXML");
  EXPECT_EQ(Activos(), "");
  EXPECT_EQ(Ver("txtIdentificador"), "0");
  Pulsar("OptionRTU");
  Pulsar("optSerie");
  EXPECT_EQ(Activos(), serie);
}

TEST_F(Presentacion, SoloDesdeLaUTRCierraLaOtraFuente) {
  Abrir();
  Pulsar("OptionXML");
  dialogo->FijarFuente(true);
  EXPECT_TRUE(El<QRadioButton>("OptionRTU").isChecked());
  EXPECT_FALSE(Activo("OptionXML"));
}

TEST_F(Presentacion, LosCamposDeDigitosTraganLoDemas) {
  Abrir();
  auto& campo = El<QLineEdit>("txtIdentificador");
  campo.clear();
  for (const char* tecla : {"1", "a", "-", ".", "2", " ", "ñ"}) {
    QKeyEvent evento(QEvent::KeyPress, 0, Qt::NoModifier, tecla);
    QCoreApplication::sendEvent(&campo, &evento);
  }
  EXPECT_EQ(campo.text(), "12");
  QKeyEvent borrar(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier, "\b");
  QCoreApplication::sendEvent(&campo, &borrar);
  EXPECT_EQ(campo.text(), "1");
  campo.insert("abc");
  EXPECT_EQ(campo.text(), "1") << "nor is it pasted";
}

TEST_F(Presentacion, LaLecturaSeMuestraDondeElOperadorLoTenia) {
  Abrir();
  QPoint lugar;
  Jugar([&](QDialog& ventana) {
    ventana.windowHandle()->setPosition(15, 25);
    QCoreApplication::processEvents();
    lugar = ventana.pos();
    Pulsar("AceptarLecturaCFG");
  });
  dialogo->MostrarLectura();
  EXPECT_EQ(dialogo->pos(), lugar);
}

TEST_F(Presentacion, UnaLecturaNoSeCancela) {
  Abrir();
  Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); });
  dialogo->MostrarLectura();
  const Ocupacion ocupacion(*dialogo, dialogo->AlLeer());
  EXPECT_FALSE(Activo("CancelarLecturaCFG"));
  EXPECT_FALSE(El<PanelAviso>("picInfo").isHidden());
  Pulsar("CancelarLecturaCFG");
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QCoreApplication::sendEvent(dialogo.get(), &escape);
  dialogo->close();
  EXPECT_TRUE(dialogo->isVisible());
  EXPECT_TRUE(dialogo->Acepto) << "its result counts";
  EXPECT_EQ(comunicador.Cuantas("Cancelar"), 0U);
}

TEST_F(Presentacion, LosReparosSeDicenJuntosYElDialogoSigue) {
  Abrir();
  Pulsar("optIP");
  Poner("DireccionIP", "1.2.3");
  Poner("PuertoIP", "9");
  Poner("txtIdentificador", "65536");
  operador.Espera(
      Mensaje{"Debe completar lo siguiente:\nDirección IP inválida\nEl puerto debe ser superior a 10\n"
              "El identificador debe estar comprendido entre 1 y 65535",
              "Configuración", Icono::kInformacion, Botones::kAceptar});
  EXPECT_FALSE(Jugar([&](QDialog& ventana) {
    Pulsar("AceptarLecturaCFG");
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_TRUE(Activo("DireccionIP"));
    EXPECT_EQ(ventana.focusWidget(), &El<QLineEdit>("DireccionIP")) << "the first that is wrong";
    EXPECT_FALSE(conexion.PorIP());
    Pulsar("CancelarLecturaCFG");
  }));
}

TEST_F(Presentacion, AceptarEnSerieGuardaLosAjustes) {
  Abrir();
  El<QComboBox>("cboPuertos").setCurrentText("COM 3");
  El<QComboBox>("CVelocidad").setCurrentText("19200");
  Poner("txtIdentificador", "65535");
  EXPECT_TRUE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_EQ(dialogo->Fuente(), "RTU");
  Propiedades guardadas(propiedades.Archivo());
  guardadas.CargarPropiedades();
  EXPECT_EQ(guardadas.LeerEntero(clave::kPuerto, 1), 3);
  EXPECT_EQ(guardadas.LeerEntero(clave::kVelocidad, 9600), 19200);
  EXPECT_EQ(guardadas.LeerEntero(clave::kIdentificador, 0), 65535);
  EXPECT_TRUE(comunicador.llamadas.empty()) << "the dialog opens no link of its own";
}

TEST_F(Presentacion, AceptarPorIPFijaLaMarca) {
  Abrir();
  Pulsar("optIP");
  Poner("DireccionIP", "10.0.0.9");
  Poner("PuertoIP", "1000");
  EXPECT_TRUE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_TRUE(conexion.PorIP());
  EXPECT_TRUE(LeerEntrada(propiedades).por_ip);
  EXPECT_EQ(dialogo->Direccion(), "10.0.0.9");
  EXPECT_EQ(dialogo->Puerto(), "1000");
}

TEST_F(Presentacion, LaFuenteDeArchivoPideSuClase) {
  for (const bool ucg : {false, true}) {
    Abrir();
    dialogo->bShowUCG = ucg;
    Pulsar("OptionXML");
    operador.EsperaAbrir("Abrir configuración...", std::filesystem::path("/x/y.dat"));
    EXPECT_TRUE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
    EXPECT_EQ(operador.pedidos.back().filtro,
              ucg ? "Configuración exportada (*.ucg)|*.ucg" : "Archivos de configuración (*.icf)|*.icf");
    EXPECT_EQ(dialogo->Fuente(), "/x/y.dat");
  }
  EXPECT_FALSE(std::filesystem::exists(propiedades.Archivo())) << "a file source writes no settings";
}

TEST_F(Presentacion, ElArchivoCanceladoNoAcepta) {
  Abrir();
  Pulsar("OptionXML");
  operador.EsperaAbrir("Abrir configuración...", std::nullopt);
  EXPECT_FALSE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_EQ(dialogo->Fuente(), "");
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(Presentacion, CancelarAbandonaUnaLlamada) {
  Abrir();
  EXPECT_FALSE(Jugar([](QDialog& ventana) { ventana.close(); }));
  EXPECT_THAT(comunicador.llamadas, ElementsAre("Cancelar(no)"));
}

TEST_F(Presentacion, LaLlamadaFallidaDejaElDialogo) {
  Abrir();
  Pulsar("chkTel");
  Poner("txtTelefono", "411");
  Poner("txtComandos", "ATZ");
  comunicador.Devuelve("LlamarTelefono", false);
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (!llamada.starts_with("LlamarTelefono")) return;
    EXPECT_FALSE(Activo("AceptarLecturaCFG")) << "nothing is entered a second time";
    EXPECT_FALSE(Activo("txtTelefono"));
    EXPECT_TRUE(Activo("CancelarLecturaCFG")) << "but the call can be abandoned";
    EXPECT_FALSE(El<PanelAviso>("picInfo").isHidden());
  };
  operador.Espera("Error al comunicarse por teléfono");
  EXPECT_FALSE(Jugar([&](QDialog& ventana) {
    Pulsar("AceptarLecturaCFG");
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_TRUE(Activo("txtTelefono"));
    Pulsar("CancelarLecturaCFG");
  }));
  EXPECT_FALSE(std::filesystem::exists(propiedades.Archivo()));
}

TEST_F(Presentacion, UnaLlamadaCanceladaNoAceptaAunqueAtiendan) {
  Abrir();
  Pulsar("chkTel");
  Poner("txtTelefono", "411");
  Poner("txtComandos", "ATZ");
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (llamada.starts_with("LlamarTelefono")) Pulsar("CancelarLecturaCFG");
  };
  EXPECT_FALSE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_EQ(comunicador.llamadas.back(), "Cancelar(no)");
}

TEST_F(Presentacion, UnaLlamadaCanceladaMientrasSeAbreElPuertoNoSale) {
  Abrir();
  Pulsar("chkTel");
  Poner("txtTelefono", "411");
  Poner("txtComandos", "ATZ");
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (llamada.starts_with("Conectar")) Pulsar("CancelarLecturaCFG");
  };
  EXPECT_FALSE(Jugar([&](QDialog&) { Pulsar("AceptarLecturaCFG"); }));
  EXPECT_EQ(comunicador.Cuantas("LlamarTelefono"), 0U);
  EXPECT_THAT(comunicador.De("Cancelar"), ElementsAre("Cancelar(no)"));
  EXPECT_FALSE(conexion.EnLlamada());
}

TEST_F(Presentacion, VerificarVelocidadEligeLaQueResponde) {
  Abrir();
  comunicador.Devuelve("LeerPagina",
                       [this](const std::string&) { return comunicador.Cuantas("LeerPagina") == 2 ? "1,0,0" : ""; });
  comunicador.al_llamar = [&](const std::string&) {
    Pulsar("optSerie");
    EXPECT_FALSE(Activo("AceptarLecturaCFG"));
    EXPECT_FALSE(Activo("CVerifVelocidad"));
    EXPECT_FALSE(El<PanelAviso>("picInfo").isHidden());
    EXPECT_EQ(operador.ocupado, 1);
  };
  operador.Espera(Mensaje{"La velocidad es de 19200 bps", "Atención", Icono::kNinguno, Botones::kAceptar});
  Pulsar("CVerifVelocidad");
  EXPECT_EQ(Elegido("CVelocidad"), "19200");
  EXPECT_TRUE(Activo("AceptarLecturaCFG"));
  EXPECT_TRUE(Activo("CVerifVelocidad"));
  EXPECT_TRUE(El<PanelAviso>("picInfo").isHidden());
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(Presentacion, CancelarLaVerificacionLaTerminaYEntoncesCierra) {
  Abrir();
  comunicador.Devuelve("LeerPagina", "1,0,0");
  comunicador.al_llamar = [&](const std::string& llamada) {
    if (!llamada.starts_with("LeerPagina")) return;
    EXPECT_EQ(El<QLabel>("lblDetalle").text(), "Probando a 9600 bps");
    Pulsar("CancelarLecturaCFG");
    EXPECT_TRUE(dialogo->isVisible()) << "no moment without a window";
    EXPECT_FALSE(Activo("CancelarLecturaCFG"));
  };
  EXPECT_FALSE(Jugar([&](QDialog& ventana) {
    Pulsar("CVerifVelocidad");
    EXPECT_FALSE(ventana.isVisible());
  }));
  EXPECT_EQ(comunicador.Cuantas("LeerPagina"), 1U);
  EXPECT_TRUE(propiedades.Contenido().empty()) << "as before the check";
}

TEST_F(Presentacion, VerificarVelocidadSinRespuestaCalla) {
  Abrir();
  Pulsar("CVerifVelocidad");
  EXPECT_TRUE(operador.mensajes.empty());
  EXPECT_EQ(Elegido("CVelocidad"), "9600") << "the choice stays";
  EXPECT_EQ(propiedades.LeerEntero(clave::kVelocidad, 9600), 19200) << "the settings keep the last one tried";
  EXPECT_TRUE(Activo("AceptarLecturaCFG"));
}

}  // namespace
}  // namespace utr
