#pragma once

#include <QDialog>
#include <cstddef>
#include <map>

class QPushButton;
class QSpinBox;
class QTreeWidget;

namespace utr {

class VistaLista;

// Order and widths of the columns of a list, for those who don't drag titles with a mouse. Accepted, the list stands as
// it says here; columns that the list doesn't let go are offered no other place.
class frmColumnas : public QDialog {
  Q_OBJECT

 public:
  // Over the window of that list, which must outlive it.
  explicit frmColumnas(VistaLista& lista);

 private:
  void ArmarLista();
  void ArmarControles();
  void Mover(int hacia);
  void Mostrar();
  void AnotarAncho(int letras);
  void VolverAlPrincipio();
  void Aplicar();
  void Agregar(std::size_t columna, int letras);

  VistaLista& lista_;
  QTreeWidget* columnas_;
  QPushButton* subir_;
  QPushButton* bajar_;
  QSpinBox* ancho_;
  QPushButton* principio_;
  bool del_principio_ = false;        // what was given before this dialog is dropped
  std::map<std::size_t, int> dados_;  // widths, by column, in letters
};

}  // namespace utr
