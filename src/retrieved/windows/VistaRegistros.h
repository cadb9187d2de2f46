#pragma once

#include <QDialog>

#include "shell/ModRTU.h"
#include "tables/Tabla.h"

namespace utr {

// What the views of data, events and transmission queue share.
class VistaRegistros : public QDialog {
  Q_OBJECT

 protected:
  VistaRegistros(ModRTU& mod, QWidget* parent);

  ModRTU& mod_;
};

}  // namespace utr
