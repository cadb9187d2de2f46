#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/Archivos.h"
#include "base/Error.h"
#include "help/PaginasAyuda.h"
#include "help/TablasAyuda.h"

// generar-ayuda PAGES DATA OUTPUT: writes the pages of the help, the words of its controls and its project file, out of
// the pages as they are written and of the program's own tables.

namespace {

namespace fs = std::filesystem;

void Guardar(const fs::path& ruta, const std::string& texto) {
  utr::EscribirEntero(ruta, [&](std::ostream& salida) { salida << texto; });
}

void Generar(const fs::path& paginas, const fs::path& datos, const fs::path& salida) {
  const auto hechas = utr::ayuda::HacerPaginas(paginas, utr::ayuda::FuentesDelPrograma(datos));
  const std::string proyecto = utr::ayuda::HacerProyecto(paginas / "contenido.xml", hechas);
  fs::create_directories(salida);
  for (const auto& [nombre, pagina] : hechas) Guardar(salida / (nombre + ".html"), pagina.html);
  Guardar(salida / utr::ayuda::kArchivoControles, utr::ayuda::HacerControles(hechas));
  Guardar(salida / "AdminUTR.qhp", proyecto);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("generar-ayuda PAGES DATA OUTPUT\n", stderr);
    return 2;
  }
  try {
    Generar(argv[1], argv[2], argv[3]);
  } catch (...) {
    std::fprintf(stderr, "generar-ayuda: %s\n", utr::ErrorActual().Descripcion().c_str());
    return 1;
  }
  return 0;
}
