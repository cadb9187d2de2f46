#pragma once

#include <QIcon>
#include <QWidget>

class QListView;
class QStackedLayout;
class QStandardItemModel;
class QTreeView;

namespace utr {

enum class Vista { kIconosGrandes, kIconosPequenos, kLista, kDetalles };

// The list of actions of the main window: one column "Acciones", in four views, each row with its index as tag.
class ListaAcciones : public QWidget {
  Q_OBJECT

 public:
  explicit ListaAcciones(QWidget* parent = nullptr);

  void Agregar(const QString& texto, const QIcon& icono, int indice);
  void FijarVista(Vista vista);
  void Ordenar(bool ascendente);

  // The texts of the rows in their present order, and the tag of a row.
  QStringList Textos() const;
  int Indice(int fila) const;

  // Makes a row current.
  void Elegir(int fila);

 signals:
  // A double click on a row, or Enter with it selected.
  void Ejecutar(int indice);

 protected:
  bool eventFilter(QObject* vigilado, QEvent* evento) override;

 private:
  QSize SitioDelTexto() const;
  void EjecutarFila(const QModelIndex& fila);

  QStandardItemModel* modelo_;
  QTreeView* detalles_;
  QListView* iconos_;
  QStackedLayout* pila_;
};

}  // namespace utr
