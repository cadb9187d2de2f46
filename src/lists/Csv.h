#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "lists/DocumentoLista.h"

// Lists for other programs: fields parted by a character as RFC 4180 tells, in UTF-8, one line of titles ahead of the
// rows and "\r\n" behind each line. What is on the screen for people is brought into the form that programs read:
//
//   dates, times   "2005-02-01", "10:05:00", both together "2005-02-01T10:05:00"
//   numbers        their own digits, without the thousands separator, with the decimal sign that is asked for
//   no value       an empty field: "N/D", and "-" in a column that shows so what it doesn't have
//   texts          as they are, without leading blanks
//
// What a column of dates or numbers holds that is neither stays as a text, and so does a number with a comma that parts
// no thousands. A field is quoted where it has to be: when
// it holds the separator, a quote or the end of a line.
namespace utr {

struct OpcionesCsv {
  char separador = ',';
  char decimal = '.';
  bool marca = false;  // the mark of UTF-8 ahead of all, which some spreadsheets want
};

// One value as a field, quoted where it has to be. `clase` tells what it is; `guion_es_nada`: "-" is no value.
std::string CampoCsv(std::string_view texto, ClaseOrden clase, const OpcionesCsv& opciones, bool guion_es_nada = false);

// Writes fields into a stream, row by row, holding only some of them in memory. A stream that failed is left alone and
// tells of it by its state.
class EscritorCsv {
 public:
  // Writes the mark where it is asked for.
  EscritorCsv(std::ostream& salida, OpcionesCsv opciones);
  EscritorCsv(const EscritorCsv&) = delete;
  EscritorCsv& operator=(const EscritorCsv&) = delete;

  const OpcionesCsv& Opciones() const noexcept { return opciones_; }

  // The next field of the row, of a value or as CampoCsv gave it.
  void Agregar(std::string_view texto, ClaseOrden clase = ClaseOrden::kTexto);
  void AgregarHecho(std::string_view campo);
  void Titulos(const Columnas& columnas);  // a whole row

  // Ends the row. False once the stream has failed: what follows is lost.
  bool TerminarFila();

  // Hands to the stream what is still held. To be called at the end.
  bool Terminar();

 private:
  std::ostream& salida_;
  OpcionesCsv opciones_;
  std::string pendiente_;
  std::size_t inicio_fila_ = 0;
  bool primero_ = true;
};

// The fields of one column of a list by position; each distinct text is made a field once. The list must not change
// meanwhile.
class ColumnaCsv {
 public:
  ColumnaCsv(const ListaTabla& lista, std::size_t columna, const OpcionesCsv& opciones);

  const std::string& Campo(std::size_t posicion);

 private:
  const ListaTabla* lista_;
  std::size_t columna_;
  OpcionesCsv opciones_;
  std::vector<std::string_view> textos_;
  std::vector<std::string> campos_;
  std::vector<bool> hechos_;
};

// Titles and rows of a list in display order: those that its narrowing leaves, or all. False: the stream failed.
bool EscribirCsv(std::ostream& salida, const ListaTabla& lista, const OpcionesCsv& opciones,
                 Renglones renglones = Renglones::kALaVista);

// The same into a file, whole or not at all, whatever stood there. False: no row is in sight and nothing was done.
// Raises kArchivo when the file can't be written; a former file is as before then.
bool ExportarCsv(const ListaTabla& lista, const OpcionesCsv& opciones, const std::filesystem::path& ruta,
                 Renglones renglones = Renglones::kALaVista);

}  // namespace utr
