#include <gtest/gtest.h>

#include <set>

#include "base/Texto.h"
#include "configuration/Catalogo.h"
#include "support/Carpeta.h"
#include "support/Tablas.h"

namespace utr {
namespace {

const std::filesystem::path kDatos = CARPETA_DATOS;

TEST(Catalogo, DatosQueSeEntregan) {
  Catalogo catalogo(kDatos);
  EXPECT_EQ(catalogo.DescripcionParametro("2", 0), "Nivel del río");
  EXPECT_EQ(catalogo.DescripcionParametro(" 14 ", 7), "Boya de nivel");
  EXPECT_EQ(catalogo.DescripcionUnidad("3"), "°C");
  EXPECT_EQ(catalogo.DescripcionUnidad(" 13"), "min");
  EXPECT_EQ(catalogo.DescripcionParametro("999", 5), "Pluviómetro");
  EXPECT_EQ(catalogo.DescripcionUnidad("999"), " - ");
}

TEST(Catalogo, LosIdsNoSiguenALosTextos) {
  Catalogo catalogo(kDatos);
  for (const TablaPtr& tabla : {catalogo.Parametros(), catalogo.Unidades()}) {
    tabla->Sort("Id ASC");
    const auto por_id = Filas(*tabla, {"Id"});
    EXPECT_EQ(por_id.front(), "1");
    EXPECT_EQ(std::set<std::string>(por_id.begin(), por_id.end()).size(), por_id.size());
    tabla->Sort(tabla->Field(std::size_t{1}).nombre + " ASC");
    EXPECT_NE(Filas(*tabla, {"Id"}), por_id);
  }
}

TEST(Catalogo, TextosQueEntranEnSuCampo) {
  for (const char* archivo : {"Parametros.xml", "Unidades.xml", "Eventos.xml"}) {
    Tabla tabla;
    tabla.Open(kDatos / archivo);
    EXPECT_EQ(tabla.Pendientes(), 0U) << archivo;
    for (; !tabla.Eof(); tabla.MoveNext()) {
      for (std::size_t i = 0; i < tabla.FieldCount(); ++i) {
        if (ClaseDe(tabla.Field(i).tipo) == Clase::kTexto) {
          EXPECT_LE(Largo(tabla.Texto(i)), tabla.Field(i).tamano) << tabla.Texto(i);
        }
      }
    }
  }
}

TEST(Catalogo, AbrirYGrabarDaLosMismosBytes) {
  const prueba::Carpeta carpeta;
  for (const char* archivo : {"Parametros.xml", "Unidades.xml", "Eventos.xml"}) {
    Tabla tabla;
    tabla.Open(kDatos / archivo);
    tabla.Save(carpeta / archivo);
    EXPECT_EQ(prueba::LeerTodo(carpeta / archivo), prueba::LeerTodo(kDatos / archivo)) << archivo;
  }
}

struct CasoArchivo {
  const char* nombre;
  std::string contenido;
};

TEST(Catalogo, ArchivosRotosDanLosTextosDeReemplazo) {
  const std::string entero = prueba::LeerTodo(kDatos / "Parametros.xml");
  const CasoArchivo casos[] = {
      {"vacío", ""},
      {"cortado", entero.substr(0, entero.size() / 2)},
      {"basura", std::string("\x00\xFF<xml", 6)},
      {"otro formato", "<catalogo><p id='2'>Nivel</p></catalogo>"},
      {"id que no es número", Reemplazar(entero, "Id='2'", "Id='dos'")},
      {"sin filas", entero.substr(0, entero.find("<rs:data>")) + "<rs:data>\r\n</rs:data>\r\n</xml>"},
  };
  for (const CasoArchivo& caso : casos) {
    const prueba::Carpeta carpeta;
    prueba::EscribirTodo(carpeta / "Parametros.xml", caso.contenido);
    prueba::EscribirTodo(carpeta / "Unidades.xml", caso.contenido);
    Catalogo catalogo(carpeta.Ruta());
    EXPECT_TRUE(catalogo.CargarParametros()) << caso.nombre;
    EXPECT_TRUE(catalogo.CargarUnidades()) << caso.nombre;
    EXPECT_EQ(catalogo.DescripcionParametro("2", 0), "Analógico") << caso.nombre;
    EXPECT_EQ(catalogo.DescripcionUnidad("2"), " - ") << caso.nombre;
  }
}

TEST(Catalogo, SinArchivoNiSegundaColumna) {
  const prueba::Carpeta carpeta;
  TablaCon({{"Id", TipoCampo::kEntero, 4}}, {{"2"}})->Save(carpeta / "Unidades.xml");
  Catalogo catalogo(carpeta.Ruta());
  EXPECT_TRUE(catalogo.CargarParametros());
  EXPECT_EQ(catalogo.Parametros(), nullptr);
  EXPECT_EQ(catalogo.DescripcionParametro("2", 6), "");
  EXPECT_EQ(catalogo.DescripcionUnidad("2"), " - ");
}

TEST(Catalogo, SeLeeUnaSolaVez) {
  const prueba::Carpeta carpeta;
  std::filesystem::copy_file(kDatos / "Unidades.xml", carpeta / "Unidades.xml");
  Catalogo catalogo(carpeta.Ruta());
  const TablaPtr tabla = catalogo.Unidades();
  std::filesystem::remove(carpeta / "Unidades.xml");
  EXPECT_EQ(catalogo.Unidades(), tabla);
  EXPECT_EQ(catalogo.DescripcionUnidad("1"), "m");
}

TEST(Catalogo, IdsQueNoSeHallan) {
  Catalogo catalogo(kDatos);
  for (const char* id : {"", " ", "abc", "0", "-", "1'", "2 or 1"})
    EXPECT_EQ(catalogo.DescripcionUnidad(id), " - ") << id;
}

TEST(Catalogo, BuscaAunqueOtroHayaFiltradoUOrdenado) {
  Catalogo catalogo(kDatos);
  catalogo.Unidades()->Filter("Id= 4");
  catalogo.Parametros()->Sort("Parametro DESC");
  EXPECT_EQ(catalogo.DescripcionUnidad("1"), "m");
  EXPECT_EQ(catalogo.DescripcionParametro("1", 0), "Temperatura del aire");
}

TEST(Catalogo, BuscaPorLugarYNoPorNombre) {
  const prueba::Carpeta carpeta;
  TablaCon({{"Codigo", TipoCampo::kEntero, 4}, {"Texto", TipoCampo::kVarChar, 15}, {"Nombre", TipoCampo::kVarChar, 15}},
           {{"7", "siete", "otro"}, {"7", "segundo", "otro"}, {"8", nullptr, "otro"}})
      ->Save(carpeta / "Unidades.xml");
  Catalogo catalogo(carpeta.Ruta());
  EXPECT_EQ(catalogo.DescripcionUnidad("7"), "siete");
  EXPECT_EQ(catalogo.DescripcionUnidad("8"), " - ");
}

}  // namespace
}  // namespace utr
