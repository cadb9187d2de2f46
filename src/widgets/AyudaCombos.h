#pragma once

#include <QComboBox>
#include <cstdint>

// Drop-down lists whose entries carry a number.
namespace utr {

// Adds an entry with its number.
void AgregarEntrada(QComboBox& lista, const QString& texto, std::int32_t numero, const QString& ayuda = {});

// Makes current the entry whose number equals `valor`; none where there is no such entry.
void SeleccionarValor(QComboBox& lista, std::int32_t valor);

// The number of the current entry; 0 when there is none.
std::int32_t ValorElegido(const QComboBox& lista);

}  // namespace utr
