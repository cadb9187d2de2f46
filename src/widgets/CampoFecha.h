#pragma once

#include <QDateTimeEdit>

namespace utr {

// A date picker whose parts are typed over: a click selects the part under it, so that digits replace it. Qt's own only
// puts the cursor there, and refuses digits since the text is complete.
class CampoFecha : public QDateTimeEdit {
  Q_OBJECT

 public:
  explicit CampoFecha(QWidget* parent = nullptr);

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
};

}  // namespace utr
