#pragma once

#include <QWidget>

namespace utr {

// The state of an output as a shape: a full disc is on, an empty ring is off, a broken ring with a question mark is not
// known. The words stand beside it.
class IndicadorSalida : public QWidget {
 public:
  enum class Senal { kEncendida, kApagada, kDesconocida };

  explicit IndicadorSalida(QWidget* parent = nullptr);

  void Mostrar(Senal senal);
  Senal Mostrada() const noexcept { return senal_; }

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  Senal senal_ = Senal::kDesconocida;
};

}  // namespace utr
