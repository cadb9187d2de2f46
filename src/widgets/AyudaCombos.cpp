#include "widgets/AyudaCombos.h"

#include "widgets/Iconos.h"

namespace utr {

void AgregarEntrada(QComboBox& lista, const QString& texto, std::int32_t numero, const QString& ayuda) {
  lista.addItem(texto, numero);
  if (!ayuda.isEmpty()) lista.setItemData(lista.count() - 1, ayuda, Qt::ToolTipRole);
}

void AgregarAjena(QComboBox& lista, const QString& texto, std::int32_t numero) {
  AgregarEntrada(lista, texto, numero, QStringLiteral("No está entre los de este equipo"));
  lista.setItemIcon(lista.count() - 1, IconoDe("aviso"));
}

void MostrarAyudaDelElegido(QComboBox& lista) {
  const auto mostrar = [&lista] {
    const QString ayuda = lista.currentData(Qt::ToolTipRole).toString();
    lista.setToolTip(ayuda);
    lista.setAccessibleDescription(ayuda);
  };
  QObject::connect(&lista, &QComboBox::currentIndexChanged, &lista, mostrar);
  mostrar();
}

void SeleccionarValor(QComboBox& lista, std::int32_t valor) {
  lista.setCurrentIndex(lista.findData(valor));
}

std::int32_t ValorElegido(const QComboBox& lista) {
  return lista.currentIndex() < 0 ? 0 : lista.currentData().toInt();
}

}  // namespace utr
