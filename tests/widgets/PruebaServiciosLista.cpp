#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "base/Error.h"
#include "session/LibroEstaciones.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"
#include "widgets/ServiciosLista.h"
#include "widgets/TextoQt.h"
#include "widgets/TurnoDeImpresora.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PruebaServiciosLista : public testing::Test {
 protected:
  void Llenar() {
    tabla = TablaDeTextos({"Fecha", "Valor"}, {{"01/02/2026", "1.5"}, {"02/02/2026", nullptr}});
    vista.Mostrar(tabla);
  }

  static Mensaje Informacion(std::string texto) {
    return {std::move(texto), "Eventos de la UTR", Icono::kInformacion, Botones::kAceptar};
  }

  prueba::ModPrueba banco;
  VistaLista vista{Columnas{{"Fecha", "Fecha"}, {"Valor ", "Valor"}}};
  ServiciosLista servicios{banco.mod.Listas(), vista,
                           PalabrasLista{"frmEventos", "Eventos de la UTR", "Exportar ...", "ImprimirEventos",
                                         "mnuExportarEv_Click", 0, "La lista de eventos ha sido exportada con éxito"}};
  ServiciosLista::Encabezado encabezado = [] {
    return EncabezadoLista{"Eventos de la UTR", {"Desde: 01/02/2026", "Hasta: 02/02/2026"}};
  };
  TablaPtr tabla;
  const std::string documento =
      "Eventos de la UTR\r\nDesde: 01/02/2026\r\nHasta: 02/02/2026\r\nFecha\tValor \r\n01/02/2026\t1.5\r\n02/02/2026\t";
};

TEST_F(PruebaServiciosLista, GuardarEscribeLoQueSeVeEnSuOrdenYLoDice) {
  Llenar();
  const auto ruta = banco.carpeta / "lista.txt";
  banco.operador.EsperaGuardar("Exportar ...", ruta);
  banco.operador.Espera(Informacion("La lista ha sido exportada con éxito"));
  servicios.GuardarComo(encabezado);
  EXPECT_EQ(prueba::LeerTodo(ruta), documento);
  EXPECT_EQ(banco.operador.pedidos[0].filtro, "Texto (delimitado por tabuladores)(*.txt)|*.txt");
  vista.OrdenarComoTexto(0, false);
  EXPECT_TRUE(servicios.ExportarLista(ruta, encabezado));
  EXPECT_THAT(prueba::LeerTodo(ruta), HasSubstr("02/02/2026\t\r\n01/02/2026\t1.5"));
}

TEST_F(PruebaServiciosLista, SePreguntaPorLoQueElFiltroOcultaYElImpLlevaTodo) {
  Llenar();
  vista.OrdenarComoTexto(0, false);
  vista.CampoFiltro()->setText("01/02");
  Mensaje pregunta{"El filtro deja a la vista 1 de los 2 renglones.\n¿Qué desea guardar?", "Eventos de la UTR",
                   Icono::kPregunta, Botones::kOpciones};
  pregunta.opciones = {"Sólo los 1 renglones a la vista", "Todos los renglones"};
  const std::string titulos = documento.substr(0, documento.find("01/02/2026\t"));
  const std::pair<Respuesta, std::string> casos[] = {
      {Respuesta::kPrimera, titulos + "01/02/2026\t1.5"},
      {Respuesta::kSegunda, titulos + "02/02/2026\t\r\n01/02/2026\t1.5"},
  };
  const auto ruta = banco.carpeta / "lista.txt";
  for (const auto& [respuesta, texto] : casos) {
    banco.operador.Espera(pregunta, respuesta);
    banco.operador.EsperaGuardar("Exportar ...", ruta);
    banco.operador.Espera("La lista ha sido exportada con éxito");
    servicios.GuardarComo(encabezado);
    EXPECT_EQ(prueba::LeerTodo(ruta), texto);
    banco.mod.eleccion_impresora = {"Oficina", 1};
    banco.operador.Espera("El filtro deja a la vista 1 de los 2 renglones.\n¿Qué desea imprimir?", respuesta);
    servicios.Imprimir(encabezado);
    EXPECT_EQ(banco.impresora.trabajos.back(), "Oficina:" + texto);
  }
  EXPECT_EQ(vista.Lista().Cantidad(), 1u) << "what is seen stays as it was";
  const std::size_t trabajos = banco.impresora.trabajos.size();
  banco.operador.Espera(pregunta, Respuesta::kCancelar);
  servicios.GuardarComo(encabezado);
  banco.operador.Espera("El filtro deja a la vista 1 de los 2 renglones.\n¿Qué desea imprimir?", Respuesta::kCancelar);
  servicios.Imprimir(encabezado);
  EXPECT_EQ(banco.impresora.trabajos.size(), trabajos);
  banco.operador.EsperaGuardar("Exportar ...", banco.carpeta / "lista.imp");
  banco.operador.Espera("La lista de eventos ha sido exportada con éxito");
  servicios.ExportarImp(tabla);
  vista.CampoFiltro()->setText("/02/");  // hides nothing
  banco.operador.EsperaGuardar("Exportar ...", std::nullopt);
  servicios.GuardarComo(encabezado);
}

