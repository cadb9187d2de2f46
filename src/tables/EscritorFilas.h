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

// What a column's values look like in the file. Texts that repeat are made ready once: whole attributes where there are
// few of them, so that one copy does, and else no more than the values, which then stay near enough to be found
// quickly.
struct ColumnaSalida {
  ColumnaSalida(const Columna& de_columna, const std::string& nombre);

  // How a text of a column that is made ready or plain stands in the file: the whole attribute of an `entera`, else
  // what follows its first quote; without the last one where nothing is made ready.
  std::string_view Hecho(std::uint32_t numero) const {
    if (ranura != 0) {
      const char* const suya = hechos.data() + (std::size_t{numero} << ranura);
      return {suya, static_cast<unsigned char>(suya[(std::size_t{1} << ranura) - 1])};
    }
    if (finales.empty()) return columna->Textos().Texto(numero);
    const std::uint32_t desde = finales[numero - 1];
    return {hechos.data() + desde, finales[numero] - desde};
  }
  bool EstaHecha() const { return !hechos.empty(); }

  const Columna* columna;
  std::string nombre_xml;
  std::string atributo;                    // XML name and "="
  std::string comienzo;                    // what stands ahead of a value, and kHolgura bytes
  std::size_t largo_comienzo;              // of the former alone
  std::span<const std::uint32_t> lugares;  // texts by row, of a text column that isn't thin
  bool llana = false;                      // no text of it needs a reference
  bool entera = false;                     // attributes are made ready
  std::string hechos;                      // what is made ready, and kHolgura bytes
  unsigned ranura = 0;                     // short ones by number, with their length at the end of 2^ranura bytes; else
  std::vector<std::uint32_t> finales;      // where that of each text ends, by its number; 0 has none
  std::size_t mayor = 0;                   // bytes of the longest value or attribute, of a column made ready or plain
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
  std::size_t mayor_fila_ = 0;                   // bytes that no row exceeds, where all values are plain or made ready
  bool solo_textos_ = true;                      // that they are, and rows are short enough to make room for at once
  std::string nulos_;
};

}  // namespace utr
