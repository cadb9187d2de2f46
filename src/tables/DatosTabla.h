#pragma once

#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tables/Columna.h"
#include "tables/Tabla.h"

// What the clones of a table share: fields and columns. Internal to the table service.
namespace utr {

// An attribute of the rowset namespace that a file declares and the table has no use for.
struct AtributoAjeno {
  std::string nombre;  // without the prefix
  std::string valor;
};

// What a file says of a column beyond its field.
struct DetalleColumna {
  std::string nombre_xml;  // the key of its values; empty for a column of no file
  std::vector<AtributoAjeno> otros;
};

// A row that a file holds as pending and of which not everything follows from its values.
struct FilaPendiente {
  std::uint32_t fila;
  std::optional<std::uint32_t> original;  // its row in `originales`, when it was changed; without, it was added
  std::vector<std::uint32_t> puestas;     // the columns that were set, in ascending order
};

// Bytes whose digits stand on more than one line in a file.
struct TextoEnvuelto {
  std::uint32_t numero;  // of the text without the white space, so that another value of the cell tells itself apart
  std::string crudo;
};

class DatosTabla {
 public:
  void AgregarCampo(const Campo& campo, DetalleColumna detalle = {});  // of a name that occurs twice the first answers
  void AgregarFila();
  int Buscar(std::string_view nombre) const noexcept;

  // A value of a row was set: a pending row that keeps account of it is told.
  void Anotar(std::size_t fila, std::size_t campo);

  // Nothing is pending any more.
  void Publicar();

  // A table without rows that has these fields.
  std::unique_ptr<DatosTabla> Aparte() const;

  std::vector<Campo> campos;
  std::vector<Columna> columnas;
  std::size_t filas = 0;
  std::size_t publicadas = 0;

  // What a file held beside the rows on show, so that it is written as it came.
  std::vector<DetalleColumna> detalles;
  std::vector<AtributoAjeno> de_tabla = {{"updatable", "true"}};
  std::vector<FilaPendiente> pendientes;   // ascending by row; rows behind `publicadas` may do without an entry
  std::unique_ptr<DatosTabla> originales;  // rows of `pendientes` before they were changed
  std::unique_ptr<DatosTabla> borradas;    // rows that were taken away
  std::map<std::pair<std::uint32_t, std::uint32_t>, TextoEnvuelto> envueltos;  // by row and column

 private:
  std::unordered_map<std::string, std::size_t, DispersionSinCaso, IgualdadSinCaso> por_nombre_;
};

}  // namespace utr