TEST_F(PruebaServiciosLista, ElCsvSeEscribeComoSePideYLoRecuerda) {
  Llenar();
  vista.CampoFiltro()->setText("01/02");
  GuionVentanas dialogos;
  const auto ruta = banco.carpeta / "lista.csv";
  const auto con_dialogo = [&](const std::function<void(QDialog&)>& paso, const std::filesystem::path& elegida = {},
                               const std::string& final = {}) {
    banco.operador.EsperaParte("¿Qué desea guardar?", Respuesta::kSegunda);
    if (!elegida.empty()) banco.operador.EsperaGuardar("Guardar como CSV ...", elegida);
    if (!elegida.empty()) banco.operador.EsperaParte(final);
    dialogos.Espera("DialogoCsv", paso);
    servicios.GuardarComoCsv();
  };
  const auto boton = [](QDialog& dialogo, const char* nombre) { Hallar<QAbstractButton>(dialogo, nombre).click(); };
  con_dialogo([&](QDialog& dialogo) {
    EXPECT_EQ(Hallar<QComboBox>(dialogo, "cboSeparador").currentIndex(), 0);
    Hallar<QComboBox>(dialogo, "cboSeparador").setCurrentIndex(2);
    boton(dialogo, "CmdCancel");
  });
  con_dialogo(
      [&](QDialog& dialogo) {
        EXPECT_EQ(Hallar<QComboBox>(dialogo, "cboSeparador").currentIndex(), 0) << "nothing is kept of a cancel";
        Hallar<QComboBox>(dialogo, "cboSeparador").setCurrentIndex(1);
        Hallar<QComboBox>(dialogo, "cboDecimal").setCurrentIndex(1);
        Hallar<QAbstractButton>(dialogo, "chkMarca").click();
        boton(dialogo, "CmdOK");
      },
      ruta, "La lista ha sido exportada con éxito");
  const std::string marca = "\xEF\xBB\xBF";
  EXPECT_EQ(prueba::LeerTodo(ruta), marca + "Fecha;Valor\r\n01/02/2026;1.5\r\n02/02/2026;\r\n");
  EXPECT_EQ(banco.operador.pedidos.back().filtro, "Valores separados por un signo (*.csv)|*.csv");
  const auto fuera = banco.carpeta / "no" / "lista.csv";
  con_dialogo(
      [&](QDialog& dialogo) {
        EXPECT_EQ(Hallar<QComboBox>(dialogo, "cboSeparador").currentIndex(), 1);
        EXPECT_EQ(Hallar<QComboBox>(dialogo, "cboDecimal").currentIndex(), 1);
        EXPECT_TRUE(Hallar<QAbstractButton>(dialogo, "chkMarca").isChecked());
        boton(dialogo, "CmdOK");
      },
      fuera, "No se puede escribir el archivo " + fuera.string());
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmEventos\",\"GuardarComoCsv\""));
  EXPECT_EQ(banco.operador.ocupado, 0);
}

TEST_F(PruebaServiciosLista, UnGuardarCanceladoYUnaListaVaciaCallan) {
  Llenar();
  banco.operador.EsperaGuardar("Exportar ...", std::nullopt);
  servicios.GuardarComo(encabezado);
  vista.Vaciar();
  banco.operador.EsperaGuardar("Exportar ...", banco.carpeta / "nada.txt");
  servicios.GuardarComo(encabezado);
  EXPECT_FALSE(std::filesystem::exists(banco.carpeta / "nada.txt"));
  EXPECT_EQ(banco.operador.ocupado, 0);
}

TEST_F(PruebaServiciosLista, UnGuardarQueFallaDejaElAnteriorYDicePorQue) {
  Llenar();
  const auto ruta = banco.carpeta / "sin" / "carpeta.txt";
  banco.operador.EsperaGuardar("Exportar ...", ruta);
  banco.operador.al_preguntar = [this] { EXPECT_EQ(banco.operador.ocupado, 0); };
  banco.operador.Espera("La operación solicitada no puede completarse\n[ No se puede escribir el archivo " +
                        ruta.string() + " ]");
  servicios.GuardarComo(encabezado);
  EXPECT_EQ(banco.operador.mensajes.back().icono, Icono::kInformacion);
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmEventos\",\"ExportarLista\""));
}

