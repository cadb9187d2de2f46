#pragma once

#include <QComboBox>
#include <cstdint>

// Drop-down lists whose entries carry a number.
namespace utr {

// Adds an entry with its number.
void AgregarEntrada(QComboBox& lista, const QString& texto, std::int32_t numero, const QString& ayuda = {});

// Adds an entry for a number that the list doesn't have, at its end and marked by an icon and a tip: it was stored on
// another machine, or with another device attached.
void AgregarAjena(QComboBox& lista, const QString& texto, std::int32_t numero);

// The list shows the tip of its current entry as its own from now on.
void MostrarAyudaDelElegido(QComboBox& lista);

// Makes current the entry whose number equals `valor`; none where there is no such entry.
void SeleccionarValor(QComboBox& lista, std::int32_t valor);

// The number of the current entry; 0 when there is none.
std::int32_t ValorElegido(const QComboBox& lista);

}  // namespace utr
