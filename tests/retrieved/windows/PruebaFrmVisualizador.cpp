#include <QComboBox>
#include <QPlainTextEdit>

#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmVisualizador.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kAbrir = "Selección de archivo...";

class PruebaFrmVisualizador : public BancoVistas, public testing::Test {
 protected:
  PruebaFrmVisualizador() { ventana.show(); }

  std::filesystem::path Guardada(const char* nombre, const TablaPtr& tabla) {
    tabla->Save(banco.carpeta / nombre);
    return banco.carpeta / nombre;
  }
  std::filesystem::path Eventos() {
    return Guardada("rioEventos.xml", TablaDeTextos({"Fecha", "Hora", "Codigo", "Valor1", "Valor2", "Descripcion"},
                                                    {{"14/03/2026", "10:00:00", "31", "2", nullptr, "Lluvia"},
                                                     {"02/04/2026", "09:00:00", "4", "1", "0", "Puerta"}}));
  }
  std::filesystem::path Datos() {
    return Guardada("rioColaTx.xml", TablaDeTextos({"Fecha", "Canal", "Validacion"}, {{"14/03/2026", "EA01", "0"}}));
  }
  void Seleccionar(const std::filesystem::path& ruta) {
    operador.EsperaAbrir(kAbrir, ruta);
    Pulsar(ventana, "cmdFile");
  }
  std::vector<std::string> Titulos() {
    std::vector<std::string> titulos;
    for (const ColumnaLista& columna : Lista(ventana).Lista().LasColumnas()) titulos.push_back(columna.titulo);
    return titulos;
  }
  std::string Archivo() { return U(Hijo<QLineEdit>(ventana, "lblFile")->text()); }
  bool Habilitado(const char* accion) { return Hijo<QAction>(ventana, accion)->isEnabled(); }

  frmVisualizador ventana{banco.mod};
};

TEST_F(PruebaFrmVisualizador, UnaTablaSeVeBajoLosNombresDeSusCamposYConSusValores) {
  const auto ruta = Eventos();
  ventana.MuestraArchivo(ruta);
  EXPECT_EQ(Archivo(), ruta.string());
  EXPECT_THAT(Titulos(), ElementsAre("Fecha", "Hora", "Codigo", "Valor1", "Valor2", "Descripcion"));
  EXPECT_THAT(Filas(ventana), ElementsAre("14/03/2026|10:00:00|31|2||Lluvia", "02/04/2026|09:00:00|4|1|0|Puerta"));
  EXPECT_EQ(Texto(ventana, "lblCantRegistros"), "Cantidad de Registros Cargados: 2");
  Seleccionar(Datos());
  EXPECT_EQ(operador.pedidos.back().filtro,
            "Información procesada (*.xml)|*.xml|Archivo para insercion manual (*.imp)|*.imp");
  EXPECT_THAT(Filas(ventana), ElementsAre("14/03/2026|EA01|0"));
  EXPECT_EQ(operador.ocupado, 0);
}

TEST_F(PruebaFrmVisualizador, UnImpSeVeEnSusColumnasYNoSeExporta) {
  Seleccionar(Guardada("a.IMP", TablaDeTextos({"Tipo", "Fecha", "canal", "Valor", "Maximo", "Minimo", "Validacion"},
                                              {{"1", "14/03/2026 10:00:00", "EA01", "2.500", "3", "N/D", "0"},
                                               {"1", "", "", "", "", "", "-1"}})));
  EXPECT_THAT(Filas(ventana), ElementsAre("14/03/2026 10:00:00|EA01|2.500|3|N/D|No", "|||||Si"));
  EXPECT_FALSE(Habilitado("mnuExport"));
  EXPECT_FALSE(Hijo<QWidget>(ventana, "Export")->isEnabled());
  EXPECT_TRUE(Habilitado("mnuSaveAs"));
  Seleccionar(Datos());
  EXPECT_TRUE(Habilitado("mnuExport"));
  Seleccionar(Guardada("b.imp", TablaDeTextos({"Tipo"})));
  EXPECT_THAT(Filas(ventana), IsEmpty());
  EXPECT_FALSE(Habilitado("mnuExport"));
}

TEST_F(PruebaFrmVisualizador, LoQueNoSePuedeAbrirSeDiceYDejaListaRutaEInforme) {
  prueba::EscribirTodo(banco.carpeta / "rioInforme.txt", "rioEventos.xml");
  const auto ruta = Eventos();
  ventana.MuestraArchivo(ruta);
  Lista(ventana).Ordenar(2, true);
  const auto antes = Filas(ventana);
  prueba::EscribirTodo(banco.carpeta / "roto.xml", "<xml><s:Schema");
  prueba::EscribirTodo(banco.carpeta / "otro.xml", "<html/>");
  prueba::EscribirTodo(banco.carpeta / "vacio.imp", "");
  std::filesystem::create_directory(banco.carpeta / "carpeta.xml");
  Guardada("corto.imp", TablaDeTextos({"Tipo", "Fecha"}, {{"1", ""}}));
  for (const char* malo : {"roto.xml", "otro.xml", "vacio.imp", "carpeta.xml", "falta.xml", "corto.imp"}) {
    operador.EsperaAbrir(kAbrir, banco.carpeta / malo);
    operador.EsperaParte("La operación solicitada no puede ser completada\n[");
    Pulsar(ventana, "cmdFile");
    EXPECT_EQ(operador.mensajes.back().icono, Icono::kCritico) << malo;
    EXPECT_EQ(operador.mensajes.back().titulo, "Visualizador");
    EXPECT_EQ(Archivo(), ruta.string()) << malo;
    EXPECT_EQ(Filas(ventana), antes) << malo;
    EXPECT_FALSE(Hijo<QWidget>(ventana, "fraInforme")->isHidden()) << malo;
    EXPECT_TRUE(Habilitado("mnuExport"));
  }
  EXPECT_THAT(operador.mensajes.back().texto, HasSubstr("[El archivo no tiene la columna canal]"));
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmVisualizador\",\"PrepararDatosParaLista\""));
  operador.EsperaAbrir(kAbrir, std::nullopt);
  Pulsar(ventana, "cmdFile");
  EXPECT_EQ(Archivo(), ruta.string());
}