TEST_F(PruebaServiciosLista, UnaCarpetaEnElLugarNiSeReemplazaNiSePierde) {
  Llenar();
  const auto ruta = banco.carpeta / "ocupada.txt";
  std::filesystem::create_directory(ruta);
  prueba::EscribirTodo(ruta / "dentro", "x");
  banco.operador.Espera("La operación solicitada no puede completarse\n[ No se puede escribir el archivo " +
                        ruta.string() + " ]");
  EXPECT_FALSE(servicios.ExportarLista(ruta, encabezado));
  EXPECT_EQ(prueba::LeerTodo(ruta / "dentro"), "x");
  std::vector<std::filesystem::path> quedan;
  for (const auto& entrada : std::filesystem::directory_iterator(banco.carpeta.Ruta())) {
    if (entrada.path().extension() != ".err") quedan.push_back(entrada.path());
  }
  EXPECT_THAT(quedan, ElementsAre(ruta)) << "no temporary file stays behind";
}

TEST_F(PruebaServiciosLista, ElImpPideDatosPrimero) {
  banco.operador.Espera(
      Mensaje{"Debe leer datos para exportar", "Exportacion", Icono::kInformacion, Botones::kAceptar});
  servicios.ExportarImp(nullptr);
  banco.operador.Espera(Mensaje{"No hay datos para exportar", "Exportacion", Icono::kInformacion, Botones::kAceptar});
  servicios.ExportarImp(TablaDeTextos({"Fecha"}));
  EXPECT_TRUE(banco.comunicador.llamadas.empty());
}

TEST_F(PruebaServiciosLista, ElImpEntregaLaTablaAlManejador) {
  Llenar();
  const auto ruta = banco.carpeta / "lista.imp";
  banco.operador.EsperaGuardar("Exportar ...", ruta);
  banco.operador.Espera(Informacion("La lista de eventos ha sido exportada con éxito"));
  servicios.ExportarImp(tabla);
  EXPECT_THAT(banco.comunicador.llamadas, ElementsAre("ExportarImp(tabla," + ruta.string() + ",0)"));
  EXPECT_EQ(banco.comunicador.Recibidas("ExportarImp")[0]->Filas().Texto(0, 0), tabla->Filas().Texto(0, 0));
  EXPECT_EQ(banco.operador.pedidos[0].filtro, "Archivo para insercion manual(*.imp)|*.imp");

  banco.operador.EsperaGuardar("Exportar ...", std::nullopt);
  servicios.ExportarImp(tabla);
  banco.comunicador.Devuelve("ExportarImp", false);
  banco.operador.EsperaGuardar("Exportar ...", ruta);
  servicios.ExportarImp(tabla);  // not written: silence

  banco.comunicador.Falla("ExportarImp", Error(error::kArchivo, "driver", "Disco lleno"));
  banco.operador.EsperaGuardar("Exportar ...", ruta);
  banco.operador.Espera(Mensaje{"La operacion no puede ser completada\n[ Disco lleno ]", "Eventos de la UTR",
                                Icono::kCritico, Botones::kAceptar});
  servicios.ExportarImp(tabla);
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmEventos\",\"mnuExportarEv_Click\""));
}

TEST_F(PruebaServiciosLista, LaImpresoraSePideUnaVezYCadaCopiaEsUnTrabajo) {
  Llenar();
  banco.operador.EsperaImpresora("Configurar Impresora", EleccionImpresora{"Laboratorio", 2});
  servicios.Imprimir(encabezado);
  EXPECT_THAT(banco.impresora.trabajos, ElementsAre("Laboratorio:" + documento, "Laboratorio:" + documento));
  servicios.Imprimir(encabezado);
  EXPECT_EQ(banco.impresora.trabajos.size(), 4u);
}

