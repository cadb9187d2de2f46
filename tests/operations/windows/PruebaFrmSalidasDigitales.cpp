#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTimer>

#include "operations/windows/IndicadorSalida.h"
#include "operations/windows/frmSalidasDigitales.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::HasSubstr;
using Textos = std::vector<std::string>;
using Senal = IndicadorSalida::Senal;

constexpr const char* kFalla = "La operación solicitada no puede ser completada\n[sin respuesta]";

TablaPtr Trama(const char* sd1, const char* sd2, const char* sd3) {
  std::vector<Celdas> filas(35, Celdas{"0"});
  for (const char* valor : {sd1, sd2, sd3}) filas.push_back({valor});
  return TablaDeTextos({"Valor"}, filas);
}

class FrmSalidas : public prueba::ModPrueba, public testing::Test {
 protected:
  FrmSalidas() { comunicador.Devuelve("LeerInstantaneos", Trama("0", "0", "0")); }

  void Con(const std::function<void()>& paso) {
    frmSalidasDigitales salidas(mod);
    ventana = &salidas;
    EXPECT_EQ(Estados(), (Textos{"Sin Respuesta", "Sin Respuesta", "Sin Respuesta"}));
    ventanas.Espera("frmSalidasDigitales", [&](QDialog& dialogo) {
      QApplication::processEvents();  // the read at the beginning
      paso();
      dialogo.close();
    });
    salidas.exec();
  }
  Textos Estados() {
    Textos estados;
    for (const char* nombre : {"lblEstadoSD1", "lblEstadoSD2", "lblEstadoSD3"})
      estados.push_back(Hallar<QLabel>(*ventana, nombre).text().toStdString());
    return estados;
  }
  Senal SenalDe(const char* marco) {
    return dynamic_cast<IndicadorSalida&>(*Hallar<QGroupBox>(*ventana, marco).layout()->itemAt(1)->widget()).Mostrada();
  }
  void Pulsar(const char* nombre) { Hallar<QPushButton>(*ventana, nombre).click(); }
  void Actualizar() { Hallar<QAction>(*ventana, "mnuActualizar").trigger(); }
  std::string Asentado(std::size_t cual) {
    const Asiento& uno = mod.diario.Asientos()[cual];
    return uno.comando + ": " + uno.antes + ", " + uno.escrito + ", " + uno.resultado;
  }
  std::string Linea() { return Hallar<QLabel>(*ventana, "lblLinea").text().toStdString(); }
  QCheckBox& Solo() { return Hallar<QCheckBox>(*ventana, "chkActualizarSolo"); }
  QTimer& Plazo() { return Hallar<QTimer>(*ventana, "tmrActualizarSolo"); }
  // The time runs out.
  void Vencer() {
    Plazo().stop();
    QMetaObject::invokeMethod(&Plazo(), "timeout");
  }
  void Callar() { comunicador.Falla("LeerInstantaneos", Error(8020, "driver", "sin respuesta")); }

  GuionVentanas ventanas;
  frmSalidasDigitales* ventana = nullptr;
};

TEST_F(FrmSalidas, AlAbrirseLeeYMuestraConFormaYTexto) {
  Con([&] {
    EXPECT_EQ(Estados(), (Textos{"ENCENDIDO", "APAGADO", "APAGADO"}));
    EXPECT_EQ(SenalDe("fraSD1"), Senal::kEncendida);
    EXPECT_EQ(SenalDe("fraSD2"), Senal::kApagada);
    comunicador.Devuelve("LeerInstantaneos", Trama("1", "0", "1"));
    Actualizar();
    EXPECT_EQ(Estados(), (Textos{"APAGADO", "APAGADO", "ENCENDIDO"}));
    EXPECT_EQ(Linea(), "Estados leídos, 10:00:00");
    EXPECT_FALSE(Plazo().isActive());
  });
  EXPECT_EQ(comunicador.Cuantas("LeerInstantaneos"), 2U);
}

TEST_F(FrmSalidas, CadaBotonMandaSuSalidaYTrasEllaSeLee) {
  const std::pair<const char*, const char*> kBotones[] = {{"cmdSD1(0)", "GrabarSalidaDigital(1,si)"},
                                                          {"cmdSD1(1)", "GrabarSalidaDigital(1,no)"},
                                                          {"cmdSD2(0)", "GrabarSalidaDigital(2,si)"},
                                                          {"cmdSD2(1)", "GrabarSalidaDigital(2,no)"}};
  Con([&] {
    for (const auto& [boton, llamada] : kBotones) {
      comunicador.llamadas.clear();
      Pulsar(boton);
      EXPECT_EQ(comunicador.llamadas, (Textos{llamada, "LeerInstantaneos()"}));
    }
    EXPECT_EQ(Linea(), "Estados leídos, 10:00:00\nSD3: aceptó Apagar, 10:00:00");
  });
  ASSERT_EQ(mod.diario.Asientos().size(), std::size(kBotones));
  EXPECT_EQ(Asentado(0), "Salida SD2: APAGADO, ENCENDIDO, hecho");
  EXPECT_EQ(Asentado(3), "Salida SD3: APAGADO, APAGADO, hecho");
}

