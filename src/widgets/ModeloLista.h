#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <functional>

#include "lists/ListaTabla.h"

namespace utr {

// Shows a ListaTabla to Qt's views: no item objects, a text is made only while it is being drawn.
class ModeloLista : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit ModeloLista(Columnas columnas, QObject* parent = nullptr);

  const ListaTabla& Lista() const { return lista_; }

  // Rows that bear an icon ahead of their first cell: those for which `palabra`, asked with their identity in the
  // table, has a word. It says to tooltips and screen readers what the icon means.
  void Marcar(std::function<QString(std::size_t fila)> palabra, const QIcon& icono);

  // Runs a change of the list as one reset of the model, also when it raises.
  void Cambiar(const std::function<void(ListaTabla&)>& cambio);

  int rowCount(const QModelIndex& padre = {}) const override;
  int columnCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;
  QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

 private:
  QString Marca(const QModelIndex& indice) const;
  bool OrdenadaComoTexto(int seccion) const;

  ListaTabla lista_;
  std::function<QString(std::size_t fila)> marca_;
  QIcon icono_;
};

}  // namespace utr