TEST_F(PruebaServiciosLista, ElPapelDiceDeDondeYDeCuandoEs) {
  Llenar();
  banco.mod.eleccion_impresora = {"Oficina", 1};
  banco.propiedades.Escribir(clave::kIdentificador, Propiedad{std::int64_t{120}}, Propiedad{std::int64_t{0}});
  servicios.Imprimir(encabezado);
  LibroEstaciones libro(banco.carpeta / LibroEstaciones::kArchivo);
  libro.Leer();
  libro.Agregar({.nombre = "Río Grande", .identificador = 120});
  servicios.Imprimir(encabezado);
  servicios.Imprimir([] { return EncabezadoLista{"Lista", {}, {}, "Archivo a.xml"}; });
  servicios.ImprimirTexto("x");
  const std::pair<const char*, const char*> esperados[] = {
      {"Eventos de la UTR", "UTR 120  ·  Impreso: 15/03/2026 10:00:00"},
      {"Eventos de la UTR", "Estación Río Grande, UTR 120  ·  Impreso: 15/03/2026 10:00:00"},
      {"Lista", "Archivo a.xml  ·  Impreso: 15/03/2026 10:00:00"},
      {"Eventos de la UTR", "Estación Río Grande, UTR 120  ·  Impreso: 15/03/2026 10:00:00"}};
  for (std::size_t i = 0; i < std::size(esperados); ++i) {
    EXPECT_EQ(banco.impresora.documentos[i].titulo, esperados[i].first);
    EXPECT_EQ(banco.impresora.documentos[i].pie, esperados[i].second);
  }
  EXPECT_EQ(banco.impresora.documentos[0].titulos, 3u);
  EXPECT_EQ(banco.impresora.documentos[2].titulos, 1u);
  EXPECT_EQ(banco.impresora.documentos[3].titulos, std::nullopt);
}

TEST_F(PruebaServiciosLista, UnaImpresionCanceladaDejaLasCopiasQueFaltan) {
  class Cancelador : public SinProgreso {
    bool Cancelado() override { return ++preguntas_ > 1; }
    int preguntas_ = 0;
  } cancelador;
  Llenar();
  banco.mod.eleccion_impresora = {"Oficina", 3};
  servicios.Enmarcar([&](const auto& trabajo) { trabajo(cancelador); });
  servicios.Imprimir(encabezado);
  EXPECT_EQ(banco.impresora.trabajos.size(), 1u);
}

TEST_F(PruebaServiciosLista, CadaCopiaDiceCualEs) {
  class Anotador : public SinProgreso {
   public:
    void Texto(std::string_view texto) override { dichos.emplace_back(texto); }
    std::vector<std::string> dichos;
  } anotador;
  const auto paginas = [](Progreso& progreso) {
    progreso.Texto("Página 1 de 1");
    return true;
  };
  PorCopia(1, anotador, paginas);
  PorCopia(2, anotador, paginas);
  EXPECT_THAT(anotador.dichos,
              ElementsAre("Página 1 de 1", "Copia 1 de 2. Página 1 de 1", "Copia 2 de 2. Página 1 de 1"));
}

TEST_F(PruebaServiciosLista, LaVistaPreviaMuestraLasPaginasYDesdeEllaSeImprime) {
  GuionVentanas guion;
  Llenar();
  banco.mod.eleccion_impresora = {"Oficina", 1};
  for (const char* boton : {"CmdCancel", "CmdOK"}) {
    guion.Espera("DialogoVistaPrevia", [boton](QDialog& dialogo) {
      EXPECT_EQ(U(dialogo.windowTitle()), "Vista previa: Eventos de la UTR");
      EXPECT_EQ(U(Hallar<QSpinBox>(dialogo, "txtPagina").text()), "1 de 1");
      Hallar<QPushButton>(dialogo, boton).click();
    });
    servicios.VistaPrevia(encabezado, &vista);
  }
  EXPECT_THAT(banco.impresora.trabajos, ElementsAre("Oficina:" + documento));
}

TEST_F(PruebaServiciosLista, NadaSeImprimeSinFilasSinEleccionNiSinImpresora) {
  servicios.Imprimir(encabezado);  // an empty list asks nothing
  Llenar();
  banco.operador.EsperaImpresora("Configurar Impresora", std::nullopt);
  servicios.Imprimir(encabezado);
  EXPECT_TRUE(banco.mod.eleccion_impresora.nombre.empty());
  banco.mod.eleccion_impresora = {"Vendida", 3};
  servicios.Imprimir(encabezado);
  EXPECT_TRUE(banco.impresora.trabajos.empty());
  banco.mod.eleccion_impresora = {};
  banco.operador.EsperaImpresora("Configurar Impresora", EleccionImpresora{"Oficina", 1});
  servicios.Imprimir(encabezado);
  EXPECT_EQ(banco.impresora.trabajos.size(), 1U);
}

TEST_F(PruebaServiciosLista, UnaImpresoraQueFallaSeDiceUnaVezConElNombreDeLaVentana) {
  Llenar();
  banco.mod.eleccion_impresora = {"Oficina", 3};
  banco.impresora.falla = true;
  banco.operador.Espera(Informacion("La operación solicitada no puede completarse\n[ Error de impresora ]"));
  servicios.Imprimir(encabezado);
  EXPECT_EQ(banco.impresora.trabajos.size(), 1u);
  EXPECT_THAT(banco.Errores(), HasSubstr("\"frmEventos\",\"ImprimirEventos\""));
}

}  // namespace
}  // namespace utr
