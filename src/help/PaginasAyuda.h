#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The pages of the help as they are written: XML files of one <pagina> each, beside a table of contents. What can be
// told from the core's tables isn't written in them but asked for by name, and is put in when the help is built.
namespace utr::ayuda {

// What a control of a window is for, in plain words.
struct ControlExplicado {
  std::string ventana;  // object name of the window; "*": any that has such a control
  std::string control;  // object name of the control; empty: the window itself
  std::string texto;
};

// A page ready to be put into the help.
struct PaginaHecha {
  std::string nombre;                   // of the file, without its ending
  std::string titulo;                   // plain text
  std::vector<std::string> ventanas{};  // the windows that it is about
  std::vector<std::string> palabras{};  // under which the index has it, beside its title
  std::vector<std::string> enlaces{};   // the pages that it leads to
  std::vector<ControlExplicado> controles{};
  std::string html{};
};

// What a page asks for by name. Each raises Error for a name that it doesn't know.
struct FuentesAyuda {
  // Rows of a table, the titles first; text, not HTML.
  std::function<std::vector<std::vector<std::string>>(std::string_view nombre)> tabla;
  // A single value in a sentence.
  std::function<std::string(std::string_view nombre)> valor;
};

// The pages of a folder by their names. `contenido.xml` isn't one of them. Raises kArchivo for a page that can't be
// understood, says something twice or leads to a page that isn't there; the description names page and fault.
std::map<std::string, PaginaHecha> HacerPaginas(const std::filesystem::path& carpeta, const FuentesAyuda& fuentes);

// The project file of the help for those pages: contents, index, contexts, files. Each page stands in the contents
// exactly once; else kArchivo is raised. Contexts are the object names of windows.
std::string HacerProyecto(const std::filesystem::path& contenido, const std::map<std::string, PaginaHecha>& paginas);

// The explained controls of all pages, a line each: window, control, text, parted by tabs.
std::string HacerControles(const std::map<std::string, PaginaHecha>& paginas);

// The name of the file with the controls, which by its ending is none whose words are searched, and where the help
// keeps its pages.
inline constexpr std::string_view kArchivoControles = "controles.dat";
inline constexpr std::string_view kEspacio = "adminutr.ayuda";
inline constexpr std::string_view kCarpetaVirtual = "ayuda";

}  // namespace utr::ayuda
