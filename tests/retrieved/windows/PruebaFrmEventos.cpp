#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmEventos.h"

namespace utr {
namespace {

using testing::ElementsAre;

class PruebaFrmEventos : public BancoVistas, public testing::Test {
 protected:
  void ConDescripciones() {
    std::filesystem::copy_file(std::filesystem::path(CARPETA_DATOS) / "Eventos.xml", banco.carpeta / "Eventos.xml");
  }
};

TEST_F(PruebaFrmEventos, ElPeriodoComienzaComoTodoElDiaDeHoy) {
  frmEventos ventana(banco.mod, Canales());
  EXPECT_EQ(U(Hijo<QDateTimeEdit>(ventana, "FechaInicio")->text()), "15/03/2026 00:00:00");
  EXPECT_EQ(U(Hijo<QDateTimeEdit>(ventana, "FechaFin")->text()), "15/03/2026 23:59:00");
}

TEST_F(PruebaFrmEventos, SinElArchivoDeDescripcionesSeListanIgual) {
  frmEventos ventana(banco.mod, Canales());
  driver.Devuelve("LeerEventos", Eventos({{"", "00:10:00", "31", "2", "100"}}));
  Pulsar(ventana, "cmd(0)");
  EXPECT_THAT(Filas(ventana), ElementsAre("14/03/2026|00:10:00|31|Evento|N/D|N/D"));
}

TEST_F(PruebaFrmEventos, LosPendientesNoMiranCartuchoNiFechas) {
  ConDescripciones();
  frmEventos ventana(banco.mod, Canales());
  Hijo<QCheckBox>(ventana, "chkCartucho")->setChecked(true);
  Fecha(ventana, "FechaInicio", Dia(20));
  driver.Devuelve("LeerEventos", TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2"},
                                               {{"", "00:10:00", "31", "0", "2048"}}));
  Pulsar(ventana, "TraerTxEvPend");
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerEventos(,)"));
  ASSERT_EQ(Filas(ventana).size(), 1u);
  EXPECT_TRUE(Filas(ventana)[0].starts_with("15/03/2026|00:10:00|31|")) << "today, since no marker came";
  EXPECT_EQ(Texto(ventana, "lblCantRegistros"), "Cantidad de Registros Cargados: 1");
}

TEST_F(PruebaFrmEventos, ElMenuLeeComoLosBotonesYLaColaVaciaTieneSuPanel) {
  frmEventos ventana(banco.mod, Canales());
  ventana.show();
  Elegir(ventana, "mnuEvTraerPor(1)");
  EXPECT_THAT(Paneles(ventana), ElementsAre("PicSinDatosColaTx"));
  EXPECT_EQ(U(Hijo<PanelAviso>(ventana, "PicSinDatosColaTx")->Texto()), "Sin información en la cola de eventos");
  Elegir(ventana, "mnuEvTraerPor(0)");
  EXPECT_THAT(Paneles(ventana), ElementsAre("picSinDatos"));
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerEventos(,)", "LeerEventos(15/03/2026 00:00:00,15/03/2026 23:59:00)"));
}

TEST_F(PruebaFrmEventos, UnaLecturaDePendientesFallidaSeRegistraConSuNombre) {
  frmEventos ventana(banco.mod, Canales());
  driver.Falla("LeerEventos", Error(1000, "driver", "Sin respuesta"));
  operador.Espera("La operación solicitada no puede completarse\n[ Sin respuesta ]");
  Pulsar(ventana, "TraerTxEvPend");
  EXPECT_THAT(banco.Errores(), testing::HasSubstr("\"frmEventos\",\"Eventos de transmicion pendiente\""));
}

TEST_F(PruebaFrmEventos, AunTrasLeerPendientesSeEscribenLasFechasComoEstaban) {
  frmEventos ventana(banco.mod, Canales());
  driver.Devuelve("LeerEventos", Eventos({{"", "00:10:00", "1", "", ""}}));
  Pulsar(ventana, "TraerTxEvPend");
  Fecha(ventana, "FechaInicio", Dia(1));
  const auto ruta = banco.carpeta / "lista.txt";
  operador.EsperaGuardar("Exportar ...", ruta);
  operador.Espera("La lista ha sido exportada con éxito");
  Elegir(ventana, "mnuEvGuardarComo");
  EXPECT_TRUE(prueba::LeerTodo(ruta).starts_with(
      "Eventos de la UTR\r\nDesde: 15/03/2026 00:00:00\r\nHasta: 15/03/2026 23:59:00\r\n"));
}

}  // namespace
}  // namespace utr
