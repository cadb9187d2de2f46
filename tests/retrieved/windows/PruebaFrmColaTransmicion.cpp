#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmColaTransmicion.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class PruebaFrmColaTransmicion : public BancoVistas, public testing::Test {
 protected:
  PruebaFrmColaTransmicion() {
    banco.mod.eleccion_impresora = {"Oficina", 1};
    driver.Devuelve("LeerColaTx", Datos({{"", "00:10:00", "1", "2048", "", "", "0", "0"}}));
    ventana.show();
  }

  std::string Guardado() {
    const auto ruta = banco.carpeta / "lista.txt";
    operador.EsperaGuardar("Guardar como ...", ruta);
    operador.Espera("La lista ha sido exportada con éxito");
    Elegir(ventana, "mnuGuardarComo");
    return prueba::LeerTodo(ruta);
  }
  std::string Impreso() {
    Elegir(ventana, "mnuImprimir");
    return banco.impresora.trabajos.back().substr(std::string("Oficina:").size());
  }

  frmColaTransmicion ventana{banco.mod, Canales()};
};

TEST_F(PruebaFrmColaTransmicion, LosTitulosSiguenALaLecturaYElPapelDifiereDelArchivo) {
  Pulsar(ventana, "TraerTxPorDia");
  const std::string fechas = "\r\nDesde: 15/03/2026\r\nHasta: 15/03/2026\r\nFecha\tHora";
  EXPECT_TRUE(Guardado().starts_with("Datos de la cola de tx de la UTR" + fechas));
  EXPECT_TRUE(Impreso().starts_with("Datos de la cola de tx por dia de la UTR" + fechas));
  Pulsar(ventana, "TraerTxPend");
  const std::string pendiente = "Datos pendientes de la cola de tx de la UTR\r\nFecha: 15/03/2026\r\nFecha\tHora";
  EXPECT_TRUE(Guardado().starts_with(pendiente));
  EXPECT_TRUE(Impreso().starts_with(pendiente));
  EXPECT_THAT(Impreso(), Not(HasSubstr("Desde: ")));
}

TEST_F(PruebaFrmColaTransmicion, LoPendienteNoTomaFechasNiCartucho) {
  Hijo<QCheckBox>(ventana, "chkCartucho")->setChecked(true);
  Fecha(ventana, "FechaInicio", Dia(20));
  Elegir(ventana, "mnuColaTxPend");
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerColaTx(,)"));
  EXPECT_EQ(Filas(ventana).size(), 1u);
  driver.Devuelve("LeerColaTx", TablaPtr());
  Pulsar(ventana, "TraerTxPend");
  EXPECT_THAT(Paneles(ventana), ElementsAre("PicSinDatosColaTx"));
  EXPECT_EQ(U(Hijo<PanelAviso>(ventana, "PicSinDatosColaTx")->Texto()), "Sin información en la cola de datos");
}

TEST_F(PruebaFrmColaTransmicion, FechasAlRevesDejanLaListaComoEstaba) {
  Pulsar(ventana, "TraerTxPend");
  Fecha(ventana, "FechaInicio", Dia(20));
  operador.Espera("La fecha de inicio debe ser menor que la de finalización");
  Elegir(ventana, "mnuColaTxDia");
  EXPECT_EQ(Filas(ventana).size(), 1u);
  EXPECT_EQ(Texto(ventana, "lblCantRegistros"), "Cantidad de Registros Cargados: 1");
  EXPECT_TRUE(Hijo<QAction>(ventana, "mnuImprimir")->isEnabled());
}

TEST_F(PruebaFrmColaTransmicion, UnaLecturaRehusadaNoDaSusFechasANingunDocumento) {
  const auto rehusar = [this] {
    Fecha(ventana, "FechaInicio", Dia(20));
    operador.Espera("La fecha de inicio debe ser menor que la de finalización");
    Pulsar(ventana, "TraerTxPorDia");
  };
  Pulsar(ventana, "TraerTxPorDia");
  rehusar();
  const std::string leido = "\r\nDesde: 15/03/2026\r\nHasta: 15/03/2026\r\nFecha\tHora";
  EXPECT_TRUE(Guardado().starts_with("Datos de la cola de tx de la UTR" + leido));
  EXPECT_TRUE(Impreso().starts_with("Datos de la cola de tx por dia de la UTR" + leido));
  EXPECT_EQ(Texto(ventana, "lblPeriodo"), "Desde: 15/03/2026    Hasta: 15/03/2026");
  Pulsar(ventana, "TraerTxPend");
  rehusar();
  EXPECT_TRUE(Impreso().starts_with("Datos pendientes de la cola de tx de la UTR\r\nFecha: 15/03/2026\r\n"));
}

TEST_F(PruebaFrmColaTransmicion, UnaFallaSeRegistraConSuNombre) {
  driver.Falla("LeerColaTx", Error(1000, "driver", "Sin respuesta"));
  operador.Espera("La operación solicitada no puede completarse\n[ Sin respuesta ]");
  Pulsar(ventana, "TraerTxPend");
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmColaTransmicion\",\"TraerTxPend\""));
}

}  // namespace
}  // namespace utr
