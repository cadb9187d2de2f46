#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "lists/ListaTabla.h"

namespace utr {

// What stands ahead of a list in its text document.
struct EncabezadoLista {
  std::string titulo;
  std::vector<std::string> lineas;  // date lines, whole: "Desde: 01/02/2005"
};

// The text document of a list: title, date lines, column titles and the rows in display order, "\r\n" between lines and
// none at the end, columns parted by tabs. Nothing is quoted or escaped.
std::string ArmarDocumento(const ListaTabla& lista, const EncabezadoLista& encabezado);

// Writes the document as UTF-8, whole or not at all. False: the list is empty and nothing was done. Raises kArchivo
// when the file can't be written; a former file is as before then.
bool ExportarLista(const ListaTabla& lista, const EncabezadoLista& encabezado, const std::filesystem::path& ruta);

}  // namespace utr
