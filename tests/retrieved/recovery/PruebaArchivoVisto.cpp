#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "driver/ArchivosDelControlador.h"
#include "lists/Csv.h"
#include "lists/ListaTabla.h"
#include "retrieved/recovery/ArchivoVisto.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using prueba::NumeroDeError;
using testing::ElementsAre;
using testing::HasSubstr;

class PruebaArchivoVisto : public testing::Test {
 protected:
  std::filesystem::path Guardada(const std::string& nombre, const TablaPtr& tabla) {
    tabla->Save(carpeta / nombre);
    return carpeta / nombre;
  }
  static std::vector<std::string> Titulos(const ArchivoVisto& visto) {
    std::vector<std::string> titulos;
    for (const ColumnaLista& columna : visto.columnas) titulos.push_back(columna.titulo);
    return titulos;
  }

  prueba::Carpeta carpeta;
};

TEST_F(PruebaArchivoVisto, LaPrimeraCeldaDeUnImpDiceSiSonDatosOEventos) {
  const struct {
    const char* primera;
    bool eventos;
  } casos[] = {{"1", false}, {"-1", false}, {"True", false}, {"0", true}, {"False", true}, {nullptr, true}};
  int n = 0;
  for (const auto& caso : casos) {
    const TablaPtr tabla = TablaDeTextos(
        {"Tipo", "Fecha", "CANAL", "Codigo", "Valor", "Valor1", "Valor2", "Maximo", "Minimo", "Validacion"},
        {{caso.primera, "14/03/2026 10:00:00"}});
    const ArchivoVisto visto = AbrirParaVer(Guardada("a" + std::to_string(++n) + ".iMp", tabla));
    EXPECT_TRUE(visto.es_imp);
    EXPECT_EQ(visto.de_eventos, caso.eventos) << n;
    if (caso.eventos) {
      EXPECT_THAT(Titulos(visto), ElementsAre("Fecha", "Codigo", "Valor1", "Valor2"));
    } else {
      EXPECT_THAT(Titulos(visto), ElementsAre("Fecha", "Canal", "Valor", "Maximo", "Minimo", "Validación"));
    }
  }
}

TEST_F(PruebaArchivoVisto, LoQueElControladorExportaSeAbre) {
  for (const int tipo : {0, 1}) {
    const TablaPtr tabla = TablaDeTextos({"Fecha", "Hora", "Canal", "Codigo", "Valor"}, {{"14/03/2026", "10:00:00"}});
    const auto ruta = carpeta / ("e" + std::to_string(tipo) + ".imp");
    ASSERT_TRUE(EscribirImp(*tabla, ruta, tipo));
    EXPECT_EQ(AbrirParaVer(ruta).de_eventos, tipo == 0);
  }
}

TEST_F(PruebaArchivoVisto, UnImpQueNoSeEntiendeDicePorQue) {
  EXPECT_EQ(NumeroDeError([&] {
              AbrirParaVer(Guardada("palabra.imp", TablaDeTextos({"Tipo", "Fecha"}, {{"datos", ""}})));
            }),
            error::kTipos);
  EXPECT_EQ(NumeroDeError([&] {
              AbrirParaVer(Guardada("corto.imp", TablaDeTextos({"Tipo", "Fecha", "canal"}, {{"1", "", ""}})));
            }),
            error::kCampo);
}

TEST_F(PruebaArchivoVisto, UnImpSinFilasSeAbreAunqueLeFaltenCampos) {
  EXPECT_FALSE(AbrirParaVer(Guardada("a.imp", TablaDeTextos({"Tipo"}))).de_eventos);
  EXPECT_TRUE(AbrirParaVer(Guardada("b.imp", TablaDeTextos({"Tipo", "codigo"}))).de_eventos);
}

TEST_F(PruebaArchivoVisto, UnaTablaSeVeBajoSusCamposYElCodigoDiceQueSonEventos) {
  const ArchivoVisto visto =
      AbrirParaVer(Guardada("a.xml", TablaDeTextos({"Fecha", "CODIGO", "Otro"}, {{"14/03/2026", "31", nullptr}})));
  EXPECT_THAT(Titulos(visto), ElementsAre("Fecha", "CODIGO", "Otro"));
  EXPECT_EQ(visto.columnas[0].orden, ClaseOrden::kFecha);
  EXPECT_EQ(visto.columnas[1].orden, ClaseOrden::kNumero);
  EXPECT_TRUE(visto.de_eventos);
  EXPECT_FALSE(visto.es_imp);
}

