#include <gtest/gtest.h>

#include <filesystem>
#include <pugixml.hpp>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "base/Error.h"
#include "base/Texto.h"
#include "driver/ErroresDeEnlace.h"
#include "help/PaginasAyuda.h"
#include "help/TablasAyuda.h"
#include "support/Carpeta.h"

namespace utr::ayuda {
namespace {

namespace fs = std::filesystem;

const fs::path kDatos(CARPETA_DATOS);

std::map<std::string, PaginaHecha> LasPaginas() {
  return HacerPaginas(kDatos / "ayuda", FuentesDelPrograma(kDatos));
}

std::vector<fs::path> Fuentes() {
  std::vector<fs::path> fuentes;
  for (const auto& archivo : fs::recursive_directory_iterator(kDatos.parent_path() / "src")) {
    const fs::path final = archivo.path().extension();
    if (final == ".cpp" || final == ".h") fuentes.push_back(archivo.path());
  }
  return fuentes;
}

// The literals of the sources as the operator reads them: joined where they go on in the next line, without mnemonics,
// with line ends as blanks.
std::string LiteralesDelPrograma() {
  std::string todo;
  for (const fs::path& fuente : Fuentes()) {
    const std::string texto = prueba::LeerTodo(fuente);
    for (std::size_t i = 0; i < texto.size(); ++i) {
      const std::size_t sigue = texto.find_first_not_of(" \n", i + 1);
      const bool continua =
          texto[i] == '"' && sigue > i + 1 && sigue != texto.npos && texto[sigue] == '"' && texto.find('\n', i) < sigue;
      if (continua) i = sigue;
      if (!continua && texto[i] != '&') todo += texto[i];
    }
  }
  return Reemplazar(Reemplazar(todo, "\\n", " "), "\\\"", "\"");
}

TEST(PaginasAyuda, CadaVentanaDelProgramaTieneLaSuya) {
  std::set<std::string> explicadas;
  for (const auto& [nombre, pagina] : LasPaginas()) {
    for (const std::string& ventana : pagina.ventanas)
      EXPECT_TRUE(explicadas.insert(ventana).second) << ventana << " está en dos páginas";
  }
  for (const fs::path& fuente : Fuentes()) {
    const std::string clase = fuente.stem().string();
    const bool ventana = clase.starts_with("frm") || clase.starts_with("Dialogo");
    if (fuente.extension() != ".h" || !ventana) continue;
    EXPECT_TRUE(explicadas.contains(clase)) << clase;
  }
}

TEST(PaginasAyuda, LosMensajesSonLosDelPrograma) {
  const std::string literales = LiteralesDelPrograma();
  int mensajes = 0;
  for (const auto& archivo : fs::directory_iterator(kDatos / "ayuda")) {
    pugi::xml_document pagina;
    ASSERT_TRUE(pagina.load_file(archivo.path().c_str()));
    for (const pugi::xpath_node& nodo : pagina.select_nodes("//mensaje")) {
      ++mensajes;
      std::string texto = nodo.node().attribute("texto").value();
      // "…" stands for what the program fills in.
      for (std::size_t desde = 0; desde != std::string::npos;) {
        const std::size_t corte = texto.find("…", desde);
        const std::string parte(Recortar(std::string_view(texto).substr(desde, corte - desde)));
        EXPECT_NE(literales.find(parte), std::string::npos) << archivo.path().filename() << ": " << parte;
        desde = corte == std::string::npos ? corte : corte + std::string_view("…").size();
      }
    }
  }
  EXPECT_GT(mensajes, 50);
}

TEST(PaginasAyuda, TodasEstanEnElContenidoYNingunaQuedaSuelta) {
  const auto paginas = LasPaginas();
  const std::string proyecto = HacerProyecto(kDatos / "ayuda" / "contenido.xml", paginas);
  std::set<std::string> alcanzadas{"inicio"};
  for (const auto& [nombre, pagina] : paginas) {
    EXPECT_NE(proyecto.find("ref=\"" + nombre + ".html\""), std::string::npos);
    alcanzadas.insert(pagina.enlaces.begin(), pagina.enlaces.end());
  }
  for (const auto& [nombre, pagina] : paginas) {
    EXPECT_TRUE(alcanzadas.contains(nombre) || !pagina.ventanas.empty()) << nombre;
  }
}

// What the tables put in, by a row of each that only the program's own tables know.
TEST(PaginasAyuda, LasTablasSalenDelPrograma) {
  const auto paginas = LasPaginas();
  const auto tiene = [&](const char* pagina, const char* fila) {
    return paginas.at(pagina).html.find(fila) != std::string::npos;
  };
  EXPECT_TRUE(tiene("eventos", "<tr><td>128</td><td>Parametrización</td>"));
  EXPECT_TRUE(tiene("tipos", "<tr><td>15</td><td>PLV</td><td>Pluviométrico</td></tr>"));
  EXPECT_TRUE(tiene("errores", "<tr><td>8020</td><td>La UTR no responde</td></tr>"));
  EXPECT_TRUE(tiene("comandos", "<td>UpDateEv(Wr Only)</td><td>1</td><td>nunca</td>"));
  EXPECT_TRUE(tiene("linea-de-comandos", "<td>--pendientes</td>"));
  EXPECT_TRUE(tiene("reglas", "<td>TRead, TEval</td><td>TEval es TRead o un múltiplo entero de él</td>"));
  EXPECT_TRUE(tiene("reglas", "En los pluviometros el tread debe ser igual al tstorage"));
  EXPECT_TRUE(tiene("agenda", "de 5 a 1440"));
}

// A number that the driver raises and the help doesn't tell leaves an operator with a riddle.
TEST(PaginasAyuda, CadaNumeroDelEnlaceSeExplica) {
  const std::string cabecera = prueba::LeerTodo(kDatos.parent_path() / "src/driver/ErroresDeEnlace.h");
  const std::string pagina = LasPaginas().at("errores").html;
  const std::regex constante(R"(std::int32_t k\w+ = (\d+);)");
  std::size_t cuantas = 0;
  for (std::sregex_iterator una(cabecera.begin(), cabecera.end(), constante); una != std::sregex_iterator(); ++una) {
    EXPECT_NE(pagina.find("<tr><td>" + una->str(1) + "</td>"), std::string::npos) << una->str(1);
    ++cuantas;
  }
  EXPECT_EQ(cuantas, std::size(error_enlace::kSignificados));
}

struct PaginaMala {
  const char* que;
  const char* texto;
  const char* dice;
};

class PaginasMalas : public testing::TestWithParam<PaginaMala> {};

TEST_P(PaginasMalas, NoSeArmanYSeDiceCual) {
  prueba::Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "otra.xml", "<pagina titulo='Otra' ventanas='frmA'><p>Algo.</p></pagina>");
  prueba::EscribirTodo(carpeta / "mala.xml", GetParam().texto);
  try {
    HacerPaginas(carpeta.Ruta(), FuentesDelPrograma(kDatos));
    ADD_FAILURE() << GetParam().que;
  } catch (const Error& falla) {
    EXPECT_NE(falla.Descripcion().find(GetParam().dice), std::string::npos) << falla.Descripcion();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Casos, PaginasMalas,
    testing::Values(
        PaginaMala{"cut short", "<pagina titulo='M'><p>Algo", "mala.xml"},
        PaginaMala{"without a title", "<pagina><p>Algo.</p></pagina>", "mala: no tiene título"},
        PaginaMala{"without a purpose", "<pagina titulo='M'><h2>Algo</h2></pagina>", "mala: no dice para qué es"},
        PaginaMala{"unknown element", "<pagina titulo='M'><p>Algo <u>x</u></p></pagina>", "mala: <u>"},
        PaginaMala{"dead link", "<pagina titulo='M'><p><ver pagina='nada'/></p></pagina>", "mala: lleva a nada"},
        PaginaMala{"unknown table", "<pagina titulo='M'><p>Algo.</p><tabla de='nada'/></pagina>", "se llame nada"},
        PaginaMala{"unknown value", "<pagina titulo='M'><p><valor de='nada'/></p></pagina>", "se llame nada"},
        PaginaMala{
            "field without a window",
            "<pagina titulo='M'><p>Algo.</p><campos><campo control='C' rotulo='C'>Algo</campo></campos></pagina>",
            "mala: C no tiene ventana"},
        PaginaMala{"window told twice", "<pagina titulo='M' ventanas='frmA'><p>Algo.</p></pagina>", "repite frmA"}));

}  // namespace
}  // namespace utr::ayuda
