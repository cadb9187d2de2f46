#include <QListWidget>

#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmProcesar.h"

namespace utr {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kTitulo = "Procesamiento de la información";
constexpr const char* kAbrir = "Seleccione el archivo de lectura...";

class PruebaFrmProcesar : public BancoVistas, public testing::Test {
 protected:
  PruebaFrmProcesar() {
    ventana = std::make_unique<frmProcesar>(banco.mod, ConfiguracionAplicada{CanalesConPila(), "de prueba"});
    ventana->show();
  }

  static TablaPtr CanalesConPila() {
    return TablaDeCanales({{{"Canal", "1"}, {"Pila", "0"}}, {{"Canal", "15"}, {"Tipo", "5"}, {"Pila", "8"}}});
  }
  static std::string Linea(int pista, int pagina, int byte) {
    std::string linea = "\"";
    for (int i = 0; i < 64; ++i) linea += std::to_string(byte) + ",";
    return linea + "#" + std::to_string(pista) + "," + std::to_string(pagina) + "\"\r\n";
  }
  std::filesystem::path Bkp(const char* nombre, const std::string& lineas = {}) {
    prueba::EscribirTodo(banco.carpeta / nombre, "\"0/31\"\r\n" + lineas + "\"EOT\"\r\n");
    return banco.carpeta / nombre;
  }
  std::filesystem::path ConEventos(const char* nombre = "rio.bkp") {
    driver.Devuelve("DecodificarPagina", Eventos({{"", "00:10:00", "31", "2", "100"}}));
    return Bkp(nombre, Linea(30, 0, 1) + Linea(30, 1, 255));
  }
  void Abrir(const std::filesystem::path& ruta, const char* boton = "AbrirArchivo") {
    operador.EsperaAbrir(kAbrir, ruta);
    Pulsar(*ventana, boton);
  }
  void EsperarCaja(const char* texto, Icono icono) {
    operador.Espera(Mensaje{texto, kTitulo, icono, Botones::kAceptar});
  }
  std::string Campo(const char* nombre) { return U(Hijo<QLineEdit>(*ventana, nombre)->text()); }
  bool Libre() {
    return Hijo<QWidget>(*ventana, "cmd(0)")->isEnabled() && Hijo<QWidget>(*ventana, "AbrirArchivo")->isEnabled() &&
           Hijo<QWidget>(*ventana, "picInfo")->isHidden() && operador.ocupado == 0;
  }