TEST_F(PruebaArchivoVisto, LasCantidadesDeUnaConfiguracionSonNumerosYLosCodigosTextos) {
  const ArchivoVisto visto =
      AbrirParaVer(Guardada("a.xml", TablaDeTextos({"Flags", "amax", "Canal", "Descripcion", "Resolucion"},
                                                   {{"1", "2.5", "1", "4.5", "3"}})));
  ListaTabla lista(visto.columnas);
  lista.Mostrar(visto.tabla);
  std::ostringstream csv;
  EscribirCsv(csv, lista, {.separador = ';', .decimal = ','});
  EXPECT_EQ(csv.str(), "Flags;amax;Canal;Descripcion;Resolucion\r\n1;2,5;1;4.5;3\r\n");
}

TEST_F(PruebaArchivoVisto, SoloUnaColaNoTieneIntervalos) {
  for (const auto& [nombre, a_intervalos] :
       {std::pair{"rioColaTx.xml", false}, {"ColaTx.xml", false}, {"rioDatosCanal_3.xml", true}, {"Cola.xml", true}})
    EXPECT_EQ(AbrirParaVer(Guardada(nombre, TablaDeTextos({"Valor"}, {{"1"}}))).a_intervalos, a_intervalos) << nombre;
}

TEST_F(PruebaArchivoVisto, CamposDelMismoNombreMuestranCadaUnoLoSuyo) {
  const auto ruta = Guardada("a.xml", TablaDeTextos({"Valor", "Xalor"}, {{"1", "2"}}));
  std::string xml = prueba::LeerTodo(ruta);
  const std::size_t nombre = xml.find("name='Xalor'");
  ASSERT_NE(nombre, std::string::npos);
  xml.insert(nombre + std::string("name='Xalor'").size(), " rs:name='Valor'");
  prueba::EscribirTodo(ruta, xml);
  const ArchivoVisto visto = AbrirParaVer(ruta);
  ListaTabla lista(visto.columnas);
  lista.Mostrar(visto.tabla);
  EXPECT_THAT(Titulos(visto), ElementsAre("Valor", "Valor"));
  EXPECT_EQ(lista.Texto(0, 0), "1");
  EXPECT_EQ(lista.Texto(0, 1), "2");
}

TEST_F(PruebaArchivoVisto, ElInformeEsElDeLaCorridaQueNombraElArchivo) {
  prueba::EscribirTodo(carpeta / "rioInforme.txt",
                       "Señales\r\nrioDatosCanal_3.xml\r\nrioColaTx.xml\r\nrioEventos.xml\r\n");
  const struct {
    const char* archivo;
    bool con_informe;
  } casos[] = {{"rioDatosCanal_3.xml", true},   {"rioColaTx.xml", true},    {"rioEventos.xml", true},
               {"rioDatosCanal_4.xml", false},  {"otroEventos.xml", false}, {"rioDatos.xml", false},
               {"rioDatosCanal_3x.xml", false}, {"rioEventos.imp", false},  {"rioDatosCanal_.xml", false}};
  for (const auto& caso : casos) {
    const auto informe = InformeDe(carpeta / caso.archivo);
    EXPECT_EQ(informe.has_value(), caso.con_informe) << caso.archivo;
    EXPECT_EQ(informe ? informe->texto.substr(0, 12) : "", caso.con_informe ? "Señales\nrio" : "") << caso.archivo;
  }
}

TEST_F(PruebaArchivoVisto, UnInformeQueNoSePuedeLeerSeDiceYUnoDesmedidoSeCorta) {
  std::filesystem::create_directory(carpeta / "aInforme.txt");
  ASSERT_TRUE(InformeDe(carpeta / "aColaTx.xml"));
  EXPECT_THAT(InformeDe(carpeta / "aColaTx.xml")->texto, HasSubstr("No se puede leer el archivo"));
  prueba::EscribirTodo(carpeta / "bInforme.txt", "bColaTx.xml\xff" + std::string(3'000'000, 'x'));
  const auto informe = InformeDe(carpeta / "bColaTx.xml");
  ASSERT_TRUE(informe);
  EXPECT_LT(informe->texto.size(), 1'100'000u);
  EXPECT_THAT(informe->texto.substr(0, 20), HasSubstr("bColaTx.xml\uFFFDx"));
  EXPECT_THAT(informe->texto.substr(informe->texto.size() - 100), HasSubstr("sólo el comienzo"));
}

}  // namespace
}  // namespace utr