TEST_F(FrmSalidas, LoRechazadoSeVeHastaLaLecturaYLaLineaLoConserva) {
  Con([&] {
    comunicador.Devuelve("GrabarSalidaDigital", false);
    Textos durante;
    comunicador.al_llamar = [&](const std::string& llamada) {
      if (llamada.starts_with("LeerInst")) durante = Estados();
    };
    Pulsar("cmdSD1(0)");
    EXPECT_EQ(durante, (Textos{"ENCENDIDO", "Sin Respuesta", "APAGADO"}));
    EXPECT_EQ(Estados(), (Textos{"ENCENDIDO", "APAGADO", "APAGADO"}));
    EXPECT_THAT(Linea(), HasSubstr("SD2: no aceptó Encender, 10:00:00"));
    Callar();
    operador.Espera({kFalla, "Salidas Digitales", Icono::kCritico, Botones::kAceptar});
    operador.al_preguntar = [&] { EXPECT_THAT(Linea(), HasSubstr("SD3: no aceptó")) << "told under the box"; };
    Pulsar("cmdSD2(0)");
    EXPECT_EQ(Estados(), (Textos{"ENCENDIDO", "APAGADO", "Sin Respuesta"}));
    EXPECT_EQ(SenalDe("fraSD3"), Senal::kDesconocida);
    operador.Espera(kFalla);
    Pulsar("cmdSD2(1)");
    EXPECT_EQ(Asentado(2), "Salida SD3: sin leer, APAGADO, Sin Respuesta; no confirmado");
  });
  EXPECT_THAT(Errores(), HasSubstr("\"frmSalidasDigitales\",\"ObtenerEstadoSalidasDig\""));
}

TEST_F(FrmSalidas, ActualizarSoloSeArmaTrasCadaLecturaYSeApagaSinCajaAlFallar) {
  Con([&] {
    Solo().click();
    EXPECT_TRUE(Plazo().isActive());
    EXPECT_EQ(Plazo().interval(), 10'000);
    comunicador.al_llamar = [&](const std::string&) { EXPECT_FALSE(Plazo().isActive()) << "not while it works"; };
    comunicador.Devuelve("LeerInstantaneos", Trama("0", "1", "0"));
    Vencer();
    EXPECT_EQ(Estados()[1], "ENCENDIDO");
    EXPECT_TRUE(Plazo().isActive());
    Pulsar("cmdSD1(1)");
    EXPECT_TRUE(Plazo().isActive());

    Callar();
    operador.Espera(kFalla);
    operador.al_preguntar = [&] { EXPECT_FALSE(Plazo().isActive()) << "nor under a box"; };
    Actualizar();
    EXPECT_TRUE(Solo().isChecked()) << "a read that was asked for says so itself";
    Vencer();
    EXPECT_FALSE(Solo().isChecked());
    EXPECT_FALSE(Plazo().isActive());
    EXPECT_THAT(Linea(), HasSubstr("Actualizar solo se apagó, 10:00:00: sin respuesta"));
    EXPECT_EQ(Estados()[1], "ENCENDIDO") << "what was read last stays";

    comunicador.NoFalla("LeerInstantaneos");
    Actualizar();
    EXPECT_THAT(Linea(), testing::Not(HasSubstr("se apagó")));
  });
}

// Another dialog stands over the window: its read waits until that is gone.
TEST_F(FrmSalidas, BajoOtroDialogoNoLeeSola) {
  Con([&] {
    Solo().click();
    const std::size_t leidas = comunicador.Cuantas("LeerInstantaneos");
    QDialog otro(ventana);
    otro.setObjectName("otro");
    ventanas.Espera("otro", [&](QDialog& d) {
      Vencer();
      EXPECT_EQ(comunicador.Cuantas("LeerInstantaneos"), leidas);
      EXPECT_TRUE(Plazo().isActive()) << "it tries again later";
      d.close();
    });
    otro.exec();
  });
}

}  // namespace
}  // namespace utr
