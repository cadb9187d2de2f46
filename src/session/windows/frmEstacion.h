#pragma once

#include <QDialog>
#include <string>

#include "session/LibroEstaciones.h"
#include "session/ModRTU.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace utr {

// "Estación": one station of the book, to be typed in or changed. What doesn't belong to the way in which it is reached
// steps back and is kept.
class frmEstacion : public QDialog {
  Q_OBJECT

 public:
  // `propia`: the station at hand in the book, whose name it may keep; null: a new one.
  frmEstacion(ModRTU& mod, const LibroEstaciones& libro, const Estacion* propia, QWidget* parent = nullptr);

  // What was accepted.
  const Estacion& Elegida() const noexcept { return estacion_; }

 private:
  QLayout* ArmarCuerpo();
  void Llenar();
  void SegunElMedio();
  Estacion Escrita() const;
  QWidget* CampoDe(CampoEstacion campo) const;
  void Aceptar();

  ModRTU& mod_;
  const LibroEstaciones& libro_;
  std::string propia_;  // name in the book; empty: none
  Estacion estacion_;
  QLineEdit* txtNombre_;
  QLineEdit* txtLugar_;
  QLineEdit* txtIdentificador_;
  QComboBox* cboMedio_;
  QComboBox* cboPuerto_;
  QComboBox* cboVelocidad_;
  QLineEdit* txtTelefono_;
  QLineEdit* txtComandos_;
  QLineEdit* txtDireccion_;
  QLineEdit* txtPuertoIP_;
  QPlainTextEdit* txtNotas_;
};

}  // namespace utr
