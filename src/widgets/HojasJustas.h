#pragma once

#include <QTabWidget>

namespace utr {

// Sheets behind tabs, with the tabs above, only as high as the sheet on show asks for: what is beneath has the room
// that a higher one would take. Once another sheet is chosen the window is laid out anew.
class HojasJustas : public QTabWidget {
 public:
  explicit HojasJustas(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int ancho) const override;

 private:
  int Sobra(int ancho) const;
};

}  // namespace utr
