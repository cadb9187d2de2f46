#pragma once

#include <QStatusBar>

#include "session/OperacionesEnlace.h"

class QLabel;

namespace utr {

// The status bar: panel 1 for progress, and the two panels that tell the link.
class BarraEstado : public QStatusBar {
  Q_OBJECT

 public:
  explicit BarraEstado(QWidget* parent = nullptr);

  void Mostrar(const TextosPanel& textos);

 private:
  QLabel* puerto_;
  QLabel* velocidad_;
};

}  // namespace utr