  std::unique_ptr<frmProcesar> ventana;
};

TEST_F(PruebaFrmProcesar, LoQueFaltaSeDiceYLaVentanaSigueUtil) {
  EsperarCaja("Debe seleccionar el archivo a procesar", Icono::kInformacion);
  Pulsar(*ventana, "cmd(0)");
  prueba::EscribirTodo(banco.carpeta / "nada.bkp", "");
  Abrir(banco.carpeta / "nada.bkp");
  EXPECT_EQ(Texto(*ventana, "lblAnticipo"), "nada.bkp: está vacío");
  EsperarCaja("No se reconoce el formato del archivo", Icono::kCritico);
  Pulsar(*ventana, "cmd(0)");
  EXPECT_TRUE(Libre());
  EXPECT_FALSE(ventana->Procesado);
  EXPECT_TRUE(ventana->isVisible());
  frmProcesar sin_filas(banco.mod, {TablaDeCanales({}), "vacía"});
  EsperarCaja("La configuración cargada no es válida", Icono::kCritico);
  Pulsar(sin_filas, "cmd(0)");
  EXPECT_FALSE(sin_filas.Procesado);
}

TEST_F(PruebaFrmProcesar, UnaCorridaDejaResultadoEInformeYCierra) {
  Abrir(ConEventos());
  Pulsar(*ventana, "cmd(0)");
  EXPECT_TRUE(ventana->Procesado);
  EXPECT_FALSE(ventana->isVisible());
  EXPECT_EQ(ventana->ArchivoResultado, banco.carpeta / "rioEventos.xml");
  EXPECT_TRUE(std::filesystem::exists(ventana->ArchivoResultado));
  EXPECT_THAT(prueba::LeerTodo(ventana->Informe), HasSubstr("de prueba"));
  EXPECT_TRUE(Libre());
}

TEST_F(PruebaFrmProcesar, SinPaginasNoHayResultadoPeroSiInforme) {
  Abrir(Bkp("rio.bkp"));
  Pulsar(*ventana, "cmd(0)");
  EXPECT_TRUE(ventana->Procesado);
  EXPECT_TRUE(ventana->ArchivoResultado.empty());
  EXPECT_TRUE(std::filesystem::exists(ventana->Informe));
}

TEST_F(PruebaFrmProcesar, MientrasProcesaNadaSePuedeNiSeCierra) {
  Abrir(ConEventos());
  int veces = 0;
  driver.al_llamar = [&](const std::string&) {
    ++veces;
    EXPECT_FALSE(Hijo<QWidget>(*ventana, "picInfo")->isHidden());
    EXPECT_FALSE(Hijo<QWidget>(*ventana, "cmd(1)")->isEnabled());
    EXPECT_FALSE(Hijo<QWidget>(*ventana, "AbrirArchivo")->isEnabled());
    EXPECT_EQ(operador.ocupado, 1);
    ventana->close();
    QTest::keyClick(ventana.get(), Qt::Key_Escape);
    Pulsar(*ventana, "cmd(0)");
    EXPECT_TRUE(ventana->isVisible());
    EncolarTecla(ventana.get(), Qt::Key_Escape);
  };
  Pulsar(*ventana, "cmd(0)");
  EXPECT_EQ(veces, 1);
  EXPECT_TRUE(ventana->Procesado);
}

TEST_F(PruebaFrmProcesar, UnaCorridaQueFallaSeDiceSeRegistraDosVecesYDejaLosAnteriores) {
  const auto ruta = ConEventos();
  prueba::EscribirTodo(banco.carpeta / "rioEventos.xml", "anterior");
  prueba::EscribirTodo(banco.carpeta / "ajeno.bkp", std::string(200, 'x') + "\r\n" + std::string(200, 'y') + "\r\n");
  prueba::EscribirTodo(banco.carpeta / "archivo", "");
  const struct {
    std::filesystem::path archivo;
    std::filesystem::path resultados;
  } casos[] = {{banco.carpeta / "ajeno.bkp", banco.carpeta / "x.xml"},
               {banco.carpeta / "falta.bkp", banco.carpeta / "x.xml"},
               {ruta, banco.carpeta / "archivo" / "x.xml"}};
  for (const auto& caso : casos) {
    Abrir(caso.archivo);
    operador.EsperaGuardar("Guardar en...", caso.resultados);
    Pulsar(*ventana, "GuardarEn");
    EXPECT_EQ(operador.pedidos.back().filtro, "Información procesada (*.xml)|*.xml");
    EXPECT_EQ(operador.pedidos.back().nombre, "Información resultante");
    EXPECT_EQ(Campo("lblResultadosEn"), caso.resultados.parent_path().string());
    operador.EsperaParte("La operación solicitada no puede ser completada\n[");
    Pulsar(*ventana, "cmd(0)");
    EXPECT_EQ(operador.mensajes.back().titulo, kTitulo);
    EXPECT_TRUE(Libre());
    EXPECT_FALSE(ventana->Procesado);
    EXPECT_TRUE(ventana->isVisible());
  }
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmProcesar\",\"ProcesandoDatos\""));
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmProcesar\",\"cmd_Click\""));
  EXPECT_EQ(prueba::LeerTodo(banco.carpeta / "rioEventos.xml"), "anterior");
  operador.EsperaGuardar("Guardar en...", banco.carpeta / "x.xml");
  Pulsar(*ventana, "GuardarEn");
  Pulsar(*ventana, "cmd(0)");
  EXPECT_TRUE(ventana->Procesado) << "the window goes on after failures";
}

