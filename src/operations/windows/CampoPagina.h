#pragma once

#include <QPlainTextEdit>

namespace utr {

// A page text over several lines of the screen, without line breaks of its own: none can be typed, and those of a
// pasted text are left out. Tab leaves the field.
class CampoPagina : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit CampoPagina(const char* nombre, int renglones, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void insertFromMimeData(const QMimeData* datos) override;
};

}  // namespace utr
