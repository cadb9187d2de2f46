#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "lists/ListaTabla.h"
#include "tables/Tabla.h"

class QIcon;
class QLabel;
class QLineEdit;
class QShortcut;
class QTreeView;

namespace utr {

class AnchoTexto;
class ModeloLista;
class TitulosLista;

// The list of the system: a table's rows under titled columns, with a filter field over them.
//
// A click on a column title orders by that column and turns the order over at each click, the first one ascending; the
// title then bears an arrow, up for ascending. Widths are fitted to titles and texts whenever a table is shown; the
// last column takes the room that is left. Ctrl+F goes to the filter field, which keeps the rows that hold the text in
// any column, and says where none does; Esc there empties it. Ctrl+C copies the selected rows as tab-separated text,
// with the titles.
class VistaLista : public QWidget {
  Q_OBJECT

 public:
  // The list of these columns, without rows. The tree view inside has the object name "Lista", the field "txtFiltro".
  explicit VistaLista(Columnas columnas, QWidget* parent = nullptr);

  // Other columns, as many as before or not, without rows. The order in force stays where it has the column.
  void Definir(Columnas columnas);

  // Shows the rows on show in the table, in the order last asked for (but for an order by text, which lasts until
  // then), with the filter field emptied and the columns fitted. The table must not change or be closed while it is
  // shown: empty the list first. A null table empties the list. Raises kCampo for a table without a field that a column
  // needs; the list is empty then.
  void Mostrar(TablaPtr tabla);
  void Vaciar();

  // What is shown, in the present display order: rows, texts, document.
  const ListaTabla& Lista() const;

  // Position on display of the current row, or nothing.
  std::optional<std::size_t> FilaActual() const;

  // Positions on display of the selected rows, ascending.
  std::vector<std::size_t> FilasElegidas() const;

  // Makes the row at that position current and the only one selected, and brings it into sight.
  void Elegir(std::size_t posicion);

  // Selects these rows, told by their identity in the table, and leaves the current row where it is.
  void ElegirTodas(const std::function<bool(std::size_t fila)>& elegida);

  // Orders by a column: by value as a click on its title does, or by its text without choosing a column, as the
  // toolbar's two buttons do in some windows. The title bears the arrow either way, and says so where the texts of
  // the column order otherwise than its values. Current row and selection stay. (The filter keeps them too: while it
  // hides the current row the first one stands in for it, until the operator goes elsewhere.)
  void Ordenar(std::size_t columna, bool ascendente);
  void OrdenarComoTexto(std::size_t columna, bool ascendente);

  // The table's own order again, no title with an icon; the next click orders descending if `ascendente`, which is how
  // the table is said to stand, else ascending.
  void QuitarOrden(bool ascendente);

  // The column that was chosen to order by.
  std::optional<std::size_t> ColumnaOrdenada() const { return columna_ordenada_; }

  // The click on the title of a column, and the same on the column that bears the icon (nothing without one).
  void ClicColumna(std::size_t columna);
  void RepetirOrden();
  // Orders by the column right of the one that orders now, ascending, as a click on its title would.
  void OrdenarPorLaSiguiente();

  // For a window that is found as it was left. The operator may drag columns to other places, which changes no
  // document. With `si` the widths that he gave to columns stay when the columns are fitted.
  void ConservarAnchos(bool si);

  // How many letters of these columns are in sight at first, where texts are so long that the columns behind them would
  // be out of it. Of the others there are 60.
  void LimitarLetras(std::map<std::size_t, int> letras);

  // The width in which all columns are in sight, in pixels.
  int AnchoDeseado() const;

  // How the columns stand: places, widths that the operator gave, the title that orders. Texts of no meaning elsewhere.
  // What isn't one of this list's is left alone when it is put back.
  QStringList Disposicion() const;
  void Disponer(const QStringList& disposicion);

  // The same, for whoever arranges the columns without a mouse. The columns as they stand from left to right; whether
  // they can be given other places; the width of one as it stands, and the one that it has by itself, both in letters.
  std::vector<std::size_t> OrdenDeColumnas() const;
  bool ColumnasMovibles() const;
  int LetrasDe(std::size_t columna) const;
  int LetrasAjustadas(std::size_t columna) const;

  // Puts the columns into that order, which names each of them once, and gives some a width in letters, as the operator
  // would with the mouse. The others keep theirs.
  void Colocar(const std::vector<std::size_t>& orden, const std::map<std::size_t, int>& letras);

  // The columns in their first order, each in the width that it has by itself.
  void ColocarComoAlPrincipio();

  // Columns in the table's order (the window orders the rows itself and shows the table anew): Ordenar and a click on
  // them put the icon and drop another column's order but leave the rows alone.
  void OrdenAjeno(std::size_t columna) { ajenas_.push_back(columna); }

  QTreeView* Arbol() { return arbol_; }
  QLineEdit* CampoFiltro() { return filtro_; }

  // Rows that bear an icon ahead of their first cell: those for which `palabra`, asked with their identity in the
  // table, has a word. It says to tooltips and screen readers what the icon means; the text of the cells, and with it
  // every document, stays as it is.
  void Marcar(std::function<QString(std::size_t fila)> palabra, const QIcon& icono);

  // For a short list beside the one of the window: no filter field, and Ctrl+F stays the other one's.
  void SinFiltro();

  // The selected rows as Ctrl+C puts them on the clipboard, with the titles over them.
  std::string TextoElegido() const;

 signals:
  // A double click on a row, or Enter with a current row.
  void Activada(std::size_t posicion);

  // A click on a column title (or RepetirOrden) ordered the list.
  void Ordenada(std::size_t columna, bool ascendente);

  // The selection or the current row changed.
  void SeleccionCambiada();

  // The filter field changed which rows are seen.
  void Filtrada();

  // Columns were fitted, to the rows of another table or to other titles.
  void Ajustada();

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  void ArmarArbol();
  void ArmarFiltro();
  void ArmarAcciones();
  bool TeclaEnFiltro(int tecla);
  bool TeclaEnLista(int tecla);
  // Where the operator is, by the rows' places in the table, which no order and no filter changes.
  struct Lugar {
    std::optional<std::size_t> actual;
    std::vector<bool> elegidas;
    bool operator==(const Lugar&) const = default;
  };
  Lugar LugarALaVista() const;
  void Volver(const Lugar& lugar);
  void Cambiar(const std::function<void(ListaTabla&)>& cambio);
  void AplicarOrden(const OrdenLista& orden);
  void PonerIcono();
  void DecirSinAciertos();
  int AnchoAjustado(std::size_t columna, const AnchoTexto& celda) const;
  void AjustarColumnas();
  void AnotarAncho(int columna, int ancho);
  void Copiar() const;

  ModeloLista* modelo_;
  QLineEdit* filtro_;
  QShortcut* buscar_ = nullptr;
  QTreeView* arbol_;
  TitulosLista* titulos_;
  QLabel* sin_aciertos_;
  Lugar pedido_;    // where the operator went last, hidden rows among it
  Lugar mostrado_;  // what could be shown of it
  std::optional<std::size_t> columna_ordenada_;
  std::optional<OrdenLista> orden_;
  bool ascendente_ = false;
  int ancho_marca_ = 0;  // of the icon that rows may bear; 0: none does
  std::vector<std::size_t> ajenas_;
  std::map<int, int> anchos_propios_;  // by column: those that the operator gave
  std::map<std::size_t, int> letras_;  // by column: at first in sight
  bool conservar_anchos_ = false;
  bool ajustando_ = false;  // widths change by themselves
};

}  // namespace utr