TEST_F(PruebaFrmProcesar, ElMapaAnticipaLoQueTienenLosArchivos) {
  EXPECT_EQ(Texto(*ventana, "lblCuentaMapa"), "32768 no están en el archivo");
  Abrir(Bkp("a.bkp", Linea(0, 0, 1) + Linea(3, 0, 1) + Linea(0, 1, 255) + Linea(30, 0, 1)));
  EXPECT_EQ(Texto(*ventana, "lblCuentaMapa"),
            "2 con datos, 1 vacía, 1 de una pila sin canal, 32764 no están en el archivo");
  EXPECT_TRUE(Hijo<QLabel>(*ventana, "lblAnticipo")->isHidden());
  Abrir(Bkp("b.bkp", Linea(0, 1, 7) + Linea(0, 0, 255) + Linea(8, 5, 256) + Linea(40, 0, 1)), "AgregarArchivo");
  EXPECT_THAT(Texto(*ventana, "lblCuentaMapa"), HasSubstr("3 con datos, 1 dañada, 1 de una pila sin canal"));
  EXPECT_THAT(Texto(*ventana, "lblAnticipo"), testing::StartsWith("b.bkp: 2 líneas dañadas o cortadas (línea 4: "));
  Abrir(banco.carpeta / "falta.bkp");
  EXPECT_THAT(Texto(*ventana, "lblAnticipo"), HasSubstr("falta.bkp"));
  Abrir(Bkp("c.bkp", Linea(40, 0, 1)), "AgregarArchivo");
  EXPECT_THAT(Texto(*ventana, "lblAnticipo"), testing::EndsWith("... y 1 más")) << "however many, the window fits";
  EXPECT_THAT(U(Hijo<QLabel>(*ventana, "lblAnticipo")->toolTip()), HasSubstr("c.bkp: no es un archivo"));
}

TEST_F(PruebaFrmProcesar, VariosArchivosSeJuntanSinRepetirseYSeQuitan) {
  auto* lista = Hijo<QListWidget>(*ventana, "lstArchivos");
  EXPECT_TRUE(lista->isHidden());
  Abrir(ConEventos("rio.bkp"), "AgregarArchivo");
  EXPECT_EQ(Campo("ArchivoAProcesar"), (banco.carpeta / "rio.bkp").string()) << "the first one names the results";
  operador.EsperaAbrir(kAbrir, banco.carpeta.Ruta() / "." / "rio.bkp");
  EsperarCaja("Ese archivo ya está entre los que se van a procesar", Icono::kInformacion);
  Pulsar(*ventana, "AgregarArchivo");
  for (const char* nombre : {"b.bkp", "c.bkp"}) Abrir(Bkp(nombre, Linea(31, 0, 2)), "AgregarArchivo");
  EXPECT_EQ(lista->count(), 2);
  EXPECT_FALSE(lista->isHidden());
  Pulsar(*ventana, "QuitarArchivo");
  ASSERT_EQ(lista->count(), 1);
  EXPECT_THAT(U(lista->item(0)->text()), HasSubstr("b.bkp"));
  Pulsar(*ventana, "cmd(0)");
  EXPECT_EQ(ventana->ArchivoResultado, banco.carpeta / "rioEventos.xml");
  EXPECT_EQ(driver.Cuantas("DecodificarPagina"), 2u);
}

TEST_F(PruebaFrmProcesar, TabPasaPorTodoYVuelve) {
  std::vector<std::string> recorrido;
  for (int i = 0; i < 11; ++i) {
    recorrido.push_back(U(ventana->focusWidget()->objectName()));
    QTest::keyClick(ventana->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(recorrido,
              testing::ElementsAre("AbrirArchivo", "AgregarArchivo", "lblResultadosEn", "GuardarEn", "lblConfiguracion",
                                   "Mapa", "AcercarMapa", "lblCuentaMapa", "cmd(0)", "cmd(1)", "ArchivoAProcesar"));
}

TEST_F(PruebaFrmProcesar, CancelarOcultaSinProcesar) {
  Abrir(ConEventos());
  Pulsar(*ventana, "cmd(1)");
  EXPECT_FALSE(ventana->isVisible());
  EXPECT_FALSE(ventana->Procesado);
  EXPECT_THAT(driver.llamadas, IsEmpty());
}

}  // namespace
}  // namespace utr
