#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "lists/Columnas.h"
#include "tables/Tabla.h"

// What the viewer makes of a file, without the viewer.
namespace utr {

// A saved table, or a file for manual insertion, and the columns under which it is listed.
struct ArchivoVisto {
  TablaPtr tabla;
  Columnas columnas;
  bool es_imp = false;      // a file for manual insertion
  bool de_eventos = false;  // it holds events; else data, as far as exports go
  // Its records come at regular intervals; not those of a queue, which its name alone tells from others.
  bool a_intervalos = true;
};

// True for a path whose last three letters are "imp" in any case.
bool EsImp(const std::filesystem::path& ruta);

// Opens a file to be listed. A table has a column for each of its fields, under the field's name and with the values as
// they stand. A file for manual insertion has the columns of data or of events, as the first field of its first row
// tells; without rows, as its fields do. Raises kArchivo for a file that can't be read or understood, kCampo for a file
// for manual insertion with rows that lacks a field, and kTipos for one whose first field tells neither kind.
ArchivoVisto AbrirParaVer(const std::filesystem::path& ruta);

// A report of a recovery.
struct InformeVisto {
  std::filesystem::path ruta;
  std::string texto;  // UTF-8, lines parted by "\n"; the beginning alone of one that is far too long, and that is said
};

// The report that tells of this result file; nothing without one, or when it doesn't name the file. One that is there
// and can't be read says so in its text.
std::optional<InformeVisto> InformeDe(const std::filesystem::path& resultado);

// The report at that path. Raises kArchivo when it can't be read.
InformeVisto LeerInforme(const std::filesystem::path& ruta);

}  // namespace utr