TEST_F(PruebaFrmVisualizador, ElExportDiceQueFaltaYQueSeExporto) {
  operador.Espera(Mensaje{"Debe seleccionar un archivo de información para exportar", "Exportacion",
                          Icono::kInformacion, Botones::kAceptar});
  Elegir(ventana, "mnuExport");
  Seleccionar(Guardada("vacia.xml", TablaDeTextos({"Fecha"})));
  operador.Espera(Mensaje{"No hay datos para exportar", "Exportacion", Icono::kInformacion, Botones::kAceptar});
  Elegir(ventana, "mnuExport");
  const auto destino = banco.carpeta / "x.imp";
  const struct {
    std::filesystem::path ruta;
    const char* exito;
    const char* tipo;
  } casos[] = {{Eventos(), "La lista de eventos ha sido exportada con éxito", "0"},
               {Datos(), "La lista de datos ha sido exportada con éxito", "1"}};
  for (const auto& caso : casos) {
    Seleccionar(caso.ruta);
    operador.EsperaGuardar("Exportar ...", destino);
    operador.Espera(Mensaje{caso.exito, "Visualizador", Icono::kInformacion, Botones::kAceptar});
    Elegir(ventana, "mnuExport");
    EXPECT_EQ(driver.llamadas.back(), "ExportarImp(tabla," + destino.string() + "," + caso.tipo + ")");
  }
  driver.Falla("ExportarImp", Error(75, "driver", "disco lleno"));
  operador.EsperaGuardar("Exportar ...", destino);
  operador.Espera(Mensaje{"La operacion no puede ser completada\n[ disco lleno ]", "Visualizador", Icono::kCritico,
                          Botones::kAceptar});
  Elegir(ventana, "mnuExport");
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmVisualizador\",\"mnuExport_Click\""));
}

TEST_F(PruebaFrmVisualizador, LaListaSeGuardaYSeImprimeBajoElTituloConLaFecha) {
  constexpr const char* kDocumento =
      "Visualizador\r\nFecha: 15/03/2026\r\nFecha\tCanal\tValidacion\r\n14/03/2026\tEA01\t0";
  EXPECT_FALSE(Habilitado("mnuSaveAs"));
  Seleccionar(Datos());
  operador.EsperaGuardar("Guardar como ...", banco.carpeta / "x.txt");
  operador.Espera("La lista ha sido exportada con éxito");
  Elegir(ventana, "mnuSaveAs");
  EXPECT_EQ(prueba::LeerTodo(banco.carpeta / "x.txt"), kDocumento);
  operador.EsperaImpresora("Configurar Impresora", EleccionImpresora{"Oficina", 1});
  Elegir(ventana, "mnuPrint");
  EXPECT_THAT(banco.impresora.trabajos, ElementsAre(std::string("Oficina:") + kDocumento));
}

TEST_F(PruebaFrmVisualizador, ElInformeSeVeSoloJuntoALoQueNombraYSeImprime) {
  prueba::EscribirTodo(banco.carpeta / "rioInforme.txt", "Recuperación\r\nrioEventos.xml");
  Seleccionar(Datos());
  EXPECT_TRUE(Hijo<QWidget>(ventana, "fraInforme")->isHidden());
  EXPECT_FALSE(Habilitado("mnuImprimirInforme"));
  Seleccionar(Eventos());
  EXPECT_EQ(Hijo<QPlainTextEdit>(ventana, "txtInforme")->toPlainText(), "Recuperación\nrioEventos.xml");
  banco.mod.eleccion_impresora = {"Oficina", 1};
  Pulsar(ventana, "cmdImprimirInforme");
  Elegir(ventana, "mnuImprimirInforme");
  EXPECT_THAT(banco.impresora.trabajos, ElementsAre("Oficina:Recuperación\nrioEventos.xml", testing::_));
  EXPECT_EQ(banco.impresora.documentos.back().letra, LetraImpresion::kPareja) << "its columns are made with blanks";
}

TEST_F(PruebaFrmVisualizador, ElFiltroDeSiempreQuedaOculto) {
  Seleccionar(Datos());
  EXPECT_TRUE(Hijo<QWidget>(ventana, "lblFiltro")->isHidden());
  EXPECT_TRUE(Hijo<QWidget>(ventana, "cboFiltro")->isHidden());
  EXPECT_EQ(Hijo<QComboBox>(ventana, "cboFiltro")->count(), 0);
}

TEST_F(PruebaFrmVisualizador, TabPasaPorElFiltroYElInformeYVuelve) {
  prueba::EscribirTodo(banco.carpeta / "rioInforme.txt", "rioEventos.xml");
  ventana.MuestraArchivo(Eventos());
  std::vector<std::string> recorrido;
  for (int i = 0; i < 9; ++i) {
    recorrido.push_back(U(ventana.focusWidget()->objectName()));
    QTest::keyClick(ventana.focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(recorrido, ElementsAre("cmdFile", "txtFiltro", "Lista", "lblCifras", "txtInforme", "cmdImprimirInforme",
                                     "cmd", "lblFile", "cmdFile"));
}

}  // namespace
}  // namespace utr
