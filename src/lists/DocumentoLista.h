#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "lists/ListaTabla.h"

namespace utr {

// What stands ahead of a list in its text document.
struct EncabezadoLista {
  std::string titulo;
  std::vector<std::string> lineas{};  // date lines, whole: "Desde: 01/02/2005"
  std::string nombre{};               // of a file alone: what its proposed name begins with; empty: the title
  std::string origen{};               // of paper alone: whose the list is; empty: of the station at hand
};

// Which rows of a list go into a document: those that its narrowing leaves, or all.
enum class Renglones { kALaVista, kTodos };

// The name, without extension, that is proposed for a file with that list: "Eventos de la UTR 01-02-2005 a 02-02-2005".
std::string NombreDeArchivo(const EncabezadoLista& encabezado);

// The text document of a list: title, date lines, column titles and the rows in display order, "\r\n" between lines and
// none at the end, columns parted by tabs. Nothing is quoted or escaped.
std::string ArmarDocumento(const ListaTabla& lista, const EncabezadoLista& encabezado,
                           Renglones renglones = Renglones::kALaVista);

// Writes the document as UTF-8, whole or not at all. False: no row is in sight and nothing was done. Raises kArchivo
// when the file can't be written; a former file is as before then.
bool ExportarLista(const ListaTabla& lista, const EncabezadoLista& encabezado, const std::filesystem::path& ruta,
                   Renglones renglones = Renglones::kALaVista);

}  // namespace utr
