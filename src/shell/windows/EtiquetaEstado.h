#pragma once

#include <QLabel>
#include <optional>

#include "session/OperacionesEnlace.h"
#include "widgets/Temas.h"

namespace utr {

// A label that tells a state: a dot ahead of its words, both always at full contrast, since a lost link must be read as
// well as one that stands. What doesn't fit is left out at the end, and its tip has it whole.
class EtiquetaEstado : public QLabel {
  Q_OBJECT

 public:
  explicit EtiquetaEstado(const char* nombre, QWidget* parent = nullptr);

  // No dot without a colour; `hueco` tells the state by its form too.
  void Poner(const QString& texto, std::optional<Matiz> punto = {}, bool hueco = false);

  // The same with the dot of how it stands: none where it is neutral, hollow where it is bad.
  void Poner(const QString& texto, Tono tono);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  int AnchoDelPunto() const;

  std::optional<Matiz> punto_;
  bool hueco_ = false;
};

}  // namespace utr
