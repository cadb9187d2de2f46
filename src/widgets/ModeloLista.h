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

  // Rows that bear an icon ahead of their first cell, told by their identity in the table. `palabra` says to tooltips
  // and screen readers what the icon means.
  void Marcar(std::function<bool(std::size_t fila)> marcada, const QIcon& icono, const QString& palabra);

  // Runs a change of the list as one reset of the model, also when it raises.
  void Cambiar(const std::function<void(ListaTabla&)>& cambio);

  int rowCount(const QModelIndex& padre = {}) const override;
  int columnCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;
  QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

 private:
  bool Marcada(const QModelIndex& indice) const;

  ListaTabla lista_;
  std::function<bool(std::size_t fila)> marcada_;
  QIcon icono_;
  QString palabra_;
};

}  // namespace utr
