#pragma once

#include <QFrame>

class QGridLayout;
class QRadioButton;

namespace utr {

// One of the ways among which an option chooses: the chosen one stands out on a ground of its own, the others step
// back. Its fields stand in a grid whose columns are the same in all parts of a dialog.
class ParteElegible : public QFrame {
  Q_OBJECT

 public:
  // Columns of the grid: the captions, the fields and what stands right of a field.
  static constexpr int kRotulos = 1;
  static constexpr int kCampos = 2;
  static constexpr int kAlLado = 3;

  // `opcion` stands in the first row of the grid, which takes `columnas` of its columns.
  ParteElegible(const char* nombre, QRadioButton* opcion, int columnas, QWidget* parent = nullptr);

  QGridLayout* Reja() const { return reja_; }

  // Stands out, or steps back.
  void Elegir(bool elegida);

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  QGridLayout* reja_;
  bool elegida_ = false;
};

// A grid with those columns and margins.
QGridLayout* RejaDeParte(QWidget* marco);

// Gives the columns of captions of these grids one width.
void AlinearRotulos(std::initializer_list<QGridLayout*> rejas);

}  // namespace utr
