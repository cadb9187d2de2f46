#pragma once

#include <QDialog>
#include <string>

#include "lists/ListaTabla.h"

class QFormLayout;

namespace utr {

// One row of a list in full: a pair of labels for each column, "-" for a field without a value.
class frmItemLista : public QDialog {
  Q_OBJECT

 public:
  explicit frmItemLista(QWidget* parent = nullptr);

  // Takes the titles of the list and the texts of the row at that position. The caption becomes "Detalles: " and the
  // text of the column `columna_titulo`.
  void ItemToShow(const ListaTabla& lista, std::size_t posicion, std::size_t columna_titulo);

 private:
  void Copiar();
  void AgregarPar(std::size_t indice, const std::string& titulo, const std::string& dato);

  QFormLayout* pares_;
};

}  // namespace utr
