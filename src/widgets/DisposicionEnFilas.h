#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace utr {

// Parts in a row from left to right, like those of a QHBoxLayout, and in further rows where the width doesn't do for
// all of them: a window of letters of any size stays within its screen. As wide as all parts want, and never narrower
// than the widest of them.
class DisposicionEnFilas : public QLayout {
 public:
  // `entre`: pixels between parts and between rows.
  explicit DisposicionEnFilas(int entre, QWidget* parent = nullptr);
  ~DisposicionEnFilas() override;

  // `estirado`: the share that the part takes of what its row leaves over; 0: as wide as it wants to be.
  void Agregar(QWidget* parte, int estirado = 0);
  void Agregar(QLayout* parte, int estirado = 0);
  // A part that takes what its row leaves over, and would rather be as narrow as it can than go to the next row.
  void AgregarFlexible(QWidget* parte);
  void AgregarFlexible(QLayout* parte);
  // Parts after it stand at the right end of their row.
  void Separar();

  void addItem(QLayoutItem* item) override;
  int count() const override { return static_cast<int>(partes_.size()); }
  QLayoutItem* itemAt(int cual) const override;
  QLayoutItem* takeAt(int cual) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int ancho) const override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& lugar) override;

 private:
  struct Parte {
    std::unique_ptr<QLayoutItem> item;
    int estirado = 0;
    bool flexible = false;

    bool Separa() const;
    bool Ocupa() const;
    // What it wants, and what it takes a place in a row for.
    int Ancho() const;
    int AnchoJusto() const;
  };
  // Parts from `desde` up to and without `hasta`.
  struct Fila {
    std::size_t desde = 0;
    std::size_t hasta = 0;
    int ancho = 0;  // the just widths of its parts
  };

  std::vector<Fila> Filas(int ancho) const;
  std::vector<int> Anchos(const Fila& fila, int ancho) const;
  int Alto(const Fila& fila, const std::vector<int>& anchos) const;

  int entre_;
  std::vector<Parte> partes_;
};

}  // namespace utr
