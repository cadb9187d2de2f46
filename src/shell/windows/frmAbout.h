#pragma once

#include <QDialog>

namespace utr {

// "Acerca de": title, version, and a button that starts the system's information tool, where there is one.
class frmAbout : public QDialog {
  Q_OBJECT

 public:
  explicit frmAbout(QWidget* parent = nullptr);
};

}  // namespace utr
