#include <QProgressBar>
#include <QRadioButton>
#include <functional>
#include <optional>

#include "driver/ErroresDeEnlace.h"
#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmDescarga.h"
#include "session/SituacionDelEnlace.h"
#include "support/DispositivoLleno.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PruebaFrmDescarga : public BancoVistas, public testing::Test {
 protected:
  PruebaFrmDescarga() {
    const std::function<TablaPtr(const std::string&)> datos = [](const std::string& llamada) {
      return llamada.ends_with(",0)") ? Datos({{"", "00:10:00", "1", "2048", "", "", "1", "0"}}) : Datos({});
    };
    driver.Devuelve("LeerDatos", datos);
    driver.Devuelve("LeerEventos", Eventos({{"", "10:00:00", "1", "5", "7"}}));
    Hijo<QLineEdit>(ventana, "txtCarpeta")->setText(Q(donde.string()));
    ventana.show();
  }

  std::vector<std::string> Estados() const {
    const ListaTabla& lista = Lista(ventana).Lista();
    std::vector<std::string> estados;
    for (std::size_t fila = 0; fila < lista.Cantidad(); ++fila)
      estados.push_back(lista.Texto(fila, 0) + "|" + lista.Texto(fila, 1));
    return estados;
  }

  std::vector<std::filesystem::path> Carpetas() const {
    if (!std::filesystem::exists(donde)) return {};
    return {std::filesystem::directory_iterator(donde), std::filesystem::directory_iterator{}};
  }

  const std::filesystem::path donde = banco.carpeta / "Descargas";
  frmDescarga ventana{banco.mod, Canales()};
};

TEST_F(PruebaFrmDescarga, DescargaLoMarcadoYLoDice) {
  Hijo<QAbstractButton>(ventana, "chkCola")->click();
  operador.EsperaParte("La descarga está completa.\nCarpeta: " + donde.string());
  Pulsar(ventana, "cmdDescargar");
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerDatos(15/03/2026,15/03/2026,0)", "LeerDatos(15/03/2026,15/03/2026,14)",
                                           "LeerEventos(15/03/2026 00:00:00,15/03/2026 23:59:59)"));
  EXPECT_THAT(Estados(), ElementsAre("Configuración|guardada", "EA01_Meteorologico|guardada",
                                     "PLV_Pluviómetro|sin datos en el período", "Eventos|guardada",
                                     "Resumen de la descarga|guardada"));
  ASSERT_EQ(Carpetas().size(), 1U);
  EXPECT_TRUE(std::filesystem::exists(Carpetas()[0] / "EA01.csv"));
  EXPECT_TRUE(Hijo<QWidget>(ventana, "cmdSeguir")->isHidden());
  EXPECT_FALSE(Hijo<QAction>(ventana, "mnuSeguir")->isEnabled());
}

TEST_F(PruebaFrmDescarga, LoQueFaltaSeVeYSePideOtraVez) {
  driver.Falla("LeerEventos", Error(error::kSinRespuesta, "driver", "La UTR no responde"), 1);
  operador.EsperaParte("La descarga no está completa. Falta 1 parte");
  Pulsar(ventana, "cmdDescargar");
  EXPECT_EQ(operador.mensajes.back().icono, Icono::kExclamacion);
  EXPECT_EQ(Estados()[3], "Eventos|falta: La UTR no responde");
  driver.llamadas.clear();
  operador.EsperaParte("La descarga está completa");
  Pulsar(ventana, "cmdSeguir");
  EXPECT_THAT(driver.llamadas, ElementsAre("LeerEventos(15/03/2026 00:00:00,15/03/2026 23:59:59)"));
  EXPECT_EQ(Carpetas().size(), 1U) << "into the same folder";
}

TEST_F(PruebaFrmDescarga, SeCancelaAlMedioYQuedaLoQueVino) {
  driver.al_llamar = [this](const std::string& llamada) {
    if (llamada.starts_with("LeerEventos")) {
      EXPECT_FALSE(Hijo<QWidget>(ventana, "Progreso")->isHidden());
      EXPECT_FALSE(Hijo<QWidget>(ventana, "cmdDescargar")->isEnabled());
      Pulsar(ventana, "CancelarLectura");
      throw Error(error_enlace::kCancelada, "driver", "La operación fue cancelada");
    }
  };
  Pulsar(ventana, "cmdDescargar");
  EXPECT_EQ(driver.llamadas.back(), "Cancelar(no)");
  EXPECT_THAT(Texto(ventana, "lblFinal"), HasSubstr("La descarga fue cancelada. Faltan 2 partes"));
  EXPECT_EQ(Estados()[1], "EA01_Meteorologico|guardada");
  EXPECT_EQ(Estados()[3], "Eventos|pendiente");
  EXPECT_FALSE(Hijo<QWidget>(ventana, "cmdSeguir")->isHidden());
}

