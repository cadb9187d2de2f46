#include "widgets/AyudaCombos.h"

namespace utr {

void AgregarEntrada(QComboBox& lista, const QString& texto, std::int32_t numero, const QString& ayuda) {
  lista.addItem(texto, numero);
  if (!ayuda.isEmpty()) lista.setItemData(lista.count() - 1, ayuda, Qt::ToolTipRole);
}

void SeleccionarValor(QComboBox& lista, std::int32_t valor) {
  lista.setCurrentIndex(lista.findData(valor));
}

std::int32_t ValorElegido(const QComboBox& lista) {
  return lista.currentIndex() < 0 ? 0 : lista.currentData().toInt();
}

}  // namespace utr
