#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lists/Columnas.h"
#include "tables/Tabla.h"

namespace utr {

// The order in which a list stands.
struct OrdenLista {
  std::size_t columna = 0;
  bool descendente = false;
  bool como_texto = false;  // by the shown text, whatever the kind of the column
};

// What a list shows: the rows of a table through a column description, narrowed by a typed text and ordered by a
// column, without touching the table's own cursor, filter and sort. It reads the table directly: no text of a cell is
// copied, and what is shown for a value is worked out once for each distinct text of the column.
//
// A *position* counts the rows on show from 0; a *fila* is the identity of a row in the table. Positions hold until the
// next call of Mostrar, Vaciar, Filtrar, Ordenar or QuitarOrden. The table must not change while it is shown: call
// Mostrar again.
class ListaTabla {
 public:
  explicit ListaTabla(Columnas columnas = {});

  // Replaces the columns and empties the list.
  void Definir(Columnas columnas);
  const Columnas& LasColumnas() const noexcept { return columnas_; }

  // Shows the rows on show in `tabla`, in its order, without narrowing or order of the list's own. Null, or a closed
  // table, empties the list. Raises kCampo for a table without a field that a column needs; the list is empty then.
  void Mostrar(TablaPtr tabla);
  void Vaciar() noexcept;

  // Rows on show, and all rows that the table gave.
  std::size_t Cantidad() const noexcept { return con_vista_ ? vista_.size() : total_; }
  std::size_t Total() const noexcept { return total_; }

  // The row of a position.
  std::size_t Fila(std::size_t posicion) const;

  // The text shown. Agregar appends it to `salida` instead.
  std::string Texto(std::size_t posicion, std::size_t columna) const;
  void Agregar(std::string& salida, std::size_t posicion, std::size_t columna) const;

  // The distinct texts that a column shows, each at least once, for measuring widths. Views live until the next call of
  // a member that isn't const.
  std::vector<std::string_view> TextosDistintos(std::size_t columna) const;

  // Which of TextosDistintos the cell at that position shows.
  std::size_t IndiceDeTexto(std::size_t posicion, std::size_t columna) const;

  // Keeps the rows in which some column shows `texto` somewhere, without regard to case. An empty text shows all. The
  // order stays.
  void Filtrar(std::string_view texto);
  const std::string& Filtro() const noexcept { return filtro_; }

  // Orders by a column, stable with respect to the table's order, in either direction; dates with their times, as
  // Columnas.h tells. The narrowing stays.
  void Ordenar(const OrdenLista& orden);
  void QuitarOrden();
  const std::optional<OrdenLista>& Orden() const noexcept { return orden_; }

  // The rows at those positions, in the order given: columns parted by tabs, rows by "\n", none at the end.
  std::string TextoDeFilas(std::span<const std::size_t> posiciones) const;

  // The same below a line of column titles; an empty text without rows.
  std::string TextoConTitulos(std::span<const std::size_t> posiciones) const;

 private:
  // Where the texts of a column come from. Every column has an index of distinct texts: the table's own for a text
  // column, one made here for a column of another kind.
  struct Fuente {
    int campo = -1;                      // -1: the column doesn't read the table
    bool de_texto = false;               // the table keeps its distinct texts
    bool directa = false;                // they are shown as they are
    std::vector<std::string> textos;     // shown texts by index, where they aren't the table's own
    std::vector<std::uint32_t> indices;  // index by row, where the table keeps none
  };

  Fuente PrepararColumna(const Tabla& tabla, const ColumnaLista& columna) const;
  std::size_t Indices(const Fuente& fuente) const;
  std::size_t IndiceDe(std::size_t fila, const Fuente& fuente) const;
  std::span<const std::uint32_t> IndicesPorFila(const Fuente& fuente, std::vector<std::uint32_t>& apoyo) const;
  std::string_view TextoDeIndice(std::size_t indice, std::size_t columna) const;
  std::string_view Mostrado(std::size_t fila, std::size_t columna) const;
  void RehacerVista();
  void DejarLasQueContienen(std::vector<std::uint32_t>& filas) const;
  void OrdenarFilas(std::vector<std::uint32_t>& filas) const;
  void Distribuir(std::vector<std::uint32_t>& filas, std::size_t columna, bool como_texto) const;
  std::vector<std::uint32_t> RangosDe(std::size_t columna, bool como_texto) const;
  std::vector<std::uint32_t> RangosDeTexto(std::size_t columna) const;
  std::vector<std::uint32_t> RangosDeValor(std::size_t columna, ClaseOrden clase) const;

  Columnas columnas_;
  std::vector<Fuente> fuentes_;
  TablaPtr tabla_;
  std::size_t total_ = 0;
  std::string filtro_;
  std::optional<OrdenLista> orden_;
  bool con_vista_ = false;            // there is a narrowing or an order
  std::vector<std::uint32_t> vista_;  // rows on show then
};

}  // namespace utr
