#include "widgets/ModeloLista.h"

#include <QScopeGuard>

#include "widgets/TextoQt.h"

namespace utr {

ModeloLista::ModeloLista(Columnas columnas, QObject* parent)
    : QAbstractTableModel(parent), lista_(std::move(columnas)) {}

void ModeloLista::Cambiar(const std::function<void(ListaTabla&)>& cambio) {
  beginResetModel();
  const auto fin = qScopeGuard([this] { endResetModel(); });
  cambio(lista_);
}

void ModeloLista::Marcar(std::function<QString(std::size_t fila)> palabra, const QIcon& icono) {
  marca_ = std::move(palabra);
  icono_ = icono;
}

QString ModeloLista::Marca(const QModelIndex& indice) const {
  return marca_ ? marca_(lista_.Fila(static_cast<std::size_t>(indice.row()))) : QString();
}

int ModeloLista::rowCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : static_cast<int>(lista_.Cantidad());
}

int ModeloLista::columnCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : static_cast<int>(lista_.LasColumnas().size());
}

QVariant ModeloLista::data(const QModelIndex& indice, int papel) const {
  if (!indice.isValid()) return {};
  const auto columna = static_cast<std::size_t>(indice.column());
  if (papel == Qt::DisplayRole) return Q(lista_.Texto(static_cast<std::size_t>(indice.row()), columna));
  if (papel == Qt::TextAlignmentRole && lista_.LasColumnas()[columna].orden == ClaseOrden::kNumero) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
  }
  if (papel == Qt::DecorationRole) return columna == 0 && !Marca(indice).isEmpty() ? QVariant(icono_) : QVariant();
  if (papel == Qt::ToolTipRole || papel == Qt::AccessibleDescriptionRole) {
    const QString marca = Marca(indice);
    return marca.isEmpty() ? QVariant() : QVariant(marca);
  }
  return {};
}

// Where that is another order than that of its values.
bool ModeloLista::OrdenadaComoTexto(int seccion) const {
  const auto& orden = lista_.Orden();
  const auto columna = static_cast<std::size_t>(seccion);
  return orden && orden->como_texto && orden->columna == columna &&
         lista_.LasColumnas()[columna].orden != ClaseOrden::kTexto;
}

QVariant ModeloLista::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
  if (orientacion != Qt::Horizontal) return {};
  const ColumnaLista& columna = lista_.LasColumnas()[static_cast<std::size_t>(seccion)];
  if (papel == Qt::DisplayRole) {
    return OrdenadaComoTexto(seccion) ? Q(columna.titulo).trimmed() + QStringLiteral(" (como texto)")
                                      : Q(columna.titulo);
  }
  if (papel == Qt::ToolTipRole && OrdenadaComoTexto(seccion)) {
    return QStringLiteral("Ordenada letra por letra, hasta la próxima lectura. Un clic la ordena por su valor.");
  }
  if (papel == Qt::TextAlignmentRole) {
    const bool numero = columna.orden == ClaseOrden::kNumero;
    return QVariant::fromValue(Qt::Alignment((numero ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
  }
  return {};
}

}  // namespace utr
