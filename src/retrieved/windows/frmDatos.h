#pragma once

#include "retrieved/windows/VistaRegistros.h"

class QCheckBox;
class QComboBox;
class QDateEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace utr {

// "Datos de la UTR": historic and instantaneous data of the unit.
class frmDatos : public VistaRegistros {
  Q_OBJECT

 public:
  // `configuracion`: the table of channels, the window's own clone. Show it with exec().
  frmDatos(ModRTU& mod, TablaPtr configuracion, QWidget* parent = nullptr);
};

}  // namespace utr
