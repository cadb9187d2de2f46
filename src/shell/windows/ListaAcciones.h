#pragma once

#include <QIcon>
#include <QWidget>

class QAbstractItemView;
class QItemSelectionModel;
class QStandardItemModel;

namespace utr {

enum class Vista { kIconosGrandes, kIconosPequenos, kLista, kDetalles };

// The list of actions of the main window: one column "Acciones", in four views, each row with its index as tag. Only
// the view on show exists, so that whoever reads the window aloud meets each action once. In "Detalles" a second,
// smaller line says what an action does; it is drawn, and described to a screen reader, but no part of the text.
class ListaAcciones : public QWidget {
  Q_OBJECT

 public:
  explicit ListaAcciones(QWidget* parent = nullptr);

  void Agregar(const QString& texto, const QString& que_hace, const QIcon& icono, int indice);
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
  void changeEvent(QEvent* evento) override;
  bool eventFilter(QObject* vigilado, QEvent* evento) override;

 private:
  QAbstractItemView* NuevaVista(Vista vista) const;
  QSize SitioDelTexto() const;
  void EjecutarFila(const QModelIndex& fila);

  QStandardItemModel* modelo_;
  QItemSelectionModel* seleccion_;
  QAbstractItemView* vista_ = nullptr;
  Vista cual_ = Vista::kDetalles;
};

}  // namespace utr
