#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tables/DatosTabla.h"
#include "tables/Renglones.h"

// The rows of a persisted table. Internal to the writer.
namespace utr {

// The text as an attribute's value. Characters of control other than tab and line ends have no place in XML and are
// left out; bytes that are no UTF-8 are read as ComoUtf8 does.
std::string Escapar(std::string_view original);

// What a column's values look like in the file. Texts that repeat are made ready once.
struct ColumnaSalida {
  ColumnaSalida(const Columna& de_columna, const std::string& nombre);

  const Columna* columna;
  std::string nombre_xml;
  std::string atributo;                    // XML name and "="
  std::string comienzo;                    // what stands ahead of a value, and kHolgura bytes
  std::size_t largo_comienzo;              // of the former alone
  std::span<const std::uint32_t> lugares;  // texts by row, of a text column that isn't thin
  bool llana = false;                      // no text of it needs a reference
  std::string hechos;                      // attributes of texts that repeat, as the file has them, and kHolgura bytes
  std::vector<std::uint32_t> finales;      // where that of each text ends there, by its number; 0 has none
};

// Which columns may have a value in a row, without a look at all columns for each row: those that are full enough to be
// looked at, and of the thin ones those that do.
class ColumnasLlenas {
 public:
  explicit ColumnasLlenas(const DatosTabla& datos);

  // Calls `hacer` with each of them in ascending order. The rows have to be asked in theirs.
  template <typename Hacer>
  void ParaCada(std::size_t fila, const Hacer& hacer) {
    if (fila >= vigentes_hasta_) QuitarAcabadas(fila);
    while (siguiente_ < ralas_.size() && ralas_[siguiente_].first < fila) ++siguiente_;
    for (const std::uint32_t i : densas_) {
      HacerRalas(fila, i, hacer);
      hacer(i);
    }
    HacerRalas(fila, datos_.columnas.size(), hacer);
  }

  // The same columns, where none of them is a thin one in that row; null when one is.
  const std::vector<std::uint32_t>* SoloDensas(std::size_t fila) {
    if (fila >= vigentes_hasta_) QuitarAcabadas(fila);
    return ralas_.empty() ? &densas_ : nullptr;
  }

 private:
  template <typename Hacer>
  void HacerRalas(std::size_t fila, std::size_t antes_de, const Hacer& hacer) {
    while (siguiente_ < ralas_.size() && ralas_[siguiente_].first == fila && ralas_[siguiente_].second < antes_de) {
      hacer(ralas_[siguiente_++].second);
    }
  }

  // Columns whose last value lies ahead of the row aren't looked at any more.
  void QuitarAcabadas(std::size_t fila);

  const DatosTabla& datos_;
  std::vector<std::uint32_t> densas_;
  std::vector<std::pair<std::size_t, std::uint32_t>> ralas_;  // row and column of each value
  std::size_t siguiente_ = 0;
  std::size_t vigentes_hasta_ = 0;
};

// The rows of one table, whose columns are those of the schema. Rows come in ascending order.
class EscritorFilas {
 public:
  EscritorFilas(Renglones& renglones, const DatosTabla& datos, const std::vector<std::string>& nombres);

  // All values of a row.
  void Fila(std::size_t sangria, std::size_t fila);

  // A row that was added, with the names of the columns that were set to null: without account of it, all that are.
  void Nueva(std::size_t fila, const FilaPendiente* pendiente);

  // What was set in a row that was changed.
  void Cambio(std::size_t fila, const FilaPendiente& pendiente);

 private:
  // Both say whether every column is known to have a value in the row.
  bool Valores(std::size_t sangria, std::size_t fila);
  bool Textos(std::size_t sangria, std::size_t fila, const std::vector<std::uint32_t>& columnas);
  void Valor(std::size_t fila, std::size_t i);
  bool EscribirEnvuelto(std::size_t fila, std::size_t i);
  void Anticipar(std::size_t fila) const;
  void AnotarNulo(std::size_t fila, std::size_t i);
  void CerrarConNulos();

  Renglones& r_;
  const DatosTabla& datos_;
  std::vector<ColumnaSalida> columnas_;
  ColumnasLlenas llenas_;
  std::vector<const ColumnaSalida*> dispersas_;  // columns of many texts, which lie all over the memory
  bool solo_textos_ = true;                      // all values are plain texts or made ready
  std::string nulos_;
};

}  // namespace utr
