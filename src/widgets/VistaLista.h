#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "lists/Columnas.h"
#include "lists/ListaTabla.h"
#include "tables/Tabla.h"

class QAction;
class QLineEdit;
class QTreeView;

namespace utr {

class ModeloLista;

// The list of the system: a table's rows under titled columns, with a filter field over them.
//
// A click on a column title orders by that column and turns the order over at each click; the title then bears the icon of
// the order. Widths are fitted to titles and texts whenever a table is shown. Ctrl+F goes to the filter field, which keeps
// the rows that hold the text in any column; Esc there empties it. Ctrl+C copies the selected rows as tab-separated text.
class VistaLista : public QWidget {
  Q_OBJECT

 public:
  // The list of these columns, without rows. The tree view inside has the object name "Lista".
  explicit VistaLista(Columnas columnas, QWidget* parent = nullptr);
  ~VistaLista() override;

  // Shows the rows of the table, in the order in force, with the filter field emptied and the columns fitted. The list
  // reads the table through its own clone. A null table empties the list.
  void Mostrar(TablaPtr tabla);
  void Vaciar() { Mostrar(nullptr); }

  // What is shown, in the present display order: rows, texts, document. Valid as long as the view lives.
  ListaTabla& Lista();
  const ListaTabla& Lista() const;

  // Position on display of the current row, or nothing.
  std::optional<std::size_t> FilaActual() const;

  // Positions on display of the selected rows, ascending.
  std::vector<std::size_t> FilasElegidas() const;

  // Makes the row at that position current and the only one selected, and brings it into sight.
  void Elegir(std::size_t posicion);

  // Orders by a column: by value as a click on its title does (the title gets the icon), or as text without choosing a
  // column, as the toolbar's two buttons do in some windows (no icon).
  void Ordenar(std::size_t columna, bool ascendente);
  void OrdenarComoTexto(std::size_t columna, bool ascendente);

  // The column whose title bears the icon, and its order.
  std::optional<std::size_t> ColumnaOrdenada() const;
  bool Ascendente() const;

  // Repeats the click on the column that bears the icon; nothing without one.
  void RepetirOrden();

  QTreeView* Arbol() { return arbol_; }
  QLineEdit* CampoFiltro() { return filtro_; }

  // The selected rows as tab-separated lines, which Ctrl+C puts on the clipboard.
  QString TextoElegido() const;

 signals:
  // A double click on a row, or Enter with a current row.
  void Activada(std::size_t posicion);

  // A click on a column title (or RepetirOrden) ordered the list.
  void Ordenada(std::size_t columna, bool ascendente);

  // The selection or the current row changed.
  void SeleccionCambiada();

  // The filter field changed how many rows are seen.
  void Filtrada(std::size_t filas);

 private:
  Columnas columnas_;
  ModeloLista* modelo_;
  QTreeView* arbol_;
  QLineEdit* filtro_;
};

}  // namespace utr
