#pragma once

#include <QWidget>
#include <array>

#include "retrieved/recovery/LecturaAnterior.h"
#include "retrieved/recovery/SeleccionFlash.h"

class QButtonGroup;
class QCheckBox;
class QFrame;
class QRadioButton;

namespace utr {

// The choice of what to read of the flash.
class PanelSeleccion : public QWidget {
  Q_OBJECT

 public:
  explicit PanelSeleccion(QWidget* parent = nullptr);

  SeleccionFlash Seleccion() const;
  bool ConConfiguracion() const;

  // The groups that an earlier file holds are ticked and can't be unticked, until it is null again.
  void Fijar(const LecturaAnterior* anterior);

  // In the order in which Tab walks them.
  QList<QWidget*> Controles() const;

 Q_SIGNALS:
  void Cambiada();

 private:
  void Armar();
  void chkDatos_Click(bool puesto);
  void optPilas_Click();
  void chkPilas_Click();
  bool AlgunaPila() const;

  QCheckBox* chkDatos_;
  QFrame* fraPilas_;
  QButtonGroup* opciones_;
  std::array<QRadioButton*, 2> optPilas_;
  std::array<QCheckBox*, kGrupoCola> chkPilas_;
  QCheckBox* chkColaTX_;
  QCheckBox* chkEventos_;
  QCheckBox* chkFulllDownload_;
  QCheckBox* chkConfiguracion_;
  std::array<bool, kGruposFlash.size()> fijos_{};  // groups of the earlier file
};

}  // namespace utr
