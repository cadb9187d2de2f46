#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include "session/ArchivoBitacora.h"
#include "shell/windows/InstanciaUnica.h"
#include "shell/windows/Main.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

using namespace std::string_literals;

class Inicio : public testing::Test {
 protected:
  Entorno Del() { return {comunicador, puertos, impresora, operador, reloj, {}, carpeta.Ruta(), "AdminUTR"}; }

  void EsperarIntentos(std::vector<const char*> intentos) {
    ventanas.Espera("frmLogin", [intentos](QDialog& d) {
      for (const char* intento : intentos) {
        Hallar<QLineEdit>(d, "txtPassword").setText(intento);
        Hallar<QAbstractButton>(d, "CmdOK").click();
      }
    });
  }

  prueba::Carpeta carpeta;
  RelojFalso reloj;
  ComunicadorFalso comunicador;
  OperadorGuion operador;
  prueba::PuertosFalsos puertos;
  prueba::ImpresoraFalsa impresora;
  GuionVentanas ventanas;
};

TEST_F(Inicio, EnCarpetaLimpiaRigeLaClaveDeFabrica) {
  Main principal(Del());
  EsperarIntentos({"Pampas"});
  EXPECT_TRUE(principal.Entrar());
  EXPECT_TRUE(std::filesystem::exists(carpeta / "AdminUTR.dll"));
  EXPECT_EQ(principal.Mod().archivo_ayuda, carpeta.Ruta() / "Ayuda" / "AdminUTR.hlp");
}

TEST_F(Inicio, RigeLaClaveGuardada) {
  prueba::EscribirTodo(carpeta / "AdminUTR.dll", "Clave = \"Delta\"\n");
  Main principal(Del());
  operador.Espera("Contraseña incorrecta, Intentelo nuevamente");
  EsperarIntentos({"Pampas", "Delta"});
  EXPECT_TRUE(principal.Entrar());
}

TEST_F(Inicio, BytesAlAzarEnLosAjustesValenPorNinguno) {
  prueba::EscribirTodo(carpeta / "AdminUTR.dll", "\xff\x00\x01Clave=\x80 = \"x\n["s);
  Main principal(Del());
  EsperarIntentos({"Pampas"});
  EXPECT_TRUE(principal.Entrar());
}

TEST_F(Inicio, LaBitacoraQueNoSePudoGuardarTieneOtroLugar) {
  prueba::EscribirTodo(carpeta / "Respaldos", "en el camino");
  Main principal(Del());
  principal.Mod().comunicador.ReiniciarUTR("14");
  EXPECT_EQ(comunicador.llamadas, std::vector<std::string>{"ReiniciarUTR(14)"});
  const auto otra_estacion = [&](std::int64_t numero) {
    principal.Mod().propiedades.Escribir(clave::kIdentificador, Propiedad{numero}, Propiedad{std::int64_t{0}});
  };
  otra_estacion(80);
  principal.Mod().comunicador.BorrarFlash();
  otra_estacion(90);
  principal.Mod().comunicador.BorrarCartucho();
  otra_estacion(0);
  principal.Mod().comunicador.ReiniciarAgenda("41");
  operador.EsperaParte("estación sin identificador tiene 2 asientos que no se pudieron guardar", Respuesta::kSi);
  operador.EsperaGuardar("Guardar bitácora...", carpeta / "no_hay/a.csv");
  operador.EsperaParte("La operación solicitada no puede ser completada");
  operador.EsperaParte("¿Desea guardar lo que falta en otro archivo?", Respuesta::kSi);
  operador.EsperaGuardar("Guardar bitácora...", carpeta / "a.csv");
  operador.EsperaParte("estación 80 tiene 1 asiento que no se pudo guardar", Respuesta::kNo);
  operador.EsperaParte("estación 90 tiene 1 asiento que no se pudo guardar", Respuesta::kSi);
  operador.EsperaGuardar("Guardar bitácora...", carpeta / "b.csv");
  principal.CerrarBitacora();
  const auto que = [&](const char* archivo) {
    std::vector<std::string> textos;
    for (const Asiento& a : LeerBitacora(carpeta / archivo).asientos) textos.push_back(a.unidad + ", " + a.comando);
    return textos;
  };
  EXPECT_EQ(que("a.csv"), (std::vector<std::string>{"simulada, Reinicio UTR", "simulada, Reinicio Agenda"}));
  EXPECT_EQ(que("b.csv"), std::vector<std::string>{"simulada, Borrar Cartucho"}) << "no station in the file of another";
  std::filesystem::remove(carpeta / "Respaldos");
  principal.Mod().comunicador.ReiniciarUTR("14");
  principal.CerrarBitacora();
  EXPECT_EQ(principal.Mod().bitacora.Pendientes().size(), 0U) << "and then nothing is asked";
}

TEST_F(Inicio, ElAvisoDelComienzoSeDiceEnLaBarraDeEstado) {
  Entorno entorno = Del();
  entorno.aviso = "La estación simulada comienza de nuevo";
  Main principal(entorno);
  std::string dicho;
  ventanas.Espera("frmPresentacion", [](QDialog& d) { d.close(); });
  // At every turn of a loop, until the program's own ends by it: those of the dialog and of the loading come first.
  QTimer vuelta;
  QObject::connect(&vuelta, &QTimer::timeout, [&dicho] {
    for (QWidget* ventana : QApplication::topLevelWidgets()) {
      const auto* panel = ventana->findChild<QLabel*>("Panel1");
      if (panel == nullptr || !panel->isVisible()) continue;
      dicho = panel->text().toStdString();
      QCoreApplication::quit();
    }
  });
  vuelta.start(0);
  principal.Correr();
  EXPECT_EQ(dicho, entorno.aviso);
}

TEST_F(Inicio, SinLaClaveNoSeEntra) {
  Main principal(Del());
  operador.Espera("Contraseña incorrecta, Intentelo nuevamente");
  operador.Espera("Contraseña incorrecta, Intentelo nuevamente");
  operador.Espera("Ha superado el número de intentos válido\nContacte con el administrador para buscar su clave");
  EsperarIntentos({"a", "b", "pampas"});
  EXPECT_FALSE(principal.Entrar());
  EXPECT_TRUE(comunicador.llamadas.empty());
}

TEST_F(Inicio, UnaSolaInstanciaPorCarpeta) {
  const prueba::Carpeta otra_carpeta;
  const QString aqui = QString::fromStdString(carpeta.Ruta().string());
  InstanciaUnica primera(aqui);
  InstanciaUnica segunda(aqui + "/.");
  InstanciaUnica ajena(QString::fromStdString(otra_carpeta.Ruta().string()));
  int avisos = 0;
  QObject::connect(&primera, &InstanciaUnica::OtraInstancia, [&] { ++avisos; });
  EXPECT_TRUE(primera.Tomar());
  EXPECT_FALSE(segunda.Tomar());
  EXPECT_TRUE(ajena.Tomar());
  QCoreApplication::processEvents();
  EXPECT_EQ(avisos, 1);
}

}  // namespace
}  // namespace utr
