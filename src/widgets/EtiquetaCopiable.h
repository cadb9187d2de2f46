#pragma once

#include <QLabel>

namespace utr {

// A label whose plain text is marked and copied with the mouse and with the keyboard. Tab reaches it while it has text,
// takes all of it, and shows an outline; the arrows with Mayús take a part. Ctrl+C with nothing marked is left to the
// window. Long texts go on in the next line unless setWordWrap says otherwise. A screen reader is told the text.
class EtiquetaCopiable : public QLabel {
 public:
  explicit EtiquetaCopiable(const QString& nombre, QWidget* parent = nullptr);

  // The text, and with it whether Tab stops here.
  void Poner(const QString& texto);

 protected:
  bool event(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;

 private:
  using QLabel::setText;  // it would leave Tab as it was
};

}  // namespace utr