TEST_F(PruebaFrmDescarga, CerrarConLoLeidoSinGuardarLoPregunta) {
  constexpr const char* kPregunta = "Se leyó de la UTR 1 parte que no se pudo guardar";
  std::optional<DispositivoLleno> lleno;
  driver.al_llamar = [&](const std::string& llamada) {
    if (llamada.starts_with("LeerEventos")) lleno.emplace(16);
  };
  operador.EsperaParte("La descarga no está completa");
  Pulsar(ventana, "cmdDescargar");
  lleno.reset();
  driver.al_llamar = {};
  driver.llamadas.clear();
  operador.EsperaParte(kPregunta, Respuesta::kCancelar);
  ventana.close();
  EXPECT_TRUE(ventana.isVisible());
  operador.EsperaParte(kPregunta, Respuesta::kCancelar);
  Pulsar(ventana, "cmdDescargar");
  EXPECT_TRUE(driver.llamadas.empty()) << "another download doesn't drop it either";
  operador.EsperaParte(kPregunta, Respuesta::kPrimera);
  operador.EsperaAbrir("Carpeta de las descargas ...", banco.carpeta / "otra");
  operador.EsperaParte("La descarga no está completa. Falta 1 parte");
  ventana.close();
  EXPECT_FALSE(ventana.isVisible());
  const std::filesystem::directory_iterator carpeta(banco.carpeta / "otra");
  EXPECT_TRUE(std::filesystem::exists(carpeta->path() / "Eventos.csv"));
  EXPECT_TRUE(driver.llamadas.empty());
}

TEST_F(PruebaFrmDescarga, LoLeidoSePierdeSoloSiSeDice) {
  std::optional<DispositivoLleno> lleno;
  driver.al_llamar = [&](const std::string&) { lleno.emplace(16); };
  operador.EsperaParte("La descarga no está completa");
  Pulsar(ventana, "cmdDescargar");
  operador.EsperaParte("Se leyó de la UTR 1 parte", Respuesta::kSegunda);
  ventana.close();
  EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PruebaFrmDescarga, LoQueNoTieneSentidoSeDiceAntesDeEmpezar) {
  Fecha(ventana, "FechaInicio", Dia(16));
  operador.Espera(Mensaje{"La fecha de inicio debe ser menor que la de finalización", "Descargar todo",
                          Icono::kExclamacion, Botones::kAceptar});
  Pulsar(ventana, "cmdDescargar");
  Fecha(ventana, "FechaInicio", Dia(15));
  for (const char* una : {"chkConfiguracion", "chkDatos", "chkEventos", "chkCola"}) Pulsar(ventana, una);
  operador.Espera("Marque al menos una cosa para descargar");
  Pulsar(ventana, "cmdDescargar");
  Pulsar(ventana, "chkEventos");
  prueba::EscribirTodo(donde, "un archivo en su lugar");
  operador.EsperaParte("La operación solicitada no puede completarse\n[ No se puede crear la carpeta");
  Pulsar(ventana, "cmdDescargar");
  EXPECT_TRUE(driver.llamadas.empty());
}

TEST_F(PruebaFrmDescarga, LaCarpetaSeEligeYElCsvNoVaConLasTablas) {
  operador.EsperaAbrir("Carpeta de las descargas ...", std::nullopt);
  Pulsar(ventana, "cmdCarpeta");
  EXPECT_EQ(U(Hijo<QLineEdit>(ventana, "txtCarpeta")->text()), donde.string());
  operador.EsperaAbrir("Carpeta de las descargas ...", banco.carpeta / "otra");
  Pulsar(ventana, "cmdCarpeta");
  EXPECT_EQ(operador.pedidos.back().filtro, "");
  Pulsar(ventana, "optTablas");
  EXPECT_FALSE(Hijo<QWidget>(ventana, "cboSeparador")->isEnabled());
  operador.EsperaParte("La descarga está completa");
  Pulsar(ventana, "cmdDescargar");
  const std::filesystem::directory_iterator carpeta(banco.carpeta / "otra");
  EXPECT_TRUE(std::filesystem::exists(carpeta->path() / "EA01.xml"));
}

}  // namespace
}  // namespace utr
