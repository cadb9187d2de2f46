#pragma once

#include <QWidget>

#include "retrieved/series/CurvasInstantaneas.h"

namespace utr {

// The present values of the last half hour as small curves, one a channel, each over its own extent, with the last
// value in words. A line leads from turn to turn alone: neither over a read that is missing nor over a value that a
// read didn't have.
class MiniCurvas : public QWidget {
  Q_OBJECT

 public:
  explicit MiniCurvas(QWidget* parent = nullptr);

  void Agregar(const Tabla& lectura);
  void Interrumpir() { curvas_.Interrumpir(); }  // as CurvasInstantaneas does
  void Vaciar();
  const CurvasInstantaneas& Curvas() const noexcept { return curvas_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  void Cambiadas();
  int AltoRenglon() const;

  CurvasInstantaneas curvas_;
};

}  // namespace utr
